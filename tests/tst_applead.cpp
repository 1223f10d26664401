#include "tests/support/wizarddriver.h"

#include <QLabel>

namespace {

// Begins on the unbind page, as macOS itself is bound to example.test.
class UnbindDriver : public WizardDriver
{
public:
    UnbindDriver()
    {
        World::setBound();
        next();
        enterUser("admin", "secret");
    }
};

QString shownDomain(const WizardDriver& driver)
{
    return driver.on<QLabel>("ADName")->text();
}

} // namespace

class TestAppleAD : public WorldTest
{
    Q_OBJECT

private slots:
    void withoutADomainThePageOpensAndChecksWithAnEmptyOne_data()
    {
        addColumns<int>("promptsAnswer");
        addRow("a report without a domain", 0);
        addRow("a cancelled prompt", 1);
    }

    void withoutADomainThePageOpensAndChecksWithAnEmptyOne()
    {
        QFETCH(int, promptsAnswer);
        World::answer("authorization_prompt", {"", "", promptsAnswer});
        WizardDriver driver;
        driver.startAt(2);
        QCOMPARE(driver.page(), 2);
        QVERIFY(driver.wizard.isVisible());
        QCOMPARE(World::callsOf("authorization_prompt").size(), 1);
        QCOMPARE(World::callsOf("dsconfigad").size(), promptsAnswer == 0 ? 1 : 0);
        QCOMPARE(shownDomain(driver), QString());
        driver.enterUser("admin", "secret");
        driver.next();
        QCOMPARE(World::callsOf("mvedit").at(0).words(), credentialCheck("", "admin", "secret"));
    }

    void domainIsWhatFollowsTheLastEqualsSign_data()
    {
        addColumns<QString, QString>("report", "domain");
        // The runner takes the first four bytes, such as "head", for a process id.
        const QString line = "head\nActive Directory Domain";
        addRow("padded", line + "          = example.test\n", "example.test");
        addRow("blanks around", line + " =  \t example.test \r\n", "example.test");
        addRow("equals sign in the value", line + " = a= b= example.test\n", "example.test");
        addRow("equals sign without a blank", line + " = a=b\n", "a=b");
        addRow("not ended", line + " = example.test", "example.test");
        addRow("a further line without an equals sign",
               line + " = example.test\nActive Directory Domain\n", "example.test");
        addRow("the last of several", line + " = one.test\nActive Directory Domain = two.test\n",
               "two.test");
        addRow("non-ASCII", line + " = exämple.test\n", "exämple.test");
    }

    void domainIsWhatFollowsTheLastEqualsSign()
    {
        QFETCH(QString, report);
        QFETCH(QString, domain);
        WizardDriver driver;
        World::answer("dsconfigad -show", {report.toUtf8(), ""});
        driver.startAt(2);
        QCOMPARE(shownDomain(driver), domain);
        QCOMPARE(driver.wizard.field("appleADDomain").toString(), domain);
    }

    void domainIsReadAgainAtEachEntry()
    {
        UnbindDriver driver;
        QCOMPARE(shownDomain(driver), QString("example.test"));
        driver.back();
        World::setBound("other.test");
        World::forgetCalls();
        driver.next();
        QCOMPARE(driver.page(), 2);
        QCOMPARE(shownDomain(driver), QString("other.test"));
        // The interim page's query, then this page's own; the administrator was asked before.
        QCOMPARE(World::callsOf("dsconfigad").size(), 2);
        QCOMPARE(World::callsOf("dsconfigad").at(1).words(), QStringList({"dsconfigad", "-show"}));
        QCOMPARE(World::callsOf("authorization_prompt").size(), 0);
    }

    void anUnreadableBindingLeavesThePageAsItIs()
    {
        UnbindDriver driver;
        World::removeTool("dsconfigad");
        driver.currentPage()->initializePage();
        QCOMPARE(shownDomain(driver), QString("example.test"));
        QCOMPARE(driver.wizard.field("appleADDomain").toString(), QString("example.test"));
    }

    void editsThatCarryTheFieldsAreNeverShown()
    {
        UnbindDriver driver;
        driver.next();
        int hidden = 0;
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            if (qobject_cast<const QLineEdit*>(window) == nullptr)
                continue;
            ++hidden;
            QVERIFY(!window->isVisible());
        }
        QCOMPARE(hidden, 3);
    }
};

WORLD_TEST_MAIN(TestAppleAD)
#include "tst_applead.moc"

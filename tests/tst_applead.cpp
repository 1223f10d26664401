#include "pages/applead.h"
#include "tests/support/formtest.h"
#include "tests/support/wizarddriver.h"

#include <QLabel>

namespace {

const QString unbound = "You are unbound from Apple's Active Directory plugin.";

// Begins on the unbind page, as macOS itself is bound to example.test.
class UnbindDriver : public WizardDriver
{
public:
    UnbindDriver()
    {
        World::setBound();
        next();
        type("ADUser", "admin");
        type("ADPass", "secret");
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
    void aCancelledPromptOnEntryLeavesTheDomainEmpty()
    {
        WizardDriver driver;
        World::answer("authorization_prompt", {"", "", 1});
        driver.startAt(2);
        QCOMPARE(driver.page(), 2);
        QCOMPARE(World::callsOf("authorization_prompt").size(), 1);
        QCOMPARE(World::callsOf("dsconfigad").size(), 0);
        QCOMPARE(shownDomain(driver), QString());
        QCOMPARE(driver.wizard.field("appleADDomain").toString(), QString());
        QVERIFY(driver.wizard.isVisible());
    }

    void withoutADomainTheCheckRunsWithAnEmptyOne_data()
    {
        addColumns<int>("promptsAnswer");
        addRow("a report without a domain", 0);
        addRow("a cancelled prompt", 1);
    }

    void withoutADomainTheCheckRunsWithAnEmptyOne()
    {
        QFETCH(int, promptsAnswer);
        World::answer("authorization_prompt", {"", "", promptsAnswer});
        WizardDriver driver;
        driver.startAt(2);
        QCOMPARE(shownDomain(driver), QString());
        driver.type("ADUser", "admin");
        driver.type("ADPass", "secret");
        driver.next();
        QCOMPARE(World::callsOf("mvedit").at(0).words(), credentialCheck("", "admin", "secret"));
    }

    void wrongCredentialsShowTheFirstLineAndStay()
    {
        World::answer("mvedit", {"Wrong password\nTry again\n", "", 1});
        UnbindDriver driver;
        World::forgetCalls();
        QCOMPARE(driver.next(), QStringList{refusedCheck("Wrong password")});
        QCOMPARE(driver.page(), 2);
        QCOMPARE(World::callsOf("dsconfigad").size(), 0);
        QCOMPARE(driver.text("ADPass"), QString("secret"));
    }

    void withoutTheInterpreterNothingIsUnbound()
    {
        World::removeTool("mvedit");
        UnbindDriver driver;
        World::forgetCalls();
        const QStringList warnings = driver.next();
        QCOMPARE(warnings.size(), 1);
        QVERIFY(warnings.at(0).contains("/usr/local/bin/mvedit: not found"));
        QCOMPARE(World::calls().size(), 0);
        QCOMPARE(driver.page(), 2);
    }

    void aFailingUnbindIsNotNoticed_data()
    {
        addColumns<QByteArray, int>("output", "exitStatus");
        addRow("silent", QByteArray(), 77);
        addRow("with a complaint", QByteArray("Invalid credentials supplied\n"), 1);
    }

    void aFailingUnbindIsNotNoticed()
    {
        QFETCH(QByteArray, output);
        QFETCH(int, exitStatus);
        World::answer("dsconfigad -r", {output, "", exitStatus});
        UnbindDriver driver;
        QCOMPARE(driver.next(), QStringList{unbound});
        QCOMPARE(driver.page(), 3);
    }

    void anUnbindThatCantRunIsNotNoticed()
    {
        UnbindDriver driver;
        World::removeTool("dsconfigad");
        QCOMPARE(driver.next(), QStringList{unbound});
        QCOMPARE(driver.page(), 3);
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
        addRow("within a line", "head\n  My Active Directory Domains = example.test\n",
               "example.test");
        addRow("the last of several", line + " = one.test\nActive Directory Domain = two.test\n",
               "two.test");
        addRow("non-ASCII", line + " = exämple.test\n", "exämple.test");
        addRow("first line loses its first four bytes", "Active Directory Domain = example.test\n",
               "");
        addRow("other case", "head\nactive directory domain = example.test\n", "");
        addRow("no domain line", "head\nComputer Account = my-mac$\n", "");
        addRow("no report", "", "");
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

    void okChecksThenUnbinds()
    {
        UnbindDriver driver;
        World::forgetCalls();
        QCOMPARE(driver.next(), QStringList{unbound});
        const QList<Call> calls = World::calls();
        QCOMPARE(calls.size(), 2);
        QCOMPARE(calls.at(0).words(), credentialCheck("example.test", "admin", "secret"));
        QCOMPARE(calls.at(1).path, QString("/usr/sbin/dsconfigad"));
        QCOMPARE(calls.at(1).words(),
                 QStringList({"dsconfigad", "-r", "-f", "-u", "admin", "-p", "secret"}));
    }

    void nextReadsOkOnThisPageOnly()
    {
        UnbindDriver driver;
        QCOMPARE(driver.button(QWizard::NextButton)->text(), QString("OK"));
        driver.next();
        QVERIFY(driver.button(QWizard::NextButton)->text() != QString("OK"));
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

    // Outside the wizard, whose form gives the page another name.
    void formHasItsName()
    {
        const AppleAD page;
        QCOMPARE(page.objectName(), QString("AppleAD"));
    }

    void formHasItsWidgets()
    {
        World::setBound();
        WizardDriver driver;
        driver.next();
        compareForm(
            driver.currentPage(),
            {{"label", "QLabel",
              "This machine is currently joined using Apple's Directory Utility to the domain:"},
             {"ADName", "QLabel", "example.test"},
             {"label_3", "QLabel",
              "To unbind from Apple's Directory Utility and use Morvanta Join Assistant to join "
              "your domain, enter an Active Directory administrator username and password and "
              "press OK."},
             {"label_2", "QLabel", "Active Directory Username:"},
             {"ADUser", "QLineEdit", ""},
             {"label_4", "QLabel", "Active Directory Password:"},
             {"ADPass", "QLineEdit", ""}});
    }

    void passwordIsHidden()
    {
        UnbindDriver driver;
        QCOMPARE(driver.on<QLineEdit>("ADPass")->echoMode(), QLineEdit::Password);
    }
};

WORLD_TEST_MAIN(TestAppleAD)
#include "tst_applead.moc"

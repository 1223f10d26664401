#include "system/probes.h"
#include "tests/support/webbrowser.h"
#include "tests/support/wizarddriver.h"

#include <QAccessible>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

namespace {

QStringList values(const WizardDriver& driver)
{
    QStringList texts;
    for (const char* name : {"ActiveDirectory_Val", "JoinedZone_Val", "ComputerName_Val"})
        texts << driver.on<QLabel>(name)->text();
    return texts;
}

// On the leave page of a Mac that is joined.
class LeaveDriver : public WizardDriver
{
public:
    LeaveDriver()
    {
        next();
    }
};

} // namespace

class TestLeaveIntro : public WorldTest
{
    Q_OBJECT

private slots:
    void init()
    {
        WorldTest::init();
        World::setJoined();
    }

    void withoutTheAgentTheValuesAreEmpty()
    {
        WizardDriver driver;
        World::removeTool("mvinfo");
        driver.startAt(6);
        QCOMPARE(values(driver), QStringList({"", "", ""}));
    }

    void eachEntryShowsTheAgentsAnswersUnchanged()
    {
        WizardDriver driver;
        const QList<QStringList> answers{{"example.test\n", " Zone/Größe \n\n", "<b>my-mac</b>"},
                                         {"other.test", "", "other-mac\n"}};
        for (const QStringList& answer : answers) {
            World::setJoined(answer.at(0).toUtf8(), answer.at(1).toUtf8(), answer.at(2).toUtf8());
            driver.next();
            QCOMPARE(values(driver), answer);
            driver.back();
        }
    }

    void choiceAndCredentialsSurviveReentry()
    {
        LeaveDriver driver;
        driver.click("radioButton_2");
        driver.enterUser("admin", "secret");
        driver.back();
        QCOMPARE(driver.page(), 0);
        driver.next();
        QVERIFY(driver.on<QRadioButton>("radioButton_2")->isChecked());
        QCOMPARE(driver.texts({"UsernameEdit", "PasswordEdit"}), QStringList({"admin", "secret"}));
    }

    void onlyLeavingWithoutContactDisablesAndEmptiesTheEdits_data()
    {
        addColumns<bool>("assistive");
        addRow("by a click", false);
        addRow("by an assistive tool, which doesn't click", true);
    }

    void onlyLeavingWithoutContactDisablesAndEmptiesTheEdits()
    {
        QFETCH(bool, assistive);
        LeaveDriver driver;
        const auto choose = [&](const QString& option) {
            if (!assistive)
                driver.click(option);
            else
                QAccessible::queryAccessibleInterface(driver.on<QRadioButton>(option))
                    ->actionInterface()
                    ->doAction(QAccessibleActionInterface::toggleAction());
        };
        const auto verifyEnabled = [&](bool enabled) {
            for (const char* name : {"UsernameEdit", "PasswordEdit", "label_2", "label_3"})
                QCOMPARE(driver.on<QWidget>(name)->isEnabled(), enabled);
            QCOMPARE(driver.on<QRadioButton>("radioButton_3")->isChecked(), !enabled);
        };
        const QStringList edits{"UsernameEdit", "PasswordEdit"};
        for (const char* other : {"radioButton", "radioButton_2"}) {
            choose(other);
            verifyEnabled(true);
            driver.enterUser("typed", "typed");
            choose("radioButton_3");
            verifyEnabled(false);
            QCOMPARE(driver.texts(edits), QStringList({"", ""}));
            choose(other);
            verifyEnabled(true);
            QCOMPARE(driver.texts(edits), QStringList({"", ""}));
        }
    }

    void enrollmentHintIsNeverVisible()
    {
        LeaveDriver driver;
        for (int entry = 0; entry < 2; ++entry) {
            for (const QString name :
                 {"enrollLabel", "enrollDescLabel", "downloadButton", "line_2"})
                QVERIFY2(!driver.on<QWidget>(name)->isVisible(), qPrintable(name));
            driver.back();
            driver.next();
        }
    }

    // The button is never visible, but its slot works.
    void downloadOpensTheBrowser()
    {
        LeaveDriver driver;
        WebBrowser browser;
        driver.click("downloadButton");
        QCOMPARE(browser.opened,
                 QList<QUrl>{QUrl(QString("https://%1/AppLoad?noumc=1").arg(enrollmentHost))});
        QCOMPARE(driver.page(), 6);
    }

    void nextReadsLeaveAndLeadsToTheReport()
    {
        const LeaveDriver driver;
        QCOMPARE(driver.button(QWizard::NextButton)->text(), QString("Leave"));
        QCOMPARE(driver.currentPage()->nextId(), 7);
    }

    void formHasWhatIsNeverShown()
    {
        // Not entered yet, so that the values are still the form's.
        const WizardDriver driver;
        const QWizardPage* page = driver.wizard.page(6);
        for (const char* value : {"ComputerName_Val", "ActiveDirectory_Val", "JoinedZone_Val"})
            QCOMPARE(child<QLabel>(page, value)->text(), QString("placeholder"));
        QVERIFY(page->findChild<QFrame*>("line_2") != nullptr);
        QCOMPARE(child<QLabel>(page, "enrollLabel")->text(),
                 QString("Enroll for Morvanta Endpoint Services"));
        QCOMPARE(child<QLabel>(page, "enrollDescLabel")->text(),
                 QString("For cloud enrollment, please get Morvanta Agent for Mac"));
        QCOMPARE(child<QPushButton>(page, "downloadButton")->text(), QString("Download"));
    }
};

WORLD_TEST_MAIN(TestLeaveIntro)
#include "tst_leaveintro.moc"

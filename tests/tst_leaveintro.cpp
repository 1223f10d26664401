#include "system/probes.h"
#include "tests/support/formtest.h"
#include "tests/support/webbrowser.h"
#include "tests/support/wizarddriver.h"

#include <QAccessible>
#include <QLabel>
#include <QRadioButton>

namespace {

QString textOf(const WizardDriver& driver, const QString& label)
{
    return driver.on<QLabel>(label)->text();
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
        QCOMPARE(textOf(driver, "ActiveDirectory_Val"), QString());
        QCOMPARE(textOf(driver, "JoinedZone_Val"), QString());
        QCOMPARE(textOf(driver, "ComputerName_Val"), QString());
    }

    void valuesAreTheAgentsAnswersUnchanged()
    {
        World::setJoined("example.test\n", " Zone/Größe \n\n", "<b>my-mac</b>");
        LeaveDriver driver;
        QCOMPARE(driver.page(), 6);
        QCOMPARE(textOf(driver, "ActiveDirectory_Val"), QString("example.test\n"));
        QCOMPARE(textOf(driver, "JoinedZone_Val"), QString(" Zone/Größe \n\n"));
        QCOMPARE(textOf(driver, "ComputerName_Val"), QString("<b>my-mac</b>"));
    }

    void eachEntryAsksDomainZoneAndNameInOrder()
    {
        WizardDriver driver;
        for (const QByteArray domain : {"example.test\n", "other.test\n"}) {
            World::setJoined(domain);
            World::forgetCalls();
            driver.next();
            QCOMPARE(driver.page(), 6);
            QStringList questions;
            for (const Call& call : World::callsOf("mvinfo"))
                questions << call.arguments.join(' ');
            // The interim page has asked for the domain before.
            QCOMPARE(questions.mid(questions.size() - 3), QStringList({"-d", "-z", "-n"}));
            QCOMPARE(questions.count("-z"), 1);
            QCOMPARE(questions.count("-n"), 1);
            QCOMPARE(textOf(driver, "ActiveDirectory_Val"), QString(domain));
            driver.back();
        }
    }

    void choiceAndCredentialsSurviveReentry()
    {
        LeaveDriver driver;
        driver.click("radioButton_2");
        driver.type("UsernameEdit", "admin");
        driver.type("PasswordEdit", "secret");
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
        };
        const QStringList edits{"UsernameEdit", "PasswordEdit"};
        for (const char* other : {"radioButton", "radioButton_2"}) {
            choose(other);
            verifyEnabled(true);
            for (const QString& edit : edits)
                driver.type(edit, "typed");
            choose("radioButton_3");
            verifyEnabled(false);
            QCOMPARE(driver.texts(edits), QStringList({"", ""}));
            choose(other);
            verifyEnabled(true);
            QCOMPARE(driver.texts(edits), QStringList({"", ""}));
        }
    }

    void choicesExcludeEachOther()
    {
        LeaveDriver driver;
        for (const QString chosen : {"radioButton_3", "radioButton_2", "radioButton"}) {
            driver.click(chosen);
            for (const QString name : {"radioButton", "radioButton_2", "radioButton_3"})
                QCOMPARE(driver.on<QRadioButton>(name)->isChecked(), name == chosen);
        }
    }

    void enrollmentHintIsNeverVisible()
    {
        WizardDriver driver;
        for (int entry = 0; entry < 2; ++entry) {
            driver.next();
            for (const QString name :
                 {"enrollLabel", "enrollDescLabel", "downloadButton", "line_2"})
                QVERIFY2(!driver.on<QWidget>(name)->isVisible(), qPrintable(name));
            // The other line, between the values and the choices.
            QVERIFY(driver.on<QWidget>("line_3")->isVisible());
            driver.back();
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

    void nextReadsLeaveOnThisPageOnly()
    {
        WizardDriver driver;
        QVERIFY(driver.button(QWizard::NextButton)->text() != QString("Leave"));
        driver.next();
        QCOMPARE(driver.button(QWizard::NextButton)->text(), QString("Leave"));
    }

    void formHasItsWidgets()
    {
        // Not entered yet, so that the values are still the form's.
        WizardDriver driver;
        compareForm(
            driver.wizard.page(6),
            {{"label", "QLabel", "Leaving your domain"},
             {"ComputerName", "QLabel", "Computer Name:"},
             {"ActiveDirectory", "QLabel", "Active Directory:"},
             {"JoinedZone", "QLabel", "Joined Zone:"},
             {"ComputerName_Val", "QLabel", "placeholder"},
             {"ActiveDirectory_Val", "QLabel", "placeholder"},
             {"JoinedZone_Val", "QLabel", "placeholder"},
             {"label_5", "QLabel", "Active Directory Computer Object options:"},
             {"radioButton", "QRadioButton", "Disable Computer Object in Active Directory"},
             {"radioButton_2", "QRadioButton", "Remove Computer Object in Active Directory"},
             {"radioButton_3", "QRadioButton", "Leave without contacting Active Directory"},
             {"label_2", "QLabel", "Active Directory Username:"},
             {"UsernameEdit", "QLineEdit", ""},
             {"label_3", "QLabel", "Active Directory Password:"},
             {"PasswordEdit", "QLineEdit", ""},
             {"line_2", "QFrame", nullptr},
             {"line_3", "QFrame", nullptr},
             {"enrollLabel", "QLabel", "Enroll for Morvanta Endpoint Services"},
             {"enrollDescLabel", "QLabel",
              "For cloud enrollment, please get Morvanta Agent for Mac"},
             {"downloadButton", "QPushButton", "Download"}});
    }

    void disablingIsChosenAtFirst()
    {
        LeaveDriver driver;
        QVERIFY(driver.on<QRadioButton>("radioButton")->isChecked());
        QVERIFY(driver.on<QLineEdit>("UsernameEdit")->isEnabled());
        QVERIFY(driver.on<QLineEdit>("PasswordEdit")->isEnabled());
    }

    void passwordIsHiddenAndUpTo32767Characters()
    {
        LeaveDriver driver;
        QCOMPARE(driver.on<QLineEdit>("PasswordEdit")->echoMode(), QLineEdit::Password);
        driver.type("PasswordEdit", QString(32768, 'x'));
        QCOMPARE(driver.text("PasswordEdit").size(), 32767);
    }
};

WORLD_TEST_MAIN(TestLeaveIntro)
#include "tst_leaveintro.moc"

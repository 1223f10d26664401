#include "pages/dialogs/loadleave.h"
#include "pages/leaveintro.h"
#include "tests/support/helperruns.h"

#include <csignal>

namespace {

// On the leave page of a Mac that is joined, with credentials entered.
class LeaveDriver : public WizardDriver
{
public:
    LeaveDriver()
    {
        next();
        type("UsernameEdit", "admin");
        type("PasswordEdit", "secret");
        World::forgetCalls();
    }
};

QStringList helperCall(const QStringList& arguments)
{
    return QStringList{"gui_helper_tool", "/usr/local/sbin/mvleave"} + arguments;
}

} // namespace

class TestLeaveExecution : public WorldTest
{
    Q_OBJECT

private slots:
    void init()
    {
        WorldTest::init();
        World::setJoined();
    }

    void aMissingHelperShowsTheServicesCode()
    {
        LeaveDriver driver;
        World::removeTool("gui_helper_tool");
        QCOMPARE(driver.next(), QStringList{"Unexpected error (-60031)."});
        QCOMPARE(driver.page(), 6);
    }

    void cancellingThePromptIsSilentAndStays()
    {
        WizardDriver driver;
        driver.startAt(6);
        World::answer("authorization_prompt", {"", "", 1});
        QCOMPARE(driver.next(), QStringList());
        QCOMPARE(World::callsOf("authorization_prompt").size(), 1);
        QCOMPARE(World::callsOf("gui_helper_tool").size(), 0);
        QCOMPARE(driver.page(), 6);
    }

    void aDeniedPromptShowsTheServicesCode()
    {
        WizardDriver driver;
        driver.startAt(6);
        World::answer("authorization_prompt", {"", "", 2});
        QCOMPARE(driver.next(), QStringList{"Unexpected error (-60005)."});
        QCOMPARE(driver.page(), 6);
    }

    void aRefusedCheckMakesNoLeave()
    {
        World::answer("mvedit", {"Wrong password\nTry again\n", "", 1});
        LeaveDriver driver;
        QCOMPARE(driver.next(), QStringList{refusedCheck("Wrong password")});
        QCOMPARE(driver.page(), 6);
        QCOMPARE(World::callsOf("gui_helper_tool").size(), 0);
        QCOMPARE(driver.text("PasswordEdit"), QString("secret"));
    }

    void anyOtherFailureShowsTheWholeOutputAndStays()
    {
        answerHelper("Leaving\nThe domain is unreachable\n", 3);
        LeaveDriver driver;
        QCOMPARE(driver.next(), QStringList{"Leaving\nThe domain is unreachable\n"});
        QCOMPARE(driver.page(), 6);
    }

    void aFailureWithoutOutputShowsItsStatus_data()
    {
        addColumns<int, int, QString>("exitStatus", "signal", "shown");
        addRow("exit status 1", 1, 0, "Unexpected error (1).");
        addRow("exit status 255", 255, 0, "Unexpected error (255).");
        addRow("killed by a signal", 0, SIGKILL, "Unexpected error (998).");
    }

    void aFailureWithoutOutputShowsItsStatus()
    {
        QFETCH(int, exitStatus);
        QFETCH(int, signal);
        QFETCH(QString, shown);
        answerHelper("", exitStatus, signal);
        LeaveDriver driver;
        QCOMPARE(driver.next(), QStringList{shown});
    }

    void aHelperThatCantStartShowsTheEarlierOutput()
    {
        answerHelper("The domain is unreachable\n", 3);
        LeaveDriver driver;
        driver.next();
        World::removeTool("gui_helper_tool");
        QCOMPARE(driver.next(), QStringList{"The domain is unreachable\n"});
    }

    void aNewRunForgetsTheEarlierOutput()
    {
        answerHelper("The domain is unreachable\n", 3);
        LeaveDriver driver;
        driver.next();
        answerHelper("", 4);
        QCOMPARE(driver.next(), QStringList{"Unexpected error (4)."});
    }

    void leaveCanBePressedAgain()
    {
        answerHelper("Busy\n", 1);
        LeaveDriver driver;
        driver.next();
        answerHelper("", 0);
        QCOMPARE(driver.next(), QStringList());
        QCOMPARE(driver.page(), 7);
        QCOMPARE(World::callsOf("mvedit").size(), 2);
        QCOMPARE(World::callsOf("gui_helper_tool").size(), 2);
    }

    void disablingTheObjectPassesTheCredentials()
    {
        LeaveDriver driver;
        driver.next();
        const QList<Call> calls = World::calls();
        QCOMPARE(calls.size(), 2);
        QCOMPARE(calls.at(0).words(), credentialCheck("example.test", "admin", "secret"));
        QCOMPARE(calls.at(1).path, QString("/usr/local/share/morvantad/libexec/gui_helper_tool"));
        QCOMPARE(calls.at(1).words(), helperCall({"-u", "admin", "-p", "secret"}));
    }

    void removingTheObjectPutsItsOptionFirst()
    {
        LeaveDriver driver;
        driver.click("radioButton_2");
        driver.next();
        QCOMPARE(World::callsOf("mvedit").at(0).words(),
                 credentialCheck("example.test", "admin", "secret"));
        QCOMPARE(World::callsOf("gui_helper_tool").at(0).words(),
                 helperCall({"-r", "-u", "admin", "-p", "secret"}));
    }

    void leavingWithoutContactChecksNoCredentials()
    {
        World::answer("mvedit", {"The domain is unreachable\n", "", 1});
        LeaveDriver driver;
        driver.click("radioButton_3");
        QCOMPARE(driver.next(), QStringList());
        QCOMPARE(World::calls().size(), 1);
        QCOMPARE(World::calls().at(0).words(), helperCall({"-f"}));
        QCOMPARE(driver.page(), 7);
    }

    void theDomainIsTrimmedForTheCheck()
    {
        World::setJoined(" \texample.test \r\n\n");
        LeaveDriver driver;
        driver.next();
        QCOMPARE(World::callsOf("mvedit").at(0).words(),
                 credentialCheck("example.test", "admin", "secret"));
    }

    void progressStandsWhileTheToolRuns()
    {
        LeaveDriver driver;
        compareProgress<LoadLeave>(driver, "Leaving",
                                   "Leaving your Mac from your domain, this may take some time...");
    }

    void theWizardTakesNoInputMeanwhile()
    {
        LeaveDriver driver;
        compareInputMeanwhile(driver, "radioButton_2", "radioButton_3");
    }

    void theToolRunsOnAnotherThread()
    {
        LeaveDriver driver;
        const QThread* worker = threadOfRun(driver, &LeaveIntro::finishedMVLeave);
        QVERIFY(worker != nullptr);
        QVERIFY(worker != QThread::currentThread());
    }
};

WORLD_TEST_MAIN(TestLeaveExecution)
#include "tst_leaveexecution.moc"

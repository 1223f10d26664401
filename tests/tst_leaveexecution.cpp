#include "pages/dialogs/loadleave.h"
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
        enterUser("admin", "two words");
        World::forgetCalls();
    }
};

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

    void aFailureWithoutOutputShowsItsStatus_data()
    {
        addColumns<int, int, int, QStringList>("refusal", "exitStatus", "signal", "shown");
        addRow("cancelled at the prompt: nothing", 1, 0, 0, QStringList());
        addRow("denied at the prompt", 2, 0, 0, QStringList{"Unexpected error (-60005)."});
        addRow("exit status 1", 0, 1, 0, QStringList{"Unexpected error (1)."});
        addRow("killed by a signal", 0, 0, SIGKILL, QStringList{"Unexpected error (998)."});
    }

    void aFailureWithoutOutputShowsItsStatus()
    {
        QFETCH(int, refusal);
        QFETCH(int, exitStatus);
        QFETCH(int, signal);
        World::answer("authorization_prompt", {"", "", refusal});
        answerHelper("", exitStatus, signal);
        WizardDriver driver;
        driver.startAt(6);
        QTEST(driver.next(), "shown");
        QCOMPARE(driver.page(), 6);
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

    void choiceMakesTheArguments_data()
    {
        addColumns<QString, bool, QStringList>("choice", "checks", "arguments");
        const QStringList credentials{"-u", "admin", "-p", "two words"};
        addRow("disabling, the default, passes the credentials", "", true, credentials);
        addRow("removing puts its option first", "radioButton_2", true,
               QStringList{"-r"} + credentials);
        addRow("without contact: no check, no credentials", "radioButton_3", false,
               QStringList{"-f"});
    }

    void choiceMakesTheArguments()
    {
        QFETCH(QString, choice);
        QFETCH(bool, checks);
        QFETCH(QStringList, arguments);
        LeaveDriver driver;
        if (!choice.isEmpty())
            driver.click(choice);
        QCOMPARE(driver.next(), QStringList());
        QCOMPARE(driver.page(), 7);
        QCOMPARE(World::calls().size(), checks ? 2 : 1);
        QCOMPARE(World::calls().last().words(),
                 QStringList({"gui_helper_tool", "/usr/local/sbin/mvleave"}) + arguments);
    }

    void theDomainIsTrimmedForTheCheck()
    {
        World::setJoined(" \texample.test \r\n\n");
        LeaveDriver driver;
        driver.next();
        QCOMPARE(World::callsOf("mvedit").at(0).words(),
                 credentialCheck("example.test", "admin", "two words"));
    }

    void progressStandsWhileTheToolRuns()
    {
        LeaveDriver driver;
        compareProgress<LoadLeave>(driver);
    }
};

WORLD_TEST_MAIN(TestLeaveExecution)
#include "tst_leaveexecution.moc"

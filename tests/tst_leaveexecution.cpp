#include "pages/dialogs/loadleave.h"
#include "pages/leaveintro.h"
#include "tests/support/helperruns.h"

#include <csignal>

namespace {

// On the leave page of a Mac that is joined to example.test, with credentials entered.
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
    void aMissingHelperShowsTheServicesCode();
    void cancellingThePromptIsSilentAndStays();
    void aDeniedPromptShowsTheServicesCode();
    void aRefusedCheckMakesNoLeave();
    void anyOtherFailureShowsTheWholeOutputAndStays();
    void aFailureWithoutOutputShowsItsStatus_data();
    void aFailureWithoutOutputShowsItsStatus();
    void aFailureWithoutAStreamShowsTheEarlierOutput();
    void aNewRunForgetsTheEarlierOutput();
    void leaveCanBePressedAgain();
    void successLeadsToTheEnd();
    void disablingPassesTheCredentials();
    void removingPutsItsOptionFirst();
    void leavingAloneContactsNobody();
    void aPasswordWithBlanksIsOneElement();
    void theDomainIsTrimmedForTheCheck();
    void progressStandsWhileTheToolRuns();
    void theWizardTakesNoInputMeanwhile();
    void theToolRunsOnAnotherThread();
};

void TestLeaveExecution::aMissingHelperShowsTheServicesCode()
{
    World::setJoined();
    LeaveDriver driver;
    World::removeTool("gui_helper_tool");
    QCOMPARE(driver.next(), QStringList{"Unexpected error (-60031)."});
    QCOMPARE(driver.page(), 6);
}

void TestLeaveExecution::cancellingThePromptIsSilentAndStays()
{
    World::setJoined();
    WizardDriver driver;
    driver.startAt(6);
    World::answer("authorization_prompt", {"", "", 1});
    QCOMPARE(driver.next(), QStringList());
    QCOMPARE(World::callsOf("authorization_prompt").size(), 1);
    QCOMPARE(World::callsOf("gui_helper_tool").size(), 0);
    QCOMPARE(driver.page(), 6);
}

void TestLeaveExecution::aDeniedPromptShowsTheServicesCode()
{
    World::setJoined();
    WizardDriver driver;
    driver.startAt(6);
    World::answer("authorization_prompt", {"", "", 2});
    QCOMPARE(driver.next(), QStringList{"Unexpected error (-60005)."});
    QCOMPARE(driver.page(), 6);
}

void TestLeaveExecution::aRefusedCheckMakesNoLeave()
{
    World::setJoined();
    World::answer("mvedit", {"Wrong password\nTry again\n", "", 1});
    LeaveDriver driver;
    QCOMPARE(driver.next(), QStringList{refusedCheck("Wrong password")});
    QCOMPARE(driver.page(), 6);
    QCOMPARE(World::callsOf("gui_helper_tool").size(), 0);
    QCOMPARE(driver.on<QLineEdit>("PasswordEdit")->text(), QString("secret"));
}

void TestLeaveExecution::anyOtherFailureShowsTheWholeOutputAndStays()
{
    World::setJoined();
    answerHelper("Leaving\nThe domain is unreachable\n", 3);
    LeaveDriver driver;
    QCOMPARE(driver.next(), QStringList{"Leaving\nThe domain is unreachable\n"});
    QCOMPARE(driver.page(), 6);
}

void TestLeaveExecution::aFailureWithoutOutputShowsItsStatus_data()
{
    QTest::addColumn<int>("exitStatus");
    QTest::addColumn<int>("signal");
    QTest::addColumn<QString>("shown");
    QTest::newRow("exit status 1") << 1 << 0 << "Unexpected error (1).";
    QTest::newRow("exit status 255") << 255 << 0 << "Unexpected error (255).";
    QTest::newRow("killed by a signal") << 0 << SIGKILL << "Unexpected error (998).";
}

void TestLeaveExecution::aFailureWithoutOutputShowsItsStatus()
{
    QFETCH(int, exitStatus);
    QFETCH(int, signal);
    QFETCH(QString, shown);
    World::setJoined();
    answerHelper("", exitStatus, signal);
    LeaveDriver driver;
    QCOMPARE(driver.next(), QStringList{shown});
}

void TestLeaveExecution::aFailureWithoutAStreamShowsTheEarlierOutput()
{
    World::setJoined();
    answerHelper("The domain is unreachable\n", 3);
    LeaveDriver driver;
    driver.next();
    World::removeTool("gui_helper_tool");
    QCOMPARE(driver.next(), QStringList{"The domain is unreachable\n"});
}

void TestLeaveExecution::aNewRunForgetsTheEarlierOutput()
{
    World::setJoined();
    answerHelper("The domain is unreachable\n", 3);
    LeaveDriver driver;
    driver.next();
    answerHelper("", 4);
    QCOMPARE(driver.next(), QStringList{"Unexpected error (4)."});
}

void TestLeaveExecution::leaveCanBePressedAgain()
{
    World::setJoined();
    answerHelper("Busy\n", 1);
    LeaveDriver driver;
    driver.next();
    answerHelper("", 0);
    QCOMPARE(driver.next(), QStringList());
    QCOMPARE(driver.page(), 7);
    QCOMPARE(World::callsOf("mvedit").size(), 2);
    QCOMPARE(World::callsOf("gui_helper_tool").size(), 2);
}

void TestLeaveExecution::successLeadsToTheEnd()
{
    World::setJoined();
    answerHelper("Left the domain\n", 0);
    LeaveDriver driver;
    QCOMPARE(driver.next(), QStringList());
    QCOMPARE(driver.page(), 7);
    QCOMPARE(visibleTexts(driver.currentPage()),
             QStringList{"You have successfully left your Mac from your Active Directory domain."});
}

void TestLeaveExecution::disablingPassesTheCredentials()
{
    World::setJoined();
    LeaveDriver driver;
    driver.next();
    const QList<Call> calls = World::calls();
    QCOMPARE(calls.size(), 2);
    QCOMPARE(calls.at(0).words(), credentialCheck("example.test", "admin", "secret"));
    QCOMPARE(calls.at(1).path, QString("/usr/local/share/morvantad/libexec/gui_helper_tool"));
    QCOMPARE(calls.at(1).words(), helperCall({"-u", "admin", "-p", "secret"}));
}

void TestLeaveExecution::removingPutsItsOptionFirst()
{
    World::setJoined();
    LeaveDriver driver;
    driver.click("radioButton_2");
    driver.next();
    QCOMPARE(World::callsOf("mvedit").at(0).words(),
             credentialCheck("example.test", "admin", "secret"));
    QCOMPARE(World::callsOf("gui_helper_tool").at(0).words(),
             helperCall({"-r", "-u", "admin", "-p", "secret"}));
}

void TestLeaveExecution::leavingAloneContactsNobody()
{
    World::setJoined();
    World::answer("mvedit", {"The domain is unreachable\n", "", 1});
    LeaveDriver driver;
    driver.click("radioButton_3");
    QCOMPARE(driver.next(), QStringList());
    QCOMPARE(World::calls().size(), 1);
    QCOMPARE(World::calls().at(0).words(), helperCall({"-f"}));
    QCOMPARE(driver.page(), 7);
}

void TestLeaveExecution::aPasswordWithBlanksIsOneElement()
{
    World::setJoined();
    LeaveDriver driver;
    driver.type("PasswordEdit", " two  words ");
    driver.next();
    QCOMPARE(World::callsOf("gui_helper_tool").at(0).words(),
             helperCall({"-u", "admin", "-p", " two  words "}));
}

void TestLeaveExecution::theDomainIsTrimmedForTheCheck()
{
    World::setJoined(" \texample.test \r\n\n");
    LeaveDriver driver;
    driver.next();
    QCOMPARE(World::callsOf("mvedit").at(0).words(),
             credentialCheck("example.test", "admin", "secret"));
}

void TestLeaveExecution::progressStandsWhileTheToolRuns()
{
    World::setJoined();
    LeaveDriver driver;
    compareProgress<LoadLeave>(driver, "Leaving",
                               "Leaving your Mac from your domain, this may take some time...");
}

void TestLeaveExecution::theWizardTakesNoInputMeanwhile()
{
    World::setJoined();
    LeaveDriver driver;
    compareInputMeanwhile(driver, "radioButton_2", "radioButton_3");
}

void TestLeaveExecution::theToolRunsOnAnotherThread()
{
    World::setJoined();
    LeaveDriver driver;
    const QThread* worker = threadOfRun(driver, &LeaveIntro::finishedMVLeave);
    QVERIFY(worker != nullptr);
    QVERIFY(worker != QThread::currentThread());
}

WORLD_TEST_MAIN(TestLeaveExecution)
#include "tst_leaveexecution.moc"

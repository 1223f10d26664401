#include "pages/dialogs/loadjoin.h"
#include "pages/joinflags.h"
#include "pages/jointype.h"
#include "system/lowerpriv.h"
#include "tests/support/helperruns.h"

#include <csignal>

namespace {

using Texts = QMap<QString, QString>;

// On the join options page, with valid credentials.
class JoinDriver : public WizardDriver
{
public:
    explicit JoinDriver(const QString& password = "secret")
    {
        goToJoinOptions("example.test", "admin", password);
        World::forgetCalls();
    }

    void choose(const QStringList& toClick, const Texts& toType) const
    {
        for (const QString& name : toClick)
            click(name);
        for (auto edit = toType.cbegin(); edit != toType.cend(); ++edit)
            type(edit.key(), edit.value());
    }
};

} // namespace

class TestJoinExecution : public WorldTest
{
    Q_OBJECT

private slots:
    void aMissingHelperShowsAnEmptyWarning();
    void aCancelledPromptShowsAnEmptyWarningAtFirst();
    void aRefusedPromptShowsThePreviousOutput();
    void aFailureShowsTheWholeOutputAndStays();
    void anAbnormalEndShowsWhatWasCollected();
    void aFailureWithoutOutputShowsAnEmptyWarning();
    void aNewRunForgetsThePreviousOutput();
    void afterAFailureAllChoicesStayAndJoinWorksAgain();
    void successLeadsToTheEnd();
    void choicesMakeTheArguments_data();
    void choicesMakeTheArguments();
    void withoutAHostNameNoNameIsPassed();
    void joiningIsSetByEveryAttempt();
    void enrollingFollowsTheCheckBoxOfASuccess_data();
    void enrollingFollowsTheCheckBoxOfASuccess();
    void progressStandsWhileTheToolRuns();
    void theWizardTakesNoInputMeanwhile();
    void theToolRunsOnAnotherThread();
};

void TestJoinExecution::aMissingHelperShowsAnEmptyWarning()
{
    JoinDriver driver;
    World::removeTool("gui_helper_tool");
    QCOMPARE(driver.next(), QStringList{""});
    QCOMPARE(driver.page(), 4);
}

void TestJoinExecution::aCancelledPromptShowsAnEmptyWarningAtFirst()
{
    WizardDriver driver;
    driver.startAt(4);
    World::answer("authorization_prompt", {"", "", 1});
    QCOMPARE(driver.next(), QStringList{""});
    QCOMPARE(driver.page(), 4);
    QCOMPARE(World::callsOf("authorization_prompt").size(), 1);
    QCOMPARE(World::callsOf("gui_helper_tool").size(), 0);
}

void TestJoinExecution::aRefusedPromptShowsThePreviousOutput()
{
    answerHelper("Unknown user\n", 1);
    JoinDriver driver;
    driver.next();
    g_pProcess->setupauth();
    for (const int refusal : {1, 2}) {
        World::answer("authorization_prompt", {"", "", refusal});
        QCOMPARE(driver.next(), QStringList{"Unknown user\n"});
        QCOMPARE(driver.page(), 4);
    }
    QCOMPARE(World::callsOf("gui_helper_tool").size(), 1);
}

void TestJoinExecution::aFailureShowsTheWholeOutputAndStays()
{
    answerHelper(QByteArray("Joining\n") + QByteArray(1500, 'x') + "\nUnbekannt: größer", 8);
    JoinDriver driver;
    QCOMPARE(driver.next(), QStringList{"Joining\n" + QString(1500, 'x') +
                                        QString::fromUtf8("\nUnbekannt: größer")});
    QCOMPARE(driver.page(), 4);
}

void TestJoinExecution::anAbnormalEndShowsWhatWasCollected()
{
    answerHelper("Joining\n", 0, SIGKILL);
    JoinDriver driver;
    QCOMPARE(driver.next(), QStringList{"Joining\n"});
    QCOMPARE(driver.page(), 4);
}

void TestJoinExecution::aFailureWithoutOutputShowsAnEmptyWarning()
{
    answerHelper("", 8);
    JoinDriver driver;
    QCOMPARE(driver.next(), QStringList{""});
}

void TestJoinExecution::aNewRunForgetsThePreviousOutput()
{
    answerHelper("Unknown user\n", 1);
    JoinDriver driver;
    driver.next();
    answerHelper("", 1);
    QCOMPARE(driver.next(), QStringList{""});
}

void TestJoinExecution::afterAFailureAllChoicesStayAndJoinWorksAgain()
{
    answerHelper("Busy\n", 1);
    JoinDriver driver;
    driver.choose({"ZoneButton", "AdvancedButton", "ForceLeave", "AliasLabel"},
                  {{"ZoneEdit", "MacZone"}, {"AliasEdit", "alias"}});
    driver.next();
    answerHelper("", 0);
    QCOMPARE(driver.next(), QStringList());
    QCOMPARE(driver.page(), 7);
    const QList<Call> calls = World::callsOf("gui_helper_tool");
    QCOMPARE(calls.size(), 2);
    QVERIFY(calls.at(0).arguments.contains("MacZone"));
    QCOMPARE(calls.at(1).arguments, calls.at(0).arguments);
}

void TestJoinExecution::successLeadsToTheEnd()
{
    answerHelper("Joined\n", 0);
    JoinDriver driver;
    QCOMPARE(driver.next(), QStringList());
    QCOMPARE(driver.page(), 7);
    QCOMPARE(visibleTexts(driver.currentPage()),
             QStringList{"You have successfully joined your Mac to your Active Directory domain at "
                         "example.test."});
}

void TestJoinExecution::choicesMakeTheArguments_data()
{
    QTest::addColumn<QStringList>("toClick");
    QTest::addColumn<Texts>("toType");
    QTest::addColumn<QStringList>("arguments");
    const QStringList name{"-n", "my-mac"};
    const QStringList everySwitch{"ContainerDNLabel", "PDSLabel", "AliasLabel"};
    const Texts everyText{{"ContainerDNEdit", "OU=Macs,DC=example,DC=test"},
                          {"PDSEdit", "dc1.example.test"},
                          {"AliasEdit", "alias"}};
    const QStringList everyOption{
        "-c", "OU=Macs,DC=example,DC=test", "-s", "dc1.example.test", "-a", "alias"};
    const QStringList open{"AdvancedButton"};

    QTest::newRow("defaults") << QStringList() << Texts() << QStringList{"-w"} + name;
    QTest::newRow("zone, overwriting")
        << QStringList{"ZoneButton", "AdvancedButton", "ForceLeave"}
        << Texts{{"ZoneEdit", "MacZone"}} << QStringList{"-f", "-z", "MacZone"} + name;
    QTest::newRow("zone without a name")
        << QStringList{"ZoneButton"} << Texts() << QStringList{"-z", ""} + name;
    QTest::newRow("a zone name alone chooses no zone")
        << QStringList() << Texts{{"ZoneEdit", "MacZone"}} << QStringList{"-w"} + name;
    QTest::newRow("Apple UID scheme")
        << open + QStringList{"AppleUIDCheck"} << Texts() << QStringList{"-w", "-e"} + name;
    QTest::newRow("Apple UID scheme, then a zone")
        << open + QStringList{"AppleUIDCheck", "ZoneButton"} << Texts{{"ZoneEdit", "MacZone"}}
        << QStringList{"-z", "MacZone"} + name;
    QTest::newRow("Apple UID scheme, hidden again")
        << open + QStringList{"AppleUIDCheck"} + open << Texts() << QStringList{"-w", "-e"} + name;
    QTest::newRow("overwriting, hidden again")
        << open + QStringList{"ForceLeave"} + open << Texts() << QStringList{"-f", "-w"} + name;
    QTest::newRow("container, server and alias")
        << open + everySwitch << everyText << QStringList{"-w"} + everyOption + name;
    QTest::newRow("container, server and alias, hidden again")
        << open + everySwitch + open << everyText << QStringList{"-w"} + everyOption + name;
    QTest::newRow("switched on with empty texts")
        << open + everySwitch << Texts() << QStringList{"-w", "-c", "", "-s", "", "-a", ""} + name;
    QTest::newRow("texts alone switch nothing on") << open << everyText << QStringList{"-w"} + name;
    QTest::newRow("no computer name")
        << QStringList() << Texts{{"ComputerNameEdit", ""}} << QStringList{"-w"};
    QTest::newRow("texts are passed untrimmed")
        << QStringList{"ZoneButton"} << Texts{{"ZoneEdit", " Mac Zone "}, {"ComputerNameEdit", " "}}
        << QStringList{"-z", " Mac Zone ", "-n", " "};
}

void TestJoinExecution::choicesMakeTheArguments()
{
    QFETCH(QStringList, toClick);
    QFETCH(Texts, toType);
    QFETCH(QStringList, arguments);
    JoinDriver driver(" two  words ");
    driver.choose(toClick, toType);
    driver.next();
    QCOMPARE(World::calls().size(), 1);
    QCOMPARE(World::calls().at(0).path,
             QString("/usr/local/share/morvantad/libexec/gui_helper_tool"));
    QCOMPARE(World::calls().at(0).arguments, QStringList({"/usr/local/sbin/mvjoin", "-u", "admin",
                                                          "-p", " two  words ", "example.test"}) +
                                                 arguments);
}

void TestJoinExecution::withoutAHostNameNoNameIsPassed()
{
    World::answer("scutil", {});
    JoinDriver driver;
    driver.next();
    QCOMPARE(World::callsOf("gui_helper_tool").at(0).arguments,
             QStringList(
                 {"/usr/local/sbin/mvjoin", "-u", "admin", "-p", "secret", "example.test", "-w"}));
}

void TestJoinExecution::joiningIsSetByEveryAttempt()
{
    answerHelper("Unknown user\n", 1);
    JoinDriver driver;
    QVERIFY(!joining);
    driver.next();
    QVERIFY(joining);
    QVERIFY(!enrolling);
}

void TestJoinExecution::enrollingFollowsTheCheckBoxOfASuccess_data()
{
    QTest::addColumn<bool>("wanted");
    QTest::addColumn<int>("exitStatus");
    QTest::addColumn<bool>("before");
    QTest::addColumn<bool>("after");
    QTest::newRow("wanted") << true << 0 << false << true;
    QTest::newRow("not wanted") << false << 0 << false << false;
    QTest::newRow("not wanted leaves it as it was") << false << 0 << true << true;
    QTest::newRow("wanted, but the join failed") << true << 1 << false << false;
}

void TestJoinExecution::enrollingFollowsTheCheckBoxOfASuccess()
{
    QFETCH(bool, wanted);
    QFETCH(int, exitStatus);
    QFETCH(bool, before);
    answerHelper("", exitStatus);
    JoinDriver driver;
    enrolling = before;
    if (wanted)
        driver.click("CloudCheck");
    driver.next();
    QTEST(enrolling, "after");
}

void TestJoinExecution::progressStandsWhileTheToolRuns()
{
    JoinDriver driver;
    compareProgress<LoadJoin>(driver, "Joining",
                              "Joining your Mac to your domain, this may take some time...");
}

void TestJoinExecution::theWizardTakesNoInputMeanwhile()
{
    JoinDriver driver;
    compareInputMeanwhile(driver, "ZoneButton", "AutoButton");
}

void TestJoinExecution::theToolRunsOnAnotherThread()
{
    JoinDriver driver;
    const QThread* worker = threadOfRun(driver, &JoinType::finishedMVJoin);
    QVERIFY(worker != nullptr);
    QVERIFY(worker != QThread::currentThread());
}

WORLD_TEST_MAIN(TestJoinExecution)
#include "tst_joinexecution.moc"

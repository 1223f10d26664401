#include "pages/dialogs/loadjoin.h"
#include "pages/joinflags.h"
#include "system/lowerpriv.h"
#include "tests/support/helperruns.h"

#include <QScopeGuard>
#include <QThreadPool>
#include <QtConcurrentRun>

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
    void aRefusedPromptShowsThePreviousOutput()
    {
        answerHelper("Unknown user\n", 1);
        JoinDriver driver;
        driver.next();
        g_pProcess->setupauth(); // a new session, in which the prompt comes again
        for (const int refusal : {1, 2}) {
            World::answer("authorization_prompt", {"", "", refusal});
            QCOMPARE(driver.next(), QStringList{"Unknown user\n"});
            QCOMPARE(driver.page(), 4);
        }
        QCOMPARE(World::callsOf("gui_helper_tool").size(), 1);
    }

    void afterAFailureAllChoicesStayAndJoinWorksAgain()
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

    void choicesMakeTheArguments_data()
    {
        addColumns<QStringList, Texts, QStringList>("toClick", "toType", "arguments");
        const QStringList name{"-n", "my-mac"};
        const QStringList everySwitch{"ContainerDNLabel", "PDSLabel", "AliasLabel"};
        const Texts everyText{{"ContainerDNEdit", "OU=Macs,DC=example,DC=test"},
                              {"PDSEdit", "dc1.example.test"},
                              {"AliasEdit", "alias"}};
        const QStringList everyOption{
            "-c", "OU=Macs,DC=example,DC=test", "-s", "dc1.example.test", "-a", "alias"};
        const QStringList open{"AdvancedButton"};

        addRow("defaults", QStringList(), Texts(), QStringList{"-w"} + name);
        addRow("zone, overwriting", QStringList{"ZoneButton", "AdvancedButton", "ForceLeave"},
               Texts{{"ZoneEdit", "MacZone"}}, QStringList{"-f", "-z", "MacZone"} + name);
        addRow("zone without a name", QStringList{"ZoneButton"}, Texts(),
               QStringList{"-z", ""} + name);
        addRow("a zone name alone chooses no zone", QStringList(), Texts{{"ZoneEdit", "MacZone"}},
               QStringList{"-w"} + name);
        addRow("Apple UID scheme", open + QStringList{"AppleUIDCheck"}, Texts(),
               QStringList{"-w", "-e"} + name);
        addRow("Apple UID scheme, hidden again", open + QStringList{"AppleUIDCheck"} + open,
               Texts(), QStringList{"-w", "-e"} + name);
        addRow("overwriting, hidden again", open + QStringList{"ForceLeave"} + open, Texts(),
               QStringList{"-f", "-w"} + name);
        addRow("container, server and alias, hidden again", open + everySwitch + open, everyText,
               QStringList{"-w"} + everyOption + name);
        addRow("switched on with empty texts", open + everySwitch, Texts(),
               QStringList{"-w", "-c", "", "-s", "", "-a", ""} + name);
        addRow("texts alone switch nothing on", open, everyText, QStringList{"-w"} + name);
        addRow("no computer name", QStringList(), Texts{{"ComputerNameEdit", ""}},
               QStringList{"-w"});
        addRow("texts are passed untrimmed", QStringList{"ZoneButton"},
               Texts{{"ZoneEdit", " Mac Zone "}, {"ComputerNameEdit", " "}},
               QStringList{"-z", " Mac Zone ", "-n", " "});
    }

    void choicesMakeTheArguments()
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
        QCOMPARE(World::calls().at(0).arguments,
                 QStringList({"/usr/local/sbin/mvjoin", "-u", "admin", "-p", " two  words ",
                              "example.test"}) +
                     arguments);
    }

    void everyAttemptSetsJoiningAndASuccessEnrolling_data()
    {
        addColumns<bool, int, bool, bool>("wanted", "exitStatus", "before", "after");
        addRow("wanted", true, 0, false, true);
        addRow("not wanted", false, 0, false, false);
        addRow("not wanted leaves it as it was", false, 0, true, true);
        addRow("wanted, but the join failed", true, 1, false, false);
    }

    void everyAttemptSetsJoiningAndASuccessEnrolling()
    {
        QFETCH(bool, wanted);
        QFETCH(int, exitStatus);
        QFETCH(bool, before);
        answerHelper("", exitStatus);
        JoinDriver driver;
        enrolling = before;
        if (wanted)
            driver.click("CloudCheck");
        QVERIFY(!joining);
        driver.next();
        QVERIFY(joining);
        QTEST(enrolling, "after");
    }

    void progressStandsWhileTheToolRuns()
    {
        JoinDriver driver;
        compareProgress<LoadJoin>(driver);
    }

    // The one thread, waiting for the tool, lends its place in the pool.
    void thePoolServesOthersMeanwhile()
    {
        QThreadPool* pool = QThreadPool::globalInstance();
        const auto restore =
            qScopeGuard([pool, usual = pool->maxThreadCount()] { pool->setMaxThreadCount(usual); });
        pool->setMaxThreadCount(1);
        World::hold("gui_helper_tool");
        JoinDriver driver;
        bool served = false;
        whileRunning(
            "gui_helper_tool", [&] { driver.next(); },
            [&](QWidget*) {
                QFuture<void> other = QtConcurrent::run([] {});
                served = QTest::qWaitFor([&other] { return other.isFinished(); });
            });
        QVERIFY(served);
        // The future is finished a moment before its thread counts as idle.
        QTRY_COMPARE(pool->activeThreadCount(), 0);
    }
};

WORLD_TEST_MAIN(TestJoinExecution)
#include "tst_joinexecution.moc"

#include "system/commandrunner.h"
#include "system/lowerpriv.h"
#include "tests/support/helperruns.h"

#include <csignal>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <syslog.h>
#include <unistd.h>

namespace {

// One privileged run.
struct Run {
    explicit Run(const QString& tool, const QStringList& arguments = {}, priv* runner = g_pProcess)
    {
        char** array = convertQSLtoArray(arguments);
        FILE* opened = nullptr;
        result = runner->runPrivCmd(World::path(tool).toUtf8().data(), array, &opened);
        stream.reset(opened);
        for (char** item = array; *item != nullptr; ++item)
            delete[] * item;
        delete[] array;
    }

    int result = 0;
    Stream stream{nullptr, fclose};
};

// Listens in the place of the system log and collects its lines.
class SystemLog
{
public:
    SystemLog()
    {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        strcpy(address.sun_path, "/dev/log");
        listener = socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
        if (bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0)
            qFatal("Can't listen to the system log");
    }
    ~SystemLog()
    {
        closelog();
        close(listener);
        unlink("/dev/log");
    }
    Q_DISABLE_COPY(SystemLog)

    QList<QByteArray> lines() const
    {
        QList<QByteArray> found;
        char line[1000];
        ssize_t length = 0;
        while ((length = recv(listener, line, sizeof line, 0)) > 0)
            found << QByteArray(line, static_cast<int>(length));
        return found;
    }

private:
    int listener = -1;
};

// A child that ends at once with status 5, and that nobody waits for yet; in the process group of
// `leader`, or in one of its own.
pid_t endedChild(pid_t leader = 0)
{
    const pid_t pid = fork();
    if (pid == 0) {
        setpgid(0, leader);
        _exit(5);
    }
    siginfo_t info = {};
    waitid(P_PID, static_cast<id_t>(pid), &info, WEXITED | WNOWAIT);
    return pid;
}

} // namespace

class TestPrivilegedRunner : public WorldTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // Looked at here, as init() opens another session for each test function.
        QVERIFY2(authorizationRef != nullptr, "no session is open before main()");
    }

    void aCancelledPromptGivesItsCodeIsLoggedAndLeavesThePipe()
    {
        const SystemLog log;
        World::answer("authorization_prompt", {"", "", 1});
        // The caller's own value has to stay, whatever it is.
        FILE* stream = stdout;
        char* none = nullptr;
        QCOMPARE(
            g_pProcess->runPrivCmd(World::path("gui_helper_tool").toUtf8().data(), &none, &stream),
            -60006);
        QCOMPARE(stream, stdout);
        QCOMPARE(World::callsOf("gui_helper_tool").size(), 0);
        QCOMPARE(messages().filter("[ rc:"), QStringList());
        const QList<QByteArray> lines = log.lines();
        QCOMPARE(lines.size(), 1);
        QVERIFY2(lines.at(0).endsWith(": Authorization failure, Authorization Result Code: -60006"),
                 lines.at(0));
    }

    void missingSessionShowsAsTheServicesCode()
    {
        const AuthorizationRef before = authorizationRef;
        authorizationRef = nullptr;
        const Run run("gui_helper_tool");
        authorizationRef = before;
        QCOMPARE(run.result, -60002);
        QVERIFY(run.stream == nullptr);
        QCOMPARE(World::calls().size(), 0);
    }

    void eachRunnerOpensASessionAndAsksNothing()
    {
        QVERIFY(dynamic_cast<LowerPriv*>(g_pProcess) != nullptr);
        const AuthorizationRef before = authorizationRef;
        const LowerPriv another;
        QVERIFY(authorizationRef != nullptr);
        QVERIFY(authorizationRef != before);
        QCOMPARE(g_pProcess->setupauth(), 0);
        QCOMPARE(World::calls().size(), 0);
    }

    void anExitIsReturnedAndLoggedAndTheRestOfTheOutputIsTheCallers()
    {
        const SystemLog log;
        const QByteArray output = "first line\nsecond" + QByteArray(2000, 'x');
        answerHelper(output, 7);
        const Run run("gui_helper_tool");
        QCOMPARE(run.result, 7);
        QCOMPARE(messages().filter("[ rc:"),
                 QStringList{"[ rc: 1792 ] [ WIFEXITED(rc):  true ] [WEXITSTATUS(rc):  7 ]"});
        QCOMPARE(rest(run.stream.get()), output);
        QCOMPARE(log.lines(), QList<QByteArray>());
    }

    void killedToolIs998()
    {
        for (const int signal : {SIGKILL, SIGTERM, SIGHUP}) {
            answerHelper("text", 0, signal);
            const Run run("gui_helper_tool");
            QCOMPARE(run.result, 998);
            QCOMPARE(rest(run.stream.get()), QByteArray("text"));
        }
        QCOMPARE(messages().filter("[ rc:"), QStringList());
    }

    void toolWithoutItsPidCountsAsSuccess_data()
    {
        addColumns<QByteArray, int>("output", "status");
        addRow("a failure", QByteArray("dsconfigad: Invalid credentials\n"), 77);
        addRow("not ASCII", QByteArray("\u6771\u4eac is bound\n"), 1);
        addRow("four bytes", QByteArray("Text"), 1);
    }

    void toolWithoutItsPidCountsAsSuccess()
    {
        QFETCH(QByteArray, output);
        QFETCH(int, status);
        World::answer("dsconfigad", {output, "", status});
        const Run run("dsconfigad", {"-show"});
        QCOMPARE(run.result, 0);
        QCOMPARE(rest(run.stream.get()), output.mid(4));
        QCOMPARE(messages().filter("[ rc:"),
                 QStringList{"[ rc: 0 ] [ WIFEXITED(rc):  true ] [WEXITSTATUS(rc):  0 ]"});
    }

    void withoutAPidANewRunnerWaitsForNoChild()
    {
        for (const char* output : {"", "abc"}) {
            World::answer("dsconfigad", {output, "", 3});
            const pid_t other = endedChild();
            LowerPriv runner;
            const int result = Run("dsconfigad", {}, &runner).result;
            int status = 0;
            QCOMPARE(waitpid(other, &status, 0), other);
            QCOMPARE(WEXITSTATUS(status), 5);
            QCOMPARE(result, 0);
        }
    }

    void withoutAPidTheRunnerWaitsForThePreviousOne()
    {
        // A negative id is a group's for waitpid(): each run reaps one of its three ended children.
        const pid_t leader = endedChild();
        endedChild(leader);
        endedChild(leader);
        const pid_t group = -leader;
        const QByteArray pid(reinterpret_cast<const char*>(&group), sizeof group);
        for (const QByteArray& output : {pid, QByteArray(), QByteArray("abc")}) {
            World::answer("dsconfigad", {output, ""});
            QCOMPARE(Run("dsconfigad").result, 5);
        }
        QCOMPARE(Run("dsconfigad").result, 0);
    }
};

WORLD_TEST_MAIN(TestPrivilegedRunner)
#include "tst_privilegedrunner.moc"

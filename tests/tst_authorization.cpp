#include "tests/support/worldtest.h"

#include <Security/Authorization.h>

#include <QFile>

#include <climits>
#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// Makes a program unusable.
using Spoil = void (*)(const QString&);

// One call of the authorization service.
struct Run {
    Run(AuthorizationRef reference, const QString& tool, QList<QByteArray> arguments = {})
    {
        std::vector<char*> vector;
        for (QByteArray& argument : arguments)
            vector.push_back(argument.data());
        vector.push_back(nullptr);
        FILE* opened = nullptr;
        status = AuthorizationExecuteWithPrivileges(
            reference, tool.toUtf8(), kAuthorizationFlagDefaults, vector.data(), &opened);
        stream.reset(opened);
    }

    OSStatus status = 0;
    Stream stream{nullptr, fclose};
};

AuthorizationRef newReference()
{
    AuthorizationRef reference = nullptr;
    AuthorizationCreate(nullptr, nullptr, kAuthorizationFlagDefaults, &reference);
    return reference;
}

} // namespace

Q_DECLARE_METATYPE(Spoil)

class TestAuthorization : public WorldTest
{
    Q_OBJECT

private slots:
    void toolAndPromptThatCannotBeExecutedHaveTheirCodes_data()
    {
        addColumns<QString, Spoil, int>("program", "spoil", "status");
        const auto add = [](const QString& how, Spoil spoil) {
            addRow(qPrintable("tool: " + how), QString("mvjoin"), spoil, -60031);
            addRow(qPrintable("prompt: " + how), QString("authorization_prompt"), spoil, -60008);
        };
        add("missing", World::removeTool);
        add("not executable", World::replaceByPlainFile);
        add("a folder", World::replaceByFolder);
        add("executable, and not a program", [](const QString& program) {
            World::replaceByPlainFile(program);
            chmod(World::path(program).toUtf8(), 0755);
        });
    }

    void toolAndPromptThatCannotBeExecutedHaveTheirCodes()
    {
        QFETCH(QString, program);
        QFETCH(Spoil, spoil);
        spoil(program);
        const QList<int> before = openDescriptors();
        const Run run(newReference(), World::path("mvjoin"));
        QTEST(run.status, "status");
        QVERIFY(run.stream == nullptr);
        QCOMPARE(World::callsOf("mvjoin").size(), 0);
        QCOMPARE(openDescriptors(), before);
    }

    void promptsAnswerDecides_data()
    {
        addColumns<int, int, int>("answer", "signal", "status");
        addRow("0 grants", 0, 0, 0);
        addRow("1 is cancelled", 1, 0, -60006);
        addRow("2 is denied", 2, 0, -60005);
        addRow("3 is an internal error", 3, 0, -60008);
        addRow("255 is an internal error", 255, 0, -60008);
        addRow("its death is an internal error", 0, SIGKILL, -60008);
    }

    void promptsAnswerDecides()
    {
        QFETCH(int, answer);
        QFETCH(int, signal);
        QFETCH(int, status);
        World::answer("authorization_prompt", {"", "", answer, signal});
        const Run run(newReference(), World::path("mvjoin"));
        QCOMPARE(run.status, status);
        QCOMPARE(run.stream != nullptr, status == 0);
        if (run.stream != nullptr)
            rest(run.stream.get()); // to the tool's end
        QCOMPARE(World::callsOf("mvjoin").size(), status == 0 ? 1 : 0);
    }

    void promptComesAgainAfterARefusal()
    {
        const AuthorizationRef reference = newReference();
        World::answer("authorization_prompt", {"", "", 1});
        QCOMPARE(Run(reference, World::path("mvjoin")).status, -60006);
        World::answer("authorization_prompt", {});
        QCOMPARE(Run(reference, World::path("mvjoin")).status, 0);
        QCOMPARE(World::callsOf("authorization_prompt").size(), 2);
        QCOMPARE(World::callsOf("mvjoin").size(), 1);
    }

    void toolIsADirectChildOnOneSocketWithOurStandardError()
    {
        const Run run(newReference(), "/bin/sh",
                      {"-c", "echo $PPID; readlink /proc/$$/fd/0 /proc/$$/fd/1 /proc/$$/fd/2"});
        QVERIFY(run.stream != nullptr);
        const QStringList printed = QString::fromUtf8(rest(run.stream.get())).split('\n');
        QCOMPARE(printed.at(0), QString::number(getpid()));
        QVERIFY2(printed.at(1).startsWith("socket:"), qPrintable(printed.at(1)));
        QCOMPARE(printed.at(2), printed.at(1));
        char own[PATH_MAX] = {};
        QVERIFY(readlink("/proc/self/fd/2", own, sizeof own - 1) > 0);
        QCOMPARE(printed.at(3), QString::fromLocal8Bit(own));
    }

    void streamGoesBothWays()
    {
        const Run run(newReference(), "/bin/sh", {"-c", "read line; echo \"got $line\""});
        fputs("a word\n", run.stream.get());
        fflush(run.stream.get());
        QCOMPARE(rest(run.stream.get()), QByteArray("got a word\n"));
    }

    // The next descriptor that is opened takes the place of a closed standard error, where messages
    // go. The tool's stream must not get that place.
    void whatIsLoggedWithoutStandardErrorReachesNoTool()
    {
        const int kept = dup(STDERR_FILENO);
        close(STDERR_FILENO);
        Run run(newReference(), "/bin/cat");
        const ssize_t written = write(STDERR_FILENO, "logged\n", 7);
        run.stream.reset(); // returns only because cat sees the end of its input
        dup2(kept, STDERR_FILENO);
        close(kept);
        QCOMPARE(run.status, 0);
        QCOMPARE(written, ssize_t(-1));
    }

    void promptGetsTheToolsPathAndNeitherItNorTheToolADescriptor()
    {
        QFile file(World::file("inheritable"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        const int inheritable = dup(file.handle());
        Run(newReference(), World::path("mvjoin"), {"-u", "admin"});
        close(inheritable);
        QCOMPARE(World::calls().size(), 2);
        QCOMPARE(World::calls().at(0).path, QString("/usr/libexec/authorization_prompt"));
        QCOMPARE(World::calls().at(0).arguments, QStringList{"/usr/local/sbin/mvjoin"});
        QCOMPARE(World::calls().at(0).descriptors, QList<int>({0, 1, 2}));
        QCOMPARE(World::calls().at(1).descriptors, QList<int>({0, 1, 2}));
    }

    void toolThatNobodyWaitsForIsReapedByClosing()
    {
        Run run(newReference(), World::path("mvjoin"));
        siginfo_t info = {};
        QCOMPARE(waitid(P_ALL, 0, &info, WEXITED | WNOWAIT), 0);
        run.stream.reset();
        QCOMPARE(waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT), -1);
        QCOMPARE(errno, ECHILD);
    }

    void toolThatWasWaitedForIsNotWaitedForAgain()
    {
        Run run(newReference(), World::path("mvjoin"));
        int status = -1;
        QVERIFY(waitpid(-1, &status, 0) > 0);
        QCOMPARE(status, 0);
        // Another child, which closing the stream must neither wait for nor reap.
        const Run other(newReference(), "/bin/cat");
        run.stream.reset();
        siginfo_t info = {};
        QCOMPARE(waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT), 0);
        QCOMPARE(info.si_pid, 0);
    }

    void writingToAnEndedToolFails()
    {
        const Run run(newReference(), "/bin/true");
        QCOMPARE(rest(run.stream.get()), QByteArray());
        const QByteArray much(10 * BUFSIZ, 'x'); // goes past the stream's own buffer
        const auto size = static_cast<size_t>(much.size());
        QCOMPARE(fwrite(much.constData(), 1, size, run.stream.get()), size_t(0));
        QVERIFY(ferror(run.stream.get()) != 0);
    }
};

WORLD_TEST_MAIN(TestAuthorization)
#include "tst_authorization.moc"

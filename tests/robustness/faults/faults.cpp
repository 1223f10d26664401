// Each use of a tool in uses.cpp with every fault and under every shortage: prints a table of what
// the user sees and fails where that is not what the rules give, where the program crashes or
// hangs, or where a child process, descriptor, thread or window is left.

#include "tests/robustness/faults/shortage.h"
#include "tests/robustness/faults/uses.h"
#include "tests/robustness/faults/watch.h"

#include <QThreadPool>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// --- The faults

// The bytes that a tool can write after its process id before anything is read.
int socketCapacity()
{
    int ends[2];
    socketpair(AF_UNIX, SOCK_STREAM, 0, ends);
    const QByteArray much(4 << 20, 'x');
    send(ends[0], much.constData(), 4, 0);
    const ssize_t taken =
        send(ends[0], much.constData(), static_cast<size_t>(much.size()), MSG_DONTWAIT);
    close(ends[0]);
    close(ends[1]);
    return static_cast<int>(taken);
}

Fault printing(const QString& name, const QByteArray& output)
{
    return {name, Fault::InPlace, 0, -1, output};
}

QList<Fault> faults(const Use& use)
{
    QList<Fault> all = {
        {"missing", Fault::Missing},
        {"not executable", Fault::NotExecutable},
        {"a folder in its place", Fault::Folder},
        {"stopped", Fault::InPlace, SIGSTOP},
        {"silent", Fault::InPlace, 0, 0},
        {"1 byte", Fault::InPlace, 0, -1, "x", false},
        {"3 bytes, no process id", Fault::InPlace, 0, -1, "xyz", false},
    };
    for (const int signal : {SIGHUP, SIGABRT, SIGKILL, SIGSEGV, SIGTERM})
        all << Fault{QString("killed by %1").arg(strsignal(signal)).toLower(), Fault::InPlace,
                     signal};
    for (const int status : {1, 2, 126, 127, 255})
        all << Fault{QString("exit %1").arg(status), Fault::InPlace, 0, status};
    // A helper tool is read only after its end. Its socket holds more than a shell's pipe.
    const int capacity = use.tool == "gui_helper_tool" ? socketCapacity() : 65536;
    all << printing("capacity less 1", QByteArray(capacity - 1, 'x'));
    QByteArray bytes;
    for (int i = 0; i < 1024; ++i)
        bytes += static_cast<char>(i);
    all << printing("binary", bytes) << printing("invalid utf-8", "a\xff\xc3(\xe2\x82\n\xf0\x9f!")
        << printing("nuls", QByteArray("before\0cut\nafter\0cut\n", 21))
        << printing("crlf", "first\r\nsecond\r\n")
        << printing("a line of 1 MiB", QByteArray(1 << 20, 'x'));
    QByteArray lines;
    for (int i = 1000; i < 6000; ++i)
        lines += "OU=unit " + QByteArray::number(i) + ",DC=example,DC=test\n";
    all << printing("5000 lines", lines);
    return all;
}

void plant(const Use& use, const Fault& fault, int status, bool held = false)
{
    switch (fault.place) {
    case Fault::Missing:
        return World::removeTool(use.tool);
    case Fault::NotExecutable:
        return World::replaceByPlainFile(use.tool);
    case Fault::Folder:
        return World::replaceByFolder(use.tool);
    case Fault::InPlace:
        break;
    }
    const bool reportsPid = use.tool == "gui_helper_tool" && fault.reportsPid;
    World::answer(use.command, {fault.output, "", status, fault.signal, reportsPid, held});
}

// A tool that is stopped is waited for; so is a helper tool that prints more than its socket holds,
// because it is read only after its end.
bool waits(const Use& use, const Fault& fault)
{
    const bool tooMuch = use.tool == "gui_helper_tool" && fault.output.size() > socketCapacity();
    return fault.signal == SIGSTOP || tooMuch;
}

// --- One case, in a process of its own

void readyWorld(const Use& use)
{
    World::reset();
    if (use.name == "leave")
        World::setJoined();
    if (use.name == "unbinding")
        World::setBound();
}

void runFault(const Use& use, const Fault& fault, FILE* verdict)
{
    const int status = fault.exitStatus < 0 ? use.outputStatus : fault.exitStatus;
    readyWorld(use);
    const Leftovers before;
    QString seen;
    {
        // Without a preparation, the wizard's start may be the use.
        if (use.prepare == nothing)
            plant(use, fault, status);
        WizardDriver driver;
        use.prepare(driver);
        plant(use, fault, status);
        seen = use.use(driver);
    }
    QString expected = use.expected(fault, status);
    // Table kills such a tool, whose output then ends anywhere.
    if (waits(use, fault) && fault.signal == 0) {
        expected = expected.section("...", 0, 0) + "...";
        seen = seen.section("...", 0, 0) + "...";
    }
    QStringList left = before.left();
    // With Qt 6 the loader's QProcess forgets a descriptor of a script that does not start.
    if (QT_VERSION_MAJOR == 6 && fault.place != Fault::InPlace && use.name == "containers")
        left.removeAll("1 descriptors");
    report(verdict, seen, expected, left);
}

void runShortage(const Use& use, const Shortage& shortage, FILE* verdict)
{
    const Fault speaking = printing("", use.words);
    readyWorld(use);
    plant(use, speaking, use.outputStatus, shortage.kind == Shortage::Interruptions);
    const Leftovers before;
    QString seen;
    {
        std::unique_ptr<WizardDriver> driver;
        const auto go = [&] {
            driver = std::make_unique<WizardDriver>();
            use.prepare(*driver);
        };
        if (use.prepare != nothing)
            go();
        const ShortageGuard guard(shortage, use.command);
        if (use.prepare == nothing)
            go();
        seen = use.use(*driver);
        driver.reset();
    }
    const QString well = use.expected(speaking, use.outputStatus);
    QStringList left = before.left();
    // The loader leaves the QProcess of a failed fork behind, with one descriptor.
    if (shortage.kind == Shortage::Processes && use.name == "containers")
        left.removeAll("1 descriptors");
    report(verdict, seen, shortage.expected(use.name, well), left);
}

// A process namespace, so that a signal sent astray reaches none but the processes of this test.
void enterProcessNamespace()
{
    if (unshare(CLONE_NEWPID) != 0)
        qFatal("No process namespace: %s", strerror(errno));
    const pid_t child = fork();
    if (child != 0) {
        int status = 1;
        waitpid(child, &status, 0);
        _exit(WIFEXITED(status) ? WEXITSTATUS(status) : 1);
    }
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getpid() != 1 || mount("proc", "/proc", "proc", 0, nullptr) != 0)
        qFatal("The process namespace can't be used: %s", strerror(errno));
}

} // namespace

// Takes a part of a use's, fault's or shortage's name, to run only those.
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_NO_GLIB", "1");
    const QString wanted = argc > 1 ? argv[1] : "";
    World::enter();
    enterProcessNamespace();
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    // Fonts and images are loaded once. No thread may be left, which a fork would not have.
    QThreadPool::globalInstance()->setExpiryTimeout(0);
    WizardDriver();
    QThreadPool::globalInstance()->waitForDone();

    setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    Table rows;
    const QList<Use>& all = uses();
    for (const Use& use : all) {
        const QList<Fault> planted = faults(use);
        for (const Fault& fault : planted) {
            if (!(use.name + ' ' + fault.name).contains(wanted))
                continue;
            std::function<bool()> waitsFor;
            if (waits(use, fault))
                waitsFor = [&use] { return World::wasRun(use.command); };
            rows.run(use.name, fault.name, waitsFor,
                     [&](FILE* verdict) { runFault(use, fault, verdict); });
        }
        const QList<Shortage> lacking = shortages();
        for (const Shortage& shortage : lacking) {
            if ((use.name + ' ' + shortage.name).contains(wanted))
                rows.run(use.name, shortage.name, nullptr,
                         [&](FILE* verdict) { runShortage(use, shortage, verdict); });
        }
    }
    return rows.finish();
}

#include "tests/robustness/faults/shortage.h"

#include "tests/support/world.h"

#include <QDir>
#include <QFile>
#include <QMap>
#include <QThread>
#include <QThreadPool>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <fcntl.h>
#include <functional>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

rlimit previous;
constexpr uid_t nobody = 65534;

void require(bool done, const char* what)
{
    if (done)
        return;
    perror(what);
    _exit(1);
}

void limit(decltype(RLIMIT_NPROC) resource, rlim_t most)
{
    getrlimit(resource, &previous);
    const rlimit limited = {most, previous.rlim_max};
    require(setrlimit(resource, &limited) == 0, "setrlimit");
}

// Each descriptor that is open may stay, and none may be added.
void takeDescriptors()
{
    int next = dup(STDIN_FILENO);
    close(next);
    limit(RLIMIT_NOFILE, static_cast<rlim_t>(next));
}

void fillDisk()
{
    World::makeWritable("/tmp", "size=4m");
    QFile file("/tmp/full");
    require(file.open(QIODevice::WriteOnly), "open");
    while (file.write(QByteArray(4096, 'x')) > 0 && file.flush())
        continue;
    qputenv("HOME", "/tmp");
}

// For the rest of the process: no thread can be made, while processes can.
void refuseThreads()
{
    sock_filter rules[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        // The newer call takes its flags from memory, where no filter can look; without it the C
        // library uses the older one.
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_clone3, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_clone, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, args)),
        BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, CLONE_THREAD, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EAGAIN),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog filter = {sizeof rules / sizeof *rules, rules};
    require(prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
                prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0,
            "seccomp");
}

void ignoreAlarm(int) {}

// Sends alarms to each thread, which interrupt whatever call it is in; the system would send those
// of a timer to the main thread alone. Lets the held tool end after a hundred rounds of them.
void alarmThreads(const std::atomic<bool>& ended, const QString& command)
{
    int waited = 0;
    while (!ended) {
        const QStringList threads =
            QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        for (const QString& thread : threads)
            tgkill(getpid(), thread.toInt(), SIGALRM);
        QThread::usleep(200);
        if (World::wasRun(command) && ++waited == 100)
            World::release(command);
    }
}

} // namespace

QList<Shortage> shortages()
{
    QList<Shortage> all;
    // Qt 6 paints with threads, each of which takes a descriptor and a process slot. Where it gets
    // no thread it waits for one without an end, and without a descriptor it ends the program.
    if (QT_VERSION_MAJOR < 6) {
#ifndef __SANITIZE_ADDRESS__ // such a build needs a descriptor to check objects' classes
        all << Shortage{"no descriptor free", Shortage::Descriptors};
#endif
        all << Shortage{"no process slot free", Shortage::Processes}
            << Shortage{"no thread can be made", Shortage::Threads};
    }
    return all << Shortage{"full disk", Shortage::Disk}
               << Shortage{"standard streams closed", Shortage::StandardStreams}
               << Shortage{"signals that interrupt", Shortage::Interruptions};
}

// A shell command that can't be started counts as a success and prints nothing; a privileged run
// fails, and a script that was not started never ends.
QString Shortage::expected(const QString& use, const QString& well) const
{
    static const QMap<QString, QString> notStarted = {
        {"greeting", "\"You are currently joined to \""},
        {"computer name", "computer name \"\""},
        {"profiles", "not enrolled"},
        {"credential check", "page 4"},
        {"containers", "page 4, loading until closed"},
        {"join", "page 4, empty warning"},
        {"leave", "page 6, warning \"Unexpected error (998).\""},
        {"binding report", "page 0"},
        {"prompt", "page 0"}};
    const bool onThread = use == "join" || use == "leave";
    if (kind == Descriptors || kind == Processes || (kind == Threads && onThread))
        return notStarted.value(use, well);
    return well;
}

ShortageGuard::ShortageGuard(const Shortage& shortage, const QString& command) : kind(shortage.kind)
{
    switch (kind) {
    case Shortage::Descriptors:
        takeDescriptors();
        break;
    case Shortage::Processes:
        // Only a user other than root is limited.
        limit(RLIMIT_NPROC, 0);
        if (geteuid() == 0)
            require(setresuid(nobody, nobody, 0) == 0, "setresuid");
        break;
    case Shortage::Threads:
        refuseThreads();
        break;
    case Shortage::Disk:
        fillDisk();
        break;
    case Shortage::StandardStreams:
        for (int i = 0; i < 3; ++i) {
            standard[i] = fcntl(i, F_DUPFD_CLOEXEC, 100);
            close(i);
        }
        break;
    case Shortage::Interruptions:
        struct sigaction action = {};
        action.sa_handler = ignoreAlarm;
        sigaction(SIGALRM, &action, nullptr);
        interrupter = std::thread(alarmThreads, std::cref(ended), command);
        break;
    }
}

ShortageGuard::~ShortageGuard()
{
    switch (kind) {
    case Shortage::Descriptors:
        setrlimit(RLIMIT_NOFILE, &previous);
        break;
    case Shortage::Processes:
        setrlimit(RLIMIT_NPROC, &previous);
        if (getuid() == nobody)
            require(setresuid(0, 0, 0) == 0, "setresuid");
        break;
    case Shortage::Threads:
        break;
    case Shortage::Disk:
        umount("/tmp");
        break;
    case Shortage::StandardStreams:
        // A thread with which Qt 6 paints may hold the number of a closed stream.
        QThreadPool::globalInstance()->waitForDone();
        for (int i = 0; i < 3; ++i) {
            dup2(standard[i], i);
            close(standard[i]);
        }
        break;
    case Shortage::Interruptions:
        ended = true;
        interrupter.join();
        break;
    }
}

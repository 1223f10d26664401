#include "tests/robustness/faults/watch.h"

#include "tests/support/files.h"
#include "tests/support/worldtest.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QMap>
#include <QThread>
#include <QThreadPool>
#include <QWidget>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int polling = 10;     // ms
constexpr int patience = 500;   // ms that a stopped tool has to be waited for, another four times
constexpr int hanging = 30'000; // ms

struct Process {
    qint64 parent = 0;
    char state = ' ';
};

QMap<qint64, Process> processes()
{
    QMap<qint64, Process> all;
    const QStringList names = QDir("/proc").entryList({"[0-9]*"}, QDir::Dirs);
    for (const QString& name : names) {
        const QByteArray stat = readFile("/proc/" + name + "/stat");
        const QList<QByteArray> fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
        if (fields.size() > 1) // or it has ended since
            all[name.toLongLong()] = {fields.at(1).toLongLong(), fields.at(0).at(0)};
    }
    return all;
}

// Lets the stopped tools below a process go on; with `kill`, also kills the others. True if there
// was any.
bool endTools(qint64 ancestor, bool kill)
{
    const QMap<qint64, Process> all = processes();
    bool found = false;
    for (auto process = all.cbegin(); process != all.cend(); ++process) {
        qint64 above = process->parent;
        while (above != ancestor && all.contains(above))
            above = all.value(above).parent;
        const bool stopped = process->state == 'T';
        if (above != ancestor || process->state == 'Z' || !(stopped || kill))
            continue;
        ::kill(static_cast<pid_t>(process.key()), stopped ? SIGCONT : SIGKILL);
        found = true;
    }
    return found;
}

} // namespace

bool childRuns()
{
    const QMap<qint64, Process> all = processes();
    return std::any_of(all.cbegin(), all.cend(), [](const Process& process) {
        return process.parent == getpid() && process.state != 'Z';
    });
}

Leftovers::Leftovers()
{
    QThreadPool::globalInstance()->waitForDone();
    descriptors = openDescriptors().size();
}

QStringList Leftovers::left() const
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QThreadPool::globalInstance()->waitForDone();
    QStringList found;
    if (!QApplication::topLevelWidgets().isEmpty())
        found << "a window";
    // A thread is listed for a moment after it was waited for.
    if (!QTest::qWaitFor([] { return World::threads() == 1; }))
        found << "a thread";
    if (openDescriptors().size() != descriptors)
        found << QString("%1 descriptors").arg(openDescriptors().size() - descriptors);
    if (hasChildren())
        found << "a child process";
    return found;
}

void report(FILE* verdict, const QString& seen, const QString& expected, const QStringList& left)
{
    QString text = seen;
    if (seen != expected)
        text += "\n    expected: " + expected;
    if (!left.isEmpty())
        text += "\n    left: " + left.join(", ");
    fputs(qPrintable(text), verdict);
    fflush(verdict);
}

void Table::run(const QString& use, const QString& fault, const std::function<bool()>& waitsFor,
                const std::function<void(FILE*)>& testCase)
{
    World::forgetCalls();
    int ends[2];
    const bool connected = pipe2(ends, O_CLOEXEC) == 0;
    const pid_t child = connected ? fork() : -1;
    if (child < 0)
        qFatal("A case can't be run: %s", strerror(errno));
    if (child == 0) {
        close(ends[0]);
        (void)freopen("/dev/null", "w", stderr); // drops what shells print about missing tools
        testCase(fdopen(ends[1], "w"));
        _exit(0);
    }
    close(ends[1]);

    QElapsedTimer clock;
    clock.start();
    QElapsedTimer wait;
    int status = 0;
    bool waited = false;
    while (waitpid(child, &status, WNOHANG) == 0) {
        QThread::msleep(polling);
        if (waitsFor && !wait.isValid() && waitsFor())
            wait.start();
        if (wait.isValid() && wait.elapsed() > patience && endTools(child, false))
            waited = true;
        else if (!waited && wait.isValid() && wait.elapsed() > 4 * patience &&
                 endTools(child, true))
            waited = true;
        if (clock.elapsed() > hanging) {
            endTools(child, true);
            ::kill(child, SIGKILL);
        }
    }
    QFile verdict;
    verdict.open(ends[0], QFile::ReadOnly, QFile::AutoCloseHandle);
    QString text = QString::fromLocal8Bit(verdict.readAll());

    const bool told = !text.isEmpty();
    if (WIFSIGNALED(status)) {
        const int signal = WTERMSIG(status);
        text = signal == SIGKILL ? QString("HANGS") : QString("CRASHES, signal %1").arg(signal);
    }
    if (waited)
        text += ", after waiting for it";
    const bool failed = !WIFEXITED(status) || WEXITSTATUS(status) != 0 || !told ||
                        text.contains('\n') || waited != bool(waitsFor);
    ++tried;
    bad += failed;
    printf("%-4s  %-16s  %-32s  %s\n", failed ? "BAD" : "ok", qPrintable(use), qPrintable(fault),
           qPrintable(text));
}

int Table::finish()
{
    printf("%d faults tried, %d not as they should be\n", tried, bad);
    return bad == 0 && tried > 0 ? 0 : 1;
}

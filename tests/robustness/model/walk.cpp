// Walks the model and the program together and compares them after each step: all paths up to a
// depth, then random ones. After a job's prefix each step is a fork: no beginning is walked twice,
// and a crash or hang is told with its path; in a prefix or a random walk, with its job or seed.

#include "tests/robustness/model/testedwizard.h"
#include "tests/support/worldtest.h"

#include <QCommandLineParser>
#include <QCryptographicHash>
#include <QThreadPool>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <random>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Model;

namespace {

// A step takes some milliseconds; one that has not ended after this many seconds hangs.
constexpr unsigned hangs = 30;

// Shared by all branches.
struct Tally {
    std::atomic<int> nextJob;
    std::atomic<long> steps;
    std::atomic<long> paths;
    std::atomic<int> failed;
    std::atomic<long> known; // paths whose last step was taken from the same state before
    std::atomic<quint64> ends[1 << 20]; // state and last step, by their hash
};

Tally* tally = nullptr;
FILE* report = nullptr;

void fail(const QStringList& path, const QString& what)
{
    if (tally->failed++ == 0)
        fprintf(report, "FAIL: %s\n%s\n", qPrintable(path.join("\n  then ")), qPrintable(what));
    fflush(report);
}

QString difference(const View& expected, const View& seen)
{
    const QStringList want = expected.text().split('\n');
    const QStringList have = seen.text().split('\n');
    QStringList lines;
    for (const QString& line : want) {
        if (!have.contains(line))
            lines << "- " + line;
    }
    for (const QString& line : have) {
        if (!want.contains(line))
            lines << "+ " + line;
    }
    return lines.isEmpty() ? "in another order:\n" + seen.text() : lines.join('\n');
}

// One path: the model, the program, and the way they have come.
struct Walk {
    explicit Walk(const Machine& machine)
        : model(machine), program(machine), path{machine.name() + ": start"}
    {
    }

    bool take(const Step& step)
    {
        const Machine machine = model.machine();
        if (step.act != Act::Start)
            path << step.text();
        alarm(hangs);
        const View expected = model.take(step);
        const View seen = program.take(step, step.act == Act::Outside ? model.machine() : machine);
        alarm(0);
        ++tally->steps;
        if (expected.text() == seen.text())
            return true;
        fail(path, difference(expected, seen));
        return false;
    }

    Rules model;
    TestedWizard program;
    QStringList path;
};

// Waits for a fork and tells how it ended; empty when it ended well. What a sanitizer finds ends it
// with a status other than 0.
QString trouble(pid_t child)
{
    int status = 0;
    while (child > 0 && waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (child < 0)
        return "can't be forked";
    if (WIFSIGNALED(status))
        return WTERMSIG(status) == SIGALRM
                   ? "hangs"
                   : QString("is killed by signal %1").arg(WTERMSIG(status));
    return WEXITSTATUS(status) == 0 ? QString() : QString("exits with %1").arg(WEXITSTATUS(status));
}

// Runs the branch in a fork and waits for it.
template <typename Branch> void fork(const QStringList& path, const QString& step, Branch branch)
{
    // All forks share the descriptor by which the event loop is woken. What waits in it now would
    // wake only one of them, so all events are handled before; with a time limit processEvents()
    // goes on until there are none.
    QCoreApplication::processEvents(QEventLoop::AllEvents, 1000);
    // The fork would not have the pool's threads, with which Qt 6 paints.
    QThreadPool::globalInstance()->waitForDone();
    const pid_t child = ::fork();
    if (child == 0) {
        branch();
        _exit(0);
    }
    const QString said = trouble(child);
    if (!said.isEmpty())
        fail(path + QStringList{step}, said);
}

// Whether this is the first time that this step is taken from this state.
bool isNew(const Rules& model, const Step& step)
{
    const QByteArray end = model.state() + step.text().toUtf8();
    const QByteArray digest = QCryptographicHash::hash(end, QCryptographicHash::Sha256);
    quint64 mark = 0;
    memcpy(&mark, digest.constData(), sizeof mark);
    for (size_t i = 0; i < std::size(tally->ends); ++i) {
        quint64 there = 0;
        if (tally->ends[(mark + i) % std::size(tally->ends)].compare_exchange_strong(there, mark))
            return true;
        if (there == mark)
            return false;
    }
    fail({step.text()}, "There are more ends than the table has room for");
    return false;
}

void walkAll(Walk& walk, int depth, bool distinctEnds)
{
    const QVector<Step> steps = walk.model.steps(false);
    // The program's end is a path's end, too.
    if (depth == 0 || steps.first().act == Act::Start) {
        ++tally->paths;
        return;
    }
    for (const Step& step : steps) {
        if (tally->failed != 0)
            return;
        if (depth == 1 && distinctEnds && !isNew(walk.model, step)) {
            ++tally->paths;
            ++tally->known;
            continue;
        }
        fork(walk.path, step.text(), [&] {
            if (walk.take(step))
                walkAll(walk, depth - 1, distinctEnds);
        });
    }
}

void walkRandomly(const Machine& machine, unsigned seed, int count)
{
    std::mt19937 random(seed);
    Walk walk(machine);
    walk.path.first().prepend(QString("seed %1, ").arg(seed));
    if (!walk.take(Step()))
        return;
    for (int i = 1; i < count && tally->failed == 0; ++i) {
        const QVector<Step> steps = walk.model.steps(true);
        if (!walk.take(steps.at(static_cast<int>(random() % static_cast<unsigned>(steps.size())))))
            return;
    }
    ++tally->paths;
}

// A start of the program and the steps that all paths of one job begin with.
struct Prefix {
    Machine machine;
    QVector<Step> steps;
};

void addPrefixes(const Machine& machine, const Rules& model, const QVector<Step>& steps, int depth,
                 QVector<Prefix>& prefixes)
{
    const QVector<Step> next = model.steps(false);
    if (depth == 0 || (next.first().act == Act::Start && !steps.isEmpty())) {
        prefixes << Prefix{machine, steps};
        return;
    }
    for (const Step& step : next) {
        Rules after = model;
        after.take(step);
        addPrefixes(machine, after, steps + QVector<Step>{step}, depth - 1, prefixes);
    }
}

QVector<Machine> machines()
{
    QVector<Machine> all(7);
    all[1].joined = true;
    all[2].bound = true;
    all[3].joined = all[3].bound = true;
    all[4].agent = false;
    all[5].detour = Machine::Cloud;
    all[6].joined = true;
    all[6].detour = Machine::AfterLast;
    return all;
}

// The detours, which the real wizard does not have, are walked one step less deep.
int depthFrom(const Machine& machine, int depth)
{
    return machine.detour == Machine::None ? depth : depth - 1;
}

struct Extent {
    int depth;
    bool distinctEnds;
    int walks;
    int steps;
    unsigned seed;
};

// The beginnings of all paths.
QVector<Prefix> prefixesOf(const Extent& extent)
{
    // The start, which extent.depth does not count, and three steps of the user.
    constexpr int longest = 4;
    QVector<Prefix> all;
    const QVector<Machine> starts = machines();
    for (const Machine& machine : starts) {
        const int depth = depthFrom(machine, extent.depth);
        if (depth > 0)
            addPrefixes(machine, Rules(machine), {}, qMin(longest, depth + 1), all);
    }
    return all;
}

void walkBelow(const Prefix& prefix, const Extent& extent)
{
    Walk walk(prefix.machine);
    for (const Step& step : prefix.steps) {
        if (!walk.take(step))
            return;
    }
    walkAll(walk, depthFrom(prefix.machine, extent.depth) - prefix.steps.size() + 1,
            extent.distinctEnds);
}

// Takes jobs until none is left, each in a fork.
void work(const Extent& extent)
{
    const QVector<Prefix> prefixes = prefixesOf(extent);
    const QVector<Machine> starts = machines();
    for (;;) {
        const int job = tally->nextJob++;
        if (tally->failed != 0 || job >= prefixes.size() + extent.walks)
            return;
        if (job < prefixes.size()) {
            fork({}, "job " + QString::number(job), [&] { walkBelow(prefixes.at(job), extent); });
            continue;
        }
        const int walk = job - prefixes.size();
        const unsigned seed = extent.seed + static_cast<unsigned>(walk);
        fork({}, QString("seed %1").arg(seed),
             [&] { walkRandomly(starts.at(walk % starts.size()), seed, extent.steps); });
    }
}

void startWorker(int argc, char** argv, const Extent& extent)
{
    if (::fork() != 0)
        return;
    World::enter();
    (void)freopen("/dev/null", "w", stderr); // drops what shells print about missing tools
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QThreadPool::globalInstance()->setExpiryTimeout(0);
    // Fonts and images are loaded once, and not in each fork.
    TestedWizard(Machine()).take(Step(), Machine());
    work(extent);
    _exit(0);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_NO_GLIB", "1");
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions(
        {{"depth", "Walk all paths of this many steps.", "number", "4"},
         {"distinct-ends", "Take a path's last step only once from each state of the model."},
         {"walks", "Walk this many random paths.", "number", "50"},
         {"steps", "Steps of a random path, the start included.", "number", "100"},
         {"seed", "The first random path's seed.", "number", "1"},
         {"jobs", "Processes side by side.", "number", "2"}});
    parser.process(QStringList(argv, argv + argc));
    const auto number = [&parser](const char* name) { return parser.value(name).toInt(); };
    const Extent extent{number("depth"), parser.isSet("distinct-ends"), number("walks"),
                        number("steps"), static_cast<unsigned>(number("seed"))};

    report = fdopen(dup(STDOUT_FILENO), "w");
    tally = static_cast<Tally*>(
        mmap(nullptr, sizeof(Tally), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    for (int i = 0; i < number("jobs"); ++i)
        startWorker(argc, argv, extent);
    int status = 0;
    while (wait(&status) > 0) {
        if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
            tally->failed++;
    }
    const bool alike = tally->failed == 0 && tally->paths > 0;
    fprintf(report,
            "depth %d, %d random walks of %d steps from seed %u: %ld paths (%ld with a known end), "
            "%ld steps, %s\n",
            extent.depth, extent.walks, extent.steps, extent.seed, tally->paths.load(),
            tally->known.load(), tally->steps.load(), alike ? "all alike" : "DIFFERENT");
    return alike ? 0 : 1;
}

// Many joins, leaves, container loads and warnings in one process: prints what each has left behind
// and fails for any descriptor, thread, child process or window, and for more memory than the
// program is known to keep (docs/known-behaviour.md).

#include "browser/cnbrowser.h"
#include "pages/dialogs/warning.h"
#include "tests/support/files.h"
#include "tests/support/helperruns.h"

#include <QCommandLineParser>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QThreadPool>

#include <cstdio>
#include <functional>
#include <malloc.h>
#include <unistd.h>

namespace {

constexpr int containers = 5000;
// Bytes for caches that are filled once, when a dialog stays up long enough to be painted.
constexpr qint64 caches = 32768;

// Child processes of all threads, ended or not.
int children()
{
    if (!QFile::exists("/proc/thread-self/children"))
        qFatal("This system does not tell which children a process has");
    int count = 0;
    const QStringList threads =
        QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& thread : threads)
        count += readFile("/proc/self/task/" + thread + "/children").count(' ');
    return count;
}

struct Counts {
    int descriptors = openDescriptors().size();
    int threads = World::threads();
    int children = ::children();
    int windows = QApplication::topLevelWidgets().size();
    size_t memory = mallinfo2().uordblks + mallinfo2().hblkhd; // the latter in mappings of its own
};

// The C library counts what is in a thread's cache as in use. The cache can be turned off by the
// environment only, when the program starts.
void countMemoryExactly(char** argv)
{
    const char* const tunables = "GLIBC_TUNABLES";
    if (qEnvironmentVariableIsSet(tunables))
        return;
    qputenv(tunables, "glibc.malloc.tcache_count=0");
    execv("/proc/self/exe", argv);
}

// Runs the action a few times to fill all caches, then `count` times. Each run may keep `allowed`
// bytes.
bool soak(const char* name, int count, qint64 allowed, const std::function<void(int)>& action)
{
    int done = 0;
    // A person is slower than a thread at the end of its task, so the next run waits for that end.
    const auto run = [&] {
        action(done++);
        waitForIdleThreads();
    };
    while (done < 20)
        run();
    // The threads of the pool are ended before each count: how many there are, with a descriptor
    // and memory each, varies.
    QThreadPool::globalInstance()->waitForDone();
    const Counts before;
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < count; ++i)
        run();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QThreadPool::globalInstance()->waitForDone();
    // The system counts a thread a little longer, maybe in `before`, too.
    const bool ended = QTest::qWaitFor([&] { return World::threads() <= before.threads; });
    const Counts after;
    const qint64 grown = static_cast<qint64>(after.memory - before.memory);
    const bool level = ended && after.descriptors == before.descriptors &&
                       after.windows == before.windows && after.children == before.children &&
                       grown <= allowed * count + caches;
    printf("%-4s %5d %-9s descriptors %+d, threads %+d, children %+d, windows %+d, memory %+lld "
           "bytes each (up to %lld are kept), %lld ms\n",
           level ? "ok" : "BAD", count, name, after.descriptors - before.descriptors,
           after.threads - before.threads, after.children - before.children,
           after.windows - before.windows, grown / qMax(count, 1), allowed, clock.elapsed());
    fflush(stdout);
    return level;
}

// The page's run of the helper tool. Every other one fails.
void runHelper(const WizardDriver& driver, int run)
{
    const bool succeeds = run % 2 == 0;
    answerHelper("It says something\n", succeeds ? 0 : 1);
    const QStringList warnings = warningsDuring([&] {
        if (driver.currentPage()->validatePage() != succeeds)
            qFatal("Run %d does not end as its tool", run);
    });
    if (warnings.isEmpty() != succeeds)
        qFatal("Run %d does not say what its tool said", run);
}

bool soakJoins(int count)
{
    WizardDriver driver;
    driver.goToJoinOptions();
    // Nine strings of 32 bytes after each run, an array of 96 after a success: 336, and some room.
    return soak("joins", count, 366, [&driver](int run) { runHelper(driver, run); });
}

bool soakLeaves(int count)
{
    World::setJoined();
    WizardDriver driver;
    driver.next();
    return soak("leaves", count, 210, [&driver](int run) { runHelper(driver, run); });
}

bool soakLoads(int count)
{
    Answer script;
    for (int i = 0; i < containers; ++i)
        script.output += "OU=unit " + QByteArray::number(i) + ",DC=example,DC=test\n";
    World::answer("mvedit mvedit_file_arg.tcl", script);
    QWidget page;
    cnbrowser browser(&page);
    // For each container its node in a map, which is larger with Qt 6, and the key.
    constexpr int node = QT_VERSION_MAJOR < 6 ? 112 : 128;
    return soak("loads", count, containers * node, [&browser](int run) {
        World::forgetCalls();
        QEventLoop loop;
        QObject::connect(&browser, &cnbrowser::treeDrawingDone, &loop, &QEventLoop::exit);
        browser.setDomainInfo(QString("example%1.test").arg(run % 2), "admin", "secret");
        browser.createTree();
        if (loop.exec() != CNBROWSER_SUCCESS || World::callsOf("mvedit").size() != 1)
            qFatal("Load %d draws nothing", run);
    });
}

bool soakWarnings(int count)
{
    return soak("warnings", count, 0, [](int run) {
        const QString text = QString("Warning %1\nof many").arg(run);
        if (warningsDuring([&text] { showWarning(text); }) != QStringList{text})
            qFatal("Warning %d is not shown", run);
    });
}

} // namespace

int main(int argc, char** argv)
{
    countMemoryExactly(argv);
    World::enter();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtFatalMsg)
            fprintf(stderr, "%s\n", qPrintable(text));
    });
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions({{"joins", "Number of joins.", "number", "1000"},
                       {"leaves", "Number of leaves.", "number", "1000"},
                       {"loads", "Number of container loads.", "number", "500"},
                       {"warnings", "Number of warnings.", "number", "1000"},
                       {"workers", "Number of threads beside the main one.", "number"}});
    parser.process(application);
    if (parser.isSet("workers"))
        QThreadPool::globalInstance()->setMaxThreadCount(parser.value("workers").toInt());

    const auto number = [&parser](const char* name) { return parser.value(name).toInt(); };
    bool level = soakJoins(number("joins"));
    level = soakLeaves(number("leaves")) && level;
    level = soakLoads(number("loads")) && level;
    level = soakWarnings(number("warnings")) && level;
    return level ? 0 : 1;
}

#include "benchmarks/benchmarks.h"

#include "tests/support/world.h"

#include <QApplication>
#include <QFile>

#include <ctime>
#include <malloc.h>

QString inputFolder;

QByteArray listing(const benchmark::State& state)
{
    const char* order = static_cast<Order>(state.range(1)) == Order::Tree ? "tree" : "shuffled";
    QFile file(QStringLiteral("%1/%2-%3").arg(inputFolder).arg(state.range(0)).arg(order));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("No input %s", qPrintable(file.fileName()));
    return file.readAll();
}

void needApplication()
{
    static int argc = 1;
    static char name[] = "benchmarks";
    static char* argv[] = {name, nullptr};
    if (qApp == nullptr)
        new QApplication(argc, argv); // deleted by main(): at exit is too late with Qt 6
    QApplication::setQuitOnLastWindowClosed(false);
}

void answerWithListing(const benchmark::State& state)
{
    needApplication();
    World::answer(QStringLiteral("mvedit"), {listing(state), ""});
}

double processorTime()
{
    timespec time = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

void measure(benchmark::State& state, const std::function<void()>& action)
{
    // Freed memory goes back to the system, so that making the inputs changes no figure.
    malloc_trim(0);
    for ([[maybe_unused]] auto run : state) {
        const double start = processorTime();
        action();
        state.SetIterationTime(processorTime() - start);
    }
}

namespace {

double memory(const char* kind)
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("No /proc");
    const QByteArray status = file.readAll();
    const QByteArray rest = status.mid(status.indexOf(kind) + static_cast<int>(qstrlen(kind)));
    return rest.left(rest.indexOf("kB")).trimmed().toDouble() * 1024;
}

} // namespace

double residentMemory()
{
    return memory("VmRSS:");
}

double peakMemory()
{
    return memory("VmHWM:");
}

void allSizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->UseManualTime();
    for (const Order order : {Order::Tree, Order::Shuffled}) {
        for (const int size : {10000, 100000, 1000000})
            benchmark->Args({size, static_cast<int>(order)});
    }
}

// benchmarks INPUTFOLDER [options of Google Benchmark]
int main(int argc, char** argv)
{
    World::enter();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("LC_ALL", "C.UTF-8");
    benchmark::Initialize(&argc, argv);
    if (argc != 2)
        qFatal("Give the folder with the inputs");
    inputFolder = QString::fromLocal8Bit(argv[1]);
    benchmark::RunSpecifiedBenchmarks();
    delete qApp;
}

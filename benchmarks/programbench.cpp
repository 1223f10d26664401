#include "benchmarks/benchmarks.h"

#include "system/commandrunner.h"
#include "system/probes.h"
#include "tests/support/wizarddriver.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <QWizard>

#include <valgrind/callgrind.h>

namespace {

// Ends the event loop at a window's first paint.
class FirstPaint : public QObject
{
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            QTimer::singleShot(0, qApp, &QApplication::quit);
        return QObject::eventFilter(watched, event);
    }
};

void showUntilPainted(QWizard* wizard)
{
    FirstPaint painted;
    wizard->installEventFilter(&painted);
    wizard->show();
    QApplication::exec();
}

// Counted by callgrind, which sees nothing else of the process.
void programStarts(benchmark::State& state)
{
    for ([[maybe_unused]] auto run : state) {
        CALLGRIND_TOGGLE_COLLECT;
        needApplication();
        Wizard wizard;
        showUntilPainted(&wizard);
        CALLGRIND_TOGGLE_COLLECT;
    }
}

void bareWizardStarts(benchmark::State& state)
{
    for ([[maybe_unused]] auto run : state) {
        CALLGRIND_TOGGLE_COLLECT;
        needApplication();
        QWizard wizard;
        for (int page = 0; page < 8; ++page)
            wizard.addPage(new QWizardPage);
        showUntilPainted(&wizard);
        CALLGRIND_TOGGLE_COLLECT;
    }
}

// Real time, with the process of the probe: how long the user waits for it.
template <typename Probe> void probe(benchmark::State& state, Probe run)
{
    for ([[maybe_unused]] auto once : state)
        run();
}

void joinedProbe(benchmark::State& state)
{
    probe(state, isJoined);
}

void enrolledProbe(benchmark::State& state)
{
    probe(state, isEnrolled);
}

void hostNameProbe(benchmark::State& state)
{
    probe(state, [] { getReturnValue("/usr/sbin/scutil --get LocalHostName"); });
}

// The longest time between two rounds of the event loop while an action runs.
double longestPause(const std::function<void()>& action)
{
    QElapsedTimer sinceLast;
    qint64 longest = 0;
    QTimer round;
    QObject::connect(&round, &QTimer::timeout, [&] {
        longest = qMax(longest, sinceLast.nsecsElapsed());
        sinceLast.start();
    });
    sinceLast.start();
    round.start(1);
    action();
    return static_cast<double>(longest) / 1e9;
}

void pauseDuringJoin(benchmark::State& state)
{
    needApplication();
    Answer tool;
    tool.reportsPid = true;
    tool.output = QByteArray("A line of the join's progress report\n").repeated(60 * 1024 / 37);
    World::answer(QStringLiteral("gui_helper_tool mvjoin"), tool);
    WizardDriver wizard;
    wizard.goToJoinOptions();
    for ([[maybe_unused]] auto run : state)
        state.SetIterationTime(longestPause([&] { wizard.next(); }));
    if (wizard.page() != 7)
        qFatal("The join failed");
}

void pauseWhenIdle(benchmark::State& state)
{
    needApplication();
    const WizardDriver wizard;
    for ([[maybe_unused]] auto run : state)
        state.SetIterationTime(longestPause([&] { QTest::qWait(200); }));
}

BENCHMARK(programStarts)->Iterations(1);
BENCHMARK(bareWizardStarts)->Iterations(1);
BENCHMARK(joinedProbe)->UseRealTime()->Iterations(50);
BENCHMARK(enrolledProbe)->UseRealTime()->Iterations(50);
BENCHMARK(hostNameProbe)->UseRealTime()->Iterations(50);
BENCHMARK(pauseDuringJoin)->Iterations(1)->UseManualTime();
BENCHMARK(pauseWhenIdle)->Iterations(1)->UseManualTime();

} // namespace

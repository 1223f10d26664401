#pragma once

#include "tests/support/screenreader.h"
#include "tests/support/world.h"

#include <QTest>

// The program as a process in an X session of its own, with a screen reader.
class Program
{
public:
    enum Start { UntilTheWizardIsUp, WithoutWaiting };

    explicit Program(const QStringList& arguments = {}, Start start = UntilTheWizardIsUp)
    {
        process.setProcessEnvironment(reader.environment());
        process.start(ASSISTANT_PROGRAM, arguments);
        if (!process.waitForStarted())
            qFatal("The program can't be started");
        if (start == UntilTheWizardIsUp && !showsTheWizard())
            qFatal("The program shows no wizard");
    }
    ~Program()
    {
        process.kill();
        process.waitForFinished();
    }

    bool showsTheWizard()
    {
        wizard = session.waitForWindow("Morvanta Join Assistant");
        return !wizard.isEmpty();
    }
    // Waits until the wizard can be worked with: during a step its About entry is disabled.
    bool isFree()
    {
        return reader.await("About");
    }
    // Presses Return, which is Next, and waits for the run of a tool that follows.
    bool nextRuns(const QString& tool)
    {
        if (!isFree())
            return false;
        World::forgetCalls();
        return session.pressIn(wizard, "Return") && ran(tool);
    }
    static bool ran(const QString& tool)
    {
        return QTest::qWaitFor([&tool] { return !World::callsOf(tool).isEmpty(); }, 20000);
    }
    // From the join options page to the report. The progress dialog has to come up and to go.
    bool join()
    {
        World::hold("gui_helper_tool");
        if (!nextRuns("gui_helper_tool"))
            return false;
        progress = session.waitForWindow("Joining");
        World::release("gui_helper_tool");
        return !progress.isEmpty() && showsOnlyTheWizard();
    }
    bool showsOnlyTheWizard() const
    {
        return QTest::qWaitFor([this] { return session.windows() == QStringList{wizard}; }, 20000);
    }
    // The windows have to go, and the program to end with status 0.
    bool close(const QString& key = "alt+F4")
    {
        return isFree() && session.pressIn(wizard, key) &&
               QTest::qWaitFor([this] { return session.windows().isEmpty(); }, 20000) &&
               (process.state() == QProcess::NotRunning || process.waitForFinished(20000)) &&
               process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    }
    bool isUp() const
    {
        return process.state() == QProcess::Running && session.windows().contains(wizard);
    }

    XSession session;
    ScreenReader reader{session};
    QProcess process;
    QString wizard;
    QString progress;
};

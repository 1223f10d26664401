#pragma once

#include "tests/support/world.h"
#include "tests/support/xsession.h"

#include <QTest>

// The program as a process in an X session of its own.
class Program
{
public:
    explicit Program(const QStringList& arguments = {})
    {
        process.setProcessEnvironment(session.environment());
        process.start(ASSISTANT_PROGRAM, arguments);
        if (!process.waitForStarted())
            qFatal("The program can't be started");
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
    // Presses Return, which is Next or, at the end, Finish.
    bool next() const
    {
        return session.pressIn(wizard, "Return");
    }
    // Presses Next and waits for the run of a tool that follows; again, since what is pressed while
    // the step before is still under way is forgotten.
    bool nextRuns(const QString& tool) const
    {
        World::forgetCalls();
        for (int press = 0; press < 10 && next(); ++press) {
            if (QTest::qWaitFor([&] { return !World::callsOf(tool).isEmpty(); }, 2000))
                return true;
        }
        return false;
    }
    // From the join options through the join's progress, which is the second window, to the end.
    bool join()
    {
        World::hold("gui_helper_tool");
        if (!nextRuns("gui_helper_tool"))
            return false;
        progress = session.waitForWindow("Joining");
        World::release("gui_helper_tool");
        return QTest::qWaitFor([this] { return session.windows() == QStringList{wizard}; }, 20000);
    }
    // Presses again as a person would: the window manager misses keys until the X server has set
    // the keyboard up, and the wizard ignores those that come during a step.
    bool close(const QString& key = "alt+F4") const
    {
        for (int press = 0; press < 5; ++press) {
            if (!session.pressIn(wizard, key))
                return false;
            if (QTest::qWaitFor([this] { return session.windows().isEmpty(); }, 2000))
                return true;
        }
        return false;
    }
    bool endsWith0()
    {
        return (process.state() == QProcess::NotRunning || process.waitForFinished(20000)) &&
               process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    }

    XSession session;
    QProcess process;
    QString wizard;
    QString progress;
};

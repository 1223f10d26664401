#pragma once

#include "system/lowerpriv.h"

#include <QDialog>
#include <QEventLoop>
#include <QString>
#include <QThreadPool>
#include <QtConcurrentRun>

#include <atomic>

// Runs the agent's privileged helper tool and collects what it prints in *output, which is left
// unchanged when no tool could be started. `args` begins with the path of the tool that the helper
// is to run. Returns the runner's result code. Blocks; any thread, one call at a time.
int runHelperTool(char** args, QString* output);

// Whether the system has a thread to spare, and the descriptors for it. Without one, a QThreadPool
// never runs what it is given, and reports no error.
bool canMakeThread();

// Calls the page's function on a thread of the pool and shows the progress dialog, which it
// deletes, until the function emits the page's signal and returns. Returns its result, or
// abnormalToolEnd when no thread can be made. User-interface thread, whose events are handled
// meanwhile.
template <typename Page>
int runBehind(QDialog* progress, Page* page, int (Page::*run)(char**), void (Page::*finished)(),
              char** args)
{
    progress->show();
    int status = abnormalToolEnd;
    if (canMakeThread()) {
        QEventLoop loop;
        QObject::connect(page, finished, &loop, &QEventLoop::quit);
        // Atomic for the thread sanitizer, which can't see the locks of waitForFinished().
        std::atomic<int> returned{abnormalToolEnd};
        QFuture<void> end = QtConcurrent::run([&] {
            // This thread only waits for the tool, so it lends its place in the pool: Qt paints and
            // converts images with the pool, which has one thread where there is one processor.
            QThreadPool::globalInstance()->releaseThread();
            returned = (page->*run)(args);
            QThreadPool::globalInstance()->reserveThread();
        });
        loop.exec();
        end.waitForFinished();
        status = returned;
    }
    progress->reject();
    delete progress;
    return status;
}

#include "widgets/queuedinput.h"

#include <QTimer>

void afterQueuedInput(QObject* receiver, const std::function<void()>& function)
{
    // The event loop may fire the timer once before it asks the window system for input; when it
    // fires again, all input that had queued up has been handled.
    auto* turns = new QTimer(receiver);
    QObject::connect(turns, &QTimer::timeout, receiver, [turns, function, left = 2]() mutable {
        if (--left > 0)
            return;
        turns->stop();
        turns->deleteLater();
        function();
    });
    turns->start(0);
}

#include "widgets/queuedinput.h"

#include <QTimer>

void afterQueuedInput(QObject* receiver, const std::function<void()>& function)
{
    // In its first turn the event loop may come to timers before it asks the window system; by the
    // second it has handled all of that.
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

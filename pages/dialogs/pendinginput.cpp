#include "pages/dialogs/pendinginput.h"

#include <QCoreApplication>
#include <QEvent>
#include <QThread>

namespace {

class InputFilter : public QObject
{
public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        // A message that opens meanwhile runs a loop of its own, and hears what closes it.
        if (QThread::currentThread()->loopLevel() != level)
            return false;
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::ShortcutOverride:
        case QEvent::Shortcut:
            return true;
        default:
            return false;
        }
    }

private:
    const int level = QThread::currentThread()->loopLevel();
};

} // namespace

void forgetPendingInput()
{
    InputFilter filter;
    QCoreApplication::instance()->installEventFilter(&filter);
    QCoreApplication::processEvents();
}

#include "pages/dialogs/pendinginput.h"

#include <QCoreApplication>
#include <QEvent>

namespace {

class InputFilter : public QObject
{
public:
    bool eventFilter(QObject*, QEvent* event) override
    {
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
};

} // namespace

void forgetPendingInput()
{
    InputFilter filter;
    QCoreApplication::instance()->installEventFilter(&filter);
    QCoreApplication::processEvents();
}

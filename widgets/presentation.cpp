#include "widgets/presentation.h"

#include <QAccessible>
#include <QApplication>
#include <QDialog>
#include <QWindow>
#include <QWizard>

// The active window, or the wizard where no other window than the dialog is active, as just after
// another dialog has closed.
static QWidget* windowBelow(const QDialog* dialog)
{
    QWidget* active = QApplication::activeWindow();
    if (active != nullptr && active != dialog && active->isVisible())
        return active;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && qobject_cast<QWizard*>(window) != nullptr)
            return window;
    return nullptr;
}

void presentDialog(QDialog* dialog, const QString& message)
{
    if (QWidget* below = windowBelow(dialog)) {
        dialog->windowHandle()->setTransientParent(below->windowHandle());
        // Centred without the dialog's frame, whose size is not known while the window manager is
        // still adding it.
        dialog->move(below->geometry().center() - dialog->rect().center());
    }
    dialog->setAccessibleDescription(message);
    QAccessibleEvent alert(dialog, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

bool isUnderDialog()
{
    return QApplication::activeModalWidget() != nullptr;
}

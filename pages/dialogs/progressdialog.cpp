#include "pages/dialogs/progressdialog.h"

#include <QCloseEvent>
#include <QKeyEvent>

void ProgressDialog::keyPressEvent(QKeyEvent* event)
{
    if (!event->matches(QKeySequence::Cancel))
        QDialog::keyPressEvent(event);
}

void ProgressDialog::closeEvent(QCloseEvent* event)
{
    event->ignore();
}

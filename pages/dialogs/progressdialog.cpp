#include "pages/dialogs/progressdialog.h"

#include "widgets/presentation.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>

void ProgressDialog::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    presentDialog(this, findChild<QLabel*>()->text());
}

void ProgressDialog::keyPressEvent(QKeyEvent* event)
{
    if (!event->matches(QKeySequence::Cancel))
        QDialog::keyPressEvent(event);
}

void ProgressDialog::closeEvent(QCloseEvent* event)
{
    event->ignore();
}

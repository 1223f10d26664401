#include "pages/dialogs/progressdialog.h"

#include "widgets/presentation.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>

void ProgressDialog::setLabel(QString text)
{
    findChild<QLabel*>()->setText(text);
}

void ProgressDialog::setTitle(QString title)
{
    setWindowTitle(title);
}

void ProgressDialog::setProgressBar(int value)
{
    findChild<QProgressBar*>()->setValue(value);
}

void ProgressDialog::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    presentDialog(this, findChild<QLabel*>()->text());
}

void ProgressDialog::keyPressEvent(QKeyEvent* event)
{
    if (canBeClosed || !event->matches(QKeySequence::Cancel))
        QDialog::keyPressEvent(event);
}

void ProgressDialog::closeEvent(QCloseEvent* event)
{
    if (canBeClosed)
        QDialog::closeEvent(event);
    else
        event->ignore();
}

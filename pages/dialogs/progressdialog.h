#pragma once

#include <QDialog>

// A progress dialog, whose form has a label and a bar. One that can't be closed by the user stays
// until the code that opened it takes it away: without it, the wizard behind would take input again
// while the tool runs.
class ProgressDialog : public QDialog
{
    Q_OBJECT

public:
    using QDialog::QDialog;

    // The program calls none of the three: the label's text is the form's, the title the
    // constructor's.
    void setLabel(QString text);
    void setTitle(QString title);
    // 0 to 100; stands at 99 from the start. Nothing moves it, as no tool tells how far it is.
    void setProgressBar(int value);

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

    bool canBeClosed = false; // by the user; set by the constructor of a dialog that can
};

#pragma once

#include <QDialog>

// A progress dialog that stays until the code that opened it takes it away. If the user could close
// it, the wizard behind it would take input again and could start a second privileged run.
class ProgressDialog : public QDialog
{
    Q_OBJECT

public:
    using QDialog::QDialog;

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
};

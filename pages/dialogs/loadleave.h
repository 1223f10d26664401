#pragma once

#include "pages/dialogs/progressdialog.h"

class Ui_LoadLeave;

// Shown while the Mac leaves its domain.
class LoadLeave : public ProgressDialog
{
    Q_OBJECT

public:
    explicit LoadLeave(QWidget* parent = nullptr);
    ~LoadLeave() override;

    // Only a test calls these.
    void setCurrText(QString text);
    void setCurrTitle(QString title);

private:
    Ui_LoadLeave* ui;
};

#pragma once

#include "pages/dialogs/progressdialog.h"

class Ui_LoadJoin;

// Shown while the Mac is being joined.
class LoadJoin : public ProgressDialog
{
    Q_OBJECT

public:
    explicit LoadJoin(QWidget* parent = nullptr);
    ~LoadJoin() override;

private:
    Ui_LoadJoin* ui;
};

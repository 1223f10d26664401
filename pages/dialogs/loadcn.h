#pragma once

#include "pages/dialogs/progressdialog.h"

class Ui_LoadCN;

// Shown while the container tree is being loaded. Unlike the other progress dialogs it can be
// closed: that is the way out when the container script never ends.
class LoadCN : public ProgressDialog
{
    Q_OBJECT

public:
    explicit LoadCN(QWidget* parent = nullptr);
    ~LoadCN() override;

private:
    Ui_LoadCN* ui;
};

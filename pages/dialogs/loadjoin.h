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

    // The program calls none of the three: it shows the texts of the form.
    void setLabel(QString text);
    void setTitle(QString title);
    // 0 to 100; stands at 99 from the start. Nothing moves it, as no tool tells how far it is.
    void setProgressBar(int value);

private:
    Ui_LoadJoin* ui;
};

#pragma once

#include <QDialog>

class Ui_LoadCN;

// Shown while the container tree is being loaded. Unlike the other progress dialogs it can be
// closed: that is the way out when the agent's script never ends.
class LoadCN : public QDialog
{
    Q_OBJECT

public:
    explicit LoadCN(QWidget* parent = nullptr);
    ~LoadCN() override;

    // The program calls none of the three: it shows the texts of the form.
    void setLabel(QString text);
    void setTitle(QString title);
    // 0 to 100; stands at 99 from the start. Nothing moves it, as no tool tells how far it is.
    void setProgressBar(int value);

protected:
    void showEvent(QShowEvent* event) override;

private:
    Ui_LoadCN* ui;
};

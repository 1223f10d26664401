#pragma once

#include <QDialog>

class Ui_about;

// Shows the name, version and copyright from the Info.plist of the application's bundle, as they
// are when the dialog is made; what the file lacks stays empty.
class about : public QDialog
{
    Q_OBJECT

public:
    explicit about(QWidget* parent);
    ~about() override;

    // The value between the first "<string>" and the first "</string>" of a line. A line without
    // them gives a text that means nothing.
    QString parse(QString line);

protected:
    void showEvent(QShowEvent* event) override;

private:
    Ui_about* ui;
};

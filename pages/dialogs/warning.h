#pragma once

#include <QDialog>

class Ui_Warning;

// The one message dialog: a text and an OK button.
class Warning : public QDialog
{
    Q_OBJECT

public:
    explicit Warning(QWidget* parent = nullptr);
    ~Warning() override;

    // Plain or rich text, as the text browser decides.
    void setWarning(QString text);
    // Not called by the program, whose messages all have the title "WARNING".
    void setTitle(QString title);

    // Closes the message, but not for what was pressed before its event loop ran.
    void done(int result) override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    Ui_Warning* ui;
    bool canClose = false;
};

// Shows the text in a Warning of its own and returns once the user has closed it. User-interface
// thread.
void showWarning(const QString& text);

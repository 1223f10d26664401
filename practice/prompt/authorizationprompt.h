#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;

// Asks for a local administrator's name and password before a tool may run with privileges.
// Accepted once they are right; rejected by Cancel, or after the third wrong answer.
class AuthorizationPrompt : public QDialog
{
    Q_OBJECT

public:
    // `tool` is the path of the program that the rights are asked for.
    explicit AuthorizationPrompt(const QString& tool, QWidget* parent = nullptr);

    // Whether the third wrong answer ended the dialog, and not Cancel.
    bool denied() const;

public slots:
    void accept() override;

private:
    QLineEdit* name;
    QLineEdit* password;
    QLabel* complaint;
    int wrongAnswers = 0;
};

#pragma once

#include <QWizardPage>

class Ui_WizardIntro;

// The first page: greets the user with what is going to happen, a join or a leave, as the machine's
// state was when the wizard was built.
class WizardIntro : public QWizardPage
{
    Q_OBJECT

public:
    explicit WizardIntro(QWidget* parent = nullptr);
    ~WizardIntro() override;

    int nextId() const override;

private:
    Ui_WizardIntro* ui;
};

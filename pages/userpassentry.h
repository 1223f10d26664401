#pragma once

#include <QWizardPage>

class Ui_UserPassEntry;

// Asks for the domain to join and an administrator's name and password, and checks them against the
// domain before the wizard goes on. Registers "DomainName", "DomainUsername" and "DomainPassword".
class UserPassEntry : public QWizardPage
{
    Q_OBJECT

public:
    explicit UserPassEntry(QWidget* parent = nullptr);
    ~UserPassEntry() override;

    // Prefills the edits with what the unbind page was given; the name with "Administrator" where
    // that has none.
    void initializePage() override;
    // Checks the entries against the domain; false, with a warning shown, when they are refused.
    bool validatePage() override;
    int nextId() const override;

private:
    Ui_UserPassEntry* ui;
};

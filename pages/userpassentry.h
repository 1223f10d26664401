#pragma once

#include <QWizardPage>

namespace Ui {
class UserPassEntry;
}

// Asks for the domain to join and an administrator's name and password, and checks them against the
// domain before the wizard goes on. Registers "DomainName", "DomainUsername" and "DomainPassword".
class UserPassEntry : public QWizardPage
{
    Q_OBJECT

public:
    explicit UserPassEntry(QWidget* parent = nullptr);
    ~UserPassEntry() override;

    // Offers what the user has just unbound from, or nothing but a usual administrator's name.
    void initializePage() override;
    // Checks the entries against the domain; false, with a warning shown, when they don't hold.
    bool validatePage() override;
    int nextId() const override;

private:
    Ui::UserPassEntry* ui;
};

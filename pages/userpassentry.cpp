#include "pages/userpassentry.h"
#include "ui_userpassentry.h"

#include "pages/credentialcheck.h"
#include "pages/pageids.h"

UserPassEntry::UserPassEntry(QWidget* parent) : QWizardPage(parent), ui(new Ui_UserPassEntry)
{
    ui->setupUi(this);
    registerField(QStringLiteral("DomainName"), ui->DomainEdit);
    registerField(QStringLiteral("DomainUsername"), ui->UsernameEdit);
    registerField(QStringLiteral("DomainPassword"), ui->PasswordEdit);
}

UserPassEntry::~UserPassEntry()
{
    delete ui;
}

void UserPassEntry::initializePage()
{
    ui->UsernameEdit->setText(field(QStringLiteral("appleADUsername")).toString());
    if (ui->UsernameEdit->text().isEmpty())
        ui->UsernameEdit->setText(QStringLiteral("Administrator"));
    ui->PasswordEdit->setText(field(QStringLiteral("appleADPassword")).toString());
    ui->DomainEdit->setText(field(QStringLiteral("appleADDomain")).toString());
}

bool UserPassEntry::validatePage()
{
    return CredentialCheck::passes(ui->DomainEdit->text(), ui->UsernameEdit->text(),
                                   ui->PasswordEdit->text());
}

int UserPassEntry::nextId() const
{
    return PageId::JoinType;
}

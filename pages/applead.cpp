#include "pages/applead.h"
#include "ui_applead.h"

#include "pages/credentialcheck.h"
#include "pages/dialogs/warning.h"
#include "system/bindingreport.h"
#include "system/lowerpriv.h"
#include "system/toolpaths.h"

AppleAD::AppleAD(QWidget* parent) : QWizardPage(parent), ui(new Ui_AppleAD)
{
    ui->setupUi(this);
    setButtonText(QWizard::NextButton, tr("OK"));
    // Masked, because assistive tools can read edits that are not shown.
    passwordCarrier.setEchoMode(QLineEdit::Password);
    registerField(QStringLiteral("appleADUsername"), &userCarrier);
    registerField(QStringLiteral("appleADPassword"), &passwordCarrier);
    registerField(QStringLiteral("appleADDomain"), &domainCarrier);
}

AppleAD::~AppleAD()
{
    delete ui;
}

void AppleAD::initializePage()
{
    setUIDomain();
}

void AppleAD::setUIDomain()
{
    BindingReport report;
    while (const char* next = report.nextDomainLine()) {
        const QByteArray line(next);
        const int separator = line.lastIndexOf("= ");
        if (separator < 0)
            continue;
        const QString domain = QString::fromLocal8Bit(line.mid(separator + 2)).trimmed();
        ui->ADName->setText(domain);
        domainCarrier.setText(domain);
    }
}

bool AppleAD::validatePage()
{
    userCarrier.setText(ui->ADUser->text());
    passwordCarrier.setText(ui->ADPass->text());
    if (!CredentialCheck::passes(domainCarrier.text(),
                                 field(QStringLiteral("appleADUsername")).toString(),
                                 field(QStringLiteral("appleADPassword")).toString()))
        return false;
    leaveAppleAD();
    // Shown always: the tool's status is unavailable, and where a binding is left the agent itself
    // refuses to join.
    showWarning(tr("You are unbound from Apple's Active Directory plugin."));
    return true;
}

bool AppleAD::leaveAppleAD()
{
    char remove[] = "-r";
    char force[] = "-f";
    char userOption[] = "-u";
    char passwordOption[] = "-p";
    QByteArray user = field(QStringLiteral("appleADUsername")).toString().toUtf8();
    QByteArray password = field(QStringLiteral("appleADPassword")).toString().toUtf8();
    char* arguments[] = {remove,         force,           userOption, user.data(),
                         passwordOption, password.data(), nullptr};
    FILE* pipe = nullptr;
    g_pProcess->runPrivCmd(QByteArray(Tools::directoryPlugin).data(), arguments, &pipe);
    if (pipe != nullptr)
        fclose(pipe);
    return true;
}

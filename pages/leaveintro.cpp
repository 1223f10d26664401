#include "pages/leaveintro.h"
#include "ui_leaveintro.h"

#include "pages/credentialcheck.h"
#include "pages/dialogs/loadleave.h"
#include "pages/dialogs/warning.h"
#include "pages/helpertool.h"
#include "pages/pageids.h"
#include "system/commandrunner.h"
#include "system/probes.h"
#include "system/toolpaths.h"

#include <Security/Authorization.h>

LeaveIntro::LeaveIntro(QWidget* parent) : QWizardPage(parent), ui(new Ui_LeaveIntro)
{
    ui->setupUi(this);
    setButtonText(QWizard::NextButton, tr("Leave"));
    // An assistive tool chooses without a click.
    connect(ui->radioButton_3, &QAbstractButton::toggled, this, [this](bool chosen) {
        if (chosen)
            on_radioButton_3_clicked();
        else
            on_radioButton_clicked();
    });
}

LeaveIntro::~LeaveIntro()
{
    delete ui;
}

void LeaveIntro::initializePage()
{
    setUIComponents();
}

int LeaveIntro::nextId() const
{
    return PageId::Conclusion;
}

void LeaveIntro::setUIComponents()
{
    setActiveDirectory();
    setJoinedZone();
    setComputerName();
    setCloudUIComponents();
}

void LeaveIntro::setActiveDirectory()
{
    ui->ActiveDirectory_Val->setText(QString::fromStdString(getReturnValue(Tools::domainCommand)));
}

void LeaveIntro::setJoinedZone()
{
    ui->JoinedZone_Val->setText(QString::fromStdString(getReturnValue(Tools::zoneCommand)));
}

void LeaveIntro::setComputerName()
{
    ui->ComputerName_Val->setText(QString::fromStdString(getReturnValue(Tools::computerCommand)));
}

// Enrolling is not offered to somebody who leaves: the form has it, but nobody can press it.
void LeaveIntro::setCloudUIComponents()
{
    ui->enrollLabel->hide();
    ui->enrollDescLabel->hide();
    ui->downloadButton->hide();
    ui->line_2->hide();
}

void LeaveIntro::on_downloadButton_clicked()
{
    download_mac_agent();
}

void LeaveIntro::on_radioButton_clicked()
{
    ui->UsernameEdit->setEnabled(true);
    ui->PasswordEdit->setEnabled(true);
    ui->label_2->setEnabled(true);
    ui->label_3->setEnabled(true);
}

void LeaveIntro::on_radioButton_2_clicked()
{
    on_radioButton_clicked();
}

void LeaveIntro::on_radioButton_3_clicked()
{
    for (QLineEdit* edit : {ui->UsernameEdit, ui->PasswordEdit}) {
        edit->setEnabled(false);
        edit->setText(QString());
    }
    ui->label_2->setEnabled(false);
    ui->label_3->setEnabled(false);
}

QStringList LeaveIntro::leaveArguments() const
{
    QStringList arguments{QLatin1String(Tools::leave)};
    if (ui->radioButton_3->isChecked())
        return arguments << QStringLiteral("-f");
    if (ui->radioButton_2->isChecked())
        arguments << QStringLiteral("-r");
    return arguments << QStringLiteral("-u") << ui->UsernameEdit->text() << QStringLiteral("-p")
                     << ui->PasswordEdit->text();
}

bool LeaveIntro::validatePage()
{
    if (!ui->radioButton_3->isChecked() &&
        !CredentialCheck::passes(ui->ActiveDirectory_Val->text().trimmed(),
                                 ui->UsernameEdit->text(), ui->PasswordEdit->text()))
        return false;
    char** arguments = convertQSLtoArray(leaveArguments());

    const int status = runBehind(new LoadLeave, this, &LeaveIntro::runMVLeave,
                                 &LeaveIntro::finishedMVLeave, arguments);
    if (status == 0)
        return true;
    // The user cancelled the administrator's prompt and needs no message.
    if (status == errAuthorizationCanceled)
        return false;
    explain(status); // runMVLeave() has not where no thread could be made
    showWarning(leaveOutput);
    delete[] arguments; // here alone, and its strings nowhere (docs/known-behaviour.md)
    return false;
}

int LeaveIntro::runMVLeave(char** args)
{
    const int status = runHelperTool(args, &leaveOutput);
    explain(status);
    emit finishedMVLeave();
    return status;
}

// Only a run that is started clears leaveOutput: one that is not shows what an earlier one left
// there, which may be the code of a cancelled prompt.
void LeaveIntro::explain(int status)
{
    if (status != 0 && leaveOutput.isEmpty())
        leaveOutput = tr("Unexpected error (%1).").arg(status);
}

#include "pages/wizardintro.h"
#include "ui_wizardintro.h"

#include "pages/pageids.h"
#include "system/commandrunner.h"
#include "system/probes.h"
#include "system/toolpaths.h"

WizardIntro::WizardIntro(QWidget* parent) : QWizardPage(parent), ui(new Ui_WizardIntro)
{
    ui->setupUi(this);
    if (isJoined()) {
        // The agent's answer as it is, with the line end at its end; no full stop follows it.
        const std::string domain = getReturnValue(Tools::domainCommand);
        ui->Domain_label->setText(tr("You are currently joined to ") + domain.c_str());
        ui->Join_label->hide();
    } else {
        ui->Leave_label->hide();
        ui->Domain_label->hide();
    }
}

WizardIntro::~WizardIntro()
{
    delete ui;
}

int WizardIntro::nextId() const
{
    return PageId::Interim;
}

#include "pages/wizardintro.h"
#include "ui_wizardintro.h"

#include "system/commandrunner.h"
#include "system/probes.h"
#include "system/toolpaths.h"

WizardIntro::WizardIntro(QWidget* parent) : QWizardPage(parent), ui(new Ui::WizardIntro)
{
    ui->setupUi(this);
    if (isJoined()) {
        // As the agent says it, deliberately: no full stop, and a line end at its end stays.
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
    return 1;
}

#include "pages/interimintro.h"
#include "ui_interimintro.h"

#include "pages/pageids.h"
#include "system/probes.h"

InterimIntro::InterimIntro(QWidget* parent) : QWizardPage(parent), ui(new Ui_InterimIntro)
{
    ui->setupUi(this);
}

InterimIntro::~InterimIntro()
{
    delete ui;
}

bool InterimIntro::validatePage()
{
    report.emplace();
    return report->status() == 0;
}

int InterimIntro::nextId() const
{
    if (report && report->nextDomainLine() != nullptr)
        return PageId::AppleAD;
    return isJoined() ? PageId::LeaveIntro : PageId::UserPassEntry;
}

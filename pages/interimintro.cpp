#include "pages/interimintro.h"
#include "ui_interimintro.h"

#include "pages/pageids.h"
#include "system/bindingreport.h"
#include "system/probes.h"

InterimIntro::InterimIntro(QWidget* parent) : QWizardPage(parent), ui(new Ui_InterimIntro)
{
    ui->setupUi(this);
}

InterimIntro::~InterimIntro()
{
    report.reset(); // closes its stream
    delete ui;
}

bool InterimIntro::validatePage()
{
    report.reset(); // closes the former one first
    report = std::make_unique<BindingReport>();
    return report->status() == 0;
}

int InterimIntro::nextId() const
{
    if (report != nullptr && report->nextDomainLine() != nullptr)
        return PageId::AppleAD;
    return isJoined() ? PageId::LeaveIntro : PageId::UserPassEntry;
}

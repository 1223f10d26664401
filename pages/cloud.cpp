#include "pages/cloud.h"
#include "ui_cloud.h"

#include "pages/pageids.h"
#include "system/probes.h"
#include "widgets/shortcut.h"

// Its form is never deleted: page and wizard live as long as the process.
Cloud::Cloud(QWidget* parent) : QWizardPage(parent), ui(new Ui_Cloud)
{
    ui->setupUi(this);
    setShortcut(ui->downloadButton, Qt::CTRL | Qt::SHIFT | Qt::Key_D);
}

void Cloud::initializePage() {}

bool Cloud::validatePage()
{
    return true;
}

int Cloud::nextId() const
{
    return PageId::Conclusion;
}

void Cloud::on_downloadButton_clicked()
{
    download_mac_agent();
    // QWizard's own step, not Wizard::checkNext(), whose adjustment the last page doesn't need.
    wizard()->next();
}

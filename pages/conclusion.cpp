#include "pages/conclusion.h"
#include "ui_conclusion.h"

#include "pages/joinflags.h"
#include "system/probes.h"

Conclusion::Conclusion(QWidget* parent) : QWizardPage(parent), ui(new Ui_Conclusion)
{
    ui->setupUi(this);
    if (isJoined())
        ui->Complete_label->hide();
    else
        ui->Left_label->hide();
}

Conclusion::~Conclusion()
{
    delete ui;
}

void Conclusion::initializePage()
{
    if (!joining)
        return;
    // The label's own text is the template, so its place marker is filled in only once.
    ui->Complete_label->setText(
        ui->Complete_label->text().arg(field(QStringLiteral("DomainName")).toString()));
}

void Conclusion::on_Enrollcheck_toggled(bool checked)
{
    setButtonText(QWizard::NextButton, checked ? tr("Checked") : tr("NotChecked"));
}

#include "pages/dialogs/loadcn.h"
#include "ui_loadcn.h"

#include "widgets/presentation.h"

LoadCN::LoadCN(QWidget* parent) : QDialog(parent), ui(new Ui_LoadCN)
{
    ui->setupUi(this);
    // Overrides the form's title, which is the join's.
    setWindowTitle(tr("Loading"));
    raise();
}

LoadCN::~LoadCN()
{
    delete ui;
}

void LoadCN::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    presentDialog(this, ui->label->text());
}

void LoadCN::setLabel(QString text)
{
    ui->label->setText(text);
}

void LoadCN::setTitle(QString title)
{
    setWindowTitle(title);
}

void LoadCN::setProgressBar(int value)
{
    ui->progressBar->setValue(value);
}

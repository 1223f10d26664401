#include "pages/dialogs/loadjoin.h"
#include "ui_loadjoin.h"

LoadJoin::LoadJoin(QWidget* parent) : ProgressDialog(parent), ui(new Ui_LoadJoin)
{
    ui->setupUi(this);
    setWindowTitle(tr("Joining"));
    raise();
}

LoadJoin::~LoadJoin()
{
    delete ui;
}

void LoadJoin::setLabel(QString text)
{
    ui->label->setText(text);
}

void LoadJoin::setTitle(QString title)
{
    setWindowTitle(title);
}

void LoadJoin::setProgressBar(int value)
{
    ui->progressBar->setValue(value);
}

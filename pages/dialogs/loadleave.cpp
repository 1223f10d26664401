#include "pages/dialogs/loadleave.h"
#include "ui_loadleave.h"

LoadLeave::LoadLeave(QWidget* parent) : ProgressDialog(parent), ui(new Ui_LoadLeave)
{
    ui->setupUi(this);
    setWindowTitle(tr("Leaving"));
}

LoadLeave::~LoadLeave()
{
    delete ui;
}

void LoadLeave::setCurrText(QString text)
{
    setLabel(text);
}

void LoadLeave::setCurrTitle(QString title)
{
    setTitle(title);
}

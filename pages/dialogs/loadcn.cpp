#include "pages/dialogs/loadcn.h"
#include "ui_loadcn.h"

LoadCN::LoadCN(QWidget* parent) : ProgressDialog(parent), ui(new Ui_LoadCN)
{
    ui->setupUi(this);
    // Overrides the form's title, which is the join's.
    setWindowTitle(tr("Loading"));
    canBeClosed = true;
    raise();
}

LoadCN::~LoadCN()
{
    delete ui;
}

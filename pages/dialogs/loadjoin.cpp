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

#include "browser/cnbrowser.h"
#include "ui_cnbrowser.h"

#include "browser/cnbrowserhelper.h"
#include "browser/containeritems.h"
#include "pages/dialogs/warning.h"
#include "widgets/presentation.h"

#include <QDebug>
#include <QStandardItemModel>

cnbrowser::cnbrowser(QWidget* parent) : QDialog(parent), ui(new Ui_cnbrowser)
{
    ui->setupUi(this);
}

cnbrowser::~cnbrowser()
{
    qDebug() << "cnbrowser destructor called";
    clearData();
    delete ui;
}

void cnbrowser::setDomainInfo(QString domain, QString user, QString password)
{
    this->domain = domain;
    this->user = user;
    this->password = password;
}

void cnbrowser::createTree()
{
    if (domain.isEmpty() || user.isEmpty() || password.isEmpty()) {
        emit treeDrawingDone(CNBROWSER_MISSING_DOMAIN_INFO);
        return;
    }
    // Another administrator of the same domain sees the tree that is drawn already.
    if (drawnDomain == domain && loader != nullptr) {
        emit treeDrawingDone(CNBROWSER_SUCCESS);
        return;
    }
    clearData();
    loader = new cnbrowserhelper;
    connect(loader, &cnbrowserhelper::cnDataObtained, this, &cnbrowser::drawCNTreeModel);
    // Once more for each load: after n loads one click runs the slot n times. The page takes the
    // same name again without harm; a warning shows n times. See docs/known-behaviour.md.
    connect(ui->chooseButton, &QPushButton::clicked, this, &cnbrowser::chooseButtonClicked);
    loader->setDomainInfo(domain, user, password);
    loader->getCNData();
}

void cnbrowser::drawCNTreeModel()
{
    if (loader == nullptr)
        return;
    QStandardItemModel* drawn = loader->createModelOutOfCNData();
    if (drawn == nullptr) {
        drawnDomain.clear();
        emit treeDrawingDone(CNBROWSER_NO_DATA);
        return;
    }
    model = drawn;
    ui->browserTree->setModel(model);
    // Opens the domain's own components, below which all that can be chosen lies.
    for (QModelIndex component = model->index(0, 0);
         component.data().toString().startsWith(QLatin1String("DC"));
         component = model->index(0, 0, component))
        ui->browserTree->expand(component);
    ui->browserTree->scrollToTop(); // the view is where the user left the tree before
    drawnDomain = domain;
    emit treeDrawingDone(CNBROWSER_SUCCESS);
}

void cnbrowser::chooseButtonClicked()
{
    if (isUnderDialog())
        return;
    QModelIndex current = ui->browserTree->currentIndex();
    if (!current.isValid() || current.data().toString().startsWith(QLatin1String("DC"))) {
        qDebug() << "display error msg!";
        showWarning(tr("The selected distinguished name(DN) is not a container object.  Please "
                       "reselect (e.g. OU or CN)"));
        return;
    }
    QStringList components;
    for (; current.isValid(); current = current.parent())
        components << current.data().toString();
    emit browseChooseButtonClicked(components.join(QLatin1Char(',')));
    close();
}

void cnbrowser::clearData()
{
    if (model != nullptr) {
        deleteItems(model);
        model->clear();
    }
    delete model;
    model = nullptr;
    delete loader;
    loader = nullptr;
}

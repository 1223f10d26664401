#pragma once

#include "browser/cnbrowsererror.h"

#include <QDialog>

class QStandardItemModel;
class Ui_cnbrowser;
class cnbrowserhelper;

// The dialog in which the user picks the container for the computer object from a tree of the
// domain's containers. The caller loads the tree with createTree() and shows the dialog once
// treeDrawingDone() has told of its success.
class cnbrowser : public QDialog
{
    Q_OBJECT

public:
    explicit cnbrowser(QWidget* parent);
    ~cnbrowser() override;

    // What the next createTree() loads with.
    void setDomainInfo(QString domain, QString user, QString password);
    // Loads the tree, or reuses the one drawn last if it is this domain's. A load that still runs
    // has to be ended by clearData() first. treeDrawingDone() tells the end, but not where
    // clearData() has ended the load or the script can't be started.
    void createTree();
    // Releases the tree's model, and ends a load that still runs.
    void clearData();

public slots:
    // Shows what the loader fetched, if usable, and emits treeDrawingDone(). Idle without a loader.
    void drawCNTreeModel();
    // Emits browseChooseButtonClicked() and closes; shows a warning when nothing, or a component of
    // the domain's own name, is chosen.
    void chooseButtonClicked();

signals:
    // The end of a createTree().
    void treeDrawingDone(CNBROWSER_ERROR status);
    // The user has chosen this container.
    void browseChooseButtonClicked(QString distinguishedName);

private:
    Ui_cnbrowser* ui;
    cnbrowserhelper* loader = nullptr;
    QStandardItemModel* model = nullptr;
    QString domain;
    QString user;
    QString password;
    QString drawnDomain; // of the tree drawn last, even if released; empty after NO_DATA
};

#pragma once

#include "browser/cnleaf.h"

#include <QObject>
#include <QString>

class QProcess;
class QStandardItem;
class QStandardItemModel;

// Fetches the containers of a domain with the bundle's script, which the agent's interpreter runs,
// and builds them into a tree and an item model. Lives on the user-interface thread; the script
// runs as a process of its own.
class cnbrowserhelper : public QObject
{
    Q_OBJECT

public:
    cnbrowserhelper() = default;
    ~cnbrowserhelper() override;

    // What the next getCNData() asks with.
    void setDomainInfo(QString domain, QString user, QString password);
    // Releases the former load and starts the script, without a time limit. Emits cnDataObtained()
    // when it ends, but not when it can't be started, or the load is released before.
    void getCNData();
    // Whether the script has ended well and its output names a domain; false again once the model
    // is built.
    bool cnDataCheck();
    // Builds tree and model from the script's output and drops the output. The model is the
    // caller's; null when there is no usable output.
    QStandardItemModel* createModelOutOfCNData();
    // Releases tree and output, and ends a script that still runs.
    void clearAllData();

    // The tree's operations; see containertree.h and containeritems.h. The program does not call
    // parseCNData(), as it inserts all names of a listing at once, nor printCNData(). A name is
    // split at every comma, escaped or not, so that a value that holds one makes two levels.
    void parseCNData(QString dn, Level* level);
    // The model is the caller's; null when there is no tree.
    QStandardItemModel* getTreeModel(Level* top);
    void getTreeModelItem(Level* level, QStandardItem* parent);
    void printCNData(Level* level, QString indent);
    // The level's entries dangle afterwards: the caller drops it.
    void clearCNData(Level* level);

signals:
    // The script has ended, well or not.
    void cnDataObtained();

private slots:
    void readStdOutput(int exitCode);

private:
    QProcess* process = nullptr;
    QString* cnOutput = nullptr; // from a good end of the script until the model is built
    Level* cnTree = nullptr;
    QString domain;
    QString user;
    QString password;
};

#pragma once

#include "browser/cnleaf.h"

#include <QHash>
#include <QMap>
#include <QObject>
#include <QString>

class QProcess;
class QStandardItem;
class QStandardItemModel;

// How the load of a container tree ended.
enum CNBROWSER_ERROR {
    CNBROWSER_SUCCESS = 0,             // the tree is drawn, or was already
    CNBROWSER_MISSING_DOMAIN_INFO = 1, // domain, user or password was empty; nothing was loaded
    CNBROWSER_NO_DATA = 2,             // the script gave no usable container data
};

// Fetches the containers of a domain with the agent's script and builds them into a tree and an
// item model. Lives on the user-interface thread; the script runs as a process of its own.
class cnbrowserhelper : public QObject
{
    Q_OBJECT

public:
    cnbrowserhelper() = default;
    ~cnbrowserhelper() override;

    void setDomainInfo(QString domain, QString user, QString password);
    // Releases the former load and starts a new one; its end is told by cnDataObtained(). A script
    // that can't be started tells nothing, and there is no time limit.
    void getCNData();
    // Whether the script has ended well and its output holds names of a domain.
    bool cnDataCheck();
    // Builds tree and model from the script's output and drops the output. The model is the
    // caller's; null when there is no usable output.
    QStandardItemModel* createModelOutOfCNData();
    void clearAllData();

    // Inserts one distinguished name below a level: its last component there, each further one
    // below the one to its right. Splits at every comma, escaped or not, deliberately: a name that
    // holds one has always shown as two levels. Of two prefixes with one value the first stays. The
    // loader inserts whole listings, with the same result.
    void parseCNData(QString dn, QMap<QString, cnleaf*>* level);
    // A new model of the tree, the caller's; null when there is no tree.
    QStandardItemModel* getTreeModel(QMap<QString, cnleaf*>* top);
    // Appends the items of a level, and all below, to an item.
    void getTreeModelItem(QMap<QString, cnleaf*>* level, QStandardItem* parent);
    // Writes a level to the debug log, a line for each leaf, a tab deeper for each level.
    void printCNData(QMap<QString, cnleaf*>* level, QString indent);
    // Deletes all leaves below a level, whose entries then dangle: the caller drops the level.
    void clearCNData(QMap<QString, cnleaf*>* level);

signals:
    void cnDataObtained();

private slots:
    void readStdOutput(int exitCode);

private:
    // Inserts the lines of the script's output into the loader's tree.
    void insertAll(const QVector<QStringRef>& lines);
    // The same in the order given, fastest where those of one parent stand together.
    void fillTree(const QVector<QStringRef>& lines);
    // The level below all components of a name, made where it is missing; null when a component is
    // empty, which ends the name.
    QMap<QString, cnleaf*>* levelBelow(QMap<QString, cnleaf*>* level, QStringView name);
    // The level below a name's components where parseCNData() has been before, else null.
    QMap<QString, cnleaf*>* knownLevel(QStringView name) const;
    // What levelBelow() returns, remembered.
    QMap<QString, cnleaf*>* newlyKnownLevel(QMap<QString, cnleaf*>* top, QStringView name);
    // The leaf of a component in a level, a new one when there is none; null for an empty
    // component.
    cnleaf* leafFor(QMap<QString, cnleaf*>* level, QStringView component);

    QProcess* process = nullptr;
    QString* cnOutput = nullptr; // from a good end of the script until the model is built
    QMap<QString, cnleaf*>* cnTree = nullptr;
    QString domain;
    QString user;
    QString password;
    bool prefixesDiffered = false; // one key came with two prefixes
    // Where parseCNData() has been: the levels of the tree whose top level shares its entries with
    // `knownTop`, by their names. A top level that has changed in other hands shares them no more.
    // What lies below is changed by this object only, while names are inserted.
    QMap<QString, cnleaf*> knownTop;
    QHash<QString, QMap<QString, cnleaf*>*> knownLevels;
};

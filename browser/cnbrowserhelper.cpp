#include "browser/cnbrowserhelper.h"

#include <QDebug>
#include <QProcess>
#include <QStack>
#include <QStandardItemModel>

cnbrowserhelper::~cnbrowserhelper()
{
    clearAllData();
}

void cnbrowserhelper::setDomainInfo(QString domain, QString user, QString password)
{
    this->domain = domain;
    this->user = user;
    this->password = password;
}

void cnbrowserhelper::getCNData()
{
    clearAllData();
    cnTree = new QMap<QString, cnleaf*>;
    process = new QProcess;
    connect(process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &cnbrowserhelper::readStdOutput);
    process->start(QStringLiteral("/usr/local/bin/mvedit"),
                   {QStringLiteral("/Applications/Utilities/Morvanta/Morvanta Join Assistant.app/"
                                   "Contents/Resources/mvedit_file_arg.tcl"),
                    domain, user, password});
}

void cnbrowserhelper::readStdOutput(int exitCode)
{
    if (exitCode != 0)
        qDebug() << "readStdOutput"
                 << "errcode: " << exitCode;
    else
        cnOutput = new QString(QString::fromUtf8(process->readAllStandardOutput()));
    emit cnDataObtained();
}

bool cnbrowserhelper::cnDataCheck()
{
    return cnOutput != nullptr && cnOutput->contains(QLatin1String("DC="));
}

QStandardItemModel* cnbrowserhelper::createModelOutOfCNData()
{
    if (!cnDataCheck() || cnTree == nullptr)
        return nullptr;
    const QStringList lines = cnOutput->split(QLatin1Char('\n'));
    for (const QString& line : lines)
        parseCNData(line, cnTree);
    delete cnOutput;
    cnOutput = nullptr;
    return getTreeModel(cnTree);
}

void cnbrowserhelper::clearAllData()
{
    if (cnTree != nullptr)
        clearCNData(cnTree);
    // The map itself is not deleted: its entries point at deleted leaves, and it has always been
    // left behind, one small map for each load.
    cnTree = nullptr;
    delete cnOutput;
    cnOutput = nullptr;
    delete process;
    process = nullptr;
}

void cnbrowserhelper::parseCNData(QString dn, QMap<QString, cnleaf*>* level)
{
    constexpr int prefixLength = 3;
    QStringRef rest(&dn);
    while (level != nullptr) {
        rest = rest.trimmed();
        const int comma = rest.lastIndexOf(QLatin1Char(','));
        const QStringRef component = rest.mid(comma + 1);
        if (component.isEmpty())
            return;
        // Always three characters, so that a component with a blank before it keeps the blank, and
        // every attribute shows in the tree as it stands in the name.
        cnleaf*& leaf = (*level)[component.mid(prefixLength).toString()];
        if (leaf == nullptr)
            leaf = new cnleaf(component.left(prefixLength).toString());
        if (comma < 0)
            return;
        if (leaf->getNode() == nullptr)
            leaf->setNode(new QMap<QString, cnleaf*>);
        level = leaf->getNode();
        rest = rest.left(comma);
    }
}

namespace {

QStandardItem* newItem(cnleaf* leaf, const QString& key)
{
    auto* item = new QStandardItem(leaf->getPrefix() + key);
    item->setEditable(false);
    return item;
}

} // namespace

QStandardItemModel* cnbrowserhelper::getTreeModel(QMap<QString, cnleaf*>* top)
{
    if (top == nullptr)
        return nullptr;
    auto* model = new QStandardItemModel;
    getTreeModelItem(top, model->invisibleRootItem());
    return model;
}

void cnbrowserhelper::getTreeModelItem(QMap<QString, cnleaf*>* level, QStandardItem* parent)
{
    for (auto entry = level->cbegin(); entry != level->cend(); ++entry) {
        QStandardItem* item = newItem(entry.value(), entry.key());
        if (entry.value()->getNode() != nullptr)
            getTreeModelItem(entry.value()->getNode(), item);
        parent->appendRow(item);
    }
}

void cnbrowserhelper::printCNData(QMap<QString, cnleaf*>* level, QString indent)
{
    for (auto entry = level->cbegin(); entry != level->cend(); ++entry) {
        qDebug().noquote() << indent + entry.value()->getPrefix() + entry.key();
        if (entry.value()->getNode() != nullptr)
            printCNData(entry.value()->getNode(), indent + QLatin1Char('\t'));
    }
}

void cnbrowserhelper::clearCNData(QMap<QString, cnleaf*>* level)
{
    if (level == nullptr)
        return;
    for (cnleaf* leaf : qAsConst(*level)) {
        if (leaf == nullptr)
            continue;
        if (leaf->getNode() != nullptr) {
            clearCNData(leaf->getNode());
            // Detached, so that the leaf does not delete the map: kept, one map for each container.
            leaf->setNode(nullptr);
        }
        delete leaf;
    }
}

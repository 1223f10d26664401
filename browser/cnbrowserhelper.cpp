#include "browser/cnbrowserhelper.h"

#include "browser/containeritems.h"
#include "browser/containertree.h"
#include "system/toolpaths.h"

#include <QDebug>
#include <QProcess>
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
    cnTree = newLevel();
    process = new QProcess;
    connect(process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &cnbrowserhelper::readStdOutput);
    process->start(QLatin1String(Tools::interpreter),
                   {QLatin1String(Tools::containerScript), domain, user, password});
}

void cnbrowserhelper::readStdOutput(int exitCode)
{
    if (exitCode != 0) {
        qDebug() << "readStdOutput"
                 << "errcode: " << exitCode;
    } else {
        const QByteArray bytes = process->readAllStandardOutput();
        // Without the size, Qt 5 would end the text at the first NUL.
        cnOutput = new QString(QString::fromUtf8(bytes.constData(), bytes.size()));
    }
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
    insertNames(QStringView(*cnOutput).split(QLatin1Char('\n')), cnTree);
    delete cnOutput;
    cnOutput = nullptr;
    return getTreeModel(cnTree);
}

void cnbrowserhelper::clearAllData()
{
    clearCNData(cnTree);
    cnTree = nullptr;
    delete cnOutput;
    cnOutput = nullptr;
    if (process != nullptr) {
        // Disconnected first: deleting it ends a script that still runs, and emits finished() then.
        process->disconnect(this);
        // A fork that fails leaves Qt 5.15 on Linux with -1 for the script's process id, and the
        // destructor would kill that: every process of the user. Such an object is left behind.
        if (process->processId() != -1)
            delete process;
    }
    process = nullptr;
}

void cnbrowserhelper::parseCNData(QString dn, Level* level)
{
    bool prefixDiffers = false;
    if (level != nullptr)
        insertName(dn, level, &prefixDiffers);
}

QStandardItemModel* cnbrowserhelper::getTreeModel(Level* top)
{
    if (top == nullptr)
        return nullptr;
    auto* model = new QStandardItemModel;
    getTreeModelItem(top, model->invisibleRootItem());
    return model;
}

void cnbrowserhelper::getTreeModelItem(Level* level, QStandardItem* parent)
{
    appendItems(*level, parent);
}

void cnbrowserhelper::printCNData(Level* level, QString indent)
{
    dumpTree(*level, indent);
}

void cnbrowserhelper::clearCNData(Level* level)
{
    if (level != nullptr)
        deleteLeaves(level);
}

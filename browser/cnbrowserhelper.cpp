#include "browser/cnbrowserhelper.h"

#include <QDebug>
#include <QProcess>
#include <QStandardItemModel>
#include <QStringBuilder>
#include <QVector>

#include <algorithm>
#include <array>
#include <vector>

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

namespace {

using Level = QMap<QString, cnleaf*>;

// Never deleted: the levels of a tree are left behind when it is released.
Level* newLevel()
{
    return new Level;
}

} // namespace

void cnbrowserhelper::getCNData()
{
    clearAllData();
    cnTree = newLevel();
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

namespace {

// A number that brings names near each other in the tree together when they are sorted by it: eight
// bits for each of the last six components, so that neighbours share the upper levels, and sixteen
// for the whole parent. Two parents of the same number are no harm, only slower.
quint64 placeInTree(QStringView name)
{
    const QStringView parent = name.mid(name.indexOf(QLatin1Char(',')) + 1);
    quint64 place = qHash(parent) & 0xffff;
    qsizetype end = parent.size();
    for (int shift = 56; shift >= 16 && end > 0; shift -= 8) {
        const auto comma = parent.left(end).lastIndexOf(QLatin1Char(','));
        const QStringView component = parent.mid(comma + 1, end - comma - 1);
        place |= quint64(qHash(component) & 0xff) << shift;
        end = comma;
    }
    return place;
}

struct PlacedName {
    quint64 place;
    QStringView name;
};

std::vector<PlacedName> sortedByPlace(const QVector<QStringRef>& lines)
{
    std::vector<PlacedName> names;
    names.reserve(static_cast<size_t>(lines.size()));
    for (const QStringRef& line : lines)
        names.push_back({placeInTree(line), line});
    std::sort(names.begin(), names.end(), [](const PlacedName& left, const PlacedName& right) {
        return left.place < right.place;
    });
    return names;
}

} // namespace

QStandardItemModel* cnbrowserhelper::createModelOutOfCNData()
{
    if (!cnDataCheck() || cnTree == nullptr)
        return nullptr;
    fillTree(cnOutput->splitRef(QLatin1Char('\n')));
    delete cnOutput;
    cnOutput = nullptr;
    return getTreeModel(cnTree);
}

void cnbrowserhelper::fillTree(const QVector<QStringRef>& lines)
{
    // A directory lists its containers in any order. Inserted so, each of a million names would
    // wait for memory on every level of its path; siblings together find their parent at hand.
    prefixesDiffered = false;
    for (const PlacedName& placed : sortedByPlace(lines))
        insertName(placed.name, cnTree);
    if (!prefixesDiffered)
        return;
    // The order makes a difference only for containers such as OU=a and CN=a side by side, of which
    // the first in the script's output counts.
    clearCNData(cnTree);
    cnTree->clear();
    for (const QStringRef& line : lines)
        insertName(line, cnTree);
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
    if (process != nullptr) {
        // A script that still runs is ended by the deletion, and its end is no longer news.
        process->disconnect(this);
        // A fork that fails leaves Qt 5.15 on Linux with -1 for the script's process id, and the
        // destructor would kill that: every process of the user. Such an object is left behind.
        if (process->processId() != -1)
            delete process;
    }
    process = nullptr;
}

namespace {

// The usual prefixes are shared by all leaves.
QString prefixText(QStringView prefix)
{
    static const std::array<QString, 3> usual = {QStringLiteral("OU="), QStringLiteral("CN="),
                                                 QStringLiteral("DC=")};
    for (const QString& text : usual) {
        if (prefix == text)
            return text;
    }
    return prefix.toString();
}

QStringView trimmedRight(QStringView text)
{
    while (!text.isEmpty() && text.back().isSpace())
        text.chop(1);
    return text;
}

} // namespace

void cnbrowserhelper::parseCNData(QString dn, QMap<QString, cnleaf*>* level)
{
    if (level != nullptr)
        insertName(dn, level);
}

void cnbrowserhelper::insertName(QStringView name, QMap<QString, cnleaf*>* top)
{
    name = name.trimmed();
    const auto comma = name.indexOf(QLatin1Char(','));
    QMap<QString, cnleaf*>* level = top;
    if (comma >= 0) {
        const QStringView parent = name.mid(comma + 1);
        // A level without entries is a new tree, even where a former one has been.
        if (latestTop != top || top->isEmpty() || parent != latestParent) {
            latestTop = top;
            latestParent = parent.toString();
            latestLevel = levelBelow(top, parent);
        }
        level = latestLevel;
        name = trimmedRight(name.left(comma));
    }
    if (level != nullptr && !name.isEmpty())
        leafFor(level, name);
}

QMap<QString, cnleaf*>* cnbrowserhelper::levelBelow(QMap<QString, cnleaf*>* level, QStringView name)
{
    qsizetype comma = name.size();
    do {
        // Only the right end: at the left one stands the component before, blanks included.
        name = trimmedRight(name.left(comma));
        comma = name.lastIndexOf(QLatin1Char(','));
        const QStringView component = name.mid(comma + 1);
        if (component.isEmpty())
            return nullptr;
        cnleaf* leaf = leafFor(level, component);
        if (leaf->getNode() == nullptr)
            leaf->setNode(newLevel());
        level = leaf->getNode();
    } while (comma >= 0);
    return level;
}

cnleaf* cnbrowserhelper::leafFor(QMap<QString, cnleaf*>* level, QStringView component)
{
    // Always three characters, so that a component with a blank before it keeps the blank, and
    // every attribute shows in the tree as it stands in the name.
    const auto prefixLength = qMin<qsizetype>(3, component.size());
    const QStringView prefix = component.left(prefixLength);
    const QString key = component.mid(prefixLength).toString();
    auto entry = level->lowerBound(key);
    if (entry == level->end() || entry.key() != key)
        return level->insert(entry, key, new cnleaf(prefixText(prefix))).value();
    if (entry.value()->getPrefix() != prefix)
        prefixesDiffered = true;
    return entry.value();
}

namespace {

// A container's item, which shares the texts of the tree instead of holding a copy of its own.
class ContainerItem : public QStandardItem
{
public:
    ContainerItem(const QStandardItem& prototype, const QString& prefix, const QString& value)
        : QStandardItem(prototype), prefix(prefix), value(value)
    {
    }

    QVariant data(int role) const override
    {
        if (role == Qt::DisplayRole || role == Qt::EditRole)
            return QString(prefix % value);
        return QStandardItem::data(role);
    }

private:
    QString prefix;
    QString value;
};

using Unfilled = QVector<QPair<Level*, QStandardItem*>>;

// New items for the entries of a level; those with a level of their own are added to `unfilled`.
QList<QStandardItem*> newItems(const Level& level, const QStandardItem& prototype,
                               Unfilled* unfilled)
{
    QList<QStandardItem*> items;
    items.reserve(level.size());
    for (auto entry = level.cbegin(); entry != level.cend(); ++entry) {
        cnleaf* leaf = entry.value();
        items.append(new ContainerItem(prototype, leaf->getPrefix(), entry.key()));
        if (leaf->getNode() != nullptr)
            unfilled->append({leaf->getNode(), items.last()});
    }
    return items;
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
    QStandardItem prototype;
    prototype.setEditable(false);
    Unfilled unfilled;
    const QList<QStandardItem*> items = newItems(*level, prototype, &unfilled);
    while (!unfilled.isEmpty()) {
        const auto [below, item] = unfilled.takeLast();
        item->appendRows(newItems(*below, prototype, &unfilled));
    }
    // Last, since an item in a model looks for its own place whenever it gets rows.
    parent->appendRows(items);
}

void cnbrowserhelper::printCNData(QMap<QString, cnleaf*>* level, QString indent)
{
    struct Open {
        Level::const_iterator next;
        Level::const_iterator end;
    };
    QVector<Open> open = {{level->cbegin(), level->cend()}};
    while (!open.isEmpty()) {
        Open& innermost = open.last();
        if (innermost.next == innermost.end) {
            open.removeLast();
            continue;
        }
        const QString depth(open.size() - 1, QLatin1Char('\t'));
        cnleaf* leaf = innermost.next.value();
        qDebug().noquote() << indent + depth + leaf->getPrefix() + innermost.next.key();
        ++innermost.next;
        if (leaf->getNode() != nullptr)
            open.append(Open{leaf->getNode()->cbegin(), leaf->getNode()->cend()});
    }
}

void cnbrowserhelper::clearCNData(QMap<QString, cnleaf*>* level)
{
    latestTop = nullptr;
    QVector<Level*> levels;
    if (level != nullptr)
        levels.append(level);
    while (!levels.isEmpty()) {
        for (cnleaf* leaf : qAsConst(*levels.takeLast())) {
            if (leaf == nullptr)
                continue;
            if (leaf->getNode() != nullptr)
                levels.append(leaf->getNode());
            // Detached, so that the leaf does not delete the map: kept, one map for each container.
            leaf->setNode(nullptr);
            delete leaf;
        }
    }
}

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
    if (exitCode != 0) {
        qDebug() << "readStdOutput"
                 << "errcode: " << exitCode;
    } else {
        const QByteArray bytes = process->readAllStandardOutput();
        // With its size, or the text would end at the first NUL.
        cnOutput = new QString(QString::fromUtf8(bytes.constData(), bytes.size()));
    }
    emit cnDataObtained();
}

bool cnbrowserhelper::cnDataCheck()
{
    return cnOutput != nullptr && cnOutput->contains(QLatin1String("DC="));
}

namespace {

QStringView trimmedRight(QStringView text)
{
    while (!text.isEmpty() && text.back().isSpace())
        text.chop(1);
    return text;
}

// A distinguished name, split where its innermost component ends.
struct Name {
    explicit Name(QStringView text)
    {
        text = text.trimmed();
        const auto comma = text.indexOf(QLatin1Char(','));
        hasParent = comma >= 0;
        component = hasParent ? trimmedRight(text.left(comma)) : text;
        parent = text.mid(comma + 1);
    }

    QStringView component;
    QStringView parent; // the whole name when there is none
    bool hasParent;
};

QStringView parentOf(QStringView line)
{
    return line.mid(line.indexOf(QLatin1Char(',')) + 1);
}

// Whether most names follow one of the same parent, as they do when a directory is listed level by
// level, or branch by branch.
bool siblingsAreTogether(const QVector<QStringRef>& lines)
{
    int together = 0;
    QStringView before;
    for (const QStringRef& line : lines) {
        const QStringView parent = parentOf(line);
        if (parent == before)
            ++together;
        before = parent;
    }
    return together > lines.size() / 2;
}

// A number that brings names near each other in the tree together when they are sorted by it: eight
// bits for each of the last six components, so that neighbours share the upper levels, and sixteen
// for the whole parent. Two parents of the same number are no harm, only slower.
quint64 placeInTree(QStringView line)
{
    const QStringView parent = parentOf(line);
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

QVector<QStringRef> sortedByPlace(const QVector<QStringRef>& lines)
{
    struct PlacedLine {
        quint64 place;
        QStringRef line;
    };
    std::vector<PlacedLine> placed;
    placed.reserve(static_cast<size_t>(lines.size()));
    for (const QStringRef& line : lines)
        placed.push_back({placeInTree(line), line});
    std::sort(placed.begin(), placed.end(), [](const PlacedLine& left, const PlacedLine& right) {
        return left.place < right.place;
    });
    QVector<QStringRef> sorted;
    sorted.reserve(lines.size());
    for (const PlacedLine& next : placed)
        sorted.append(next.line);
    return sorted;
}

} // namespace

QStandardItemModel* cnbrowserhelper::createModelOutOfCNData()
{
    if (!cnDataCheck() || cnTree == nullptr)
        return nullptr;
    insertAll(cnOutput->splitRef(QLatin1Char('\n')));
    delete cnOutput;
    cnOutput = nullptr;
    return getTreeModel(cnTree);
}

void cnbrowserhelper::insertAll(const QVector<QStringRef>& lines)
{
    if (siblingsAreTogether(lines)) {
        fillTree(lines);
        return;
    }
    // Inserted in any order, each of a million names would wait for memory on every level of its
    // path; siblings together find their parent at hand.
    prefixesDiffered = false;
    fillTree(sortedByPlace(lines));
    if (!prefixesDiffered)
        return;
    // The order makes a difference only for containers such as OU=a and CN=a side by side, of which
    // the first in the script's output counts.
    clearCNData(cnTree);
    cnTree->clear();
    fillTree(lines);
}

void cnbrowserhelper::fillTree(const QVector<QStringRef>& lines)
{
    constexpr int ahead = 8;
    constexpr int cacheLine = 64 / sizeof(QChar);
    QStringView latestParent;
    Level* latestLevel = nullptr;
    for (int i = 0; i < lines.size(); ++i) {
        // Sorted lines lie anywhere in the text, and their beginnings would be waited for.
        if (i + ahead < lines.size()) {
            const QChar* text = lines.at(i + ahead).unicode();
            __builtin_prefetch(text);
            __builtin_prefetch(text + cacheLine);
        }
        const Name name(lines.at(i));
        Level* level = cnTree;
        if (name.hasParent) {
            if (latestLevel == nullptr || name.parent != latestParent) {
                latestParent = name.parent;
                latestLevel = levelBelow(cnTree, name.parent);
            }
            level = latestLevel;
        }
        if (level != nullptr)
            leafFor(level, name.component);
    }
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

const std::array<QString, 3>& usualPrefixes()
{
    static const std::array<QString, 3> prefixes = {QStringLiteral("OU="), QStringLiteral("CN="),
                                                    QStringLiteral("DC=")};
    return prefixes;
}

// The usual prefixes are shared by all leaves.
QString prefixText(QStringView prefix)
{
    for (const QString& usual : usualPrefixes()) {
        if (prefix == usual)
            return usual;
    }
    return prefix.toString();
}

} // namespace

void cnbrowserhelper::parseCNData(QString dn, QMap<QString, cnleaf*>* level)
{
    if (level == nullptr)
        return;
    if (!level->isSharedWith(knownTop))
        knownLevels.clear();
    const Name name(dn);
    Level* above = name.hasParent ? knownLevel(name.parent) : nullptr;
    if (above == nullptr) {
        // The top level may get entries, so it shares none meanwhile.
        knownTop.clear();
        above = name.hasParent ? newlyKnownLevel(level, name.parent) : level;
    }
    if (above != nullptr)
        leafFor(above, name.component);
    knownTop = *level;
}

QMap<QString, cnleaf*>* cnbrowserhelper::knownLevel(QStringView name) const
{
    return knownLevels.value(QString::fromRawData(name.data(), static_cast<int>(name.size())));
}

QMap<QString, cnleaf*>* cnbrowserhelper::newlyKnownLevel(QMap<QString, cnleaf*>* top,
                                                         QStringView name)
{
    const auto comma = name.indexOf(QLatin1Char(','));
    Level* above = comma < 0 ? nullptr : knownLevel(name.mid(comma + 1));
    Level* level = above == nullptr ? levelBelow(top, name) : levelBelow(above, name.left(comma));
    if (level != nullptr)
        knownLevels.insert(name.toString(), level);
    return level;
}

QMap<QString, cnleaf*>* cnbrowserhelper::levelBelow(QMap<QString, cnleaf*>* level, QStringView name)
{
    qsizetype comma = name.size();
    do {
        // Only the right end: at the left one stands the component before, blanks included.
        name = trimmedRight(name.left(comma));
        comma = name.lastIndexOf(QLatin1Char(','));
        const QStringView component = name.mid(comma + 1);
        cnleaf* leaf = leafFor(level, component);
        if (leaf == nullptr)
            return nullptr;
        if (leaf->getNode() == nullptr)
            leaf->setNode(newLevel());
        level = leaf->getNode();
    } while (comma >= 0);
    return level;
}

cnleaf* cnbrowserhelper::leafFor(QMap<QString, cnleaf*>* level, QStringView component)
{
    if (component.isEmpty())
        return nullptr;
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

// A container's item, which shares its value with the tree instead of holding a text of its own.
class ContainerItem : public QStandardItem
{
public:
    ContainerItem(const QStandardItem& prototype, const QString& value)
        : QStandardItem(prototype), value(value)
    {
    }

    QVariant data(int role) const override
    {
        if (role == Qt::DisplayRole || role == Qt::EditRole)
            return QString(prefix() % value);
        return QStandardItem::data(role);
    }

private:
    virtual QString prefix() const = 0;

    QString value;
};

// The usual prefixes are a matter of the class, since a member for them would cost every item 16
// bytes of memory.
template <size_t usual> class UsualItem : public ContainerItem
{
    using ContainerItem::ContainerItem;

    QString prefix() const override
    {
        return usualPrefixes()[usual];
    }
};

class UnusualItem : public ContainerItem
{
public:
    UnusualItem(const QStandardItem& prototype, const QString& prefix, const QString& value)
        : ContainerItem(prototype, value), ownPrefix(prefix)
    {
    }

private:
    QString prefix() const override
    {
        return ownPrefix;
    }

    QString ownPrefix;
};

QStandardItem* newItem(const QStandardItem& prototype, const QString& prefix, const QString& value)
{
    // Leaves share the usual texts; one with a copy of its own is shown alike.
    const auto& usual = usualPrefixes();
    if (prefix.isSharedWith(usual[0]))
        return new UsualItem<0>(prototype, value);
    if (prefix.isSharedWith(usual[1]))
        return new UsualItem<1>(prototype, value);
    if (prefix.isSharedWith(usual[2]))
        return new UsualItem<2>(prototype, value);
    return new UnusualItem(prototype, prefix, value);
}

using Unfilled = QVector<QPair<Level*, QStandardItem*>>;

// New items for the entries of a level; those with a level of their own are added to `unfilled`.
QList<QStandardItem*> newItems(const Level& level, const QStandardItem& prototype,
                               Unfilled* unfilled)
{
    QList<QStandardItem*> items;
    items.reserve(level.size());
    for (auto entry = level.cbegin(); entry != level.cend(); ++entry) {
        cnleaf* leaf = entry.value();
        items.append(newItem(prototype, leaf->getPrefix(), entry.key()));
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
    knownLevels.clear();
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

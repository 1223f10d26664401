#include "browser/containertree.h"

#include <QDebug>

#include <algorithm>
#include <utility>
#include <vector>

Level* newLevel()
{
    return new Level;
}

// The usual prefixes share their text, which saves memory in every leaf and item.
static QString prefixText(QStringView prefix)
{
    for (const QString& usual :
         {QStringLiteral("OU="), QStringLiteral("CN="), QStringLiteral("DC=")}) {
        if (prefix == usual)
            return usual;
    }
    return prefix.toString();
}

Level* insertName(QStringView name, Level* level, bool* prefixDiffers)
{
    for (;;) {
        // What is left of the name is trimmed, not the component: a blank before a comma is
        // dropped, one after it stays and is a part of its component's prefix.
        name = name.trimmed();
        const auto comma = name.lastIndexOf(QLatin1Char(','));
        const QStringView component = name.mid(comma + 1);
        if (component.isEmpty())
            return nullptr;
        // The prefix is always the first three characters, blanks included.
        const auto prefixLength = qMin<qsizetype>(3, component.size());
        const QStringView prefix = component.left(prefixLength);
        const QString value = component.mid(prefixLength).toString();
        auto entry = level->lowerBound(value);
        if (entry == level->end() || entry.key() != value)
            entry = level->insert(entry, value, new cnleaf(prefixText(prefix)));
        else if (entry.value()->getPrefix() != prefix)
            *prefixDiffers = true;
        if (comma < 0)
            return level;
        cnleaf* leaf = entry.value();
        if (leaf->getNode() == nullptr)
            leaf->setNode(newLevel());
        level = leaf->getNode();
        name = name.left(comma);
    }
}

// The name above; empty for a name of one component.
static QStringView parentOf(QStringView name)
{
    const auto comma = name.indexOf(QLatin1Char(','));
    return comma < 0 ? QStringView() : name.mid(comma + 1);
}

// Inserts siblings one after another, so that their parent is looked for once. False when two
// prefixes of one value have met: the first name in the original order has to win then, so the tree
// may be wrong, and the caller builds it anew.
static bool insertSiblingsTogether(const QList<QStringView>& names, Level* top)
{
    std::vector<std::pair<size_t, QStringView>> byParent;
    byParent.reserve(static_cast<size_t>(names.size()));
    for (const QStringView name : names)
        byParent.emplace_back(qHash(parentOf(name.trimmed())), name.trimmed());
    std::stable_sort(byParent.begin(), byParent.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    bool prefixDiffers = false;
    QStringView latestParent;
    Level* level = nullptr; // where the latest name's first component is
    for (const auto& [hash, name] : byParent) {
        const QStringView parent = parentOf(name);
        const bool sibling = level != nullptr && !parent.isEmpty() && parent == latestParent;
        level = sibling
                    ? insertName(name.left(name.indexOf(QLatin1Char(','))), level, &prefixDiffers)
                    : insertName(name, top, &prefixDiffers);
        latestParent = parent;
    }
    return !prefixDiffers;
}

void insertNames(const QList<QStringView>& names, Level* top)
{
    if (insertSiblingsTogether(names, top))
        return;
    deleteLeaves(top);
    top->clear();
    bool prefixDiffers = false;
    for (const QStringView name : names)
        insertName(name, top, &prefixDiffers);
}

void dumpTree(const Level& level, const QString& indent)
{
    for (auto entry = level.cbegin(); entry != level.cend(); ++entry) {
        qDebug().noquote() << indent + entry.value()->getPrefix() + entry.key();
        if (entry.value()->getNode() != nullptr)
            dumpTree(*entry.value()->getNode(), indent + QLatin1Char('\t'));
    }
}

void deleteLeaves(Level* level)
{
    QList<Level*> levels = {level};
    while (!levels.isEmpty()) {
        for (cnleaf* leaf : std::as_const(*levels.takeLast())) {
            if (leaf == nullptr)
                continue;
            if (leaf->getNode() != nullptr)
                levels.append(leaf->getNode());
            // Detached, so that the leaf does not delete the map, which is still to be walked.
            leaf->setNode(nullptr);
            delete leaf;
        }
    }
}

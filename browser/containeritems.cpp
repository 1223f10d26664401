#include "browser/containeritems.h"

#include <QStandardItemModel>
#include <QVector>

#include <utility>

namespace {

// An item that shows a leaf's prefix and value, whose texts it shares with the tree, until it gets
// a text of its own.
class ContainerItem : public QStandardItem
{
public:
    ContainerItem(const QStandardItem& prototype, const QString& prefix, const QString& value)
        : QStandardItem(prototype), prefix(prefix), value(value)
    {
    }

    QVariant data(int role) const override
    {
        QVariant own = QStandardItem::data(role);
        if (own.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole))
            return own;
        return QString(prefix + value);
    }

private:
    QString prefix;
    QString value;
};

} // namespace

void appendItems(const Level& level, QStandardItem* parent)
{
    // All items are copies of it, so that they share one list of flags.
    QStandardItem prototype;
    prototype.setEditable(false);
    QList<QStandardItem*> top;
    QVector<QPair<const Level*, QStandardItem*>> unfilled = {{&level, nullptr}};
    while (!unfilled.isEmpty()) {
        const auto [from, above] = unfilled.takeLast();
        QList<QStandardItem*> items;
        items.reserve(from->size());
        for (auto entry = from->cbegin(); entry != from->cend(); ++entry) {
            cnleaf* leaf = entry.value();
            items.append(new ContainerItem(prototype, leaf->getPrefix(), entry.key()));
            if (leaf->getNode() != nullptr)
                unfilled.append({leaf->getNode(), items.last()});
        }
        if (above != nullptr)
            above->appendRows(items);
        else
            top = items;
    }
    // Last and one by one: unlike appendRows(), appendRow() hands all below to the model, too.
    for (QStandardItem* item : std::as_const(top))
        parent->appendRow(item);
}

void deleteItems(QStandardItemModel* model)
{
    // First taken out of the model, which would emit signals for each removal.
    QVector<QStandardItem*> parents;
    while (model->rowCount() > 0)
        parents += model->takeRow(model->rowCount() - 1).toVector();
    const QVector<QStandardItem*> top = parents;
    for (int i = 0; i < parents.size(); ++i) {
        for (int row = 0; row < parents.at(i)->rowCount(); ++row) {
            QStandardItem* child = parents.at(i)->child(row);
            if (child->hasChildren())
                parents.append(child);
        }
    }
    while (!parents.isEmpty()) {
        QStandardItem* innermost = parents.takeLast();
        innermost->removeRows(0, innermost->rowCount());
    }
    qDeleteAll(top);
}

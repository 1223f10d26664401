// Builds tree and model from lines of distinguished names: the tree has to be Reference::tree's,
// and an item's own name, inserted again, must add nothing.

#include "browser/cnbrowserhelper.h"
#include "tests/robustness/fuzz/runner.h"

#include <QStandardItemModel>

#include <memory>
#include <utility>

namespace {

// The program leaves the maps behind; here, in many runs, they would fill the memory.
void collect(Level* level, QList<Level*>& levels)
{
    levels << level;
    for (cnleaf* leaf : std::as_const(*level)) {
        if (leaf->getNode() != nullptr)
            collect(leaf->getNode(), levels);
    }
}

class Tree
{
public:
    ~Tree()
    {
        QList<Level*> levels;
        collect(top, levels);
        helper.clearCNData(top);
        qDeleteAll(levels);
    }
    void insert(const QString& name)
    {
        helper.parseCNData(name, top);
    }
    std::unique_ptr<QStandardItemModel> model()
    {
        return std::unique_ptr<QStandardItemModel>(helper.getTreeModel(top));
    }

private:
    cnbrowserhelper helper;
    Level* top = new Level;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString lines =
        QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<int>(size));
    Tree tree;
    const QStringList split = lines.split('\n');
    for (const QString& line : split)
        tree.insert(line);
    QStringList texts;
    QStringList names;
    Fuzz::list(*tree.model(), &texts, &names);
    Fuzz::check(texts == Reference::tree(lines), "the tree is the reference's");

    for (const QString& name : std::as_const(names)) {
        // Inserting trims a name: one that begins with a blank would become another item.
        if (name.trimmed() == name)
            tree.insert(name);
    }
    QStringList again;
    Fuzz::list(*tree.model(), &again, &names);
    Fuzz::check(again == texts, "an item's name leads to that item");
    return 0;
}

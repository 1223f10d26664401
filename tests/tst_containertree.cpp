#include "browser/cnbrowserhelper.h"
#include "tests/support/worldtest.h"

#include <QStandardItemModel>

#include <memory>

namespace {

// A tree that its destructor clears; the maps below the top are left behind, as in the program.
class Tree
{
public:
    explicit Tree(const QStringList& names)
    {
        for (const QString& name : names)
            helper.parseCNData(name, &top);
    }
    ~Tree()
    {
        helper.clearCNData(&top);
    }
    Q_DISABLE_COPY(Tree)

    cnbrowserhelper helper;
    Level top;
};

// An item's text and its children's, for example "DC=com(DC=a DC=b)".
QString outline(const QStandardItem* item)
{
    QStringList children;
    for (int row = 0; row < item->rowCount(); ++row)
        children << outline(item->child(row));
    return item->text() + (children.isEmpty() ? QString() : '(' + children.join(' ') + ')');
}

QString outline(const QStringList& names)
{
    Tree tree(names);
    const std::unique_ptr<QStandardItemModel> model(tree.helper.getTreeModel(&tree.top));
    return outline(model->invisibleRootItem());
}

} // namespace

class TestContainerTree : public WorldTest
{
    Q_OBJECT

private slots:
    void aNullLevelIsLeftAloneAndHasNoModel()
    {
        cnbrowserhelper helper;
        helper.parseCNData("OU=a,DC=x", nullptr);
        helper.clearCNData(nullptr);
        QCOMPARE(helper.getTreeModel(nullptr), nullptr);
    }

    void emptyTreeHasAnEmptyModel()
    {
        Tree tree({});
        const std::unique_ptr<QStandardItemModel> model(tree.helper.getTreeModel(&tree.top));
        QVERIFY(model != nullptr);
        QCOMPARE(model->rowCount(), 0);
        QCOMPARE(model->QObject::parent(), nullptr);
    }

    void nameWithABlankLastComponentAddsNothing()
    {
        for (const QString name : {"", "  \t\r\n ", "OU=a,DC=x,", "OU=a,DC=x,  ", ","})
            QCOMPARE(outline({name}), QString());
    }

    void namesMakeATree_data()
    {
        addColumns<QStringList, QString>("names", "tree");
        addRow("the last component is the root",
               QStringList{"OU=Sales,OU=Europe,DC=example,DC=com"},
               "(DC=com(DC=example(OU=Europe(OU=Sales))))");
        addRow("no comma", QStringList{"DC=x"}, "(DC=x)");
        addRow("child first", QStringList{"OU=a,DC=x", "DC=x"}, "(DC=x(OU=a))");
        addRow("parent first", QStringList{"DC=x", "OU=a,DC=x"}, "(DC=x(OU=a))");
        addRow("twice the same", QStringList{"OU=a,DC=x", "OU=a,DC=x"}, "(DC=x(OU=a))");
        addRow("siblings", QStringList{"OU=b,DC=x", "OU=a,DC=x"}, "(DC=x(OU=a OU=b))");
        addRow("blanks around", QStringList{" \tOU=a,DC=x \r"}, "(DC=x(OU=a))");
        addRow("blank after a comma", QStringList{"OU=a, DC=x"}, "( DC=x(OU=a))");
        addRow("blank before a comma", QStringList{"OU=a ,DC=x"}, "(DC=x(OU=a))");
        addRow("blank inside", QStringList{"OU=New York,DC=x"}, "(DC=x(OU=New York))");
        addRow("the first prefix wins",
               QStringList{"OU=Users,DC=x", "CN=Users,DC=x", "CN=a,CN=Users,DC=x"},
               "(DC=x(OU=Users(CN=a)))");
        addRow("shorter than a prefix", QStringList{"a,DC=x"}, "(DC=x(a))");
        addRow("no value: the first prefix wins", QStringList{"a", "b", "OU="}, "(a)");
        addRow("empty component on the way", QStringList{"OU=a,,DC=x", "OU=b,DC=x"},
               "(DC=x(OU=b))");
        addRow("escaped comma", QStringList{"OU=a\\,b,DC=x"}, "(DC=x(b(OU=a\\)))");
        addRow("other case", QStringList{"OU=A,DC=x", "OU=a,DC=x"}, "(DC=x(OU=A OU=a))");
    }

    void namesMakeATree()
    {
        QFETCH(QStringList, names);
        QTEST(outline(names), "tree");
    }

    void aCommaMakesALevelEvenIfItStaysEmpty()
    {
        const Tree tree({"OU=a,,DC=x", ",DC=z", "DC=y"});
        QCOMPARE(tree.top.value("z")->getNode()->keys(), QStringList());
        QCOMPARE(tree.top.value("x")->getNode()->keys(), QStringList());
        QCOMPARE(tree.top.value("y")->getNode(), nullptr);
    }

    void orderIsThatOfTheCodeUnits()
    {
        QCOMPARE(outline({"DC=a", "DC=B"}), QString("(DC=B DC=a)"));
        QCOMPARE(outline({"OU=alpha,DC=x", "CN=Zeta,DC=x", QString("OU=é,DC=x"), "OU=10,DC=x",
                          "OU=9,DC=x"}),
                 QString("(DC=x(OU=10 OU=9 CN=Zeta OU=alpha OU=é))"));
    }

    void prefixIsTheFirstThreeCharacters()
    {
        const Tree tree({"L=Paris, DC=x"});
        QCOMPARE(tree.top.keys(), QStringList{"=x"});
        cnleaf* root = tree.top.value("=x");
        QCOMPARE(root->getPrefix(), QString(" DC"));
        QCOMPARE(root->getNode()->keys(), QStringList{"aris"});
        QCOMPARE(root->getNode()->value("aris")->getPrefix(), QString("L=P"));
        QCOMPARE(root->getNode()->value("aris")->getNode(), nullptr);
    }

    void textOfAnItemCanBeSet()
    {
        Tree tree({"OU=a,DC=x"});
        const std::unique_ptr<QStandardItemModel> model(tree.helper.getTreeModel(&tree.top));
        QStandardItem* item = model->item(0)->child(0);
        item->setText("OU=b");
        QCOMPARE(item->text(), QString("OU=b"));
        QCOMPARE(item->data(Qt::EditRole).toString(), QString("OU=b"));
        item->setText("");
        QCOMPARE(item->text(), QString());
    }

    void debugDumpIndentsByTabs()
    {
        Tree tree({"OU=b,OU=a,DC=x", "DC=y"});
        tree.helper.printCNData(&tree.top, "> ");
        QCOMPARE(messages(), QStringList({"> DC=x", "> \tOU=a", "> \t\tOU=b", "> DC=y"}));
    }

    void clearingPassesOverAnEntryWithoutALeaf()
    {
        Level top;
        top.insert("a", nullptr);
        cnbrowserhelper().clearCNData(&top);
        QCOMPARE(top.size(), 1);
    }

    void clearingKeepsTheLevelsEntries()
    {
        cnbrowserhelper helper;
        Level top;
        helper.parseCNData("OU=a,DC=x", &top);
        Level* below = top.value("x")->getNode();
        helper.clearCNData(&top);
        QCOMPARE(top.keys(), QStringList{"x"});
        // The map below is detached from its leaf and not deleted with it.
        QCOMPARE(below->keys(), QStringList{"a"});
        delete below;
    }

    void leafStartsWithoutChildrenAndHandsOutItsParts()
    {
        QCOMPARE(cnleaf().getNode(), nullptr);
        QCOMPARE(cnleaf().getPrefix(), QString());
        cnleaf leaf("OU=");
        QCOMPARE(leaf.getNode(), nullptr);
        QCOMPARE(leaf.getPrefix(), QString("OU="));
        leaf.setPrefix("CN=");
        QCOMPARE(leaf.getPrefix(), QString("CN="));
        auto* first = new Level;
        auto* second = new Level;
        leaf.setNode(first);
        QCOMPARE(leaf.getNode(), first);
        leaf.setNode(second);
        QCOMPARE(leaf.getNode(), second);
        delete first; // which the leaf has not released
    }

    void leafLeavesItsChildrenAlive()
    {
        cnleaf child("OU=");
        auto* parent = new cnleaf("DC=");
        parent->setNode(new Level{{"a", &child}});
        delete parent;
        QCOMPARE(child.getPrefix(), QString("OU="));
    }
};

WORLD_TEST_MAIN(TestContainerTree)
#include "tst_containertree.moc"

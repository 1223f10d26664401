#include "browser/cnbrowserhelper.h"
#include "tests/support/worldtest.h"

#include <QStandardItemModel>

#include <memory>

class TestContainerTree : public WorldTest
{
    Q_OBJECT

private slots:
    void noTreeHasNoModel();
    void emptyTreeHasAnEmptyModel();
    void nothingIsInsertedBelowNoLevel();
    void blankNameAddsNothing_data();
    void blankNameAddsNothing();
    void namesMakeATree_data();
    void namesMakeATree();
    void whatIsLeftOfANameGetsALevelEvenIfEmpty();
    void orderIsThatOfTheCodeUnits();
    void prefixIsTheFirstThreeCharacters();
    void itemsCannotBeEdited();
    void itemsBelongToTheirModel();
    void textOfAnItemCanBeSet();
    void debugDumpIndentsByTabs();
    void clearingNoLevelDoesNothing();
    void clearingPassesOverAnEntryWithoutALeaf();
    void clearingKeepsTheLevelsEntries();
    void leafStartsWithoutChildren();
    void leafHandsOutItsParts();
    void leafLeavesItsChildrenAlive();
};

namespace {

// Levels of a tree that is cleared at its end; the maps below the top stay, as clearing leaves
// them.
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
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;

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

void TestContainerTree::noTreeHasNoModel()
{
    cnbrowserhelper helper;
    QCOMPARE(helper.getTreeModel(nullptr), nullptr);
}

void TestContainerTree::emptyTreeHasAnEmptyModel()
{
    Tree tree({});
    const std::unique_ptr<QStandardItemModel> model(tree.helper.getTreeModel(&tree.top));
    QVERIFY(model != nullptr);
    QCOMPARE(model->rowCount(), 0);
    QCOMPARE(model->QObject::parent(), nullptr);
}

void TestContainerTree::nothingIsInsertedBelowNoLevel()
{
    cnbrowserhelper helper;
    helper.parseCNData("OU=a,DC=x", nullptr);
}

void TestContainerTree::blankNameAddsNothing_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("empty") << "";
    QTest::newRow("blanks") << "  \t\r\n ";
    QTest::newRow("a comma last") << "OU=a,DC=x,";
    QTest::newRow("a comma and blanks last") << "OU=a,DC=x,  ";
    QTest::newRow("a comma alone") << ",";
}

void TestContainerTree::blankNameAddsNothing()
{
    QFETCH(QString, name);
    QCOMPARE(outline({name}), QString());
}

void TestContainerTree::namesMakeATree_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QString>("tree");
    QTest::newRow("the last component is the root")
        << QStringList{"OU=Sales,OU=Europe,DC=example,DC=com"}
        << "(DC=com(DC=example(OU=Europe(OU=Sales))))";
    QTest::newRow("no comma") << QStringList{"DC=x"} << "(DC=x)";
    QTest::newRow("child first") << QStringList{"OU=a,DC=x", "DC=x"} << "(DC=x(OU=a))";
    QTest::newRow("parent first") << QStringList{"DC=x", "OU=a,DC=x"} << "(DC=x(OU=a))";
    QTest::newRow("twice the same") << QStringList{"OU=a,DC=x", "OU=a,DC=x"} << "(DC=x(OU=a))";
    QTest::newRow("siblings") << QStringList{"OU=b,DC=x", "OU=a,DC=x"} << "(DC=x(OU=a OU=b))";
    QTest::newRow("blanks around") << QStringList{" \tOU=a,DC=x \r"} << "(DC=x(OU=a))";
    QTest::newRow("blank after a comma") << QStringList{"OU=a, DC=x"} << "( DC=x(OU=a))";
    QTest::newRow("blank before a comma") << QStringList{"OU=a ,DC=x"} << "(DC=x(OU=a))";
    QTest::newRow("blank inside") << QStringList{"OU=New York,DC=x"} << "(DC=x(OU=New York))";
    QTest::newRow("the first prefix wins")
        << QStringList{"OU=Users,DC=x", "CN=Users,DC=x", "CN=a,CN=Users,DC=x"}
        << "(DC=x(OU=Users(CN=a)))";
    QTest::newRow("other prefix") << QStringList{"L=Paris,DC=x"} << "(DC=x(L=Paris))";
    QTest::newRow("shorter than a prefix") << QStringList{"a,DC=x"} << "(DC=x(a))";
    QTest::newRow("no value: the first prefix wins") << QStringList{"a", "b", "OU="} << "(a)";
    QTest::newRow("empty component on the way")
        << QStringList{"OU=a,,DC=x", "OU=b,DC=x"} << "(DC=x(OU=b))";
    QTest::newRow("escaped comma") << QStringList{"OU=a\\,b,DC=x"} << "(DC=x(b(OU=a\\)))";
    QTest::newRow("other case") << QStringList{"OU=A,DC=x", "OU=a,DC=x"} << "(DC=x(OU=A OU=a))";
    QTest::newRow("not ASCII") << QStringList{QString::fromUtf8("OU=Zoë 東京,DC=x")}
                               << QString::fromUtf8("(DC=x(OU=Zoë 東京))");
    QTest::newRow("shell characters") << QStringList{"OU='$%1\"`,DC=x"} << "(DC=x(OU='$%1\"`))";
}

void TestContainerTree::namesMakeATree()
{
    QFETCH(QStringList, names);
    QTEST(outline(names), "tree");
}

void TestContainerTree::whatIsLeftOfANameGetsALevelEvenIfEmpty()
{
    const Tree tree({"OU=a,,DC=x", ",DC=z", "DC=y"});
    QCOMPARE(tree.top.value("z")->getNode()->keys(), QStringList());
    QCOMPARE(tree.top.value("x")->getNode()->keys(), QStringList());
    QCOMPARE(tree.top.value("y")->getNode(), nullptr);
}

void TestContainerTree::orderIsThatOfTheCodeUnits()
{
    QCOMPARE(outline({"DC=a", "DC=B"}), QString("(DC=B DC=a)"));
    QCOMPARE(outline({"OU=alpha,DC=x", "CN=Zeta,DC=x", QString::fromUtf8("OU=é,DC=x"), "OU=10,DC=x",
                      "OU=9,DC=x"}),
             QString::fromUtf8("(DC=x(OU=10 OU=9 CN=Zeta OU=alpha OU=é))"));
}

void TestContainerTree::prefixIsTheFirstThreeCharacters()
{
    const Tree tree({"L=Paris, DC=x"});
    QCOMPARE(tree.top.keys(), QStringList{"=x"});
    cnleaf* root = tree.top.value("=x");
    QCOMPARE(root->getPrefix(), QString(" DC"));
    QCOMPARE(root->getNode()->keys(), QStringList{"aris"});
    QCOMPARE(root->getNode()->value("aris")->getPrefix(), QString("L=P"));
    QCOMPARE(root->getNode()->value("aris")->getNode(), nullptr);
}

void TestContainerTree::itemsCannotBeEdited()
{
    Tree tree({"OU=a,DC=x"});
    const std::unique_ptr<QStandardItemModel> model(tree.helper.getTreeModel(&tree.top));
    QVERIFY(!model->item(0)->isEditable());
    QVERIFY(!model->item(0)->child(0)->isEditable());
}

void TestContainerTree::itemsBelongToTheirModel()
{
    Tree tree({"OU=a,OU=b,DC=x"});
    const std::unique_ptr<QStandardItemModel> model(tree.helper.getTreeModel(&tree.top));
    QModelIndex index;
    for (QStandardItem* item = model->item(0); item != nullptr; item = item->child(0)) {
        index = model->index(0, 0, index);
        QCOMPARE(item->model(), model.get());
        QVERIFY(item->index().isValid());
        QCOMPARE(item->index(), index);
    }
    QCOMPARE(index.data().toString(), QString("OU=a"));
}

void TestContainerTree::textOfAnItemCanBeSet()
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

void TestContainerTree::debugDumpIndentsByTabs()
{
    Tree tree({"OU=b,OU=a,DC=x", "DC=y"});
    tree.helper.printCNData(&tree.top, "> ");
    QCOMPARE(messages(), QStringList({"> DC=x", "> \tOU=a", "> \t\tOU=b", "> DC=y"}));
}

void TestContainerTree::clearingPassesOverAnEntryWithoutALeaf()
{
    Level top;
    top.insert("a", nullptr);
    cnbrowserhelper().clearCNData(&top);
    QCOMPARE(top.size(), 1);
}

void TestContainerTree::clearingNoLevelDoesNothing()
{
    cnbrowserhelper helper;
    helper.clearCNData(nullptr);
}

void TestContainerTree::clearingKeepsTheLevelsEntries()
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

void TestContainerTree::leafStartsWithoutChildren()
{
    cnleaf plain;
    QCOMPARE(plain.getNode(), nullptr);
    QCOMPARE(plain.getPrefix(), QString());
    cnleaf leaf("OU=");
    QCOMPARE(leaf.getNode(), nullptr);
    QCOMPARE(leaf.getPrefix(), QString("OU="));
}

void TestContainerTree::leafHandsOutItsParts()
{
    cnleaf leaf;
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

void TestContainerTree::leafLeavesItsChildrenAlive()
{
    cnleaf child("OU=");
    auto* parent = new cnleaf("DC=");
    parent->setNode(new Level{{"a", &child}});
    delete parent;
    QCOMPARE(child.getPrefix(), QString("OU="));
}

WORLD_TEST_MAIN(TestContainerTree)
#include "tst_containertree.moc"

#include "browser/cnbrowser.h"
#include "browser/cnbrowserhelper.h"
#include "tests/support/worldtest.h"

#include <QPushButton>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTreeView>

Q_DECLARE_METATYPE(CNBROWSER_ERROR)

namespace {

using Level = QMap<QString, cnleaf*>;

// The rule of insertion at its plainest.
void insertByTheRule(QString dn, Level* level)
{
    dn = dn.trimmed();
    const int comma = dn.lastIndexOf(',');
    const QString component = dn.mid(comma + 1);
    if (component.isEmpty())
        return;
    const QString key = component.mid(3);
    if (!level->contains(key))
        level->insert(key, new cnleaf(component.left(3)));
    if (comma < 0)
        return;
    cnleaf* leaf = level->value(key);
    if (leaf->getNode() == nullptr)
        leaf->setNode(new Level);
    insertByTheRule(dn.left(comma), leaf->getNode());
}

// A line for each leaf, indented by its depth; a level without entries is told from none.
QStringList described(Level* level, const QString& indent = {})
{
    QStringList lines;
    for (auto entry = level->cbegin(); entry != level->cend(); ++entry) {
        Level* below = entry.value()->getNode();
        const QString mark = below != nullptr && below->isEmpty() ? " (empty level)" : "";
        lines << indent + entry.value()->getPrefix() + '|' + entry.key() + mark;
        if (below != nullptr)
            lines << described(below, indent + ' ');
    }
    return lines;
}

// The texts that the items of a tree have to show, indented by their depth.
QStringList shown(Level* level, const QString& indent = {})
{
    QStringList lines;
    for (auto entry = level->cbegin(); entry != level->cend(); ++entry) {
        lines << indent + entry.value()->getPrefix() + entry.key();
        if (entry.value()->getNode() != nullptr)
            lines << shown(entry.value()->getNode(), indent + ' ');
    }
    return lines;
}

QStringList shown(const QStandardItem* parent, const QString& indent = {})
{
    QStringList lines;
    for (int row = 0; row < parent->rowCount(); ++row) {
        const QStandardItem* item = parent->child(row);
        lines << indent + item->text() + (item->isEditable() ? " (editable)" : "");
        lines << shown(item, indent + ' ');
    }
    return lines;
}

void releaseTree(Level* level)
{
    for (cnleaf* leaf : qAsConst(*level)) {
        if (leaf->getNode() != nullptr)
            releaseTree(leaf->getNode());
        delete leaf;
    }
    level->clear();
}

// Names of few different components, so that paths meet, prefixes differ and names repeat.
QStringList randomNames(quint32 seed)
{
    static const QStringList components = {
        "OU=a", "CN=a", "OU=b",   " OU=a", "OU=a ", "L=Paris", "DC=x",   "DC=y", "",    "  ",
        "ab",   "OU=",  "OU=a\\", "\t",    "dc=x",  "OU=Ä",    "OU=\"a", "OU=Z", "CN=Z"};
    QRandomGenerator random(seed);
    // Half of the runs keep to components without a second prefix.
    const bool plain = seed % 2 == 0;
    QStringList names = {"OU=first,DC=x"};
    for (int i = 0; i < 60; ++i) {
        QStringList name;
        for (int length = random.bounded(6); length >= 0; --length) {
            const QString component = components.at(random.bounded(components.size()));
            name << (plain && component.startsWith("CN=") ? "OU=c" : component);
        }
        const QString parent = name.join(',');
        names << parent;
        for (int siblings = random.bounded(4); siblings > 0; --siblings)
            names << components.at(random.bounded(components.size())) + ',' + parent;
    }
    return names;
}

// A chain of containers, innermost first.
QString deepName(int components)
{
    QStringList name;
    for (int i = 2; i < components; ++i)
        name << "OU=level" + QString::number(i);
    name << "DC=example"
         << "DC=com";
    return name.join(',');
}

constexpr int manyComponents = 100000;

} // namespace

class TestTreeReference : public WorldTest
{
    Q_OBJECT

private slots:
    void anyNamesGiveTheTreeOfTheRule();
    void anyScriptOutputGivesTheModelOfTheRule();
    void treesAtTheSamePlaceAreToldApart();
    void itemsAppendedBelowAnItemOfAModel();
    void theDumpIndentsByTabs();
    void aVeryDeepTreeIsBuiltAndReleased();
    void aVeryDeepTreeIsLoadedShownAndReleased();
};

void TestTreeReference::anyNamesGiveTheTreeOfTheRule()
{
    cnbrowserhelper helper;
    for (quint32 seed = 1; seed <= 300; ++seed) {
        Level expected;
        Level tree;
        const QStringList names = randomNames(seed);
        for (const QString& name : names) {
            insertByTheRule(name, &expected);
            helper.parseCNData(name, &tree);
        }
        QCOMPARE(described(&tree), described(&expected));
        QStandardItemModel* model = helper.getTreeModel(&tree);
        QCOMPARE(shown(model->invisibleRootItem()), shown(&expected));
        delete model;
        releaseTree(&expected);
        releaseTree(&tree);
    }
}

void TestTreeReference::anyScriptOutputGivesTheModelOfTheRule()
{
    for (quint32 seed = 1; seed <= 60; ++seed) {
        const QStringList names = randomNames(seed);
        Level expected;
        for (const QString& name : names)
            insertByTheRule(name, &expected);
        Answer answer;
        answer.output = names.join('\n').toUtf8() + '\n';
        World::answer("mvedit mvedit_file_arg.tcl", answer);

        cnbrowserhelper helper;
        QSignalSpy obtained(&helper, &cnbrowserhelper::cnDataObtained);
        helper.setDomainInfo("example.com", "admin", "secret");
        helper.getCNData();
        QVERIFY(obtained.wait());
        QStandardItemModel* model = helper.createModelOutOfCNData();
        QVERIFY(model != nullptr);
        QCOMPARE(shown(model->invisibleRootItem()), shown(&expected));
        delete model;
        releaseTree(&expected);
    }
}

void TestTreeReference::treesAtTheSamePlaceAreToldApart()
{
    cnbrowserhelper helper;
    Level tree;
    helper.parseCNData("OU=a,DC=x", &tree);
    releaseTree(&tree);
    helper.parseCNData("OU=b,DC=x", &tree);
    QCOMPARE(described(&tree), QStringList({"DC=|x", " OU=|b"}));

    Level other;
    helper.parseCNData("OU=c,DC=x", &other);
    QCOMPARE(described(&other), QStringList({"DC=|x", " OU=|c"}));
    QCOMPARE(described(&tree), QStringList({"DC=|x", " OU=|b"}));
    releaseTree(&tree);
    releaseTree(&other);
}

void TestTreeReference::itemsAppendedBelowAnItemOfAModel()
{
    cnbrowserhelper helper;
    Level tree;
    helper.parseCNData("OU=a,OU=b,DC=x", &tree);
    QStandardItemModel model;
    auto* parent = new QStandardItem("top");
    model.appendRow(parent);
    parent->appendRow(new QStandardItem("before"));
    helper.getTreeModelItem(&tree, parent);
    QCOMPARE(parent->rowCount(), 2);
    const QModelIndex inserted = model.index(1, 0, parent->index());
    QCOMPARE(inserted.data().toString(), QString("DC=x"));
    QCOMPARE(model.index(0, 0, model.index(0, 0, inserted)).data().toString(), QString("OU=a"));
    QCOMPARE(model.columnCount(inserted), 1);
    releaseTree(&tree);
}

void TestTreeReference::theDumpIndentsByTabs()
{
    cnbrowserhelper helper;
    Level tree;
    helper.parseCNData("OU=b,OU=a,DC=x", &tree);
    helper.parseCNData("OU=c,DC=x", &tree);
    helper.printCNData(&tree, "> ");
    QCOMPARE(messages(), QStringList({"> DC=x", "> \tOU=a", "> \t\tOU=b", "> \tOU=c"}));
    releaseTree(&tree);
}

void TestTreeReference::aVeryDeepTreeIsBuiltAndReleased()
{
    cnbrowserhelper helper;
    Level tree;
    helper.parseCNData(deepName(manyComponents), &tree);
    int depth = 0;
    for (Level* level = &tree; level != nullptr; level = level->first()->getNode())
        ++depth;
    QCOMPARE(depth, manyComponents);
    helper.clearCNData(&tree);
}

void TestTreeReference::aVeryDeepTreeIsLoadedShownAndReleased()
{
    Answer answer;
    answer.output = deepName(manyComponents).toUtf8() + '\n';
    World::answer("mvedit mvedit_file_arg.tcl", answer);
    cnbrowser browser(nullptr);
    qRegisterMetaType<CNBROWSER_ERROR>("CNBROWSER_ERROR");
    QSignalSpy done(&browser, &cnbrowser::treeDrawingDone);
    browser.setDomainInfo("example.com", "admin", "secret");
    browser.createTree();
    QVERIFY(done.wait(30000));
    QCOMPARE(done.first().first().value<CNBROWSER_ERROR>(), CNBROWSER_SUCCESS);
    browser.show();
    QVERIFY(QTest::qWaitForWindowExposed(&browser));

    // As deep as a user could get by hand; Qt's view lays open levels out by recursion.
    constexpr int openLevels = 1000;
    auto* view = child<QTreeView>(&browser, "browserTree");
    QModelIndex innermost = view->model()->index(0, 0);
    for (int level = 1; level < openLevels; ++level)
        innermost = view->model()->index(0, 0, innermost);
    QVERIFY(view->model()->hasChildren(innermost));
    QSignalSpy chosen(&browser, &cnbrowser::browseChooseButtonClicked);
    view->setCurrentIndex(innermost);
    child<QPushButton>(&browser, "chooseButton")->click();
    QCOMPARE(chosen.first().first().toString(), deepName(manyComponents).section(',', -openLevels));
    browser.clearData();
    QVERIFY(view->model() == nullptr);
}

WORLD_TEST_MAIN(TestTreeReference)
#include "tst_treereference.moc"

#include "browser/cnbrowser.h"
#include "browser/cnbrowserhelper.h"
#include "tests/support/reference.h"
#include "tests/support/worldtest.h"

#include <QPushButton>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTreeView>

#include <memory>

Q_DECLARE_METATYPE(CNBROWSER_ERROR)

namespace {

// The texts that the items below `parent` show, indented by their depth.
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

// Names of few different components, so that paths meet and names repeat. With each second seed a
// value has a single prefix; with the others insertNames() has to insert the names one by one.
QStringList randomNames(quint32 seed)
{
    static const QStringList onePrefix = {"OU=a",   "OU=b", " OU=a",  "OU=a ", "L=Paris",
                                          "DC=x",   "DC=y", "",       "  ",    "\t",
                                          "OU=a\\", "OU=Ä", "OU=\"a", "OU=Z"};
    static const QStringList twoPrefixes =
        onePrefix + QStringList{"CN=a", "CN=Z", "dc=x", "ab", "OU="};
    const QStringList& components = seed % 2 == 0 ? onePrefix : twoPrefixes;
    QRandomGenerator random(seed);
    QStringList names = {"OU=first,DC=x"};
    for (int i = 0; i < 60; ++i) {
        QStringList name;
        for (int length = random.bounded(6); length >= 0; --length)
            name << components.at(random.bounded(components.size()));
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
    void anyNamesGiveTheReferenceTree()
    {
        cnbrowserhelper helper;
        for (quint32 seed = 1; seed <= 300; ++seed) {
            Level tree;
            const QStringList names = randomNames(seed);
            for (const QString& name : names)
                helper.parseCNData(name, &tree);
            const std::unique_ptr<QStandardItemModel> model(helper.getTreeModel(&tree));
            QCOMPARE(shown(model->invisibleRootItem()), Reference::tree(names.join('\n')));
            helper.clearCNData(&tree);
        }
    }

    void anyScriptOutputGivesTheReferenceModel()
    {
        NEEDS_TOOLS();
        for (quint32 seed = 1; seed <= 60; ++seed) {
            const QString lines = randomNames(seed).join('\n') + '\n';
            World::answer("mvedit mvedit_file_arg.tcl", {lines.toUtf8(), ""});
            cnbrowserhelper helper;
            QSignalSpy obtained(&helper, &cnbrowserhelper::cnDataObtained);
            helper.setDomainInfo("example.com", "admin", "secret");
            helper.getCNData();
            QVERIFY(obtained.wait(20000));
            const std::unique_ptr<QStandardItemModel> model(helper.createModelOutOfCNData());
            QVERIFY(model != nullptr);
            QCOMPARE(shown(model->invisibleRootItem()), Reference::tree(lines));
        }
    }

    void itemsAreAppendedBelowAnItemOfAModel()
    {
        cnbrowserhelper helper;
        Level tree;
        helper.parseCNData("OU=a,OU=b,DC=x", &tree);
        QStandardItemModel model;
        auto* parent = new QStandardItem("top");
        model.appendRow(parent);
        parent->appendRow(new QStandardItem("before"));
        helper.getTreeModelItem(&tree, parent);
        QCOMPARE(shown(parent), QStringList({"before (editable)", "DC=x", " OU=b", "  OU=a"}));
        QCOMPARE(parent->child(1)->columnCount(), 1);
        QCOMPARE(parent->child(1)->child(0)->child(0)->model(), &model);
        helper.clearCNData(&tree);
    }

    void aVeryDeepTreeIsBuiltAndReleased()
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

    void aVeryDeepTreeIsLoadedShownAndReleased()
    {
        NEEDS_TOOLS();
        World::answer("mvedit mvedit_file_arg.tcl", {deepName(manyComponents).toUtf8() + '\n', ""});
        cnbrowser browser(nullptr);
        qRegisterMetaType<CNBROWSER_ERROR>("CNBROWSER_ERROR");
        QSignalSpy done(&browser, &cnbrowser::treeDrawingDone);
        browser.setDomainInfo("example.com", "admin", "secret");
        browser.createTree();
        QVERIFY(done.wait(30000));
        QCOMPARE(done.first().first().value<CNBROWSER_ERROR>(), CNBROWSER_SUCCESS);
        browser.show();
        QVERIFY(QTest::qWaitForWindowExposed(&browser));

        // Qt's view lays open levels out by recursion, so only as deep as a user could get by hand.
        constexpr int openLevels = 1000;
        auto* view = child<QTreeView>(&browser, "browserTree");
        QModelIndex innermost = view->model()->index(0, 0);
        for (int level = 1; level < openLevels; ++level)
            innermost = view->model()->index(0, 0, innermost);
        QVERIFY(view->model()->hasChildren(innermost));
        QSignalSpy chosen(&browser, &cnbrowser::browseChooseButtonClicked);
        view->setCurrentIndex(innermost);
        child<QPushButton>(&browser, "chooseButton")->click();
        QCOMPARE(chosen.first().first().toString(),
                 deepName(manyComponents).section(',', -openLevels));
        browser.clearData();
        QVERIFY(view->model() == nullptr);
    }
};

WORLD_TEST_MAIN(TestTreeReference)
#include "tst_treereference.moc"

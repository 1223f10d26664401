#include "browser/cnbrowser.h"
#include "tests/support/worldtest.h"

#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTreeView>

Q_DECLARE_METATYPE(CNBROWSER_ERROR)

namespace {

const QString refusal = "The selected distinguished name(DN) is not a container object.  Please "
                        "reselect (e.g. OU or CN)";

// The browser, and what it has reported; the container script prints `output`.
class Browser
{
public:
    explicit Browser(const QByteArray& output = {})
    {
        World::answer("mvedit", {output, ""});
        dialog.setDomainInfo("example.test", "admin", "secret");
    }

    // The statuses of one load.
    QList<int> load()
    {
        QSignalSpy done(&dialog, &cnbrowser::treeDrawingDone);
        dialog.createTree();
        if (done.isEmpty())
            done.wait(20000);
        QList<int> statuses;
        for (const QList<QVariant>& arguments : std::as_const(done))
            statuses << arguments.at(0).value<CNBROWSER_ERROR>();
        return statuses;
    }
    QTreeView* tree()
    {
        return child<QTreeView>(&dialog, "browserTree");
    }
    void loadAndShow()
    {
        load();
        dialog.show();
    }
    QStringList click(const QString& button)
    {
        return warningsDuring(
            [&] { QTest::mouseClick(child<QPushButton>(&dialog, button), Qt::LeftButton); });
    }
    QStringList names() const
    {
        QStringList all;
        for (const QList<QVariant>& arguments : chosen)
            all << arguments.at(0).toString();
        return all;
    }

    cnbrowser dialog{nullptr};
    QSignalSpy chosen{&dialog, &cnbrowser::browseChooseButtonClicked};
};

} // namespace

class TestContainerBrowser : public WorldTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qRegisterMetaType<CNBROWSER_ERROR>("CNBROWSER_ERROR");
    }

    void aTreeIsSeenFromItsTop()
    {
        QByteArray containers;
        for (int i = 0; i < 100; ++i)
            containers += "OU=Unit " + QByteArray::number(i) + ",DC=example,DC=test\n";
        Browser browser(containers);
        browser.loadAndShow();
        QTRY_VERIFY(browser.tree()->verticalScrollBar()->isVisible());
        browser.tree()->scrollToBottom();
        QVERIFY(browser.tree()->verticalScrollBar()->value() > 0);
        browser.dialog.close();
        browser.dialog.setDomainInfo("other.test", "admin", "secret");
        browser.loadAndShow();
        QTRY_VERIFY(browser.tree()->verticalScrollBar()->isVisible());
        QCOMPARE(browser.tree()->verticalScrollBar()->value(), 0);
    }

    void missingDomainInfoLoadsNothing()
    {
        Browser browser;
        const QStringList incomplete[] = {
            {"", "admin", "secret"}, {"example.test", "", "secret"}, {"example.test", "admin", ""}};
        for (const QStringList& info : incomplete) {
            browser.dialog.setDomainInfo(info.at(0), info.at(1), info.at(2));
            QCOMPARE(browser.load(), QList<int>{CNBROWSER_MISSING_DOMAIN_INFO});
        }
        QCOMPARE(World::calls().size(), 0);
    }

    void failedLoadIsReportedAndLoadedAnew()
    {
        Browser browser;
        QCOMPARE(browser.load(), QList<int>{CNBROWSER_NO_DATA});
        World::answer("mvedit", {"OU=a,DC=x\n", ""});
        QCOMPARE(browser.load(), QList<int>{CNBROWSER_SUCCESS});
        QCOMPARE(World::calls().size(), 2);
    }

    void formHasItsNameSizeAndSelection()
    {
        Browser browser;
        QCOMPARE(browser.dialog.objectName(), QString("cnbrowser"));
        QCOMPARE(browser.dialog.minimumSize(), QSize(528, 640));
        QCOMPARE(browser.dialog.maximumSize(), QSize(528, 640));
        QVERIFY(browser.tree()->isHeaderHidden());
        QCOMPARE(browser.tree()->selectionMode(), QAbstractItemView::ExtendedSelection);
        QCOMPARE(browser.tree()->selectionBehavior(), QAbstractItemView::SelectRows);
        QVERIFY(child<QWidget>(&browser.dialog, "layoutWidget")
                    ->findChild<QObject*>("horizontalLayout"));
    }

    void onlyAnotherDomainIsLoadedAgain()
    {
        Browser browser("OU=a,DC=x\n");
        QCOMPARE(browser.load(), QList<int>{CNBROWSER_SUCCESS});
        const QAbstractItemModel* model = browser.tree()->model();
        QCOMPARE(browser.load(), QList<int>{CNBROWSER_SUCCESS});
        browser.dialog.setDomainInfo("example.test", "other", "password");
        QCOMPARE(browser.load(), QList<int>{CNBROWSER_SUCCESS});
        QCOMPARE(World::calls().size(), 1);
        QCOMPARE(browser.tree()->model(), model);
        World::answer("mvedit", {"OU=b,DC=y\n", ""});
        browser.dialog.setDomainInfo("Example.test", "admin", "secret");
        QCOMPARE(browser.load(), QList<int>{CNBROWSER_SUCCESS});
        QCOMPARE(World::calls().size(), 2);
        QCOMPARE(browser.tree()->model()->index(0, 0).data().toString(), QString("DC=y"));
        QCOMPARE(browser.tree()->model()->rowCount(), 1);
    }

    void drawingWithoutALoaderReportsNothing()
    {
        Browser browser;
        QSignalSpy done(&browser.dialog, &cnbrowser::treeDrawingDone);
        browser.dialog.drawCNTreeModel();
        QCOMPARE(done.count(), 0);
    }

    void chosenContainerIsReportedAsItsName_data()
    {
        addColumns<QByteArray, QString, QString>("output", "item", "name");
        addRow("unit", QByteArray("OU=Sales,OU=Europe,DC=example,DC=com\n"), "OU=Sales",
               "OU=Sales,OU=Europe,DC=example,DC=com");
        addRow("container", QByteArray("CN=Computers,DC=example,DC=com\n"), "CN=Computers",
               "CN=Computers,DC=example,DC=com");
        addRow("any prefix", QByteArray("L=Paris,DC=com\n"), "L=Paris", "L=Paris,DC=com");
        addRow("lower-case dc", QByteArray("dc=a,DC=com\n"), "dc=a", "dc=a,DC=com");
        addRow("a root that is no domain", QByteArray("O=Example\nDC=com\n"), "O=Example",
               "O=Example");
        addRow("a blank before DC", QByteArray("OU=a, DC=com\n"), " DC=com", " DC=com");
        addRow("quotes and more", QByteArray("OU=it's \"%1\" $x \u6771,DC=com\n"),
               "OU=it's \"%1\" $x 東", "OU=it's \"%1\" $x 東,DC=com");
    }

    void chosenContainerIsReportedAsItsName()
    {
        QFETCH(QByteArray, output);
        QFETCH(QString, item);
        QFETCH(QString, name);
        Browser browser(output);
        browser.loadAndShow();
        selectItem(browser.tree(), item);
        QCOMPARE(browser.click("chooseButton"), QStringList());
        QCOMPARE(browser.names(), QStringList{name});
        QVERIFY(!browser.dialog.isVisible());
    }

    void aRootOrAnyOtherDomainOrNothingIsRefused()
    {
        Browser browser("DCx=a,DC=example,DC=com\n");
        browser.loadAndShow();
        for (const char* item : {"DC=com", "DC=example", "DCx=a", ""}) {
            selectItem(browser.tree(), item);
            QVERIFY2(browser.click("chooseButton") == QStringList{refusal}, item);
            QVERIFY2(messages().last() == "display error msg!", item);
            QVERIFY2(browser.names().isEmpty() && browser.dialog.isVisible(), item);
        }
    }

    void onlyTheCurrentRowCounts()
    {
        Browser browser("OU=a,DC=x\nOU=b,DC=x\n");
        browser.loadAndShow();
        browser.tree()->expandAll();
        browser.tree()->selectAll();
        QCOMPARE(browser.tree()->selectionModel()->selectedRows().size(), 3);
        const QModelIndex root = browser.tree()->model()->index(0, 0);
        browser.tree()->selectionModel()->setCurrentIndex(root.model()->index(1, 0, root),
                                                          QItemSelectionModel::NoUpdate);
        QCOMPARE(browser.click("chooseButton"), QStringList());
        QCOMPARE(browser.names(), QStringList{"OU=b,DC=x"});
    }

    void afterTwoLoadsOneClickChoosesTwice()
    {
        Browser browser("OU=a,DC=x\n");
        browser.load();
        browser.load(); // loads nothing, as the domain is the same
        browser.dialog.setDomainInfo("other.test", "admin", "secret");
        browser.loadAndShow();
        selectItem(browser.tree(), "DC=x");
        QCOMPARE(browser.click("chooseButton"), QStringList({refusal, refusal}));
        selectItem(browser.tree(), "OU=a");
        browser.click("chooseButton");
        QCOMPARE(browser.names(), QStringList({"OU=a,DC=x", "OU=a,DC=x"}));
        QVERIFY(!browser.dialog.isVisible());
    }

    void cancelReportsNothing()
    {
        Browser browser("OU=a,DC=x\n");
        browser.loadAndShow();
        selectItem(browser.tree(), "OU=a");
        QSignalSpy done(&browser.dialog, &cnbrowser::treeDrawingDone);
        QCOMPARE(browser.click("cancelButton"), QStringList());
        QVERIFY(!browser.dialog.isVisible());
        QCOMPARE(browser.names(), QStringList());
        QCOMPARE(done.count(), 0);
    }

    void destructionIsLogged()
    {
        delete new cnbrowser(nullptr);
        QCOMPARE(messages(), QStringList{"cnbrowser destructor called"});
    }
};

WORLD_TEST_MAIN(TestContainerBrowser)
#include "tst_cnbrowser.moc"

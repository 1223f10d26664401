#include "tests/domain/joinoptions.h"

#include "browser/cnbrowser.h"

#include <QTreeView>

JoinWizard::JoinWizard(const QString& computerName, const QString& user)
{
    goToCredentials();
    enterCredentials(PracticeMac::domain, user, PracticeMac::password);
    QCOMPARE(next().join('\n'), QString());
    QCOMPARE(page(), 4);
    type("ComputerNameEdit", computerName);
}

void join(WizardDriver* wizard)
{
    QCOMPARE(wizard->next().join('\n'), QString());
    QCOMPARE(wizard->page(), 7);
    QCOMPARE(visibleTexts(wizard->currentPage()),
             QStringList("You have successfully joined your Mac to your Active Directory domain at "
                         "example.test."));
    QVERIFY(PracticeMac::isJoined());
}

void openAdvancedOptions(WizardDriver* wizard)
{
    wizard->click("AdvancedButton");
}

void choose(WizardDriver* wizard, const QString& option, const QString& value)
{
    wizard->on<QAbstractButton>(option + "Label")->setChecked(true);
    wizard->type(option + "Edit", value);
}

cnbrowser* browse(WizardDriver* wizard)
{
    cnbrowser* browser = nullptr;
    const QStringList warnings = warningsDuring([&] {
        wizard->click("ContainerDNBrowse");
        browser = child<cnbrowser>(&wizard->wizard, "cnbrowser");
        QVERIFY(QTest::qWaitFor(
            [&] { return browser->isVisible() || QApplication::activeModalWidget() == nullptr; },
            60000));
    });
    if (!browser->isVisible())
        qFatal("The browser did not open: %s", qPrintable(warnings.join('\n')));
    return browser;
}

QModelIndex itemAt(const QTreeView* tree, const QStringList& path)
{
    const QAbstractItemModel* model = tree->model();
    QModelIndex found;
    for (const QString& text : path) {
        found = model->match(model->index(0, 0, found), Qt::DisplayRole, text, 1, Qt::MatchExactly)
                    .value(0);
        if (!found.isValid())
            break;
    }
    return found;
}

void pick(WizardDriver* wizard, const QStringList& path)
{
    openAdvancedOptions(wizard);
    cnbrowser* browser = browse(wizard);
    auto* tree = child<QTreeView>(browser, "browserTree");
    const QModelIndex item = itemAt(tree, QStringList{"DC=test", "DC=example"} + path);
    QVERIFY2(item.isValid(), qPrintable(path.join('|')));
    tree->setCurrentIndex(item);
    child<QAbstractButton>(browser, "chooseButton")->click();
    QVERIFY(!browser->isVisible());
    QVERIFY(wizard->on<QAbstractButton>("ContainerDNLabel")->isChecked());
}

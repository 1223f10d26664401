#include "tests/domain/joinoptions.h"

#include "browser/cnbrowser.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
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
    QCOMPARE(wizard->on<QLabel>("Complete_label")->text(),
             QString("You have successfully joined your Mac to your Active Directory domain at "
                     "example.test."));
    QVERIFY(wizard->on<QLabel>("Complete_label")->isVisible());
    QVERIFY(PracticeMac::isJoined());
}

void openAdvancedOptions(WizardDriver* wizard)
{
    QTest::mouseClick(wizard->on<QPushButton>("AdvancedButton"), Qt::LeftButton);
}

void choose(WizardDriver* wizard, const QString& option, const QString& value)
{
    wizard->on<QCheckBox>(option + "Label")->setChecked(true);
    wizard->type(option + "Edit", value);
}

cnbrowser* browse(WizardDriver* wizard)
{
    QTest::mouseClick(wizard->on<QPushButton>("ContainerDNBrowse"), Qt::LeftButton);
    auto* browser = child<cnbrowser>(&wizard->wizard, "cnbrowser");
    if (!QTest::qWaitFor([browser] { return browser->isVisible(); }, 60000))
        qFatal("The browser did not open");
    return browser;
}

QModelIndex itemAt(const QTreeView* tree, const QStringList& path)
{
    QModelIndex found;
    for (const QString& text : path) {
        const QModelIndex parent = found;
        found = {};
        for (int row = 0; row < tree->model()->rowCount(parent); ++row) {
            const QModelIndex item = tree->model()->index(row, 0, parent);
            if (item.data().toString() == text)
                found = item;
        }
        if (!found.isValid())
            return found;
    }
    return found;
}

void pick(WizardDriver* wizard, const QStringList& path)
{
    cnbrowser* browser = browse(wizard);
    auto* tree = child<QTreeView>(browser, "browserTree");
    const QModelIndex item = itemAt(tree, QStringList{"DC=test", "DC=example"} + path);
    QVERIFY2(item.isValid(), qPrintable(path.join('|')));
    tree->setCurrentIndex(item);
    QTest::mouseClick(child<QPushButton>(browser, "chooseButton"), Qt::LeftButton);
    QVERIFY(!browser->isVisible());
    QVERIFY(wizard->on<QCheckBox>("ContainerDNLabel")->isChecked());
}

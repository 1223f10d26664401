// What becomes of a load of containers whose dialog the user has closed.

#include "browser/cnbrowser.h"
#include "pages/dialogs/loadcn.h"
#include "tests/support/wizarddriver.h"

#include <QPushButton>

class TestClosedLoad : public WorldTest
{
    Q_OBJECT

private slots:
    void theBrowserOpensWhenTheScriptEnds();
    void theNextBrowseEndsTheScript();

private:
    static void answer(bool held);
    static void browseAndClose(WizardDriver& driver);
};

void TestClosedLoad::answer(bool held)
{
    Answer script;
    script.output = "OU=Sales,DC=example,DC=test\n";
    script.held = held;
    World::answer("mvedit mvedit_file_arg.tcl", script);
}

void TestClosedLoad::browseAndClose(WizardDriver& driver)
{
    driver.goToJoinOptions();
    driver.on<QAbstractButton>("AdvancedButton")->click();
    World::forgetCalls();
    driver.on<QPushButton>("ContainerDNBrowse")->click();
    QTRY_COMPARE(World::callsOf("mvedit").size(), 1);
    auto* loading = qobject_cast<LoadCN*>(QApplication::activeModalWidget());
    QVERIFY(loading != nullptr);
    QTest::keyClick(loading, Qt::Key_Escape);
    QVERIFY(!loading->isVisible());
}

void TestClosedLoad::theBrowserOpensWhenTheScriptEnds()
{
    answer(true);
    WizardDriver driver;
    browseAndClose(driver);
    World::release("mvedit mvedit_file_arg.tcl");
    QTRY_VERIFY(driver.wizard.findChild<cnbrowser*>()->isVisible());
}

void TestClosedLoad::theNextBrowseEndsTheScript()
{
    allowWarning("Destroyed while process");
    answer(true);
    WizardDriver driver;
    browseAndClose(driver);
    answer(false);
    driver.on<QPushButton>("ContainerDNBrowse")->click();
    QTRY_VERIFY(driver.wizard.findChild<cnbrowser*>()->isVisible());
    QCOMPARE(World::callsOf("mvedit").size(), 2);
}

WORLD_TEST_MAIN(TestClosedLoad)
#include "tst_closedload.moc"

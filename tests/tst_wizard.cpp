#include "tests/support/wizarddriver.h"

#include <QTextBrowser>

class TestWizard : public WorldTest
{
    Q_OBJECT

private slots:
    void windowIsFixedAt800By600();
    void wholeJoin();
};

void TestWizard::windowIsFixedAt800By600()
{
    WizardDriver driver;
    QCOMPARE(driver.wizard.size(), QSize(800, 600));
    driver.wizard.resize(900, 700);
    QCOMPARE(driver.wizard.size(), QSize(800, 600));
}

void TestWizard::wholeJoin()
{
    WizardDriver driver;
    driver.goToJoinOptions();
    QCOMPARE(driver.page(), 4);
    World::forgetCalls();
    QCOMPARE(driver.next(), QStringList());
    QCOMPARE(driver.page(), 7);
    QCOMPARE(World::calls().size(), 1);
    QCOMPARE(World::calls().at(0).words(),
             QStringList({"gui_helper_tool", "/usr/local/sbin/mvjoin", "-u", "admin", "-p",
                          "secret", "example.test", "-w", "-n", "my-mac"}));
}

WORLD_TEST_MAIN(TestWizard)
#include "tst_wizard.moc"

#include "browser/cnbrowser.h"
#include "tests/support/keyboard.h"

#include <QCheckBox>

// What an administrator does, from start to end, without a mouse.
class TestKeyboardOnly : public WorldTest
{
    Q_OBJECT

private slots:
    void joinWithAllOptions()
    {
        KeyDriver driver;
        driver.enterCredentials();
        pressKey(Qt::Key_Down);
        QCOMPARE(focusName(), QString("ZoneButton"));
        pressKey(Qt::Key_Tab);
        typeText("MacZone");
        pressKey(Qt::Key_Tab);
        retype("mac-7");
        driver.toggle(Qt::Key_A, "AdvancedButton");
        driver.toggle(Qt::Key_O, "ForceLeave");
        driver.toggle(Qt::Key_C, "ContainerDNLabel");
        driver.toggle(Qt::Key_P, "PDSLabel");
        driver.toggle(Qt::Key_L, "AliasLabel");
        pressKey(Qt::Key_Tab);
        typeText("OU=Macs,DC=example,DC=test");
        pressKey(Qt::Key_Tab);
        pressKey(Qt::Key_Tab);
        typeText("dc1");
        pressKey(Qt::Key_Tab);
        typeText("mac-alias");
        driver.pressReturn();
        QCOMPARE(
            World::callsOf("gui_helper_tool").first().arguments,
            QStringList({"/usr/local/sbin/mvjoin", "-u", "admin", "-p", "secret", "example.test",
                         "-f", "-z", "MacZone", "-c", "OU=Macs,DC=example,DC=test", "-s", "dc1",
                         "-a", "mac-alias", "-n", "mac-7"}));
        QCOMPARE(driver.page(), 7);
    }

    void refusedCredentialsLeadBackToTheEdit()
    {
        KeyDriver driver;
        driver.pressReturn();
        World::answer("mvedit", {"No such domain\n", "", 1});
        typeText("wrong.test");
        QCOMPARE(driver.pressReturn(), QStringList{refusedCheck("No such domain")});
        QCOMPARE(driver.page(), 3);
        QCOMPARE(focusName(), QString("DomainEdit"));
    }

    void pickContainer()
    {
        KeyDriver driver;
        driver.enterCredentials();
        World::answer("mvedit",
                      {"OU=Europe,DC=example,DC=test\nOU=Sales,OU=Europe,DC=example,DC=test\n"
                       "OU=Macs,DC=example,DC=test\n",
                       ""});
        driver.toggle(Qt::Key_A, "AdvancedButton");
        for (int i = 0; i < 4; ++i)
            pressKey(Qt::Key_Tab);
        QCOMPARE(focusName(), QString("ContainerDNBrowse"));
        pressKey(Qt::Key_Space);
        cnbrowser* browser = nullptr;
        QTRY_VERIFY((browser = driver.wizard.findChild<cnbrowser*>()) != nullptr &&
                    browser->isActiveWindow());
        QCOMPARE(focusName(), QString("browserTree"));
        typeText("OU=E");
        pressKey(Qt::Key_Right);
        pressKey(Qt::Key_Down);
        pressKey(Qt::Key_Return);
        QTRY_VERIFY(!browser->isVisible());
        driver.activateAgain();
        QTRY_COMPARE(focusName(), QString("ContainerDNEdit"));
        QCOMPARE(driver.text("ContainerDNEdit"), QString("OU=Sales,OU=Europe,DC=example,DC=test"));
        QVERIFY(driver.on<QCheckBox>("ContainerDNLabel")->isChecked());
    }

    void leave()
    {
        World::setJoined();
        KeyDriver driver;
        driver.pressReturn();
        QCOMPARE(driver.page(), 6);
        pressKey(Qt::Key_Down);
        pressKey(Qt::Key_Tab);
        typeText("admin");
        pressKey(Qt::Key_Tab);
        typeText("secret");
        driver.pressReturn();
        QCOMPARE(driver.page(), 7);
        QCOMPARE(World::callsOf("gui_helper_tool").first().arguments,
                 QStringList({"/usr/local/sbin/mvleave", "-r", "-u", "admin", "-p", "secret"}));
    }

    void leaveWithoutContact()
    {
        World::setJoined();
        KeyDriver driver;
        driver.pressReturn();
        pressKey(Qt::Key_Down);
        pressKey(Qt::Key_Down);
        driver.pressReturn();
        QCOMPARE(driver.page(), 7);
        QCOMPARE(World::callsOf("gui_helper_tool").first().arguments,
                 QStringList({"/usr/local/sbin/mvleave", "-f"}));
    }

    void unbind()
    {
        World::setBound();
        KeyDriver driver;
        driver.pressReturn();
        QCOMPARE(driver.page(), 2);
        typeText("admin");
        pressKey(Qt::Key_Tab);
        typeText("secret");
        QCOMPARE(driver.pressReturn(),
                 QStringList{"You are unbound from Apple's Active Directory plugin."});
        QCOMPARE(driver.page(), 3);
        QCOMPARE(World::callsOf("dsconfigad").last().arguments,
                 QStringList({"-r", "-f", "-u", "admin", "-p", "secret"}));
    }
};

WORLD_TEST_MAIN(TestKeyboardOnly)
#include "tst_keyboardonly.moc"

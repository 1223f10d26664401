// A load of containers ends when the user closes its dialog.

#include "browser/cnbrowser.h"
#include "pages/dialogs/loadcn.h"
#include "tests/support/commandlines.h"
#include "tests/support/wizarddriver.h"

#include <QPushButton>

#include <unistd.h>

namespace {

// A name of this process's own, as other tests run the same script at the same time.
const QString user = QString("admin-%1").arg(getpid());
const QString script = "mvedit mvedit_file_arg.tcl";
const QByteArray containers = "OU=Sales,DC=example,DC=test\n";

} // namespace

class TestClosedLoad : public WorldTest
{
    Q_OBJECT

private slots:
    void theScriptEnds()
    {
        World::hold(script, containers);
        WizardDriver driver;
        browseAndClose(driver);
        QTRY_COMPARE(placesOf(user.toUtf8()), QStringList());
    }

    // The script is held until something is typed: one that closing did not end would fail then.
    void itsFailureDoesNotEmptyWhatIsTyped()
    {
        World::answer(script, {"", "", 1, 0, false, true});
        WizardDriver driver;
        browseAndClose(driver);
        driver.type("ContainerDNEdit", "OU=Macs,DC=example,DC=test");
        World::release(script);
        QCOMPARE(warningsDuring([] { QTRY_COMPARE(placesOf(user.toUtf8()), QStringList()); }),
                 QStringList());
        QCOMPARE(driver.text("ContainerDNEdit"), QString("OU=Macs,DC=example,DC=test"));
    }

    void theNextBrowseLoadsAnew()
    {
        World::hold(script);
        WizardDriver driver;
        browseAndClose(driver);
        World::answer(script, {containers, ""});
        driver.on<QPushButton>("ContainerDNBrowse")->click();
        QTRY_VERIFY(driver.wizard.findChild<cnbrowser*>()->isVisible());
        QCOMPARE(World::callsOf("mvedit").size(), 2);
    }

private:
    static void browseAndClose(WizardDriver& driver)
    {
        allowWarning("Destroyed while process"); // the script that closing ends
        driver.goToJoinOptions("example.test", user);
        driver.on<QAbstractButton>("AdvancedButton")->click();
        World::forgetCalls();
        driver.on<QPushButton>("ContainerDNBrowse")->click();
        QTRY_COMPARE(World::callsOf("mvedit").size(), 1);
        auto* loading = qobject_cast<LoadCN*>(QApplication::activeModalWidget());
        QVERIFY(loading != nullptr);
        QTest::keyClick(loading, Qt::Key_Escape);
        QVERIFY(!loading->isVisible());
    }
};

WORLD_TEST_MAIN(TestClosedLoad)
#include "tst_closedload.moc"

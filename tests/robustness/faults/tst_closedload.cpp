// A load of containers goes on when the user closes its dialog.

#include "browser/cnbrowser.h"
#include "pages/dialogs/loadcn.h"
#include "tests/support/commandlines.h"
#include "tests/support/wizarddriver.h"

#include <QPushButton>

#include <thread>
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
    void theBrowserOpensWhenTheScriptEnds()
    {
        World::hold(script, containers);
        WizardDriver driver;
        browseAndClose(driver);
        World::release(script);
        QTRY_VERIFY(driver.wizard.findChild<cnbrowser*>()->isVisible());
    }

    void theNextBrowseEndsTheScript()
    {
        allowWarning("Destroyed while process");
        World::answer("mvedit check_domain_cred.tcl", {});
        World::hold("mvedit");
        WizardDriver driver;
        browseAndClose(driver);
        // For the second script alone: the first one stays held.
        World::answer(script, {containers, ""});
        driver.on<QPushButton>("ContainerDNBrowse")->click();
        QTRY_VERIFY(driver.wizard.findChild<cnbrowser*>()->isVisible());
        QCOMPARE(World::callsOf("mvedit").size(), 2);
        QCOMPARE(placesOf(user.toUtf8()), QStringList());
    }

    void aFailureDuringACheckIsToldInAMessageThatCloses_data()
    {
        addColumns<int, QStringList, int>("exitStatus", "beginnings", "page");
        const QString browsing = "Browse require";
        addRow("the check passes", 0, QStringList{browsing}, 4);
        addRow("the check fails", 1, QStringList{browsing, "Validation of"}, 3);
    }

    // Clicks on the busy window are dropped while the check runs; those on the message must not be.
    void aFailureDuringACheckIsToldInAMessageThatCloses()
    {
        QFETCH(int, exitStatus);
        QFETCH(QStringList, beginnings);
        QFETCH(int, page);
        World::answer(script, {"", "", 1, 0, false, true});
        WizardDriver driver;
        browseAndClose(driver);
        driver.back();
        driver.type("UsernameEdit", "admin");
        World::answer("mvedit check_domain_cred.tcl", {"", "", exitStatus, 0, false, true});
        World::forgetCalls();
        std::thread outage([] {
            while (World::callsOf("mvedit").isEmpty())
                std::this_thread::yield();
            World::release(script);
            while (!placesOf(user.toUtf8()).isEmpty())
                std::this_thread::yield();
            World::release("mvedit check_domain_cred.tcl");
        });
        QStringList said = warningsDuring([&] {
            QTest::mouseClick(driver.button(QWizard::NextButton), Qt::LeftButton);
            // On a busy machine the end may be heard only now.
            QTRY_VERIFY(messages().contains("readStdOutput errcode:  1"));
        });
        outage.join();
        said.sort();
        QCOMPARE(said.size(), beginnings.size());
        for (int i = 0; i < said.size(); ++i)
            QVERIFY2(said.at(i).startsWith(beginnings.at(i)), qPrintable(said.at(i)));
        QCOMPARE(driver.page(), page);
    }

private:
    static void browseAndClose(WizardDriver& driver)
    {
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

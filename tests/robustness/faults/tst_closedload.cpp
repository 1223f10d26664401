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

} // namespace

class TestClosedLoad : public WorldTest
{
    Q_OBJECT

private slots:
    void theBrowserOpensWhenTheScriptEnds()
    {
        answer(true);
        WizardDriver driver;
        browseAndClose(driver);
        World::release("mvedit mvedit_file_arg.tcl");
        QTRY_VERIFY(driver.wizard.findChild<cnbrowser*>()->isVisible());
    }

    void theNextBrowseEndsTheScript()
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
        answer(true, 1);
        WizardDriver driver;
        browseAndClose(driver);
        driver.back();
        driver.type("UsernameEdit", "admin");
        Answer check;
        check.exitStatus = exitStatus;
        check.held = true;
        World::answer("mvedit check_domain_cred.tcl", check);
        World::forgetCalls();
        std::thread outage([] {
            while (World::callsOf("mvedit").isEmpty())
                std::this_thread::yield();
            World::release("mvedit mvedit_file_arg.tcl");
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
    static void answer(bool held, int exitStatus = 0)
    {
        Answer script;
        script.exitStatus = exitStatus;
        script.output = "OU=Sales,DC=example,DC=test\n";
        script.held = held;
        World::answer("mvedit mvedit_file_arg.tcl", script);
    }

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

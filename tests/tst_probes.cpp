#include "system/commandrunner.h"
#include "system/probes.h"
#include "tests/support/webbrowser.h"
#include "tests/support/worldtest.h"

#include <csignal>

class TestProbes : public WorldTest
{
    Q_OBJECT

private slots:
    void joinedIsTrueWhenNoShellCanStart()
    {
        const NoDescriptors none;
        QVERIFY(isJoined());
    }

    void enrolledIsFalseWhenNoShellCanStart()
    {
        World::answer("profiles", {"com.morvanta.osx.MDM\n", ""});
        const NoDescriptors none;
        QVERIFY(!isEnrolled());
    }

    void joinedFollowsTheAgentsExitStatus()
    {
        for (const int exitStatus : {0, 1, 127, 255}) {
            World::answer("mvinfo -d", {"example.test\n", "", exitStatus});
            QCOMPARE(isJoined(), exitStatus == 0);
        }
    }

    void joinedIsFalseWithoutTheAgent_data()
    {
        addColumns<bool>("inPlace");
        addRow("missing", false);
        addRow("not executable", true);
    }

    void joinedIsFalseWithoutTheAgent()
    {
        QFETCH(bool, inPlace);
        if (inPlace)
            World::replaceByPlainFile("mvinfo");
        else
            World::removeTool("mvinfo");
        QVERIFY(!isJoined());
        QCOMPARE(getReturnValue("/usr/local/bin/mvinfo -d"), std::string());
    }

    void joinedIsFalseWhenTheAgentIsKilled()
    {
        World::answer("mvinfo -d", {"", "", 0, SIGKILL});
        QVERIFY(!isJoined());
    }

    void joinedAsksAnewAtEachCall()
    {
        isJoined();
        isJoined();
        QCOMPARE(World::calls().size(), 2);
        QCOMPARE(World::calls().at(1).path, QString("/usr/local/bin/mvinfo"));
        QCOMPARE(World::calls().at(1).arguments, QStringList({"-d"}));
    }

    void enrolledByTheIdentifierAnywhere_data()
    {
        addColumns<QByteArray, bool>("profiles", "enrolled");
        addRow("identifier alone", QByteArray("com.morvanta.osx.MDM"), true);
        addRow("within a longer identifier", QByteArray("1: my.com.morvanta.osx.MDM.beta\n"), true);
        addRow("other case", QByteArray("com.morvanta.osx.mdm\n"), false);
        addRow("no profile", QByteArray(), false);
    }

    void enrolledByTheIdentifierAnywhere()
    {
        QFETCH(QByteArray, profiles);
        World::answer("profiles", {profiles, ""});
        QTEST(isEnrolled(), "enrolled");
        QCOMPARE(World::calls().at(0).path, QString("/usr/bin/profiles"));
        QCOMPARE(World::calls().at(0).arguments, QStringList({"-C"}));
    }

    void enrolledIgnoresTheExitStatus()
    {
        World::answer("profiles", {"com.morvanta.osx.MDM\n", "", 5});
        QVERIFY(isEnrolled());
    }

    void enrolledIsFalseWithoutTheTool()
    {
        World::removeTool("profiles");
        QVERIFY(!isEnrolled());
    }

    void downloadOpensTheEnrollmentPage()
    {
        WebBrowser browser;
        QVERIFY(download_mac_agent());
        QCOMPARE(browser.opened,
                 QList<QUrl>{QUrl("https://cloud.morvanta.example/AppLoad?noumc=1")});
    }

    void downloadTellsWhenTheDesktopRefuses()
    {
        // The display of the tests has no browser.
        allowWarning("does not support QPlatformServices::openUrl()");
        QVERIFY(!download_mac_agent());
    }
};

WORLD_TEST_MAIN(TestProbes)
#include "tst_probes.moc"

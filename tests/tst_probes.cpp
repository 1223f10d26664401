#include "system/commandrunner.h"
#include "system/probes.h"
#include "tests/support/webbrowser.h"
#include "tests/support/worldtest.h"

class TestProbes : public WorldTest
{
    Q_OBJECT

private slots:
    void withoutTheAgentTheMacIsNotJoinedAndHasNoDomain()
    {
        World::removeTool("mvinfo");
        QVERIFY(!isJoined());
        QCOMPARE(getReturnValue("/usr/local/bin/mvinfo -d"), std::string());
    }

    void joinedAsksAnewAtEachCall()
    {
        isJoined();
        isJoined();
        QCOMPARE(World::callsOf("mvinfo").size(), 2);
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
        World::answer("profiles", {profiles, "", 5}); // a status that does not matter
        QTEST(isEnrolled(), "enrolled");
    }

    void downloadOpensTheEnrollmentPageOrTellsThatTheDesktopRefuses()
    {
        // The display of the tests has no browser.
        allowWarning("does not support QPlatformServices::openUrl()");
        QVERIFY(!download_mac_agent());
        const WebBrowser browser;
        QVERIFY(download_mac_agent());
        QCOMPARE(browser.opened,
                 QList<QUrl>{QUrl("https://cloud.morvanta.example/AppLoad?noumc=1")});
    }
};

WORLD_TEST_MAIN(TestProbes)
#include "tst_probes.moc"

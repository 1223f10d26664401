#include "system/commandrunner.h"
#include "system/probes.h"
#include "tests/support/worldtest.h"

#include <QDesktopServices>
#include <QUrl>

#include <csignal>

class TestProbes : public WorldTest
{
    Q_OBJECT

public slots:
    // Takes the place of the web browser.
    void openUrl(const QUrl& url)
    {
        opened << url;
    }

private slots:
    void joinedIsTrueWhenNoShellCanStart();
    void enrolledIsFalseWhenNoShellCanStart();
    void joinedFollowsTheAgentsExitStatus_data();
    void joinedFollowsTheAgentsExitStatus();
    void joinedIsFalseWithoutTheAgent_data();
    void joinedIsFalseWithoutTheAgent();
    void joinedIsFalseWhenTheAgentIsKilled();
    void joinedAsksAnewAtEachCall();
    void enrolledByTheMarkerAnywhere_data();
    void enrolledByTheMarkerAnywhere();
    void enrolledIgnoresTheExitStatus();
    void enrolledIsFalseWithoutTheTool();
    void downloadOpensTheEnrollmentPage();
    void downloadTellsWhenTheDesktopRefuses();

private:
    QList<QUrl> opened;
};

void TestProbes::joinedIsTrueWhenNoShellCanStart()
{
    const NoDescriptors none;
    QVERIFY(isJoined());
}

void TestProbes::enrolledIsFalseWhenNoShellCanStart()
{
    World::answer("profiles", {"com.morvanta.osx.MDM\n", ""});
    const NoDescriptors none;
    QVERIFY(!isEnrolled());
}

void TestProbes::joinedFollowsTheAgentsExitStatus_data()
{
    QTest::addColumn<int>("exitStatus");
    QTest::addColumn<bool>("joined");
    QTest::newRow("0 is joined") << 0 << true;
    QTest::newRow("1 is not joined") << 1 << false;
    QTest::newRow("127 is not joined") << 127 << false;
    QTest::newRow("255 is not joined") << 255 << false;
}

void TestProbes::joinedFollowsTheAgentsExitStatus()
{
    QFETCH(int, exitStatus);
    QFETCH(bool, joined);
    World::answer("mvinfo -d", {"example.test\n", "", exitStatus});
    QCOMPARE(isJoined(), joined);
}

void TestProbes::joinedIsFalseWithoutTheAgent_data()
{
    QTest::addColumn<bool>("left");
    QTest::newRow("missing") << false;
    QTest::newRow("not executable") << true;
}

void TestProbes::joinedIsFalseWithoutTheAgent()
{
    QFETCH(bool, left);
    if (left)
        World::replaceByPlainFile("mvinfo");
    else
        World::removeTool("mvinfo");
    QVERIFY(!isJoined());
    QCOMPARE(getReturnValue("/usr/local/bin/mvinfo -d"), std::string());
}

void TestProbes::joinedIsFalseWhenTheAgentIsKilled()
{
    World::answer("mvinfo -d", {"", "", 0, SIGKILL});
    QVERIFY(!isJoined());
}

void TestProbes::joinedAsksAnewAtEachCall()
{
    isJoined();
    isJoined();
    QCOMPARE(World::calls().size(), 2);
    QCOMPARE(World::calls().at(1).path, QString("/usr/local/bin/mvinfo"));
    QCOMPARE(World::calls().at(1).arguments, QStringList({"-d"}));
}

void TestProbes::enrolledByTheMarkerAnywhere_data()
{
    QTest::addColumn<QByteArray>("profiles");
    QTest::addColumn<bool>("enrolled");
    QTest::newRow("marker alone") << QByteArray("com.morvanta.osx.MDM") << true;
    QTest::newRow("within a longer identifier")
        << QByteArray("1: my.com.morvanta.osx.MDM.beta\n") << true;
    QTest::newRow("other case") << QByteArray("com.morvanta.osx.mdm\n") << false;
    QTest::newRow("no profile") << QByteArray() << false;
}

void TestProbes::enrolledByTheMarkerAnywhere()
{
    QFETCH(QByteArray, profiles);
    World::answer("profiles", {profiles, ""});
    QTEST(isEnrolled(), "enrolled");
    QCOMPARE(World::calls().at(0).path, QString("/usr/bin/profiles"));
    QCOMPARE(World::calls().at(0).arguments, QStringList({"-C"}));
}

void TestProbes::enrolledIgnoresTheExitStatus()
{
    World::answer("profiles", {"com.morvanta.osx.MDM\n", "", 5});
    QVERIFY(isEnrolled());
}

void TestProbes::enrolledIsFalseWithoutTheTool()
{
    World::removeTool("profiles");
    QVERIFY(!isEnrolled());
}

void TestProbes::downloadOpensTheEnrollmentPage()
{
    QDesktopServices::setUrlHandler("https", this, "openUrl");
    opened.clear();
    const bool accepted = download_mac_agent();
    QDesktopServices::unsetUrlHandler("https");
    QVERIFY(accepted);
    QCOMPARE(opened, QList<QUrl>{QUrl(QString("https://%1/AppLoad?noumc=1").arg(enrollmentHost))});
}

void TestProbes::downloadTellsWhenTheDesktopRefuses()
{
    // The display of the tests has no browser.
    allowWarning("does not support QPlatformServices::openUrl()");
    QVERIFY(!download_mac_agent());
}

WORLD_TEST_MAIN(TestProbes)
#include "tst_probes.moc"

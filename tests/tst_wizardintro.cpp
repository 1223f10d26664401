#include "pages/wizardintro.h"
#include "tests/support/worldtest.h"

#include <QLabel>

#include <csignal>

namespace {

const QString joinText =
    "Welcome to the Morvanta Join Assistant.  This assistant will help you join your Mac to your "
    "Active Directory Domain.  We will require an Active Directory Administrator's username and "
    "password during this process.  If you do not know one, please find your Active Directory "
    "Administrator to provide the necessary information.";
const QString leaveText =
    "Welcome to the Morvanta Join Assistant.  This assistant will help you leave your Mac from "
    "your Active Directory domain.  We will require an Active Directory Administrator's username "
    "and password during this process.  If you do not know one, please find your Active Directory "
    "Administrator to provide the necessary information.";

} // namespace

class TestWizardIntro : public WorldTest
{
    Q_OBJECT

private slots:
    void withoutTheAgentOnlyTheJoinTextShows_data();
    void withoutTheAgentOnlyTheJoinTextShows();
    void notJoinedOnlyTheJoinTextShows();
    void joinedShowsTheLeaveTextAndTheDomain_data();
    void joinedShowsTheLeaveTextAndTheDomain();
    void domainIsAskedForOnlyWhenJoined();
    void choiceIsMadeOnce();
    void alwaysLeadsToTheInterimPage();
    void formHasItsNameTitleAndSize();
    void labelsAreWrappedInTheirOrder();
};

void TestWizardIntro::withoutTheAgentOnlyTheJoinTextShows_data()
{
    QTest::addColumn<bool>("missing");
    QTest::newRow("missing") << true;
    QTest::newRow("killed") << false;
}

void TestWizardIntro::withoutTheAgentOnlyTheJoinTextShows()
{
    QFETCH(bool, missing);
    World::answer("mvinfo -d", {"example.test\n", "", 0, SIGKILL});
    if (missing)
        World::removeTool("mvinfo");
    WizardIntro page;
    page.show();
    QCOMPARE(visibleTexts(&page), QStringList{joinText});
}

void TestWizardIntro::notJoinedOnlyTheJoinTextShows()
{
    WizardIntro page;
    page.show();
    QCOMPARE(visibleTexts(&page), QStringList{joinText});
}

void TestWizardIntro::joinedShowsTheLeaveTextAndTheDomain_data()
{
    QTest::addColumn<QByteArray>("output");
    QTest::newRow("with its line end") << QByteArray("example.test\n");
    QTest::newRow("without a line end") << QByteArray("example.test");
    QTest::newRow("several lines") << QByteArray("example.test\nmore\n");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("longer than a read buffer") << QByteArray(1500, 'x') + '\n';
    QTest::newRow("not ASCII") << QByteArray("m\xc3\xbcnchen.test\n");
}

void TestWizardIntro::joinedShowsTheLeaveTextAndTheDomain()
{
    QFETCH(QByteArray, output);
    World::setJoined(output);
    WizardIntro page;
    page.show();
    QCOMPARE(visibleTexts(&page),
             QStringList({leaveText, "You are currently joined to " + QString::fromUtf8(output)}));
}

void TestWizardIntro::domainIsAskedForOnlyWhenJoined()
{
    const WizardIntro notJoined;
    QCOMPARE(World::calls().size(), 1);
    World::setJoined();
    const WizardIntro joined;
    QCOMPARE(World::calls().size(), 3);
    const QList<Call> calls = World::calls();
    for (const Call& call : calls)
        QCOMPARE(call.words(), QStringList({"mvinfo", "-d"}));
}

void TestWizardIntro::choiceIsMadeOnce()
{
    WizardIntro page;
    World::setJoined();
    page.initializePage();
    page.show();
    page.hide();
    page.show();
    QCOMPARE(visibleTexts(&page), QStringList{joinText});
}

void TestWizardIntro::alwaysLeadsToTheInterimPage()
{
    const WizardIntro notJoined;
    QCOMPARE(notJoined.nextId(), 1);
    World::setJoined();
    const WizardIntro joined;
    QCOMPARE(joined.nextId(), 1);
}

void TestWizardIntro::formHasItsNameTitleAndSize()
{
    const WizardIntro page;
    QCOMPARE(page.objectName(), QString("WizardIntro"));
    QCOMPARE(page.windowTitle(), QString("WizardPage"));
    QCOMPARE(page.size(), QSize(582, 524));
}

void TestWizardIntro::labelsAreWrappedInTheirOrder()
{
    const WizardIntro page;
    const QList<QLabel*> labels = page.findChildren<QLabel*>();
    QCOMPARE(labels.size(), 3);
    QCOMPARE(labels.at(0)->objectName(), QString("Join_label"));
    QCOMPARE(labels.at(1)->objectName(), QString("Leave_label"));
    QCOMPARE(labels.at(2)->objectName(), QString("Domain_label"));
    QVERIFY(labels.at(0)->wordWrap());
    QVERIFY(labels.at(1)->wordWrap());
    QCOMPARE(labels.at(0)->text(), joinText);
    QCOMPARE(labels.at(1)->text(), leaveText);
    QCOMPARE(labels.at(2)->text(), QString("TextLabel"));
}

WORLD_TEST_MAIN(TestWizardIntro)
#include "tst_wizardintro.moc"

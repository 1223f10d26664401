#include "pages/interimintro.h"
#include "tests/support/worldtest.h"

#include <memory>

namespace {

void setReport(const QByteArray& report)
{
    World::answer("dsconfigad", {report, ""});
}

// The runner takes the first four bytes for a process id.
const QByteArray head = "\n\n\n\n";
const QByteArray domainLine = "Active Directory Domain          = example.test\n";

} // namespace

class TestInterimIntro : public WorldTest
{
    Q_OBJECT

private slots:
    void refusedRunRefusesTheStepInSilence_data();
    void refusedRunRefusesTheStepInSilence();
    void asksTheSystemForItsBinding();
    void statusOfTheToolIsNotKnown();
    void reportDecidesTheNextPage_data();
    void reportDecidesTheNextPage();
    void withoutADomainLineTheAgentDecides_data();
    void withoutADomainLineTheAgentDecides();
    void boundMacIsNotAskedWhetherJoined();
    void beforeAnyCheckTheAgentDecides();
    void secondQuestionReadsWhatIsLeft();
    void newCheckReplacesTheReport();
    void refusedCheckForgetsTheReport();
    void unreadReportIsClosedWithThePage();
    void formIsEmpty();
};

void TestInterimIntro::refusedRunRefusesTheStepInSilence_data()
{
    addRefusedRuns();
}

void TestInterimIntro::refusedRunRefusesTheStepInSilence()
{
    refuseRuns();
    InterimIntro page;
    bool valid = true;
    QCOMPARE(warningsDuring([&] { valid = page.validatePage(); }), QStringList());
    QVERIFY(!valid);
    QCOMPARE(World::callsOf("dsconfigad").size(), 0);
}

void TestInterimIntro::asksTheSystemForItsBinding()
{
    InterimIntro page;
    QVERIFY(page.validatePage());
    QCOMPARE(World::calls().size(), 2);
    QCOMPARE(World::calls().at(0).words(),
             QStringList({"authorization_prompt", "/usr/sbin/dsconfigad"}));
    QCOMPARE(World::calls().at(1).path, QString("/usr/sbin/dsconfigad"));
    QCOMPARE(World::calls().at(1).arguments, QStringList{"-show"});
}

void TestInterimIntro::statusOfTheToolIsNotKnown()
{
    World::answer("dsconfigad", {"Invalid arguments\n", "", 64});
    InterimIntro page;
    QVERIFY(page.validatePage());
}

void TestInterimIntro::reportDecidesTheNextPage_data()
{
    QTest::addColumn<QByteArray>("report");
    QTest::addColumn<int>("page");
    QTest::newRow("domain line") << head + domainLine << 2;
    QTest::newRow("domain line after others")
        << head + "Forest = x\nServer = y\n" + domainLine << 2;
    QTest::newRow("words within a line") << head + "*** Active Directory Domain\n" << 2;
    QTest::newRow("no line end") << head + "Active Directory Domain" << 2;
    QTest::newRow("other case") << head + "active directory domain = example.test\n" << 3;
    QTest::newRow("words on two lines") << head + "Active Directory\nDomain = example.test\n" << 3;
    QTest::newRow("first line loses its four first bytes") << domainLine << 3;
    QTest::newRow("empty") << QByteArray() << 3;
    QTest::newRow("three bytes") << QByteArray("abc") << 3;
    // A line is read in pieces of 511 bytes.
    QTest::newRow("ends with a piece")
        << head + QByteArray(488, 'x') + "Active Directory Domain" << 2;
    QTest::newRow("begins with a piece")
        << head + QByteArray(511, 'x') + "Active Directory Domain" << 2;
    QTest::newRow("across two pieces")
        << head + QByteArray(489, 'x') + "Active Directory Domain" << 3;
}

void TestInterimIntro::reportDecidesTheNextPage()
{
    QFETCH(QByteArray, report);
    setReport(report);
    InterimIntro page;
    QVERIFY(page.validatePage());
    QTEST(page.nextId(), "page");
}

void TestInterimIntro::withoutADomainLineTheAgentDecides_data()
{
    QTest::addColumn<bool>("joined");
    QTest::addColumn<int>("page");
    QTest::newRow("joined: leave") << true << 6;
    QTest::newRow("not joined: credentials") << false << 3;
}

void TestInterimIntro::withoutADomainLineTheAgentDecides()
{
    QFETCH(bool, joined);
    if (joined)
        World::setJoined();
    InterimIntro page;
    QVERIFY(page.validatePage());
    QTEST(page.nextId(), "page");
    QCOMPARE(World::calls().last().words(), QStringList({"mvinfo", "-d"}));
}

void TestInterimIntro::boundMacIsNotAskedWhetherJoined()
{
    World::setJoined();
    World::setBound();
    InterimIntro page;
    QVERIFY(page.validatePage());
    QCOMPARE(page.nextId(), 2);
    QCOMPARE(World::callsOf("mvinfo").size(), 0);
}

void TestInterimIntro::beforeAnyCheckTheAgentDecides()
{
    World::setBound();
    const InterimIntro page;
    QCOMPARE(page.nextId(), 3);
    World::setJoined();
    QCOMPARE(page.nextId(), 6);
    QCOMPARE(World::callsOf("dsconfigad").size(), 0);
}

void TestInterimIntro::secondQuestionReadsWhatIsLeft()
{
    setReport(head + domainLine + domainLine);
    InterimIntro page;
    QVERIFY(page.validatePage());
    QCOMPARE(page.nextId(), 2);
    QCOMPARE(page.nextId(), 2);
    QCOMPARE(page.nextId(), 3);
}

void TestInterimIntro::newCheckReplacesTheReport()
{
    setReport(head + domainLine + domainLine);
    InterimIntro page;
    QVERIFY(page.validatePage());
    setReport(head + "not bound\n");
    QVERIFY(page.validatePage());
    QCOMPARE(page.nextId(), 3);
}

void TestInterimIntro::refusedCheckForgetsTheReport()
{
    setReport(head + domainLine);
    InterimIntro page;
    QVERIFY(page.validatePage());
    World::removeTool("dsconfigad");
    QVERIFY(!page.validatePage());
    QCOMPARE(page.nextId(), 3);
}

// That nothing stays open is seen after each test function.
void TestInterimIntro::unreadReportIsClosedWithThePage()
{
    setReport(head + domainLine);
    auto page = std::make_unique<InterimIntro>();
    QVERIFY(page->validatePage());
    QVERIFY(page->validatePage());
    QCOMPARE(World::callsOf("dsconfigad").size(), 2);
}

void TestInterimIntro::formIsEmpty()
{
    const InterimIntro page;
    QCOMPARE(page.objectName(), QString("InterimIntro"));
    QCOMPARE(page.windowTitle(), QString("WizardPage"));
    QCOMPARE(page.findChildren<QWidget*>().size(), 0);
}

WORLD_TEST_MAIN(TestInterimIntro)
#include "tst_interimintro.moc"

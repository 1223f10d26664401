#include "pages/interimintro.h"
#include "tests/support/worldtest.h"

#include <memory>

namespace {

void setReport(const QByteArray& report)
{
    World::answer("dsconfigad", {report, ""});
}

// The runner takes these four bytes for a process id.
const QByteArray head = "\n\n\n\n";
const QByteArray domainLine = "Active Directory Domain          = example.test\n";

} // namespace

class TestInterimIntro : public WorldTest
{
    Q_OBJECT

private slots:
    void reportDecidesTheNextPage_data()
    {
        addColumns<QByteArray, int>("report", "page");
        addRow("domain line", head + domainLine, 2);
        addRow("domain line after others", head + "Forest = x\nServer = y\n" + domainLine, 2);
        addRow("words within a line", head + "*** Active Directory Domain\n", 2);
        addRow("no line end", head + "Active Directory Domain", 2);
        addRow("other case", head + "active directory domain = example.test\n", 3);
        addRow("words on two lines", head + "Active Directory\nDomain = example.test\n", 3);
        addRow("first line loses its first four bytes", domainLine, 3);
        addRow("empty", QByteArray(), 3);
        addRow("three bytes", QByteArray("abc"), 3);
        // The words' place in the chunks of 511 bytes in which a long line is read.
        addRow("at a chunk's end", head + QByteArray(488, 'x') + "Active Directory Domain", 2);
        addRow("at a chunk's start", head + QByteArray(511, 'x') + "Active Directory Domain", 2);
        addRow("across two chunks", head + QByteArray(489, 'x') + "Active Directory Domain", 3);
    }

    void reportDecidesTheNextPage()
    {
        QFETCH(QByteArray, report);
        setReport(report);
        InterimIntro page;
        QVERIFY(page.validatePage());
        QTEST(page.nextId(), "page");
    }

    void beforeAnyCheckTheAgentDecides()
    {
        World::setBound();
        const InterimIntro page;
        QCOMPARE(page.nextId(), 3);
        World::setJoined();
        QCOMPARE(page.nextId(), 6);
        QCOMPARE(World::callsOf("dsconfigad").size(), 0);
    }

    void nextIdReadsOnInTheReport()
    {
        setReport(head + domainLine + domainLine);
        InterimIntro page;
        QVERIFY(page.validatePage());
        QCOMPARE(page.nextId(), 2);
        QCOMPARE(page.nextId(), 2);
        QCOMPARE(page.nextId(), 3);
    }

    void newCheckReplacesTheReportAndARefusedOneForgetsIt()
    {
        setReport(head + domainLine + domainLine);
        InterimIntro page;
        QVERIFY(page.validatePage());
        setReport(head + "not bound\n");
        QVERIFY(page.validatePage());
        QCOMPARE(page.nextId(), 3);
        setReport(head + domainLine);
        QVERIFY(page.validatePage());
        World::removeTool("dsconfigad");
        QVERIFY(!page.validatePage());
        QCOMPARE(page.nextId(), 3);
    }

    // cleanup() would find a stream that stays open.
    void unreadReportIsClosedWithThePage()
    {
        setReport(head + domainLine);
        auto page = std::make_unique<InterimIntro>();
        QVERIFY(page->validatePage());
        QVERIFY(page->validatePage());
        QCOMPARE(World::callsOf("dsconfigad").size(), 2);
    }

    void formIsEmpty()
    {
        QCOMPARE(InterimIntro().findChildren<QWidget*>().size(), 0);
    }
};

WORLD_TEST_MAIN(TestInterimIntro)
#include "tst_interimintro.moc"

#include "pages/conclusion.h"
#include "pages/joinflags.h"
#include "tests/support/wizarddriver.h"

#include <QLabel>

namespace {

const QString joinTemplate =
    "You have successfully joined your Mac to your Active Directory domain at %1.";
const QString leftText = "You have successfully left your Mac from your Active Directory domain.";

// The join's report of a wizard in whose credentials page this domain was entered.
QString reportFor(WizardDriver& driver, const QString& domain)
{
    child<QLineEdit>(driver.wizard.page(3), "DomainEdit")->setText(domain);
    driver.wizard.page(7)->initializePage();
    return child<QLabel>(driver.wizard.page(7), "Complete_label")->text();
}

} // namespace

class TestConclusion : public WorldTest
{
    Q_OBJECT

private slots:
    void withoutTheAgentItReportsAJoin();
    void stateAtStartUpChoosesTheReport_data();
    void stateAtStartUpChoosesTheReport();
    void choiceDoesNotFollowTheFlow();
    void joinReportNamesTheDomain_data();
    void joinReportNamesTheDomain();
    void domainIsFilledInOnce();
    void withoutAJoinTheReportStaysAsItIs();
    void itIsTheLastPage();
    void enrollCheckSetsTheTextOfNext();
    void noWidgetCallsTheEnrollSlot();
    void formHasItsNameTitleAndSize();
    void labelsAreWrappedAndTakeNoFocus();
};

void TestConclusion::withoutTheAgentItReportsAJoin()
{
    World::removeTool("mvinfo");
    Conclusion page;
    page.show();
    QCOMPARE(visibleTexts(&page), QStringList{joinTemplate});
}

void TestConclusion::stateAtStartUpChoosesTheReport_data()
{
    QTest::addColumn<bool>("joined");
    QTest::addColumn<QString>("report");
    QTest::newRow("joined: the leave's") << true << leftText;
    QTest::newRow("not joined: the join's") << false << joinTemplate;
}

void TestConclusion::stateAtStartUpChoosesTheReport()
{
    QFETCH(bool, joined);
    QFETCH(QString, report);
    if (joined)
        World::setJoined();
    Conclusion page;
    page.show();
    QCOMPARE(visibleTexts(&page), QStringList{report});
    QCOMPARE(World::calls().size(), 1);
    QCOMPARE(World::calls().at(0).words(), QStringList({"mvinfo", "-d"}));
}

void TestConclusion::choiceDoesNotFollowTheFlow()
{
    World::setJoined();
    WizardDriver driver;
    World::answer("mvinfo -d", {"", "", 1});
    driver.goToJoinOptions();
    driver.next();
    QCOMPARE(driver.page(), 7);
    QCOMPARE(visibleTexts(driver.currentPage()), QStringList{leftText});
}

void TestConclusion::joinReportNamesTheDomain_data()
{
    QTest::addColumn<QString>("domain");
    QTest::newRow("usual") << "example.test";
    QTest::newRow("empty") << "";
    QTest::newRow("place marker") << "%1";
    QTest::newRow("later place marker") << "%2.test";
    QTest::newRow("blanks and quotes") << " ex'ample \"test\" ";
    QTest::newRow("not ASCII") << QString::fromUtf8("m\u00fcnchen.test");
    QTest::newRow("markup") << "<b>example</b>";
    QTest::newRow("long") << QString(32767, 'x');
}

void TestConclusion::joinReportNamesTheDomain()
{
    QFETCH(QString, domain);
    WizardDriver driver;
    joining = true;
    QCOMPARE(reportFor(driver, domain),
             "You have successfully joined your Mac to your Active Directory domain at " + domain +
                 ".");
    QCOMPARE(child<QLabel>(driver.wizard.page(7), "Complete_label")->textFormat(), Qt::PlainText);
}

void TestConclusion::domainIsFilledInOnce()
{
    WizardDriver driver;
    joining = true;
    const QString first = reportFor(driver, "first.test");
    allowWarning("QString::arg: Argument missing");
    QCOMPARE(reportFor(driver, "second.test"), first);
}

void TestConclusion::withoutAJoinTheReportStaysAsItIs()
{
    World::setJoined();
    WizardDriver driver;
    QCOMPARE(reportFor(driver, "example.test"), joinTemplate);
    QCOMPARE(child<QLabel>(driver.wizard.page(7), "Left_label")->text(), leftText);
}

void TestConclusion::itIsTheLastPage()
{
    WizardDriver driver;
    QCOMPARE(driver.wizard.page(7)->nextId(), -1);
    QVERIFY(driver.wizard.page(7)->isFinalPage());
}

void TestConclusion::enrollCheckSetsTheTextOfNext()
{
    Conclusion page;
    QMetaObject::invokeMethod(&page, "on_Enrollcheck_toggled", Q_ARG(bool, true));
    QCOMPARE(page.buttonText(QWizard::NextButton), QString("Checked"));
    QMetaObject::invokeMethod(&page, "on_Enrollcheck_toggled", Q_ARG(bool, false));
    QCOMPARE(page.buttonText(QWizard::NextButton), QString("NotChecked"));
}

void TestConclusion::noWidgetCallsTheEnrollSlot()
{
    const Conclusion page;
    QVERIFY(page.findChild<QObject*>("Enrollcheck") == nullptr);
}

void TestConclusion::formHasItsNameTitleAndSize()
{
    const Conclusion page;
    QCOMPARE(page.objectName(), QString("Conclusion"));
    QCOMPARE(page.windowTitle(), QString("Form"));
    QCOMPARE(page.size(), QSize(582, 524));
}

void TestConclusion::labelsAreWrappedAndTakeNoFocus()
{
    const Conclusion page;
    const QList<QLabel*> labels = page.findChildren<QLabel*>();
    QCOMPARE(labels.size(), 2);
    QCOMPARE(labels.at(0)->objectName(), QString("Complete_label"));
    QCOMPARE(labels.at(0)->text(), joinTemplate);
    QCOMPARE(labels.at(1)->objectName(), QString("Left_label"));
    QCOMPARE(labels.at(1)->text(), leftText);
    for (const QLabel* label : labels) {
        QVERIFY(label->wordWrap());
        QCOMPARE(label->focusPolicy(), Qt::NoFocus);
    }
}

WORLD_TEST_MAIN(TestConclusion)
#include "tst_conclusion.moc"

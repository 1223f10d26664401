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
    void withoutTheAgentItReportsAJoin()
    {
        World::removeTool("mvinfo");
        Conclusion page;
        page.show();
        QCOMPARE(visibleTexts(&page), QStringList{joinTemplate});
    }

    void stateAtStartUpChoosesTheReport_data()
    {
        addColumns<bool, QString>("joined", "report");
        addRow("joined: the leave's", true, leftText);
        addRow("not joined: the join's", false, joinTemplate);
    }

    void stateAtStartUpChoosesTheReport()
    {
        QFETCH(bool, joined);
        QFETCH(QString, report);
        if (joined)
            World::setJoined();
        Conclusion page;
        page.show();
        QCOMPARE(visibleTexts(&page), QStringList{report});
    }

    void aLaterStateDoesNotChooseTheReport()
    {
        World::setJoined();
        WizardDriver driver;
        World::answer("mvinfo -d", {"", "", 1});
        driver.goToJoinOptions();
        driver.next();
        QCOMPARE(driver.page(), 7);
        QCOMPARE(visibleTexts(driver.currentPage()), QStringList{leftText});
    }

    void joinReportNamesTheDomain_data()
    {
        addColumns<QString>("domain");
        addRow("usual", "example.test");
        addRow("empty", "");
        addRow("place marker", "%1");
        addRow("later place marker", "%2.test");
        addRow("blanks and quotes", " ex'ample \"test\" ");
        addRow("not ASCII", "m\u00fcnchen.test");
        addRow("markup", "<b>example</b>");
        addRow("long", QString(32767, 'x'));
    }

    void joinReportNamesTheDomain()
    {
        QFETCH(QString, domain);
        WizardDriver driver;
        joining = true;
        QCOMPARE(reportFor(driver, domain),
                 "You have successfully joined your Mac to your Active Directory domain at " +
                     domain + ".");
        QCOMPARE(child<QLabel>(driver.wizard.page(7), "Complete_label")->textFormat(),
                 Qt::PlainText);
    }

    void domainIsFilledInOnce()
    {
        WizardDriver driver;
        joining = true;
        reportFor(driver, "first.test");
        allowWarning("QString::arg: Argument missing");
        QCOMPARE(reportFor(driver, "second.test"),
                 QString("You have successfully joined your Mac to your Active Directory domain at "
                         "first.test."));
    }

    void withoutAJoinTheReportStaysAsItIs()
    {
        World::setJoined();
        WizardDriver driver;
        QCOMPARE(reportFor(driver, "example.test"), joinTemplate);
        QCOMPARE(child<QLabel>(driver.wizard.page(7), "Left_label")->text(), leftText);
    }

    void itIsTheLastPage()
    {
        WizardDriver driver;
        QCOMPARE(driver.wizard.page(7)->nextId(), -1);
        QVERIFY(driver.wizard.page(7)->isFinalPage());
    }

    void enrollCheckSetsTheTextOfNext()
    {
        Conclusion page;
        QMetaObject::invokeMethod(&page, "on_Enrollcheck_toggled", Q_ARG(bool, true));
        QCOMPARE(page.buttonText(QWizard::NextButton), QString("Checked"));
        QMetaObject::invokeMethod(&page, "on_Enrollcheck_toggled", Q_ARG(bool, false));
        QCOMPARE(page.buttonText(QWizard::NextButton), QString("NotChecked"));
    }

    void noWidgetCallsTheEnrollSlot()
    {
        const Conclusion page;
        QVERIFY(page.findChild<QObject*>("Enrollcheck") == nullptr);
    }

    void formHasItsNameTitleAndSize()
    {
        const Conclusion page;
        QCOMPARE(page.objectName(), QString("Conclusion"));
        QCOMPARE(page.windowTitle(), QString("Form"));
        QCOMPARE(page.size(), QSize(582, 524));
    }

    void labelsAreWrappedAndTakeNoFocus()
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
};

WORLD_TEST_MAIN(TestConclusion)
#include "tst_conclusion.moc"

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

    void onlyTheStateAtStartUpChoosesTheReport()
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
        addRow("markup", "<b>example</b>");
        addRow("long", QString(32767, 'x'));
        addRow("blanks, quotes and more", " ex'ample \"test\" m\u00fcnchen ");
    }

    void joinReportNamesTheDomain()
    {
        QFETCH(QString, domain);
        WizardDriver driver;
        joining = true;
        QCOMPARE(reportFor(driver, domain), QString(joinTemplate).replace("%1", domain));
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
                 QString(joinTemplate).replace("%1", "first.test"));
    }

    void withoutAJoinTheReportStaysAsItIs()
    {
        World::setJoined();
        WizardDriver driver;
        QCOMPARE(reportFor(driver, "example.test"), joinTemplate);
        QCOMPARE(child<QLabel>(driver.wizard.page(7), "Left_label")->text(), leftText);
    }

    void enrollSlotSetsTheTextOfNextAndNoWidgetCallsIt()
    {
        Conclusion page;
        QMetaObject::invokeMethod(&page, "on_Enrollcheck_toggled", Q_ARG(bool, true));
        QCOMPARE(page.buttonText(QWizard::NextButton), QString("Checked"));
        QMetaObject::invokeMethod(&page, "on_Enrollcheck_toggled", Q_ARG(bool, false));
        QCOMPARE(page.buttonText(QWizard::NextButton), QString("NotChecked"));
        QVERIFY(page.findChild<QObject*>("Enrollcheck") == nullptr);
    }

    void labelsTakeNoFocus()
    {
        const Conclusion page;
        for (const QLabel* label : page.findChildren<QLabel*>())
            QCOMPARE(label->focusPolicy(), Qt::NoFocus);
    }
};

WORLD_TEST_MAIN(TestConclusion)
#include "tst_conclusion.moc"

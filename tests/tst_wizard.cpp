#include "pages/applead.h"
#include "pages/cloud.h"
#include "pages/conclusion.h"
#include "pages/interimintro.h"
#include "pages/joinflags.h"
#include "pages/jointype.h"
#include "pages/leaveintro.h"
#include "pages/userpassentry.h"
#include "pages/wizardintro.h"
#include "tests/support/wizarddriver.h"

#include <QMenu>
#include <QMenuBar>

namespace {

// Taken before main(), since each test function begins by clearing the flags.
const bool joiningAtStart = joining;
const bool enrollingAtStart = enrolling;

// Puts a page that leads to `page` in the introduction's place, and presses Next.
void arriveAt(WizardDriver& driver, int page)
{
    QWizardPage* introduction = driver.wizard.page(0);
    driver.wizard.removePage(0);
    delete introduction;
    driver.wizard.setPage(0, new LeadsTo(page));
    driver.wizard.setStartId(0);
    driver.wizard.restart();
    driver.next();
}

// What a page's form has set, for example "Cloud WizardPage 582x524 fixed".
QString formOf(const QWizardPage& page)
{
    const bool fixed = page.minimumSize() == page.size() && page.maximumSize() == page.size();
    return QString("%1 %2 %3x%4%5")
        .arg(page.objectName(), page.windowTitle())
        .arg(page.width())
        .arg(page.height())
        .arg(fixed ? " fixed" : "");
}

QMenu* aboutMenu()
{
    return windowOf<QMenuBar>()->actions().value(0)->menu();
}

} // namespace

class TestWizard : public WorldTest
{
    Q_OBJECT

private slots:
    void windowIsFixedAt800By600AndNotModal()
    {
        WizardDriver driver;
        QCOMPARE(driver.wizard.minimumSize(), QSize(800, 600));
        QCOMPARE(driver.wizard.maximumSize(), QSize(800, 600));
        QCOMPARE(driver.wizard.objectName(), QString("Wizard"));
        QCOMPARE(driver.wizard.windowModality(), Qt::NonModal);
    }

    void styleIsTheMacsAndBackgroundOurs()
    {
        WizardDriver driver;
        QCOMPARE(driver.wizard.wizardStyle(), QWizard::MacStyle);
        const QImage background(":/:/background.png");
        QVERIFY(!background.isNull());
        QCOMPARE(driver.wizard.pixmap(QWizard::BackgroundPixmap).toImage(),
                 QPixmap::fromImage(background).toImage());
    }

    void thereAreEightPagesWithTheirIdsNamesAndClasses()
    {
        WizardDriver driver;
        QStringList pages;
        for (const int id : driver.wizard.pageIds()) {
            const QWizardPage* page = driver.wizard.page(id);
            pages << QString("%1 %2 %3")
                         .arg(id)
                         .arg(page->objectName(), QString(page->metaObject()->className()));
        }
        QCOMPARE(pages,
                 QStringList({"0 WizardIntroPage WizardIntro", "1 IntroInterimPage InterimIntro",
                              "2 AppleADPage AppleAD", "3 UserPassEntryPage UserPassEntry",
                              "4 JoinTypePage JoinType", "5 CloudPage Cloud",
                              "6 LeaveIntroPage LeaveIntro", "7 wizardPage2 Conclusion"}));
    }

    // Outside the wizard, whose form gives the pages other names.
    void formsHaveTheirNamesTitlesAndSizes()
    {
        QCOMPARE(formOf(WizardIntro()), QString("WizardIntro WizardPage 582x524"));
        QCOMPARE(formOf(InterimIntro()), QString("InterimIntro WizardPage 582x524"));
        QCOMPARE(formOf(AppleAD()), QString("AppleAD WizardPage 582x524"));
        QCOMPARE(formOf(UserPassEntry()), QString("UserPassEntry WizardPage 582x524"));
        QCOMPARE(formOf(JoinType()), QString("JoinType WizardPage 582x524 fixed"));
        QCOMPARE(formOf(Cloud()), QString("Cloud WizardPage 582x524 fixed"));
        QCOMPARE(formOf(LeaveIntro()), QString("LeaveIntro WizardPage 582x524"));
        QCOMPARE(formOf(Conclusion()), QString("Conclusion Form 582x524"));
    }

    void passwordsAreHiddenAndUpTo32767Characters()
    {
        const WizardDriver driver;
        for (const int page : {2, 3, 6}) {
            auto* edit =
                child<QLineEdit>(driver.wizard.page(page), page == 2 ? "ADPass" : "PasswordEdit");
            QCOMPARE(edit->echoMode(), QLineEdit::Password);
            edit->setText(QString(32768, 'x'));
            QCOMPARE(edit->text().size(), 32767);
        }
    }

    void containerIsAField()
    {
        WizardDriver driver;
        QCOMPARE(driver.wizard.field("DomainContainerDN"), QVariant(QString()));
        child<QLineEdit>(driver.wizard.page(4), "ContainerDNEdit")->setText("a value");
        QCOMPARE(driver.wizard.field("DomainContainerDN"), QVariant("a value"));
    }

    void cloudPageKeepsBackUnlessAJoinEnrolled()
    {
        for (const bool join : {false, true}) {
            for (const bool enroll : {false, true}) {
                WizardDriver driver;
                joining = join;
                enrolling = enroll;
                arriveAt(driver, 5);
                QCOMPARE(driver.page(), 5);
                QCOMPARE(driver.button(QWizard::BackButton)->isEnabled(), !(join && enroll));
            }
        }
    }

    void onlyGoingBackToTheLeavePageEndsEnrolling()
    {
        WizardDriver driver;
        enrolling = true;
        arriveAt(driver, 6);
        QCOMPARE(driver.page(), 6);
        QVERIFY(enrolling);
        driver.wizard.pageAdjustment(false);
        QVERIFY(!enrolling);
        QCOMPARE(driver.page(), 6);
    }

    void otherPagesAreLeftAlone()
    {
        for (const int page : {0, 2, 4, 7}) {
            WizardDriver driver;
            joining = true;
            enrolling = true;
            if (page != 0)
                arriveAt(driver, page);
            driver.wizard.pageAdjustment(false);
            QCOMPARE(driver.page(), page);
            QCOMPARE(driver.button(QWizard::BackButton)->isEnabled(), page != 0);
            QVERIFY(joining);
            QVERIFY(enrolling);
        }
    }

    void flagsAreFalseAtStart()
    {
        QVERIFY(!joiningAtStart);
        QVERIFY(!enrollingAtStart);
    }

    void aboutMenuHasOneEntry()
    {
        WizardDriver driver;
        const QMenu* menu = aboutMenu();
        QVERIFY(menu != nullptr);
        QCOMPARE(menu->title(), QString("About"));
        QCOMPARE(menu->actions().size(), 1);
        QCOMPARE(menu->actions().at(0)->text(), QString("About"));
        QCOMPARE(menu->actions().at(0)->parent(), &driver.wizard);
    }

    void aboutIsFreshAndModalEachTime()
    {
        WizardDriver driver;
        int shown = 0;
        for (int i = 0; i < 2; ++i) {
            withModalDialogs([] { aboutMenu()->actions().at(0)->trigger(); },
                             [&shown](QWidget* dialog) {
                                 // First: a comparison that fails returns, and would leave it open.
                                 dialog->close();
                                 QCOMPARE(QString(dialog->metaObject()->className()),
                                          QString("about"));
                                 QVERIFY(dialog->isModal());
                                 QVERIFY(dialog->parent() == nullptr);
                                 QVERIFY(!dialog->property("seen").isValid());
                                 dialog->setProperty("seen", true);
                                 ++shown;
                             });
        }
        QCOMPARE(shown, 2);
    }
};

WORLD_TEST_MAIN(TestWizard)
#include "tst_wizard.moc"

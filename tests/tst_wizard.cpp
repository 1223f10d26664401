#include "pages/joinflags.h"
#include "tests/support/wizarddriver.h"

#include <QMenu>
#include <QMenuBar>
#include <QPointer>

namespace {

// Taken before main(), since each test function begins by clearing the flags.
const bool joiningAtStart = joining;
const bool enrollingAtStart = enrolling;

// Leads to a page that no other page leads to.
class LeadsTo : public QWizardPage
{
public:
    explicit LeadsTo(int next) : next(next) {}

    int nextId() const override
    {
        return next;
    }

private:
    int next;
};

// Puts a page in the introduction's place that leads to the given one, and goes there.
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

QMenu* aboutMenu()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (qobject_cast<QMenuBar*>(window) != nullptr)
            return window->actions().value(0)->menu();
    }
    return nullptr;
}

} // namespace

class TestWizard : public WorldTest
{
    Q_OBJECT

private slots:
    void windowIsFixedAt800By600();
    void windowHasItsTitleNameAndModality();
    void optionsAreExactlyTwo();
    void styleAndBackgroundAreTheMacs();
    void pagesHaveTheirIdsNamesAndClasses_data();
    void pagesHaveTheirIdsNamesAndClasses();
    void thereAreEightPages();
    void introductionHasAnEmptyTitle();
    void fieldsFollowTheirEdits_data();
    void fieldsFollowTheirEdits();
    void noFieldIsMandatory();
    void carriersAreNeverSeen();
    void finishAcceptsAndCloses();
    void cloudPageKeepsBackUnlessEnrolling_data();
    void cloudPageKeepsBackUnlessEnrolling();
    void onlyGoingBackToTheLeavePageEndsEnrolling();
    void otherPagesAreLeftAlone();
    void flagsAreFalseAtStart();
    void aboutMenuHasOneEntry();
    void aboutIsFreshAndModalEachTime();
};

void TestWizard::windowIsFixedAt800By600()
{
    WizardDriver driver;
    QCOMPARE(driver.wizard.size(), QSize(800, 600));
    QCOMPARE(driver.wizard.minimumSize(), QSize(800, 600));
    QCOMPARE(driver.wizard.maximumSize(), QSize(800, 600));
    driver.wizard.resize(900, 700);
    QCOMPARE(driver.wizard.size(), QSize(800, 600));
}

void TestWizard::windowHasItsTitleNameAndModality()
{
    WizardDriver driver;
    QCOMPARE(driver.wizard.windowTitle(), QString("Morvanta Join Assistant"));
    QCOMPARE(driver.wizard.objectName(), QString("Wizard"));
    QCOMPARE(driver.wizard.windowModality(), Qt::NonModal);
}

void TestWizard::optionsAreExactlyTwo()
{
    WizardDriver driver;
    QCOMPARE(driver.wizard.options(),
             QWizard::WizardOptions(QWizard::NoCancelButton | QWizard::NoBackButtonOnLastPage));
}

void TestWizard::styleAndBackgroundAreTheMacs()
{
    WizardDriver driver;
    QCOMPARE(driver.wizard.wizardStyle(), QWizard::MacStyle);
    const QImage background(":/:/background.png");
    QVERIFY(!background.isNull());
    QCOMPARE(driver.wizard.pixmap(QWizard::BackgroundPixmap).toImage(),
             QPixmap::fromImage(background).toImage());
}

void TestWizard::pagesHaveTheirIdsNamesAndClasses_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("className");
    QTest::newRow("0 introduction") << 0 << "WizardIntroPage"
                                    << "WizardIntro";
    QTest::newRow("1 interim") << 1 << "IntroInterimPage"
                               << "InterimIntro";
    QTest::newRow("2 unbind") << 2 << "AppleADPage"
                              << "AppleAD";
    QTest::newRow("3 credentials") << 3 << "UserPassEntryPage"
                                   << "UserPassEntry";
    QTest::newRow("4 join options") << 4 << "JoinTypePage"
                                    << "JoinType";
    QTest::newRow("5 cloud") << 5 << "CloudPage"
                             << "Cloud";
    QTest::newRow("6 leave") << 6 << "LeaveIntroPage"
                             << "LeaveIntro";
    QTest::newRow("7 conclusion") << 7 << "wizardPage2"
                                  << "Conclusion";
}

void TestWizard::pagesHaveTheirIdsNamesAndClasses()
{
    QFETCH(int, id);
    WizardDriver driver;
    QTEST(driver.wizard.page(id)->objectName(), "name");
    QTEST(QString(driver.wizard.page(id)->metaObject()->className()), "className");
}

void TestWizard::thereAreEightPages()
{
    WizardDriver driver;
    QCOMPARE(driver.wizard.pageIds(), QList<int>({0, 1, 2, 3, 4, 5, 6, 7}));
}

void TestWizard::introductionHasAnEmptyTitle()
{
    WizardDriver driver;
    QCOMPARE(driver.wizard.page(0)->title(), QString());
}

void TestWizard::fieldsFollowTheirEdits_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("edit");
    QTest::addColumn<QString>("field");
    QTest::newRow("domain") << 3 << "DomainEdit"
                            << "DomainName";
    QTest::newRow("user") << 3 << "UsernameEdit"
                          << "DomainUsername";
    QTest::newRow("password") << 3 << "PasswordEdit"
                              << "DomainPassword";
    QTest::newRow("container") << 4 << "ContainerDNEdit"
                               << "DomainContainerDN";
}

void TestWizard::fieldsFollowTheirEdits()
{
    QFETCH(int, page);
    QFETCH(QString, edit);
    QFETCH(QString, field);
    WizardDriver driver;
    QCOMPARE(driver.wizard.field(field), QVariant(QString()));
    child<QLineEdit>(driver.wizard.page(page), edit)->setText("a value");
    QCOMPARE(driver.wizard.field(field), QVariant("a value"));
}

void TestWizard::noFieldIsMandatory()
{
    WizardDriver driver;
    const QList<int> ids = driver.wizard.pageIds();
    for (const int id : ids)
        QVERIFY(driver.wizard.page(id)->isComplete());
}

void TestWizard::carriersAreNeverSeen()
{
    World::setBound();
    WizardDriver driver;
    driver.next();
    QCOMPARE(driver.wizard.field("appleADDomain").toString(), QString("example.test"));
    const QList<QLineEdit*> edits = driver.wizard.findChildren<QLineEdit*>();
    for (const QLineEdit* edit : edits)
        QVERIFY(edit->text() != "example.test");
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget* window : windows)
        QVERIFY(window == &driver.wizard || !window->isVisible());
}

void TestWizard::finishAcceptsAndCloses()
{
    WizardDriver driver;
    driver.goToJoinOptions();
    driver.next();
    QCOMPARE(driver.page(), 7);
    QVERIFY(driver.button(QWizard::FinishButton)->isVisible());
    driver.press(QWizard::FinishButton);
    QCOMPARE(driver.wizard.result(), int(QDialog::Accepted));
    QVERIFY(!driver.wizard.isVisible());
}

void TestWizard::cloudPageKeepsBackUnlessEnrolling_data()
{
    QTest::addColumn<bool>("join");
    QTest::addColumn<bool>("enroll");
    QTest::addColumn<bool>("backEnabled");
    QTest::newRow("neither") << false << false << true;
    QTest::newRow("joining alone") << true << false << true;
    QTest::newRow("enrolling alone") << false << true << true;
    QTest::newRow("joining and enrolling") << true << true << false;
}

void TestWizard::cloudPageKeepsBackUnlessEnrolling()
{
    QFETCH(bool, join);
    QFETCH(bool, enroll);
    WizardDriver driver;
    joining = join;
    enrolling = enroll;
    arriveAt(driver, 5);
    QCOMPARE(driver.page(), 5);
    QTEST(driver.button(QWizard::BackButton)->isEnabled(), "backEnabled");
}

void TestWizard::onlyGoingBackToTheLeavePageEndsEnrolling()
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

void TestWizard::otherPagesAreLeftAlone()
{
    WizardDriver driver;
    driver.goToJoinOptions();
    joining = true;
    enrolling = true;
    driver.wizard.pageAdjustment(false);
    QCOMPARE(driver.page(), 4);
    QVERIFY(driver.button(QWizard::BackButton)->isEnabled());
    QVERIFY(joining);
    QVERIFY(enrolling);
}

void TestWizard::flagsAreFalseAtStart()
{
    QVERIFY(!joiningAtStart);
    QVERIFY(!enrollingAtStart);
}

void TestWizard::aboutMenuHasOneEntry()
{
    WizardDriver driver;
    const QMenu* menu = aboutMenu();
    QVERIFY(menu != nullptr);
    QCOMPARE(menu->title(), QString("About"));
    QCOMPARE(menu->actions().size(), 1);
    QCOMPARE(menu->actions().at(0)->text(), QString("About"));
    QCOMPARE(menu->actions().at(0)->parent(), &driver.wizard);
}

void TestWizard::aboutIsFreshAndModalEachTime()
{
    WizardDriver driver;
    QList<QPointer<QWidget>> dialogs;
    for (int i = 0; i < 2; ++i) {
        withModalDialogs([] { aboutMenu()->actions().at(0)->trigger(); },
                         [&dialogs](QWidget* dialog) {
                             QCOMPARE(QString(dialog->metaObject()->className()), QString("about"));
                             QVERIFY(dialog->isModal());
                             QVERIFY(dialog->parent() == nullptr);
                             QVERIFY(!dialog->property("seen").isValid());
                             dialog->setProperty("seen", true);
                             dialogs << dialog;
                             dialog->close();
                         });
    }
    QCOMPARE(dialogs.size(), 2);
}

WORLD_TEST_MAIN(TestWizard)
#include "tst_wizard.moc"

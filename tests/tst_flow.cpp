#include "pages/joinflags.h"
#include "tests/support/wizarddriver.h"

#include <QLabel>
#include <QSignalSpy>

namespace {

void press(WizardDriver& driver, QWizard::WizardButton which)
{
    if (driver.button(which)->isVisible() && driver.button(which)->isEnabled())
        driver.press(which);
}

} // namespace

class TestFlow : public WorldTest
{
    Q_OBJECT

private slots:
    void theInterimPageIsNeverShownAndBackLeadsToTheFirst_data()
    {
        addColumns<bool, bool, bool, int>("bound", "joined", "refused", "page");
        addRow("neither bound nor joined: the credentials", false, false, false, 3);
        addRow("joined: the leave", false, true, false, 6);
        addRow("bound: the unbinding", true, false, false, 2);
        addRow("bound and joined: the unbinding", true, true, false, 2);
        addRow("the check is refused: the introduction", true, true, true, 0);
    }

    void theInterimPageIsNeverShownAndBackLeadsToTheFirst()
    {
        QFETCH(bool, bound);
        QFETCH(bool, joined);
        QFETCH(bool, refused);
        QFETCH(int, page);
        if (bound)
            World::setBound();
        if (joined)
            World::setJoined();
        World::answer("authorization_prompt", {"", "", refused ? 1 : 0});
        WizardDriver driver;
        QCOMPARE(driver.next(), QStringList());
        QCOMPARE(driver.page(), page);
        QCOMPARE(driver.button(QWizard::BackButton)->isEnabled(), page != 0);
        press(driver, QWizard::BackButton);
        QCOMPARE(driver.page(), 0);
    }

    void wholeJoin()
    {
        World::answer("gui_helper_tool", {"Joined\n", "", 0, 0, true});
        WizardDriver driver;
        driver.goToJoinOptions();
        QCOMPARE(driver.page(), 4);
        World::forgetCalls();
        QCOMPARE(driver.next(), QStringList());
        QCOMPARE(driver.page(), 7);
        QCOMPARE(driver.wizard.visitedIds(), QList<int>({0, 1, 3, 4, 7}));
        QCOMPARE(World::calls().size(), 1);
        QCOMPARE(World::calls().at(0).words(),
                 QStringList({"gui_helper_tool", "/usr/local/sbin/mvjoin", "-u", "admin", "-p",
                              "secret", "example.test", "-w", "-n", "my-mac"}));
        QCOMPARE(visibleTexts(driver.currentPage()),
                 QStringList{"You have successfully joined your Mac to your Active Directory "
                             "domain at example.test."});
    }

    void unbindCarriesItsEntriesToTheJoin()
    {
        World::setBound("old.test");
        WizardDriver driver;
        driver.next();
        QCOMPARE(driver.on<QLabel>("ADName")->text(), QString("old.test"));
        driver.enterUser("admin", "a secret");
        World::forgetCalls();
        QCOMPARE(driver.next(),
                 QStringList{"You are unbound from Apple's Active Directory plugin."});
        QCOMPARE(World::callsOf("dsconfigad").at(0).words(),
                 QStringList({"dsconfigad", "-r", "-f", "-u", "admin", "-p", "a secret"}));
        QCOMPARE(driver.page(), 3);
        QCOMPARE(driver.texts({"DomainEdit", "UsernameEdit", "PasswordEdit"}),
                 QStringList({"old.test", "admin", "a secret"}));
        driver.next();
        QCOMPARE(driver.page(), 4);
        driver.next();
        QCOMPARE(driver.wizard.visitedIds(), QList<int>({0, 1, 2, 3, 4, 7}));
        QCOMPARE(World::callsOf("gui_helper_tool").at(0).words(),
                 QStringList({"gui_helper_tool", "/usr/local/sbin/mvjoin", "-u", "admin", "-p",
                              "a secret", "old.test", "-w", "-n", "my-mac"}));
        // The only prompt came with the interim check, before forgetCalls().
        QCOMPARE(World::callsOf("authorization_prompt").size(), 0);
    }

    void wholeLeave()
    {
        World::answer("gui_helper_tool", {"Left the domain\n", "", 0, 0, true});
        World::setJoined();
        WizardDriver driver;
        driver.next();
        QCOMPARE(driver.page(), 6);
        driver.enterUser("admin", "secret");
        QCOMPARE(driver.next(), QStringList());
        QCOMPARE(driver.wizard.visitedIds(), QList<int>({0, 1, 6, 7}));
        QCOMPARE(World::callsOf("gui_helper_tool").at(0).words(),
                 QStringList({"gui_helper_tool", "/usr/local/sbin/mvleave", "-u", "admin", "-p",
                              "secret"}));
        QCOMPARE(
            visibleTexts(driver.currentPage()),
            QStringList{"You have successfully left your Mac from your Active Directory domain."});
    }

    void noPageHasCancelAndTheLastNoBack()
    {
        WizardDriver driver;
        for (const int page : driver.wizard.pageIds()) {
            driver.startAt(page);
            QVERIFY(!driver.button(QWizard::CancelButton)->isVisible());
            QCOMPARE(driver.button(QWizard::BackButton)->isVisible(), page != 7);
        }
    }

    void backIsDisabledAfterTheUnbind()
    {
        World::setBound();
        WizardDriver driver;
        driver.next();
        driver.next();
        QCOMPARE(driver.page(), 3);
        QVERIFY(!driver.button(QWizard::BackButton)->isEnabled());
        driver.next();
        QCOMPARE(driver.page(), 4);
        QVERIFY(driver.button(QWizard::BackButton)->isEnabled());
        driver.back();
        QCOMPARE(driver.page(), 3);
        QVERIFY(!driver.button(QWizard::BackButton)->isEnabled());
    }

    void refusedCredentialsKeepBackDisabledAfterTheUnbind()
    {
        World::setBound();
        WizardDriver driver;
        driver.next();
        driver.next();
        World::answer("mvedit", {"", "", 1});
        QCOMPARE(driver.next().size(), 1);
        QCOMPARE(driver.page(), 3);
        driver.type("PasswordEdit", "another");
        QVERIFY(!driver.button(QWizard::BackButton)->isEnabled());
    }

    // Every order of five presses, N for Next and B for Back.
    void backAndNextInEveryOrder_data()
    {
        addColumns<bool, QString>("bound", "presses");
        for (int way = 0; way < 32; ++way) {
            QString presses;
            for (int bit = 16; bit > 0; bit /= 2)
                presses += (way & bit) != 0 ? 'N' : 'B';
            addRow(qPrintable("join " + presses), false, presses);
            addRow(qPrintable("unbind " + presses), true, presses);
        }
    }

    void backAndNextInEveryOrder()
    {
        QFETCH(bool, bound);
        QFETCH(QString, presses);
        if (bound)
            World::setBound();
        const QList<int> way = bound ? QList<int>{0, 2, 3, 4, 7} : QList<int>{0, 3, 4, 7};
        WizardDriver driver;
        int step = 0;
        for (const QChar pressed : presses) {
            const bool atEnd = way.at(step) == 7;
            const bool mayGoBack = step > 0 && !atEnd && (!bound || way.at(step) != 3);
            if (pressed == 'N') {
                press(driver, QWizard::NextButton);
                step += atEnd ? 0 : 1;
            } else {
                press(driver, QWizard::BackButton);
                step -= mayGoBack ? 1 : 0;
            }
            QCOMPARE(driver.page(), way.at(step));
        }
    }

    void joinFlowNeverReachesTheCloudPage()
    {
        WizardDriver driver;
        QSignalSpy moves(&driver.wizard, &QWizard::currentIdChanged);
        enrolling = true;
        driver.goToJoinOptions();
        driver.next();
        QCOMPARE(driver.page(), 7);
        QVERIFY(!moves.contains(QVariantList{5}));
        for (const int id : driver.wizard.pageIds())
            QVERIFY(driver.wizard.page(id)->nextId() != 5);
    }
};

WORLD_TEST_MAIN(TestFlow)
#include "tst_flow.moc"

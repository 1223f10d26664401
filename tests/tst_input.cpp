#include "pages/dialogs/loadcn.h"
#include "pages/dialogs/warning.h"
#include "tests/support/wizarddriver.h"
#include "widgets/queuedinput.h"

#include <QAccessible>
#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTimer>
#include <QToolButton>

namespace {

// Queues a key as if it were pressed while a tool keeps the program busy.
void typeUnheard(Wizard* wizard, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QMetaObject::invokeMethod(
        wizard, [=] { QTest::keyClick(QApplication::focusWidget(), key, modifiers); },
        Qt::QueuedConnection);
}

// A press of Return as the system makes it while the key is held.
void repeatReturn()
{
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
    QApplication::sendEvent(QApplication::focusWidget(), &press);
}

} // namespace

// What a person presses and types while the wizard goes from page to page.
class TestInput : public WorldTest
{
    Q_OBJECT

private slots:
    void assistivePressesUnderAMessageStartNothing_data()
    {
        addColumns<QString>("name");
        for (const char* name :
             {"Next", "Back", "ContainerDNBrowse", "chooseButton", "AboutButton"})
            addRow(name, name);
    }

    // Windows under a dialog take no key or click, but an assistive tool can press their buttons.
    void assistivePressesUnderAMessageStartNothing()
    {
        QFETCH(QString, name);
        World::answer("mvedit mvedit_file_arg.tcl", {"", "", 1});
        WizardDriver driver;
        driver.goToJoinOptions();
        warningsDuring([&driver] { // makes the browser
            driver.on<QPushButton>("ContainerDNBrowse")->click();
            QTRY_VERIFY(!windowOf<LoadCN>()->isVisible());
        });
        QAbstractButton* button = name == "Next"   ? driver.button(QWizard::NextButton)
                                  : name == "Back" ? driver.button(QWizard::BackButton)
                                                   : child<QAbstractButton>(&driver.wizard, name);
        QSignalSpy clicked(button, &QAbstractButton::clicked);
        QStringList dialogs;
        bool pressed = false;
        const auto press = [&](QWidget* dialog) {
            if (qobject_cast<LoadCN*>(dialog) != nullptr)
                return;
            dialogs << dialog->objectName();
            if (dialogs.size() == 1) {
                clicked.clear();
                World::forgetCalls();
                pressAssistivelyUnheard(button);
                pressed = QTest::qWaitFor([&clicked] { return clicked.size() == 1; });
            }
            dialog->close();
        };
        withModalDialogs(
            [&] {
                driver.on<QPushButton>("ContainerDNBrowse")->click();
                QTRY_VERIFY(!dialogs.isEmpty() && QApplication::activeModalWidget() == nullptr);
            },
            press);
        QVERIFY(pressed);
        QCOMPARE(dialogs, QStringList{"Warning"});
        QCOMPARE(World::calls().size(), 0);
        QCOMPARE(driver.page(), 4);
    }

    void aHeldReturnCountsOnce()
    {
        WizardDriver driver;
        driver.goToCredentials();
        driver.enterCredentials();
        QVERIFY(QTest::qWaitForWindowActive(&driver.wizard));
        QWidget* const focus[] = {driver.on<QLineEdit>("PasswordEdit"),
                                  driver.button(QWizard::NextButton)};
        for (QWidget* widget : focus) {
            widget->setFocus();
            repeatReturn();
            QVERIFY2(World::callsOf("mvedit").isEmpty(), widget->metaObject()->className());
            QCOMPARE(driver.page(), 3);
        }
    }

    void aHeldReturnClosesNoMessage()
    {
        const WizardDriver driver; // filters the keys of all windows
        Warning message;
        message.show();
        QVERIFY(QTest::qWaitForWindowActive(&message));
        bool canClose = false;
        afterQueuedInput(&message, [&] { canClose = true; });
        QTRY_VERIFY(canClose);
        repeatReturn();
        QVERIFY(message.isVisible());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QVERIFY(!message.isVisible());
    }

    // The press clicks a tenth of a second later, here while another press takes the step.
    void anAssistivePressDoesNotOutlastItsPage()
    {
        WizardDriver driver;
        driver.goToCredentials();
        driver.enterCredentials();
        auto* next = driver.button(QWizard::NextButton);
        QSignalSpy clicked(next, &QAbstractButton::clicked);
        QAccessible::queryAccessibleInterface(next)->actionInterface()->doAction(
            QAccessibleActionInterface::pressAction());
        QTest::qSleep(200);
        driver.next();
        QTRY_COMPARE(clicked.size(), 2);
        QCOMPARE(driver.page(), 4);
        QCOMPARE(World::callsOf("gui_helper_tool").size(), 0);
    }

    // Each step waits for queued input by a timer.
    void aStepLeavesNoTimer()
    {
        WizardDriver driver;
        const auto timers = [&] { return driver.wizard.findChildren<QTimer*>().size(); };
        const auto before = timers();
        driver.goToCredentials();
        driver.back();
        QTRY_COMPARE(timers(), before);
    }

    void pressesDuringACheckStartNothing_data()
    {
        addColumns<bool>("quits");
        addRow("F1", false);
        addRow("quitting, as the end of a desktop session does", true);
    }

    void pressesDuringACheckStartNothing()
    {
        QFETCH(bool, quits);
        WizardDriver driver;
        driver.goToCredentials();
        QVERIFY(QTest::qWaitForWindowActive(&driver.wizard));
        if (quits)
            QMetaObject::invokeMethod(qApp, &QApplication::closeAllWindows, Qt::QueuedConnection);
        else
            typeUnheard(&driver.wizard, Qt::Key_F1);
        driver.next();
        QCOMPARE(driver.page(), 4);
        QVERIFY(driver.wizard.isVisible());
    }

    void pressesDuringACheckChooseNothing()
    {
        WizardDriver driver;
        QVERIFY(QTest::qWaitForWindowActive(&driver.wizard));
        driver.goToJoinOptions();
        driver.click("AdvancedButton");
        const auto* zone = driver.on<QRadioButton>("ZoneButton");
        const auto* zoneEdit = driver.on<QLineEdit>("ZoneEdit");
        const auto* overwrite = driver.on<QCheckBox>("ForceLeave");
        auto* alias = driver.on<QCheckBox>("AliasLabel");
        driver.back();
        clickUnheard(zone);
        clickUnheard(zoneEdit);
        typeUnheard(&driver.wizard, Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
        pressAssistivelyUnheard(alias, QAccessibleActionInterface::toggleAction());
        driver.next();
        QCOMPARE(driver.page(), 4);
        QVERIFY(!zone->isChecked());
        QVERIFY(!overwrite->isDown() && !overwrite->isChecked()); // a key has it down first
        QVERIFY(!alias->isChecked());
        QVERIFY(driver.wizard.focusWidget() != zoneEdit);
    }

    void textOfAnInputMethodArrives()
    {
        WizardDriver driver;
        QVERIFY(QTest::qWaitForWindowActive(&driver.wizard));
        QMetaObject::invokeMethod(
            &driver.wizard,
            [] {
                QInputMethodEvent event;
                event.setCommitString("é");
                QCoreApplication::sendEvent(QGuiApplication::focusObject(), &event);
            },
            Qt::QueuedConnection);
        driver.next();
        QCOMPARE(driver.text("DomainEdit"), QString("é"));
    }

    void nothingCanBePressedDuringARun_data()
    {
        addColumns<bool>("joined");
        addRow("join", false);
        addRow("leave", true);
    }

    void nothingCanBePressedDuringARun()
    {
        QFETCH(bool, joined);
        if (joined)
            World::setJoined();
        WizardDriver driver;
        if (joined)
            driver.next();
        else
            driver.goToJoinOptions();
        QList<QAbstractButton*> buttons = {driver.wizard.findChild<QToolButton*>("AboutButton")};
        for (QAbstractButton* button : driver.wizard.findChildren<QPushButton*>())
            buttons.append(button);
        World::hold("gui_helper_tool");
        whileRunning(
            "gui_helper_tool", [&driver] { driver.next(); },
            [&](QWidget* progress) {
                for (const QAbstractButton* button : buttons)
                    QVERIFY2(!button->isEnabled(), qPrintable(button->text()));
                driver.wizard.close();
                QApplication::closeAllWindows();
                QVERIFY(driver.wizard.isVisible());
                QVERIFY(progress->isVisible());
            });
        QCOMPARE(driver.page(), 7);
        QVERIFY(driver.button(QWizard::FinishButton)->isEnabled());
        QVERIFY(buttons.first()->isEnabled());
    }

    void disabledButtonGetsTheFocusBackAfterAStep()
    {
        WizardDriver driver;
        driver.goToCredentials();
        World::answer("mvedit", {"", "", 1});
        for (auto* button : {driver.button(QWizard::NextButton),
                             child<QAbstractButton>(&driver.wizard, "AboutButton")}) {
            button->setFocus();
            warningsDuring([&driver] { QTest::keyClick(&driver.wizard, Qt::Key_Return); });
            driver.waitUntilFree();
            QCOMPARE(World::callsOf("mvedit").size(), 1);
            World::forgetCalls();
            QCOMPARE(driver.wizard.focusWidget(), button);
        }
    }

    void disabledButtonTakesNoFocusBackFromAnEdit()
    {
        WizardDriver driver;
        driver.startAt(6);
        World::answer("authorization_prompt", {"", "", 1});
        driver.button(QWizard::NextButton)->setFocus();
        auto* edit = driver.on<QLineEdit>("PasswordEdit");
        // As an assistive tool does.
        QMetaObject::invokeMethod(edit, qOverload<>(&QWidget::setFocus), Qt::QueuedConnection);
        driver.next();
        QCOMPARE(driver.page(), 6);
        QCOMPARE(driver.wizard.focusWidget(), edit);
    }

    // A step without a message keeps the buttons disabled until what queued up is handled, even
    // where the step before ended with a message.
    void anEarlierStepsMessageFreesNoButton()
    {
        World::answer("authorization_prompt", {"", "", 1});
        for (const int start : {3, 6}) {
            WizardDriver driver;
            driver.startAt(start);
            World::answer("mvedit", {"", "", 1});
            QCOMPARE(driver.next().size(), 1);
            World::answer("mvedit", {});
            driver.button(QWizard::NextButton)->click();
            QVERIFY(!driver.button(QWizard::NextButton)->isEnabled());
            // At the second try the check passes, and the leave is cancelled.
            QCOMPARE(driver.page(), start == 3 ? 4 : 6);
            driver.waitUntilFree();
        }
    }

    void nextIsEnabledAsSoonAsTheMessageIsClosed()
    {
        WizardDriver driver;
        driver.goToCredentials();
        World::answer("mvedit", {"", "", 1});
        auto* next = driver.button(QWizard::NextButton);
        const QStringList messages = warningsDuring([next] { next->click(); });
        QVERIFY(next->isEnabled());
        QCOMPARE(messages.size(), 1);
    }
};

WORLD_TEST_MAIN(TestInput)
#include "tst_input.moc"

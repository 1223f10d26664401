#include "browser/cnbrowser.h"
#include "tests/looks/scenes.h"
#include "tests/support/wizarddriver.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QRadioButton>
#include <QScopeGuard>
#include <QTextBrowser>
#include <QTreeView>

namespace {

void pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QWidget* focus = QApplication::focusWidget();
    QTest::keyClick(focus != nullptr ? focus : QApplication::activeWindow(), key, modifiers);
}

void typeText(const QString& text)
{
    QTest::keyClicks(QApplication::focusWidget(), text);
}

// Replaces what the edit with the focus holds.
void retype(const QString& text)
{
    pressKey(Qt::Key_A, Qt::ControlModifier);
    typeText(text);
}

QString focusName()
{
    const QWidget* focus = QApplication::focusWidget();
    if (focus == nullptr)
        return QStringLiteral("nothing");
    if (const auto* wizard = qobject_cast<const QWizard*>(focus->window())) {
        if (focus == wizard->button(QWizard::NextButton))
            return QStringLiteral("Next");
        if (focus == wizard->button(QWizard::BackButton))
            return QStringLiteral("Back");
        if (focus == wizard->button(QWizard::FinishButton))
            return QStringLiteral("Finish");
    }
    if (const auto* box = qobject_cast<const QDialogButtonBox*>(focus->parentWidget()))
        return box->objectName();
    return focus->objectName();
}

// Where the focus goes with each press of the key, until it is back where it began.
QStringList focusRound(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QStringList names{focusName()};
    for (;;) {
        pressKey(key, modifiers);
        if (focusName() == names.first() || names.size() > 20)
            return names;
        names << focusName();
    }
}

class KeyDriver : public WizardDriver
{
public:
    KeyDriver()
    {
        if (!QTest::qWaitForWindowActive(&wizard))
            qFatal("The wizard does not get the focus");
    }

    // Once a dialog has closed. A desktop's window manager does so by itself.
    void activateAgain()
    {
        wizard.activateWindow();
        if (!QTest::qWaitForWindowActive(&wizard))
            qFatal("The focus does not come back to the wizard");
    }

    // Return, with each warning that comes up closed by Return as well; its texts.
    QStringList pressReturn()
    {
        QStringList texts;
        withModalDialogs([] { pressKey(Qt::Key_Return); },
                         [&texts](QWidget* dialog) {
                             auto* text = dialog->findChild<QTextBrowser*>();
                             if (text == nullptr)
                                 return;
                             texts << text->toPlainText();
                             QTest::keyClick(dialog->focusWidget(), Qt::Key_Return);
                         });
        activateAgain();
        return texts;
    }

    // A widget that takes no focus. It shows for a moment that it is pressed before it is toggled.
    void toggle(Qt::Key key, const char* name) const
    {
        pressKey(key, Qt::ControlModifier | Qt::ShiftModifier);
        const auto* button = on<QAbstractButton>(QString::fromLatin1(name));
        if (!QTest::qWaitFor([button] { return button->isChecked(); }))
            qFatal("%s is not toggled", name);
    }

    void enterCredentials()
    {
        pressReturn();
        typeText(QStringLiteral("example.test"));
        pressKey(Qt::Key_Tab);
        retype(QStringLiteral("admin"));
        pressKey(Qt::Key_Tab);
        typeText(QStringLiteral("secret"));
        pressReturn();
    }
};

} // namespace

class TestKeyboard : public WorldTest
{
    Q_OBJECT

private slots:
    void tabOrder_data();
    void tabOrder();
    void focusComesIntoView();
    void pagesOpenAtTheirFirstField_data();
    void pagesOpenAtTheirFirstField();
    void join();
    void joinWithAllOptions();
    void refusedCredentialsLeadBackToTheEdit();
    void pickContainer();
    void leave();
    void leaveWithoutContact();
    void unbind();
    void download();
    void about();
    void aboutEntryBesideThePages();
    void escapeClosesDialogs_data();
    void escapeClosesDialogs();
    void escapeKeepsTheWizard();
    void arrowsScrollTheWarning();
};

void TestKeyboard::tabOrder_data()
{
    QTest::addColumn<QString>("scene");
    QTest::addColumn<QStringList>("order");
    QTest::newRow("introduction") << "introduction-join" << QStringList{"Next", "AboutButton"};
    QTest::newRow("unbind") << "unbind"
                            << QStringList{"ADUser", "ADPass", "Back", "Next", "AboutButton"};
    QTest::newRow("credentials") << "credentials"
                                 << QStringList{"DomainEdit", "UsernameEdit", "PasswordEdit",
                                                "Back",       "Next",         "AboutButton"};
    QTest::newRow("options") << "join-options"
                             << QStringList{"AutoButton", "ZoneEdit", "ComputerNameEdit",
                                            "Back",       "Next",     "AboutButton"};
    QTest::newRow("advanced options") << "join-options-advanced"
                                      << QStringList{"AutoButton",
                                                     "ZoneEdit",
                                                     "ComputerNameEdit",
                                                     "ContainerDNEdit",
                                                     "ContainerDNBrowse",
                                                     "PDSEdit",
                                                     "AliasEdit",
                                                     "AppleUIDCheck",
                                                     "Back",
                                                     "Next",
                                                     "AboutButton"};
    QTest::newRow("leave") << "leave" << QStringList{"radioButton", "UsernameEdit", "PasswordEdit",
                                                     "Back",        "Next",         "AboutButton"};
    QTest::newRow("leave without contact")
        << "leave-without-contact" << QStringList{"radioButton_3", "Back", "Next", "AboutButton"};
    QTest::newRow("conclusion") << "conclusion-join" << QStringList{"Finish", "AboutButton"};
    QTest::newRow("containers") << "containers"
                                << QStringList{"browserTree", "cancelButton", "chooseButton"};
    QTest::newRow("warning") << "warning" << QStringList{"WarningLabel", "buttonBox"};
}

void TestKeyboard::tabOrder()
{
    QFETCH(QString, scene);
    QFETCH(QStringList, order);
    const auto opened = Scenes::open(scene);
    auto* checked = opened->content()->findChild<QRadioButton*>(order.first());
    if (checked != nullptr)
        checked->setFocus();
    QCOMPARE(focusRound(Qt::Key_Tab), order);
    std::reverse(order.begin() + 1, order.end());
    QCOMPARE(focusRound(Qt::Key_Tab, Qt::ShiftModifier), order);
}

void TestKeyboard::focusComesIntoView()
{
    const auto opened = Scenes::open(QStringLiteral("join-options-advanced"));
    const QFont usual = QApplication::font();
    const auto restore = qScopeGuard([&] { QApplication::setFont(usual); });
    QFont big = usual;
    big.setPointSize(24);
    QApplication::setFont(big);
    auto* last = child<QWidget>(opened->content(), QStringLiteral("AppleUIDCheck"));
    auto* first = child<QWidget>(opened->content(), QStringLiteral("ContainerDNEdit"));
    const auto isInView = [](const QWidget* widget) {
        return widget->visibleRegion().boundingRect() == widget->rect();
    };
    QTRY_VERIFY(!isInView(last));
    for (QWidget* widget : {last, first}) {
        widget->setFocus();
        QVERIFY(isInView(widget));
    }
}

void TestKeyboard::pagesOpenAtTheirFirstField_data()
{
    QTest::addColumn<QString>("scene");
    QTest::addColumn<QString>("first");
    QTest::newRow("introduction") << "introduction-join"
                                  << "Next";
    QTest::newRow("unbind") << "unbind"
                            << "ADUser";
    QTest::newRow("credentials") << "credentials"
                                 << "DomainEdit";
    QTest::newRow("options") << "join-options"
                             << "AutoButton";
    QTest::newRow("leave") << "leave"
                           << "radioButton";
    QTest::newRow("conclusion") << "conclusion-leave"
                                << "Finish";
    QTest::newRow("containers") << "containers"
                                << "browserTree";
}

void TestKeyboard::pagesOpenAtTheirFirstField()
{
    QFETCH(QString, scene);
    const auto opened = Scenes::open(scene);
    QTEST(focusName(), "first");
}

void TestKeyboard::join()
{
    KeyDriver driver;
    driver.enterCredentials();
    QCOMPARE(driver.page(), 4);
    driver.pressReturn();
    QCOMPARE(driver.page(), 7);
    QCOMPARE(World::callsOf(QStringLiteral("gui_helper_tool")).first().arguments,
             QStringList({"/usr/local/sbin/mvjoin", "-u", "admin", "-p", "secret", "example.test",
                          "-w", "-n", "my-mac"}));
    pressKey(Qt::Key_Return);
    QVERIFY(!driver.wizard.isVisible());
}

void TestKeyboard::joinWithAllOptions()
{
    KeyDriver driver;
    driver.enterCredentials();
    pressKey(Qt::Key_Down);
    QCOMPARE(focusName(), QStringLiteral("ZoneButton"));
    pressKey(Qt::Key_Tab);
    typeText(QStringLiteral("MacZone"));
    pressKey(Qt::Key_Tab);
    retype(QStringLiteral("mac-7"));
    driver.toggle(Qt::Key_A, "AdvancedButton");
    driver.toggle(Qt::Key_O, "ForceLeave");
    driver.toggle(Qt::Key_C, "ContainerDNLabel");
    driver.toggle(Qt::Key_P, "PDSLabel");
    driver.toggle(Qt::Key_L, "AliasLabel");
    pressKey(Qt::Key_Tab);
    typeText(QStringLiteral("OU=Macs,DC=example,DC=test"));
    pressKey(Qt::Key_Tab);
    pressKey(Qt::Key_Tab);
    typeText(QStringLiteral("dc1"));
    pressKey(Qt::Key_Tab);
    typeText(QStringLiteral("mac-alias"));
    driver.pressReturn();
    QCOMPARE(World::callsOf(QStringLiteral("gui_helper_tool")).first().arguments,
             QStringList({"/usr/local/sbin/mvjoin", "-u", "admin", "-p", "secret", "example.test",
                          "-f", "-z", "MacZone", "-c", "OU=Macs,DC=example,DC=test", "-s", "dc1",
                          "-a", "mac-alias", "-n", "mac-7"}));
    QCOMPARE(driver.page(), 7);
}

void TestKeyboard::refusedCredentialsLeadBackToTheEdit()
{
    KeyDriver driver;
    driver.pressReturn();
    Answer refused;
    refused.output = "No such domain\n";
    refused.exitStatus = 1;
    World::answer(QStringLiteral("mvedit"), refused);
    typeText(QStringLiteral("wrong.test"));
    QCOMPARE(driver.pressReturn(),
             QStringList{"Validation of username, password, and domain failed with this error:\n"
                         "No such domain"});
    QCOMPARE(driver.page(), 3);
    QCOMPARE(focusName(), QStringLiteral("DomainEdit"));
}

void TestKeyboard::pickContainer()
{
    // The display without a desktop has no windows on top of each other.
    allowWarning(QStringLiteral("does not support raise()"));
    KeyDriver driver;
    driver.enterCredentials();
    Answer tree;
    tree.output = "OU=Europe,DC=example,DC=test\nOU=Sales,OU=Europe,DC=example,DC=test\n"
                  "OU=Macs,DC=example,DC=test\n";
    World::answer(QStringLiteral("mvedit"), tree);
    driver.toggle(Qt::Key_A, "AdvancedButton");
    for (int i = 0; i < 4; ++i)
        pressKey(Qt::Key_Tab);
    QCOMPARE(focusName(), QStringLiteral("ContainerDNBrowse"));
    pressKey(Qt::Key_Space);
    cnbrowser* browser = nullptr;
    QTRY_VERIFY((browser = driver.wizard.findChild<cnbrowser*>()) != nullptr &&
                browser->isActiveWindow());
    QCOMPARE(focusName(), QStringLiteral("browserTree"));
    typeText(QStringLiteral("OU=E"));
    pressKey(Qt::Key_Right);
    pressKey(Qt::Key_Down);
    pressKey(Qt::Key_Return);
    QTRY_VERIFY(!browser->isVisible());
    driver.activateAgain();
    QTRY_COMPARE(focusName(), QStringLiteral("ContainerDNEdit"));
    QCOMPARE(driver.on<QLineEdit>(QStringLiteral("ContainerDNEdit"))->text(),
             QStringLiteral("OU=Sales,OU=Europe,DC=example,DC=test"));
    QVERIFY(driver.on<QCheckBox>(QStringLiteral("ContainerDNLabel"))->isChecked());
}

void TestKeyboard::leave()
{
    World::setJoined();
    KeyDriver driver;
    driver.pressReturn();
    QCOMPARE(driver.page(), 6);
    pressKey(Qt::Key_Down);
    pressKey(Qt::Key_Tab);
    typeText(QStringLiteral("admin"));
    pressKey(Qt::Key_Tab);
    typeText(QStringLiteral("secret"));
    driver.pressReturn();
    QCOMPARE(driver.page(), 7);
    QCOMPARE(World::callsOf(QStringLiteral("gui_helper_tool")).first().arguments,
             QStringList({"/usr/local/sbin/mvleave", "-r", "-u", "admin", "-p", "secret"}));
}

void TestKeyboard::leaveWithoutContact()
{
    World::setJoined();
    KeyDriver driver;
    driver.pressReturn();
    pressKey(Qt::Key_Down);
    pressKey(Qt::Key_Down);
    driver.pressReturn();
    QCOMPARE(driver.page(), 7);
    QCOMPARE(World::callsOf(QStringLiteral("gui_helper_tool")).first().arguments,
             QStringList({"/usr/local/sbin/mvleave", "-f"}));
}

void TestKeyboard::unbind()
{
    World::setBound();
    KeyDriver driver;
    driver.pressReturn();
    QCOMPARE(driver.page(), 2);
    typeText(QStringLiteral("admin"));
    pressKey(Qt::Key_Tab);
    typeText(QStringLiteral("secret"));
    QCOMPARE(driver.pressReturn(),
             QStringList{"You are unbound from Apple's Active Directory plugin."});
    QCOMPARE(driver.page(), 3);
    QCOMPARE(World::callsOf(QStringLiteral("dsconfigad")).last().arguments,
             QStringList({"-r", "-f", "-u", "admin", "-p", "secret"}));
}

void TestKeyboard::download()
{
    const auto opened = Scenes::open(QStringLiteral("cloud"));
    auto* button = child<QPushButton>(opened->content(), QStringLiteral("downloadButton"));
    // The page's own slot would open a web browser.
    button->disconnect();
    bool clicked = false;
    connect(button, &QPushButton::clicked, [&clicked] { clicked = true; });
    pressKey(Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier);
    QTRY_VERIFY(clicked);
}

void TestKeyboard::about()
{
    KeyDriver driver;
    QString shown;
    withModalDialogs([] { pressKey(Qt::Key_F1); },
                     [&shown](QWidget* dialog) {
                         shown = QString::fromLatin1(dialog->metaObject()->className());
                         QTest::keyClick(dialog, Qt::Key_Escape);
                     });
    QCOMPARE(shown, QStringLiteral("about"));
}

void TestKeyboard::aboutEntryBesideThePages()
{
    KeyDriver driver;
    pressKey(Qt::Key_Tab);
    QCOMPARE(focusName(), QStringLiteral("AboutButton"));
    int shown = 0;
    withModalDialogs([] { pressKey(Qt::Key_Space); },
                     [&shown](QWidget* dialog) {
                         ++shown;
                         QTest::keyClick(dialog, Qt::Key_Escape);
                     });
    QCOMPARE(shown, 1);
    QCOMPARE(driver.wizard.options(), QWizard::NoCancelButton | QWizard::NoBackButtonOnLastPage);
}

void TestKeyboard::escapeClosesDialogs_data()
{
    QTest::addColumn<QString>("scene");
    QTest::addColumn<bool>("closes");
    QTest::newRow("warning") << "warning" << true;
    QTest::newRow("about") << "about" << true;
    QTest::newRow("containers") << "containers" << true;
    QTest::newRow("loading") << "progress-containers" << true;
    QTest::newRow("joining goes on") << "progress-join" << false;
    QTest::newRow("leaving goes on") << "progress-leave" << false;
}

void TestKeyboard::escapeClosesDialogs()
{
    QFETCH(QString, scene);
    QFETCH(bool, closes);
    const auto opened = Scenes::open(scene);
    pressKey(Qt::Key_Escape);
    QCOMPARE(opened->window()->isVisible(), !closes);
}

void TestKeyboard::escapeKeepsTheWizard()
{
    KeyDriver driver;
    driver.pressReturn();
    typeText(QStringLiteral("example.test"));
    pressKey(Qt::Key_Escape);
    QVERIFY(driver.wizard.isVisible());
    QCOMPARE(driver.page(), 3);
}

void TestKeyboard::arrowsScrollTheWarning()
{
    const auto opened = Scenes::open(QStringLiteral("warning-long"));
    auto* text = child<QTextBrowser>(opened->content(), QStringLiteral("WarningLabel"));
    const QRect before = text->cursorRect();
    pressKey(Qt::Key_Down);
    QVERIFY(text->cursorRect() != before);
    pressKey(Qt::Key_Return);
    QVERIFY(!opened->window()->isVisible());
}

WORLD_TEST_MAIN(TestKeyboard)
#include "tst_keyboard.moc"

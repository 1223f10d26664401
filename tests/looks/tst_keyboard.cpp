#include "tests/looks/scenes.h"
#include "tests/support/keyboard.h"

#include <QPushButton>
#include <QRadioButton>
#include <QScopeGuard>
#include <QTextBrowser>

namespace {

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
        return widget->visibleRegion().boundingRect().height() == widget->height();
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

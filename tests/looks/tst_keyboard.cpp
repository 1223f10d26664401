#include "tests/looks/scenes.h"
#include "tests/support/keyboard.h"

#include <QPushButton>
#include <QRadioButton>
#include <QScopeGuard>
#include <QScrollBar>
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
    void tabGoesRoundFromTheFirstField_data()
    {
        addColumns<QString, QStringList>("scene", "order");
        addRow("introduction", "introduction-join", QStringList{"Next", "AboutButton"});
        addRow("unbind", "unbind", QStringList{"ADUser", "ADPass", "Back", "Next", "AboutButton"});
        addRow("credentials", "credentials",
               QStringList{"DomainEdit", "UsernameEdit", "PasswordEdit", "Back", "Next",
                           "AboutButton"});
        addRow("options", "join-options",
               QStringList{"AutoButton", "ZoneEdit", "ComputerNameEdit", "Back", "Next",
                           "AboutButton"});
        addRow("advanced options", "join-options-advanced",
               QStringList{"AutoButton", "ZoneEdit", "ComputerNameEdit", "ContainerDNEdit",
                           "ContainerDNBrowse", "PDSEdit", "AliasEdit", "AppleUIDCheck", "Back",
                           "Next", "AboutButton"});
        addRow("leave", "leave",
               QStringList{"radioButton", "UsernameEdit", "PasswordEdit", "Back", "Next",
                           "AboutButton"});
        addRow("leave without contact", "leave-without-contact",
               QStringList{"radioButton_3", "Back", "Next", "AboutButton"});
        addRow("conclusion", "conclusion-join", QStringList{"Finish", "AboutButton"});
        addRow("containers", "containers",
               QStringList{"browserTree", "cancelButton", "chooseButton"});
        addRow("warning", "warning", QStringList{"WarningLabel", "buttonBox"});
    }

    void tabGoesRoundFromTheFirstField()
    {
        QFETCH(QString, scene);
        QFETCH(QStringList, order);
        const auto opened = Scenes::open(scene);
        // This scene checks its choice by click(), which gives it no focus.
        if (scene == "leave-without-contact")
            child<QRadioButton>(opened->content(), "radioButton_3")->setFocus();
        QCOMPARE(focusRound(Qt::Key_Tab), order);
        std::reverse(order.begin() + 1, order.end());
        QCOMPARE(focusRound(Qt::Key_Tab, Qt::ShiftModifier), order);
    }

    void focusComesIntoView()
    {
        const auto opened = Scenes::open("join-options-advanced");
        const QFont usual = QApplication::font();
        const auto restore = qScopeGuard([&] { QApplication::setFont(usual); });
        QFont big = usual;
        big.setPointSize(24);
        QApplication::setFont(big);
        auto* last = child<QWidget>(opened->content(), "AppleUIDCheck");
        auto* first = child<QWidget>(opened->content(), "ContainerDNEdit");
        const auto isInView = [](const QWidget* widget) {
            return widget->visibleRegion().boundingRect().height() == widget->height();
        };
        for (QWidget* widget : {last, first}) {
            QTRY_VERIFY(!isInView(widget));
            widget->setFocus();
            QVERIFY(isInView(widget));
        }
    }

    void downloadHasItsShortcut()
    {
        const auto opened = Scenes::open("cloud");
        auto* button = child<QPushButton>(opened->content(), "downloadButton");
        // The page's own slot would open a web browser.
        button->disconnect();
        bool clicked = false;
        connect(button, &QPushButton::clicked, [&clicked] { clicked = true; });
        pressKey(Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier);
        QTRY_VERIFY(clicked);
    }

    void f1AndTheButtonOpenAbout()
    {
        KeyDriver driver;
        const auto dialogsAfter = [&driver](Qt::Key key) {
            QStringList shown;
            withModalDialogs([key] { pressKey(key); },
                             [&shown](QWidget* dialog) {
                                 shown << dialog->metaObject()->className();
                                 QTest::keyClick(dialog, Qt::Key_Escape);
                             });
            driver.activateAgain();
            return shown;
        };
        QCOMPARE(dialogsAfter(Qt::Key_F1), QStringList{"about"});
        pressKey(Qt::Key_Tab);
        QCOMPARE(focusName(), QString("AboutButton"));
        QCOMPARE(dialogsAfter(Qt::Key_Space), QStringList{"about"});
    }

    void escapeClosesTheContainersAndAWarning()
    {
        for (const char* scene : {"containers", "warning"}) {
            const auto opened = Scenes::open(scene);
            pressKey(Qt::Key_Escape);
            QVERIFY2(!opened->window()->isVisible(), scene);
        }
    }

    void arrowsScrollTheWarningAndReturnClosesItWithItsTextSelected()
    {
        const auto opened = Scenes::open("warning-long");
        auto* text = child<QTextBrowser>(opened->content(), "WarningLabel");
        QCOMPARE(text->verticalScrollBar()->value(), 0);
        pressKey(Qt::Key_Down);
        QVERIFY(text->verticalScrollBar()->value() > 0);
        QTest::keySequence(text, QKeySequence::SelectAll);
        QVERIFY(text->textCursor().hasSelection());
        pressKey(Qt::Key_Return);
        QVERIFY(!opened->window()->isVisible());
    }

    void escapeKeepsTheWizard()
    {
        KeyDriver driver;
        driver.pressReturn();
        typeText("example.test");
        pressKey(Qt::Key_Escape);
        QVERIFY(driver.wizard.isVisible());
        QCOMPARE(driver.page(), 3);
    }
};

WORLD_TEST_MAIN(TestKeyboard)
#include "tst_keyboard.moc"

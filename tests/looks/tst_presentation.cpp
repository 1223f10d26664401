#include "app/about.h"
#include "pages/dialogs/loadcn.h"
#include "pages/dialogs/loadjoin.h"
#include "pages/dialogs/loadleave.h"
#include "pages/dialogs/warning.h"
#include "tests/looks/scenes.h"
#include "tests/support/wizarddriver.h"

#include <QPainter>
#include <QRadioButton>
#include <QWindow>

namespace {

// Counts how often a button is painted while it is pressed.
class PressedPainting : public QObject
{
public:
    explicit PressedPainting(QAbstractButton* button) : button(button)
    {
        button->installEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && button->isDown())
            ++count;
        return QObject::eventFilter(watched, event);
    }

    QAbstractButton* button;
    int count = 0;
};

void verifyIsOver(const QWidget* dialog, const Wizard& wizard)
{
    const QPoint distance = dialog->frameGeometry().center() - wizard.frameGeometry().center();
    QVERIFY2(qAbs(distance.x()) <= 2 && qAbs(distance.y()) <= 30,
             dialog->metaObject()->className());
    QCOMPARE(dialog->windowHandle()->transientParent(), wizard.windowHandle());
    QVERIFY(dialog->parentWidget() == nullptr);
}

Answer heldSuccess()
{
    Answer answer;
    answer.reportsPid = true;
    answer.held = true;
    return answer;
}

} // namespace

class TestPresentation : public WorldTest
{
    Q_OBJECT

private slots:
    void dialogsOpenOverTheWizard();
    void joinShowsItsProgressWhileTheToolRuns();
    void leaveShowsItsProgressWhileTheToolRuns();
    void nextShowsThatItIsPressed_data();
    void nextShowsThatItIsPressed();
    void nextIsReleasedWhereThePageStays();
    void backgroundIsSharpOnDenseScreens();
    void backgroundStandsAtTheRightFromRightToLeft();
};

void TestPresentation::dialogsOpenOverTheWizard()
{
    WizardDriver driver;
    driver.wizard.move(137, 91);
    QVERIFY(QTest::qWaitForWindowActive(&driver.wizard));
    LoadJoin join;
    LoadLeave leave;
    LoadCN containers;
    Warning warning;
    about version(nullptr);
    for (QDialog* dialog :
         std::initializer_list<QDialog*>{&join, &leave, &containers, &warning, &version}) {
        dialog->show();
        verifyIsOver(dialog, driver.wizard);
        dialog->hide();
    }
}

void TestPresentation::joinShowsItsProgressWhileTheToolRuns()
{
    World::answer(QStringLiteral("gui_helper_tool"), heldSuccess());
    WizardDriver driver;
    driver.goToJoinOptions();
    bool seen = false;
    withModalDialogs([&] { driver.next(); },
                     [&](QWidget* dialog) {
                         seen = qobject_cast<LoadJoin*>(dialog) != nullptr;
                         verifyIsOver(dialog, driver.wizard);
                         World::release(QStringLiteral("gui_helper_tool"));
                     });
    QVERIFY(seen);
    QCOMPARE(driver.page(), 7);
}

void TestPresentation::leaveShowsItsProgressWhileTheToolRuns()
{
    World::setJoined();
    World::answer(QStringLiteral("gui_helper_tool"), heldSuccess());
    WizardDriver driver;
    driver.next();
    driver.on<QRadioButton>(QStringLiteral("radioButton_3"))->click();
    bool seen = false;
    withModalDialogs([&] { driver.next(); },
                     [&](QWidget* dialog) {
                         seen = qobject_cast<LoadLeave*>(dialog) != nullptr;
                         verifyIsOver(dialog, driver.wizard);
                         World::release(QStringLiteral("gui_helper_tool"));
                     });
    QVERIFY(seen);
    QCOMPARE(driver.page(), 7);
}

void TestPresentation::nextShowsThatItIsPressed_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("by mouse") << false;
    QTest::newRow("by key") << true;
}

void TestPresentation::nextShowsThatItIsPressed()
{
    QFETCH(bool, byKey);
    WizardDriver driver;
    QVERIFY(QTest::qWaitForWindowActive(&driver.wizard));
    PressedPainting painting(driver.button(QWizard::NextButton));
    if (byKey)
        QTest::keyClick(&driver.wizard, Qt::Key_Return);
    else
        driver.next();
    QCOMPARE(driver.page(), 3);
    QVERIFY(painting.count > 0);
    QVERIFY(!driver.button(QWizard::NextButton)->isDown());
}

// Where the page changes, the button is let go by being disabled on the way, and where it has the
// focus, by the warning, which takes that.
void TestPresentation::nextIsReleasedWhereThePageStays()
{
    World::answer(QStringLiteral("mvedit"), {"", "", 1});
    WizardDriver driver;
    driver.goToCredentials();
    auto* edit = driver.on<QLineEdit>(QStringLiteral("PasswordEdit"));
    edit->setFocus();
    QCOMPARE(warningsDuring([edit] { QTest::keyClick(edit, Qt::Key_Return); }).size(), 1);
    QCOMPARE(driver.page(), 3);
    QVERIFY(!driver.button(QWizard::NextButton)->isDown());
}

void TestPresentation::backgroundIsSharpOnDenseScreens()
{
    const auto opened = Scenes::open(QStringLiteral("introduction-join"));
    QImage shown = opened->window()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    shown.setDevicePixelRatio(1);
    QCOMPARE(shown.size(), QSize(1600, 1200));
    QImage drawn(shown.size(), QImage::Format_RGB32);
    drawn.fill(opened->window()->palette().color(QPalette::Window));
    QPainter(&drawn).drawImage(0, 0, QImage(QStringLiteral(":/sharp/background.png")));
    // The upper part of the picture, above the entry for the About dialog.
    const QRect picture(0, 0, 320, 1000);
    QCOMPARE(shown.copy(picture), drawn.copy(picture));
}

void TestPresentation::backgroundStandsAtTheRightFromRightToLeft()
{
    const auto picture = [](int x) {
        const auto opened = Scenes::open(QStringLiteral("introduction-join"));
        return opened->window()->grab({x, 0, 170, 500}).toImage();
    };
    const QImage leftToRight = picture(0);
    QApplication::setLayoutDirection(Qt::RightToLeft);
    const QImage rightToLeft = picture(800 - 170);
    QApplication::setLayoutDirection(Qt::LeftToRight);
    QCOMPARE(rightToLeft, leftToRight);
}

WORLD_TEST_MAIN(TestPresentation)
#include "tst_presentation.moc"

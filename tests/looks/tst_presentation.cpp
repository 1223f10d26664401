#include "app/about.h"
#include "pages/dialogs/loadcn.h"
#include "pages/dialogs/loadjoin.h"
#include "pages/dialogs/loadleave.h"
#include "pages/dialogs/warning.h"
#include "tests/looks/scenes.h"
#include "tests/support/wizarddriver.h"

#include <QPainter>
#include <QWindow>

namespace {

// Counts how often a button is painted as pressed after it was let go and before a tool is run.
class PressedPainting : public QObject
{
public:
    explicit PressedPainting(QAbstractButton* button) : button(button)
    {
        button->installEventFilter(this);
        connect(button, &QAbstractButton::released, this, [this] { letGo = true; });
    }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (letGo && event->type() == QEvent::Paint && button->isDown() && World::calls().isEmpty())
            ++count;
        return QObject::eventFilter(watched, event);
    }

    QAbstractButton* button;
    bool letGo = false; // by the mouse or the key
    int count = 0;
};

} // namespace

class TestPresentation : public WorldTest
{
    Q_OBJECT

private slots:
    void dialogsOpenOverTheWizard()
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
            const QPoint distance =
                dialog->frameGeometry().center() - driver.wizard.frameGeometry().center();
            QVERIFY2(qAbs(distance.x()) <= 2 && qAbs(distance.y()) <= 30,
                     dialog->metaObject()->className());
            QCOMPARE(dialog->windowHandle()->transientParent(), driver.wizard.windowHandle());
            QVERIFY(dialog->parentWidget() == nullptr);
            dialog->hide();
        }
    }

    void nextShowsThatItIsPressed_data()
    {
        addColumns<bool>("byKey");
        addRow("by mouse", false);
        addRow("by key", true);
    }

    void nextShowsThatItIsPressed()
    {
        QFETCH(bool, byKey);
        WizardDriver driver;
        QVERIFY(QTest::qWaitForWindowActive(&driver.wizard));
        World::forgetCalls();
        PressedPainting painting(driver.button(QWizard::NextButton));
        if (byKey)
            QTest::keyClick(&driver.wizard, Qt::Key_Return);
        else
            driver.next();
        QCOMPARE(driver.page(), 3);
        QVERIFY(painting.count > 0);
        QVERIFY(!driver.button(QWizard::NextButton)->isDown());
    }

    // The step lets the button go by disabling it. Here nothing else would, as the edit has the
    // focus and the page stays.
    void nextIsReleasedWhereThePageStays()
    {
        World::answer("mvedit", {"", "", 1});
        WizardDriver driver;
        driver.goToCredentials();
        auto* edit = driver.on<QLineEdit>("PasswordEdit");
        edit->setFocus();
        QCOMPARE(warningsDuring([edit] { QTest::keyClick(edit, Qt::Key_Return); }).size(), 1);
        QCOMPARE(driver.page(), 3);
        QVERIFY(!driver.button(QWizard::NextButton)->isDown());
    }

    void backgroundIsSharpOnDenseScreens()
    {
        const auto opened = Scenes::open("introduction-join");
        QImage shown = opened->window()->grab().toImage().convertToFormat(QImage::Format_RGB32);
        shown.setDevicePixelRatio(1);
        QCOMPARE(shown.size(), QSize(1600, 1200));
        QImage drawn(shown.size(), QImage::Format_RGB32);
        drawn.fill(opened->window()->palette().color(QPalette::Window));
        QPainter(&drawn).drawImage(0, 0, QImage(":/sharp/background.png"));
        // The upper part of the picture, above the entry for the About dialog.
        const QRect picture(0, 0, 320, 1000);
        QCOMPARE(shown.copy(picture), drawn.copy(picture));
    }

    void backgroundStandsAtTheRightFromRightToLeft()
    {
        const auto picture = [](int x) {
            const auto opened = Scenes::open("introduction-join");
            return opened->window()->grab({x, 0, 170, 500}).toImage();
        };
        const QImage leftToRight = picture(0);
        QImage plain = leftToRight;
        plain.fill(leftToRight.pixelColor(0, 0));
        QVERIFY(leftToRight != plain);
        QApplication::setLayoutDirection(Qt::RightToLeft);
        const QImage rightToLeft = picture(800 - 170);
        QApplication::setLayoutDirection(Qt::LeftToRight);
        QCOMPARE(rightToLeft, leftToRight);
    }
};

WORLD_TEST_MAIN(TestPresentation)
#include "tst_presentation.moc"

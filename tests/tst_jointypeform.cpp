#include "pages/jointype.h"
#include "tests/support/worldtest.h"

#include <QCheckBox>
#include <QFrame>
#include <QPushButton>

class TestJoinTypeForm : public WorldTest
{
    Q_OBJECT

private slots:
    // tst_pictures compares the texts that are shown.
    void formHasItsHiddenChoice()
    {
        const JoinType page;
        QCOMPARE(child<QCheckBox>(&page, "CloudCheck")->text(),
                 QString("Enroll with Morvanta Endpoint Services to enable remote management"));
    }

    void focusSkipsTheSwitches()
    {
        JoinType page;
        for (const char* name :
             {"AdvancedButton", "ForceLeave", "ContainerDNLabel", "PDSLabel", "AliasLabel"})
            QCOMPARE(child<QWidget>(&page, name)->focusPolicy(), Qt::NoFocus);
    }

    void toggleHasItsArrowsAndStyle()
    {
        Q_INIT_RESOURCE(Resources); // as the wizard does
        JoinType page;
        const auto* toggle = child<QPushButton>(&page, "AdvancedButton");
        const QSize size(32, 33);
        const auto arrow = [&](QIcon::State state) {
            return toggle->icon().pixmap(size, QIcon::Normal, state).toImage();
        };
        QCOMPARE(arrow(QIcon::Off), QIcon(":/:/down.png").pixmap(size).toImage());
        QCOMPARE(arrow(QIcon::On), QIcon(":/:/up.png").pixmap(size).toImage());
        QVERIFY(arrow(QIcon::Off) != arrow(QIcon::On));
        QCOMPARE(toggle->iconSize(), size);
        QCOMPARE(toggle->minimumSize(), QSize(31, 31));
        QCOMPARE(toggle->maximumSize(), QSize(31, 31));
        QVERIFY(toggle->isFlat() && toggle->isCheckable());
        QCOMPARE(toggle->styleSheet(),
                 QString("QPushButton {border-style: outset; border-width: 0px;}"));
    }

    void zoneChoiceLiesOnThePageNotInTheFrame()
    {
        JoinType page;
        QVERIFY(child<QWidget>(&page, "AutoButton")->parentWidget() == &page);
        QVERIFY(child<QWidget>(&page, "ZoneButton")->parentWidget() == &page);
        QCOMPARE(child<QFrame>(&page, "frame")->frameStyle(), QFrame::StyledPanel | QFrame::Raised);
        QCOMPARE(child<QFrame>(&page, "line")->frameStyle(), QFrame::HLine | QFrame::Sunken);
    }
};

WORLD_TEST_MAIN(TestJoinTypeForm)
#include "tst_jointypeform.moc"

#include "pages/jointype.h"
#include "tests/support/formtest.h"

#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

class TestJoinTypeForm : public WorldTest
{
    Q_OBJECT

private slots:
    void formHasItsWidgets()
    {
        JoinType page;
        QCOMPARE(child<QLineEdit>(&page, "ZoneEdit")->placeholderText(),
                 QString("Enter the zone name here"));
        compareForm(
            &page,
            {{"frame", "QFrame", nullptr},
             {"AutoButton", "QRadioButton", "Auto"},
             {"label_2", "QLabel",
              "Recommended for most installations.  All Active Directory users can login to your "
              "Mac.  "
              "User attributes such as UID, GID and home directory will be created automatically."},
             {"ZoneButton", "QRadioButton", "Zone"},
             {"ZoneEdit", "QLineEdit", ""},
             {"label_4", "QLabel",
              "Recommended for installations in which fine-grained access control is required.  "
              "You must enter a name of a Zone that was previously created using the Morvanta "
              "Access Manager.  Example of a zone name would be \"MacZone\"."},
             {"label_5", "QLabel", "Computer Name: "},
             {"CloudCheck", "QCheckBox",
              "Enroll with Morvanta Endpoint Services to enable remote management"},
             {"AdvancedButton", "QPushButton", ""},
             {"label_3", "QLabel", "Advanced Options"},
             {"line", "QFrame", nullptr},
             {"ForceLeave", "QCheckBox", "Overwrite existing joined computer"},
             {"AppleUIDCheck", "QCheckBox",
              "Utilize Apple UID generation scheme (Only usable in Auto-Zone mode)"},
             {"ContainerDNLabel", "QCheckBox", "Container DN:"},
             {"ContainerDNEdit", "QLineEdit", ""},
             {"ContainerDNBrowse", "QPushButton", "Browse"},
             {"PDSLabel", "QCheckBox", "Preferred Domain Server:"},
             {"PDSEdit", "QLineEdit", ""},
             {"AliasLabel", "QCheckBox", "Computer Alias Name:"},
             {"AliasEdit", "QLineEdit", ""}});
        NEEDS_TOOLS();
        compareForm(&page, {{"ComputerNameEdit", "QLineEdit", "my-mac"}});
    }

    void pageIs582By524()
    {
        JoinType page;
        QCOMPARE(page.minimumSize(), QSize(582, 524));
        QCOMPARE(page.maximumSize(), QSize(582, 524));
    }

    void initialStates()
    {
        JoinType page;
        for (const QLineEdit* edit : page.findChildren<QLineEdit*>())
            QVERIFY2(edit->isEnabled() && !edit->isReadOnly(), qPrintable(edit->objectName()));
        NEEDS_TOOLS(); // on a Mac that is enrolled a choice is disabled
        for (const QAbstractButton* button : page.findChildren<QAbstractButton*>()) {
            QCOMPARE(button->isChecked(), button->objectName() == "AutoButton");
            QVERIFY2(button->isEnabled(), qPrintable(button->objectName()));
        }
    }

    void focusSkipsTheSwitches()
    {
        JoinType page;
        for (const char* name :
             {"AdvancedButton", "ForceLeave", "ContainerDNLabel", "PDSLabel", "AliasLabel"})
            QCOMPARE(child<QWidget>(&page, name)->focusPolicy(), Qt::NoFocus);
    }

    void descriptionsAreSmallAndWrap()
    {
        JoinType page;
        for (const char* name : {"label_2", "label_4", "label_3"})
            QCOMPARE(child<QLabel>(&page, name)->font().pointSize(), 11);
        for (const char* name : {"label_2", "label_4"}) {
            QVERIFY(child<QLabel>(&page, name)->wordWrap());
            QCOMPARE(child<QLabel>(&page, name)->parentWidget(), child<QWidget>(&page, "frame"));
        }
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

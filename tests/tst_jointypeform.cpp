#include "tests/support/formtest.h"
#include "tests/support/wizarddriver.h"

#include <QFrame>
#include <QLabel>
#include <QPushButton>

class TestJoinTypeForm : public WorldTest
{
    Q_OBJECT

private slots:
    void formHasItsWidgets_data()
    {
        addFormRows(
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
             {"ComputerNameEdit", "QLineEdit", "my-mac"},
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
    }

    void formHasItsWidgets()
    {
        WizardDriver driver;
        driver.goToJoinOptions();
        QCOMPARE(driver.currentPage()->windowTitle(), QString("WizardPage"));
        QCOMPARE(driver.on<QLineEdit>("ZoneEdit")->placeholderText(),
                 QString("Enter the zone name here"));
        compareWithFormRow(driver.currentPage());
    }

    void pageIs582By524()
    {
        WizardDriver driver;
        driver.goToJoinOptions();
        QCOMPARE(driver.currentPage()->minimumSize(), QSize(582, 524));
        QCOMPARE(driver.currentPage()->maximumSize(), QSize(582, 524));
    }

    void initialStates()
    {
        WizardDriver driver;
        driver.goToJoinOptions();
        const QList<QAbstractButton*> buttons =
            driver.currentPage()->findChildren<QAbstractButton*>();
        for (const QAbstractButton* button : buttons) {
            QCOMPARE(button->isChecked(), button->objectName() == "AutoButton");
            QVERIFY2(button->isEnabled(), qPrintable(button->objectName()));
        }
        const QList<QLineEdit*> edits = driver.currentPage()->findChildren<QLineEdit*>();
        for (const QLineEdit* edit : edits)
            QVERIFY2(edit->isEnabled() && !edit->isReadOnly(), qPrintable(edit->objectName()));
    }

    void focusSkipsTheSwitches()
    {
        WizardDriver driver;
        driver.goToJoinOptions();
        for (const char* name :
             {"AdvancedButton", "ForceLeave", "ContainerDNLabel", "PDSLabel", "AliasLabel"})
            QCOMPARE(driver.on<QWidget>(name)->focusPolicy(), Qt::NoFocus);
    }

    void descriptionsAreSmallAndWrap()
    {
        WizardDriver driver;
        driver.goToJoinOptions();
        for (const char* name : {"label_2", "label_4", "label_3"})
            QCOMPARE(driver.on<QLabel>(name)->font().pointSize(), 11);
        for (const char* name : {"label_2", "label_4"}) {
            QVERIFY(driver.on<QLabel>(name)->wordWrap());
            QCOMPARE(driver.on<QLabel>(name)->parentWidget(), driver.on<QWidget>("frame"));
        }
    }

    void toggleHasItsArrowsAndStyle()
    {
        WizardDriver driver;
        driver.goToJoinOptions();
        const auto* toggle = driver.on<QPushButton>("AdvancedButton");
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
        WizardDriver driver;
        driver.goToJoinOptions();
        QCOMPARE(driver.on<QWidget>("AutoButton")->parentWidget(), driver.currentPage());
        QCOMPARE(driver.on<QWidget>("ZoneButton")->parentWidget(), driver.currentPage());
        QCOMPARE(driver.on<QFrame>("frame")->frameStyle(), QFrame::StyledPanel | QFrame::Raised);
        QCOMPARE(driver.on<QFrame>("line")->frameStyle(), QFrame::HLine | QFrame::Sunken);
    }
};

WORLD_TEST_MAIN(TestJoinTypeForm)
#include "tst_jointypeform.moc"

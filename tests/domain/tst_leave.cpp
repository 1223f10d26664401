#include "tests/domain/joinoptions.h"
#include "tests/domain/sentences.h"

#include <QLabel>
#include <QRadioButton>

using PracticeMac::directoryOn;

namespace {

void goToLeave(WizardDriver* wizard, const QString& user = PracticeMac::administrator)
{
    QCOMPARE(wizard->next(), QStringList());
    QCOMPARE(wizard->page(), 6);
    wizard->type("UsernameEdit", user);
    wizard->type("PasswordEdit", PracticeMac::password);
}

// Presses Leave, which succeeds, and reads the report.
void leave(WizardDriver* wizard)
{
    QCOMPARE(wizard->next(), QStringList());
    QCOMPARE(wizard->page(), 7);
    QCOMPARE(visibleTexts(wizard->currentPage()),
             QStringList("You have successfully left your Mac from your Active Directory domain."));
    QVERIFY(!PracticeMac::isJoined());
}

QString binding()
{
    return PracticeMac::run("/usr/sbin/dsconfigad", {"-show"});
}

void bindBySystem(const QString& computerName)
{
    PracticeMac::run("/usr/sbin/dsconfigad",
                     {"-add", PracticeMac::domain, "-computer", computerName, "-username",
                      PracticeMac::administrator, "-password", PracticeMac::password});
}

} // namespace

class TestLeave : public DomainTest
{
    Q_OBJECT

private slots:
    void showsTheMembership()
    {
        joinMac("shown-mac");
        WizardDriver wizard;
        goToLeave(&wizard);
        QCOMPARE(wizard.on<QLabel>("ComputerName_Val")->text(), QString("shown-mac\n"));
        QCOMPARE(wizard.on<QLabel>("ActiveDirectory_Val")->text(), QString("example.test\n"));
        QCOMPARE(wizard.on<QLabel>("JoinedZone_Val")->text(), QString("Auto Zone\n"));
    }

    void removesTheAccount()
    {
        joinMac("removed-mac");
        WizardDriver wizard;
        goToLeave(&wizard);
        wizard.on<QRadioButton>("radioButton_2")->click();
        leave(&wizard);
        QCOMPARE(directoryOn("removed-mac").distinguishedName, QString());
    }

    void tellsAWrongPasswordAndThenDisablesTheAccount()
    {
        joinMac("second-mac");
        WizardDriver wizard;
        goToLeave(&wizard);
        wizard.type("PasswordEdit", "practice.1");
        QCOMPARE(wizard.next(), QStringList(refusedCheck(
                                    Sentence::wrongPassword.arg(PracticeMac::administrator))));
        QCOMPARE(wizard.page(), 6);
        QCOMPARE(directoryOn("second-mac").state, QString("enabled"));
        QVERIFY(PracticeMac::isJoined());
        wizard.type("PasswordEdit", PracticeMac::password);
        leave(&wizard);
        const Computer computer = directoryOn("second-mac");
        QCOMPARE(computer.distinguishedName, "CN=second-mac,CN=Computers," + PracticeMac::base);
        QCOMPARE(computer.state, QString("disabled"));
    }

    void tellsThatTheAccountIsNotHisToRemove()
    {
        joinMac("guarded-mac");
        WizardDriver wizard;
        goToLeave(&wizard, "berlin.admin");
        wizard.on<QRadioButton>("radioButton_2")->click();
        const QStringList warnings = wizard.next();
        QCOMPARE(warnings.size(), 1);
        QVERIFY2(
            warnings.at(0).startsWith("The computer account guarded-mac could not be removed. ") &&
                warnings.at(0).contains("Insufficient permissions"),
            qPrintable(warnings.at(0)));
        QCOMPARE(wizard.page(), 6);
        QVERIFY(PracticeMac::isJoined());
        QCOMPARE(directoryOn("guarded-mac").state, QString("enabled"));
    }

    void unbindsThenJoins()
    {
        bindBySystem("bound-mac");
        QCOMPARE(directoryOn("bound-mac").state, QString("enabled"));

        WizardDriver wizard;
        wizard.next();
        QCOMPARE(wizard.page(), 2);
        QCOMPARE(wizard.on<QLabel>("ADName")->text(), PracticeMac::domain);
        wizard.type("ADUser", PracticeMac::administrator);
        wizard.type("ADPass", PracticeMac::password);
        QCOMPARE(wizard.next(),
                 QStringList("You are unbound from Apple's Active Directory plugin."));
        QCOMPARE(directoryOn("bound-mac").distinguishedName, QString());
        QCOMPARE(binding(), QString());

        QCOMPARE(wizard.page(), 3);
        QCOMPARE(
            wizard.texts({"DomainEdit", "UsernameEdit", "PasswordEdit"}),
            QStringList({PracticeMac::domain, PracticeMac::administrator, PracticeMac::password}));
        QVERIFY(!wizard.button(QWizard::BackButton)->isEnabled());
        QCOMPARE(wizard.next(), QStringList());
        wizard.type("ComputerNameEdit", "freed-mac");
        QCOMPARE(wizard.next(), QStringList());
        QCOMPARE(wizard.page(), 7);
        QCOMPARE(directoryOn("freed-mac").state, QString("enabled"));
    }

    void staysBoundAfterAWrongPassword()
    {
        bindBySystem("tied-mac");
        WizardDriver wizard;
        wizard.next();
        QCOMPARE(wizard.page(), 2);
        wizard.type("ADUser", PracticeMac::administrator);
        wizard.type("ADPass", "practice.1");
        QCOMPARE(wizard.next(), QStringList(refusedCheck(
                                    Sentence::wrongPassword.arg(PracticeMac::administrator))));
        QCOMPARE(wizard.page(), 2);
        QVERIFY(binding().contains("Active Directory Domain          = example.test\n"));
        QCOMPARE(directoryOn("tied-mac").state, QString("enabled"));
    }
};

DOMAIN_TEST_MAIN(TestLeave)
#include "tst_leave.moc"

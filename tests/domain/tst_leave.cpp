#include "tests/domain/joinoptions.h"
#include "tests/domain/sentences.h"

#include <QLabel>

using PracticeMac::directoryOn;

namespace {

void goToLeave(WizardDriver* wizard, const QString& user = PracticeMac::administrator)
{
    QCOMPARE(wizard->next(), QStringList());
    QCOMPARE(wizard->page(), 6);
    wizard->enterUser(user, PracticeMac::password);
}

// Presses the button with a wrong password, which is told.
void refuseWrongPassword(WizardDriver* wizard)
{
    const int page = wizard->page();
    wizard->enterUser(PracticeMac::administrator, "practice.1");
    QCOMPARE(wizard->next(),
             QStringList(refusedCheck(Sentence::wrongPassword.arg(PracticeMac::administrator))));
    QCOMPARE(wizard->page(), page);
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

} // namespace

class TestLeave : public DomainTest
{
    Q_OBJECT

private slots:
    void showsTheMembershipAndRemovesTheAccount()
    {
        joinMac("removed-mac");
        WizardDriver wizard;
        goToLeave(&wizard);
        QCOMPARE(wizard.on<QLabel>("ComputerName_Val")->text(), QString("removed-mac\n"));
        QCOMPARE(wizard.on<QLabel>("ActiveDirectory_Val")->text(), QString("example.test\n"));
        QCOMPARE(wizard.on<QLabel>("JoinedZone_Val")->text(), QString("Auto Zone\n"));
        wizard.click("radioButton_2");
        leave(&wizard);
        QCOMPARE(directoryOn("removed-mac").distinguishedName, QString());
    }

    void tellsAWrongPasswordAndThenDisablesTheAccount()
    {
        joinMac("second-mac");
        WizardDriver wizard;
        goToLeave(&wizard);
        refuseWrongPassword(&wizard);
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
        wizard.click("radioButton_2");
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

    void tellsAWrongPasswordThenUnbindsAndJoins()
    {
        PracticeMac::run("/usr/sbin/dsconfigad",
                         {"-add", PracticeMac::domain, "-computer", "bound-mac", "-username",
                          PracticeMac::administrator, "-password", PracticeMac::password});
        WizardDriver wizard;
        wizard.next();
        QCOMPARE(wizard.page(), 2);
        QCOMPARE(wizard.on<QLabel>("ADName")->text(), PracticeMac::domain);
        refuseWrongPassword(&wizard);
        QVERIFY(binding().contains("Active Directory Domain          = example.test\n"));
        QCOMPARE(directoryOn("bound-mac").state, QString("enabled"));

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
};

DOMAIN_TEST_MAIN(TestLeave)
#include "tst_leave.moc"

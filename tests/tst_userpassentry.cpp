#include "pages/userpassentry.h"
#include "tests/support/formtest.h"
#include "tests/support/wizarddriver.h"

#include <QLabel>

class TestUserPassEntry : public WorldTest
{
    Q_OBJECT

private slots:
    void withoutTheInterpreterTheShellsComplaintIsShown();
    void aCheckThatCantBeStartedLetsTheUserOn();
    void everyRefusalShowsTheFirstLineAndStays_data();
    void everyRefusalShowsTheFirstLineAndStays();
    void aRefusalKeepsTheEntries();
    void aPassingCheckLeadsToTheJoinOptions();
    void theScriptGetsDomainUserAndPassword();
    void emptyEntriesReachTheScriptAsEmptyArguments();
    void aPasswordWithBlanksIsOneArgument();
    void theScriptsErrorOutputIsReadAsWell();
    void formHasItsName();
    void formHasItsWidgets_data();
    void formHasItsWidgets();
    void passwordIsHiddenAndUpTo32767Characters();
    void explanationWraps();
    void firstEntryOffersOnlyAdministrator();
    void enteringAgainEmptiesDomainAndPassword();
    void fieldsAreTheEditsTexts();
};

void TestUserPassEntry::withoutTheInterpreterTheShellsComplaintIsShown()
{
    World::removeTool("mvedit");
    WizardDriver driver;
    driver.goToCredentials();
    const QStringList warnings = driver.next();
    QCOMPARE(warnings.size(), 1);
    QVERIFY(warnings.at(0).startsWith(refusedCheck("")));
    QVERIFY2(warnings.at(0).contains("/usr/local/bin/mvedit: not found"), qPrintable(warnings[0]));
    QCOMPARE(driver.page(), 3);
}

void TestUserPassEntry::aCheckThatCantBeStartedLetsTheUserOn()
{
    WizardDriver driver;
    driver.goToCredentials();
    World::forgetCalls();
    // The page alone: the sanitizers need descriptors to look at windows.
    auto* page = driver.currentPage();
    bool passed = false;
    const QStringList warnings = warningsDuring([&] {
        const NoDescriptors none;
        passed = page->validatePage();
    });
    QCOMPARE(warnings, QStringList());
    QVERIFY(passed);
    QCOMPARE(World::calls().size(), 0);
}

void TestUserPassEntry::everyRefusalShowsTheFirstLineAndStays_data()
{
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<int>("exitStatus");
    QTest::addColumn<int>("signal");
    QTest::addColumn<QString>("shown");
    QTest::newRow("two lines") << QByteArray("Wrong password\nTry again\n") << 1 << 0
                               << "Wrong password";
    QTest::newRow("one line, not ended") << QByteArray("Unknown user") << 2 << 0 << "Unknown user";
    QTest::newRow("nothing") << QByteArray() << 1 << 0 << "";
    QTest::newRow("an empty line first") << QByteArray("\nNo such domain\n") << 255 << 0 << "";
    QTest::newRow("a place marker") << QByteArray("%1 of %2\n") << 1 << 0 << "%1 of %2";
    QTest::newRow("killed by a signal") << QByteArray("Halfway\n") << 0 << 9 << "Halfway";
}

void TestUserPassEntry::everyRefusalShowsTheFirstLineAndStays()
{
    QFETCH(QByteArray, output);
    QFETCH(int, exitStatus);
    QFETCH(int, signal);
    QFETCH(QString, shown);
    World::answer("mvedit", {output, "", exitStatus, signal});
    WizardDriver driver;
    driver.goToCredentials();
    driver.enterCredentials("example.test", "admin", "secret");
    QCOMPARE(driver.next(), QStringList{refusedCheck(shown)});
    QCOMPARE(driver.page(), 3);
}

void TestUserPassEntry::aRefusalKeepsTheEntries()
{
    World::answer("mvedit", {"Wrong password\n", "", 1});
    WizardDriver driver;
    driver.goToCredentials();
    driver.enterCredentials("example.test", "admin", "secret");
    driver.next();
    QCOMPARE(driver.on<QLineEdit>("DomainEdit")->text(), QString("example.test"));
    QCOMPARE(driver.on<QLineEdit>("UsernameEdit")->text(), QString("admin"));
    QCOMPARE(driver.on<QLineEdit>("PasswordEdit")->text(), QString("secret"));
}

void TestUserPassEntry::aPassingCheckLeadsToTheJoinOptions()
{
    World::answer("mvedit", {"A remark that nobody needs\n", ""});
    WizardDriver driver;
    driver.goToCredentials();
    QCOMPARE(driver.next(), QStringList());
    QCOMPARE(driver.page(), 4);
}

void TestUserPassEntry::theScriptGetsDomainUserAndPassword()
{
    WizardDriver driver;
    driver.goToCredentials();
    World::forgetCalls();
    driver.enterCredentials("example.test", "admin", "secret");
    driver.next();
    QCOMPARE(World::calls().size(), 1);
    QCOMPARE(World::calls().at(0).path, QString("/usr/local/bin/mvedit"));
    QCOMPARE(World::calls().at(0).words(), credentialCheck("example.test", "admin", "secret"));
}

void TestUserPassEntry::emptyEntriesReachTheScriptAsEmptyArguments()
{
    WizardDriver driver;
    driver.goToCredentials();
    driver.enterCredentials("", "", "");
    QVERIFY(driver.button(QWizard::NextButton)->isEnabled());
    driver.next();
    QCOMPARE(World::callsOf("mvedit").at(0).words(), credentialCheck("", "", ""));
}

void TestUserPassEntry::aPasswordWithBlanksIsOneArgument()
{
    WizardDriver driver;
    driver.goToCredentials();
    driver.enterCredentials("example.test", "admin", " two  words ");
    driver.next();
    QCOMPARE(World::callsOf("mvedit").at(0).words(),
             credentialCheck("example.test", "admin", " two  words "));
}

void TestUserPassEntry::theScriptsErrorOutputIsReadAsWell()
{
    World::answer("mvedit", {"then the output\n", "first the errors\n", 1});
    WizardDriver driver;
    driver.goToCredentials();
    QCOMPARE(driver.next(), QStringList{refusedCheck("first the errors")});
}

// In the wizard the page has the wizard's name for it.
void TestUserPassEntry::formHasItsName()
{
    const UserPassEntry page;
    QCOMPARE(page.objectName(), QString("UserPassEntry"));
}

void TestUserPassEntry::formHasItsWidgets_data()
{
    addFormRows({{"label", "QLabel", "Active Directory Domain:"},
                 {"DomainEdit", "QLineEdit", ""},
                 {"label_2", "QLabel", "Active Directory Username:"},
                 {"UsernameEdit", "QLineEdit", "Administrator"},
                 {"label_3", "QLabel", "Active Directory Password:"},
                 {"PasswordEdit", "QLineEdit", ""},
                 {"label_4", "QLabel",
                  "Please enter the name of your Active Directory domain to join, and an Active "
                  "Directory administrator's username and password."}});
}

void TestUserPassEntry::formHasItsWidgets()
{
    WizardDriver driver;
    driver.goToCredentials();
    QCOMPARE(driver.currentPage()->windowTitle(), QString("WizardPage"));
    compareWithFormRow(driver.currentPage());
}

void TestUserPassEntry::passwordIsHiddenAndUpTo32767Characters()
{
    WizardDriver driver;
    driver.goToCredentials();
    QCOMPARE(driver.on<QLineEdit>("PasswordEdit")->echoMode(), QLineEdit::Password);
    driver.type("PasswordEdit", QString(32768, 'x'));
    QCOMPARE(driver.on<QLineEdit>("PasswordEdit")->text().size(), 32767);
}

void TestUserPassEntry::explanationWraps()
{
    WizardDriver driver;
    driver.goToCredentials();
    QVERIFY(driver.on<QLabel>("label_4")->wordWrap());
}

void TestUserPassEntry::firstEntryOffersOnlyAdministrator()
{
    WizardDriver driver;
    driver.goToCredentials();
    QCOMPARE(driver.on<QLineEdit>("DomainEdit")->text(), QString());
    QCOMPARE(driver.on<QLineEdit>("UsernameEdit")->text(), QString("Administrator"));
    QCOMPARE(driver.on<QLineEdit>("PasswordEdit")->text(), QString());
}

void TestUserPassEntry::enteringAgainEmptiesDomainAndPassword()
{
    WizardDriver driver;
    driver.goToCredentials();
    driver.enterCredentials("example.test", "admin", "secret");
    driver.back();
    driver.goToCredentials();
    QCOMPARE(driver.page(), 3);
    QCOMPARE(driver.on<QLineEdit>("DomainEdit")->text(), QString());
    QCOMPARE(driver.on<QLineEdit>("UsernameEdit")->text(), QString("Administrator"));
    QCOMPARE(driver.on<QLineEdit>("PasswordEdit")->text(), QString());
}

void TestUserPassEntry::fieldsAreTheEditsTexts()
{
    WizardDriver driver;
    driver.goToCredentials();
    driver.enterCredentials("example.test", "admin", "secret");
    QCOMPARE(driver.wizard.field("DomainName").toString(), QString("example.test"));
    QCOMPARE(driver.wizard.field("DomainUsername").toString(), QString("admin"));
    QCOMPARE(driver.wizard.field("DomainPassword").toString(), QString("secret"));
}

WORLD_TEST_MAIN(TestUserPassEntry)
#include "tst_userpassentry.moc"

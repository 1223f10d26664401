#include "pages/userpassentry.h"
#include "tests/support/formtest.h"
#include "tests/support/wizarddriver.h"

namespace {

class CredentialsDriver : public WizardDriver
{
public:
    CredentialsDriver()
    {
        goToCredentials();
    }
    QStringList entries() const
    {
        return texts({"DomainEdit", "UsernameEdit", "PasswordEdit"});
    }
};

} // namespace

class TestUserPassEntry : public WorldTest
{
    Q_OBJECT

private slots:
    void withoutTheInterpreterTheShellsComplaintIsShown()
    {
        World::removeTool("mvedit");
        CredentialsDriver driver;
        const QStringList warnings = driver.next();
        QCOMPARE(warnings.size(), 1);
        QVERIFY(warnings.at(0).startsWith(refusedCheck("")));
        QVERIFY2(warnings.at(0).contains("/usr/local/bin/mvedit: not found"),
                 qPrintable(warnings[0]));
        QCOMPARE(driver.page(), 3);
    }

    void aCheckThatCantBeStartedLetsTheUserOn()
    {
        CredentialsDriver driver;
        World::forgetCalls();
        // Next isn't pressed: it runs code of windows, for which the sanitizers open a pipe, and
        // there is no descriptor for it.
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

    void everyRefusalShowsTheFirstLineAndStays_data()
    {
        addColumns<QByteArray, int, int, QString>("output", "exitStatus", "signal", "shown");
        addRow("two lines", QByteArray("Wrong password\nTry again\n"), 1, 0, "Wrong password");
        addRow("one line, not ended", QByteArray("Unknown user"), 2, 0, "Unknown user");
        addRow("nothing", QByteArray(), 1, 0, "");
        addRow("an empty line first", QByteArray("\nNo such domain\n"), 255, 0, "");
        addRow("a place marker", QByteArray("%1 of %2\n"), 1, 0, "%1 of %2");
        addRow("killed by a signal", QByteArray("Halfway\n"), 0, 9, "Halfway");
    }

    void everyRefusalShowsTheFirstLineAndStays()
    {
        QFETCH(QByteArray, output);
        QFETCH(int, exitStatus);
        QFETCH(int, signal);
        QFETCH(QString, shown);
        World::answer("mvedit", {output, "", exitStatus, signal});
        CredentialsDriver driver;
        driver.enterCredentials();
        QCOMPARE(driver.next(), QStringList{refusedCheck(shown)});
        QCOMPARE(driver.page(), 3);
    }

    void aRefusalKeepsTheEntries()
    {
        World::answer("mvedit", {"Wrong password\n", "", 1});
        CredentialsDriver driver;
        driver.enterCredentials();
        driver.next();
        QCOMPARE(driver.entries(), QStringList({"example.test", "admin", "secret"}));
    }

    void aPassingCheckLeadsToTheJoinOptions()
    {
        World::answer("mvedit", {"A remark that nobody needs\n", ""});
        CredentialsDriver driver;
        QCOMPARE(driver.next(), QStringList());
        QCOMPARE(driver.page(), 4);
    }

    void theScriptGetsDomainUserAndPassword()
    {
        CredentialsDriver driver;
        World::forgetCalls();
        driver.enterCredentials();
        driver.next();
        QCOMPARE(World::calls().size(), 1);
        QCOMPARE(World::calls().at(0).path, QString("/usr/local/bin/mvedit"));
        QCOMPARE(World::calls().at(0).words(), credentialCheck("example.test", "admin", "secret"));
    }

    void emptyEntriesReachTheScriptAsEmptyArguments()
    {
        CredentialsDriver driver;
        driver.enterCredentials("", "", "");
        QVERIFY(driver.button(QWizard::NextButton)->isEnabled());
        driver.next();
        QCOMPARE(World::callsOf("mvedit").at(0).words(), credentialCheck("", "", ""));
    }

    void theScriptsErrorOutputIsReadAsWell()
    {
        World::answer("mvedit", {"then the output\n", "first the errors\n", 1});
        CredentialsDriver driver;
        QCOMPARE(driver.next(), QStringList{refusedCheck("first the errors")});
    }

    // Outside the wizard, whose form gives the page another name.
    void formHasItsName()
    {
        const UserPassEntry page;
        QCOMPARE(page.objectName(), QString("UserPassEntry"));
    }

    void formHasItsWidgets()
    {
        CredentialsDriver driver;
        compareForm(driver.currentPage(),
                    {{"label", "QLabel", "Active Directory Domain:"},
                     {"DomainEdit", "QLineEdit", ""},
                     {"label_2", "QLabel", "Active Directory Username:"},
                     {"UsernameEdit", "QLineEdit", "Administrator"},
                     {"label_3", "QLabel", "Active Directory Password:"},
                     {"PasswordEdit", "QLineEdit", ""},
                     {"label_4", "QLabel",
                      "Please enter the name of your Active Directory domain to join, and an "
                      "Active Directory administrator's username and password."}});
    }

    void passwordIsHiddenAndUpTo32767Characters()
    {
        CredentialsDriver driver;
        QCOMPARE(driver.on<QLineEdit>("PasswordEdit")->echoMode(), QLineEdit::Password);
        driver.type("PasswordEdit", QString(32768, 'x'));
        QCOMPARE(driver.text("PasswordEdit").size(), 32767);
    }

    void enteringAgainEmptiesDomainAndPassword()
    {
        CredentialsDriver driver;
        driver.enterCredentials();
        driver.back();
        driver.goToCredentials();
        QCOMPARE(driver.page(), 3);
        QCOMPARE(driver.entries(), QStringList({"", "Administrator", ""}));
    }
};

WORLD_TEST_MAIN(TestUserPassEntry)
#include "tst_userpassentry.moc"

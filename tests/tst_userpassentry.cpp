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
        QCOMPARE(driver.entries(), QStringList({"example.test", "admin", "secret"}));
    }

    void aPassingCheckLeadsToTheJoinOptions()
    {
        World::answer("mvedit", {"A remark that nobody needs\n", ""});
        CredentialsDriver driver;
        QCOMPARE(driver.next(), QStringList());
        QCOMPARE(driver.page(), 4);
    }

    void aPasswordWithSpacesReachesTheScriptAsOneArgument()
    {
        CredentialsDriver driver;
        driver.enterCredentials("example.test", "admin", " two  words ");
        driver.next();
        QCOMPARE(World::callsOf("mvedit").last().words(),
                 credentialCheck("example.test", "admin", " two  words "));
    }

    void eachEntryBeginsWithAdministratorAlone()
    {
        CredentialsDriver driver;
        QCOMPARE(driver.entries(), QStringList({"", "Administrator", ""}));
        driver.enterCredentials();
        driver.back();
        driver.goToCredentials();
        QCOMPARE(driver.page(), 3);
        QCOMPARE(driver.entries(), QStringList({"", "Administrator", ""}));
    }
};

WORLD_TEST_MAIN(TestUserPassEntry)
#include "tst_userpassentry.moc"

#include "tests/support/wizarddriver.h"

#include <QLabel>

namespace {

const QString longest(32767, 'x');

const QString unbound = QStringLiteral("You are unbound from Apple's Active Directory plugin.");

// Values that a shell, a template or a fixed buffer could take for something else.
void addValues()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("blanks") << " two  words ";
    QTest::newRow("tab") << "two\twords";
    QTest::newRow("double quotes") << "the \"best\" name";
    QTest::newRow("variables") << "$HOME ${PATH} $(id) $1 $$";
    QTest::newRow("backquotes") << "`id`";
    QTest::newRow("backslashes") << "a\\b\\\\c\\";
    QTest::newRow("shell operators") << "a;b&c|d>e<f(g)h{i}#j!k*l?m[n]~";
    QTest::newRow("place markers") << "%1 %2 %3 %4 %5 %6 %7 %8 %9 %10 %L1 %%";
    QTest::newRow("print formats") << "%s %n %d";
    QTest::newRow("non-ASCII") << QString::fromUtf8("größe 漢字 пароль 🔑");
    QTest::newRow("an option") << "--help";
}

void addValuesAndTheLongest()
{
    addValues();
    QTest::newRow("32,767 characters") << longest;
}

// No shell is on the way of these.
void addValuesOfArguments()
{
    addValuesAndTheLongest();
    QTest::newRow("32,767 non-ASCII characters") << QString(32767, QChar(0x6f22));
    QTest::newRow("single quotes") << "it's 'quoted' ''";
}

// The arguments that a tool got when it ran last.
QStringList lastArguments(const QString& tool)
{
    return World::callsOf(tool).last().arguments;
}

} // namespace

class TestHostileValues : public WorldTest
{
    Q_OBJECT

private slots:
    void aLineTooLongForTheShellCountsAsPassed();
    void anOpenSingleQuoteFailsTheCheck();
    void singleQuotesAreTheShellsToRead_data();
    void singleQuotesAreTheShellsToRead();
    void theCheckGetsEachValueWhole_data();
    void theCheckGetsEachValueWhole();
    void theJoinGetsEachCredentialWhole_data();
    void theJoinGetsEachCredentialWhole();
    void theJoinGetsEachOptionWhole_data();
    void theJoinGetsEachOptionWhole();
    void theUnbindGetsEachValueWhole_data();
    void theUnbindGetsEachValueWhole();
    void theLeaveGetsEachValueWhole_data();
    void theLeaveGetsEachValueWhole();
    void theBoundDomainReachesTheCheckWhole_data();
    void theBoundDomainReachesTheCheckWhole();
    void theJoinedDomainReachesTheCheckWhole_data();
    void theJoinedDomainReachesTheCheckWhole();
};

void TestHostileValues::aLineTooLongForTheShellCountsAsPassed()
{
    WizardDriver driver;
    driver.goToCredentials();
    const QString wide(32767, QChar(0x6f22));
    driver.enterCredentials(wide, wide, wide);
    QCOMPARE(driver.next(), QStringList());
    QCOMPARE(World::callsOf("mvedit").size(), 0);
    QCOMPARE(driver.page(), 4);
}

void TestHostileValues::anOpenSingleQuoteFailsTheCheck()
{
    WizardDriver driver;
    driver.goToCredentials();
    driver.enterCredentials("example.test", "o'brien", "secret");
    QCOMPARE(driver.next(), QStringList{refusedCheck("")});
    QCOMPARE(World::callsOf("mvedit").size(), 0);
    QCOMPARE(driver.page(), 3);
}

void TestHostileValues::singleQuotesAreTheShellsToRead_data()
{
    QTest::addColumn<QString>("password");
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("a pair vanishes") << "se''cret" << QStringList{"secret"};
    QTest::newRow("a value is split between quotes") << "a' 'b" << QStringList{"a", "b"};
    QTest::newRow("what is between quotes is expanded")
        << "a'\"$((6*7))\"'b" << QStringList{"a42b"};
}

void TestHostileValues::singleQuotesAreTheShellsToRead()
{
    QFETCH(QString, password);
    QFETCH(QStringList, arguments);
    WizardDriver driver;
    driver.goToCredentials();
    driver.enterCredentials("example.test", "admin", password);
    driver.next();
    QCOMPARE(lastArguments("mvedit").mid(1), QStringList({"example.test", "admin"}) + arguments);
}

void TestHostileValues::theCheckGetsEachValueWhole_data()
{
    addValuesAndTheLongest();
}

void TestHostileValues::theCheckGetsEachValueWhole()
{
    QFETCH(QString, value);
    WizardDriver driver;
    driver.goToCredentials();
    driver.enterCredentials(value, value, value);
    driver.next();
    QCOMPARE(World::callsOf("mvedit").last().words(), credentialCheck(value, value, value));
}

void TestHostileValues::theJoinGetsEachCredentialWhole_data()
{
    addValuesAndTheLongest();
    // Passes the check, in which its quotes are the shell's.
    QTest::newRow("pairs of single quotes") << "it''s";
}

void TestHostileValues::theJoinGetsEachCredentialWhole()
{
    QFETCH(QString, value);
    WizardDriver driver;
    driver.goToJoinOptions(value, value, value);
    QCOMPARE(driver.page(), 4);
    driver.next();
    QCOMPARE(lastArguments("gui_helper_tool").mid(1),
             QStringList({"-u", value, "-p", value, value, "-w", "-n", "my-mac"}));
}

void TestHostileValues::theJoinGetsEachOptionWhole_data()
{
    addValuesOfArguments();
}

void TestHostileValues::theJoinGetsEachOptionWhole()
{
    QFETCH(QString, value);
    WizardDriver driver;
    driver.goToJoinOptions();
    for (const char* button :
         {"ZoneButton", "AdvancedButton", "ContainerDNLabel", "PDSLabel", "AliasLabel"})
        driver.click(button);
    for (const char* edit :
         {"ZoneEdit", "ContainerDNEdit", "PDSEdit", "AliasEdit", "ComputerNameEdit"})
        driver.type(edit, value);
    driver.next();
    QCOMPARE(lastArguments("gui_helper_tool").mid(6),
             QStringList({"-z", value, "-c", value, "-s", value, "-a", value, "-n", value}));
}

void TestHostileValues::theUnbindGetsEachValueWhole_data()
{
    addValuesAndTheLongest();
}

void TestHostileValues::theUnbindGetsEachValueWhole()
{
    QFETCH(QString, value);
    World::setBound();
    WizardDriver driver;
    driver.next();
    driver.type("ADUser", value);
    driver.type("ADPass", value);
    QCOMPARE(driver.next(), QStringList{unbound});
    QCOMPARE(World::callsOf("mvedit").last().words(),
             credentialCheck("example.test", value, value));
    QCOMPARE(lastArguments("dsconfigad"), QStringList({"-r", "-f", "-u", value, "-p", value}));
}

void TestHostileValues::theLeaveGetsEachValueWhole_data()
{
    addValuesAndTheLongest();
}

void TestHostileValues::theLeaveGetsEachValueWhole()
{
    QFETCH(QString, value);
    World::setJoined();
    WizardDriver driver;
    driver.next();
    driver.type("UsernameEdit", value);
    driver.type("PasswordEdit", value);
    driver.next();
    QCOMPARE(World::callsOf("mvedit").last().words(),
             credentialCheck("example.test", value, value));
    QCOMPARE(lastArguments("gui_helper_tool"),
             QStringList({"/usr/local/sbin/mvleave", "-u", value, "-p", value}));
}

void TestHostileValues::theBoundDomainReachesTheCheckWhole_data()
{
    addValues();
}

void TestHostileValues::theBoundDomainReachesTheCheckWhole()
{
    QFETCH(QString, value);
    World::setBound(value.toUtf8());
    WizardDriver driver;
    driver.next();
    QCOMPARE(driver.on<QLabel>("ADName")->text(), value.trimmed());
    driver.next();
    QCOMPARE(World::callsOf("mvedit").last().words(), credentialCheck(value.trimmed(), "", ""));
    QCOMPARE(driver.on<QLineEdit>("DomainEdit")->text(), value.trimmed());
}

void TestHostileValues::theJoinedDomainReachesTheCheckWhole_data()
{
    addValuesAndTheLongest();
}

void TestHostileValues::theJoinedDomainReachesTheCheckWhole()
{
    QFETCH(QString, value);
    World::setJoined(value.toUtf8() + '\n');
    WizardDriver driver;
    driver.next();
    QCOMPARE(driver.on<QLabel>("ActiveDirectory_Val")->text(), value + '\n');
    driver.next();
    QCOMPARE(World::callsOf("mvedit").last().words(), credentialCheck(value.trimmed(), "", ""));
}

WORLD_TEST_MAIN(TestHostileValues)
#include "tst_hostilevalues.moc"

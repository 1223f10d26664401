#include "browser/cnbrowserhelper.h"
#include "tests/support/wizarddriver.h"

#include <QLabel>
#include <QSignalSpy>

namespace {

// Rows of values that a shell or a template could misread.
void addValues()
{
    addColumns<QString>("value");
    addRow("blanks", " two  words ");
    addRow("tab", "two\twords");
    addRow("double quotes", "the \"best\" name");
    addRow("variables", "$HOME ${PATH} $(id) $1 $$");
    addRow("backquotes", "`id`");
    addRow("backslashes", "a\\b\\\\c\\");
    addRow("shell operators", "a;b&c|d>e<f(g)h{i}#j!k*l?m[n]~");
    addRow("place markers", "%1 %2 %3 %4 %5 %6 %7 %8 %9 %10 %L1 %%");
    addRow("print formats", "%s %n %d");
    addRow("non-ASCII", "größe 漢字 пароль 🔑");
    addRow("an option", "--help");
    addRow("32,767 characters", QString(32767, 'x'));
}

// Also values that a shell's line can't hold: too long ones, and single quotes.
void addValuesOfArguments()
{
    addValues();
    addRow("32,767 non-ASCII characters", QString(32767, QChar(0x6f22)));
    addRow("single quotes", "it's 'quoted' ''");
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
    void aLineTooLongForTheShellCountsAsPassed()
    {
        WizardDriver driver;
        driver.goToCredentials();
        // Three times 96 KiB. The shell gets its line as one argument, of at most 128 KiB on Linux.
        const QString wide(32767, QChar(0x6f22));
        driver.enterCredentials(wide, wide, wide);
        QCOMPARE(driver.next(), QStringList());
        QCOMPARE(World::callsOf("mvedit").size(), 0);
        QCOMPARE(driver.page(), 4);
    }

    void anOpenSingleQuoteFailsTheCheck()
    {
        WizardDriver driver;
        driver.goToCredentials();
        driver.enterCredentials("example.test", "o'brien", "secret");
        QCOMPARE(driver.next(), QStringList{refusedCheck("")});
        QCOMPARE(World::callsOf("mvedit").size(), 0);
        QCOMPARE(driver.page(), 3);
    }

    void singleQuotesAreTheShellsToRead_data()
    {
        addColumns<QString, QStringList>("password", "arguments");
        addRow("a pair vanishes", "se''cret", QStringList{"secret"});
        addRow("a value is split between quotes", "a' 'b", QStringList{"a", "b"});
        addRow("what is between quotes is expanded", "a'\"$((6*7))\"'b", QStringList{"a42b"});
    }

    void singleQuotesAreTheShellsToRead()
    {
        QFETCH(QString, password);
        QFETCH(QStringList, arguments);
        WizardDriver driver;
        driver.goToCredentials();
        driver.enterCredentials("example.test", "admin", password);
        driver.next();
        QCOMPARE(lastArguments("mvedit").mid(1),
                 QStringList({"example.test", "admin"}) + arguments);
    }

    void theCheckAndTheJoinGetEachCredentialWhole_data()
    {
        addValues();
        // The check's shell drops each pair, and no quote stays open.
        addRow("pairs of single quotes", "it''s");
    }

    void theCheckAndTheJoinGetEachCredentialWhole()
    {
        QFETCH(QString, value);
        WizardDriver driver;
        driver.goToJoinOptions(value, value, value);
        const QString checked = QString(value).remove("''");
        QCOMPARE(World::callsOf("mvedit").last().words(),
                 credentialCheck(checked, checked, checked));
        QCOMPARE(driver.page(), 4);
        driver.next();
        QCOMPARE(lastArguments("gui_helper_tool").mid(1),
                 QStringList({"-u", value, "-p", value, value, "-w", "-n", "my-mac"}));
    }

    void theContainerScriptGetsEachValueWhole_data()
    {
        addValuesOfArguments();
        addRow("nothing", "");
        addRow("line end", "one\ntwo");
    }

    void theContainerScriptGetsEachValueWhole()
    {
        QFETCH(QString, value);
        cnbrowserhelper helper;
        QSignalSpy obtained(&helper, &cnbrowserhelper::cnDataObtained);
        // The value is a whole argument, the end of one, and the start of one.
        helper.setDomainInfo(value, "u" + value, value + "p");
        helper.getCNData();
        QVERIFY(obtained.wait(20000));
        QCOMPARE(World::calls().size(), 1);
        QCOMPARE(World::calls().at(0).path, QString("/usr/local/bin/mvedit"));
        QCOMPARE(
            World::calls().at(0).arguments,
            QStringList({"/Applications/Utilities/Morvanta/Morvanta Join Assistant.app/Contents/"
                         "Resources/mvedit_file_arg.tcl",
                         value, "u" + value, value + "p"}));
    }

    void theJoinGetsEachOptionWhole_data()
    {
        addValuesOfArguments();
    }

    void theJoinGetsEachOptionWhole()
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

    void theUnbindGetsEachValueWhole_data()
    {
        addValues();
    }

    void theUnbindGetsEachValueWhole()
    {
        QFETCH(QString, value);
        // Of dsconfigad's line only 511 bytes are taken: the longest domain would be cut.
        const QString domain = value.left(100);
        World::setBound(domain.toUtf8());
        WizardDriver driver;
        driver.next();
        QCOMPARE(driver.on<QLabel>("ADName")->text(), domain.trimmed());
        driver.enterUser(value, value);
        driver.next();
        QCOMPARE(World::callsOf("mvedit").last().words(),
                 credentialCheck(domain.trimmed(), value, value));
        QCOMPARE(driver.text("DomainEdit"), domain.trimmed());
        QCOMPARE(lastArguments("dsconfigad"), QStringList({"-r", "-f", "-u", value, "-p", value}));
    }

    void theLeaveGetsEachValueWhole_data()
    {
        addValues();
    }

    void theLeaveGetsEachValueWhole()
    {
        QFETCH(QString, value);
        World::setJoined(value.toUtf8() + '\n');
        WizardDriver driver;
        driver.next();
        QCOMPARE(driver.on<QLabel>("ActiveDirectory_Val")->text(), value + '\n');
        driver.enterUser(value, value);
        driver.next();
        QCOMPARE(World::callsOf("mvedit").last().words(),
                 credentialCheck(value.trimmed(), value, value));
        QCOMPARE(lastArguments("gui_helper_tool"),
                 QStringList({"/usr/local/sbin/mvleave", "-u", value, "-p", value}));
    }
};

WORLD_TEST_MAIN(TestHostileValues)
#include "tst_hostilevalues.moc"

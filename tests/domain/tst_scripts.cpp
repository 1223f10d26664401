#include "tests/domain/practicemac.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

// The two scripts of the bundle, run as the program runs them, by the agent's interpreter.
class TestScripts : public DomainTest
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void acceptsValidCredentials_data();
    void acceptsValidCredentials();
    void saysWhatToDo_data();
    void saysWhatToDo();
    void saysThatTheClockIsTooFarOff();
    void saysThatNoDnsServerAnswers();
    void saysThatAToolIsMissing();
    void endsAToolThatIsSilent();
    void asksTheSecondControllerWhenTheFirstHasGone();
    void listsNothingWithWrongCredentials();
    void listsTheWholeDirectoryInPages();
    void showsThePasswordToNobody();

private:
    // Puts a tool of this text before the system's own of that name.
    void standIn(const QString& tool, const QByteArray& script);

    QScopedPointer<QTemporaryDir> tools;
    QScopedPointer<QTemporaryDir> temporaries; // where the scripts make theirs
};

namespace {

struct Result {
    int status;
    QString output;
    QString errors;
};

Result runScript(const QString& script, const QStringList& arguments)
{
    const QString path =
        "/Applications/Utilities/Morvanta/Morvanta Join Assistant.app/Contents/Resources/" + script;
    QProcess process;
    process.start("/usr/local/bin/mvedit", QStringList(path) + arguments);
    if (!process.waitForFinished(30000))
        qFatal("%s did not end", qPrintable(script));
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

Result check(const QString& domain, const QString& user,
             const QString& password = PracticeMac::password)
{
    return runScript("check_domain_cred.tcl", {domain, user, password});
}

Result list(const QString& password = PracticeMac::password)
{
    return runScript("mvedit_file_arg.tcl",
                     {PracticeMac::domain, PracticeMac::administrator, password});
}

QString firstLine(const Result& result)
{
    return result.errors.section('\n', 0, 0);
}

QStringList sortedLines(const QString& text)
{
    QStringList lines = text.split('\n', Qt::SkipEmptyParts);
    lines.sort();
    return lines;
}

const char* const path = "/usr/local/bin:/usr/bin:/bin";

} // namespace

void TestScripts::init()
{
    DomainTest::init();
    tools.reset(new QTemporaryDir);
    qputenv("PATH", tools->path().toLocal8Bit() + ':' + path);
    temporaries.reset(new QTemporaryDir);
    qputenv("TMPDIR", temporaries->path().toLocal8Bit());
}

// Whatever became of them, the scripts leave no ticket and no settings behind.
void TestScripts::cleanup()
{
    QVERIFY(QDir(temporaries->path()).isEmpty());
    temporaries.reset();
    qunsetenv("TMPDIR");
    tools.reset();
    DomainTest::cleanup();
}

void TestScripts::standIn(const QString& tool, const QByteArray& script)
{
    QFile file(tools->filePath(tool));
    QVERIFY(file.open(QFile::WriteOnly));
    file.write("#!/bin/sh\n" + script);
    file.close();
    QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

void TestScripts::acceptsValidCredentials_data()
{
    QTest::addColumn<QString>("domain");
    QTest::addColumn<QString>("user");

    QTest::newRow("administrator") << "example.test"
                                   << "Administrator";
    QTest::newRow("delegated administrator") << "example.test"
                                             << "berlin.admin";
    QTest::newRow("in other capitals") << "Example.TEST"
                                       << "ADMINISTRATOR";
    QTest::newRow("user with his domain") << "example.test"
                                          << "Administrator@example.test";
    QTest::newRow("domain with DNS's full stop") << "example.test."
                                                 << "Administrator";
}

void TestScripts::acceptsValidCredentials()
{
    QFETCH(QString, domain);
    QFETCH(QString, user);
    const Result result = check(domain, user);
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.output, QString());
    QCOMPARE(result.status, 0);
}

void TestScripts::saysWhatToDo_data()
{
    QTest::addColumn<QString>("domain");
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("sentence");

    const QString right = PracticeMac::password;
    QTest::newRow("domain not found")
        << "exmaple.test"
        << "Administrator" << right
        << "The domain exmaple.test was not found: check its full name, and that this Mac uses its "
           "DNS servers.";
    QTest::newRow("no controller reachable")
        << "old.example.test"
        << "Administrator" << right
        << "No domain controller of old.example.test can be reached (1 tried): check network and "
           "firewalls.";
    QTest::newRow("unknown user")
        << "example.test"
        << "nobody" << right
        << "The user nobody is not known in the domain example.test: check the user name.";
    QTest::newRow("wrong password") << "example.test"
                                    << "Administrator"
                                    << "wrong"
                                    << "The password of Administrator is not right: enter it "
                                       "again, and mind the Caps Lock key.";
    QTest::newRow("wrong password of a user whose name says something else")
        << "example.test"
        << "expired.admin"
        << "wrong"
        << "The password of expired.admin is not right: enter it again, and mind the Caps Lock "
           "key.";
    QTest::newRow("no password") << "example.test"
                                 << "Administrator"
                                 << ""
                                 << "The password is empty: enter the password of Administrator.";
    QTest::newRow("expired password")
        << "example.test"
        << "expired.admin" << right
        << "The password of expired.admin has expired or must be changed: change it, for example "
           "by logging in once.";
    QTest::newRow("locked account") << "example.test"
                                    << "locked.admin" << right
                                    << "The account locked.admin is disabled, locked, expired or "
                                       "outside its logon hours: have it checked.";
    QTest::newRow("disabled account") << "example.test"
                                      << "disabled.admin" << right
                                      << "The account disabled.admin is disabled, locked, expired "
                                         "or outside its logon hours: have it checked.";
    QTest::newRow("no domain")
        << ""
        << "Administrator" << right
        << "\"\" is not a valid domain name: enter its full DNS name, such as "
           "example.com.";
    QTest::newRow("option in place of a domain")
        << "-f/etc/shadow"
        << "Administrator" << right
        << "\"-f/etc/shadow\" is not a valid domain name: enter its full DNS name, such as "
           "example.com.";
    QTest::newRow("no user")
        << "example.test"
        << "" << right
        << "\"\" is not a valid user name: enter it alone, as user@suffix or as "
           "DOMAIN\\user.";
}

void TestScripts::saysWhatToDo()
{
    QFETCH(QString, domain);
    QFETCH(QString, user);
    QFETCH(QString, password);
    QFETCH(QString, sentence);
    const Result result = check(domain, user, password);
    QCOMPARE(firstLine(result), sentence);
    QCOMPARE(result.status, 1);
}

void TestScripts::saysThatTheClockIsTooFarOff()
{
    standIn("kinit", "exec faketime -f +1h /usr/bin/kinit \"$@\"\n");
    const Result result = check(PracticeMac::domain, PracticeMac::administrator);
    QCOMPARE(firstLine(result),
             QString("The clock of this Mac is too far off the domain's: set its date and time, "
                     "and try again."));
    QCOMPARE(result.status, 1);
}

void TestScripts::saysThatNoDnsServerAnswers()
{
    standIn("dig", "echo ';; no servers could be reached'\nexit 9\n");
    const Result result = check(PracticeMac::domain, PracticeMac::administrator);
    QCOMPARE(firstLine(result),
             QString("No DNS server could look up example.test (no answer): check the network and "
                     "this Mac's DNS settings."));
    QCOMPARE(result.status, 1);
}

void TestScripts::saysThatAToolIsMissing()
{
    for (const QString& tool : QStringList{"tclsh", "dig", "ldapsearch", "mktemp"})
        QVERIFY(QFile::link("/usr/bin/" + tool, tools->filePath(tool)));
    qputenv("PATH", tools->path().toLocal8Bit());
    const Result result = check(PracticeMac::domain, PracticeMac::administrator);
    QCOMPARE(firstLine(result),
             QString("The tool kinit is missing on this Mac: install it and try again."));
    QCOMPARE(result.status, 1);
}

void TestScripts::endsAToolThatIsSilent()
{
    standIn("kinit", "[ \"$1\" = --version ] || exec sleep 1000\n");
    const Result result = check(PracticeMac::domain, PracticeMac::administrator);
    QCOMPARE(
        firstLine(result),
        QString("The controller dc1.example.test stopped answering: check the network, and try "
                "again."));
    QCOMPARE(result.status, 1);
    QProcess search;
    search.start("pgrep", {"-f", "sleep 1000"});
    QVERIFY(search.waitForFinished());
    QCOMPARE(search.readAllStandardOutput(), QByteArray());
}

void TestScripts::asksTheSecondControllerWhenTheFirstHasGone()
{
    standIn("dig", "echo ';; ->>HEADER<<- opcode: QUERY, status: NOERROR, id: 1'\n"
                   "n=_ldap._tcp.dc._msdcs.example.test.\n"
                   "echo \"$n 900 IN SRV 10 100 389 dc1.example.test.\"\n"
                   "echo \"$n 900 IN SRV 0 100 389 gone.example.test.\"\n");
    const Result result = check(PracticeMac::domain, PracticeMac::administrator);
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
}

void TestScripts::listsNothingWithWrongCredentials()
{
    const Result result = list("wrong");
    QCOMPARE(result.status, 1);
    QCOMPARE(result.output, QString());
    QCOMPARE(firstLine(result),
             QString("The password of Administrator is not right: enter it again, "
                     "and mind the Caps Lock key."));
}

void TestScripts::listsTheWholeDirectoryInPages()
{
    PracticeMac::run(DOMAIN_TESTS "/add_containers", {});
    const QStringList held =
        sortedLines(PracticeMac::run(PracticeMac::script("ask_directory"), {"--containers"}));
    QVERIFY(held.size() > 1200);
    QVERIFY(held.contains(QString::fromUtf8("OU=日本 東京,OU=Many,DC=example,DC=test")));

    // Without pages a Microsoft controller sends a part and says so; this domain's sends all.
    standIn("ldapsearch", "case \"$*\" in\n"
                          "*' -E pr='*) exec /usr/bin/ldapsearch \"$@\" ;;\n"
                          "esac\n"
                          "/usr/bin/ldapsearch \"$@\" | head -n 1000\n"
                          "exit 4\n");
    const Result result = list();
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
    QCOMPARE(sortedLines(result.output), held);
}

void TestScripts::showsThePasswordToNobody()
{
    const QString log = tools->filePath("log");
    for (const QString& tool : QStringList{"dig", "kinit", "ldapsearch"})
        standIn(tool, QString("{ echo \"%1 $*\"; env; } >>%2\nexec /usr/bin/%1 \"$@\"\n")
                          .arg(tool, log)
                          .toUtf8());
    QCOMPARE(list().status, 0);
    QFile file(log);
    QVERIFY(file.open(QFile::ReadOnly));
    const QByteArray seen = file.readAll();
    for (const char* tool : {"dig +", "kinit -l", "ldapsearch -LLL"})
        QVERIFY2(seen.contains(tool), tool);
    QVERIFY(seen.contains("-Y GSSAPI -O minssf=1"));
    QVERIFY(!seen.contains(PracticeMac::password.toUtf8()));
}

DOMAIN_TEST_MAIN(TestScripts)
#include "tst_scripts.moc"

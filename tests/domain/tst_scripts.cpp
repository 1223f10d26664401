#include "tests/domain/scripttest.h"

#include <QProcess>

// What the two scripts of the bundle say and whom they ask, with a controller that is at hand.
class TestScripts : public ScriptTest
{
    Q_OBJECT

private slots:
    void initTestCase();

    void acceptsValidCredentials_data();
    void acceptsValidCredentials();
    void acceptsAPasswordBeyondAscii();
    void saysWhatToDo_data();
    void saysWhatToDo();
    void saysWhatBothKindsOfKinitMean_data();
    void saysWhatBothKindsOfKinitMean();
    void saysWhatTheDirectoryMeans_data();
    void saysWhatTheDirectoryMeans();
    void saysThatTheServiceNameIsUnknown();
    void refusesOddEntriesBeforeAnyToolRuns_data();
    void refusesOddEntriesBeforeAnyToolRuns();
    void asksTheMacsKinit();
    void saysThatAToolIsMissing_data();
    void saysThatAToolIsMissing();
    void saysThatTclIsTooOld_data();
    void saysThatTclIsTooOld();
    void asksForTheDomainsOwnNamesPlainly();
    void leavesTheUsersTicketAlone();
    void readsTheToolsInEnglish();
    void saysWhenAToolWasKilled();
    void endsAToolThatIsSilent();
    void endsAToolThatFallsSilent();
    void waitsForAToolThatIsSlow();
    void asksInOneWay();
    void listsNothingWithWrongCredentials();
    void listsTheWholeDirectoryInPages();
    void showsThePasswordToNobody();
    void tellsTheToolsDetailsAfterTheSentence();
};

namespace {

QStringList sortedLines(const QString& text)
{
    QStringList lines = text.split('\n', Qt::SkipEmptyParts);
    lines.sort();
    return lines;
}

const QStringList everyTool = {"dig", "kinit", "ldapsearch", "mktemp", "scutil"};

} // namespace

void TestScripts::initTestCase()
{
    DomainTest::initTestCase();
    QFile added("/run/accounts_added"); // in this world, where the program may have run before
    if (added.exists())
        return;
    PracticeMac::run(testScript("add_accounts"), {});
    QVERIFY(added.open(QFile::WriteOnly));
}

void TestScripts::acceptsValidCredentials_data()
{
    QTest::addColumn<QString>("domain");
    QTest::addColumn<QString>("user");

    const QString domain = "example.test";
    QTest::newRow("administrator") << domain << "Administrator";
    QTest::newRow("delegated administrator") << domain << "berlin.admin";
    QTest::newRow("in other capitals") << "Example.TEST"
                                       << "ADMINISTRATOR";
    QTest::newRow("domain with DNS's full stop") << "example.test."
                                                 << "Administrator";
    QTest::newRow("with the domain") << domain << "Administrator@example.test";
    QTest::newRow("with the domain in other capitals") << domain << "Administrator@Example.Test";
    QTest::newRow("with the short domain name") << domain << "EXAMPLE\\Administrator";
    QTest::newRow("with the domain in front") << domain << "example.test\\Administrator";
    QTest::newRow("with the short name as suffix") << domain << "Administrator@example";
    QTest::newRow("with another suffix and a plus sign") << domain << "jane+mac@corp.test";
    QTest::newRow("a hyphen first") << domain << "-V";
    QTest::newRow("a hyphen first and a short domain name") << domain << "EXAMPLE\\-V";
}

void TestScripts::acceptsValidCredentials()
{
    QFETCH(QString, domain);
    QFETCH(QString, user);
    const ScriptResult result = check(domain, user);
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.output, QString());
    QCOMPARE(result.status, 0);
}

void TestScripts::acceptsAPasswordBeyondAscii()
{
    checkResult(check(PracticeMac::domain, "green", QString::fromUtf8("Grün & 25 €")));
}

void TestScripts::saysWhatToDo_data()
{
    QTest::addColumn<QString>("domain");
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("sentence");

    const QString domain = "example.test";
    const QString right = PracticeMac::password;
    QTest::newRow("domain not found") << "exmaple.test"
                                      << "Administrator" << right
                                      << "The domain exmaple.test was not found: check its full "
                                         "name, and that this Mac uses its DNS servers.";
    QTest::newRow("a single label is asked for") << "EXAMPLE"
                                                 << "Administrator" << right
                                                 << "The domain EXAMPLE was not found: check its "
                                                    "full name, and that this Mac uses its DNS "
                                                    "servers.";
    QTest::newRow("under .local") << "Corp.Local"
                                  << "Administrator" << right
                                  << "No DNS server knows Corp.Local, and a Mac looks for .local "
                                     "names nearby: have its DNS servers set.";
    QTest::newRow("not under .local") << "corp.mylocal"
                                      << "Administrator" << right
                                      << "The domain corp.mylocal was not found: check its full "
                                         "name, and that this Mac uses its DNS servers.";
    QTest::newRow("no controller listed") << "dc1.example.test"
                                          << "Administrator" << right
                                          << "DNS lists no domain controller of dc1.example.test: "
                                             "check the name, and that this Mac uses its DNS "
                                             "servers.";
    QTest::newRow("no controller reachable")
        << "old.example.test"
        << "Administrator" << right
        << "No domain controller of old.example.test can be reached (1 tried): check network and "
           "firewalls.";
    QTest::newRow("unknown user")
        << domain << "nobody" << right
        << "The user nobody is not known in the domain example.test: check the user name.";
    QTest::newRow("unknown user whose name says something else")
        << domain << "password incorrect" << right
        << "The user password incorrect is not known in the domain example.test: check the user "
           "name.";
    QTest::newRow("unknown suffix") << domain << "Administrator@corp.test" << right
                                    << "The domain example.test knows no Administrator@corp.test: "
                                       "check the name, and its suffix or short domain name.";
    QTest::newRow("unknown short domain name")
        << domain << "CORP\\admin" << right
        << "The domain example.test knows no CORP\\admin: check the name, and its suffix or short "
           "domain name.";
    QTest::newRow("wrong password") << domain << "Administrator"
                                    << "wrong"
                                    << "The password of Administrator is not right: enter it "
                                       "again, and mind the Caps Lock key.";
    QTest::newRow("wrong password of a user whose name says something else")
        << domain << "expired.admin"
        << "wrong"
        << "The password of expired.admin is not right: enter it again, and mind the Caps Lock "
           "key.";
    QTest::newRow("expired password")
        << domain << "expired.admin" << right
        << "The password of expired.admin has expired or must be changed: change it, for example "
           "by logging in once.";
    QTest::newRow("locked account") << domain << "locked.admin" << right
                                    << "The account locked.admin is disabled, locked, expired or "
                                       "outside its logon hours: have it checked.";
    QTest::newRow("disabled account") << domain << "disabled.admin" << right
                                      << "The account disabled.admin is disabled, locked, expired "
                                         "or outside its logon hours: have it checked.";
    QTest::newRow("expired account") << domain << "ended" << right
                                     << "The account ended is disabled, locked, expired or "
                                        "outside its logon hours: have it checked.";
    QTest::newRow("outside the logon hours") << domain << "night" << right
                                             << "The account night is disabled, locked, expired or "
                                                "outside its logon hours: have it checked.";
    QTest::newRow("no common encryption type")
        << domain << "revoked" << right
        << "The account revoked and this Mac have no encryption type in common: have AES allowed "
           "for it.";
}

void TestScripts::saysWhatToDo()
{
    QFETCH(QString, domain);
    QFETCH(QString, user);
    QFETCH(QString, password);
    QFETCH(QString, sentence);
    const ScriptResult result = check(domain, user, password);
    QCOMPARE(result.firstLine(), sentence);
    QCOMPARE(result.status, 1);
}

void TestScripts::saysWhatBothKindsOfKinitMean_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("sentence");

    const QString while_ = " while getting initial credentials";
    const QString changed = "The password of anna has expired or must be changed: change it, for "
                            "example by logging in once.";
    const QString unknown = "The user anna is not known in the domain example.test: check the user "
                            "name.";
    const QString suffix = "The domain example.test knows no anna: check the name, and its suffix "
                           "or short domain name.";
    const QString wrong = "The password of anna is not right: enter it again, and mind the Caps "
                          "Lock key.";
    const QString revoked = "The account anna is disabled, locked, expired or outside its logon "
                            "hours: have it checked.";
    const QString policy = "The domain's policy lets anna sign in with a smart card only, or not "
                           "here: use another account.";
    const QString encryption = "The account anna and this Mac have no encryption type in common: "
                               "have AES allowed for it.";
    const QString clock = "The clock of this Mac is too far off the domain's: set its date and "
                          "time, and try again.";
    const QString service = "The domain does not know the service of dc1.example.test: have that "
                            "account's service names checked.";
    const QString lost = "The controller dc1.example.test stopped answering: check the network, "
                         "and try again.";

    QTest::newRow("expired") << "Password has expired" + while_ << changed;
    QTest::newRow("expired, asking for another")
        << "Password expired.  You must change it now.\nEnter new password: \nCannot read password"
        << changed;
    QTest::newRow("unknown") << "Client 'anna@EXAMPLE.TEST' not found in Kerberos database" + while_
                             << unknown;
    QTest::newRow("unknown, of the Mac") << "Client (anna@EXAMPLE.TEST) unknown" << unknown;
    QTest::newRow("unknown enterprise name")
        << "Client 'anna\\@c.test@EXAMPLE.TEST' not found in Kerberos database" + while_ << suffix;
    QTest::newRow("unknown enterprise name, of the Mac")
        << "Client (anna\\@c.test@EXAMPLE.TEST) unknown" << suffix;
    QTest::newRow("wrong password") << "Password incorrect" + while_ << wrong;
    QTest::newRow("wrong password, of a Microsoft controller")
        << "Preauthentication failed" + while_ << wrong;
    QTest::newRow("wrong password, without preauthentication")
        << "Decrypt integrity check failed" + while_ << wrong;
    QTest::newRow("revoked") << "Client's credentials have been revoked" + while_ << revoked;
    QTest::newRow("revoked, of the Mac") << "Clients credentials have been revoked" << revoked;
    QTest::newRow("expired account")
        << "Client's entry in database has expired" + while_ << revoked;
    QTest::newRow("policy") << "KDC policy rejects request" + while_ << policy;
    QTest::newRow("encryption") << "KDC has no support for encryption type" + while_ << encryption;
    QTest::newRow("encryption, of the Mac") << "No key matching entype" << encryption;
    QTest::newRow("clock") << "Clock skew too great" + while_ << clock;
    QTest::newRow("clock, of the Mac") << "Too large time skew" << clock;
    QTest::newRow("service") << "Server not found in Kerberos database" + while_ << service;
    QTest::newRow("service, of the Mac") << "Server (krbtgt/A@B) unknown" << service;
    QTest::newRow("lost") << "Cannot contact any KDC for realm 'EXAMPLE.TEST'" + while_ << lost;
    QTest::newRow("lost, of the Mac")
        << "unable to reach any KDC in realm EXAMPLE.TEST, tried 1 KDC" << lost;
    QTest::newRow("anything else, of an encryption type")
        << "Warning: encryption type arcfour-hmac used for authentication is deprecated\n"
           "Clock skew too great"
        << clock;
    QTest::newRow("anything else") << "Generic error (see e-text)" + while_
                                   << "The domain example.test did not accept anna; ask its "
                                      "administrators: kinit: Generic error (see e-text) while "
                                      "getting initial credentials";
    QTest::newRow("anything else, in two lines") << "One\n  two"
                                                 << "The domain example.test did not accept anna; "
                                                    "ask its administrators: kinit: One two";
}

void TestScripts::saysWhatBothKindsOfKinitMean()
{
    QFETCH(QString, words);
    QFETCH(QString, sentence);
    standIn("kinit", "[ \"$1\" = --version ] && exit\n"
                     "echo 'Password for anna@EXAMPLE.TEST: '\n"
                     "cat <<'END'\nkinit: " +
                         words.toUtf8() + "\nEND\nexit 1\n");
    const ScriptResult result = check(PracticeMac::domain, "anna");
    QCOMPARE(result.firstLine(), sentence);
    QCOMPARE(result.status, 1);
}

void TestScripts::saysWhatTheDirectoryMeans_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("sentence");

    const QString refused = "dc1.example.test and this Mac do not agree on signing or sealing: "
                            "have the LDAP settings checked.";
    QTest::newRow("signing") << "ldap_sasl_interactive_bind: Strong(er) authentication required (8)"
                             << refused;
    QTest::newRow("sealing") << "ldap_sasl_interactive_bind: Confidentiality required (13)"
                             << refused;
    QTest::newRow("signing, on this Mac")
        << "additional info: SASL(-15): mechanism too weak for this user" << refused;
    QTest::newRow("service, of the Mac")
        << "GSSAPI Error: (Server (ldap/dc1.example.test@EXAMPLE.TEST) unknown)"
        << "The domain does not know the service of dc1.example.test: have that account's service "
           "names checked.";
    QTest::newRow("lost") << "ldap_result: Can't contact LDAP server (-1)"
                          << "The controller dc1.example.test stopped answering: check the "
                             "network, and try again.";
    QTest::newRow("anything else") << "ldap_sasl_interactive_bind: Server is busy (51)"
                                   << "The domain controller dc1.example.test refused the "
                                      "question; ask its administrators: "
                                      "ldap_sasl_interactive_bind: Server is busy (51)";
}

void TestScripts::saysWhatTheDirectoryMeans()
{
    QFETCH(QString, words);
    QFETCH(QString, sentence);
    standIn("ldapsearch", "[ \"$1\" = -x ] && exec /usr/bin/ldapsearch \"$@\"\n"
                          "cat <<'END'\n" +
                              words.toUtf8() + "\nEND\nexit 1\n");
    const ScriptResult result = check();
    QCOMPARE(result.firstLine(), sentence);
    QCOMPARE(result.status, 1);
}

void TestScripts::saysThatTheServiceNameIsUnknown()
{
    const QStringList names = PracticeMac::run(testScript("set_service_names"), {"GC/dc1"})
                                  .split('\n', Qt::SkipEmptyParts);
    const ScriptResult result = check();
    PracticeMac::run(testScript("set_service_names"), names);
    QCOMPARE(result.firstLine(), QString("The domain does not know the service of "
                                         "dc1.example.test: have that account's service names "
                                         "checked."));
    QCOMPARE(result.status, 1);
    QCOMPARE(check().status, 0);
}

void TestScripts::refusesOddEntriesBeforeAnyToolRuns_data()
{
    QTest::addColumn<QString>("domain");
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("sentence");

    const QStringList domains = {"",
                                 "-f/etc/shadow",
                                 "a..b",
                                 ".test",
                                 "a b",
                                 "a.-b",
                                 "a.b-",
                                 "a;b",
                                 "a@b.de",
                                 "münchen.test",
                                 "a\nb.c",
                                 QString(64, 'a') + ".test",
                                 QString("abcdefg.").repeated(32) + "test"};
    for (const QString& domain : domains)
        QTest::newRow(qPrintable("domain " + domain))
            << domain << "anna" << PracticeMac::password
            << QString("\"%1\" is not a valid domain name: enter its full DNS name, such as "
                       "example.com.")
                   .arg(domain)
                   .section('\n', 0, 0);
    const QStringList users = {"",      "@corp.test", "anna@", "\\anna",    "CORP\\",
                               "a@b@c", "<x",         "2>x",   "C\\a@b.de", "C\\D\\a",
                               "a\nb",  "anna@a>b",   "a\tb",  "a@b\tc",    ">x\\anna"};
    for (const QString& user : users)
        QTest::newRow(qPrintable("user " + user))
            << "example.test" << user << PracticeMac::password
            << QString("\"%1\" is not a valid user name: enter it alone, as user@suffix or as "
                       "DOMAIN\\user.")
                   .arg(user)
                   .section('\n', 0, 0);
    QTest::newRow("password") << "example.test"
                              << "anna"
                              << ""
                              << "The password is empty: enter the password of anna.";
}

void TestScripts::refusesOddEntriesBeforeAnyToolRuns()
{
    QFETCH(QString, domain);
    QFETCH(QString, user);
    QFETCH(QString, password);
    QFETCH(QString, sentence);
    note(everyTool);
    const ScriptResult result = check(domain, user, password);
    QCOMPARE(result.firstLine(), sentence);
    QCOMPARE(result.status, 1);
    QCOMPARE(noted(), QStringList());
}

// The stand-in takes the Mac's options and has the other make of kinit do the work.
void TestScripts::asksTheMacsKinit()
{
    standIn("kinit", "case \"$*\" in\n"
                     "--version) echo 'kinit (Heimdal 1.5.1apple1)' ;;\n"
                     "'-l 10m --password-file=STDIN -- berlin.admin@EXAMPLE.TEST')\n"
                     "    exec /usr/bin/kinit -l 10m -- berlin.admin@EXAMPLE.TEST ;;\n"
                     "'-l 10m --password-file=STDIN --enterprise -- jane+mac@corp.test')\n"
                     "    exec /usr/bin/kinit -l 10m -E -- jane+mac@corp.test ;;\n"
                     "*) exit 1 ;;\n"
                     "esac\n");
    for (const char* user : {"berlin.admin", "jane+mac@corp.test"}) {
        const ScriptResult result = check(PracticeMac::domain, user);
        QCOMPARE(result.errors, QString());
        QCOMPARE(result.status, 0);
    }
}

void TestScripts::saysThatAToolIsMissing_data()
{
    QTest::addColumn<QString>("tool");
    for (const char* tool : {"dig", "kinit", "ldapsearch", "mktemp"})
        QTest::newRow(tool) << tool;
}

// scutil is a Mac's; elsewhere dig's own name servers are asked.
void TestScripts::saysThatAToolIsMissing()
{
    QFETCH(QString, tool);
    QTemporaryDir folder;
    for (const QString& other : QStringList{"tclsh", "dig", "kinit", "ldapsearch", "mktemp"})
        QVERIFY(other == tool || QFile::link("/usr/bin/" + other, folder.filePath(other)));
    qputenv("PATH", folder.path().toLocal8Bit());
    const ScriptResult result = check();
    QCOMPARE(result.firstLine(),
             QString("The tool %1 is missing on this Mac: install it and try again.").arg(tool));
    QCOMPARE(result.status, 1);
    QVERIFY(QFile::link("/usr/bin/" + tool, folder.filePath(tool)));
    QCOMPARE(check().status, 0);
}

void TestScripts::saysThatTclIsTooOld_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("sentence");
    for (const char* version : {"8.4.20", "8.5.9", "8.5.19"})
        QTest::newRow(version) << version
                               << QString("These scripts need Tcl 8.6 or newer, and this is %1: "
                                          "update the agent.\n")
                                      .arg(version);
    for (const char* version : {"8.6.0", "8.6.17", "9.0.1"})
        QTest::newRow(version) << version << QString();
}

// An interpreter that tells another version.
void TestScripts::saysThatTclIsTooOld()
{
    QFETCH(QString, version);
    QFETCH(QString, sentence);
    QTemporaryDir folder;
    QFile program(folder.filePath("program.tcl"));
    QVERIFY(program.open(QFile::WriteOnly));
    program.write("rename info real_info\n"
                  "proc info {what args} {\n"
                  "    if {$what eq \"patchlevel\"} {return " +
                  version.toUtf8() +
                  "}\n"
                  "    tailcall real_info $what {*}$args\n"
                  "}\n"
                  "set script [lindex $argv 0]\n"
                  "set argv [lrange $argv 1 end]\n"
                  "info script $script\n"
                  "source $script\n");
    program.close();
    standIn("tclsh", "exec /usr/bin/tclsh " + program.fileName().toUtf8() + " \"$@\"\n");
    const ScriptResult result = check();
    QCOMPARE(result.errors, sentence);
    QCOMPARE(result.status, sentence.isEmpty() ? 0 : 1);
}

void TestScripts::asksForTheDomainsOwnNamesPlainly()
{
    for (const char* user : {"Administrator", "Administrator@example.test",
                             "Administrator@Example.TEST", "example.test\\Administrator"}) {
        note({"kinit"});
        QCOMPARE(check(PracticeMac::domain, user).status, 0);
        QCOMPARE(noted().last(), QString("kinit -l 10m -- Administrator@EXAMPLE.TEST"));
    }
}

void TestScripts::leavesTheUsersTicketAlone()
{
    QTemporaryDir folder;
    const QString ticket = folder.filePath("ticket");
    qputenv("KRB5CCNAME", ticket.toLocal8Bit());
    const ScriptResult result = check();
    qunsetenv("KRB5CCNAME");
    checkResult(result);
    QVERIFY(!QFile::exists(ticket));
}

void TestScripts::readsTheToolsInEnglish()
{
    standIn("kinit", "[ \"$LC_ALL\" = C ] && echo 'Password incorrect' || echo 'Passwort falsch'\n"
                     "exit 1\n");
    qputenv("LC_ALL", "de_DE.UTF-8");
    const ScriptResult result = check();
    qunsetenv("LC_ALL");
    QCOMPARE(result.firstLine(), QString("The password of Administrator is not right: enter it "
                                         "again, and mind the Caps Lock key."));
}

void TestScripts::saysWhenAToolWasKilled()
{
    standIn("kinit", "echo 'Nearly done.'\n[ \"$1\" = --version ] || kill -9 $$\n");
    const ScriptResult result = check();
    QCOMPARE(result.firstLine(), QString("The domain example.test did not accept Administrator; "
                                         "ask its administrators: Nearly done."));
    QCOMPARE(result.status, 1);
}

void TestScripts::endsAToolThatIsSilent()
{
    standIn("kinit", "[ \"$1\" = --version ] || exec sleep 1000\n");
    const ScriptResult result = check();
    QCOMPARE(result.firstLine(), QString("The controller dc1.example.test stopped answering: check "
                                         "the network, and try again."));
    QCOMPARE(result.status, 1);
    QVERIFY2(result.milliseconds < 15000, qPrintable(QString::number(result.milliseconds)));
    QProcess search;
    search.start("pgrep", {"-f", "sleep 1000"});
    QVERIFY(search.waitForFinished());
    QCOMPARE(search.readAllStandardOutput(), QByteArray());
}

void TestScripts::endsAToolThatFallsSilent()
{
    standIn("ldapsearch", "[ \"$1\" = -x ] && exec /usr/bin/ldapsearch \"$@\"\n"
                          "echo 'dn: OU=first,DC=example,DC=test'\n"
                          "exec sleep 1000\n");
    const ScriptResult result = list();
    QCOMPARE(result.firstLine(), QString("The controller dc1.example.test stopped answering: check "
                                         "the network, and try again."));
    QCOMPARE(result.output, QString());
    QVERIFY2(result.milliseconds < 25000, qPrintable(QString::number(result.milliseconds)));
}

// As a long list over a slow line: each piece comes in time.
void TestScripts::waitsForAToolThatIsSlow()
{
    standIn("ldapsearch", "[ \"$1\" = -x ] && exec /usr/bin/ldapsearch \"$@\"\n"
                          "for second in 0 7 14; do\n"
                          "    echo \"dn: OU=after $second seconds,DC=example,DC=test\"\n"
                          "    sleep 7\n"
                          "done\n");
    const ScriptResult result = list();
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.output, QString("OU=after 0 seconds,DC=example,DC=test\n"
                                    "OU=after 7 seconds,DC=example,DC=test\n"
                                    "OU=after 14 seconds,DC=example,DC=test\n"));
}

// Every option of every tool: each has its reason.
void TestScripts::asksInOneWay()
{
    note(everyTool);
    standIn("kinit", QString("echo \"kinit $*\" >>\"${0%/*}/calls\"\n"
                             "[ \"$1\" = --version ] || cat \"$KRB5_CONFIG\" >>\"${0%/*}/calls\"\n"
                             "exec /usr/bin/kinit \"$@\"\n")
                         .toUtf8());
    QCOMPARE(check().status, 0);
    QCOMPARE(list().status, 0);
    const QStringList checked = {
        "scutil --dns",
        "dig @192.0.2.1 -p 53 +time=1 +tries=2 +noall +answer +comments SRV "
        "_ldap._tcp.dc._msdcs.example.test.",
        "mktemp -d",
        "ldapsearch -x -LLL -o ldif-wrap=no -o nettimeout=2 -H ldap://dc1.example.test -b  -s base "
        "(objectClass=*) currentTime defaultNamingContext dnsHostName",
        "kinit --version",
        "kinit -l 10m -- Administrator@EXAMPLE.TEST",
        "[libdefaults]",
        " default_realm = EXAMPLE.TEST",
        " rdns = false",
        "[realms]",
        " EXAMPLE.TEST = {",
        "  kdc = dc1.example.test",
        "  master_kdc = dc1.example.test",
        " }"};
    const QString asked = "ldapsearch -LLL -Q -Y GSSAPI -O minssf=1 -o ldif-wrap=no "
                          "-o nettimeout=2 -E pr=1000/noprompt -H ldap://dc1.example.test "
                          "-b DC=example,DC=test -s ";
    QCOMPARE(noted(), checked + QStringList(asked + "base (objectClass=*) 1.1") + checked +
                          QStringList(asked + "sub (|(objectClass=organizationalUnit)"
                                              "(objectClass=container)) 1.1"));
}

void TestScripts::listsNothingWithWrongCredentials()
{
    const ScriptResult result = list("wrong");
    QCOMPARE(result.status, 1);
    QCOMPARE(result.output, QString());
    QCOMPARE(result.firstLine(), QString("The password of Administrator is not right: enter it "
                                         "again, and mind the Caps Lock key."));
}

void TestScripts::listsTheWholeDirectoryInPages()
{
    PracticeMac::run(testScript("add_containers"), {});
    const QStringList held =
        sortedLines(PracticeMac::run(PracticeMac::script("ask_directory"), {"--containers"}));
    QVERIFY(held.size() > 1200);
    QVERIFY(held.contains(QString::fromUtf8("OU=日本 東京,OU=Many,DC=example,DC=test")));

    // Without pages a Microsoft controller sends a part and says so; this domain's sends all.
    standIn("ldapsearch", "case \"$*\" in\n"
                          "-x*|*' -E pr='*) exec /usr/bin/ldapsearch \"$@\" ;;\n"
                          "esac\n"
                          "/usr/bin/ldapsearch \"$@\" | head -n 1000\n"
                          "exit 4\n");
    const ScriptResult result = list();
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
    QCOMPARE(sortedLines(result.output), held);
}

void TestScripts::showsThePasswordToNobody()
{
    for (const QString& tool : everyTool)
        standIn(tool, "{ echo \"${0##*/} $*\"; env; } >>\"${0%/*}/calls\"\n"
                      "PATH=/usr/bin:/bin:/usr/sbin exec \"${0##*/}\" \"$@\"\n");
    QCOMPARE(list().status, 0);
    const QString seen = noted().join('\n');
    for (const char* tool : {"scutil --dns", "dig @", "mktemp -d", "kinit -l", "ldapsearch -LLL"})
        QVERIFY2(seen.contains(tool), tool);
    QVERIFY(!seen.contains(PracticeMac::password));
}

// For a support ticket.
void TestScripts::tellsTheToolsDetailsAfterTheSentence()
{
    const ScriptResult result = check(PracticeMac::domain, "nobody");
    QCOMPARE(result.errors.section('\n', 1),
             QString("kinit: Client 'nobody@EXAMPLE.TEST' not found in Kerberos database while "
                     "getting initial credentials\n"));
    QCOMPARE(result.output, QString());
}

DOMAIN_TEST_MAIN(TestScripts)
#include "tst_scripts.moc"

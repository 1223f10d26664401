#include "tests/domain/scripttest.h"
#include "tests/support/files.h"

namespace {

const QStringList everyTool = {"dig", "kinit", "ldapsearch", "mktemp", "scutil"};

} // namespace

// How the two scripts of the bundle run their tools, and what they say when one fails them.
class TestScripts : public ScriptTest
{
    Q_OBJECT

private slots:
    void saysWhatTheDirectoryMeans_data()
    {
        addColumns<QString, QString>("words", "sentence");

        const QString refused = "dc1.example.test and this Mac do not agree on signing or sealing: "
                                "have the LDAP settings checked.";
        addRow("signing", "ldap_sasl_interactive_bind: Strong(er) authentication required (8)",
               refused);
        addRow("sealing", "ldap_sasl_interactive_bind: Confidentiality required (13)", refused);
        addRow("signing, on this Mac",
               "additional info: SASL(-15): mechanism too weak for this user", refused);
        addRow("service, of the Mac",
               "GSSAPI Error: (Server (ldap/dc1.example.test@EXAMPLE.TEST) unknown)",
               Sentence::unknownService);
        addRow("lost", "ldap_result: Can't contact LDAP server (-1)", Sentence::lost.arg("dc1"));
        addRow("anything else", "ldap_sasl_interactive_bind: Server is busy (51)",
               "The domain controller dc1.example.test refused the question; ask its "
               "administrators: ldap_sasl_interactive_bind: Server is busy (51)");
    }

    void saysWhatTheDirectoryMeans()
    {
        QFETCH(QString, words);
        QFETCH(QString, sentence);
        standIn("ldapsearch", "[ \"$1\" = -x ] && exec /usr/bin/ldapsearch \"$@\"\n"
                              "cat <<'END'\n" +
                                  words.toUtf8() + "\nEND\nexit 1\n");
        checkRefusal(check(), sentence);
    }

    // The names that were listed before the failure can hold the words of another one.
    void saysWhatTheDirectoryMeansInTheMiddle()
    {
        standIn("ldapsearch", "[ \"$1\" = -x ] && exec /usr/bin/ldapsearch \"$@\"\n"
                              "cat <<'END'\n"
                              "dn: OU=Strong Room,DC=example,DC=test\n"
                              "\n"
                              "dn: CN=Clock Skew,DC=example,DC=test\n"
                              "\n"
                              "dn:: T1U9R3LDvG4sREM9ZXhhbXBsZSxEQz10ZXN0\n"
                              "\n"
                              "# refldap://timed out/\n"
                              "\n"
                              "# pagedresults: cookie=\n"
                              "END\n"
                              "echo 'Size limit exceeded (4)' >&2\n"
                              "exit 1\n");
        const ScriptResult result = list();
        checkResult(result, "The domain controller dc1.example.test refused the question; ask its "
                            "administrators: Size limit exceeded (4)\nSize limit exceeded (4)");
        QCOMPARE(result.output, QString());
    }

    void saysThatTheServiceNameIsUnknown()
    {
        const QStringList names = PracticeMac::run(testFile("set_service_names"), {"GC/dc1"})
                                      .split('\n', Qt::SkipEmptyParts);
        const ScriptResult result = check();
        PracticeMac::run(testFile("set_service_names"), names);
        checkRefusal(result, Sentence::unknownService);
        QCOMPARE(check().status, 0);
    }

    void refusesOddEntriesBeforeAnyToolRuns_data()
    {
        addColumns<QString, QString, QString, QString>("domain", "user", "password", "sentence");

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
            addRow(qPrintable("domain " + domain), domain, "anna", PracticeMac::password,
                   QString("\"%1\" is not a valid domain name: enter its full DNS name, such as "
                           "example.com.")
                       .arg(domain)
                       .section('\n', 0, 0));
        const QStringList users = {"",      "@corp.test", "anna@", "\\anna",    "CORP\\",
                                   "a@b@c", "<x",         "2>x",   "C\\a@b.de", "C\\D\\a",
                                   "a\nb",  "anna@a>b",   "a\tb",  "a@b\tc",    ">x\\anna"};
        for (const QString& user : users)
            addRow(qPrintable("user " + user), "example.test", user, PracticeMac::password,
                   QString("\"%1\" is not a valid user name: enter it alone, as user@suffix or as "
                           "DOMAIN\\user.")
                       .arg(user)
                       .section('\n', 0, 0));
        addRow("password", "example.test", "anna", "",
               "The password is empty: enter the password of anna.");
        addRow("password's end", "example.test", "anna", "Practice.1\n",
               "The password has a line end in it: enter the password of anna by hand.");
    }

    void refusesOddEntriesBeforeAnyToolRuns()
    {
        QFETCH(QString, domain);
        QFETCH(QString, user);
        QFETCH(QString, password);
        QFETCH(QString, sentence);
        note(everyTool);
        checkRefusal(check(domain, user, password), sentence);
        QCOMPARE(noted(), QStringList());
    }

    void saysThatAToolIsMissing()
    {
        for (const QString& tool : QStringList{"dig", "kinit", "ldapsearch", "mktemp"}) {
            QTemporaryDir folder;
            for (const QString& other :
                 QStringList{"tclsh", "dig", "kinit", "ldapsearch", "mktemp"})
                QVERIFY(other == tool || QFile::link("/usr/bin/" + other, folder.filePath(other)));
            qputenv("PATH", folder.path().toLocal8Bit());
            checkRefusal(
                check(),
                QString("The tool %1 is missing on this Mac: install it and try again.").arg(tool));
            QVERIFY(QFile::link("/usr/bin/" + tool, folder.filePath(tool)));
            checkResult(check());
        }
    }

    // Where no locale is set Tcl reads the arguments byte by byte.
    void takesAnyLetterInEveryLocale()
    {
        qputenv("LC_ALL", "C");
        checkRefusal(check(PracticeMac::domain, "ÄÖÜ东"), Sentence::unknownUser.arg("ÄÖÜ东"));
    }

    void saysThatAToolCantBeStarted()
    {
        QTemporaryDir folder;
        for (const char* tool : {"tclsh", "dig", "mktemp"})
            QVERIFY(QFile::link(QString("/usr/bin/") + tool, folder.filePath(tool)));
        QVERIFY(QFile(folder.filePath("ldapsearch")).open(QFile::WriteOnly)); // not executable
        qputenv("PATH", folder.path().toLocal8Bit());
        checkRefusal(check(),
                     "The tool ldapsearch can't be started: end some programs, and try again.");
    }

    void saysThatNothingCanBeWritten_data()
    {
        addColumns<QByteArray, QString>("mktemp", "details");
        const QByteArray made = "folder=$(/usr/bin/mktemp -d)\necho $folder\n";
        addRow("no folder", QByteArray("echo 'mktemp: No room' >&2\nexit 1\n"),
               QString("\nmktemp: No room\n"));
        addRow("no file", made + "mkdir $folder/krb5.conf\n",
               QString("illegal operation on a directory\n"));
        addRow("a full disk", made + "ln -s /dev/full $folder/krb5.conf\n",
               QString("no space left on device\n"));
    }

    void saysThatNothingCanBeWritten()
    {
        QFETCH(QByteArray, mktemp);
        QFETCH(QString, details);
        standIn("mktemp", mktemp);
        const ScriptResult result = check();
        checkRefusal(result, "This Mac can't write a temporary file: free space on its disk, and "
                             "try again.");
        QVERIFY2(result.errors.endsWith(details), qPrintable(result.errors));
    }

    void saysThatTclIsTooOld_data()
    {
        addColumns<QString, QString>("version", "sentence");
        for (const char* version : {"8.4.20", "8.5.9", "8.5.19"})
            addRow(version, version,
                   QString("These scripts need Tcl 8.6 or newer, and this is %1: update the agent.")
                       .arg(version));
        for (const char* version : {"8.6.0", "8.6.17", "9.0.1"})
            addRow(version, version, QString());
    }

    void saysThatTclIsTooOld()
    {
        QFETCH(QString, version);
        QFETCH(QString, sentence);
        // Has the interpreter tell this version as its own.
        QTemporaryDir folder;
        const QString program = folder.filePath("program.tcl");
        writeFile(program, "rename info real_info\n"
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
        standIn("tclsh", "exec /usr/bin/tclsh " + program.toUtf8() + " \"$@\"\n");
        checkResult(check(), sentence);
    }

    void readsTheToolsInEnglish()
    {
        standIn("kinit",
                "[ \"$LC_ALL\" = C ] && echo 'Password incorrect' || echo 'Passwort falsch'\n"
                "exit 1\n");
        qputenv("LC_ALL", "de_DE.UTF-8");
        checkRefusal(check(), Sentence::wrongPassword.arg("Administrator"));
    }

    void countsAKilledToolAsARefusal()
    {
        standIn("kinit", "echo 'Nearly done.'\n[ \"$1\" = --version ] || kill -9 $$\n");
        checkRefusal(check(), "The domain example.test did not accept Administrator; ask its "
                              "administrators: Nearly done.");
    }

    void endsAToolThatIsSilent()
    {
        standIn("kinit", "[ \"$1\" = --version ] || exec sleep 1000\n");
        const ScriptResult result = check();
        checkRefusal(result, Sentence::lost.arg("dc1"));
        QVERIFY2(result.milliseconds < 15000, qPrintable(QString::number(result.milliseconds)));
        QCOMPARE(PracticeMac::processes({"-f", "sleep 1000"}), QStringList());
    }

    void endsAToolThatFallsSilent()
    {
        standIn("ldapsearch", "[ \"$1\" = -x ] && exec /usr/bin/ldapsearch \"$@\"\n"
                              "echo 'dn: OU=first,DC=example,DC=test\nbut no more'\n"
                              "exec sleep 1000\n");
        const ScriptResult result = list();
        checkResult(result, Sentence::lost.arg("dc1") + "\nbut no more\nldapsearch: timed out");
        QCOMPARE(result.output, QString());
        QVERIFY2(result.milliseconds < 25000, qPrintable(QString::number(result.milliseconds)));
    }

    void waitsForAToolThatIsSlow()
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

    void bothScriptsAskInTheSameWay()
    {
        note(everyTool);
        standIn("kinit",
                QString("echo \"kinit $*\" >>\"${0%/*}/calls\"\n"
                        "[ \"$1\" = --version ] || cat \"$KRB5_CONFIG\" >>\"${0%/*}/calls\"\n"
                        "exec /usr/bin/kinit \"$@\"\n")
                    .toUtf8());
        QCOMPARE(check().status, 0);
        QCOMPARE(list().status, 0);
        const QStringList checked = {
            "scutil --dns",
            "dig @192.0.2.1 -p 53 +time=1 +tries=2 +noshort +noall +answer +comments SRV "
            "_ldap._tcp.dc._msdcs.example.test.",
            "mktemp -d",
            "ldapsearch -x -LLL -o ldif-wrap=no -o nettimeout=2 -H ldap://dc1.example.test -b  -s "
            "base (objectClass=*) currentTime defaultNamingContext dnsHostName",
            "kinit --version",
            "kinit -c FILE:PRIVATE/ticket -l 10m -- Administrator@EXAMPLE.TEST",
            "[libdefaults]",
            " default_realm = EXAMPLE.TEST",
            " rdns = false",
            "[realms]",
            " EXAMPLE.TEST = {",
            "  master_kdc = dc1.example.test",
            "  kdc = dc1.example.test",
            " }"};
        const QString asked =
            "ldapsearch -LLL -Q -Y GSSAPI -O minssf=1 -o ldif-wrap=no -o nettimeout=2 -E "
            "pr=1000/noprompt -H ldap://dc1.example.test -b DC=example,DC=test -s ";
        QCOMPARE(noted(), checked + QStringList(asked + "base (objectClass=*) 1.1") + checked +
                              QStringList(asked + "sub (|(objectClass=organizationalUnit)"
                                                  "(objectClass=container)) 1.1"));
    }

    void listsNothingWithWrongCredentials()
    {
        const ScriptResult result = list("wrong");
        checkRefusal(result, Sentence::wrongPassword.arg("Administrator"));
        QCOMPARE(result.output, QString());
    }

    void listsTheWholeDirectoryInPages()
    {
        PracticeMac::run(testFile("add_containers"), {});
        const QStringList held = PracticeMac::sortedLines(
            PracticeMac::run(PracticeMac::script("ask_directory"), {"--containers"}));
        QVERIFY(held.size() > 1200);
        QVERIFY(held.contains(QString("OU=日本 東京,OU=Many,DC=example,DC=test")));

        // A Microsoft controller sends only a part to who does not ask for pages. This domain's
        // sends all, so the stand-in cuts it.
        standIn("ldapsearch", "case \"$*\" in\n"
                              "-x*|*' -E pr='*) exec /usr/bin/ldapsearch \"$@\" ;;\n"
                              "esac\n"
                              "/usr/bin/ldapsearch \"$@\" | head -n 1000\n"
                              "exit 4\n");
        const ScriptResult result = list();
        checkResult(result);
        QCOMPARE(PracticeMac::sortedLines(result.output), held);
    }

    void noToolHasThePasswordInItsArgumentsOrEnvironment()
    {
        for (const QString& tool : everyTool)
            standIn(tool, "{ echo \"${0##*/} $*\"; env; } >>\"${0%/*}/calls\"\n"
                          "PATH=/usr/bin:/bin:/usr/sbin exec \"${0##*/}\" \"$@\"\n");
        QCOMPARE(list().status, 0);
        const QString seen = noted().join('\n');
        for (const char* tool :
             {"scutil --dns", "dig @", "mktemp -d", "kinit -c", "ldapsearch -LLL"})
            QVERIFY2(seen.contains(tool), tool);
        QVERIFY(!seen.contains(PracticeMac::password));
    }

    void tellsTheToolsDetailsAfterTheSentence()
    {
        const ScriptResult result = check(PracticeMac::domain, "jürgen");
        QCOMPARE(result.errors.section('\n', 1),
                 QString("kinit: Client 'jürgen@EXAMPLE.TEST' not found in Kerberos database while "
                         "getting initial credentials\n"));
        QCOMPARE(result.output, QString());
    }
};

DOMAIN_TEST_MAIN(TestScripts)
#include "tst_scripts.moc"

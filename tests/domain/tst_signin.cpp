#include "tests/domain/scripttest.h"

static const QString noneListed = "DNS lists no domain controller of %1: check the name, and that "
                                  "this Mac uses its DNS servers.";

// Whom check_domain_cred.tcl accepts, and what it says of the others.
class TestSignIn : public ScriptTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        DomainTest::initTestCase();
        PracticeMac::run(testFile("add_accounts"), {});
    }

    void acceptsValidCredentials_data()
    {
        addColumns<QString, QString>("domain", "user");

        const QString domain = "example.test";
        addRow("administrator", domain, "Administrator");
        addRow("delegated administrator", domain, "berlin.admin");
        addRow("in other capitals", "Example.TEST", "ADMINISTRATOR");
        addRow("domain with DNS's full stop", "example.test.", "Administrator");
        addRow("with the short domain name", domain, "EXAMPLE\\Administrator");
        addRow("with the short name as suffix", domain, "Administrator@example");
        addRow("with another suffix and a plus sign", domain, "jane+mac@corp.test");
        addRow("a hyphen first", domain, "-V");
        addRow("a hyphen first and a short domain name", domain, "EXAMPLE\\-V");
    }

    void acceptsValidCredentials()
    {
        QFETCH(QString, domain);
        QFETCH(QString, user);
        const ScriptResult result = check(domain, user);
        checkResult(result);
        QCOMPARE(result.output, QString());
    }

    void acceptsAPasswordBeyondAscii()
    {
        checkResult(check(PracticeMac::domain, "green", "Grün & 25 €"));
    }

    void saysWhatToDo_data()
    {
        addColumns<QString, QString, QString, QString>("domain", "user", "password", "sentence");

        const auto ofDomain = [](const char* row, const QString& domain, const QString& sentence) {
            addRow(row, domain, PracticeMac::administrator, PracticeMac::password,
                   sentence.arg(domain));
        };
        const auto ofUser = [](const char* row, const QString& user, const QString& sentence,
                               const QString& password = PracticeMac::password) {
            addRow(row, PracticeMac::domain, user, password, sentence.arg(user));
        };
        ofDomain("domain not found", "exmaple.test", Sentence::domainNotFound);
        ofDomain("a single label is asked for", "EXAMPLE", Sentence::domainNotFound);
        ofDomain("under .local", "Corp.Local",
                 "No DNS server knows %1, and a Mac looks for .local names nearby: have its DNS "
                 "servers set.");
        ofDomain("not under .local", "corp.mylocal", Sentence::domainNotFound);
        ofDomain("no controller listed", "dc1.example.test", noneListed);
        ofDomain(
            "no controller reachable", "old.example.test",
            "No domain controller of %1 can be reached (1 tried): check network and firewalls.");
        ofUser("unknown user", "nobody", Sentence::unknownUser);
        ofUser("unknown user whose name reads like another refusal", "password incorrect",
               Sentence::unknownUser);
        ofUser("unknown suffix", "Administrator@corp.test", Sentence::unknownSuffix);
        ofUser("unknown short domain name", "CORP\\admin", Sentence::unknownSuffix);
        ofUser("wrong password", "Administrator", Sentence::wrongPassword, "wrong");
        ofUser("wrong password of a user whose name reads like another refusal", "expired.admin",
               Sentence::wrongPassword, "wrong");
        ofUser("expired password", "expired.admin", Sentence::expiredPassword);
        ofUser("locked account", "locked.admin", Sentence::closedAccount);
        ofUser("disabled account", "disabled.admin", Sentence::closedAccount);
        ofUser("expired account", "ended", Sentence::closedAccount);
        ofUser("outside the logon hours", "night", Sentence::closedAccount);
        ofUser("no common encryption type", "revoked", Sentence::noEncryption);
    }

    void saysWhatToDo()
    {
        QFETCH(QString, domain);
        QFETCH(QString, user);
        QFETCH(QString, password);
        QFETCH(QString, sentence);
        checkRefusal(check(domain, user, password), sentence);
    }

    void saysWhenDnsKnowsADomainUnderLocal()
    {
        standIn("dig", "echo ';; ->>HEADER<<- opcode: QUERY, status: NOERROR, id: 1'\n");
        checkRefusal(check("corp.local"), noneListed.arg("corp.local"));
    }

    void saysWhatBothKindsOfKinitMean_data()
    {
        addColumns<QString, QString>("words", "sentence");

        const QString while_ = " while getting initial credentials";
        const QString changed = Sentence::expiredPassword.arg("anna");
        const QString unknown = Sentence::unknownUser.arg("anna");
        const QString suffix = Sentence::unknownSuffix.arg("anna");
        const QString wrong = Sentence::wrongPassword.arg("anna");
        const QString revoked = Sentence::closedAccount.arg("anna");
        const QString policy = "The domain's policy lets anna sign in with a smart card only, or "
                               "not here: use another account.";
        const QString encryption = Sentence::noEncryption.arg("anna");
        const QString clock = "The clock of this Mac is too far off the domain's: set its date and "
                              "time, and try again.";
        const QString service = Sentence::unknownService;
        const QString lost = Sentence::lost.arg("dc1");

        addRow("expired", "Password has expired" + while_, changed);
        addRow("expired, asking for another",
               "Password expired.  You must change it now.\nEnter new password: \nCannot read "
               "password",
               changed);
        addRow("expired, asking for another, of the Mac",
               "Changing password\nNew password: \nRepeat new password: ", changed);
        addRow("expired, waiting for another", "Changing password\nkinit: timed out", changed);
        addRow("unknown", "Client 'anna@EXAMPLE.TEST' not found in Kerberos database" + while_,
               unknown);
        addRow("unknown, of the Mac", "Client (anna@EXAMPLE.TEST) unknown", unknown);
        addRow("unknown enterprise name",
               "Client 'anna\\@c.test@EXAMPLE.TEST' not found in Kerberos database" + while_,
               suffix);
        addRow("unknown enterprise name, of the Mac", "Client (anna\\@c.test@EXAMPLE.TEST) unknown",
               suffix);
        addRow("wrong password", "Password incorrect" + while_, wrong);
        addRow("wrong password, of a Microsoft controller", "Preauthentication failed" + while_,
               wrong);
        addRow("wrong password, without preauthentication",
               "Decrypt integrity check failed" + while_, wrong);
        addRow("revoked", "Client's credentials have been revoked" + while_, revoked);
        addRow("revoked, of the Mac", "Clients credentials have been revoked", revoked);
        addRow("expired account", "Client's entry in database has expired" + while_, revoked);
        addRow("policy", "KDC policy rejects request" + while_, policy);
        addRow("encryption", "KDC has no support for encryption type" + while_, encryption);
        addRow("encryption, of the Mac", "No key matching entype", encryption);
        addRow("clock", "Clock skew too great" + while_, clock);
        addRow("clock, of the Mac", "Too large time skew", clock);
        addRow("service", "Server not found in Kerberos database" + while_, service);
        addRow("service, of the Mac", "Server (ldap/dc1@EXAMPLE.TEST) unknown", service);
        addRow("another domain", "Server krbtgt/A@B not found in Kerberos database" + while_,
               suffix);
        addRow("another domain, of the Mac", "Server (krbtgt/A@B) unknown", suffix);
        addRow("lost", "Cannot contact any KDC for realm 'EXAMPLE.TEST'" + while_, lost);
        addRow("lost, of the Mac", "unable to reach any KDC in realm EXAMPLE.TEST, tried 1 KDC",
               lost);
        const QString refused =
            "The domain example.test did not accept anna; ask its administrators: kinit: ";
        const auto addOther = [&refused](const char* row, const QString& words) {
            addRow(row, words, refused + words);
        };
        addOther("another domain's are lost, whose name begins alike",
                 "Cannot contact any KDC for realm 'EXAMPLE.TEST.COM'" + while_);
        addOther("another domain's are lost",
                 "Cannot contact any KDC for realm 'CHILD.EXAMPLE.TEST'" + while_);
        addRow("clock, after a warning of an encryption type",
               "Warning: encryption type arcfour-hmac used for authentication is deprecated\n"
               "Clock skew too great",
               clock);
        addOther("anything else", "Generic error (see e-text)" + while_);
        addOther("anything else, beyond ASCII", "Generic error of jürgen");
        addRow("anything else, in two lines", "One\n  two", refused + "One two");
    }

    void saysWhatBothKindsOfKinitMean()
    {
        QFETCH(QString, words);
        QFETCH(QString, sentence);
        standIn("kinit", "[ \"$1\" = --version ] && exit\n"
                         "echo 'Password for anna@EXAMPLE.TEST: '\n"
                         "cat <<'END'\nkinit: " +
                             words.toUtf8() + "\nEND\nexit 1\n");
        checkRefusal(check(PracticeMac::domain, "anna"), sentence);
    }

    void asksTheMacsKinit()
    {
        standIn("kinit", "case \"$*\" in\n"
                         "--version)\n"
                         "    echo 'kinit (Heimdal 1.5.1apple1)'\n"
                         "    exit ;;\n"
                         "\"-c $KRB5CCNAME -l 10m --password-file=STDIN -- "
                         "berlin.admin@EXAMPLE.TEST\")\n"
                         "    user='-- berlin.admin@EXAMPLE.TEST' ;;\n"
                         "\"-c $KRB5CCNAME -l 10m --password-file=STDIN --enterprise -- "
                         "jane+mac@corp.test\")\n"
                         "    user='-E -- jane+mac@corp.test' ;;\n"
                         "esac\n"
                         "[ \"$(sed -n 's/^  kdc = //p' \"$KRB5_CONFIG\" | xargs)\" = \\\n"
                         "    'tcp/dc1.example.test dc1.example.test' ] &&\n"
                         "    exec /usr/bin/kinit -l 10m ${user-nobody}\n");
        for (const char* user : {"berlin.admin", "jane+mac@corp.test"})
            checkResult(check(PracticeMac::domain, user));
    }

    void asksForTheDomainsOwnNamesPlainly()
    {
        for (const char* user : {"Administrator", "Administrator@example.test",
                                 "Administrator@Example.TEST", "example.test\\Administrator"}) {
            note({"kinit"});
            checkResult(check(PracticeMac::domain, user));
            QCOMPARE(noted().last(),
                     QString("kinit -c FILE:PRIVATE/ticket -l 10m -- Administrator@EXAMPLE.TEST"));
        }
    }

    void leavesTheUsersTicketAlone()
    {
        QTemporaryDir folder;
        const QString ticket = folder.filePath("ticket");
        qputenv("KRB5CCNAME", ticket.toLocal8Bit());
        const ScriptResult result = check();
        qunsetenv("KRB5CCNAME");
        checkResult(result);
        QVERIFY(!QFile::exists(ticket));
    }
};

DOMAIN_TEST_MAIN(TestSignIn)
#include "tst_signin.moc"

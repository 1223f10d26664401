#include "tests/domain/scripttest.h"
#include "tests/support/files.h"

namespace {

const QString noServer = "No DNS server could look up example.test (%1): check the network and "
                         "this Mac's DNS settings.";
const QString clockIs =
    "This Mac's clock is %1 the domain's: set its date and time, and try again.";

// What dig says of controllers with different priorities and weights.
const QByteArray listing = R"(cat <<'END'
;; ->>HEADER<<- opcode: QUERY, status: NOERROR, id: 1
_ldap._tcp.dc._msdcs.example.test. 900 IN SRV 10 9 389 e.example.test.
_ldap._tcp.dc._msdcs.example.test. 900 IN SRV 9 9 389 c.example.test.
_ldap._tcp.dc._msdcs.example.test. 900 IN SRV 9 10 389 b.example.test.
_ldap._tcp.dc._msdcs.example.test. 900 IN SRV 10 9 389 f.example.test.
_ldap._tcp.dc._msdcs.example.test. 900 IN SRV 9 0 389 d.example.test.
_ldap._tcp.dc._msdcs.example.test. 900 IN SRV 0 0 389 a.example.test.
_ldap._tcp.dc._msdcs.example.test. 900 IN SRV 0 100 389 .
END
)";

} // namespace

// Where the two scripts of the bundle look names up, how they order the controllers, and how they
// compare the clock.
class TestNameServers : public ScriptTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        DomainTest::initTestCase();
        PracticeMac::run(PracticeMac::script("packets"), {"lose", "198.51.100.1"});
    }

    void asksNoReverseDns()
    {
        for (const QByteArray& wrong : {QByteArray(), QByteArray("192.0.2.1 wrong.name.test\n")}) {
            rewrite("/etc/hosts", "127.0.0.1 localhost\n" + wrong);
            for (const ScriptResult& result : {check(), list()})
                QVERIFY2(result.errors.isEmpty() && result.status == 0,
                         qPrintable(wrong + result.errors));
        }
    }

    void asksTheSecondNameServer()
    {
        rewrite("/etc/resolv.conf", "nameserver 198.51.100.1\nnameserver 192.0.2.1\n");
        // The tools find the names of the Mac and of the controller without DNS.
        rewrite("/etc/hosts", "127.0.0.1 localhost practice-mac\n192.0.2.1 dc1.example.test\n");
        checkResult(check());
    }

    void saysThatNoDnsServerAnswers()
    {
        rewrite("/etc/resolv.conf", "nameserver 198.51.100.1\n");
        const ScriptResult result = check();
        checkRefusal(result, noServer.arg("no answer"));
        QVERIFY(result.milliseconds < 6000);
    }

    void saysWhatTheDnsServerAnswers()
    {
        standIn("dig", "echo ';; ->>HEADER<<- opcode: QUERY, status: SERVFAIL, id: 1'\n");
        checkRefusal(check(), noServer.arg("SERVFAIL"));
    }

    // By smaller priority, then by greater weight, each as a number, and otherwise as DNS has them.
    void asksThePreferredOnesFirst()
    {
        standIn("dig", listing);
        QCOMPARE(
            runTcl("set session::domain example.test\n"
                   "session::list_controllers\n"
                   "puts $session::controllers"),
            QString("a.example.test b.example.test c.example.test d.example.test e.example.test "
                    "f.example.test"));
    }

    void readsTheMacsResolvers_data()
    {
        addColumns<QString, QString>("domain", "servers");
        addRow("default", "elsewhere.example", "{@192.0.2.53 -p 53} {@fe80::1%12 -p 53}");
        addRow("domain of its own", "corp.example", "{@198.51.100.53 -p 53}");
        addRow("below it", "a.Corp.Example", "{@198.51.100.53 -p 53}");
        addRow("only as a whole label", "notcorp.example",
               "{@192.0.2.53 -p 53} {@fe80::1%12 -p 53}");
        addRow("the longest, with a port", "lab.corp.example", "{@198.51.100.54 -p 5353}");
        addRow("of two for one domain, the lower order", "two.example", "{@203.0.113.2 -p 53}");
        addRow("the longest by its number of characters", "b.o.example", "{@203.0.113.4 -p 53}");
        addRow("a domain without a name server", "none.example",
               "{@192.0.2.53 -p 53} {@fe80::1%12 -p 53}");
        addRow("no name server by multicast", "corp.local",
               "{@192.0.2.53 -p 53} {@fe80::1%12 -p 53}");
        addRow("not one for a single interface", "scoped.example",
               "{@192.0.2.53 -p 53} {@fe80::1%12 -p 53}");
    }

    void readsTheMacsResolvers()
    {
        QFETCH(QString, domain);
        QFETCH(QString, servers);
        standIn("scutil", "cat <<'END'\n" + readFile(testFile("resolvers.txt")) + "END\n");
        QCOMPARE(runTcl("set session::domain " + domain + "\nputs [session::name_servers]"),
                 servers);
    }

    void comparesTheClock_data()
    {
        addColumns<QByteArray, QString>("shift", "sentence");
        addRow("an hour ahead", QByteArray("+1h"), clockIs.arg("60 minutes ahead of"));
        addRow("a day behind", QByteArray("-1d"), clockIs.arg("1440 minutes behind"));
        addRow("four minutes ahead", QByteArray("+4m"), QString());
        addRow("four minutes behind", QByteArray("-4m"), QString());
    }

    // The interpreter and kinit have another clock than the controller. When it is too far off,
    // kinit, which gets the password, is not started.
    void comparesTheClock()
    {
        QFETCH(QByteArray, shift);
        QFETCH(QString, sentence);
        note({"kinit"});
        standIn("tclsh", "exec faketime -f " + shift + " /usr/bin/tclsh \"$@\"\n");
        for (const QString& tool : QStringList{"dig", "ldapsearch"})
            standIn(tool, "unset LD_PRELOAD\nexec /usr/bin/" + tool.toUtf8() + " \"$@\"\n");
        checkResult(check(), sentence);
        QCOMPARE(noted().isEmpty(), !sentence.isEmpty());
    }

    void readsTheClockInAnyZone()
    {
        for (const char* zone : {"America/New_York", "Asia/Tokyo"}) {
            qputenv("TZ", zone);
            const ScriptResult result = check();
            qunsetenv("TZ");
            checkResult(result);
        }
    }

    void allowsFiveMinutes_data()
    {
        addColumns<int, QString>("ahead", "said");
        addRow("none", 0, "");
        addRow("five minutes ahead", 300, "");
        addRow("five minutes behind", -300, "");
        addRow("more than five minutes ahead", 301, "5 minutes ahead of");
        addRow("more than five minutes behind", -301, "5 minutes behind");
        addRow("nearly six", 355, "6 minutes ahead of");
    }

    void allowsFiveMinutes()
    {
        QFETCH(int, ahead);
        QFETCH(QString, said);
        // The controller's clock says 20330518033320: 2000000000 seconds.
        const QString sentence =
            runTcl(QString("proc session::clock {what args} {\n"
                           "    if {$what eq \"seconds\"} {return %1}\n"
                           "    return [::clock $what {*}$args]\n"
                           "}\n"
                           "catch {session::check_clock 20330518033320} sentence\n"
                           "puts $sentence")
                       .arg(2000000000 + ahead));
        QCOMPARE(sentence, said.isEmpty() ? QString() : clockIs.arg(said));
    }
};

DOMAIN_TEST_MAIN(TestNameServers)
#include "tst_nameservers.moc"

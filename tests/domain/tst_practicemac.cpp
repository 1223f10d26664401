#include "tests/domain/scripttest.h"
#include "tests/support/files.h"

#include <QDir>
#include <QProcess>

namespace {

const QString controller = QStringLiteral("192.0.2.1");

// The exit status of a connection to the directory service there: 124 when four seconds bring no
// answer, not even that ARP finds no such host, which comes after three.
int connectionTo(const QString& address)
{
    return QProcess::execute(
        "/usr/bin/timeout",
        {"4", "/bin/bash", "-c", "exec 3<>/dev/tcp/" + address + "/389 2>/dev/null"});
}

void packets(const QString& fate, const QString& address)
{
    PracticeMac::run(PracticeMac::script("packets"), {fate, address});
}

const QStringList asAdministrator{"-u", PracticeMac::administrator, "-p", PracticeMac::password};

// What a tool of the agent says when it fails.
QString refusal(const QString& tool, const QStringList& arguments)
{
    QProcess agent;
    agent.start(tool, arguments);
    if (!agent.waitForFinished(60000) || agent.exitCode() != 1)
        qFatal("%s ended with %d: %s", qPrintable(tool), agent.exitCode(),
               agent.readAllStandardOutput().constData());
    return QString::fromUtf8(agent.readAllStandardOutput());
}

} // namespace

// What the practice Mac itself promises to the tests and the scenarios.
class TestPracticeMac : public ScriptTest
{
    Q_OBJECT

private slots:
    void lostPacketsAreNotRefusedAndArriveAgain()
    {
        packets("lose", "198.51.100.1");
        QCOMPARE(connectionTo("198.51.100.1"), 124);

        QCOMPARE(connectionTo(controller), 0);
        packets("lose", controller);
        const int lost = connectionTo(controller);
        packets("deliver", controller);
        QCOMPARE(lost, 124);
        QCOMPARE(connectionTo(controller), 0);
    }

    void scutilTellsTheNameServersAsAMacDoes()
    {
        rewrite("/etc/resolv.conf",
                "search home.test\nnameserver 192.0.2.53\nnameserver 192.0.2.54\n");
        QVERIFY(QDir().mkpath("/etc/resolver"));
        writeFile("/etc/resolver/example.test",
                  "nameserver 192.0.2.1\nport 5353\nsearch_order 2\n");
        const QString said = PracticeMac::run("/usr/sbin/scutil", {"--dns"});
        QVERIFY(QFile::remove("/etc/resolver/example.test"));

        QVERIFY2(said.startsWith("DNS configuration\n"
                                 "\n"
                                 "resolver #1\n"
                                 "  search domain[0] : home.test\n"
                                 "  nameserver[0] : 192.0.2.53\n"
                                 "  nameserver[1] : 192.0.2.54\n"
                                 "  if_index : 15 (en0)\n"
                                 "  flags    : Request A records, Request AAAA records\n"),
                 qPrintable(said));
        QVERIFY2(said.contains("\n"
                               "resolver #2\n"
                               "  domain   : local\n"
                               "  options  : mdns\n"
                               "  timeout  : 5\n"
                               "  flags    : Request A records, Request AAAA records\n"
                               "  reach    : 0x00000000 (Not Reachable)\n"
                               "  order    : 300000\n"
                               "\n"
                               "resolver #3\n"
                               "  domain   : 254.169.in-addr.arpa\n"),
                 qPrintable(said));
        QVERIFY2(said.contains("\n"
                               "resolver #5\n"
                               "  domain   : example.test\n"
                               "  nameserver[0] : 192.0.2.1\n"
                               "  port     : 5353\n"
                               "  flags    : Request A records, Request AAAA records\n"
                               "  reach    : 0x00020002 (Reachable,Directly Reachable Address)\n"
                               "  order    : 2\n"
                               "\n"
                               "DNS configuration (for scoped queries)\n"
                               "\n"
                               "resolver #1\n"
                               "  search domain[0] : home.test\n"),
                 qPrintable(said));
    }

    void agentTakesADomainWithDnssFullStop()
    {
        PracticeMac::run("/usr/local/sbin/mvjoin",
                         asAdministrator + QStringList{"example.test.", "-w", "-n", "form-mac"});
        QCOMPARE(PracticeMac::directoryOn("form-mac").state, QString("enabled"));
    }

    // A group can stand for the zone, as the agent looks for its name only.
    void agentFindsAZoneWithParenthesesInItsName()
    {
        PracticeMac::run("/usr/bin/samba-tool",
                         {"group", "add", "Lab (old)",
                          "--groupou=CN=Zones,CN=Morvanta,CN=Program Data",
                          "--configfile=/var/lib/practice-domain/etc/smb.conf"});
        PracticeMac::run("/usr/local/sbin/mvjoin",
                         asAdministrator +
                             QStringList{PracticeMac::domain, "-z", "Lab (old)", "-n", "zone-mac"});
        QCOMPARE(PracticeMac::directoryOn("zone-mac").description, QString("Zone Lab (old)"));
    }

    void agentTellsWhyTheDirectoryDidNotAnswer()
    {
        standIn("ldapsearch", "[ \"$1\" = -Q ] || exec /usr/bin/ldapsearch \"$@\"\n"
                              "echo SASL/GSSAPI >&2\n"
                              "echo 'Server is busy (51)' >&2\n"
                              "exit 51\n");
        QCOMPARE(refusal("/usr/local/sbin/mvjoin",
                         asAdministrator + QStringList{PracticeMac::domain, "-w"}),
                 QString("The domain controller dc1.example.test did not answer. Server is busy "
                         "(51)\n"));
    }

    void agentTellsWhyTheAccountIsNotDisabled_data()
    {
        addColumns<QByteArray, QString>("answer", "reason");
        addRow("silence", QByteArray("exit 124\n"), QString("The controller stopped answering."));
        addRow("a refusal", QByteArray("echo 'Server is busy (51)' >&2\nexit 51\n"),
               QString("Server is busy (51)"));
        addRow("an entry without its flags", QByteArray("echo 'dn: CN=kept'\n"),
               QString("You may not read its userAccountControl."));
    }

    // The stand-in answers the question for the account's flags.
    void agentTellsWhyTheAccountIsNotDisabled()
    {
        QFETCH(QByteArray, answer);
        QFETCH(QString, reason);
        static int number = 0;
        const QString name = QString("kept-%1").arg(++number);
        joinMac(name);
        standIn("ldapsearch", "case \"$*\" in\n"
                              "*userAccountControl) ;;\n"
                              "*) exec /usr/bin/ldapsearch \"$@\" ;;\n"
                              "esac\n" +
                                  answer);
        QCOMPARE(refusal("/usr/local/sbin/mvleave", asAdministrator),
                 QString("The computer account CN=%1,CN=Computers,DC=example,DC=test could not be "
                         "disabled. %2\n")
                     .arg(name, reason));
        QCOMPARE(PracticeMac::directoryOn(name).state, QString("enabled"));
    }

    void agentRefuses_data()
    {
        addColumns<QString, QStringList, int, QString>("tool", "arguments", "status", "sentence");
        const QString join = "/usr/local/sbin/mvjoin";
        const QString needed = "A domain and a user are needed.\n";
        const QStringList option{"-x"};
        addRow("no domain", join, QStringList{"-u", "anna", "-p", "any", "-w"}, 1, needed);
        addRow("no user", join, QStringList{"example.test", "-p", "any", "-w"}, 1, needed);
        addRow("an unknown option of a join", join, option, 1, "mvjoin: unknown option -x\n");
        addRow("an unknown option of a leave", "/usr/local/sbin/mvleave", option, 1,
               "mvleave: unknown option -x\n");
        addRow("a question about a Mac that is not joined", "/usr/local/bin/mvinfo",
               QStringList{"-d"}, 10, "");
    }

    void agentRefuses()
    {
        QFETCH(QString, tool);
        QFETCH(QStringList, arguments);
        QProcess agent;
        agent.setProcessChannelMode(QProcess::MergedChannels);
        agent.start(tool, arguments);
        QVERIFY(agent.waitForFinished());
        QTEST(QString::fromUtf8(agent.readAll()), "sentence");
        QTEST(agent.exitCode(), "status");
    }

    void helperRunsNothingButTheAgentsTools()
    {
        for (const QStringList& arguments : {QStringList{"/bin/echo", "run"}, QStringList()}) {
            QProcess helper;
            helper.start("/usr/local/share/morvantad/libexec/gui_helper_tool", arguments);
            QVERIFY(helper.waitForFinished());
            QVERIFY2(helper.exitCode() != 0, qPrintable(arguments.join(' ')));
            QCOMPARE(helper.readAllStandardOutput(), QByteArray());
            QVERIFY(helper.readAllStandardError().startsWith("usage: gui_helper_tool "));
        }
    }
};

DOMAIN_TEST_MAIN(TestPracticeMac)
#include "tst_practicemac.moc"

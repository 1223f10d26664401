#include "tests/domain/scripttest.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>

// How the two scripts of the bundle find a controller: names, dead ones, those that are lost,
// clocks.
class TestControllers : public ScriptTest
{
    Q_OBJECT

private slots:
    void cleanup();

    void goesPastDeadControllers_data();
    void goesPastDeadControllers();
    void saysHowManyWereTried_data();
    void saysHowManyWereTried();
    void asksSixteenAtOnce();
    void asksThePreferredOnesFirst_data();
    void asksThePreferredOnesFirst();
    void takesTheFirstThatAnswers();
    void goesPastAControllerWithoutKerberos();
    void goesPastAControllerOfAnotherDomain();
    void goesToAnotherControllerWhenOneIsLost_data();
    void goesToAnotherControllerWhenOneIsLost();
    void saysWhichControllerWasLost_data();
    void saysWhichControllerWasLost();
    void goesToAnotherControllerOnce();
    void asksNoReverseDns_data();
    void asksNoReverseDns();
    void takesAControllerByAnAlias();
    void asksTheNameServerOfTheDomain();
    void asksTheSecondNameServer();
    void saysThatNoDnsServerAnswers();
    void saysWhatTheDnsServerAnswers();
    void readsTheMacsResolvers_data();
    void readsTheMacsResolvers();
    void comparesTheClock_data();
    void comparesTheClock();
    void allowsFiveMinutes_data();
    void allowsFiveMinutes();

private:
    // Has DNS list these controllers, in the form of practice/list_controllers.
    void listControllers(const QStringList& controllers);
    // A controller beside dc1; see the script second_controller.
    void startController(const QString& name, const QString& address, int directory, int kerberos);
    void stopControllers();
    // Has dc1's directory answer after the others'.
    void delayFirstController();

    QList<QProcess*> controllers;
    QStringList serviceNames; // of dc1, as they were
};

namespace {

// Controllers that drop every packet, for listControllers.
QStringList deadControllers(int count, const QString& preference = {})
{
    QStringList controllers;
    QStringList addresses;
    for (int number = 1; number <= count; ++number) {
        addresses << QString("198.51.100.%1").arg(number);
        controllers << QString("dead%1=%2%3").arg(number).arg(addresses.last(), preference);
    }
    PracticeMac::run(PracticeMac::script("packets"), QStringList("lose") + addresses);
    return controllers;
}

void compare(const ScriptResult& result, const QString& errors = {})
{
    QCOMPARE(result.errors.trimmed(), errors);
    QCOMPARE(result.status, errors.isEmpty() ? 0 : 1);
}

} // namespace

void TestControllers::listControllers(const QStringList& controllers)
{
    PracticeMac::run(PracticeMac::script("list_controllers"), controllers);
}

void TestControllers::startController(const QString& name, const QString& address, int directory,
                                      int kerberos)
{
    PracticeMac::run("/usr/sbin/ip", {"address", "replace", address + "/32", "dev", "lo"});
    if (serviceNames.isEmpty()) {
        QStringList names = {"ldap/dc1.example.test", "ldap/dc2.example.test",
                             "ldap/dc3.example.test"};
        serviceNames = PracticeMac::run(testScript("set_service_names"), names)
                           .split('\n', Qt::SkipEmptyParts);
    }
    auto* process = new QProcess(this);
    controllers << process;
    process->start(testScript("second_controller"),
                   {name, address, QString::number(directory), QString::number(kerberos)});
    QVERIFY(process->waitForReadyRead());
}

void TestControllers::delayFirstController()
{
    standIn("ldapsearch", "case \"$*\" in\n"
                          "-x*//dc1*) sleep 0.7 ;;\n"
                          "esac\n"
                          "exec /usr/bin/ldapsearch \"$@\"\n");
}

void TestControllers::stopControllers()
{
    for (QProcess* process : controllers) {
        process->kill();
        process->waitForFinished();
        delete process;
    }
    controllers.clear();
}

void TestControllers::cleanup()
{
    stopControllers();
    if (!serviceNames.isEmpty())
        PracticeMac::run(testScript("set_service_names"), serviceNames);
    serviceNames.clear();
    listControllers({"dc1"});
    QFile::remove("/etc/resolver/example.test");
    ScriptTest::cleanup();
}

void TestControllers::goesPastDeadControllers_data()
{
    QTest::addColumn<int>("dead");
    for (const int dead : {1, 3, 8, 16})
        QTest::newRow(qPrintable(QString::number(dead))) << dead;
}

void TestControllers::goesPastDeadControllers()
{
    QFETCH(int, dead);
    const ScriptResult alone = list();
    listControllers(deadControllers(dead) + QStringList("dc1/10"));
    const ScriptResult checked = check();
    compare(checked);
    QVERIFY2(checked.milliseconds < 3000, qPrintable(QString::number(checked.milliseconds)));
    const ScriptResult listed = list();
    compare(listed);
    QCOMPARE(listed.output, alone.output);
    QVERIFY2(listed.milliseconds < alone.milliseconds + 3000,
             qPrintable(QString::number(listed.milliseconds)));
}

void TestControllers::saysHowManyWereTried_data()
{
    QTest::addColumn<int>("dead");
    QTest::addColumn<int>("tried");
    QTest::newRow("1") << 1 << 1;
    QTest::newRow("16") << 16 << 16;
    QTest::newRow("40") << 40 << 40;
    QTest::newRow("more than there is time for") << 120 << 80;
}

void TestControllers::saysHowManyWereTried()
{
    QFETCH(int, dead);
    QFETCH(int, tried);
    listControllers(deadControllers(dead));
    const ScriptResult result = check();
    compare(result, QString("No domain controller of example.test can be reached (%1 tried): check "
                            "network and firewalls.")
                        .arg(tried));
    QVERIFY2(result.milliseconds < 6000, qPrintable(QString::number(result.milliseconds)));
}

// The stand-in notes when it began and how many there were then.
void TestControllers::asksSixteenAtOnce()
{
    listControllers(deadControllers(40));
    QTemporaryDir folder;
    standIn("ldapsearch", "echo $(date +%s%3N) $(pgrep -cx ldapsearch) >>" +
                              folder.filePath("starts").toUtf8() +
                              "\nexec /usr/bin/ldapsearch \"$@\"\n");
    check();
    QFile file(folder.filePath("starts"));
    QVERIFY(file.open(QFile::ReadOnly));
    QList<qint64> starts;
    int most = 0;
    for (const QByteArray& line : file.readAll().trimmed().split('\n')) {
        starts << line.split(' ').first().toLongLong();
        most = qMax(most, line.split(' ').last().toInt());
    }
    std::sort(starts.begin(), starts.end());
    QCOMPARE(starts.size(), 40);
    QVERIFY2(most > 8 && most <= 16, qPrintable(QString::number(most)));
    QVERIFY(starts.at(15) < starts.at(0) + 1000);
    QVERIFY(starts.at(16) > starts.at(0) + 900);
    QVERIFY(starts.at(16) < starts.at(0) + 2000);
    QVERIFY(starts.at(32) > starts.at(16) + 900);
}

void TestControllers::asksThePreferredOnesFirst_data()
{
    QTest::addColumn<QString>("others");
    QTest::addColumn<QString>("preferred");
    QTest::newRow("greater weight") << "/0/9"
                                    << "dc1/0/10";
    QTest::newRow("smaller priority") << "/10/1"
                                      << "dc1/9/1";
    QTest::newRow("smaller priority with less weight") << "/1/100"
                                                       << "dc1/0/1";
}

// It is among the first sixteen, and no others are asked.
void TestControllers::asksThePreferredOnesFirst()
{
    QFETCH(QString, others);
    QFETCH(QString, preferred);
    listControllers(deadControllers(32, others) + QStringList(preferred));
    note({"ldapsearch"});
    compare(check());
    const QStringList asked = noted().filter(" -x ");
    QCOMPARE(asked.size(), 16);
    QVERIFY(!asked.filter("dc1").isEmpty());
}

void TestControllers::takesTheFirstThatAnswers()
{
    startController("dc2", "192.0.2.2", 9, 9);
    listControllers({"dc1/0", "dc2=192.0.2.2/1"});
    delayFirstController();
    standIn("kinit", "grep -q 'kdc = dc2.example.test' \"$KRB5_CONFIG\" || [ \"$1\" = --version ] "
                     "|| exit 1\n"
                     "exec /usr/bin/kinit \"$@\"\n");
    compare(check());
}

void TestControllers::goesPastAControllerWithoutKerberos()
{
    startController("dc2", "192.0.2.2", 9, 0);
    listControllers({"dc1", "dc2=192.0.2.2"});
    delayFirstController();
    note({"kinit"});
    compare(check());
    QCOMPARE(noted(),
             QStringList({"kinit --version", "kinit -l 10m -- Administrator@EXAMPLE.TEST"}));
    listControllers({"dc2"});
    compare(check(), "No domain controller of example.test can be reached (1 tried): check network "
                     "and firewalls.");
}

// As after a move: the address of old.example.test's controller is another domain's now.
void TestControllers::goesPastAControllerOfAnotherDomain()
{
    rewrite("/etc/hosts", "127.0.0.1 localhost\n192.0.2.1 dc1.example.test dc1.old.example.test\n");
    compare(check("old.example.test"),
            "No domain controller of old.example.test can be reached (1 tried): check network and "
            "firewalls.");
}

void TestControllers::goesToAnotherControllerWhenOneIsLost_data()
{
    QTest::addColumn<int>("directory");
    QTest::addColumn<int>("kerberos");
    QTest::newRow("after its first answer") << 1 << 9;
    QTest::newRow("at the signing in") << 9 << 1;
}

void TestControllers::goesToAnotherControllerWhenOneIsLost()
{
    QFETCH(int, directory);
    QFETCH(int, kerberos);
    const ScriptResult alone = list();
    for (const bool listing : {false, true}) {
        startController("dc2", "192.0.2.2", directory, kerberos);
        listControllers({"dc1", "dc2=192.0.2.2"});
        delayFirstController();
        const ScriptResult result = listing ? list() : check();
        compare(result);
        QCOMPARE(result.output, listing ? alone.output : QString());
        stopControllers();
    }
}

void TestControllers::saysWhichControllerWasLost_data()
{
    goesToAnotherControllerWhenOneIsLost_data();
}

void TestControllers::saysWhichControllerWasLost()
{
    QFETCH(int, directory);
    QFETCH(int, kerberos);
    startController("dc2", "192.0.2.2", directory, kerberos);
    listControllers({"dc2=192.0.2.2"});
    const ScriptResult result = check();
    QCOMPARE(result.firstLine(), QString("The controller dc2.example.test stopped answering: check "
                                         "the network, and try again."));
    QCOMPARE(result.status, 1);
}

void TestControllers::goesToAnotherControllerOnce()
{
    startController("dc2", "192.0.2.2", 1, 9);
    startController("dc3", "192.0.2.3", 1, 9);
    listControllers({"dc1", "dc2=192.0.2.2", "dc3=192.0.2.3"});
    standIn("ldapsearch", "case \"$*\" in\n"
                          "-x*//dc1*) sleep 0.8 ;;\n"
                          "-x*//dc3*) sleep 0.4 ;;\n"
                          "esac\n"
                          "exec /usr/bin/ldapsearch \"$@\"\n");
    const ScriptResult result = check();
    QCOMPARE(result.firstLine(), QString("The controller dc3.example.test stopped answering: check "
                                         "the network, and try again."));
}

void TestControllers::asksNoReverseDns_data()
{
    QTest::addColumn<QByteArray>("hosts");
    QTest::newRow("missing") << QByteArray();
    QTest::newRow("wrong") << QByteArray("192.0.2.1 wrong.name.test\n");
}

void TestControllers::asksNoReverseDns()
{
    QFETCH(QByteArray, hosts);
    rewrite("/etc/hosts", "127.0.0.1 localhost\n" + hosts);
    compare(check());
    compare(list());
}

void TestControllers::takesAControllerByAnAlias()
{
    listControllers({"alias=192.0.2.1"});
    compare(check());
}

// The Mac's own name server, that of a home, knows nothing of the domain; a VPN's does.
void TestControllers::asksTheNameServerOfTheDomain()
{
    rewrite("/etc/resolv.conf", "");
    PracticeMac::run(PracticeMac::script("scenarios/split-dns"), {});
    const ScriptResult result = check();
    const ScriptResult other = check("other.test");
    PracticeMac::run("/usr/bin/pkill", {"-f", "unknowing_name_server"});
    compare(result);
    compare(other, "The domain other.test was not found: check its full name, and that this Mac "
                   "uses its DNS servers.");
}

void TestControllers::asksTheSecondNameServer()
{
    deadControllers(1);
    rewrite("/etc/resolv.conf", "nameserver 198.51.100.1\nnameserver 192.0.2.1\n");
    rewrite("/etc/hosts", "127.0.0.1 localhost practice-mac\n192.0.2.1 dc1.example.test\n");
    compare(check());
}

void TestControllers::saysThatNoDnsServerAnswers()
{
    deadControllers(1);
    rewrite("/etc/resolv.conf", "nameserver 198.51.100.1\n");
    const ScriptResult result = check();
    QCOMPARE(result.firstLine(), QString("No DNS server could look up example.test (no answer): "
                                         "check the network and this Mac's DNS settings."));
    QCOMPARE(result.status, 1);
    QVERIFY(result.milliseconds < 6000);
}

void TestControllers::saysWhatTheDnsServerAnswers()
{
    standIn("dig", "echo ';; ->>HEADER<<- opcode: QUERY, status: SERVFAIL, id: 1'\n");
    const ScriptResult result = check();
    QCOMPARE(result.firstLine(), QString("No DNS server could look up example.test (SERVFAIL): "
                                         "check the network and this Mac's DNS settings."));
    QCOMPARE(result.status, 1);
}

void TestControllers::readsTheMacsResolvers_data()
{
    QTest::addColumn<QString>("domain");
    QTest::addColumn<QString>("servers");
    QTest::newRow("default") << "elsewhere.example"
                             << "{@192.0.2.53 -p 53} {@fe80::1%12 -p 53}";
    QTest::newRow("domain of its own") << "corp.example"
                                       << "{@198.51.100.53 -p 53}";
    QTest::newRow("below it") << "a.Corp.Example"
                              << "{@198.51.100.53 -p 53}";
    QTest::newRow("only as a whole label") << "notcorp.example"
                                           << "{@192.0.2.53 -p 53} {@fe80::1%12 -p 53}";
    QTest::newRow("the longest, with a port") << "lab.corp.example"
                                              << "{@198.51.100.54 -p 5353}";
    QTest::newRow("equals by their order") << "two.example"
                                           << "{@203.0.113.2 -p 53}";
    QTest::newRow("no name server by multicast") << "corp.local"
                                                 << "{@192.0.2.53 -p 53} {@fe80::1%12 -p 53}";
    QTest::newRow("not one for a single interface") << "scoped.example"
                                                    << "{@192.0.2.53 -p 53} {@fe80::1%12 -p 53}";
}

void TestControllers::readsTheMacsResolvers()
{
    QFETCH(QString, domain);
    QFETCH(QString, servers);
    standIn("scutil", R"(cat <<'END'
DNS configuration

resolver #1
  search domain[0] : home.example
  search domain[1] : corp.example
  nameserver[0] : 192.0.2.53
  nameserver[1] : fe80::1%12
  if_index : 15 (en0)
  flags    : Request A records, Request AAAA records
  reach    : 0x00020002 (Reachable,Directly Reachable Address)

resolver #2
  nameserver[0] : 192.0.2.99
  order    : 200000

resolver #3
  domain   : corp.example
  nameserver[0] : 198.51.100.53
  flags    : Supplemental, Request A records, Request AAAA records
  reach    : 0x00000003 (Reachable,Transient Connection)
  order    : 102000

resolver #4
  domain   : lab.corp.example
  nameserver[0] : 198.51.100.54
  port     : 5353
  order    : 102200

resolver #5
  domain   : two.example
  nameserver[0] : 203.0.113.1
  order    : 103000

resolver #6
  domain   : two.example
  nameserver[0] : 203.0.113.2
  order    : 99000

resolver #7
  domain   : local
  options  : mdns
  nameserver[0] : 224.0.0.251
  timeout  : 5
  flags    : Request A records, Request AAAA records
  reach    : 0x00000000 (Not Reachable)
  order    : 300000

resolver #8
  domain   : none.example
  flags    : Request A records, Request AAAA records

DNS configuration (for scoped queries)

resolver #1
  domain   : scoped.example
  nameserver[0] : 203.0.113.3
  flags    : Scoped, Request A records
  reach    : 0x00020002 (Reachable,Directly Reachable Address)
END
)");
    QCOMPARE(runTcl("set session::domain " + domain + "\nputs [session::name_servers]"), servers);
}

void TestControllers::comparesTheClock_data()
{
    QTest::addColumn<QByteArray>("shift");
    QTest::addColumn<QString>("sentence");
    const QString sentence =
        "This Mac's clock is %1 the domain's: set its date and time, and try again.";
    QTest::newRow("an hour ahead") << QByteArray("+1h") << sentence.arg("60 minutes ahead of");
    QTest::newRow("a day behind") << QByteArray("-1d") << sentence.arg("1440 minutes behind");
    QTest::newRow("four minutes ahead") << QByteArray("+4m") << QString();
    QTest::newRow("four minutes behind") << QByteArray("-4m") << QString();
}

// The interpreter has another clock, and so has kinit. No password is given away meanwhile.
void TestControllers::comparesTheClock()
{
    QFETCH(QByteArray, shift);
    QFETCH(QString, sentence);
    note({"kinit"});
    standIn("tclsh", "exec faketime -f " + shift + " /usr/bin/tclsh \"$@\"\n");
    for (const QString& tool : QStringList{"dig", "ldapsearch"})
        standIn(tool, "unset LD_PRELOAD\nexec /usr/bin/" + tool.toUtf8() + " \"$@\"\n");
    compare(check(), sentence);
    QCOMPARE(noted().isEmpty(), !sentence.isEmpty());
}

void TestControllers::allowsFiveMinutes_data()
{
    QTest::addColumn<int>("ahead");
    QTest::addColumn<QString>("said");
    QTest::newRow("none") << 0 << "";
    QTest::newRow("five minutes ahead") << 300 << "";
    QTest::newRow("five minutes behind") << -300 << "";
    QTest::newRow("more than five minutes ahead") << 301 << "5 minutes ahead of";
    QTest::newRow("more than five minutes behind") << -301 << "5 minutes behind";
    QTest::newRow("nearly six") << 355 << "6 minutes ahead of";
}

void TestControllers::allowsFiveMinutes()
{
    QFETCH(int, ahead);
    QFETCH(QString, said);
    const QString time =
        QDateTime::fromSecsSinceEpoch(2000000000, Qt::UTC).toString("yyyyMMddHHmmss");
    const QString sentence = runTcl(QString("proc session::clock {what args} {\n"
                                            "    if {$what eq \"seconds\"} {return %1}\n"
                                            "    return [::clock $what {*}$args]\n"
                                            "}\n"
                                            "catch {session::check_clock %2} sentence\n"
                                            "puts $sentence")
                                        .arg(2000000000 + ahead)
                                        .arg(time));
    QCOMPARE(sentence, said.isEmpty() ? QString()
                                      : QString("This Mac's clock is %1 the domain's: set its date "
                                                "and time, and try again.")
                                            .arg(said));
}

DOMAIN_TEST_MAIN(TestControllers)
#include "tst_controllers.moc"

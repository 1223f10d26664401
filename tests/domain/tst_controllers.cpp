#include "tests/domain/scripttest.h"
#include "tests/support/datarows.h"

#include <QDateTime>
#include <QDir>
#include <QProcess>
#include <QRegularExpression>

using PracticeMac::processes;

namespace {

// Controllers that drop every packet, for listControllers.
QStringList deadControllers(int count)
{
    QStringList controllers;
    for (int number = 1; number <= count; ++number)
        controllers << QString("dead%1=198.51.100.%1").arg(number);
    return controllers;
}

const QStringList signedInOnce{"kinit --version",
                               "kinit -c FILE:PRIVATE/ticket -l 10m -- Administrator@EXAMPLE.TEST"};

// Waits for the $mark of delayDirectories().
const QByteArray untilMarked = "until [ -e \"$mark\" ]; do sleep 0.1; done";

} // namespace

// Which controller the two scripts of the bundle take, and what they do when one is dead or lost.
class TestControllers : public ScriptTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        DomainTest::initTestCase();
        const QStringList addresses =
            deadControllers(120).replaceInStrings(QRegularExpression(".*="), "");
        PracticeMac::run(PracticeMac::script("packets"), QStringList("lose") + addresses);
    }

    void cleanup()
    {
        stopControllers();
        if (!serviceNames.isEmpty())
            PracticeMac::run(testFile("set_service_names"), serviceNames);
        serviceNames.clear();
        if (listed)
            listControllers({"dc1"});
        listed = false;
        ScriptTest::cleanup();
    }

    void goesPastDeadControllers()
    {
        const ScriptResult alone = list();
        for (const int dead : {1, 3, 8, 16}) {
            listControllers(deadControllers(dead) + QStringList("dc1/10"));
            const ScriptResult checked = check();
            checkResult(checked);
            const ScriptResult listed = list();
            checkResult(listed);
            QCOMPARE(listed.output, alone.output);
            const QString times = QString::asprintf("%d dead: %lld ms, %lld ms", dead,
                                                    checked.milliseconds, listed.milliseconds);
            QVERIFY2(checked.milliseconds < 5000, qPrintable(times));
            QVERIFY2(listed.milliseconds < alone.milliseconds + 5000, qPrintable(times));
        }
    }

    void asksAFourthBatch()
    {
        letDeadOnesWait();
        listControllers(deadControllers(48) + QStringList("dc1/10"));
        checkResult(check());
    }

    void saysHowManyWereTried_data()
    {
        addColumns<int, int, int>("dead", "tried", "within");
        addRow("1", 1, 1, 4500);
        addRow("16", 16, 16, 4500);
        addRow("more than there is time for", 120, 80, 8000);
    }

    void saysHowManyWereTried()
    {
        QFETCH(int, dead);
        QFETCH(int, tried);
        QFETCH(int, within);
        letDeadOnesWait();
        listControllers(deadControllers(dead));
        const ScriptResult result = check();
        if (dead > tried) {
            // A busy machine begins fewer batches in the time that there is.
            const int said =
                QRegularExpression("\\((\\d+) tried").match(result.errors).captured(1).toInt();
            QVERIFY2(said >= 32 && said <= tried && said % 16 == 0, qPrintable(result.errors));
            tried = said;
        }
        checkResult(result, Sentence::unreachable.arg("example.test").arg(tried));
        QVERIFY2(result.milliseconds < within, qPrintable(QString::number(result.milliseconds)));
    }

    // The stand-in makes a file when it begins.
    void asksSixteenAtOnce()
    {
        listControllers(deadControllers(40));
        QTemporaryDir folder;
        letDeadOnesWait(": >" + folder.path().toUtf8() + "/$$\n");
        QProcess script;
        startScript(&script, "check_domain_cred.tcl",
                    {PracticeMac::domain, PracticeMac::administrator, PracticeMac::password});
        const QString tcl = QString::number(script.processId()); // the interpreter becomes tclsh
        int most = 0;
        // R, S and D: not those that have ended and for which the script has not waited yet.
        while (!script.waitForFinished(10) && script.state() != QProcess::NotRunning)
            most =
                qMax(most, int(processes({"-r", "RSD", "-P", tcl, "^(ldapsearch|sleep)$"}).size()));
        QCOMPARE(most, 16);

        const QFileInfoList starts =
            QDir(folder.path()).entryInfoList(QDir::Files, QDir::Time | QDir::Reversed);
        QCOMPARE(starts.size(), 40);
        const auto pause = [&starts](int first, int second) {
            return starts.at(first).lastModified().msecsTo(starts.at(second).lastModified());
        };
        QVERIFY(pause(0, 16) > 500);
        QVERIFY(pause(0, 16) < 2500);
        QVERIFY(pause(16, 32) > 500);
    }

    void asksNoFurtherBatchOnceOneAnswered()
    {
        QCOMPARE(batches(2), QString("16 1\n16 1"));
    }

    void givesTheLastBatchAllOfTheTime()
    {
        QCOMPARE(batches(0), QString("16 1\n16 1\n8 0"));
    }

    void waitsForNobodyWhenAllHaveFailed()
    {
        QCOMPARE(
            runTcl("set session::base DC=example,DC=test\n"
                   "set began [clock seconds]\n"
                   "session::first_answer nowhere.invalid [expr {[clock milliseconds] + 30000}]\n"
                   "puts [expr {[clock seconds] - $began < 15}]"),
            QString("1"));
    }

    void stopsAskingTheOthers()
    {
        QCOMPARE(
            runTcl("set session::base DC=example,DC=test\n"
                   "set until [expr {[clock milliseconds] + 5000}]\n"
                   "lassign [session::first_answer {198.51.100.1 dc1.example.test} $until] host\n"
                   "puts \"$host [array size session::output]\""),
            QString("dc1.example.test 0"));
    }

    void takesTheFirstThatAnswers()
    {
        startController("dc2", "192.0.2.2", 9, 9);
        listControllers({"dc1/0", "dc2=192.0.2.2/1"});
        delayFirstController();
        standIn("kinit",
                "grep -q 'kdc = dc2.example.test' \"$KRB5_CONFIG\" || [ \"$1\" = --version ] "
                "|| exit 1\n"
                "exec /usr/bin/kinit \"$@\"\n");
        checkResult(check());
    }

    void goesPastAControllerWithoutKerberos()
    {
        startController("dc2", "192.0.2.2", 9, 0);
        listControllers({"dc1", "dc2=192.0.2.2"});
        delayFirstController();
        note({"kinit"});
        checkResult(check());
        QCOMPARE(noted(), signedInOnce);
        listControllers({"dc2"});
        checkResult(check(), Sentence::unreachable.arg("example.test").arg(1));
    }

    // The one listed as other answers first and calls itself dc2, whose address is dead.
    void goesPastAControllerThatDropsKerberos()
    {
        startController("dc2", "192.0.2.2", 9, 9);
        listControllers({"dc2=198.51.100.1"});
        listControllers({"dc1", "other=192.0.2.2"});
        delayFirstController();
        note({"kinit"});
        checkResult(check());
        QCOMPARE(noted(), signedInOnce);
    }

    // As after a move: the address of old.example.test's controller is another domain's now.
    void goesPastAControllerOfAnotherDomain()
    {
        rewrite("/etc/hosts",
                "127.0.0.1 localhost\n192.0.2.1 dc1.example.test dc1.old.example.test\n");
        const QString old = "old.example.test";
        checkResult(check(old), Sentence::unreachable.arg(old).arg(1));
    }

    // A single controller is in the last batch, which has all of the time.
    void waitsForASlowController()
    {
        standIn("ldapsearch", "[ \"$1\" = -x ] && sleep 2\nexec /usr/bin/ldapsearch \"$@\"\n");
        checkResult(check());
    }

    void goesToAnotherControllerWhenOneIsLost_data()
    {
        addColumns<int, int>("directory", "kerberos");
        addRow("after its first answer", 1, 9);
        addRow("at the signing in", 9, 1);
    }

    void goesToAnotherControllerWhenOneIsLost()
    {
        QFETCH(int, directory);
        QFETCH(int, kerberos);
        const ScriptResult alone = list();
        note({"kinit"});
        int signIns = 0;
        for (const bool listing : {false, true}) {
            startController("dc2", "192.0.2.2", directory, kerberos);
            listControllers({"dc1", "dc2=192.0.2.2"});
            silenceFirstController();
            const ScriptResult result = listing ? list() : check();
            checkResult(result);
            QCOMPARE(result.output, listing ? alone.output : QString());
            signIns += 2; // at dc2, then at dc1
            QCOMPARE(noted().filter("kinit -c").size(), signIns);
            stopControllers();
        }
    }

    void saysWhichControllerWasLost_data()
    {
        goesToAnotherControllerWhenOneIsLost_data();
    }

    void saysWhichControllerWasLost()
    {
        QFETCH(int, directory);
        QFETCH(int, kerberos);
        startController("dc2", "192.0.2.2", directory, kerberos);
        listControllers({"dc2=192.0.2.2"});
        checkRefusal(check(), Sentence::lost.arg("dc2"));
    }

    // dc2 and dc3 are lost at the signed search; dc1's directory answers only after that.
    void goesToAnotherControllerOnce()
    {
        startController("dc2", "192.0.2.2", 1, 9);
        startController("dc3", "192.0.2.3", 1, 9);
        listControllers({"dc1", "dc2=192.0.2.2", "dc3=192.0.2.3"});
        standIn("ldapsearch", R"(
after() { until [ -e "$0.lost$1" ]; do sleep 0.1; done; }
case "$*" in
-x*//dc1*) after 3 ;;
-x*//dc3*) after 2 ;;
-x*) ;;
*//dc2*) touch "$0.lost2" ;;
*//dc3*) touch "$0.lost3" ;;
esac
exec /usr/bin/ldapsearch "$@"
)");
        checkRefusal(check(), Sentence::lost.arg("dc3"));
    }

    void takesAControllerByAnAlias()
    {
        listControllers({"alias=192.0.2.1"});
        checkResult(check());
    }

private:
    // Has DNS list these controllers, in the form of practice/list_controllers.
    void listControllers(const QStringList& controllers)
    {
        PracticeMac::run(PracticeMac::script("list_controllers"), controllers);
        listed = true;
    }

    // A controller beside dc1; see the script second_controller.
    void startController(const QString& name, const QString& address, int directory, int kerberos)
    {
        PracticeMac::run("/usr/sbin/ip", {"address", "replace", address + "/32", "dev", "lo"});
        // dc1's account gets the names of the others' services, as it is dc1 that serves.
        if (serviceNames.isEmpty()) {
            const QStringList names = {"ldap/dc1.example.test", "ldap/dc2.example.test",
                                       "ldap/dc3.example.test"};
            serviceNames = PracticeMac::run(testFile("set_service_names"), names)
                               .split('\n', Qt::SkipEmptyParts);
        }
        auto* process = new QProcess(this);
        controllers << process;
        process->start(testFile("second_controller"),
                       {name, address, QString::number(directory), QString::number(kerberos)});
        QVERIFY(process->waitForReadyRead());
    }

    void stopControllers()
    {
        for (QProcess* process : controllers) {
            process->kill();
            process->waitForFinished();
            delete process;
        }
        controllers.clear();
    }

    // For each batch: how many are asked, and 1 where for at most a second. One answers in the
    // batch of this number, from 1, or for 0 none does. Asking takes no time here.
    static QString batches(int answering)
    {
        return runTcl(
            QString("set session::domain example.test\n"
                    "set session::controllers [lrepeat 40 a]\n"
                    "proc session::check_clock {time} {}\n"
                    "proc session::first_answer {hosts until} {\n"
                    "    puts \"[llength $hosts] [expr {$until-[clock milliseconds]<=1000}]\"\n"
                    "    return [expr {[incr ::batch] == %1 ? {a a 0} : {}}]\n"
                    "}\n"
                    "catch {session::choose_controller}")
                .arg(answering));
    }

    // Has what asks a dead controller do `first`, then wait 2 s, as ldapsearch would. The stand-in
    // starts in a fifth of ldapsearch's time, so that a busy machine, too, asks several batches in
    // time.
    void letDeadOnesWait(const QByteArray& first = {})
    {
        standIn("ldapsearch", "case \"$*\" in *//dead*)\n" + first +
                                  "exec sleep 2 ;;\nesac\nexec /usr/bin/ldapsearch \"$@\"\n");
    }

    // Before a question without a password (-x), has ldapsearch do `first` for dc1's directory, and
    // `others` for any other. $mark is a path of this call's own, at which nothing is at first.
    void delayDirectories(const QByteArray& first, const QByteArray& others)
    {
        standIn("ldapsearch", "mark=$0.mark" + QByteArray::number(++delays) + R"(
case "$*" in
-x*//dc1*) )" + first + R"( ;;
-x*) )" + others + R"( ;;
esac
exec /usr/bin/ldapsearch "$@"
)");
    }

    // Has dc1's directory answer only the second time that it is asked, and the others' only once
    // dc1's has been asked.
    void silenceFirstController()
    {
        delayDirectories("mkdir \"$mark\" 2>/dev/null && while sleep 0.1; do :; done", untilMarked);
    }

    // Has dc1's directory answer after another's has.
    void delayFirstController()
    {
        delayDirectories(untilMarked, "/usr/bin/ldapsearch \"$@\" && touch \"$mark\"; exit");
    }

    QList<QProcess*> controllers;
    QStringList serviceNames; // of dc1, as they were
    bool listed = false;      // by DNS, other controllers than dc1
    int delays = 0;           // for the mark of each delayDirectories()
};

DOMAIN_TEST_MAIN(TestControllers)
#include "tst_controllers.moc"

// Measures how long a real domain takes through the wizard, beside the same questions from a shell:
// the check of a name and a password behind dead controllers, and a tree of ten thousand
// containers. Prints times in nanoseconds: {name: {"ours": [...], "peer": [...]}}. Run it with
// practice/mac --scenario many.

#include "browser/cnbrowser.h"
#include "system/lowerpriv.h"
#include "tests/domain/joinoptions.h"
#include "tests/domain/practicemac.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <cstdio>
#include <ctime>

namespace {

constexpr int rounds = 7;

struct Times {
    QJsonArray ours;
    QJsonArray peer;
};

QJsonObject shown(const Times& times)
{
    return {{"ours", times.ours}, {"peer", times.peer}};
}

// Nanoseconds of processor time that this process, without its children, has used.
qint64 processorTime()
{
    timespec time = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return time.tv_sec * 1000000000LL + time.tv_nsec;
}

qint64 inShell(const QString& line)
{
    QElapsedTimer timer;
    timer.start();
    PracticeMac::run(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), line});
    return timer.nsecsElapsed();
}

QString signIn()
{
    return QStringLiteral("echo %1 | kinit %2@EXAMPLE.TEST >/dev/null")
        .arg(PracticeMac::password, PracticeMac::administrator);
}

QString question(const QString& scopeAndFilter)
{
    return QStringLiteral("ldapsearch -LLL -Q -Y GSSAPI -o ldif-wrap=no -E pr=1000/noprompt "
                          "-H ldap://dc1.example.test -b %1 %2 1.1 >/dev/null")
        .arg(PracticeMac::base, scopeAndFilter);
}

// Has DNS list this many controllers that drop every packet before the one that answers.
void listDeadControllers(int count)
{
    QStringList controllers;
    for (int number = 1; number <= count; ++number) {
        const QString address = QStringLiteral("198.51.100.%1").arg(number);
        PracticeMac::run(PracticeMac::script(QStringLiteral("packets")), {"lose", address});
        controllers << QStringLiteral("dead%1=%2").arg(number).arg(address);
    }
    controllers << QStringLiteral("dc1/10");
    PracticeMac::run(PracticeMac::script(QStringLiteral("list_controllers")), controllers);
}

// From the press on Continue to the next page.
qint64 check()
{
    WizardDriver wizard;
    wizard.goToCredentials();
    wizard.enterCredentials(PracticeMac::domain, PracticeMac::administrator, PracticeMac::password);
    QElapsedTimer timer;
    timer.start();
    const QStringList warnings = wizard.next();
    const qint64 taken = timer.nsecsElapsed();
    if (wizard.page() != 4)
        qFatal("The check failed: %s", qPrintable(warnings.join(QLatin1Char('\n'))));
    return taken;
}

// From the press on Browse to the tree, and the assistant's own part of it.
qint64 browseAll(QJsonArray* ownTimes)
{
    WizardDriver wizard;
    wizard.goToJoinOptions(PracticeMac::domain, PracticeMac::administrator, PracticeMac::password);
    openAdvancedOptions(&wizard);
    QElapsedTimer timer;
    timer.start();
    const qint64 own = processorTime();
    cnbrowser* browser = browse(&wizard);
    const qint64 taken = timer.nsecsElapsed();
    ownTimes->append(processorTime() - own);
    browser->close();
    return taken;
}

int measureAll()
{
    PracticeMac::consent();
    g_pProcess->setupauth();
    const QTemporaryDir folder;
    qputenv("KRB5CCNAME", folder.filePath(QStringLiteral("ticket")).toLocal8Bit());

    QJsonObject all;
    Times times;
    // The peer asks while no controller is dead: kinit by itself does not get past sixteen.
    for (int round = 0; round < rounds; ++round)
        times.peer.append(inShell(signIn() + " && " + question(QStringLiteral("-s base"))));
    for (const int dead : {0, 1, 16}) {
        listDeadControllers(dead);
        times.ours = {};
        for (int round = 0; round < rounds; ++round)
            times.ours.append(check());
        all.insert(QStringLiteral("check behind %1").arg(dead), shown(times));
    }

    listDeadControllers(0);
    Times listing;
    Times own;
    inShell(signIn());
    for (int round = 0; round < rounds; ++round) {
        listing.ours.append(browseAll(&own.ours));
        listing.peer.append(inShell(question(QStringLiteral(
            "-s sub '(|(objectClass=organizationalUnit)(objectClass=container))'"))));
    }
    own.peer = listing.ours;
    all.insert(QStringLiteral("containers"), shown(listing));
    all.insert(QStringLiteral("own time"), shown(own));
    puts(QJsonDocument(all).toJson().constData());
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    return runOnPracticeMac(argc, argv, measureAll);
}

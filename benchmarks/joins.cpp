// Joins the practice Mac alternately through the wizard and by the same command in a shell, and
// prints the real times in nanoseconds: {"ours": [...], "peer": [...]}. Run it with practice/mac.

#include "pages/joinflags.h"
#include "system/lowerpriv.h"
#include "tests/domain/practicemac.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

namespace {

constexpr int rounds = 7;

// Each join needs a Mac that is not joined, and makes a computer of its own.
void leave()
{
    if (PracticeMac::isJoined())
        PracticeMac::run(QStringLiteral("/usr/local/sbin/mvleave"), {QStringLiteral("-f")});
    joining = false;
}

// From the press on Join to the report.
qint64 joinThroughTheWizard(const QString& computerName)
{
    leave();
    WizardDriver wizard;
    wizard.goToJoinOptions(PracticeMac::domain, PracticeMac::administrator, PracticeMac::password);
    wizard.type(QStringLiteral("ComputerNameEdit"), computerName);
    QElapsedTimer timer;
    timer.start();
    const QStringList warnings = wizard.next();
    const qint64 taken = timer.nsecsElapsed();
    if (wizard.page() != 7)
        qFatal("The join failed: %s", qPrintable(warnings.join(QLatin1Char('\n'))));
    return taken;
}

qint64 joinFromAShell(const QString& computerName)
{
    leave();
    const QString command = QStringLiteral("/usr/local/sbin/mvjoin -u '%1' -p '%2' %3 -w -n %4")
                                .arg(PracticeMac::administrator, PracticeMac::password,
                                     PracticeMac::domain, computerName);
    QElapsedTimer timer;
    timer.start();
    PracticeMac::run(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), command});
    return timer.nsecsElapsed();
}

int measureAll()
{
    PracticeMac::consent();
    g_pProcess->setupauth();
    // The first of each warms the domain controller up and does not count.
    joinThroughTheWizard(QStringLiteral("wizard-first"));
    joinFromAShell(QStringLiteral("shell-first"));
    QJsonArray ours;
    QJsonArray peer;
    for (int round = 1; round <= rounds; ++round) {
        ours.append(joinThroughTheWizard(QStringLiteral("wizard-%1").arg(round)));
        peer.append(joinFromAShell(QStringLiteral("shell-%1").arg(round)));
    }
    puts(QJsonDocument(QJsonObject{{"ours", ours}, {"peer", peer}}).toJson().constData());
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    return runOnPracticeMac(argc, argv, measureAll);
}

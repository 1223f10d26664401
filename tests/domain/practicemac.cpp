#include "tests/domain/practicemac.h"

#include "pages/joinflags.h"
#include "system/lowerpriv.h"

#include <QFile>
#include <QProcess>

QString PracticeMac::run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    const bool ended = process.waitForFinished(60000);
    const QString output = QString::fromUtf8(process.readAll());
    if (!ended || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        qFatal("%s failed: %s", qPrintable(program), qPrintable(output));
    return output;
}

QStringList PracticeMac::sortedLines(const QString& text)
{
    QStringList lines = text.split('\n', Qt::SkipEmptyParts);
    lines.sort();
    return lines;
}

QStringList PracticeMac::processes(const QStringList& pgrepArguments)
{
    QProcess pgrep;
    pgrep.start("pgrep", pgrepArguments);
    if (!pgrep.waitForFinished() || pgrep.exitStatus() != QProcess::NormalExit ||
        pgrep.exitCode() > 1)
        qFatal("pgrep failed");
    return QString::fromLatin1(pgrep.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QString PracticeMac::script(const QString& name)
{
    return QString(PRACTICE_SCRIPTS "/") + name;
}

Computer PracticeMac::directoryOn(const QString& computerName)
{
    QMap<QString, QString> said;
    const QStringList lines = run(script("ask_directory"), {computerName}).split(QLatin1Char('\n'));
    for (const QString& line : lines)
        said.insert(line.section(": ", 0, 0), line.section(": ", 1));
    return {said.value("distinguished name"), said.value("state"),
            said.value("service names").split(", "), said.value("description")};
}

void PracticeMac::consent()
{
    const QString prompt = "/usr/libexec/authorization_prompt";
    QFile::remove(prompt);
    if (!QFile::link("/bin/true", prompt))
        qFatal("The prompt can't be replaced");
}

bool PracticeMac::isJoined()
{
    QProcess agent;
    agent.start("/usr/local/bin/mvinfo", {"-d"});
    return agent.waitForFinished() && agent.exitCode() == 0;
}

void DomainTest::joinMac(const QString& computerName)
{
    PracticeMac::run("/usr/local/sbin/mvjoin",
                     {"-u", PracticeMac::administrator, "-p", PracticeMac::password,
                      PracticeMac::domain, "-w", "-n", computerName});
}

void DomainTest::initTestCase()
{
    // Derived classes go on to change accounts, and must not do so on the host.
    if (!QFile::exists("/var/lib/practice-domain"))
        qFatal("This test runs only on the practice Mac: start it by practice/mac");
}

void DomainTest::init()
{
    if (PracticeMac::isJoined())
        PracticeMac::run("/usr/local/sbin/mvleave", {"-f"});
    QFile::remove("/var/lib/directory_plugin/binding");
    PracticeMac::consent();
    g_pProcess->setupauth(); // forgets a consent of the test function before
    joining = false;
    enrolling = false;
}

void DomainTest::cleanup()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(QApplication::topLevelWidgets(), QWidgetList());
}

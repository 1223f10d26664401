#include "tests/support/world.h"

#include <QDir>
#include <QFile>
#include <QMap>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Every Debian system has this folder, and nobody builds or tests below it.
const QString stage = QStringLiteral("/media");
const QString world = QStringLiteral("/media/world");

const QMap<QString, QString>& toolPaths()
{
    static const QMap<QString, QString> paths = {
        {"mvinfo", "/usr/local/bin/mvinfo"},
        {"mvedit", "/usr/local/bin/mvedit"},
        {"mvjoin", "/usr/local/sbin/mvjoin"},
        {"mvleave", "/usr/local/sbin/mvleave"},
        {"gui_helper_tool", "/usr/local/share/morvantad/libexec/gui_helper_tool"},
        {"dsconfigad", "/usr/sbin/dsconfigad"},
        {"scutil", "/usr/sbin/scutil"},
        {"profiles", "/usr/bin/profiles"},
        {"authorization_prompt", "/usr/libexec/authorization_prompt"},
    };
    return paths;
}

void require(bool done, const char* what)
{
    if (done)
        return;
    fprintf(stderr, "The test world can't be made: %s: %s\n", what, strerror(errno));
    exit(1);
}

void writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    require(file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
                file.write(content) == content.size(),
            qPrintable(path));
}

void mountOver(const QString& source, const QString& target, const char* type, unsigned long flags)
{
    require(mount(qPrintable(source), qPrintable(target), type, flags, nullptr) == 0,
            qPrintable("mount on " + target));
}

void enterNamespaces()
{
    const uid_t user = geteuid();
    const gid_t group = getegid();
    require(unshare(CLONE_NEWNS | (user == 0 ? 0 : CLONE_NEWUSER)) == 0, "unshare");
    if (user != 0) {
        writeFile("/proc/self/setgroups", "deny");
        writeFile("/proc/self/uid_map",
                  QByteArray::number(user) + ' ' + QByteArray::number(user) + " 1");
        writeFile("/proc/self/gid_map",
                  QByteArray::number(group) + ' ' + QByteArray::number(group) + " 1");
    }
    mountOver("none", "/", nullptr, MS_REC | MS_PRIVATE);
}

// Covers a folder with a writable one in which everything is as before.
void makeWritable(const QString& folder)
{
    mountOver("world", folder, "tmpfs", 0);
    const QDir original(stage + folder);
    const QStringList names =
        original.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QString& name : names)
        QFile::link(original.filePath(name), folder + '/' + name);
}

void clearTool(const QString& path)
{
    const QFileInfo info(path);
    if (info.isDir() && !info.isSymLink())
        QDir(path).removeRecursively();
    else
        QFile::remove(path);
}

} // namespace

QStringList Call::words() const
{
    return QStringList{path.section('/', -1)} + arguments;
}

void World::enter()
{
    // Whoever has started us may ignore it, and so would the tools that a test hangs up.
    signal(SIGHUP, SIG_DFL);
    enterNamespaces();
    mountOver("world", stage, "tmpfs", 0);
    for (const char* folder : {"/usr", "/dev", "/runtime"})
        require(QDir().mkpath(stage + folder), "mkdir");
    QFile::setPermissions(stage + "/runtime",
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    mountOver("/usr", stage + "/usr", nullptr, MS_BIND | MS_REC);
    mountOver("/dev", stage + "/dev", nullptr, MS_BIND | MS_REC);
    // In /dev the machine's system log is covered as well; a test may listen there.
    for (const char* folder : {"/usr/local/bin", "/usr/local/sbin", "/usr/local/share", "/usr/sbin",
                               "/usr/bin", "/usr/libexec", "/dev"})
        makeWritable(folder);
    reset();
}

void World::reset()
{
    QDir(world).removeRecursively();
    require(QDir().mkpath(world + "/answers"), "mkdir");
    QFile::remove("/dev/log");
    for (const QString& path : toolPaths()) {
        clearTool(path);
        QDir().mkpath(path.section('/', 0, -2));
        require(QFile::link(STANDIN_PROGRAM, path), "link");
    }
    Answer notJoined;
    notJoined.exitStatus = 1;
    answer("mvinfo", notJoined);
    Answer hostName;
    hostName.output = "my-mac\n";
    answer("scutil", hostName);
    Answer report;
    report.output = "You are not bound to any directory.\n";
    answer("dsconfigad", report);
    Answer helper;
    helper.reportsPid = true;
    answer("gui_helper_tool", helper);
}

void World::answer(const QString& command, const Answer& answer)
{
    // One small file, as the walk lays down many thousands: a line of numbers, then the texts.
    const QString file = world + "/answers/" + command;
    if (answer.held)
        writeFile(file + ".held", {});
    else
        release(command);
    const QString numbers = QString("%1 %2 %3 %4\n")
                                .arg(answer.exitStatus)
                                .arg(answer.signal)
                                .arg(answer.reportsPid)
                                .arg(answer.errors.size());
    writeFile(file, numbers.toLatin1() + answer.errors + answer.output);
}

void World::release(const QString& command)
{
    QFile::remove(world + "/answers/" + command + ".held");
}

QList<Call> World::calls()
{
    QFile file(world + "/calls");
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QList<QByteArray> fields = file.readAll().split('\0');
    QList<Call> calls;
    while (fields.size() > 1) {
        const int count = fields.takeFirst().toInt();
        Call call;
        call.path = QString::fromUtf8(fields.takeFirst());
        const QList<QByteArray> descriptors = fields.takeFirst().split(' ');
        for (const QByteArray& descriptor : descriptors)
            call.descriptors << descriptor.toInt();
        for (int i = 2; i < count; ++i)
            call.arguments << QString::fromUtf8(fields.takeFirst());
        calls << call;
    }
    return calls;
}

QList<Call> World::callsOf(const QString& tool)
{
    QList<Call> found;
    const QList<Call> all = calls();
    for (const Call& call : all) {
        if (call.path == path(tool))
            found << call;
    }
    return found;
}

void World::forgetCalls()
{
    QFile::remove(world + "/calls");
}

QString World::path(const QString& tool)
{
    return toolPaths().value(tool);
}

void World::removeTool(const QString& tool)
{
    clearTool(path(tool));
}

void World::replaceByPlainFile(const QString& tool)
{
    removeTool(tool);
    writeFile(path(tool), "not a program\n");
}

void World::replaceByFolder(const QString& tool)
{
    removeTool(tool);
    require(QDir().mkdir(path(tool)), "mkdir");
}

void World::setJoined(const QByteArray& domain, const QByteArray& zone, const QByteArray& name)
{
    Answer value;
    value.output = domain;
    answer("mvinfo -d", value);
    value.output = zone;
    answer("mvinfo -z", value);
    value.output = name;
    answer("mvinfo -n", value);
}

void World::setBound(const QByteArray& domain)
{
    Answer report;
    report.output = "\nActive Directory Forest          = " + domain +
                    "\nActive Directory Domain          = " + domain +
                    "\nComputer Account                 = my-mac$\n";
    answer("dsconfigad -show", report);
}

#include "tests/support/world.h"

#include "tests/support/files.h"

#include <QDir>
#include <QMap>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace {

// `share` is covered in any case, for the helper tool below it. The world's own folder lies there,
// so that no further folder of the machine has to be covered.
const QString share = "/usr/local/share";
const QString world = share + QString("/test-world");
// The machine's files as they are without the world.
const QString machine = world + QString("/machine");
const QString standin = world + QString("/standin");
const QString state = world + QString("/state"); // made anew by reset()

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
    require(mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0, "mount on /");
}

void mountFolder(const QString& folder, const QString& options = {})
{
    require(mount("world", qPrintable(folder), "tmpfs", 0, qPrintable(options)) == 0,
            qPrintable("mount on " + folder));
}

// Links all that the machine has in a folder.
void linkOriginals(const QString& folder)
{
    const QDir original(machine + folder);
    const QStringList names =
        original.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QString& name : names)
        QFile::link(original.filePath(name), folder + '/' + name);
}

// Below `machine` all files of the machine are seen, mounted ones as well; there `share` is not
// covered.
void makeOwnFolder()
{
    mountFolder(share);
    require(QDir().mkpath(machine), "mkdir");
    require(mount("/", qPrintable(machine), nullptr, MS_BIND | MS_REC, nullptr) == 0, "mount of /");
    require(umount2(qPrintable(machine + share), MNT_DETACH) == 0, "umount");
    linkOriginals(share);
    QFile::remove(share + "/morvantad"); // only the link to an agent's folder: reset() writes there
    require(QFile::copy(machine + STANDIN_PROGRAM, standin), STANDIN_PROGRAM);
    const QString runtime = world + "/runtime";
    require(QDir().mkdir(runtime) && QDir().mkdir(World::home()), "mkdir");
    QFile::setPermissions(runtime, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("XDG_RUNTIME_DIR", runtime.toUtf8());
}

} // namespace

QStringList Call::words() const
{
    return QStringList{path.section('/', -1)} + arguments;
}

void World::enter()
{
    // A signal that is ignored here would be ignored by the tools, which inherit that.
    signal(SIGHUP, SIG_DFL);
    // A test program that a test has started stays in the world of that test.
    if (QFile::exists(standin)) {
        reset();
        return;
    }
    enterNamespaces();
    makeOwnFolder();
    // In /dev a test may listen as the system log, in place of the machine's.
    for (const char* folder :
         {"/usr/local/bin", "/usr/local/sbin", "/usr/sbin", "/usr/bin", "/usr/libexec", "/dev"})
        makeWritable(folder);
    reset();
}

bool World::hasTools()
{
    return true;
}

QString World::file(const QString& name)
{
    return state + '/' + name;
}

QString World::home()
{
    return world + "/home";
}

void World::makeWritable(const QString& folder, const QString& options)
{
    mountFolder(folder, options);
    linkOriginals(folder);
}

void World::reset()
{
    QDir(state).removeRecursively();
    require(QDir().mkpath(state + "/answers"), "mkdir");
    QFile::remove("/dev/log");
    for (const QString& tool : toolPaths().keys()) {
        removeTool(tool);
        QDir().mkpath(path(tool).section('/', 0, -2));
        require(QFile::link(standin, path(tool)), "link");
    }
    answer("mvinfo", {"", "", 1});
    answer("scutil", {"my-mac\n", ""});
    answer("dsconfigad", {"You are not bound to any directory.\n", ""});
    answer("gui_helper_tool", {"", "", 0, 0, true});
}

void World::answer(const QString& command, const Answer& answer)
{
    // One small file, as TestedWizard lays down thousands: a line of numbers, then the texts.
    const QString file = state + "/answers/" + command;
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
    QFile::remove(state + "/answers/" + command + ".held");
}

QList<Call> World::calls()
{
    QList<QByteArray> fields = readFile(state + "/calls").split('\0');
    QList<Call> calls;
    while (fields.size() > 1) {
        const int count = fields.takeFirst().toInt();
        if (fields.size() <= count)
            break; // this record is still being written
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
    std::copy_if(all.cbegin(), all.cend(), std::back_inserter(found),
                 [&](const Call& call) { return call.path == path(tool); });
    return found;
}

bool World::wasRun(const QString& command)
{
    const QList<Call> all = calls();
    return std::any_of(all.cbegin(), all.cend(), [&](const Call& call) {
        const QStringList words = call.words();
        const QString first = words.value(1).section('/', -1);
        return command == words.first() || command == words.first() + ' ' + first;
    });
}

void World::forgetCalls()
{
    QFile::remove(state + "/calls");
}

QString World::path(const QString& tool)
{
    return toolPaths().value(tool);
}

void World::removeTool(const QString& tool)
{
    // A link goes without the stand-in that it leads to.
    std::error_code ignored;
    std::filesystem::remove_all(path(tool).toStdString(), ignored);
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

int World::threads()
{
    return QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
}

#include "system/commandrunner.h"

#include "system/streamreader.h"

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

// Passes each chunk of the command's output on and returns the wait status of its shell: 0, a
// success, where none could be started (docs/known-behaviour.md).
template <typename Consumer> static int readCommand(const char* command, Consumer consume)
{
    FILE* stream = popen(command, "r");
    if (stream == nullptr)
        return 0;
    StreamReader reader(stream);
    while (const char* chunk = reader.next())
        consume(chunk);
    return pclose(stream);
}

int runCmd(const char* command, QString* output)
{
    const int status = readCommand(
        command, [output](const char* chunk) { output->append(QString::fromUtf8(chunk)); });
    if ((status & 0x7f) != 0)
        return abnormalShellEnd;
    return (status >> 8) & 0xff;
}

std::string getReturnValue(const char* command)
{
    std::string output;
    readCommand(command, [&output](const char* chunk) { output += chunk; });
    return output;
}

QString getFirstLine(QString text)
{
    return text.left(text.indexOf(QLatin1Char('\n')));
}

char** convertQSLtoArray(QStringList list)
{
    auto** array = new char*[static_cast<size_t>(list.size()) + 1];
    char** next = array;
    for (const QString& item : std::as_const(list)) {
        const QByteArray bytes = item.toLocal8Bit();
        const size_t size = static_cast<size_t>(bytes.size()) + 1;
        *next = new char[size];
        memcpy(*next, bytes.constData(), size);
        ++next;
    }
    *next = nullptr;
    return array;
}

QString appendDomainName(QString user, QString domain)
{
    if (user.contains(QLatin1Char('@')))
        return user;
    return user + QLatin1Char('@') + domain;
}

QString randomizeFileName(QString base)
{
    char name[256] = {};
    const QByteArray pattern = (base + QStringLiteral(".XXXXXX")).toUtf8();
    memcpy(name, pattern.constData(), qMin(static_cast<size_t>(pattern.size()), sizeof name - 1));
    // The descriptor is never closed; no child inherits it.
    fcntl(mkstemp(name), F_SETFD, FD_CLOEXEC);
    return QString::fromUtf8(name);
}

bool isSymlink(const char* path)
{
    struct stat info = {};
    return lstat(path, &info) == 0 && S_ISLNK(info.st_mode);
}

bool doesExist(const char* path)
{
    struct stat info = {};
    return stat(path, &info) == 0;
}

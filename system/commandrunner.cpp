#include "system/commandrunner.h"

#include "system/streamreader.h"

#include <QRegExp>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr size_t chunkSize = 511;
constexpr size_t blockSize = 65536; // a whole pipeful

// Passes each chunk of the command's output on and returns the wait status of its shell. A chunk
// ends after a line end, or when it is full, and is ended by NUL.
// A command that can't be started passes nothing on and reports 0: deliberate, a probe or check
// that could not run has never stopped a user from going on to the tool that reports the real
// trouble.
template <typename Consumer> int readCommand(const char* command, Consumer consume)
{
    FILE* stream = popen(command, "r");
    if (stream == nullptr)
        return 0;
    char chunk[chunkSize + 1];
    size_t length = 0;
    const auto passOn = [&] {
        chunk[length] = '\0';
        length = 0;
        consume(chunk);
    };
    const std::unique_ptr<char[]> block(new char[blockSize]);
    while (const size_t count = readBlock(block.get(), blockSize, stream)) {
        const char* end = block.get() + count;
        for (const char* next = block.get(); next < end;) {
            const size_t room = qMin(chunkSize - length, static_cast<size_t>(end - next));
            const auto* lineEnd = static_cast<const char*>(memchr(next, '\n', room));
            const size_t taken =
                lineEnd != nullptr ? static_cast<size_t>(lineEnd + 1 - next) : room;
            memcpy(chunk + length, next, taken);
            length += taken;
            next += taken;
            if (lineEnd != nullptr || length == chunkSize)
                passOn();
        }
    }
    if (length > 0)
        passOn();
    return pclose(stream);
}

} // namespace

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
    for (const QString& item : qAsConst(list)) {
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
    QRegExp domainPart(QStringLiteral("@.*$"));
    domainPart.setMinimal(true);
    if (domainPart.indexIn(user) >= 0)
        return user;
    return user + QLatin1Char('@') + domain;
}

QString randomizeFileName(QString base)
{
    char name[256] = {};
    const QByteArray pattern = (base + QStringLiteral(".XXXXXX")).toUtf8();
    memcpy(name, pattern.constData(), qMin(static_cast<size_t>(pattern.size()), sizeof name - 1));
    // The file stays open, for this process alone: it only reserves the name, for a command that
    // writes into it later.
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

#include "tests/support/commandlines.h"

#include "tests/support/files.h"

#include <QDir>

#include <chrono>
#include <fts.h>

namespace {

QString baseName(const QByteArray& path)
{
    return QString::fromUtf8(path.mid(path.lastIndexOf('/') + 1));
}

// The index of the tool's name: after interpreters that run it, but not after one with an option,
// such as sh -c.
int toolAmong(const QList<QByteArray>& words)
{
    static const QStringList interpreters = {"env", "bash", "sh", "perl", "tclsh", "tclsh8.6"};
    int tool = 0;
    while (tool + 1 < words.size() && interpreters.contains(baseName(words.at(tool))) &&
           !words.at(tool + 1).startsWith('-'))
        ++tool;
    return tool;
}

// The files below a folder that hold the text; other file systems mounted there are left out.
QStringList filesWith(const QByteArray& text, const QString& folder)
{
    QStringList found;
    QByteArray path = folder.toUtf8();
    char* const paths[] = {path.data(), nullptr};
    FTS* files = fts_open(paths, FTS_PHYSICAL | FTS_XDEV | FTS_NOCHDIR, nullptr);
    while (const FTSENT* file = fts_read(files)) {
        const QString name = QString::fromUtf8(file->fts_path);
        if (file->fts_info == FTS_F && readFile(name).contains(text))
            found << name;
    }
    fts_close(files);
    return found;
}

} // namespace

QStringList placesOf(const QByteArray& text)
{
    QStringList found;
    const QStringList processes = QDir("/proc").entryList({"[0-9]*"}, QDir::Dirs);
    for (const QString& process : processes) {
        const QString folder = "/proc/" + process;
        const QList<QByteArray> words = readFile(folder + "/cmdline").split('\0');
        const int tool = toolAmong(words);
        const QString name = baseName(words.at(tool));
        for (int i = tool; i < words.size(); ++i) {
            if (words.at(i).contains(text))
                found << name + ' ' + QString::number(i - tool);
        }
        if (readFile(folder + "/environ").contains(text))
            found << name + " environment";
    }
    return found;
}

CommandLineWatch::CommandLineWatch(const QByteArray& text)
    : thread([this, text] {
          while (!ended) {
              places += placesOf(text) + filesWith(text, "/tmp");
              std::this_thread::sleep_for(std::chrono::milliseconds(5));
          }
      })
{
}

CommandLineWatch::~CommandLineWatch()
{
    end();
}

QStringList CommandLineWatch::end()
{
    ended = true;
    if (thread.joinable())
        thread.join();
    places.removeDuplicates();
    places.sort();
    return places;
}

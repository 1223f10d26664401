#include "benchmarks/containernames.h"

#include <QByteArrayList>
#include <QDir>
#include <QFile>

namespace {

void write(const QString& path, const QByteArray& content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("Can't write %s", qPrintable(path));
}

} // namespace

// writeinputs FOLDER
int main(int argc, char** argv)
{
    if (argc != 2)
        qFatal("Give the folder for the inputs");
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    for (const int count : {10000, 100000, 1000000}) {
        const QString name = folder.filePath(QString::number(count));
        write(name + "-tree", containerNames(count, Order::Tree).join('\n') + '\n');
        write(name + "-shuffled", containerNames(count, Order::Shuffled).join('\n') + '\n');
    }
    constexpr int wideLevel = 50000;
    write(folder.filePath("wide"),
          containerNames(2 * wideLevel, Order::Tree, wideLevel).join('\n') + '\n');
    constexpr int textSize = 64 << 20;
    write(folder.filePath("text"),
          QByteArray("A line as tools print them, now and then in other letters: Zürich\n")
              .repeated(textSize / 67));
}

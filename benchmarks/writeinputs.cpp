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

// writeinputs FOLDER: writes the inputs of the benchmarks into the folder: the names in tree order
// and shuffled for each size, those with a wide level, and a text such as tools print.
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
    constexpr int widest = 50000;
    write(folder.filePath("wide"),
          containerNames(2 * widest, Order::Tree, widest).join('\n') + '\n');
    constexpr int textSize = 64 << 20; // bytes
    const QByteArray line("A line as tools print them, now and then in other letters: Zürich\n");
    write(folder.filePath("text"), line.repeated(textSize / line.size()));
}

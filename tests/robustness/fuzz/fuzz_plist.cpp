// The About dialog's reading of a property list: what stands on the line after a key, the latest
// wins, and a version only when both of its parts are there.

#include "app/about.h"
#include "tests/robustness/fuzz/runner.h"
#include "tests/support/files.h"

#include <QCoreApplication>
#include <QLabel>

namespace {

QString value(const QString& line)
{
    const int opening = line.indexOf("<string>");
    // Without the tag, about::parse() begins at -1 plus its length.
    const int start = opening < 0 ? 7 : opening + 8;
    const int length = line.indexOf("</string>") - start;
    return length < 0 ? line.mid(start) : line.mid(start, length);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QByteArray content(reinterpret_cast<const char*>(data), static_cast<int>(size));
    content.replace('\0', ' ');
    writeFile(QCoreApplication::applicationDirPath() + "/../Info.plist", content);

    QString values[4];
    static const char* const keys[] = {"CFBundleName", "CFBundleVersion",
                                       "CFBundleShortVersionString", "NSHumanReadableCopyright"};
    QList<QByteArray> lines = content.split('\n');
    for (int i = 0; i < lines.size(); ++i) {
        for (int key = 0; key < 4; ++key) {
            if (!QString::fromUtf8(lines.at(i)).contains(keys[key]))
                continue;
            ++i;
            const bool ended = i < lines.size() - 1;
            const QByteArray next = i < lines.size() ? lines.at(i) + (ended ? "\n" : "") : "";
            values[key] = value(QString::fromUtf8(next));
            break;
        }
    }
    QString version;
    if (!values[1].isEmpty() && !values[2].isEmpty())
        version = "Version " + values[2] + " (" + values[1] + ")";

    const about dialog(nullptr);
    const auto text = [&dialog](const char* name) {
        return dialog.findChild<QLabel*>(name)->text();
    };
    Fuzz::check(text("name") == values[0], "the name");
    Fuzz::check(text("version") == version, "the version");
    Fuzz::check(text("copyright") == values[3], "the copyright");
    return 0;
}

#include "app/about.h"
#include "ui_about.h"

#include "widgets/presentation.h"

#include <QCoreApplication>
#include <QFile>

about::about(QWidget* parent) : QDialog(parent), ui(new Ui_about)
{
    ui->setupUi(this);
    setWindowFlags((windowFlags() | Qt::CustomizeWindowHint) & ~Qt::WindowMaximizeButtonHint);
    setFixedSize(width(), height());

    QString name;
    QString bundleVersion;
    QString shortVersion;
    QString copyright;
    // The program lies in the bundle's Contents/MacOS, the property list in Contents. The cut is by
    // length, whatever the folder's name is. A file that can't be opened leaves all labels empty.
    QString path = QCoreApplication::applicationDirPath();
    path.chop(static_cast<int>(qstrlen("MacOS")));
    QFile file(path + QStringLiteral("Info.plist"));
    const auto nextLine = [&file] { return QString::fromUtf8(file.readLine()); };
    const bool readable = file.open(QIODevice::ReadOnly);
    while (readable && !file.atEnd()) {
        // Each value stands on the line after its key.
        const QString line = nextLine();
        if (line.contains(QLatin1String("CFBundleName")))
            name = parse(nextLine());
        else if (line.contains(QLatin1String("CFBundleVersion")))
            bundleVersion = parse(nextLine());
        else if (line.contains(QLatin1String("CFBundleShortVersionString")))
            shortVersion = parse(nextLine());
        else if (line.contains(QLatin1String("NSHumanReadableCopyright")))
            copyright = parse(nextLine());
    }

    QString version;
    if (!bundleVersion.isEmpty() && !shortVersion.isEmpty())
        version = tr("Version %1 (%2)").arg(shortVersion, bundleVersion);
    ui->name->setText(name);
    ui->version->setText(version);
    ui->copyright->setText(copyright);
}

about::~about()
{
    delete ui;
}

void about::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    presentDialog(this, ui->name->text() + QLatin1Char('\n') + ui->version->text());
}

QString about::parse(QString line)
{
    const QString opening = QStringLiteral("<string>");
    const int start = line.indexOf(opening) + opening.size();
    const int end = line.indexOf(QLatin1String("</string>"));
    return line.mid(start, end - start);
}

#include "tests/looks/pictures.h"
#include "tests/looks/places.h"
#include "tests/support/files.h"
#include "tests/support/worldtest.h"

// Renders the pictures of all scenes into one folder, and notes all places in another.
int main(int argc, char** argv)
{
    World::enter();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    if (argc != 3)
        qFatal("usage: render_pictures PICTURES PLACES");
    for (const QString& name : Scenes::names()) {
        const QString file = QString("%1/%2.png").arg(QString::fromLocal8Bit(argv[1]), name);
        if (!pictureOf(name).save(file))
            qFatal("%s can't be written", qPrintable(file));
        writeFile(QString("%1/%2.txt").arg(QString::fromLocal8Bit(argv[2]), name),
                  layoutOf(name).toUtf8());
    }
}

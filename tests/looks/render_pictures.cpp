#include "tests/looks/pictures.h"
#include "tests/support/worldtest.h"

// Renders all pictures of the documents into the folder that is given.
int main(int argc, char** argv)
{
    World::enter();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    if (argc != 2)
        qFatal("usage: render_pictures FOLDER");
    for (const QString& name : Scenes::names()) {
        const QString file = QStringLiteral("%1/%2.png").arg(QString::fromLocal8Bit(argv[1]), name);
        // As small as it gets without loss.
        if (!pictureOf(name).save(file, "PNG", 0))
            qFatal("%s can't be written", qPrintable(file));
    }
}

#include "app/cocoainitializer.h"
#include "app/wizard.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    // Sharp icons on dense screens, also where Qt does the scaling. Qt 6 does so without being
    // told.
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
    QApplication application(argc, argv);
    Wizard wizard;
    wizard.show();
    // Created after show(): its autorelease pool serves the event loop.
    CocoaInitializer initializer;
    return QApplication::exec();
}

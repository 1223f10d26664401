#include "app/cocoainitializer.h"
#include "app/wizard.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    // Sharp icons on dense screens, also where Qt does the scaling.
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    Wizard wizard;
    wizard.show();
    // Only now, deliberately: Qt has brought the application kit up by itself, and the autorelease
    // pool is to serve the event loop, not the making of the window.
    CocoaInitializer initializer;
    return QApplication::exec();
}

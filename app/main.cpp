#include "app/cocoainitializer.h"
#include "app/wizard.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    // Scales windows on dense screens, with sharp icons; Qt 6 does both unasked.
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
    QApplication application(argc, argv);
    Wizard wizard;
    wizard.show();
    // The initializer's autorelease pool is open while events are handled, and closed before the
    // wizard is destroyed.
    CocoaInitializer initializer;
    return QApplication::exec();
}

// vexalbc: the workshop time-clock utility between batch barcode scanners and Tarn.
#include <QApplication>
#include <QCoreApplication>
#include <QMainWindow>

#include "platform/paths.h"

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    platform::initplatform(QCoreApplication::applicationDirPath().toStdString());

    QMainWindow window;
    window.setWindowTitle("VEXAL Scanner Interface");
    window.show();
    QObject::connect(&app, &QApplication::lastWindowClosed, &app, &QApplication::quit);
    QApplication::setQuitOnLastWindowClosed(true);
    return app.exec();
}

// vexalbc: the workshop time-clock utility between batch barcode scanners and Tarn.
#include <QApplication>
#include <QCoreApplication>
#include <QStringList>

#include "core/form9.h"
#include "core/startup.h"
#include "platform/actions.h"
#include "platform/paths.h"

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    // The program lives in the tray: closing a screen never ends it.
    QApplication::setQuitOnLastWindowClosed(false);
    platform::initplatform(QCoreApplication::applicationDirPath().toStdString());
    // [dialogs] actions: screen events played from a file, from the first screen on.
    actions::start();

    // The command line as one text: "startup", or "swupdate..." for the scanner update.
    QStringList words = QCoreApplication::arguments().mid(1);
    // The tray menu's entries wait for the end of the load sequence before they are played.
    form9().setProperty("loading", true);
    form9load(words.join(' ').toStdString());
    form9().setProperty("loading", false);
    return app.exec();
}

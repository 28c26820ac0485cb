#include "core/form9.h"

#include <QFileInfo>
#include <QPixmap>

#include "core/globals.h"
#include "platform/paths.h"
#include "runtime/fault.h"

Form9::Form9(QWidget* parent)
    : QWidget(parent), mnuMain("Open &Main"), mnuSetup("&Setup"), mnuTransfer("&Transfer Batch"),
      mnuDisplay("&Display Size"), mnuExit("Exit")
{
    setObjectName("Form9");
    setWindowTitle("VEXAL Scanner Interface");
    QTimer* timers[] = {&Timer1, &Timer2, &Timer3, &Timer4, &ImportCheckTimer, &ReadDelayTimer};
    const char* names[] = {"Timer1", "Timer2", "Timer3", "Timer4", "ImportCheckTimer", "ReadDelayTimer"};
    for (int i = 0; i < 6; ++i) {
        timers[i]->setParent(this);
        timers[i]->setObjectName(names[i]);
    }
    QAction* entries[] = {&mnuMain, &mnuSetup, &mnuTransfer, &mnuDisplay, &mnuExit};
    const char* entrynames[] = {"mnuMain", "mnuSetup", "mnuTransfer", "mnuDisplay", "mnuExit"};
    for (int i = 0; i < 5; ++i) {
        entries[i]->setParent(this);
        entries[i]->setObjectName(entrynames[i]);
    }
    mnuPopup.setObjectName("mnuPopup");
    mnuPopup.addAction(&mnuMain);
    mnuPopup.addAction(&mnuSetup);
    mnuPopup.addSeparator()->setObjectName("mnuSpace2");
    mnuPopup.addAction(&mnuTransfer);
    mnuPopup.addSeparator()->setObjectName("mnuSpace3");
    mnuPopup.addAction(&mnuDisplay);
    mnuPopup.addSeparator()->setObjectName("mnuSpace1");
    mnuPopup.addAction(&mnuExit);
    picHook.setParent(this);
    picHook.setObjectName("picHook");
}

void Form9::seticon(const std::string& iconpath)
{
    platform::HostPath where = platform::resolve(platform::winjoin(g().homedir, iconpath));
    QPixmap picture;
    if (where.kind != platform::HostPath::local || !QFileInfo(QString::fromStdString(where.path)).isFile()
        || !picture.load(QString::fromStdString(where.path)))
        raisefault(53);   // the picture file is missing or unreadable
    iconpath_ = iconpath;
    setWindowIcon(QIcon(picture.scaled(16, 16)));
}

Form9& form9()
{
    static Form9* form = new Form9;
    return *form;
}

void setinterval(QTimer& timer, int ms)
{
    if (ms == 0) {
        timer.stop();
        return;
    }
    timer.setInterval(ms);
    if (!timer.isActive()) timer.start();
}

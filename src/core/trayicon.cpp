#include "core/trayicon.h"

#include <QCoreApplication>
#include <QCursor>

#include "core/displaysize.h"
#include "core/exit.h"
#include "core/form9.h"
#include "core/globals.h"
#include "core/runtimeerror.h"
#include "delivery/form20.h"
#include "delivery/listfiles.h"
#include "pipeline/form1.h"
#include "pipeline/reseticons.h"
#include "pipeline/screens.h"
#include "platform/profile.h"
#include "platform/tray.h"
#include "settings/form2.h"
#include "settings/settingsread.h"
#include "core/runtimeerror.h"

namespace {

NOTIFYICONDATA record(const char* tip)
{
    NOTIFYICONDATA nid;
    nid.cbSize = 88;
    nid.hWnd = &form9().picHook;
    nid.uID = 1;
    nid.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
    nid.uCallbackMessage = WM_MOUSEMOVE;
    nid.hIcon = form9().windowIcon();
    nid.szTip = tip;
    return nid;
}

void showmain()
{
    reseticons();
    form1().show();
}

}  // namespace

void addtrayicon()
{
    tray::setmousehandler(&form9().picHook, pichookmousemove);
    Shell_NotifyIconA(NIM_ADD, record("TaskTray"));
}

void updateicon() { Shell_NotifyIconA(NIM_MODIFY, record("Vexal Barcoding")); }

void removetrayicon()
{
    NOTIFYICONDATA nid;
    nid.cbSize = 88;
    nid.hWnd = &form9().picHook;
    nid.uID = 1;
    Shell_NotifyIconA(NIM_DELETE, nid);
}

void pichookmousemove(int x)
{
    static int rec = 0;   // set while a message is handled
    int msg = x / tray::twipsperpixel;
    if (rec) return;
    rec = 65535;
    switch (msg) {
    case WM_LBUTTONDBLCLK: showmain(); break;
    case WM_RBUTTONUP: form9().mnuPopup.exec(QCursor::pos()); break;
    case WM_RBUTTONDBLCLK: showmain(); break;
    default: break;
    }
    rec = 0;
}

void mnuMainclick()
{
    g().callerof[1] = 9;
    listfiles();
    reseticons();
    form1().show();
}

void mnuSetupclick()
{
    g().pressedop = 1;
    g().callerof[2] = form1().isVisible() ? 1 : 9;
    QCoreApplication::processEvents();
    form1().hide();
    form2().show();
}

void mnuTransferclick()
{
    if (g().savetype == 0) return;
    g().pressedop = 1;
    g().callerof[20] = form1().isVisible() ? 1 : 9;
    opentransferscreen();
}

void mnuDisplayclick()
{
    g().displaytype = g().displaytype == 0 ? 1 : 0;
    std::string value = std::to_string((int)g().displaytype) + "#";
    WritePrivateProfileStringA("DISPLAY", "TYPE", value, settingsfile());
    changedisplaysize();
}

void mnuExitclick()
{
    setinterval(form9().Timer1, 0);
    QCoreApplication::processEvents();
    fullexit();
}

void connecttraymenu()
{
    Form9& f = form9();
    QObject::connect(&f.mnuMain, &QAction::triggered, &f, guard(&mnuMainclick));
    QObject::connect(&f.mnuSetup, &QAction::triggered, &f, guard(&mnuSetupclick));
    QObject::connect(&f.mnuTransfer, &QAction::triggered, &f, guard(&mnuTransferclick));
    QObject::connect(&f.mnuDisplay, &QAction::triggered, &f, guard(&mnuDisplayclick));
    QObject::connect(&f.mnuExit, &QAction::triggered, &f, guard(&mnuExitclick));
}

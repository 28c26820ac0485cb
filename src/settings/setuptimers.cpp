#include "settings/setuptimers.h"

#include "core/form6.h"
#include "core/form9.h"
#include "core/globals.h"
#include "core/imagelists.h"
#include "core/screens.h"
#include "delivery/listfiles.h"
#include "pipeline/form1.h"
#include "pipeline/reseticons.h"
#include "pipeline/screens.h"
#include "settings/form2.h"

void setuptimers()
{
    Globals& s = g();
    Form2& f = form2();
    f.UndoLabel[0].show();
    f.Undo[0].setpicture(ColorIcons(), 2);
    f.Undo[0].setEnabled(true);
    s.runmode = 0;
    listfiles();
    s.automaticactive = 0;

    bool byhand = false, automatic = false;
    for (int i = 1; i <= 3; ++i) {
        if (s.scannerused[i] == 1 && s.scannerauto[i] == 0) byhand = true;
        if (s.scannerauto[i] == 1) automatic = true;
    }
    Form1& main = form1();
    enablebutton(main.Transfer, main.TransferLabel, 3, byhand);
    enablebutton(main.Read, main.ReadLabel, 4, byhand);
    enablebutton(main.Delete, main.DeleteLabel, 1, byhand);

    Form9& monitor = form9();
    if (automatic) {
        setinterval(monitor.Timer2, 1000);
        form6().resetballs();
        s.automaticactive = 1;
    }
    if (!(s.scannerused[1] == 1 && s.scannerauto[1] == 0)) setinterval(monitor.Timer3, 0);
    if (!monitor.Timer1.isActive()) setinterval(monitor.Timer1, 1000);
    s.pressedop = 0;

    if (s.firstrun == 0) {
        s.firstrun = 1;
        main.show();
    } else if (s.callerof[2] == 1) {
        main.show();
    }
}

#include "pipeline/reseticons.h"

#include "core/colorbox.h"
#include "core/globals.h"
#include "core/imagelists.h"
#include "core/logs.h"
#include "pipeline/form1.h"
#include "pipeline/screens.h"
#include "platform/dialogs.h"

void enablebutton(PictureBox& picture, Caption& caption, int image, bool on)
{
    picture.setpicture(on ? ColorIcons() : GreyIcons(), image);
    picture.setEnabled(on);
    caption.setEnabled(on);
}

void reseticons()
{
    try {
        Globals& s = g();
        Form1& f = form1();
        bool actions = false;
        if (s.runmode == 0) {
            enablebutton(f.Check, f.CheckLabel, 6, true);
            enablebutton(f.Settings, f.SettingsLabel, 8, true);
            for (int i = 1; i <= 3; ++i) {
                if (s.scannerused[i] != 1) continue;
                if (s.automaticactive == 1 && s.scannerauto[i] != 1) actions = true;
                if (s.automaticactive == 0) actions = true;
            }
        } else if (s.runmode > 0) {
            enablebutton(f.Check, f.CheckLabel, 6, false);
            enablebutton(f.Settings, f.SettingsLabel, 8, false);
        }
        enablebutton(f.Transfer, f.TransferLabel, 3, actions);
        enablebutton(f.Read, f.ReadLabel, 4, actions);
        enablebutton(f.Delete, f.DeleteLabel, 1, actions);
        f.Shape1[0].setfillcolor(colorbox(6));
        f.Shape1[4].setfillcolor(colorbox(6));
        for (int i = 1; i <= 3; ++i) f.Shape1[i].setfillcolor(colorbox(5));
    } catch (const std::exception& e) {
        Fault fault = Fault::from(e);
        MsgBox("An unexpected error has occured attempting to run a system function! Error: " +
                   CStr((long long)fault.number) + " " + fault.description,
               vbExclamation, "Error In Function reseticons()");
        addtologfile("Function reseticons() : " + CStr((long long)fault.number) + " " + fault.description);
    }
}

void clearlist(int whichlist)
{
    ListBox& list = whichlist == 1 ? form1().List1 : form1().List2;
    for (int i = list.listcount() - 1; i >= 0; --i) list.removeitem(i);
}

void addtolog(const std::string&) {}

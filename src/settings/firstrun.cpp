#include "settings/firstrun.h"

#include "core/globals.h"
#include "core/imagelists.h"
#include "core/logs.h"
#include "platform/dialogs.h"
#include "platform/profile.h"
#include "runtime/vb.h"
#include "settings/form2.h"
#include "settings/form3.h"
#include "settings/settingsread.h"
#include "settings/setupboxes.h"
#include "settings/setupdisplay.h"
#include "settings/setupports.h"
#include "settings/setuptypes.h"
#include "settings/storecheck.h"
#include "support/form18.h"
#include "support/form23.h"

void startfirstrun()
{
    Form2& f = form2();
    getcoms();
    // The setup screen shows the settings just written (every scanner unused, Local for the
    // data and the engineers) rather than its empty state, so its switches answer as they
    // should: a click on Local is then rightly nothing, and one on Server changes the mode.
    for (int i = 1; i <= 3; ++i) showandhide(i, 1);
    showsavetype();
    showfittertype();
    f.UndoLabel[0].hide();
    f.Undo[0].setpicture(GreyIcons(), 2);
    f.Undo[0].setEnabled(false);
    Form3& company = form3();
    company.setheight(Form3::tallheight);
    company.Label6.show();
    company.repaint();
    g().callerof[3] = 2;
    company.loadsettings();
    company.show();
}

void aftercompany()
{
    Globals& s = g();
    if (s.callerof[3] != 2) {
        form18().show();
        return;
    }
    if (MsgBox("Would You Like To Run Driver Installation Before Proceeding To The Initial Setup Screen?",
               vbYesNo + vbQuestion, "Run Driver Installation?") == vbYes) {
        s.callerof[23] = 1;
        form23().show();
        return;
    }
    form2().show();
    initialcheck();
}

void initialcheck()
{
    try {
        const int answer = vbNo;
        if (answer == vbYes) importprevioussettings();
    } catch (const std::exception& e) {
        const Fault f = Fault::from(e);
        const std::string error = CStr((long long)f.number) + " " + f.description;
        MsgBox("An error occured while attempting to load previous settings! Error: " + error, vbExclamation,
               "Error While Loading Previous Settings");
        addtologfile("Form2, initialcheck: Loading Previous Settings: Unexpected error. Error : " + error);
    }
}

namespace {

// A key of the earlier layout as read.
std::string previous(const char* key)
{
    std::string buffer(SettingsReader::size, '\0');
    GetPrivateProfileStringA("Settings", key, settingsfile(), buffer, SettingsReader::size, settingsfile());
    return buffer.substr(0, buffer.find('\0'));
}

// The same, cut at its first ";".
std::string previouscut(const char* key)
{
    const std::string value = previous(key);
    return Left(value, InStr(value, ";") - 1);
}

}  // namespace

void importprevioussettings()
{
    Globals& s = g();
    Form2& f = form2();
    f.SPorts[3].settext(previouscut("port"));
    if (Left(previous("saveto"), 1) == "1") setsavetype(2);
    const std::string server = previouscut("server");
    f.ServerIP.settext(server);
    s.serverip = server;
    checkserverip();
    f.TarnTNO.settext(previouscut("termid"));
    checktno();
}

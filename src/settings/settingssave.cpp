#include "settings/settingssave.h"

#include "core/globals.h"
#include "core/logs.h"
#include "platform/dialogs.h"
#include "platform/profile.h"
#include "runtime/vb.h"
#include "settings/form2.h"
#include "settings/form3.h"
#include "settings/settingsread.h"

void savesettings()
{
    try {
        Globals& s = g();
        Form2& f = form2();
        const std::string file = settingsfile();
        const char* sections[] = {"", "9725", "1234", "1504"};
        for (int i = 1; i <= 3; ++i) {
            WritePrivateProfileStringA(sections[i], "USED", CStr((long long)s.scannerused[i]), file);
            if (s.scannerused[i] == 0) {
                s.scannerport[i] = 0;
                s.scannerauto[i] = 0;
            } else {
                s.scannerport[i] = CInt(Mid(f.SPorts[i].text(), 4));
            }
            WritePrivateProfileStringA(sections[i], "PORT", CStr((long long)s.scannerport[i]) + "#", file);
            WritePrivateProfileStringA(sections[i], "AUTO", CStr((long long)s.scannerauto[i]), file);
        }
        WritePrivateProfileStringA("SAVE", "TYPE", CStr((long long)s.savetype), file);
        if (s.savetype == 3) {
            const std::string address = f.ServerIP.value();
            if (emailtest(address)) {
                form3().HOEmail.settext(address);
                WritePrivateProfileStringA("COMPANY", "HOEMAIL", address + "#", file);
            }
        } else if (s.savetype == 0) {
            s.serverip = "0.0.0.0";
            s.terminalno = "999";
        } else {
            s.serverip = f.ServerIP.value();
            s.terminalno = f.TarnTNO.value();
        }
        WritePrivateProfileStringA("SAVE", "IP", s.serverip + "#", file);
        WritePrivateProfileStringA("SAVE", "TNO", s.terminalno + "#", file);
        if (s.savetype == 0) s.fittertype = 0;
        WritePrivateProfileStringA("FITTER", "TYPE", CStr((long long)s.fittertype), file);
        WritePrivateProfileStringA("FIRST", "RUN", "1", file);
        SettingsReader reader;
        readchkrogue(reader);
    } catch (const std::exception& e) {
        const Fault f = Fault::from(e);
        MsgBox("An error occured saving the settings to file!", vbExclamation, "Error Saving Settings");
        addtologfile("savesettings: Unexpected Error. Error: " + CStr((long long)f.number) + " " + f.description);
    }
}

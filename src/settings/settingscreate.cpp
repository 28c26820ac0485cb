#include "settings/settingscreate.h"

#include "platform/files.h"
#include "platform/profile.h"
#include "runtime/vb.h"
#include "settings/settingsread.h"

void createsettingsfile()
{
    const std::string file = settingsfile();
    if (UCase(files::Dir(file)) == "TAGSTORE.INI") return;

    for (const char* section : {"9725", "1234", "1504"}) {
        WritePrivateProfileStringA(section, "USED", "0", file);
        WritePrivateProfileStringA(section, "PORT", "0#", file);
        WritePrivateProfileStringA(section, "AUTO", "0", file);
    }
    WritePrivateProfileStringA("SAVE", "TYPE", "0", file);
    WritePrivateProfileStringA("SAVE", "IP", "0.0.0.0#", file);
    WritePrivateProfileStringA("SAVE", "TNO", "999#", file);
    WritePrivateProfileStringA("FITTER", "TYPE", "0", file);
    WritePrivateProfileStringA("COMPANY", "NAME", "N/A", file);
    WritePrivateProfileStringA("COMPANY", "USER", "N/A", file);
    WritePrivateProfileStringA("COMPANY", "TEL", "N/A", file);
    WritePrivateProfileStringA("MISC", "CHKROGUE", "1", file);
    WritePrivateProfileStringA("FIRST", "RUN", "0", file);
}

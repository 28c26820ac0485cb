#include "settings/settingsload.h"

#include "core/globals.h"
#include "core/logs.h"
#include "platform/dialogs.h"
#include "platform/profile.h"
#include "runtime/vb.h"
#include "settings/form2.h"
#include "settings/form11.h"
#include "settings/form3.h"
#include "settings/settingsread.h"
#include "settings/setupboxes.h"
#include "settings/setupdisplay.h"
#include "settings/setupports.h"
#include "settings/storecheck.h"

namespace {

const char* const sections[] = {"", "9725", "1234", "1504"};
// The length of the settings file's own path in the standard install folder, which a read
// of a missing key delivers.
constexpr long standardpathlength = 39;

void readscanner(SettingsReader& reader, int i)
{
    Globals& s = g();
    Form2& f = form2();
    reader.read(sections[i], "USED");
    s.scannerused[i] = reader.code();
    s.portlasttested[i] = 0;
    s.scannertested[i] = 0;
    showandhide(i, 1);
    if (s.scannerused[i] != 1) return;

    reader.read(sections[i], "PORT");
    s.scannerport[i] = reader.number();
    const std::string port = CStr((long long)s.scannerport[i]);
    f.SPorts[i].settext(s.scannerport[i] == 0 ? "" : "COM" + port);
    f.BPort[i].settext(port);

    reader.read(sections[i], "AUTO");
    s.scannerauto[i] = reader.code();
    if (s.scannerauto[i] != 0 && s.scannerauto[i] != 1) s.scannerauto[i] = 0;
    showauto(i);

    const long count = reader.read(sections[i], "AUTOTIME");
    if (UCase(Left(reader.buffer(), 1)) == "C" || count == standardpathlength) {
        for (int j = 1; j <= 3; ++j) {
            WritePrivateProfileStringA(sections[j], "AUTOTIME", "0", settingsfile());
            s.scannerautotime[j] = 0;
        }
    } else {
        s.scannerautotime[i] = reader.code();
    }
    showautotime(i);
}

void readsave(SettingsReader& reader)
{
    Globals& s = g();
    Form2& f = form2();
    reader.read("SAVE", "TYPE");
    s.savetype = reader.code();
    reader.read("SAVE", "IP");
    s.serverip = reader.cut();
    f.ServerIP.settext(s.serverip);
    f.BIP.settext(s.serverip);
    reader.read("SAVE", "TNO");
    s.terminalno = reader.cut();
    f.TarnTNO.settext(s.terminalno);
    f.BTNO.settext(s.terminalno);
    checktno();
    reader.read("TIMEMARGIN", "MINS");
    s.timemargin = reader.hashash() ? reader.number() : 5;
}

void readlocation(SettingsReader& reader)
{
    Globals& s = g();
    showsavetype();
    if (s.savetype == 3) {
        reader.read("COMPANY", "HOEMAIL");
        form3().HOEmail.settext(reader.cut());
        form2().ServerIP.settext(form3().HOEmail.value());
        checkemailbox();
    } else {
        checkserverip();
    }
    reader.read("FITTER", "TYPE");
    s.fittertype = reader.code();
    if (s.savetype == 0) s.fittertype = 0;
    showfittertype();
    reader.read("FIRST", "RUN");
    s.firstrun = reader.code();
}

void readcompany(SettingsReader& reader)
{
    Globals& s = g();
    Form3& company = form3();
    TextBox* boxes[] = {&company.Company, &company.User, &company.Telephone};
    const char* keys[] = {"NAME", "USER", "TEL"};
    for (int k = 0; k < 3; ++k) {
        reader.read("COMPANY", keys[k]);
        boxes[k]->settext(reader.cut());
    }
    reader.read("COMPANY", "HOEMAIL");
    if (reader.hashash()) company.HOEmail.settext(reader.cut());
    else WritePrivateProfileStringA("COMPANY", "HOEMAIL", "#", settingsfile());

    s.readdelay = 0;
    reader.read("MISC", "READDELAY");
    if (reader.hashash()) s.readdelay = reader.number();
    reader.read("DISPLAY", "TYPE");
    s.displaytype = reader.hashash() ? reader.number() : 0;
}

}  // namespace

void settingsfromfile()
{
    try {
        if (g().commandline != "startup" && g().testmode == 0) form11().showbusy("Loading Settings");
        getcoms();
        SettingsReader reader;
        for (int i = 1; i <= 3; ++i) readscanner(reader, i);
        readsave(reader);
        readlocation(reader);
        readcompany(reader);
        readchkrogue(reader);
        form11().hidebusy();
    } catch (const std::exception& e) {
        const Fault f = Fault::from(e);
        MsgBox("An error occured loading the settings from file!", vbExclamation, "Error Loading Settings");
        addtologfile("settingsfromfile: Unexpected Error. Error: " + CStr((long long)f.number) + " " + f.description);
    }
}

// The store location check: a write test on the PC for the local modes, and for the server
// modes the address, an echo, the share and a write test on the share. The result is kept
// in storestate, storedown and lastgoodip and shown on the system check screen, the server
// store check screen and the setup screen.
#include <QCoreApplication>

#include "core/globals.h"
#include "core/logs.h"
#include "pipeline/formats.h"
#include "platform/files.h"
#include "settings/checkfitterfile.h"
#include "settings/form11.h"
#include "settings/form17.h"
#include "settings/form2.h"
#include "settings/form25.h"
#include "settings/lights.h"
#include "settings/storecheck.h"

namespace {

// The system check screen's text for each storestate.
std::string statetext(int state)
{
    switch (state) {
    case 0: return "Store Location Valid And Writable";
    case 1: return "Error Writing To Local Folder";
    case 3: return "Invalid IP Address";
    case 4: return "No Valid Share";
    case 5: return "Error Copying File";
    case 6: return "Invalid Server IP Address";
    default: return "General Error With Server Settings";
    }
}

// Copies the install folder's BAR999.INI to `target` and deletes the copy.
void writetest(const std::string& target)
{
    files::copyfile(formats::probesource(), target);
    files::removefile(target);
}

// The store failed with `state`; not a std::exception, so the handlers below let it pass.
struct StoreFailure {
    int state;
};

void succeed()
{
    Globals& s = g();
    form25().setlight(3, Light::good);
    const std::string text = statetext(0);
    form17().showstore(true, text);
    addtologfile(text);
    form2().Shape1[7].setfillcolor(lightcolour(Light::good));
    form11().hidebusy();
    s.storestate = 0;
    s.storedown = 0;
}

void fail(int state)
{
    Globals& s = g();
    s.storestate = state;
    const std::string text = statetext(state);
    form17().showstore(false, text);
    addtologfile("checkstorelocation: " + text);
    form2().Shape1[7].setfillcolor(lightcolour(Light::fault));
    s.storedown = 1;
    form11().hidebusy();
}

// The server part; throws StoreFailure with the state of the step that failed. Faults of
// the platform that no step claims count as a general failure (2).
void checkserver()
{
    Globals& s = g();
    Form25& screen = form25();
    int failure = 2;
    try {
        validateip(s.serverip);
        if (s.iperror != 0) {
            screen.setlight(1, Light::fault);
            screen.Label1.setcaption("Invalid IP Address");
            throw StoreFailure{6};
        }

        int32_t roundtrip = 0;
        if (pingaddress(s.serverip, 100, roundtrip) != 0) {
            screen.setlight(1, Light::fault);
            screen.Label1.setcaption("No Response From IP Address");
            throw StoreFailure{3};
        }
        screen.setlight(1, Light::good);
        screen.Label1.setcaption("Valid IP Address And Responding");

        if (!files::PathFileExistsA(formats::storefolder(s.serverip))) {
            screen.setlight(2, Light::fault);
            throw StoreFailure{4};
        }
        screen.setlight(2, Light::good);

        failure = 5;
        writetest(formats::probefile(formats::Place::store));
        s.lastgoodip = s.serverip;
    } catch (const std::exception&) {
        if (failure == 5) screen.setlight(3, Light::fault);
        throw StoreFailure{failure};
    }
}

}  // namespace

void checkstorelocation()
{
    Globals& s = g();
    s.storestate = 0;
    s.lastgoodip = "0";
    if (s.commandline != "startup" && s.testmode == 0) form11().showbusy("Checking Store Location");

    try {
        if (s.savetype == 0 || s.savetype == 2) {
            try {
                writetest(formats::probefile(formats::Place::local));
            } catch (const std::exception&) {
                throw StoreFailure{1};
            }
            s.lastgoodip = "1";
            if (s.savetype == 0) {
                succeed();
                return;
            }
        }
        // Email mode has nothing to test: the screens and storedown stay as they were.
        if (s.savetype != 1 && s.savetype != 2) return;
        checkserver();
    } catch (const StoreFailure& f) {
        fail(f.state);
        return;
    }
    succeed();
}

void checkserverip()
{
    Globals& s = g();
    if (s.serverip == s.lastgoodip) return;
    checkstorelocation();
    checkfittersource();
}

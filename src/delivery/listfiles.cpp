#include "delivery/listfiles.h"

#include "core/globals.h"
#include "core/logs.h"
#include "delivery/checkbarcodeini.h"
#include "delivery/filerow.h"
#include "pipeline/form1.h"
#include "pipeline/formats.h"
#include "pipeline/reseticons.h"
#include "pipeline/screens.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "recovery/form28.h"
#include "runtime/vb.h"

namespace {

using formats::Place;

constexpr long exportlimit = 100;

void listexports(ListBox& list)
{
    std::vector<std::string> names = files::list(std::string(formats::localfolder) + "exports\\*.*");
    if (names.size() > (size_t)exportlimit) names.resize(exportlimit);
    if (names.empty()) {
        list.additem("No Files Waiting To Be Emailed.");
        return;
    }
    list.additem("File(s) Waiting To Be Emailed:");
    for (const auto& name : names) list.additem(name);
}

}  // namespace

void listfiles()
{
    int n = 0;   // position marker, for the failure texts
    Form1& f = form1();
    try {
        Globals& s = g();
        clearlist(1);
        f.repaint();
        if (s.savetype == 3) {
            listexports(f.List1);
            return;
        }

        n = 1;
        if (s.savetype == 1 && s.storedown == 1) {
            f.List1.additem("Store Location Unavailable!");
            f.List1.additem("Checking For Temporary Files:");
        }
        n = 2;
        checkbarcodeini(0);
        n = 3;
        const Place place = formats::saveplace();
        n = 4;
        const long count = formats::masterfilecount(formats::masterfile(place));
        if (s.savetype == 2) f.List1.additem("Batched Files Currently On PC:");

        n = 5;
        for (long i = 1; i <= count; ++i) {
            long lines = 0;
            f.List1.additem(filerow(i, formats::barfile(place, i), lines));
        }
        if (count == 0) {
            if (s.savetype == 1 && s.storedown == 1) f.List1.additem("No Outstanding Temporary Data");
            else if (s.savetype == 2) f.List1.additem("No Outstanding Batched Data");
            else f.List1.additem("No Outstanding Data");
        }

        n = 6;
        if (s.savetype == 1 && s.storedown == 0) {
            // Files held on the PC during an outage, waiting to go over.
            checkbarcodeini(1);
            const long local = formats::masterfilecount(formats::masterfile(Place::local));
            if (local >= 1) {
                f.List1.additem(local == 1 ? std::string("There is 1 outstanding local file")
                                           : "There are " + CStr((long long)local) + " outstanding local files");
                f.List1.additem("Double click here to transfer.");
            }
        }

        n = 7;
        if (s.chkrogue == "1") {
            n = 71;
            if (s.savetype == 1) {
                n = 72;
                if (s.storedown == 0) {
                    n = 73;
                    bool found = false;
                    n = 74;
                    for (long i = count + 1; i <= formats::roguelimit && !found; ++i)
                        found = !files::Dir(formats::barfile(Place::store, i)).empty();
                    if (found) {
                        n = 75;
                        if (MsgBox("There appear to be 'rogue' data files on the server that may or may not have been "
                                   "processed into Tarn. Would you like to open the maintance screen to try and fix this?",
                                   vbYesNo + vbQuestion, "Rogue Data Files") == vbYes) {
                            n = 76;
                            showfileeditor();
                        }
                    }
                }
            }
        }
        n = 77;
        f.repaint();
    } catch (const std::exception& e) {
        const Fault fault = Fault::from(e);
        const std::string at = " At Line " + CStr((long long)n);
        f.List1.additem("Error processing file list" + at + "!");
        addtologfile("listfiles: Unexpected error. Error: " + CStr((long long)fault.number) + " " + fault.description + at);
        if (MsgBox("There was any error processing the file list. This normally occurs when there is a faulty scanner ID "
                   "in one of the files. Would you like to open the maintance screen to try and fix this?",
                   vbYesNo + vbQuestion, "Error In File List" + at) == vbYes)
            showfileeditor();
    }
}

// The transfer itself: the local lines merged into the store's files in the work folder,
// file by file from the highest number down, then one copy of the result back to the share
// and the tidy-up of the work folder.
//
// Where the lines are if it stops at any point: a local file is deleted only once all its
// lines are in the work folder; the work folder and its backups are deleted only after the
// copy back has worked; a failed copy back goes to the restore, which never deletes.
#include <QCoreApplication>

#include "core/colorbox.h"
#include "core/form9.h"
#include "core/globals.h"
#include "core/logs.h"
#include "delivery/fileoperation.h"
#include "delivery/form20.h"
#include "delivery/transferplaces.h"
#include "pipeline/formats.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/profile.h"

namespace {

using formats::Place;
using namespace transferplaces;

// A key's text as the merge copies it: read through the 50-character buffer with the
// file's own path as the default, up to the length the call returns.
std::string keytext(const std::string& file, const std::string& section, const std::string& key)
{
    std::string buffer(formats::readbuffer, '\0');
    const uint32_t n = GetPrivateProfileStringA(section, key, file, buffer, formats::readbuffer, file);
    return buffer.substr(0, n);
}

std::string firstline(const std::string& file)
{
    files::TextReader in(file);
    return in.lineinput();
}

std::string today() { return Format(platform::clock::now(), "YYYYMMDD"); }

}  // namespace

// One local file, number i, into the work folder's set of servercount files.
void Form20::mergefile(long i, long& servercount)
{
    using namespace transfercolours;
    marker_ = 6;
    ListFileBox[0].setfillcolor(colorbox(running));
    ListFileBox[1].setfillcolor(colorbox(running));
    if (i - 1 < List1.listcount()) List1.setlistindex((int)i - 1);
    if (List2.listcount() > 0) List2.setlistindex(0);

    marker_ = 7;
    const std::string localfile = formats::barfile(Place::local, i);
    const std::string line = firstline(localfile);
    const std::string localsection = Mid(line, 2, 9);
    const std::string scanner = Mid(line, 8, 3);
    marker_ = 8;
    const long locallines = CInt(Left(formats::readvalue(localfile, localsection, "000"), 3));

    marker_ = 9;
    if (locallines != 0) {
        marker_ = 10;
        animate();

        marker_ = 11;
        long found = 0;
        for (long j = 1; j <= servercount && found == 0; ++j)
            if (Mid(firstline(workbar(j)), 8, 3) == scanner) found = j;

        if (found > 0) {
            // The scanner has its file on the server: its lines go on after the last key.
            marker_ = 12;
            const std::string serverfile = workbar(found);
            const std::string serversection = Mid(firstline(serverfile), 2, 9);
            const long serverlines = CInt(Left(formats::readvalue(serverfile, serversection, "000"), 3));
            std::string lastkey;
            for (long k = 1; k <= locallines; ++k) {
                lastkey = Format(k + serverlines, "000");
                formats::writevalue(serverfile, serversection, lastkey, keytext(localfile, localsection, Format(k, "000")));
            }
            marker_ = 13;
            formats::writevalue(serverfile, serversection, "000", lastkey + today());
        } else {
            // A new file for this scanner, after the last one of the set.
            marker_ = 14;
            servercount = servercount + 1;
            const std::string serverfile = workbar(servercount);
            if (files::exists(serverfile)) files::removefile(serverfile);
            marker_ = 15;
            formats::writevalue(serverfile, localsection, "000", Format(locallines, "000") + today());
            marker_ = 16;
            for (long k = 1; k <= locallines; ++k) {
                const std::string key = Format(k, "000");
                formats::writevalue(serverfile, localsection, key, keytext(localfile, localsection, key));
            }
            marker_ = 17;
            formats::writemastercount(workmaster(), servercount);
        }
    }

    marker_ = 18;
    files::removefile(localfile);
    marker_ = 19;
    filllists(0);
    repaint();
}

bool Form20::copyback()
{
    const FileOperation op = copyfiles(workpattern(), formats::storefolder(g().serverip));
    if (!op.failed) return true;
    restoredata(op.fault());
    return false;
}

void Form20::runtransfer()
{
    using namespace transfercolours;
    if (busy_) return;
    Globals& s = g();
    marker_ = 1;
    try {
        addstep("Beginning transfer of data");
        if (!(s.savetype > 0 && localready == 1 && serverready == 1)) {
            marker_ = 21;
            if (localready == 0)
                MsgBox("There seems to be a problem with the local data! Please close the program and then retry the "
                       "transfer. Thank You.",
                       vbExclamation, "Data Problem");
            else if (serverready == 0)
                MsgBox("There seems to be a problem preparing the remote data! Please close the program and then retry "
                       "the transfer. Thank You.",
                       vbExclamation, "Data Problem");
            return;
        }

        marker_ = 3;
        busy_ = true;
        settransfer(false);
        setbuttons(false);
        ListFileBox[0].setfillcolor(colorbox(running));
        ListFileBox[1].setfillcolor(colorbox(running));
        repaint();
        marker_ = 4;
        addstep("Adding local data to server files");
        marker_ = 5;
        const long localcount = formats::masterfilecount(formats::masterfile(Place::local));
        long servercount = formats::masterfilecount(workmaster());
        for (long i = localcount; i >= 1; --i) mergefile(i, servercount);
        marker_ = 20;
        formats::writemastercount(formats::masterfile(Place::local), 0);

        marker_ = 22;
        addstep("Copying data back to server");
        if (!copyback()) {
            busy_ = false;
            return;
        }
        marker_ = 23;
        addstep("Data transfer operation complete");
        addstep("Tidying up local files");
        marker_ = 24;
        const FileOperation tidy = deletefiles(std::string(workfolder) + "*");
        if (tidy.failed) {
            const Fault f = tidy.fault();
            const std::string error = CStr((long long)f.number) + " " + f.description;
            MsgBox("An unexpected error occured while trying to delete the backup data from the PC! This is not a "
                   "critical problem. Error: " + error,
                   vbExclamation, "Error Transfering Data");
            addtologfile("form20, runtransfer: Error while deleting backup files. Unexpected error. Error: " + error);
            busy_ = false;
            return;
        }
        marker_ = 25;
        ListFileBox[1].setfillcolor(colorbox(running));
        setbuttons(true);
        addstep("All operations completed");
        busy_ = false;
    } catch (const std::exception& e) {
        busy_ = false;
        setinterval(Timer1, 0);
        const Fault f = Fault::from(e);
        const std::string error = CStr((long long)f.number) + " " + f.description;
        MsgBox("An unexpected error occured while trying to transfer the data to the server! Section " +
                   CStr((long long)marker_) + " - Error: " + error,
               vbExclamation, "Error Transfering Data");
        addtologfile("form20, runtransfer: Unexpected error. Error: " + error);
    }
}

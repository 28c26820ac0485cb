// The support mail's sending and the copy of the logs to the server.
#include "core/form9.h"
#include "core/globals.h"
#include "pipeline/formats.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/mail.h"
#include "support/form21.h"

namespace {

const char* const weekdays[] = {"MON", "TUE", "WED", "THU", "FRI", "SAT", "SUN"};

// Puts `file` at the next attachment index when it exists.
void attachifthere(MAPIMessages& m, int& next, const std::string& file)
{
    if (!files::exists(file)) return;
    m.AttachmentIndex = next++;
    m.setAttachmentPathName(file);
}

}  // namespace

void sendsupportmail(const std::string& recipient, const std::string& subject, const std::string& note)
{
    const Globals& s = g();
    MAPISession& sess = form9().MAPISession1;
    MAPIMessages& m = form9().MAPIMessages1;
    if (sess.SessionID() == 0) sess.SignOn();
    try {
        m.SessionID = sess.SessionID();
        m.Compose();
        m.RecipIndex = 0;
        m.RecipType = 1;
        m.RecipAddress = recipient;
        m.AddressResolveUI = false;
        m.MsgSubject = subject;
        m.MsgNoteText = note;

        if (files::exists(s.homedir + "TAGSTORE.INI")) {
            m.AttachmentIndex = 0;
            m.setAttachmentPathName(s.homedir + "TAGSTORE.INI");
        }
        int next = 1;   // with TAGSTORE.INI missing, index 0 stays empty
        if (Val(form21().Att1.value()) == 1) {
            attachifthere(m, next, "c:\\tarnbc\\barcode.ini");
            for (int n = 1; n <= 999; ++n) attachifthere(m, next, "c:\\tarnbc\\bar" + Format(n, "000") + ".ini");
            if (s.savetype > 0 && s.storestate == 0) {
                attachifthere(m, next, formats::masterfile(formats::Place::store));
                for (int n = 1; n <= 999; ++n) attachifthere(m, next, formats::barfile(formats::Place::store, n));
            }
        }
        if (Val(form21().Att2.value()) == 1)
            for (const char* day : weekdays) attachifthere(m, next, s.homedir + "LOGS\\" + day + "_LOG.TXT");
        m.Send(false);
    } catch (...) {
        sess.SignOff();
        throw;
    }
    sess.SignOff();
}

void Form21::copythelogs()
{
    const Globals& s = g();
    if (s.savetype == 0) return;
    if (s.savetype == 1 && s.storedown == 1) {
        MsgBox("The server store folder appears to be unavailable! Check system status for more information!",
               vbExclamation, "Server Unavailable");
        return;
    }
    // Only weekday-named logs are looked for, and a copy that fails is passed over: the
    // day-numbered logs stay on the PC and the box below is shown all the same.
    for (const char* suffix : {"_LOG.TXT", "_DAT.TXT"})
        for (const char* day : weekdays) {
            try {
                files::copyfile(s.homedir + "LOGS\\" + day + suffix,
                                "\\\\" + s.serverip + "\\tagstore\\" + day + suffix);
            } catch (const std::exception&) {
            }
        }
    MsgBox("All available log files have been copied to the server for support!", vbInformation, "Files Copied");
}

#include "delivery/sendmail.h"

#include <set>

#include "core/form9.h"
#include "pipeline/formats.h"
#include "platform/files.h"
#include "runtime/vb.h"
#include "settings/form2.h"
#include "settings/form3.h"

namespace {

const std::string exports = "c:\\tarnbc\\exports\\";

// The names in the exports folder by directory look-up, into the fixed list of 100.
std::vector<std::string> exportnames()
{
    FixedArray<std::string, 1, 100> names;
    long count = 0;
    for (std::string name = files::Dir(exports); !name.empty(); name = files::Dir()) names[++count] = name;
    std::vector<std::string> out;
    for (long i = 1; i <= count; ++i) out.push_back(names[i]);
    return out;
}

}  // namespace

void sendmail(const std::string& recipient, const std::string& subject, const std::string& note,
              const std::string& mode)
{
    Form9& f = form9();
    MAPISession& session = f.MAPISession1;
    MAPIMessages& message = f.MAPIMessages1;
    if (session.SessionID() == 0) session.SignOn();
    message.SessionID = session.SessionID();
    message.Compose();
    message.RecipAddress = recipient;
    message.AddressResolveUI = false;
    message.RecipIndex = 0;
    message.RecipType = 1;
    message.MsgSubject = subject;
    message.MsgNoteText = note;

    // Every file of the folder, at index 0, 1, 2 ...
    std::set<std::string> attached;
    int index = 0;
    for (std::string name = files::Dir(exports); !name.empty(); name = files::Dir()) {
        message.AttachmentIndex = index++;
        message.setAttachmentPathName(exports + name);
        attached.insert(name);
    }
    bool testfile = false;
    if (index == 0) {
        files::TextWriter out(exports + "test", files::TextWriter::output);
        out.print("TEST FILE");
        out.close();
        message.AttachmentIndex = 0;
        message.setAttachmentPathName(exports + "test");
        testfile = true;
    }

    try {
        message.Send(false);
    } catch (const std::exception&) {
        // The made test file holds no data: it does not stay behind to go with a later mail.
        if (testfile) files::DeleteFileA(exports + "test");
        throw;
    }
    session.SignOff();

    if (testfile) files::removefile(exports + "test");
    if (mode != "T" && !testfile) {
        // The screens' events run while the mail goes, so an export made meanwhile by an
        // automatic download lies in the folder unsent: only what went is deleted.
        for (const std::string& name : exportnames())
            if (attached.count(name)) files::removefile(exports + name);
    }
}

void sendtestmail()
{
    if (!files::isfolder(formats::exportfolder)) files::makefolder(formats::exportfolder);
    sendmail(form2().ServerIP.value(), "*TEST* Workshop Time Clock Files From " + form3().User.value(),
             "*TEST* Please save all files to c:\\tarnbc\\imports", "T");
}

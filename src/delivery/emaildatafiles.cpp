#include "delivery/emaildatafiles.h"

#include "core/globals.h"
#include "core/logs.h"
#include "delivery/listfiles.h"
#include "delivery/sendmail.h"
#include "pipeline/form1.h"
#include "pipeline/screens.h"
#include "platform/dialogs.h"
#include "settings/form3.h"

namespace {

void report(const std::string& text)
{
    form1().List2.additem(text);
    addtologfile("Function transferdata() : " + text);
}

}  // namespace

void emaildatafiles()
{
    if (MsgBox("Data is ready to email to head office! Would you like to email the data now? (NB: To send emails at a "
               "later stage double click on the outstanding file list)",
               vbYesNo + vbQuestion, "Confirm Email Sending") == vbYes) {
        const std::string recipient = form3().HOEmail.value();
        sendmail(recipient, "Workshop Time Clock Files From " + form3().User.value(),
                 "Please save all files to c:\\tarnbc\\imports", "L");
        report("Data Emailed To " + recipient);
    } else {
        report("Data Held For Emailing Later");
    }
    listfiles();
}

bool emailfromlist()
{
    if (g().savetype != 3) return false;
    if (form1().List1.listcount() > 1) emaildatafiles();
    return true;
}

// The splash screen's load: the version and the titles, then the update check against the
// update web host's bcver, with its reminder and the start of the web updater.
#include <QCoreApplication>
#include <QLocale>

#include "core/exit.h"
#include "core/form9.h"
#include "core/globals.h"
#include "core/logs.h"
#include "pipeline/form1.h"
#include "pipeline/resumenext.h"
#include "pipeline/screens.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/profile.h"
#include "platform/shell.h"
#include "platform/web.h"
#include "settings/form2.h"
#include "settings/settingsread.h"
#include "support/downloadfile.h"
#include "support/frmsplash.h"
#include "support/issuedate.h"
#include "support/startprogram.h"

void frmSplash::writenag()
{
    WritePrivateProfileStringA("UPDATE", "NAG", CStr((long long)nagcount) + "#", settingsfile());
}

void frmSplash::load()
{
    Globals& s = g();
    int line = 0;
    tickcount = 0;
    try {
        lblVersion.setcaption(std::string("Version ") + programversion + " Issue: " + programissue);
        form1().setWindowTitle(QString::fromLatin1(maintitle().c_str()));
        form2().setWindowTitle(QString::fromLatin1(setuptitle().c_str()));
        // The fetch below holds the screen: let the splash be drawn first.
        repaint();
        QCoreApplication::processEvents();

        const bool hassettings = files::exists(settingsfile());
        if (hassettings) {
            SettingsReader reader;
            reader.read("UPDATE", "NAG");
            // A missing key reads as the settings file's own path.
            if (Left(reader.buffer(), 1) == "C") {
                nagcount = 0;
                writenag();
            } else {
                nagcount = reader.number();
            }
        }

        line = 3;
        const std::string local = s.homedir + "OS\\bcver";
        bool fetched = false;
        DownloadFile(web::updateaddress("/support/Tagstore/support/bcver"), local, fetched);
        if (fetched) {
            // A version file that cannot be read or has no "#" is passed over in silence.
            line = 99;
            files::TextReader in(local);
            const std::string first = in.lineinput();
            const std::string issue = Left(first, InStr(first, "#") - 1);

            line = 4;
            if (issue == programissue) {
                nagcount = 0;
                if (hassettings) writenag();
            } else {
                // From here on a fault ends the statement it hits, and the check goes on.
                line = 5;
                QDate issued = zerodate();
                resumenext([&] { issued = issuedate(issue); });
                long long age = 0;
                resumenext([&] { age = issued.daysTo(platform::clock::today()); });
                const std::string date = QLocale::system().toString(issued, QLocale::ShortFormat).toStdString();

                line = 6;
                bool refused = false;
                if (age <= 30 && nagcount != 0) {
                    resumenext([&] { nagcount -= 1; });
                    if (hassettings) writenag();
                } else if (age > 30) {
                    line = 7;
                    const int answer = MsgBox("There is a new issue of the tagstore interface program available, issued " +
                                                  date +
                                                  ". This MUST now be updated before the software can be used again! ",
                                              vbOKCancel + vbCritical, "Update Of Program Required");
                    if (answer == vbCancel) endprocess();
                    refused = true;   // OK gives no update: the program starts
                } else {
                    line = 7;
                    const long long left = 30 - age;
                    const std::string days = left == 1 ? " day left before you MUST load this update!)"
                                                       : " days left before you MUST load this update!)";
                    refused = MsgBox("There is a new issue of the tagstore interface program available, issued " + date +
                                         ". Would you like to download this from the web? (NB: You have " +
                                         CStr(left) + days,
                                     vbYesNo + vbQuestion, "Update Program") != vbYes;
                    if (!refused) {
                        line = 8;
                        const std::string landing = s.homedir + "WebUpdate.exe";
                        bool got = false;
                        resumenext([&] {
                            DownloadFile(web::updateaddress("/support/Tagstore/WebUpdater.exe"), landing, got);
                        });
                        // The running updater may hold its file: a failed copy is ignored.
                        if (got) resumenext([&] { files::copyfile(landing, s.homedir + "WebUpdater.exe"); });
                        nagcount = 0;
                        if (hassettings) {
                            writenag();
                            resumenext([&] {
                                startprogram("\"" + s.homedir + "WebUpdater.exe\" Internal", SW_SHOWNORMAL);
                            });
                        }
                        s.savetype = 0;
                        fullexit();
                        return;
                    }
                }
                if (refused) {
                    nagcount = 5;
                    if (hassettings) writenag();
                }
            }
        }
    } catch (const std::exception& e) {
        const Fault f = Fault::from(e);
        if (f.number == 0) throw;   // the process is ending
        if (line != 99) {
            const std::string detail = CStr((long long)f.number) + " " + f.description;
            MsgBox("Unexpected Error Will Attempting To Start Up Program! Error : " + detail + " at line " +
                       CStr((long long)line),
                   vbExclamation, "frmSplash: Load");
            addtologfile("frmSplash/Load: Unexpected error. Error : " + detail);
        }
    }
    // The start-up waits for the splash to end: whatever happened above, it ends.
    setinterval(Timer1, 1000);
}

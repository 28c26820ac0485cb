#include <QDateTime>

#include "core/colorbox.h"
#include "core/globals.h"
#include "core/logs.h"
#include "maintenance/form10.h"
#include "maintenance/scannerclock.h"
#include "maintenance/scannertests.h"
#include "maintenance/screens.h"
#include "pipeline/form1.h"
#include "pipeline/form12.h"
#include "pipeline/screens.h"
#include "platform/clock.h"
#include "platform/csp2.h"
#include "platform/dialogs.h"
#include "settings/form2.h"

namespace {

// Puts `text` over the characters of `caption` from `start` on, keeping its length.
void overwrite(Caption& caption, long start, const std::string& text)
{
    std::string s = caption.caption();
    if (start < 1 || start > Len(s)) raisefault(fault::invalidcall);
    const size_t n = std::min(text.size(), s.size() - (size_t)start + 1);
    s.replace((size_t)start - 1, n, text.substr(0, n));
    caption.setcaption(s);
}

void corrected(const std::string& text)
{
    form1().List2.additem(text);
    addtologfile(text);
}

}  // namespace

void testthedate()
{
    Globals& s = g();
    try {
        const int type = s.scannertype;
        Form10& check = form10();
        Caption& result = form2().TestResult[type];
        Caption& repair = form12().Label3;
        Caption& main = form1().Label3;

        setscannerdatetime(scannerstamp(type));
        check.DateLabel.setcaption(datedisplay(s.scannerdate));
        repair.setcaption(s.scannerdate);
        result.setcaption(s.scannerdate);
        main.setcaption(Left(main.caption(), 19) + s.scannerdate);

        const QDateTime now = platform::clock::now();
        if (s.scannerdate != Format(now, "DDMMYY")) {
            s.datestatus = 1;
            check.DateBox.setfillcolor(colorbox(2));
        } else {
            s.datestatus = 0;
            check.DateBox.setfillcolor(colorbox(5));
        }

        const long diff = minutesapart(s.scannertime, now.time());
        const TimeVerdict verdict =
            judgetime(diff, s.timemargin, s.scannerautotime[type], s.datestatus, inclockchangewindow(now.date()));
        if (verdict == TimeVerdict::correct) {
            check.updatethetime();
            corrected("Scanner corrected for " + CStr((long long)diff) + " minutes difference");
        } else if (verdict == TimeVerdict::correctdst) {
            check.updatethetime();
            corrected("Scanner corrected for " + CStr((long long)diff) + " minutes difference (DST Adj)");
        }
        if (verdict == TimeVerdict::good || verdict == TimeVerdict::correct) {
            s.timestatus = 0;
            check.TimeBox.setfillcolor(colorbox(5));
        } else if (verdict == TimeVerdict::fault) {
            s.timestatus = 1;
            check.TimeBox.setfillcolor(colorbox(2));
        }

        check.TimeLabel.setcaption(timedisplay(s.scannertime));
        repair.setcaption(s.scannertime + " " + repair.caption());
        result.setcaption(s.scannertime + " " + result.caption());
        overwrite(main, 15, s.scannertime);

        s.portlasttested[type] = s.scannerport[type];
        const bool good = s.datestatus == 0 && s.timestatus == 0 && s.idstatus == 0;
        form2().ResultBox[type].setfillcolor(colorbox(good ? 1 : 2));
        s.scannertested[type] = good ? 1 : 0;
    } catch (const std::exception& e) {
        const Fault f = Fault::from(e);
        const std::string error = std::to_string(f.number) + " " + f.description;
        addtologfile("testthedate: Unexpected error. Error: " + error);
        MsgBox("An error occurred test the date / time on the scanner! Please try again. Error: " + error,
               vbExclamation, "Error In Function: testthedate");
    }
}

void readcspclock()
{
    std::string clock = g().scannerrawclock;
    clock.resize(6, '\0');
    csp2GetTime(clock.data());
    g().scannerrawclock = clock;
}

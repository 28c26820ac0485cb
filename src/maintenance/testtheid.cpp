#include "core/colorbox.h"
#include "core/globals.h"
#include "maintenance/form10.h"
#include "maintenance/scannertests.h"
#include "maintenance/screens.h"
#include "pipeline/form1.h"
#include "pipeline/screens.h"
#include "settings/checkfitterfile.h"
#include "settings/englines.h"
#include "settings/form2.h"

std::string formatid(const std::string& id) { return IsNumeric(id) ? Format((long long)Val(id), "000") : id; }

void testtheID()
{
    Globals& s = g();
    const int type = s.scannertype;
    Form10& check = form10();
    Caption& result = form2().TestResult[type];
    Caption& main = form1().Label3;
    const std::string id = s.scannerid;

    // The rules in this order, the last that matches standing.
    s.idstatus = 0;
    for (char c : id)
        if (c < '0' || c > '9') s.idstatus = 1;
    if (Len(id) > 3) s.idstatus = 2;
    const std::string last3 = formatid(Right(id, 3));
    if (last3 == "000" || last3 == "999") s.idstatus = 3;

    check.IDLabel[1].setcaption(formatid(id));
    result.setcaption(last3 + (s.idstatus > 0 ? " " : "  ") + result.caption());
    main.setcaption("ID: " + last3 + Right(main.caption(), 18));
    if (s.idstatus > 0) {
        check.IDBox.setfillcolor(colorbox(2));
        check.FitterLabel[1].setcaption("N/A");
    } else {
        checkfitterfile();
        if (s.fitterstatus == 1) {
            // No list to look in: the result stays as the clock left it.
            check.FitterBox.setfillcolor(colorbox(2));
            check.FitterLabel[1].setcaption("N/A");
            return;
        }
        check.IDBox.setfillcolor(colorbox(5));
        check.FitterLabel[1].setcaption(engineerowner(id));
    }

    const bool good = s.datestatus == 0 && s.timestatus == 0 && s.idstatus == 0;
    form2().ResultBox[type].setfillcolor(colorbox(good ? 1 : 2));
}

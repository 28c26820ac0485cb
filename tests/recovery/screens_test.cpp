// The data log screen as a user sees it, with a download shown, drawn offscreen into
// <build>/screens/ (a copy is kept in docs/screens/).
#include "delivery/setfiles.h"
#include "recovery/form26.h"
#include "support/screenshot.h"

class RecoveryScreens : public StoreTest {};

TEST_F(RecoveryScreens, DataLogWithADownload)
{
    const std::string a = "0112345678200703051430", b = "0212345678200703051431", c = "0387654321200703051432123";
    put(g().homedir + "LOGS\\05_DAT.TXT",
        "05/03/2007\r\nENTRY: Scanner 000123 1430 20070305\r\n[000000123]\r\n000=00320070305\r\n001=" + a +
            "\r\n002=" + b + "\r\n003=" + c + "\r\nEND\r\nENTRY: Scanner 000456 1610 20070305\r\n[000000456]\r\n"
            "000=00120070305\r\n001=" + a + "\r\nEND\r\n");
    put(g().homedir + "LOGS\\06_DAT.TXT", "06/03/2007\r\n");
    put(g().homedir + "LOGS\\08_DAT.TXT", "08/03/2007\r\nENTRY: Scanner 000123 0810 20070308\r\n");
    Form26& f = form26();
    f.setupscreen();
    f.List1.setlistindex(0);
    f.list1dblclick();
    f.List2.setlistindex(0);
    f.list2dblclick();
    EXPECT_EQ(f.List3.listcount(), 5);
    EXPECT_GT(drawscreen(f, "Form26"), 4);
}

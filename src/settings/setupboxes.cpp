#include "settings/setupboxes.h"

#include "runtime/vb.h"
#include "settings/form2.h"
#include "settings/settingsread.h"
#include "settings/setupdisplay.h"

void checktno()
{
    Form2& f = form2();
    const std::string text = f.TarnTNO.value();
    if (text == "999") {
        paint(f.Shape1[1], boxneutral);
        return;
    }
    bool good = false;
    if (text != "000" && IsNumeric(text)) {
        const double n = CDbl(text);
        good = n == (double)(long long)n && n >= 1 && n <= 998;
        if (good) f.TarnTNO.settext(Format((long long)n, "000"));
    }
    paint(f.Shape1[1], good ? boxgood : boxfault);
}

bool checkemailbox()
{
    Form2& f = form2();
    const bool good = emailtest(f.ServerIP.value());
    paint(f.Shape1[7], good ? boxgood : boxfault);
    return good;
}

#include "delivery/checkimports.h"

#include "core/controls.h"
#include "core/globals.h"
#include "pipeline/form1.h"
#include "pipeline/screens.h"
#include "platform/files.h"

namespace {

void setlistwidth(int units)
{
    Form1& f = form1();
    f.ListFileBox[0].resize(twips(units), f.ListFileBox[0].height());
    f.Label2.resize(twips(units), f.Label2.height());
}

}  // namespace

void showimporticon(bool show)
{
    setlistwidth(show ? 2655 : 3375);
    form1().ImportIcon[0].setVisible(show);
}

void checkimports()
{
    if (g().importbusy == 1) return;
    g().importbusy = 1;
    const std::string folder = "C:\\TARNBC\\IMPORTS";
    if (!files::isfolder(folder)) files::makefolder(folder);
    size_t count = files::list("c:\\tarnbc\\imports\\*").size();
    Form1& f = form1();
    // The icon's own visibility flag: it counts while the main screen is hidden too.
    const bool shown = !f.ImportIcon[0].isHidden();
    if (count > 0 && !shown) showimporticon(true);
    else if (count == 0 && shown) showimporticon(false);
    g().importbusy = 0;
}

#include "core/displaysize.h"

#include <QGuiApplication>
#include <QScreen>

#include "core/controls.h"
#include "core/globals.h"
#include "pipeline/form1.h"
#include "pipeline/screens.h"
#include "settings/form2.h"

namespace {

struct Bounds {
    int left, top, width, height;
};

void setbounds(QWidget& w, Bounds b) { w.setGeometry(twips(b.left), twips(b.top), twips(b.width), twips(b.height)); }

// Everything of the main screen below its row of action buttons.
struct MainLayout {
    Bounds screen, checksub, label3, list2, listfilebox, label2, importicon, list1, status, label1,
        battery, help, helplabel, support, close, closelabel;
};

const MainLayout maintall{{0, 0, 7380, 9690},   {120, 1500, 2880, 240},  {120, 1800, 7020, 300},
                          {120, 2160, 7020, 3360}, {120, 5640, 3375, 300}, {180, 5670, 3375, 240},
                          {3600, 5580, 480, 420},  {120, 6000, 7020, 2040}, {120, 8160, 840, 840},
                          {1080, 8160, 3100, 300}, {1080, 8520, 3100, 300}, {4440, 8160, 720, 720},
                          {4440, 8900, 720, 240},  {5400, 8160, 720, 720},  {6360, 8160, 720, 720},
                          {6360, 8900, 720, 240}};
const MainLayout mainwide{{0, 0, 10935, 6120},   {120, 1500, 2880, 240},  {120, 1800, 10575, 300},
                          {120, 2160, 5220, 3360}, {5520, 2100, 3375, 300}, {5580, 2130, 3375, 240},
                          {9000, 2040, 480, 420},  {5520, 2460, 5280, 1500}, {5520, 4080, 840, 840},
                          {6480, 4080, 3100, 300}, {6480, 4440, 3100, 300}, {7560, 180, 720, 720},
                          {7560, 900, 720, 240},   {8520, 180, 720, 720},   {9480, 180, 720, 720},
                          {9480, 900, 720, 240}};
// The width of ListFileBox(0) and Label2 while the import icon shows.
constexpr int narrowedlist = 2655;

void setwidth(QWidget& w, int units) { w.resize(twips(units), w.height()); }

}  // namespace

void layoutmain(Form1& f, bool tall)
{
    const MainLayout& l = tall ? maintall : mainwide;
    f.resize(twips(l.screen.width), twips(l.screen.height));
    // The action buttons, each a Shape1 panel with its picture and caption, along the top in
    // both layouts.
    PictureBox* pictures[] = {&f.Check, &f.Transfer, &f.Read, &f.Delete, &f.Settings};
    Caption* captions[] = {&f.CheckLabel, &f.TransferLabel, &f.ReadLabel, &f.DeleteLabel, &f.SettingsLabel};
    for (int i = 0; i <= 4; ++i) {
        const int left = 120 + i * 1440;
        setbounds(f.Shape1[i], {left, 120, 1320, 1320});
        setbounds(*pictures[i], {left + 180, 180, 960, 840});
        setbounds(*captions[i], {left + 30, 1080, 1260, 300});
    }
    setbounds(f.CheckSubLabel, l.checksub);
    setbounds(f.Label3, l.label3);
    setbounds(f.List2, l.list2);
    setbounds(f.ListFileBox[0], l.listfilebox);
    setbounds(f.Label2, l.label2);
    if (!f.ImportIcon[0].isHidden()) {
        setwidth(f.ListFileBox[0], narrowedlist);
        setwidth(f.Label2, narrowedlist);
    }
    setbounds(f.ImportIcon[0], l.importicon);
    setbounds(f.List1, l.list1);
    setbounds(f.Status, l.status);
    setbounds(f.Label1, l.label1);
    setbounds(f.BatteryLevel, l.battery);
    setbounds(f.Help, l.help);
    setbounds(f.HelpLabel, l.helplabel);
    setbounds(f.Support, l.support);
    setbounds(f.Close, l.close);
    setbounds(f.CloseLabel, l.closelabel);
}

// The setup screen: its three frames keep their contents (Frame1 ends above Frame2 in both
// layouts); the buttons go under them in the tall layout and into a column on the right in
// the wide one.
void layoutsetup(Form2& f, bool tall)
{
    f.resize(twips(tall ? 9615 : 12060), twips(tall ? 9780 : 8340));
    const int frametops[2][3] = {{120, 4680, 6480}, {120, 4800, 6540}};
    setbounds(f.Frame[1], {120, frametops[tall ? 0 : 1][0], 9375, 4500});
    setbounds(f.Frame[2], {120, frametops[tall ? 0 : 1][1], 9375, 1680});
    setbounds(f.Frame[3], {120, frametops[tall ? 0 : 1][2], 9375, 1560});
    QWidget* buttons[] = {&f.Update[0], &f.Undo[0], &f.Cancel[0], &f.Help[0]};
    QWidget* labels[] = {&f.UpdateLabel[0], &f.UndoLabel[0], &f.CancelLabel[0], &f.HelpLabel[0]};
    for (int b = 0; b < 4; ++b) {
        if (tall) {
            const int left = 120 + b * 2340;
            setbounds(*buttons[b], {left + 600, 8160, 720, 720});
            setbounds(*labels[b], {left, 8940, 1920, 280});
        } else {
            const int top = 240 + b * 1440;
            setbounds(*buttons[b], {10320, top, 720, 720});
            setbounds(*labels[b], {9720, top + 760, 1920, 280});
        }
    }
}

namespace {

void centre(QWidget& w)
{
    QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen) return;
    QRect display = screen->geometry();
    w.move(display.left() + (display.width() - w.width()) / 2, display.top() + (display.height() - w.height()) / 2);
}

}  // namespace

void changedisplaysize()
{
    const bool tall = g().displaytype == 0;
    layoutmain(form1(), tall);
    layoutsetup(form2(), tall);
    centre(form1());
    centre(form2());
}

#include "delivery/form20.h"

#include <QCloseEvent>
#include <QCoreApplication>

#include "core/colorbox.h"
#include "core/exit.h"
#include "core/form9.h"
#include "core/globals.h"
#include "core/imagelists.h"
#include "core/runtimeerror.h"
#include "delivery/listfiles.h"
#include "delivery/transferplaces.h"
#include "pipeline/form1.h"
#include "pipeline/screens.h"
#include "settings/storecheck.h"

namespace {

constexpr int listtop = 420, listheight = 3000, listwidth = 4080;
constexpr int arrowtop = 3540, buttontop = 3960;

}  // namespace

Form20::Form20(QWidget* parent) : QWidget(parent)
{
    setObjectName("Form20");
    setWindowTitle("Transfer Local Data To Server");
    setFixedSize(twips(9480), twips(6240));

    // The local side on the left, the server side on the right, the arrows between them
    // below.
    place(Label2, this, "Label2", 240, 120, listwidth - 240, 300);
    place(ListFileBox[0], this, "ListFileBox", 0, 120, listtop, listwidth, listheight);
    place(List1, this, "List1", 240, listtop + 120, listwidth - 240, listheight - 240);
    place(Label1, this, "Label1", 5280, 120, listwidth - 240, 300);
    place(ListFileBox[1], this, "ListFileBox", 1, 5160, listtop, listwidth, listheight);
    place(List2, this, "List2", 5280, listtop + 120, listwidth - 240, listheight - 240);
    for (int i = 0; i <= 9; ++i) {
        place(Tran[i], this, "Tran", i, 360 + i * 900, arrowtop, 720, 240);
        Tran[i].setfillcolor(colorbox(transfercolours::idle));
    }
    for (int i = 0; i <= 1; ++i) ListFileBox[i].setfillcolor(colorbox(transfercolours::running));

    place(List3, this, "List3", 120, buttontop, 6600, 2040);
    PictureBox* pictures[] = {&Transfer, &Setup, &CloseScreen};
    Caption* captions[] = {&Label3, &Label4, &Label5};
    const char* picturenames[] = {"Transfer", "Setup", "CloseScreen"};
    const char* captionnames[] = {"Label3", "Label4", "Label5"};
    const char* texts[] = {"Transfer Data", "Goto Setup", "Exit Screen"};
    const int images[] = {3, 8, 1};
    for (int i = 0; i < 3; ++i) {
        const int left = 6840 + i * 900;
        place(*pictures[i], this, picturenames[i], left + 60, buttontop, 720, 720);
        pictures[i]->setpicture(ColorIcons(), images[i]);
        place(*captions[i], this, captionnames[i], left, buttontop + 780, 840, 480);
        captions[i]->setcaption(texts[i]);
        captions[i]->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
        captions[i]->setWordWrap(true);
    }

    connect(&Transfer, &PictureBox::clicked, this, guard([this] { runtransfer(); }));
    connect(&Label3, &Caption::clicked, this, guard([this] { runtransfer(); }));
    // Goto Setup has no action.
    connect(&CloseScreen, &PictureBox::clicked, this, guard([this] { closescreen(); }));
    connect(&Label5, &Caption::clicked, this, guard([this] { closescreen(); }));
    connect(&Timer1, &QTimer::timeout, this, guard([this] { Timer1_Timer(); }));
}

void Form20::addstep(const std::string& text) { List3.additem(text); }

void Form20::setbuttons(bool on)
{
    Setup.setEnabled(on);
    CloseScreen.setEnabled(on);
    Label4.setVisible(on);
    Label5.setVisible(on);
}

void Form20::settransfer(bool on)
{
    Transfer.setpicture(on ? ColorIcons() : GreyIcons(), 3);
    Transfer.setEnabled(on);
    Label3.setEnabled(on);
    Label3.setVisible(on);
}

void Form20::setupscreen()
{
    const Globals& s = g();
    Label2.setcaption(s.savetype == 2 ? "Batched Local Files" : "Temporary Local Files");
    Label1.setcaption("Server Files For " + Format((long long)Val(s.terminalno), "000"));
    List1.clear();
    List2.clear();
    settransfer(false);
    // A fresh opening has its way out, whatever the last transfer left.
    setbuttons(true);
}

void Form20::startup()
{
    checkstorelocation();
    filllists(1);
}

void Form20::closescreen()
{
    Globals& s = g();
    hide();
    switch ((int)s.callerof[20]) {
    case 1:
        s.pressedop = 0;
        listfiles();
        form1().show();
        break;
    case 99:
        fullexit();
        break;
    default:   // 9, from the tray with the main screen hidden: it stays hidden
        break;
    }
}

void Form20::closeEvent(QCloseEvent* event)
{
    event->ignore();
    // While a transfer runs the data lies half way between the PC and the server: the
    // screen stays until the transfer has ended one way or the other.
    if (busy_) return;
    guarded([this] { closescreen(); });
}

void Form20::Timer1_Timer()
{
    using namespace transfercolours;
    for (int i = 0; i <= 9; ++i) Tran[i].setfillcolor(colorbox(idle));
    ListFileBox[0].setfillcolor(colorbox(running));
    ListFileBox[1].setfillcolor(colorbox(running));
    if (animstep == 0) ListFileBox[0].setfillcolor(colorbox(lit));
    else if (animstep == 9) ListFileBox[1].setfillcolor(colorbox(lit));
    else Tran[animstep - 1].setfillcolor(colorbox(lit));
    animstep = animstep + 1;
}

void Form20::animate()
{
    animstep = 8;
    setinterval(Timer1, 100);
    while (animstep <= 10) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    setinterval(Timer1, 0);
}

Form20& form20()
{
    static Form20* screen = new Form20;
    return *screen;
}

void opentransferscreen()
{
    Form20& f = form20();
    // The tray menu can be reached while a transfer waits on its animation: that transfer
    // keeps its screen and its work folder as they are.
    if (f.transferring()) {
        f.show();
        f.raise();
        return;
    }
    f.List3.clear();
    f.setupscreen();
    QCoreApplication::processEvents();
    form1().hide();
    f.show();
    f.repaint();
    f.startup();
}

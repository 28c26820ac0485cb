#include "maintenance/form24.h"

#include <QCloseEvent>
#include <QCoreApplication>

#include "core/colorbox.h"
#include "core/form16.h"
#include "core/globals.h"
#include "core/imagelists.h"
#include "core/screens.h"
#include "maintenance/bars.h"
#include "maintenance/form10.h"
#include "maintenance/screens.h"
#include "pipeline/form1.h"
#include "pipeline/screens.h"
#include "platform/clock.h"
#include "platform/opl.h"
#include "core/runtimeerror.h"

namespace {
constexpr int bartop = 600, barheight = 360;
}

Form24::Form24(QWidget* parent) : QWidget(parent)
{
    setObjectName("Form24");
    setWindowTitle("OPL 972x Battery Timer");
    setFixedSize(twips(4815), twips(3720));

    place(Label4[0], this, "Label4", 0, progressleft, 180, 2400, 300);
    Label4[0].setcaption("Appox Charge Time");
    place(Label4[2], this, "Label4", 2, 2760, 180, 1815, 300);
    Label4[2].setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    Label4[2].setbold(true);

    // The progress bar and the four lines of its frame.
    place(Shape1[1], this, "Shape1", 1, progressleft - 40, bartop - 40, barfull + 80, 40);
    place(Shape1[2], this, "Shape1", 2, progressleft - 40, bartop + barheight, barfull + 80, 40);
    place(Shape1[3], this, "Shape1", 3, progressleft - 40, bartop, 40, barheight);
    place(Shape1[4], this, "Shape1", 4, progressleft + barfull, bartop, 40, barheight);
    for (int i = 1; i <= 4; ++i) Shape1[i].setfillcolor(colorbox(7));
    for (int i : {0, 6, 5, 7}) {
        place(Shape1[i], this, "Shape1", i, progressleft, bartop, barfull, barheight);
        Shape1[i].setFrameShape(QFrame::NoFrame);
    }

    place(Label2, this, "Label2", progressleft, 1200, 900, 300);
    place(BatteryLevel[0], this, "BatteryLevel", 0, progressleft, 1560, barfull, 300);
    BatteryLevel[0].setfillcolor(colorbox(3));
    place(BatteryLevel[1], this, "BatteryLevel", 1, progressleft, 1560, barfull, 300);
    setbarleft(BatteryLevel[1], progressleft);

    place(Label4[3], this, "Label4", 3, progressleft, 2040, 2000, 300);
    Label4[3].setcaption("Scanner ID");
    place(Label4[4], this, "Label4", 4, 2400, 2040, 2175, 300);
    place(Label4[5], this, "Label4", 5, progressleft, 2400, 2000, 300);
    Label4[5].setcaption("Scanner Date / Time");
    place(Label4[6], this, "Label4", 6, 2400, 2400, 2175, 300);

    place(Cancel, this, "Cancel", progressleft, 2820, 720, 720);
    Cancel.setpicture(MiscIcons(), 6);
    place(Label4[1], this, "Label4", 1, 1080, 3060, 1200, 300);
    Label4[1].setcaption("Finished");

    adopt(List1, this, "List1");
    List1.hide();

    connect(&Timer1, &QTimer::timeout, this, guard(std::bind_front(&Form24::Timer1_Timer, this)));
    connect(&Timer2, &QTimer::timeout, this, guard(std::bind_front(&Form24::Timer2_Timer, this)));
    connect(&Cancel, &PictureBox::clicked, this, guard(std::bind_front(&Form24::closetimer, this)));
    connect(&Label4[1], &Caption::clicked, this, guard(std::bind_front(&Form24::closetimer, this)));
    setupscreen();
}

Form24::~Form24() = default;

void Form24::setupscreen()
{
    Form10& check = form10();
    Form1& main = form1();
    Shape& status = form16().BatteryLevel[0];

    List1.hide();
    setbarwidth(BatteryLevel[1], barfull);
    setbarwidth(main.BatteryLevel, mainbarfull);
    setbarwidth(check.BatteryLevel, checkbarfull);
    check.BatteryLevel.hide();
    check.BatLabel[0].hide();
    status.hide();
    for (Shape* bar : {&BatteryLevel[1], &main.BatteryLevel, &check.BatteryLevel, &status})
        bar->setfillcolor(colorbox(6));
    check.STypeB.setfillcolor(colorbox(0));

    Label2.setcaption("---%");
    check.BatLabel[0].setcaption("Batt: ---%");

    for (int i : {0, 5, 6, 7}) {
        setbarwidth(Shape1[i], barfull);
        Shape1[i].setfillcolor(colorbox(6));
    }
    setbarleft(Shape1[0], progressleft);
    Shape1[0].show();
    Shape1[5].show();
    setbarleft(Shape1[6], barleft(Shape1[0]));
    setbarleft(Shape1[7], barleft(Shape1[0]));

    Label4[2].setcaption("HH:MM");
    Label4[6].setcaption("HH:MM DD/MM/YY");
    Label4[4].setcaption("000");
    for (int i : {2, 6, 4}) Label4[i].setforecolor(colorbox(2));

    lastbattime = platform::clock::now().time();
    timecounter = 0;
    origtimecounter = 0;
    timeincounter = 0;
    boostincounter = 0;
    doingboost = 0;
    pollcount = 0;
    lastlevel = 999;
}

void Form24::opentimer()
{
    g().pressedop = 1;
    form1().hide();
    setupscreen();
    show();
    Timer1.start(1000);
}

void Form24::closetimer()
{
    Timer1.stop();
    Timer2.stop();
    hide();
    form1().show();
    g().pressedop = 0;
}

void Form24::closeEvent(QCloseEvent* event)
{
    closetimer();
    event->accept();
}

void Form24::Timer1_Timer()
{
    if (!Timer1.isActive()) return;
    if (Timer1.interval() == 1000) Timer1.setInterval(5000);
    checkbattery(1);
}

void Form24::Timer2_Timer()
{
    if (!Timer2.isActive()) return;
    if (doingboost != 0) ++boostincounter;
    else timeincounter += 1;
}

void Form24::opl_Error(const QString&) { g().oplerror = 1; }

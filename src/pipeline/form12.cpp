#include "pipeline/form12.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <cstdlib>

#include "core/colorbox.h"
#include "core/globals.h"
#include "core/imagelists.h"
#include "core/logs.h"
#include "maintenance/form10.h"
#include "maintenance/screens.h"
#include "pipeline/deletedata.h"
#include "pipeline/form1.h"
#include "pipeline/processdata.h"
#include "pipeline/readdata.h"
#include "pipeline/repairdates.h"
#include "pipeline/reseticons.h"
#include "pipeline/savetoinifile.h"
#include "pipeline/screens.h"
#include "platform/clock.h"
#include "platform/csp2.h"
#include "platform/dialogs.h"
#include "runtime/fault.h"
#include "core/runtimeerror.h"

using namespace repairdates;

Form12::Form12(QWidget* parent) : QWidget(parent)
{
    setObjectName("Form12");
    setWindowTitle("Corrupt Scanner Data");
    resize(twips(7500), twips(6600));
    place(Label2, this, "Label2", 120, 120, 7260, 300);
    place(Label1, this, "Label1", 120, 480, 2400, 300);
    Label1.setcaption("Scan Date / Time");
    place(Label3, this, "Label3", 120, 780, 2400, 300);
    place(Label6, this, "Label6", 4980, 480, 2400, 300);
    Label6.setcaption("Real Date / Time");
    place(Label5, this, "Label5", 4980, 780, 2400, 300);
    adopt(List1, this, "List1");
    List1.setGeometry(twips(120), twips(1200), twips(7260), twips(4200));
    place(Delete, this, "Delete", 1800, 5520, 720, 720);
    Delete.setpicture(MiscIcons(), 5);
    place(Label4, this, "Label4", 1560, 6240, 1200, 300);
    Label4.setcaption("Accept");
    Label4.setAlignment(Qt::AlignCenter);
    place(Cancel, this, "Cancel", 4980, 5520, 720, 720);
    Cancel.setpicture(MiscIcons(), 6);
    place(Label7, this, "Label7", 4740, 6240, 1200, 300);
    Label7.setcaption("Cancel");
    Label7.setAlignment(Qt::AlignCenter);

    Timer1.setInterval(100);
    connect(&Timer1, &QTimer::timeout, this, guard([this] { tickcount_ += 1; }));
    connect(&Delete, &PictureBox::clicked, this, guard(std::bind_front(&Form12::selectaccept, this)));
    connect(&Label4, &Caption::clicked, this, guard(std::bind_front(&Form12::selectaccept, this)));
    connect(&Cancel, &PictureBox::clicked, this, guard(std::bind_front(&Form12::Cancel_Click, this)));
    connect(&Label7, &Caption::clicked, this, guard(std::bind_front(&Form12::Cancel_Click, this)));
    connect(&List1, &ListBox::doubleclicked, this, guard(std::bind_front(&Form12::List1_DblClick, this)));
}

void Form12::pause(int ticks)
{
    tickcount_ = 0;
    Timer1.start(100);
    while (tickcount_ <= ticks) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    Timer1.stop();
}

void Form12::setupscreen()
{
    autohit_ = 0;
    conversionrun_ = 0;
    Label5.setcaption(platform::clock::now().toString("HHmm ddMMyy").toStdString());
    repaint();
    QCoreApplication::processEvents();

    readscanner();

    const std::string scanner = Label3.caption(), pc = Label5.caption();
    const long apart = clockapart(scanner, pc);
    daysshift_ = wholedays(apart);
    minuteshift_ = apart - (long)daysshift_ * 60 * 24;

    // The two ways of putting the scanner's clock right: a time that wraps past midnight
    // stays on its date. The one nearer the PC's clock gives the sign.
    const long minute = CInt(std::string_view(Mid(scanner, 1, 2))) * 60 + CInt(std::string_view(Mid(scanner, 3, 2)));
    const auto wrapped = [](long t) { return ((t % 1440) + 1440) % 1440; };
    const long days = (long)daysshift_ * 1440;
    const long toa = apart - minute - days + wrapped(minute - (long)minuteshift_);
    const long tob = apart - minute + days + wrapped(minute + (long)minuteshift_);
    shiftsign_ = std::labs(toa) < std::labs(tob) ? 1 : 0;

    refillist();
    repaint();
    QCoreApplication::processEvents();
    linetotal_ = List1.listcount();

    pause(15);

    Int16 automatic = 0;
    runconv(automatic);
    repaint();
    if (autohit_ == 0)
        MsgBox("No obvious incorrect entries have been found (outside of 30 days from todays date), so please select the "
               "beginning of the incorrect entries or accept the data!",
               vbInformation, "Select Invalid Data");
}

void Form12::readscanner()
{
    reading_ = true;
    for (QWidget* accept : std::initializer_list<QWidget*>{&Delete, &Label4}) accept->setEnabled(false);
    struct Done {
        Form12* f;
        ~Done()
        {
            f->reading_ = false;
            f->Delete.setEnabled(true);
            f->Label4.setEnabled(true);
        }
    } done{this};
    readdata();
}

void Form12::refillist()
{
    Globals& s = g();
    List1.clear();
    for (long i = 1; i <= s.scancount; ++i) {
        try {
            List1.additem(displayline(s.reviewlines[i]));
        } catch (const std::exception&) {
            // An entry without a date (every "Invalid" one) has no text and is left out.
        }
    }
}

void Form12::runconv(Int16& start)
{
    Globals& s = g();
    const long first = start == 0 ? 1 : (long)start;
    List1.clear();
    // The lines above the chosen one come back as they are; an "Invalid" one among them
    // has no text and stops the run here.
    for (long i = 1; i < first; ++i) List1.additem(displayline(s.reviewlines[i]));

    const std::string pc = Label5.caption();
    const bool subtract = shiftsign_ == 1;
    for (long i = first; i <= linetotal_; ++i) {
        const std::string line = s.reviewlines[i];
        if (Left(line, 7) == "Invalid") {
            List1.additem(line);
            continue;
        }
        List1.additem("PROCESSING LINE");
        // Only lines ahead of today are found by the automatic pass: a line more than 30
        // days behind is shifted only from a chosen start.
        const int age = wholedays(lineapart(line, pc));
        if (start > 0 || age > 30) {
            autohit_ = 1;
            const long days = subtract ? -(long)daysshift_ : (long)daysshift_;
            const long minutes = subtract ? -(long)minuteshift_ : (long)minuteshift_;
            s.reviewlines[i] = shiftline(line, days, minutes);
        }
        pause(3);
        List1.removeitem(List1.listcount() - 1);
        List1.additem(displayline(s.reviewlines[i]));
        repaint();
        QCoreApplication::processEvents();
    }
    conversionrun_ = 1;
}

void Form12::List1_DblClick()
{
    Int16 start = List1.listindex() + 1;
    try {
        runconv(start);
    } catch (const std::exception& e) {
        const Fault f = Fault::from(e);
        addtologfile("runconv: Unexpected error. Error : " + CStr((long long)f.number) + " " + f.description);
    }
}

void Form12::selectaccept()
{
    Globals& s = g();
    if (reading_) return;
    if (conversionrun_ == 0 &&
        MsgBox("No data conversion has been run! Are you sure that you wish to accept the data as is?",
               vbYesNo + vbQuestion, "Confirm Data Acceptance") == vbNo)
        return;
    if (s.runmode == 4) s.runmode = 1;
    else if (s.runmode == 5) s.runmode = 2;
    hide();
    Form1& main = form1();
    main.show();
    QCoreApplication::processEvents();

    processdata2();
    QCoreApplication::processEvents();
    if (s.runmode == 1 && s.outcount > 0) {
        savetoinifile();
        deletedata(1);
    }
    QCoreApplication::processEvents();
    main.repaint();
    if (s.runmode == 2) main.List2.additem("Data has been read only!");
    s.runmode = 0;
    s.pressedop = 0;

    main.List2.additem("Correcting Scanner Date / Time!");
    form10().updatethetime();
    QCoreApplication::processEvents();
    if (s.datestatus == 0 && s.timestatus == 0) {
        main.List2.additem("Scanner Update Successful!");
        main.Label3.setforecolor(colorbox(13));
    } else {
        main.List2.additem("Scanner Update Failed!");
    }
    main.List2.setlistindex(main.List2.listcount() - 1);

    reseticons();
    const int type = s.scannertype;
    if (type == 2 || type == 3) {
        csp2Restore();
        csp2Init(s.scannerport[type] - 1);
        main.List2.additem("Please Remove Scanner");
    }
}

void Form12::Cancel_Click()
{
    hide();
    g().runmode = 0;
    g().pressedop = 0;
    reseticons();
}

void Form12::closeEvent(QCloseEvent* event)
{
    event->accept();
    Cancel_Click();
}

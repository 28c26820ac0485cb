// The Check Scanner screen's readings: the presence probe, the reading of clock and ID, and
// the clock write.
#include <QApplication>
#include <QCoreApplication>

#include "core/colorbox.h"
#include "core/globals.h"
#include "core/logs.h"
#include "maintenance/form10.h"
#include "maintenance/scannertests.h"
#include "platform/clock.h"
#include "platform/csp2.h"
#include "platform/dialogs.h"
#include "platform/opl.h"
#include "settings/form2.h"
#include "core/runtimeerror.h"

std::unique_ptr<opl::Control> Form10::openopl()
{
    Globals& s = g();
    auto opl = std::make_unique<opl::Control>();
    connect(opl.get(), &opl::Control::Error, this, guard(std::bind_front(&Form10::opl_Error, this)));
    opl->setport(s.scannerport[1]);
    if (s.oplportstate == 0) {
        opl->openport();
        s.oplportstate = 1;
    } else {
        s.oplportstate = 2;
    }
    return opl;
}

void Form10::closeopl(std::unique_ptr<opl::Control>& opl)
{
    Globals& s = g();
    if (s.oplportstate == 1) {
        opl->closeport();
        s.oplportstate = 0;
    }
    opl.reset();
}

void Form10::firstcall()
{
    updaterunning = false;
    closing = false;
    g().oplerror = 0;
    startfunction();
    if (g().oplerror == 0) gettingscannerdata();
}

void Form10::startfunction()
{
    if (closing) return;
    Globals& s = g();
    s.oplerror = 0;
    if (s.scannertype == 1) {
        auto opl = openopl();
        opl->readlinecount();
        closeopl(opl);
        return;
    }
    csp2Restore();
    csp2SetRetryCount(1);
    csp2Init(s.scannerport[s.scannertype] - 1);
    if (csp2Interrogate() != 0) s.oplerror = 1;
    csp2Restore();
}

void Form10::gettingscannerdata()
{
    Globals& s = g();
    const int type = s.scannertype;
    Form2& setup = form2();
    s.datestatus = 2;
    s.timestatus = 2;
    s.idstatus = 0;
    s.oplerror = 0;
    if (type == 1) {
        UploadBox.setfillcolor(colorbox(0));
        UploadSW.setEnabled(true);
        SWUpload.setEnabled(true);
    } else {
        STypeB.setfillcolor(colorbox(0));
    }
    for (QWidget* w : std::initializer_list<QWidget*>{&UpdateID, &IDUpdate, &UpdateTime, &TimeUpdate})
        w->setEnabled(true);
    for (QWidget* w : verdictcontrols()) w->show();

    if (type == 1) {
        auto opl = openopl();
        const std::string clock = opl->readclock();
        if (clock.empty() || s.oplerror == 1) {
            s.datestatus = 1;
            s.timestatus = 1;
        } else {
            s.scannerclock = clock;
            testthedate();
        }
        const int16_t id = opl->readid();
        if (s.oplerror == 1) {
            s.idstatus = 1;
        } else {
            s.scannerid = CStr((long long)id);
            testtheID();
        }
        closeopl(opl);
        if (s.datestatus == 0 && s.timestatus == 0 && s.idstatus == 0) {
            setup.PortBox[1].setfillcolor(colorbox(1));
            setup.ResultBox[1].setfillcolor(colorbox(1));
            s.scannertested[1] = 1;
            s.portlasttested[1] = s.scannerport[1];
        } else {
            setup.ResultBox[1].setfillcolor(colorbox(2));
            s.scannertested[1] = 0;
        }
    } else {
        csp2Restore();
        csp2Init(s.scannerport[type] - 1);
        if (csp2ReadData() == -1) {
            if (setup.isVisible()) QApplication::beep();
            setup.TestResult[type].setcaption("No Scanner");
            setup.ResultBox[type].setfillcolor(colorbox(2));
            return;
        }
        csp2GetASCIIMode();
        readcspclock();
        testthedate();
        // The ID comes into a field of blanks.
        std::string id(10, ' ');
        csp2GetParam(38, id.data(), (int32_t)id.size());
        csp2Restore();
        s.scannerid = Left(id, 6);
        testtheID();
        setup.PortBox[type].setfillcolor(colorbox(1));
        const bool good = s.datestatus == 0 && s.timestatus == 0 && s.idstatus == 0;
        setup.ResultBox[type].setfillcolor(colorbox(good ? 1 : 2));
        s.scannertested[type] = good ? 1 : 0;
        s.portlasttested[type] = s.scannerport[type];
    }

    if (Text2.value() == "1") Text2.settext("0");
    else if (!Timer1.isActive()) Timer1.start(type == 3 ? 10000 : 1000);
}

void Form10::updatethetime()
{
    // Each entry takes stack: a scanner that keeps refusing the write comes back here from
    // the judgement for as long as there is stack, and then the judgement's handler reports.
    StackLevel level;
    Globals& s = g();
    try {
        const QDateTime now = platform::clock::now();
        if (s.scannertype == 1) {
            auto opl = openopl();
            opl->writeclock(Format(now, "DD/MM/YYYY hh:nn:ss"));
            tickcount = 0;
            Timer2.start(1000);
            while (tickcount <= 1) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            Timer2.stop();
            const std::string clock = opl->readclock();
            if (s.oplportstate == 1) {
                opl->closeport();
                s.oplportstate = 0;
            } else if (s.oplportstate == 2) {
                s.oplportstate = 1;
            }
            opl.reset();
            s.scannerclock = clock;
            testthedate();
            return;
        }
        csp2Restore();
        csp2Init(s.scannerport[s.scannertype] - 1);
        csp2ReadData();
        csp2GetASCIIMode();
        const QDate d = now.date();
        const QTime t = now.time();
        char clock[6] = {(char)t.second(), (char)t.minute(), (char)t.hour(), (char)d.day(), (char)d.month(),
                         (char)(d.year() % 100)};
        csp2SetTime(clock);
        csp2GetTime(clock);
        s.scannerrawclock = std::string(clock, sizeof clock);
        csp2Restore();
        testthedate();
    } catch (const std::exception& e) {
        const Fault f = Fault::from(e);
        const std::string error = std::to_string(f.number) + " " + f.description;
        addtologfile("updatethetime: Unexpected error. Error: " + error);
        MsgBox("An error occurred updating the date / time on the scanner! Please try again. Error: " + error,
               vbExclamation, "Error In Function: updatethetime");
    }
}

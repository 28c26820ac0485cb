// A download test's world: the store test's install (share \\127.0.0.1\tagstore, terminal
// 007, BAR999.INI), an engineer list, the main screen's routines at rest, and emulated
// scanners docked on COM ports whose clocks agree with the test's PC clock.
#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <cstdio>
#include <map>
#include <memory>

#include "core/colorbox.h"
#include "core/form6.h"
#include "core/form9.h"
#include "core/imagelists.h"
#include "maintenance/form10.h"
#include "maintenance/form24.h"
#include "maintenance/screens.h"
#include "pipeline/form13.h"
#include "pipeline/mainopl.h"
#include "pipeline/reseticons.h"
#include "platform/csp2.h"
#include "platform/opl.h"
#include "settings/form14.h"
#include "settings/form2.h"
#include "support/emulator.h"
#include "support/storeworld.h"

class DownloadTest : public StoreTest {
protected:
    static constexpr const char* typenames[] = {"", "opl", "opn", "cs1504"};

    // A fresh shared block and no docked scanner, for a test that runs several dockings.
    void freshstart()
    {
        resetglobals();
        g().homedir = platform::installfolder;
        g().lastscannerid = "000";
        g().timemargin = 5;
        scanners.clear();
    }

    void SetUp() override
    {
        StoreTest::SetUp();
        installsessioncloser();
        Globals& s = g();
        s.lastscannerid = "000";
        s.timemargin = 5;
        s.readdelay = 0;
        Form1& f = form1();
        f.Label3.setcaption("ID: 000 Date: HHMM DDMMYY");
        f.Label3.setforecolor(QColor(0, 0, 0));
        f.hide();
        for (QWidget* w : std::initializer_list<QWidget*>{&form6(), &form12(), &form13(), &form10(), &form14(),
                                                          &form24(), &form2(), &form16()})
            w->hide();
        form6().resetballs();
        form9().Timer1.stop();
        form10().Timer1.stop();
        form24().Timer1.stop();
        form24().Timer2.stop();
        form10().FitterLabel[1].setcaption("");
        TempInstall::writefile(install.host("c:\\tarnbc\\ENGLST.TXT"),
                               "VEXAL engineers\r\n000123,000123,FRED BLOGGS\r\n000456,000456,ann lee\r\n");
    }
    void TearDown() override
    {
        form10().Timer1.stop();
        form24().Timer1.stop();
        form24().Timer2.stop();
        mainopl().reset();
        csp2Restore();
        scanners.clear();
        StoreTest::TearDown();
    }

    // The scanner's clock against the test's PC clock, in minutes (0: they agree).
    static std::string clockoffset(double minutes = 0)
    {
        const double apart = (double)(platform::clock::now().toMSecsSinceEpoch() -
                                      QDateTime::currentDateTime().toMSecsSinceEpoch()) / 60000.0;
        return std::to_string(apart + minutes);
    }

    // Docks a scanner of `type` (1 opl, 2 opn, 3 cs1504) on COM`com` and puts it in use.
    // Its memory is kept in the state file state(com); `link` reuses a port path (a swap);
    // with `keepstate` the scanner starts from the memory in that file.
    Emulator& dock(int type, std::vector<std::string> args, int com = 6, const std::string& link = "",
                   bool keepstate = false)
    {
        if (!keepstate) std::remove(state(com).c_str());
        bool clock = false;
        for (const auto& a : args) clock = clock || a == "--clock-offset";
        if (!clock) args.insert(args.end(), {"--clock-offset", clockoffset()});
        args.insert(args.end(), {"--state", state(com)});
        scanners[com] = std::make_unique<Emulator>(typenames[type], std::move(args), link);
        Emulator& e = *scanners[com];
        EXPECT_TRUE(e.ready()) << e.output();
        std::string ports = "[ports]\n";
        for (const auto& [n, emu] : scanners) ports += "COM" + std::to_string(n) + "=" + emu->link() + "\n";
        install.configure(ports);
        g().scannerused[type] = 1;
        g().scannerport[type] = com;
        return e;
    }
    std::string state(int com) const { return install.root() + "/scanner" + std::to_string(com) + ".state"; }
    // The lines ("line=" or "record=") a scanner holds in its state file.
    static long heldin(const std::string& statefile)
    {
        const std::string text = "\n" + TempInstall::readfile(statefile);
        long n = 0;
        for (size_t at = 0; (at = text.find('\n', at)) != std::string::npos; ++at)
            if (text.compare(at + 1, 5, "line=") == 0 || text.compare(at + 1, 7, "record=") == 0) ++n;
        return n;
    }
    long held(int com) const { return heldin(state(com)); }
    // Stops the scanner on COM`com` (its state file is written then) and counts its lines.
    long stopped(int com)
    {
        scanners[com]->stop();
        return held(com);
    }

    // The one box titled `title` (an empty entry, and a failure, unless there is exactly one).
    dialogs::Entry onebox(const std::string& title) const
    {
        const auto found = boxes(title);
        EXPECT_EQ(found.size(), 1u) << title;
        return found.size() == 1 ? found[0] : dialogs::Entry{};
    }
    // No operation running and no button pressed.
    static void expectidle()
    {
        EXPECT_EQ(g().runmode, 0);
        EXPECT_EQ(g().pressedop, 0);
    }

    // A records file in the install folder.
    std::string records(const std::string& text)
    {
        const std::string path = install.root() + "/records" + std::to_string(++recordfiles) + ".txt";
        TempInstall::writefile(path, text);
        return path;
    }

    // Three stored scans for each kind: two good ones and a test scan. A CSP barcode has
    // twelve characters; the twelfth is carried nowhere.
    static std::string oplrecords()
    {
        return "0001123456780,090307,0830\n0002876543210,080307,1745\n0001990000010,090307,0900\n";
    }
    static std::string csprecords()
    {
        return "001123456789,1,2007-03-09 08:30:05\n002876543210,1,2007-03-08 17:45:00\n001990000019,1,2007-03-09 "
               "09:00:00\n";
    }
    // What those become.
    static std::vector<std::string> goodlines() { return {"0112345678200703090830", "0287654321200703081745"}; }
    static std::vector<std::string> linetexts()
    {
        return {"01 12 345678 At 08:30 09-Mar-07", "02 87 654321 At 17:45 08-Mar-07",
                "01 99 000001 At 09:00 09-Mar-07 TEST"};
    }

    std::vector<std::string> activity() const { return items(form1().List2); }
    std::vector<std::string> datalog() const { return textlines(install.host(g().homedir + "LOGS\\09_DAT.TXT")); }
    bool hasline(const std::string& text) const
    {
        for (const auto& l : activity())
            if (l == text) return true;
        return false;
    }

    // Runs `check` every 20 ms while the routine under test waits, until it returns true
    // (or 20 s pass).
    void whilewaiting(std::function<bool()> check)
    {
        auto* timer = new QTimer;
        auto* clock = new QElapsedTimer;
        clock->start();
        QObject::connect(timer, &QTimer::timeout, [timer, clock, check] {
            if (check() || clock->elapsed() > 20000) {
                timer->stop();
                timer->deleteLater();
                delete clock;
            }
        });
        timer->start(20);
    }

    std::map<int, std::unique_ptr<Emulator>> scanners;
    int recordfiles = 0;
};

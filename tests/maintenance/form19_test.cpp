// The software update screen against an emulated OPL 972x through the LoadDll control: the
// whole update with its tiles, the decisions on the versions, the refused and silent
// scanners, a version file without "#", the display rules of updatedetails, the version
// parse, and the stand-alone run scanner after scanner.
#include <QFile>
#include <QTimer>
#include <csignal>
#include <functional>

#include "core/colorbox.h"
#include "core/exit.h"
#include "core/imagelists.h"
#include "maintenance/form19.h"
#include "maintenance/softwareversions.h"
#include "maintenancefixture.h"
#include "support/emulator.h"
#include "support/testdirs.h"
#include "support/webhost.h"

namespace {

const char* newversions = "[Versions]\r\nOS=OS2.00#\r\nAPP=VX3.01#\r\n";  // the stand-in images' own
const char* tailtext = "! Please close the program and then re-try the upload, if the problem persists please "
                       "contact support for assistance!";

std::string resource(const char* name)
{
    return TempInstall::readfile(std::string(VEXAL_SOURCE_DIR) + "/resources/OS/" + name);
}

// Runs `step` on each pass of the event loop while the screen waits.
class Watcher {
public:
    explicit Watcher(std::function<void()> step) : step_(std::move(step))
    {
        QObject::connect(&timer_, &QTimer::timeout, [this] { step_(); });
        timer_.start(0);
    }

private:
    std::function<void()> step_;
    QTimer timer_;
};

class SoftwareUpdate : public MaintenanceTest {
protected:
    void SetUp() override
    {
        MaintenanceTest::SetUp();
        files::makefolder(g().homedir + "OS");
        putfiles(newversions);
        g().scannertype = 1;
        g().scannerport[1] = 6;
        u.tickinterval = 10;
        u.standalone = false;
        u.filesmissing = 0;
        form10().hide();
        setprocessend([this] { ++ended; });
    }
    void TearDown() override
    {
        setprocessend(nullptr);
        u.hide();
        form10().hide();
        MaintenanceTest::TearDown();
    }
    void putfiles(const std::string& osver)
    {
        TempInstall::writefile(os("vexalOS.S32"), resource("vexalOS.S32"));
        TempInstall::writefile(os("vexal.S32"), resource("vexal.S32"));
        if (osver.empty()) QFile::remove(QString::fromStdString(os("osver.ini")));
        else TempInstall::writefile(os("osver.ini"), osver);
    }
    std::string os(const char* name) const { return install.root() + "/OS/" + name; }
    // An OPL 972x on COM6 holding one line, with the emulator's options.
    void dock(std::vector<std::string> args = {})
    {
        emu.reset();   // an emulator saves its state as it ends
        std::remove(state.c_str());
        const std::string lines = Emulator::writefile(install.root() + "/lines.txt", "0112345678,251224,0830\n");
        args.insert(args.end(), {"--state", state, "--records", lines, "--id", "7"});
        emu = std::make_unique<Emulator>("opl", std::move(args));
        ASSERT_TRUE(emu->ready()) << emu->output();
        install.configure(emu->portsection(6));
    }
    std::string statevalue(const std::string& key) const
    {
        const std::string text = "\n" + TempInstall::readfile(state);
        size_t at = text.find("\n" + key + "=");
        if (at == std::string::npos) return "<none>";
        at += key.size() + 2;
        return text.substr(at, text.find('\n', at) - at);
    }
    bool scannerdata() const { return TempInstall::readfile(state).find("line=") != std::string::npos; }
    void run()
    {
        u.setupscreen();
        u.show();
        u.uploadsoftware();
    }
    std::vector<int> pictures(FixedArray<PictureBox, 1, 9>& row) const
    {
        std::vector<int> out;
        for (int i = 1; i <= 9; ++i) out.push_back(row[i].pictureindex());
        return out;
    }
    static std::vector<int> all(int picture) { return std::vector<int>(9, picture); }

    Form19& u = form19();
    std::string state = install.root() + "/scanner.state";
    std::unique_ptr<Emulator> emu;
    int ended = 0;
};

TEST_F(SoftwareUpdate, LoadsOperatingSystemThenErasesAndLoadsApplication)
{
    dock();
    // What the screen shows while it works: the operating system row during its load.
    std::vector<std::string> osopp;
    bool osrunning = false, oswhole = false;
    Watcher watch([&] {
        if (u.stage != 1) return;
        if (osopp.empty() || osopp.back() != u.OSOpp.caption()) osopp.push_back(u.OSOpp.caption());
        for (int i = 1; i <= 9; ++i) osrunning |= u.Image1[i].pictureindex() == 3;
        oswhole |= pictures(u.Image1) == all(5);
    });
    run();

    EXPECT_TRUE(dialogs::transcript().empty()) << "versions that differ load without a question";
    EXPECT_EQ(statevalue("osversion"), "OS2.00");
    EXPECT_EQ(statevalue("appversion"), "VX3.01");
    EXPECT_FALSE(scannerdata()) << "All data on the scanner is lost";
    EXPECT_TRUE(oswhole) << "the image crossing the line fills the row with finished tiles";
    EXPECT_TRUE(osrunning) << "the second pass shows running tiles";
    ASSERT_GT(osopp.size(), 5u) << "the percent moves on as the load goes";
    EXPECT_EQ(pictures(u.Image1), all(5)) << "the erase marks the operating system row done";
    EXPECT_EQ(pictures(u.Image2), all(5));
    EXPECT_NE(u.AppOp.caption(), "0%");
    EXPECT_EQ(u.Label1.caption(), "Upload Complete");
    EXPECT_EQ(u.Label1.forecolor(), colorbox(13));
    EXPECT_EQ(u.Label4.caption(), "Upload Complete");
    EXPECT_EQ(u.OSLabel.caption(), "Scanner OS : OS2.00");
    EXPECT_EQ(u.AppLabel.caption(), "Software Ver : VX3.01");
    EXPECT_EQ(u.AppLabel.forecolor(), colorbox(13));
    EXPECT_TRUE(u.isHidden());
    EXPECT_TRUE(form10().isVisible()) << "back on the Check Scanner screen";
    EXPECT_EQ(g().scannerid, "7") << "whose firstcall read the scanner again";
}

TEST_F(SoftwareUpdate, DecisionsOnTheVersions)
{
    const struct {
        const char* legend;
        const char* os;
        const char* app;
        int answer;             // to the one question, 0 when none is expected
        const char* title;
        bool osloaded, apploaded;
    } rows[] = {
        {"both equal, No", "OS2.00", "VX3.01", vbNo, "OS And APP Match", false, false},
        {"both equal, Yes", "OS2.00", "VX3.01", vbYes, "OS And APP Match", true, true},
        {"system equal, No: the application only", "OS2.00", "VX2.05", vbNo, "Operating System Matches", false, true},
        {"system equal, Yes", "OS2.00", "VX2.05", vbYes, "Operating System Matches", true, true},
        {"system equal, Cancel", "OS2.00", "VX2.05", vbCancel, "Operating System Matches", false, false},
        {"system differs only in case", "os2.00", "VX3.01", 0, "", true, true},
    };
    std::vector<dialogs::Entry> asked;
    for (const auto& r : rows) {
        SCOPED_TRACE(r.legend);
        dialogs::cleartranscript();
        dock({"--os-version", r.os, "--app-version", r.app});
        if (r.answer) dialogs::queueanswer(r.answer);
        run();
        const auto& t = dialogs::transcript();
        ASSERT_EQ(t.size(), r.answer ? 1u : 0u);
        if (r.answer) {
            EXPECT_EQ(t[0].title, r.title);
            asked.push_back(t[0]);
        }
        EXPECT_EQ(u.OSOpp.caption() != "0%", r.osloaded);
        EXPECT_EQ(scannerdata(), !r.apploaded) << "only a load clears the scanner";
        EXPECT_EQ(statevalue("appversion"), r.apploaded ? "VX3.01" : r.app);
        EXPECT_EQ(u.Label1.caption(), r.apploaded ? "Upload Complete" : "DO NOT REMOVE SCANNER!");
        EXPECT_TRUE(form10().isVisible());
        form10().hide();
    }
    ASSERT_EQ(asked.size(), 5u);
    EXPECT_EQ(asked[0].flags, vbYesNo + vbInformation + vbDefaultButton2);
    EXPECT_EQ(asked[2].flags, vbYesNoCancel + vbInformation + vbDefaultButton2);
    EXPECT_EQ(asked[2].text,
              "The Operating version on the scanner matches that currently available to install! Do you wish to update "
              "this as well? Note: This should only be on the specific advice of support! (Cancel if you are unsure "
              "and would like to resume later)");
}

TEST_F(SoftwareUpdate, NoVersionFile)
{
    dock({"--os-version", "OS2.00", "--app-version", "VX3.01"});
    putfiles("");
    // Yes: compared against "999", both parts load.
    dialogs::queueanswer(vbYes);
    run();
    auto shown = boxes("No Version File");
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].flags, vbYesNo + vbExclamation + vbDefaultButton2);
    EXPECT_NE(u.OSOpp.caption(), "0%");
    EXPECT_FALSE(scannerdata());
    EXPECT_EQ(u.OSLabel.caption(), "Scanner OS : 999");
    EXPECT_EQ(u.AppLabel.caption(), "Software Ver : 999");
    form10().hide();

    // No: the Check Scanner screen runs its firstcall but is not shown.
    g().scannerid = "";
    dialogs::queueanswer(vbNo);
    run();
    EXPECT_TRUE(u.isHidden());
    EXPECT_TRUE(form10().isHidden());
    EXPECT_EQ(g().scannerid, "7");
}

TEST_F(SoftwareUpdate, FailuresEndWithTheirMessageAndGoBack)
{
    struct Row {
        const char* legend;
        std::vector<std::string> emulator;   // {"absent"}: no scanner on the port
        std::string osver;
        std::string title, text, label, log;
    };
    const Row rows[] = {
        {"a refused load", {"--refuse-load"}, newversions, "Error Uploading Operating System",
         std::string("An error has occured while attemping to load the new operating system to the scanner") + tailtext,
         "Error 105 In OS Upload", "Function: uploadsoftware. Loading Operating System. Error Code 105"},
        {"no scanner on the port", {"absent"}, newversions, "Error Checking Software",
         std::string("An error has occured while attemping to check the software versions on the scanner") + tailtext,
         "Error 101 In Software Check", "Function: uploadsoftware. Reading Software Versions. Error Code 101"},
        {"a version without #", {}, "[Versions]\r\nOS=OS2.00\r\nAPP=VX3.01#\r\n", "Error In function: uploadsoftware",
         std::string("An error has occured during the software updating routine at Line 3. Error 5 Desc Invalid "
                     "procedure call or argument") + tailtext,
         "Error In Upload", "Function: uploadsoftware - Line 3. Error 5 Desc Invalid procedure call or argument"},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.legend);
        dialogs::cleartranscript();
        putfiles(r.osver);
        if (r.emulator == std::vector<std::string>{"absent"}) {
            emu.reset();
            install.configure("");
        } else {
            dock(r.emulator);
        }
        run();
        ASSERT_EQ(dialogs::transcript().size(), 1u);
        const auto& box = dialogs::transcript()[0];
        EXPECT_EQ(box.title, r.title);
        EXPECT_EQ(box.text, r.text);
        EXPECT_EQ(u.Label1.caption(), r.label);
        EXPECT_TRUE(logged(r.log)) << r.log;
        EXPECT_TRUE(u.isHidden());
        EXPECT_TRUE(form10().isVisible());
        if (emu) {
            EXPECT_TRUE(scannerdata()) << "nothing was loaded, nothing lost";
        }
        form10().hide();
    }
}

TEST_F(SoftwareUpdate, ScannerThatFallsSilentMidLoadEndsTheWaitAndTheScreenKeepsRunning)
{
    dock({"--baud", "19200"});
    int ticks = 0;
    bool stopped = false;
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, [&] { ticks += stopped; });
    tick.start(20);
    Watcher watch([&] {
        if (!stopped && u.stage == 1 && u.statuscode == 2020) {
            emu->signal(SIGSTOP);
            stopped = true;
        }
    });
    run();
    emu->signal(SIGCONT);
    EXPECT_TRUE(stopped);
    EXPECT_GT(ticks, 5) << "events ran while the scanner said nothing";
    auto shown = boxes("Error Uploading Operating System");
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(u.Label1.caption(), "Error 102 In OS Upload");
    EXPECT_TRUE(form10().isVisible());
}

TEST_F(SoftwareUpdate, UpdateDetailsShowsPercentAndTiles)
{
    u.setupscreen();
    auto report = [&](int stage, int code, int percent) {
        u.stage = stage;
        u.statuscode = code;
        u.progress = percent;
        u.statustext = "step " + std::to_string(code) + " " + std::to_string(percent);
        u.updatedetails();
    };
    auto count = [&](FixedArray<PictureBox, 1, 9>& row, int picture) {
        int n = 0;
        for (int i = 1; i <= 9; ++i) n += row[i].pictureindex() == picture;
        return n;
    };
    u.secondpass = 0;
    report(1, 2020, 0);
    EXPECT_EQ(count(u.Image1, 1), 9) << "0% shows no tile";
    EXPECT_EQ(u.OSOpp.caption(), "0%");
    EXPECT_EQ(u.Label4.caption(), "step 2020 0");
    report(1, 2020, 1);
    EXPECT_EQ(count(u.Image1, 5), 1);
    report(1, 2020, 20);
    EXPECT_EQ(count(u.Image1, 5), 2) << "the third tile comes at 21%";
    // The first 2010 of the operating system load starts its second pass: flags cleared,
    // nothing drawn yet.
    report(1, 2010, 5);
    EXPECT_EQ(u.secondpass, 1);
    EXPECT_EQ(u.OSOpp.caption(), "20%");
    EXPECT_EQ(count(u.Image1, 5), 2);
    report(1, 2010, 21);
    EXPECT_EQ(count(u.Image1, 3), 3);
    report(1, 1040, 100);
    EXPECT_EQ(u.OSOpp.caption(), "21%") << "other codes show no percent";
    EXPECT_EQ(u.laststatus, 1040);
    report(1, 2010, 81);
    EXPECT_EQ(count(u.Image1, 3), 9);
    report(2, 2020, 80);
    EXPECT_EQ(u.AppOp.caption(), "80%");
    EXPECT_EQ(count(u.Image2, 5), 0) << "tile flags are the operation's own: still set from the last";
    u.tiles.clear();
    report(2, 2020, 80);
    EXPECT_EQ(count(u.Image2, 5), 8);
}

TEST(SoftwareVersions, ParseOfTheVersionText)
{
    const struct {
        const char* text;
        const char* os;
        const char* app;
    } good[] = {
        {"OS version: OS1.20 APP version: VX2.05", "OS1.20", "VX2.05"},
        {"OS version:OS1.20 APP version:VX2.05", "OS1.20", "VX2.05"},
        {"OS version: OS1.20 APP version: ", "OS1.20", ""},
        {"OS version: OS1.20 APP version: VX 2 beta", "OS1.20", "VX 2 beta"},
    };
    for (const auto& c : good) {
        SCOPED_TRACE(c.text);
        std::string os, app;
        scannerversions(c.text, os, app);
        EXPECT_EQ(os, c.os);
        EXPECT_EQ(app, c.app);
    }
    for (const char* bad : {"Load complete", "", "OS version: OS1.20"}) {
        SCOPED_TRACE(bad);
        std::string os, app;
        try {
            scannerversions(bad, os, app);
            ADD_FAILURE() << "no fault";
        } catch (const Fault& f) {
            EXPECT_EQ(f.number, 5);
        }
    }
}

TEST_F(SoftwareUpdate, StandAloneRunWithMissingFiles)
{
    files::removefile(g().homedir + "OS\\vexal.S32");
    g().savetype = 1;
    // No: the program ends.
    dialogs::queueanswer(vbNo);
    EXPECT_THROW(u.specialrun(), Fault);
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(g().savetype, 0);
    auto shown = boxes("Update Files");
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text,
              "Key files are missing from the software installation folder! Would you like to download these in order "
              "to proceed?");
    EXPECT_EQ(shown[0].flags, vbYesNo + vbQuestion);

    // Yes: the three files come from the update web host, then Cancel at the cradle ends.
    WebHost web;
    web.put("support/Tagstore/support/vexal.S32", resource("vexal.S32"));
    web.put("support/Tagstore/support/vexalOS.S32", "new system");
    web.put("support/Tagstore/support/osver.ini", "[Versions]\r\nOS=OS9#\r\nAPP=VX9#\r\n");
    ASSERT_TRUE(web.start()) << web.error();
    install.configure("[web]\nupdate=" + web.base() + "\n");
    dialogs::cleartranscript();
    dialogs::queueanswer(vbYes);
    dialogs::queueanswer(vbCancel);
    u.filesmissing = 0;
    EXPECT_THROW(u.specialrun(), Fault);
    EXPECT_EQ(ended, 2);
    EXPECT_EQ(TempInstall::readfile(os("vexal.S32")), resource("vexal.S32"));
    EXPECT_EQ(TempInstall::readfile(os("vexalOS.S32")), "new system");
    EXPECT_EQ(u.filesmissing, 2);
    shown = boxes("Insert Scanner In Cradle");
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].flags, vbOKCancel + vbCritical);
    EXPECT_EQ(u.Label1.caption(), "DO NOT REMOVE SCANNER!");

    // Files dealt with: the next run goes straight to the cradle.
    dialogs::cleartranscript();
    dialogs::queueanswer(vbCancel);
    EXPECT_THROW(u.specialrun(), Fault);
    EXPECT_TRUE(boxes("Update Files").empty());
}

TEST_F(SoftwareUpdate, StandAloneRunGoesOnScannerAfterScanner)
{
    dock();
    // Files present: no fetch; the first scanner is updated; the same scanner offered
    // again matches, and its No leaves the program.
    dialogs::queueanswer(vbNo);
    dialogs::queueanswer(vbOK);
    dialogs::queueanswer(vbOK);
    dialogs::queueanswer(vbNo);
    EXPECT_THROW(u.specialrun(), Fault);
    EXPECT_EQ(ended, 1);
    std::vector<std::string> titles;
    for (const auto& e : dialogs::transcript()) titles.push_back(e.title);
    EXPECT_EQ(titles, (std::vector<std::string>{"Update Files", "Insert Scanner In Cradle", "Insert Scanner In Cradle",
                                                "OS And APP Match"}));
    EXPECT_EQ(boxes("Update Files")[0].text,
              "Would you like to update the scanner system and application files from the web before proceeding?");
    EXPECT_EQ(statevalue("appversion"), "VX3.01");
    EXPECT_TRUE(form10().isHidden()) << "a stand-alone run never shows the Check Scanner screen";
}

}  // namespace

// Loading the settings file: a complete file into the shared block and the boxes, the
// repairs a load makes (AUTOTIME, HOEMAIL, CHKROGUE), the values a load leaves alone, and
// files cut short or without their marks. Then a load, a save through the screen and a
// second load, to show which values survive.
#include "settingsfixture.h"

#include "core/imagelists.h"
#include "settings/form2.h"
#include "settings/form3.h"
#include "settings/settingscreate.h"
#include "settings/settingsload.h"
#include "settings/settingssave.h"
#include "settings/setupdisplay.h"

namespace {

const char* const failure = "Error Loading Settings: An error occured loading the settings from file!";

// A complete file: the OPL 972x on COM3 on automatic with clock adjustment on, the OPN 2001
// unused, the CS 1504 on COM5; Batch Update to 127.0.0.1 as terminal 12; a PC Copy of the
// engineer list.
const std::string completefile =
    "[9725]\r\nUSED=1\r\nPORT=3#\r\nAUTO=1\r\nAUTOTIME=2\r\n"
    "[1234]\r\nUSED=0\r\nPORT=7#\r\nAUTO=1\r\nAUTOTIME=2\r\n"
    "[1504]\r\nUSED=1\r\nPORT=5#\r\nAUTO=0\r\nAUTOTIME=1\r\n"
    "[SAVE]\r\nTYPE=2\r\nIP=127.0.0.1#\r\nTNO=012#\r\n"
    "[TIMEMARGIN]\r\nMINS=15#\r\n"
    "[FITTER]\r\nTYPE=2\r\n"
    "[FIRST]\r\nRUN=1\r\n"
    "[COMPANY]\r\nNAME=Acme Motors#\r\nUSER=Robert#\r\nTEL=01234 567#\r\nHOEMAIL=ho@acme.example#\r\n"
    "[MISC]\r\nREADDELAY=3#\r\nCHKROGUE=0#\r\n"
    "[DISPLAY]\r\nTYPE=1#\r\n";

std::string replaced(std::string text, const std::string& from, const std::string& to)
{
    const size_t at = text.find(from);
    if (at == std::string::npos) throw std::runtime_error("no " + from);
    return text.replace(at, from.size(), to);
}

class SettingsLoad : public SettingsTest {
protected:
    void SetUp() override
    {
        SettingsTest::SetUp();
        install.configure("[ports]\nCOM3=" + com3.name() + "\nCOM5=" + com5.name() + "\n");
        install.addshare("\\\\127.0.0.1\\tagstore");
        probefile();
        Form2& f = form2();
        for (int i = 1; i <= 3; ++i) {
            f.SPorts[i].settext("");
            f.BPort[i].settext("");
        }
        for (TextBox* b : {&f.ServerIP, &f.BIP, &f.TarnTNO, &f.BTNO}) b->settext("");
        Form3& c = form3();
        for (TextBox* b : {&c.Company, &c.User, &c.Telephone, &c.HOEmail}) b->settext("");
        g().commandline = "";
    }

    // Marks every setting that a load may or may not reach.
    static void presetmarks()
    {
        Globals& s = g();
        s.savetype = 9;
        s.serverip = "old";
        s.terminalno = "old";
        s.timemargin = 99;
        s.fittertype = 9;
        s.firstrun = 9;
        s.readdelay = 99;
        s.displaytype = 99;
        s.chkrogue = "old";
    }

    Pty com3, com5;
};

TEST_F(SettingsLoad, ACompleteFileFillsTheBlockAndTheBoxes)
{
    writeini(completefile);
    Globals& s = g();
    s.portlasttested[1] = 3;
    s.scannertested[1] = 1;
    s.scannerport[2] = 4;
    settingsfromfile();
    EXPECT_EQ(boxes(), Rows{});
    Form2& f = form2();

    EXPECT_EQ(s.scannerused[1], 1);
    EXPECT_EQ(s.scannerport[1], 3);
    EXPECT_EQ(f.SPorts[1].text(), "COM3");
    EXPECT_EQ(f.BPort[1].value(), "3");
    EXPECT_EQ(s.scannerauto[1], 1);
    EXPECT_EQ(f.LAuto[1].caption(), "Yes");
    EXPECT_TRUE(islit(f.SAuto[1]));
    EXPECT_EQ(s.scannerautotime[1], 2);
    EXPECT_EQ(f.TimeUpdateLabel[1].caption(), "Time Adj : On");
    EXPECT_EQ(s.portlasttested[1], 0);
    EXPECT_EQ(s.scannertested[1], 0);
    EXPECT_EQ(f.PortBox[1].fillcolor(), colorbox(boxneutral));

    // The unused OPN 2001: hidden, nothing of its section read.
    EXPECT_EQ(s.scannerused[2], 0);
    EXPECT_EQ(s.scannerport[2], 4);
    EXPECT_EQ(s.scannerauto[2], 0);
    EXPECT_EQ(s.scannerautotime[2], 0);
    EXPECT_TRUE(f.SPorts[2].isHidden());
    EXPECT_FALSE(islit(f.SType[2]));

    EXPECT_EQ(s.scannerport[3], 5);
    EXPECT_EQ(f.LAuto[3].caption(), "No");
    EXPECT_EQ(f.TimeUpdateLabel[3].caption(), "Time Adj : Adv");

    EXPECT_EQ(s.savetype, 2);
    EXPECT_EQ(s.serverip, "127.0.0.1");
    EXPECT_EQ(f.ServerIP.value(), "127.0.0.1");
    EXPECT_EQ(f.BIP.value(), "127.0.0.1");
    EXPECT_EQ(s.terminalno, "012");
    EXPECT_EQ(f.TarnTNO.value(), "012");
    EXPECT_EQ(f.BTNO.value(), "012");
    EXPECT_EQ(f.Shape1[1].fillcolor(), colorbox(boxgood));
    EXPECT_EQ(s.timemargin, 15);
    EXPECT_TRUE(islit(f.FileDown[2]));
    EXPECT_EQ(f.FileDownLabel[3].caption(), "Batch Update");
    EXPECT_FALSE(f.TarnTNO.isHidden());
    EXPECT_EQ(s.fittertype, 2);
    EXPECT_TRUE(islit(f.FitterInfo[2]));
    EXPECT_EQ(f.FitterInfoLabel[3].caption(), "PC Copy");
    EXPECT_EQ(s.firstrun, 1);

    EXPECT_EQ(company(), (Rows{"Acme Motors", "Robert", "01234 567", "ho@acme.example"}));
    EXPECT_EQ(s.readdelay, 3);
    EXPECT_EQ(s.displaytype, 1);
    EXPECT_EQ(s.chkrogue, "0");
    EXPECT_EQ(ini(), completefile);   // nothing needed repair
}

TEST_F(SettingsLoad, AFreshFileEndsAtTheCompanyNameAndLeavesTheRestUnread)
{
    createsettingsfile();
    presetmarks();
    settingsfromfile();
    EXPECT_EQ(boxes(), Rows{failure});
    EXPECT_EQ(dialogs::transcript().at(0).flags, vbExclamation);
    EXPECT_TRUE(logged("settingsfromfile: Unexpected Error. Error: 5 Invalid procedure call or argument"));
    Globals& s = g();
    EXPECT_EQ(s.savetype, 0);
    EXPECT_EQ(s.serverip, "0.0.0.0");
    EXPECT_EQ(s.terminalno, "999");
    EXPECT_EQ(s.timemargin, 5);
    EXPECT_EQ(s.fittertype, 0);
    EXPECT_EQ(s.firstrun, 0);
    EXPECT_EQ(form2().Shape1[1].fillcolor(), colorbox(boxneutral));
    EXPECT_TRUE(form2().ServerIP.isHidden());
    // Not reached: HOEMAIL is not repaired, nor CHKROGUE; the read delay and display stay.
    EXPECT_EQ(s.readdelay, 99);
    EXPECT_EQ(s.displaytype, 99);
    EXPECT_EQ(s.chkrogue, "old");
    EXPECT_EQ(ini().find("HOEMAIL"), std::string::npos);
    EXPECT_EQ(form3().Company.value(), "");

    dialogs::cleartranscript();
    form3().loadsettings();   // the company screen reads the same file without a word
    EXPECT_EQ(form3().Company.value(), "N/A");
    EXPECT_EQ(boxes(), Rows{});
}

TEST_F(SettingsLoad, AMissingAutotimeIsWrittenAsZeroIntoAllThreeSections)
{
    std::string text = replaced(completefile, "AUTOTIME=1\r\n", "");   // the CS 1504's
    text = replaced(text, "[1234]\r\nUSED=0", "[1234]\r\nUSED=1");
    writeini(text);
    settingsfromfile();
    EXPECT_EQ(boxes(), Rows{});
    for (int i = 1; i <= 3; ++i) EXPECT_EQ(g().scannerautotime[i], 0) << i;
    const std::string after = ini();
    EXPECT_NE(after.find("[9725]\r\nUSED=1\r\nPORT=3#\r\nAUTO=1\r\nAUTOTIME=0\r\n"), std::string::npos) << after;
    EXPECT_NE(after.find("[1234]\r\nUSED=1\r\nPORT=7#\r\nAUTO=1\r\nAUTOTIME=0\r\n"), std::string::npos) << after;
    EXPECT_NE(after.find("[1504]\r\nUSED=1\r\nPORT=5#\r\nAUTO=0\r\nAUTOTIME=0\r\n"), std::string::npos) << after;
    EXPECT_EQ(form2().TimeUpdateLabel[3].caption(), "Time Adj : Off");
}

TEST_F(SettingsLoad, AutotimeThatReadsAsThePathOrBeginsWithCAndAnAutoThatIsNeitherZeroNorOne)
{
    struct Row { const char* value; int mode; bool repaired; } rows[] = {
        {"c", 0, true}, {"C:\\elsewhere", 0, true}, {"123456789012345678901234567890123456789", 0, true},
        {"7", 7, false}, {"1", 1, false},
    };
    for (const auto& r : rows) {
        writeini(replaced(completefile, "AUTOTIME=2\r\n[1234]", std::string("AUTOTIME=") + r.value + "\r\n[1234]"));
        g().scannerautotime[3] = 9;
        settingsfromfile();
        EXPECT_EQ(boxes(), Rows{}) << r.value;
        EXPECT_EQ(g().scannerautotime[1], r.mode) << r.value;
        EXPECT_EQ(g().scannerautotime[3], r.repaired ? 0 : 1) << r.value;
        EXPECT_EQ(ini().find("[1504]\r\nUSED=1\r\nPORT=5#\r\nAUTO=0\r\nAUTOTIME=0\r\n") != std::string::npos, r.repaired)
            << r.value;
    }
    EXPECT_EQ(form2().TimeUpdateLabel[1].caption(), "Time Adj : Adv");
    writeini(replaced(completefile, "AUTOTIME=2\r\n[1234]", "AUTOTIME=7\r\n[1234]"));
    settingsfromfile();
    EXPECT_EQ(form2().TimeUpdateLabel[1].caption(), "Time Adj : Off");   // 7 stays in memory

    // An AUTO other than 0 or 1 is No, in memory only.
    writeini(replaced(completefile, "AUTO=1\r\nAUTOTIME=2\r\n[1234]", "AUTO=7\r\nAUTOTIME=2\r\n[1234]"));
    settingsfromfile();
    EXPECT_EQ(g().scannerauto[1], 0);
    EXPECT_EQ(form2().LAuto[1].caption(), "No");
    EXPECT_FALSE(islit(form2().SAuto[1]));
    EXPECT_NE(ini().find("AUTO=7\r\n"), std::string::npos);
}

TEST_F(SettingsLoad, LocalSavingReadsTheFitterTypeAsLocal)
{
    std::string text = replaced(completefile, "[SAVE]\r\nTYPE=2", "[SAVE]\r\nTYPE=0");
    writeini(text);
    settingsfromfile();
    EXPECT_EQ(boxes(), Rows{});
    EXPECT_EQ(g().fittertype, 0);
    Form2& f = form2();
    EXPECT_TRUE(islit(f.FileDown[1]));
    EXPECT_TRUE(islit(f.FitterInfo[1]));
    expecthidden({&f.ServerIP, &f.TarnTNO, &f.FileDownLabel[3], &f.FitterInfo[2], &f.FitterInfoLabel[3]});
}

TEST_F(SettingsLoad, EmailSavingPutsTheHeadOfficeAddressInTheServerBox)
{
    writeini(replaced(completefile, "[SAVE]\r\nTYPE=2", "[SAVE]\r\nTYPE=3"));
    settingsfromfile();
    EXPECT_EQ(boxes(), Rows{});
    Form2& f = form2();
    EXPECT_EQ(f.ServerIP.value(), "ho@acme.example");
    EXPECT_EQ(f.BIP.value(), "127.0.0.1");
    EXPECT_EQ(g().serverip, "127.0.0.1");
    EXPECT_EQ(f.Label2.caption(), "Email");
    EXPECT_EQ(f.FileDownLabel[3].caption(), "Email");
    EXPECT_TRUE(f.TarnTNO.isHidden());
    EXPECT_EQ(f.Shape1[7].fillcolor(), colorbox(boxgood));

    // The address needs its mark here. A short one without it still cuts at the "#" that
    // the server address left in the buffer; a longer one covers that and ends the load.
    const std::string email = replaced(completefile, "[SAVE]\r\nTYPE=2", "[SAVE]\r\nTYPE=3");
    writeini(replaced(email, "HOEMAIL=ho@acme.example#", "HOEMAIL=nobody"));
    settingsfromfile();
    EXPECT_EQ(boxes(), Rows{});
    EXPECT_EQ(f.ServerIP.value(), "nobody");
    EXPECT_EQ(f.Shape1[7].fillcolor(), colorbox(boxfault));
    writeini(replaced(email, "HOEMAIL=ho@acme.example#", "HOEMAIL=nobody.anywhere"));
    settingsfromfile();
    EXPECT_EQ(boxes(), Rows{failure});
}

TEST_F(SettingsLoad, TheHeadOfficeAddressAndTheRogueCheckRepairThemselves)
{
    std::string text = replaced(completefile, "HOEMAIL=ho@acme.example#\r\n", "");
    text = replaced(text, "CHKROGUE=0#", "CHKROGUE=1");
    writeini(text);
    form3().HOEmail.settext("kept");
    settingsfromfile();
    EXPECT_EQ(boxes(), Rows{});
    EXPECT_EQ(form3().HOEmail.value(), "kept");
    EXPECT_EQ(g().chkrogue, "1");
    std::string after = ini();
    EXPECT_NE(after.find("TEL=01234 567#\r\nHOEMAIL=#\r\n"), std::string::npos) << after;
    EXPECT_NE(after.find("CHKROGUE=1\r\n"), std::string::npos);

    // "#" is a value: the box empties. This time no missing key wipes the buffer before the
    // rogue check: "1" lands over the read delay's and display type's "1#" and the
    // telephone's "01234 567#", and cuts at that last "#". It is not "1", and nothing is
    // repaired.
    settingsfromfile();
    EXPECT_EQ(form3().HOEmail.value(), "");
    EXPECT_EQ(g().chkrogue, std::string("1\0\0" "34 567", 9));
    EXPECT_EQ(ini(), after);
}

TEST_F(SettingsLoad, BadFilesEndTheLoadWithItsMessage)
{
    struct Row { const char* legend; std::string text; bool fails; } rows[] = {
        {"cut short after the first section", "[9725]\r\nUSED=1\r\nPORT=3#\r\nAUTO=0\r\n", true},
        {"cut short in the middle of a line", completefile.substr(0, completefile.find("TNO=01") + 6), true},
        {"an empty file", "", true},
        {"no file at all", "", true},
        {"a port without its mark", replaced(completefile, "PORT=3#", "PORT=3"), true},
        {"an address without its mark", replaced(completefile, "IP=127.0.0.1#", "IP=127.0.0.1"), true},
        {"a port that is no number", replaced(completefile, "PORT=3#", "PORT=three#"), true},
        {"a used mark that is no number", replaced(completefile, "USED=0", "USED=no"), true},
        {"a missing save type", replaced(completefile, "[SAVE]\r\nTYPE=2\r\n", "[SAVE]\r\n"), true},
        {"a company name of 49 characters", replaced(completefile, "Acme Motors#", std::string(49, 'A') + "#"), true},
        {"a company name of 48 characters", replaced(completefile, "Acme Motors#", std::string(48, 'A') + "#"), false},
        {"a read delay without its mark", replaced(completefile, "READDELAY=3#", "READDELAY=3"), false},
        {"a missing time margin", replaced(completefile, "[TIMEMARGIN]\r\nMINS=15#\r\n", ""), false},
        {"keys in lower case", replaced(completefile, "[FIRST]\r\nRUN=1", "[first]\r\nrun=1"), false},
    };
    for (const auto& r : rows) {
        if (std::string(r.legend) == "no file at all") QFile::remove(QString::fromStdString(inipath()));
        else writeini(r.text);
        dialogs::cleartranscript();
        settingsfromfile();
        EXPECT_EQ(boxes(), r.fails ? Rows{failure} : Rows{}) << r.legend;
    }
}

TEST_F(SettingsLoad, ValuesWithoutTheirMarkTakeTheirDefaultsOrWhatTheBufferStillHolds)
{
    // "7" lands over the terminal number's "012#" and the address's "127.0.0.1#": a "#" is
    // still in the buffer after the terminator, and the number ends at the terminator. A
    // value long enough to cover every earlier "#", or a missing one (the path covers
    // them), takes the default. The same for the read delay after the company's values.
    const std::string longdelay = replaced(replaced(completefile, "READDELAY=3#", "READDELAY=30000000000000000000"),
                                           "[DISPLAY]\r\nTYPE=1#\r\n", "");
    struct Row { std::string text; Int16 Globals::*value; int expected; } rows[] = {
        {replaced(completefile, "MINS=15#", "MINS=7"), &Globals::timemargin, 7},
        {replaced(completefile, "MINS=15#", "MINS=7777777777"), &Globals::timemargin, 5},
        {replaced(completefile, "[TIMEMARGIN]\r\nMINS=15#\r\n", ""), &Globals::timemargin, 5},
        {replaced(completefile, "READDELAY=3#", "READDELAY=3"), &Globals::readdelay, 3},
        {longdelay, &Globals::readdelay, 0},
        {longdelay, &Globals::displaytype, 0},
    };
    for (const auto& r : rows) {
        writeini(r.text);
        settingsfromfile();
        EXPECT_EQ(g().*r.value, r.expected) << r.text;
    }
    EXPECT_EQ(boxes(), Rows{});
}

TEST_F(SettingsLoad, ALoadThroughTheScreenAndBackKeepsTheSettingsButNotTheClockModeChosen)
{
    writeini(completefile);
    settingsfromfile();
    ASSERT_EQ(boxes(), Rows{});

    // Changes on the screen: the CS 1504 to COM3 and to automatic, a new clock mode for the
    // OPL 972x, a new terminal number, the company's head office address box.
    Form2& f = form2();
    f.SPorts[3].settext("com3");
    g().scannerauto[3] = 1;
    g().scannerautotime[1] = 1;
    f.TarnTNO.settext("45");
    form3().HOEmail.settext("new@acme.example");
    savesettings();
    ASSERT_EQ(boxes(), Rows{});
    const std::string saved = ini();

    resetglobals();
    g().homedir = platform::installfolder;
    settingsfromfile();
    ASSERT_EQ(boxes(), Rows{});
    Globals& s = g();
    // Survive: the scanner rows as saved, the save type, address and terminal number as
    // typed (not checked, so not padded), the fitter type, the company details, the tuning.
    EXPECT_EQ(s.scannerport[3], 3);
    EXPECT_EQ(s.scannerauto[3], 1);
    EXPECT_EQ(s.scannerport[1], 3);
    EXPECT_EQ(s.savetype, 2);
    EXPECT_EQ(s.serverip, "127.0.0.1");
    EXPECT_EQ(s.terminalno, "45");
    EXPECT_EQ(f.TarnTNO.value(), "045");   // the load's check pads the box, not the file
    EXPECT_EQ(s.fittertype, 2);
    EXPECT_EQ(s.firstrun, 1);
    EXPECT_EQ(s.timemargin, 15);
    EXPECT_EQ(s.readdelay, 3);
    EXPECT_EQ(s.displaytype, 1);
    EXPECT_EQ(s.chkrogue, "0");
    EXPECT_EQ(form3().Company.value(), "Acme Motors");
    // Lost: the clock mode chosen on the screen (AUTOTIME is never saved), and the head
    // office address typed into the company box (only Email saving or the company screen's
    // OK store it).
    EXPECT_EQ(s.scannerautotime[1], 2);
    EXPECT_EQ(form3().HOEmail.value(), "ho@acme.example");
    // The unused OPN 2001 was saved on port 0 without automatic download.
    EXPECT_NE(saved.find("[1234]\r\nUSED=0\r\nPORT=0#\r\nAUTO=0\r\nAUTOTIME=2\r\n"), std::string::npos) << saved;
    EXPECT_EQ(ini(), saved);
}

}  // namespace

// The settings file: what a first start writes, how one routine's reads share their
// buffer, and what a save writes from the shared block and the setup screen.
#include "settingsfixture.h"

#include "settings/form2.h"
#include "settings/form3.h"
#include "settings/settingscreate.h"
#include "settings/settingsread.h"
#include "settings/settingssave.h"

namespace {

class SettingsFile : public SettingsTest {};

const char* const createdfile =
    "[9725]\r\nUSED=0\r\nPORT=0#\r\nAUTO=0\r\n"
    "[1234]\r\nUSED=0\r\nPORT=0#\r\nAUTO=0\r\n"
    "[1504]\r\nUSED=0\r\nPORT=0#\r\nAUTO=0\r\n"
    "[SAVE]\r\nTYPE=0\r\nIP=0.0.0.0#\r\nTNO=999#\r\n"
    "[FITTER]\r\nTYPE=0\r\n"
    "[COMPANY]\r\nNAME=N/A\r\nUSER=N/A\r\nTEL=N/A\r\n"
    "[MISC]\r\nCHKROGUE=1\r\n"
    "[FIRST]\r\nRUN=0\r\n";

TEST_F(SettingsFile, AFirstStartWritesExactlyTheStartingKeysAndLeavesAFileThatIsThere)
{
    createsettingsfile();
    EXPECT_EQ(ini(), createdfile);

    writeini("[FIRST]\r\nRUN=1\r\n");
    createsettingsfile();
    EXPECT_EQ(ini(), "[FIRST]\r\nRUN=1\r\n");

    QFile::remove(QString::fromStdString(inipath()));   // named in another case it counts as there
    TempInstall::writefile(install.root() + "/tagstore.ini", "[FIRST]\r\nRUN=1\r\n");
    createsettingsfile();
    EXPECT_EQ(TempInstall::readfile(install.root() + "/tagstore.ini"), "[FIRST]\r\nRUN=1\r\n");
    EXPECT_FALSE(QFile::exists(QString::fromStdString(install.root() + "/TAGSTORE.INI")));
}

TEST_F(SettingsFile, ReadsShareOneBufferThatKeepsTheTailOfEarlierReads)
{
    writeini("[SAVE]\r\nIP=192.168.10.200#\r\nTNO=12\r\nLONG=" + std::string(48, 'x') + "#\r\nFULL=" +
             std::string(49, 'y') + "\r\n[MISC]\r\nCHKROGUE=0#\r\nEMPTY=\r\n");
    SettingsReader r;
    EXPECT_EQ(r.buffer(), std::string(50, '\0'));
    EXPECT_EQ(r.read("SAVE", "IP"), 15);
    EXPECT_EQ(r.cut(), "192.168.10.200");

    // "12" has no "#" of its own, but the address's "#" is still in the buffer.
    EXPECT_EQ(r.read("SAVE", "TNO"), 2);
    EXPECT_TRUE(r.hashash());
    EXPECT_EQ(r.cut(), std::string("12\0.168.10.200", 14));
    EXPECT_EQ(r.number(), 12);   // a number ends at the terminator

    // A missing key reads as the file's own path, 39 characters in the standard folder.
    EXPECT_EQ(r.read("SAVE", "NONE"), 39);
    EXPECT_EQ(Left(r.buffer(), 39), "C:\\Program Files\\VexalBCv4\\TAGSTORE.INI");
    EXPECT_FALSE(r.hashash());
    try {
        r.cut();
        FAIL() << "a cut without a \"#\" goes through";
    } catch (const Fault& f) {
        EXPECT_EQ(f.number, 5);
    }
    try {
        r.code();
        FAIL() << "a code of \"C\" goes through";
    } catch (const Fault& f) {
        EXPECT_EQ(f.number, 13);
    }

    EXPECT_EQ(r.read("SAVE", "LONG"), 49);   // 48 characters and the "#" just fit
    EXPECT_EQ(r.cut(), std::string(48, 'x'));
    EXPECT_EQ(r.read("SAVE", "FULL"), 49);   // 49 or more lose the mark
    EXPECT_FALSE(r.hashash());

    EXPECT_EQ(r.read("MISC", "EMPTY"), 0);
    EXPECT_THROW(r.code(), Fault);
    SettingsReader fresh;   // each routine starts with a buffer of its own
    fresh.read("MISC", "CHKROGUE");
    EXPECT_EQ(fresh.cut(), "0");
}

TEST_F(SettingsFile, TheEmailTest)
{
    struct Row { const char* text; bool good; } rows[] = {
        {"ho@acme.example", true}, {"a@b", true},   {"", false},      {"@acme.example", false},
        {"ho@", false},            {"hoacme", false}, {"a@b@", true}, {"a b@c", true},
    };
    for (const auto& r : rows) EXPECT_EQ(emailtest(r.text), r.good) << '"' << r.text << '"';
}

class SaveSettings : public SettingsTest {
protected:
    void SetUp() override
    {
        SettingsTest::SetUp();
        install.configure("[ports]\nCOM3=" + com3.name() + "\n");
        createsettingsfile();
        Form2& f = form2();
        for (int i = 1; i <= 3; ++i) f.SPorts[i].settext("");
        f.ServerIP.settext("");
        f.TarnTNO.settext("");
        form3().HOEmail.settext("");
    }
    Pty com3;
};

TEST_F(SaveSettings, LocalSavingForcesItsAddressTerminalAndFitterType)
{
    Globals& s = g();
    Form2& f = form2();
    s.scannerused[1] = 0;
    s.scannerport[1] = 4;
    s.scannerauto[1] = 1;
    s.scannerautotime[1] = 2;
    s.scannerused[3] = 1;
    s.scannerauto[3] = 1;
    s.scannerautotime[3] = 2;
    f.SPorts[3].settext("COM3");
    s.savetype = 0;
    s.fittertype = 2;
    s.serverip = "10.0.0.5";
    f.ServerIP.settext("10.0.0.9");
    f.TarnTNO.settext("012");
    savesettings();
    EXPECT_EQ(ini(),
              "[9725]\r\nUSED=0\r\nPORT=0#\r\nAUTO=0\r\n"
              "[1234]\r\nUSED=0\r\nPORT=0#\r\nAUTO=0\r\n"
              "[1504]\r\nUSED=1\r\nPORT=3#\r\nAUTO=1\r\n"
              "[SAVE]\r\nTYPE=0\r\nIP=0.0.0.0#\r\nTNO=999#\r\n"
              "[FITTER]\r\nTYPE=0\r\n"
              "[COMPANY]\r\nNAME=N/A\r\nUSER=N/A\r\nTEL=N/A\r\n"
              "[MISC]\r\nCHKROGUE=1\r\n"
              "[FIRST]\r\nRUN=1\r\n");
    EXPECT_EQ(s.scannerport[1], 0);
    EXPECT_EQ(s.scannerauto[1], 0);
    EXPECT_EQ(s.scannerautotime[3], 2);   // kept for this run, never written
    EXPECT_EQ(s.serverip, "0.0.0.0");
    EXPECT_EQ(s.terminalno, "999");
    EXPECT_EQ(s.fittertype, 0);
    EXPECT_EQ(s.firstrun, 0);
    EXPECT_EQ(s.chkrogue, "1");   // "1" without its mark is repaired, again, to "1"
    EXPECT_TRUE(dialogs::transcript().empty());
}

TEST_F(SaveSettings, ServerSavingTakesTheBoxes)
{
    Globals& s = g();
    Form2& f = form2();
    s.savetype = 2;
    s.fittertype = 2;
    f.ServerIP.settext("10.0.0.9");
    f.TarnTNO.settext("012");
    writeini(std::string(createdfile).replace(std::string(createdfile).find("CHKROGUE=1"), 10, "CHKROGUE=0#"));
    savesettings();
    const std::string t = ini();
    EXPECT_NE(t.find("[SAVE]\r\nTYPE=2\r\nIP=10.0.0.9#\r\nTNO=012#\r\n[FITTER]\r\nTYPE=2\r\n"), std::string::npos) << t;
    EXPECT_EQ(s.serverip, "10.0.0.9");
    EXPECT_EQ(s.terminalno, "012");
    EXPECT_EQ(s.chkrogue, "0");
}

TEST_F(SaveSettings, EmailSavingStoresAGoodAddressAsTheHeadOfficeAddress)
{
    Globals& s = g();
    Form2& f = form2();
    s.savetype = 3;
    s.fittertype = 0;
    s.serverip = "10.0.0.5";
    s.terminalno = "007";
    f.ServerIP.settext("ho@acme.example");
    f.TarnTNO.settext("123");
    savesettings();
    std::string t = ini();
    EXPECT_NE(t.find("[COMPANY]\r\nNAME=N/A\r\nUSER=N/A\r\nTEL=N/A\r\nHOEMAIL=ho@acme.example#\r\n"), std::string::npos);
    EXPECT_NE(t.find("IP=10.0.0.5#\r\nTNO=007#\r\n"), std::string::npos);
    EXPECT_EQ(form3().HOEmail.value(), "ho@acme.example");

    f.ServerIP.settext("not an address");
    form3().HOEmail.settext("kept");
    savesettings();
    EXPECT_NE(ini().find("HOEMAIL=ho@acme.example#\r\n"), std::string::npos);
    EXPECT_EQ(form3().HOEmail.value(), "kept");
}

TEST_F(SaveSettings, AUsedScannerWithoutAPortEndsTheSaveHalfWritten)
{
    Globals& s = g();
    s.scannerused[1] = 1;
    s.scannerused[2] = 1;
    form2().SPorts[1].settext("COM3");
    form2().SPorts[2].settext("");
    s.savetype = 1;
    savesettings();
    EXPECT_EQ(boxes(), std::vector<std::string>{"Error Saving Settings: An error occured saving the settings to file!"});
    EXPECT_EQ(dialogs::transcript().at(0).flags, vbExclamation);
    EXPECT_EQ(loglines(), std::vector<std::string>{"savesettings: Unexpected Error. Error: 13 Type mismatch"});
    const std::string t = ini();
    EXPECT_NE(t.find("[9725]\r\nUSED=1\r\nPORT=3#\r\nAUTO=0\r\n[1234]\r\nUSED=1\r\nPORT=0#\r\n"), std::string::npos);
    EXPECT_NE(t.find("[SAVE]\r\nTYPE=0\r\n"), std::string::npos);
    EXPECT_NE(t.find("[FIRST]\r\nRUN=0\r\n"), std::string::npos);
}

}  // namespace

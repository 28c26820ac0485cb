// Batch Update data taken to the server by the real program, driven from outside by an
// actions file and an answers file: from the outstanding list into a mounted folder share,
// from the tray and from the exit into a share served by a real smbd, and a share that
// goes away while the transfer runs, with the restore's questions answered.
#include <QDate>
#include <sys/stat.h>
#include <memory>

#include "processfixture.h"
#include "support/smbserver.h"
#include "support/tempinstall.h"

namespace {

std::string line(int i) { return "01123456" + std::to_string(10 + i) + "200703091430"; }

std::string bar(const std::string& scanner, int from, int count, const std::string& header)
{
    std::string b = "[000000" + scanner + "]\r\n000=" + header + "\r\n";
    for (int k = 1; k <= count; ++k) b += (k < 10 ? "00" : "0") + std::to_string(k) + "=" + line(from + k - 1) + "\r\n";
    return b;
}

std::string master(const std::string& count) { return "[FILES]\r\nFILES=" + count + "\r\n"; }

std::string today() { return QDate::currentDate().toString("yyyyMMdd").toStdString(); }

class TransferProcess : public ProcessTest {
protected:
    // Batch Update to 127.0.0.1 as terminal 007, no scanner in use; the store reached by
    // `shares` (platform.ini lines); three local files, one of them for a scanner that has
    // a file on the server already.
    void setup(const std::string& shares, const std::string& storefolder, const std::string& actions,
               const std::string& answers)
    {
        store = storefolder;
        std::string ini;
        for (const char* section : {"9725", "1234", "1504"})
            ini += std::string("[") + section + "]\r\nUSED=0\r\nPORT=0#\r\nAUTO=0\r\nAUTOTIME=0\r\n";
        ini += "[SAVE]\r\nTYPE=2\r\nIP=127.0.0.1#\r\nTNO=007#\r\n[FITTER]\r\nTYPE=0\r\n"
               "[COMPANY]\r\nNAME=Test Motors#\r\nUSER=Workshop#\r\nTEL=01234#\r\nHOEMAIL=#\r\n"
               "[MISC]\r\nCHKROGUE=0#\r\nREADDELAY=0#\r\n[FIRST]\r\nRUN=1\r\n";
        write("TAGSTORE.INI", ini);
        write("platform.ini", "[dialogs]\nanswers=answers.txt\ntranscript=transcript.txt\nactions=actions.txt\n" + shares);
        write("actions.txt", actions);
        write("answers.txt", answers);
        QDir(QString::fromStdString(root)).mkpath("drive_c/TARNBC");
        write("drive_c/TARNBC/ENGLST.TXT", "VEXAL engineers\r\n000123,000123,FRED BLOGGS\r\n");
        write("drive_c/TARNBC/BARCODE.INI", master("003"));
        write("drive_c/TARNBC/BAR001.INI", bar("123", 1, 2, "00220070305"));
        write("drive_c/TARNBC/BAR002.INI", bar("456", 11, 3, "00320070305"));
        write("drive_c/TARNBC/BAR003.INI", bar("789", 21, 1, "00120070305"));
        putstore("BARCODE.007", master("001"));
        putstore("BAR001.007", bar("456", 40, 2, "00220070301"));
    }
    void putstore(const std::string& name, const std::string& bytes)
    {
        TempInstall::writefile(store + "/" + name, bytes);
        ::chmod((store + "/" + name).c_str(), 0666);   // the share's guest may rewrite it
    }
    std::string storefile(const std::string& name) const { return TempInstall::readfile(store + "/" + name); }

    // The store after the three local files went over: scanner 456's file grew by three keys,
    // 789 (the highest local number) and then 123 have new files.
    void expectmerged()
    {
        std::string grown = "[000000456]\r\n000=005" + today() + "\r\n001=" + line(40) + "\r\n002=" + line(41) + "\r\n";
        for (int k = 3; k <= 5; ++k) grown += "00" + std::to_string(k) + "=" + line(11 + k - 3) + "\r\n";
        EXPECT_EQ(storefile("BAR001.007"), grown);
        EXPECT_EQ(storefile("BAR002.007"), bar("789", 21, 1, "001" + today()));
        EXPECT_EQ(storefile("BAR003.007"), bar("123", 1, 2, "002" + today()));
        EXPECT_EQ(storefile("BARCODE.007"), master("003"));
        EXPECT_EQ(read("drive_c/TARNBC/BARCODE.INI"), master("000"));
        for (const char* name : {"BAR001.INI", "BAR002.INI", "BAR003.INI"}) EXPECT_EQ(read(std::string("drive_c/TARNBC/") + name), "");
        EXPECT_TRUE(QDir(QString::fromStdString(root + "/drive_c/TARNBC/INITEMP")).isEmpty()) << "tidied up";
    }
    bool transcribed(const std::string& text, int ms = 30000)
    {
        return waituntil([&] { return read("transcript.txt").find(text) != std::string::npos; }, ms);
    }

    std::string store;
};

const char* const transferandclose = "wait 1\nForm20.Transfer click\nwait 1\nForm20.CloseScreen click\n";

TEST_F(TransferProcess, OutstandingListIntoAMountedFolderThenExitWithNothingLeft)
{
    QDir(QString::fromStdString(root)).mkpath("share");
    setup("[shares]\n\\\\127.0.0.1\\tagstore=" + root + "/share\n", root + "/share",
          std::string("Form1.List1 dblclick 1\n") + transferandclose + "wait 1\nForm9.mnuExit click\n", "");
    QProcess* program = start();
    ASSERT_TRUE(program->waitForFinished(60000)) << read("transcript.txt");
    EXPECT_EQ(program->exitCode(), 0);
    expectmerged();
    const std::string transcript = read("transcript.txt");
    EXPECT_EQ(transcript.find("Transfer Local Data"), std::string::npos) << "nothing left to ask about at the exit";
    EXPECT_EQ(transcript.find("MsgBox"), std::string::npos) << transcript;
}

TEST_F(TransferProcess, TrayEntryIntoAnSmbShare)
{
    SmbServer server;
    if (!server.running()) GTEST_SKIP() << server.whynot();
    setup(server.settings(), server.folder(), std::string("Form9.mnuTransfer click\n") + transferandclose, "");
    start({"startup"});
    ASSERT_TRUE(transcribed("Form20.CloseScreen click\" => fired")) << read("transcript.txt");
    ASSERT_TRUE(waituntil([&] { return read("drive_c/TARNBC/BARCODE.INI") == master("000"); }));
    ASSERT_TRUE(waituntil([&] { return QDir(QString::fromStdString(root + "/drive_c/TARNBC/INITEMP")).isEmpty(); }));
    expectmerged();
}

TEST_F(TransferProcess, ExitTransfersFirstAndThenEnds)
{
    SmbServer server;
    if (!server.running()) GTEST_SKIP() << server.whynot();
    setup(server.settings(), server.folder(), std::string("Form9.mnuExit click\n") + transferandclose,
          "Transfer Local Data => Yes\n");
    QProcess* program = start({"startup"});
    ASSERT_TRUE(program->waitForFinished(60000)) << read("transcript.txt");
    EXPECT_EQ(program->exitCode(), 0);
    expectmerged();
    EXPECT_NE(read("transcript.txt").find("Transfer Local Data"), std::string::npos);
}

TEST_F(TransferProcess, ShareStoppedDuringTheTransferIsRetriedThenCancelledWithTheDataHeld)
{
    auto server = std::make_unique<SmbServer>();
    if (!server->running()) GTEST_SKIP() << server->whynot();
    setup(server->settings(), server->folder(), "Form9.mnuTransfer click\nwait 1\nForm20.Transfer click\n",
          "Error With Connection To Server | Restore attempt : 1 => OK\n"
          "Error With Connection To Server | Restore attempt : 2 => Cancel\n"
          "Confirm Cancel => Yes\n");
    start({"startup"});
    // The merge paces itself at a third of a second a file: the share goes while it runs.
    ASSERT_TRUE(transcribed("Form20.Transfer click\" => fired")) << read("transcript.txt") << log();
    server->stop();
    ASSERT_TRUE(waitforlog("Server Unavailable And User Cancelled Restore.", 60000)) << read("transcript.txt");

    const std::string transcript = read("transcript.txt");
    EXPECT_NE(transcript.find("Restore attempt : 1 The server is showing as unavailable."), std::string::npos) << transcript;
    EXPECT_NE(transcript.find("Restore attempt : 2 The server is showing as unavailable."), std::string::npos);
    EXPECT_EQ(transcript.find("Restore attempt : 3"), std::string::npos);
    EXPECT_NE(log().find("form20, runtransfer: Transfering Data To Server. Unexpected error. Error: "), std::string::npos);

    // Every line is held on the PC: the merged set in INITEMP, both sides' originals in its
    // BACKUPS; the server still has what it had.
    const std::string work = "drive_c/TARNBC/INITEMP/";
    std::string grown = "[000000456]\r\n000=005" + today() + "\r\n001=" + line(40) + "\r\n002=" + line(41) + "\r\n";
    for (int k = 3; k <= 5; ++k) grown += "00" + std::to_string(k) + "=" + line(11 + k - 3) + "\r\n";
    EXPECT_EQ(read(work + "BAR001.007"), grown);
    EXPECT_EQ(read(work + "BAR002.007"), bar("789", 21, 1, "001" + today()));
    EXPECT_EQ(read(work + "BAR003.007"), bar("123", 1, 2, "002" + today()));
    EXPECT_EQ(read(work + "BARCODE.007"), master("003"));
    EXPECT_EQ(read(work + "BACKUPS/BAR001.INI"), bar("123", 1, 2, "00220070305"));
    EXPECT_EQ(read(work + "BACKUPS/BAR002.INI"), bar("456", 11, 3, "00320070305"));
    EXPECT_EQ(read(work + "BACKUPS/BAR003.INI"), bar("789", 21, 1, "00120070305"));
    EXPECT_EQ(read(work + "BACKUPS/BAR001.007"), bar("456", 40, 2, "00220070301"));
    EXPECT_EQ(storefile("BAR001.007"), bar("456", 40, 2, "00220070301"));
    EXPECT_EQ(storefile("BAR002.007"), "");
}

}  // namespace

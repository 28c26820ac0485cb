// E-mail delivery in the real program: a branch PC in Email mode with an OPL 972x on
// automatic mails its download to head office through a real SMTP server, and the
// attachment, saved into head office's imports folder, gives there the BAR file a direct
// download of the same scans gives.
#include <memory>

#include "core/globals.h"
#include "delivery/processemails.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "processfixture.h"
#include "runtime/vb.h"
#include "support/emulator.h"
#include "support/loopback.h"
#include "support/smtpserver.h"
#include "support/tempinstall.h"

namespace {

size_t count(const std::string& text, const std::string& what)
{
    size_t n = 0;
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + what.size())) ++n;
    return n;
}

class EmailProcessTest : public ProcessTest {
protected:
    // The OPL 972x on COM4, on automatic; `savetype` 1 Direct to the install's share folder,
    // or 3 Email to ho@example.com through `mail` ([mail] of platform.ini).
    void setup(int savetype, const std::string& mail)
    {
        write("TAGSTORE.INI",
              "[9725]\r\nUSED=1\r\nPORT=4#\r\nAUTO=1\r\nAUTOTIME=0\r\n[1234]\r\nUSED=0\r\nPORT=0#\r\nAUTO=0\r\nAUTOTIME=0\r\n"
              "[1504]\r\nUSED=0\r\nPORT=0#\r\nAUTO=0\r\nAUTOTIME=0\r\n[SAVE]\r\nTYPE=" + std::to_string(savetype) +
                  "\r\nIP=127.0.0.1#\r\nTNO=007#\r\n[FITTER]\r\nTYPE=0\r\n[COMPANY]\r\nNAME=Test Motors#\r\n"
                  "USER=Bristol Branch#\r\nTEL=01234#\r\nHOEMAIL=ho@example.com#\r\n[MISC]\r\nCHKROGUE=1#\r\n"
                  "READDELAY=0#\r\n[FIRST]\r\nRUN=1\r\n");
        write("platform.ini", "[dialogs]\nanswers=answers.txt\ntranscript=transcript.txt\n[shares]\n\\\\127.0.0.1\\tagstore=" +
                                  root + "/share\n[ports]\nCOM4=" + root + "/com4\n" + mail);
        write("answers.txt", "Confirm Email Sending => Yes\n");
        QDir(QString::fromStdString(root)).mkpath("share");
        QDir(QString::fromStdString(root)).mkpath("drive_c/TARNBC");
    }
    // Scanner 123 docked with two good scans and a test scan of yesterday.
    void dock()
    {
        const QDate d = programnow().date().addDays(-1);
        const std::string day = d.toString("ddMMyy").toStdString();
        const std::string records = "0001123456780," + day + ",0830\n0001876543210," + day + ",1745\n0001990000010," + day +
                                    ",0900\n";
        QFile::remove(QString::fromStdString(root + "/opl.state"));
        scanner = std::make_unique<Emulator>(
            "opl", std::vector<std::string>{"--id", "123", "--battery", "85", "--records",
                                            Emulator::writefile(root + "/records.txt", records), "--baud", "115200",
                                            "--state", root + "/opl.state"},
            root + "/com4");
        ASSERT_TRUE(scanner->ready()) << scanner->output();
    }
    long held() const { return (long)count("\n" + read("opl.state"), "\nline="); }
    void stopall()
    {
        for (QProcess* p : running) {
            p->kill();
            p->waitForFinished(5000);
            delete p;
        }
        running.clear();
        scanner.reset();
    }
    std::vector<std::string> exports() const
    {
        std::vector<std::string> out;
        for (const QString& n : QDir(QString::fromStdString(root + "/drive_c/TARNBC/EXPORTS")).entryList(QDir::Files))
            out.push_back(n.toStdString());
        return out;
    }

    std::unique_ptr<Emulator> scanner;
};

TEST_F(EmailProcessTest, BranchMailsItsDownloadAndHeadOfficeImportsTheSameLines)
{
    // A direct download of the scans, for the bytes Tarn would get.
    setup(1, "");
    dock();
    start({"startup"});
    ASSERT_TRUE(waitforlog("Data Cleared From The Scanner")) << log();
    const std::string direct = read("share/BAR001.007");
    ASSERT_NE(direct.find("[000000123]"), std::string::npos) << direct;
    stopall();
    QFile::remove(QString::fromStdString(root + "/LOGS/" + programnow().toString("dd").toStdString() + "_LOG.TXT"));

    // The branch in Email mode: the mail goes, and only then is the scanner cleared.
    SmtpServer server;
    ASSERT_TRUE(server.start()) << server.error();
    setup(3, server.mailsection());
    dock();
    start({"startup"});
    ASSERT_TRUE(waitforlog("Data Cleared From The Scanner")) << log() << read("transcript.txt");
    const std::string branchlog = log();
    const size_t mailed = branchlog.find("Function transferdata() : Data Emailed To ho@example.com");
    ASSERT_NE(mailed, std::string::npos) << branchlog;
    EXPECT_LT(mailed, branchlog.find("Data Cleared From The Scanner"));
    EXPECT_EQ(held(), 0);
    EXPECT_TRUE(QDir(QString::fromStdString(root + "/drive_c/TARNBC/EXPORTS")).exists());
    EXPECT_TRUE(exports().empty());
    EXPECT_NE(read("transcript.txt").find("Confirm Email Sending"), std::string::npos);
    const auto mails = server.mails();
    ASSERT_EQ(mails.size(), 1u);
    EXPECT_EQ(mails[0].to, std::vector<std::string>{"ho@example.com"});
    EXPECT_EQ(mails[0].subject, "Workshop Time Clock Files From Bristol Branch");
    EXPECT_EQ(mails[0].note, "Please save all files to c:\\tarnbc\\imports");
    ASSERT_EQ(mails[0].attachments.size(), 1u);
    const auto& [name, bytes] = mails[0].attachments[0];
    EXPECT_EQ(name.substr(0, 11), "export_123_");
    stopall();

    // Head office, Direct to its own share: the attachment saved into imports and imported.
    TempInstall office;
    const std::string share = office.addshare("\\\\127.0.0.1\\tagstore");
    resetglobals();
    g().homedir = platform::installfolder;
    g().savetype = 1;
    g().serverip = "127.0.0.1";
    g().terminalno = "007";
    files::makefolder(g().homedir + "LOGS");
    files::makefolder("c:\\tarnbc");
    files::makefolder("c:\\tarnbc\\imports");
    TempInstall::writefile(office.host("c:\\tarnbc\\imports\\" + name), bytes);
    TempInstall::writefile(office.root() + "/BAR999.INI",
                           TempInstall::readfile(std::string(VEXAL_SOURCE_DIR) + "/resources/BAR999.INI"));
    dialogs::reset();
    dialogs::setunattended(true);
    dialogs::queueanswer(vbYes);
    processemails();
    EXPECT_EQ(TempInstall::readfile(share + "/BAR001.007"), direct);
    EXPECT_TRUE(files::list("c:\\tarnbc\\imports\\*").empty());
}

TEST_F(EmailProcessTest, MailServerDownKeepsTheExportAndTheScansOnTheScanner)
{
    setup(3, "[mail]\nserver=smtp://127.0.0.1:" + std::to_string(freeport()) + "\n");
    write("answers.txt", "Confirm Email Sending => Yes\nError In Function transferdata() => OK\n");
    dock();
    start({"startup"});
    ASSERT_TRUE(waituntil([&] { return read("transcript.txt").find("Error In Function transferdata()") != std::string::npos; }))
        << log() << read("transcript.txt");
    stopall();
    const std::string transcript = read("transcript.txt");
    EXPECT_NE(transcript.find("line 7! Error: 32023 Could not connect to the mail server 127.0.0.1:"), std::string::npos)
        << transcript;
    EXPECT_EQ(log().find("Data Cleared From The Scanner"), std::string::npos) << log();
    EXPECT_EQ(held(), 3);
    ASSERT_FALSE(exports().empty());
    EXPECT_EQ(exports()[0].substr(0, 11), "export_123_");
}

}  // namespace

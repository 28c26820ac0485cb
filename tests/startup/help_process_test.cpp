// The help menu in the real program, played from an actions file: from the main screen's
// Help to the data log, a past download restored into the store share; the start-up entry
// in the user's autostart folder; the support mail, as a real SMTP server receives it.
#include <QProcessEnvironment>

#include "processfixture.h"
#include "support/smtpserver.h"

namespace {

const std::string line1 = "0112345678200701051430", line2 = "0287654321200701051431123";

}  // namespace

class HelpProcessTest : public ProcessTest {
protected:
    void SetUp() override
    {
        ProcessTest::SetUp();
        ASSERT_TRUE(server.start()) << server.error();
        qputenv("XDG_CONFIG_HOME", config.path().toLocal8Bit());
        qputenv("XDG_DATA_HOME", data.path().toLocal8Bit());
    }
    void TearDown() override
    {
        ProcessTest::TearDown();
        qunsetenv("XDG_CONFIG_HOME");
        qunsetenv("XDG_DATA_HOME");
    }

    // Direct saving to the share \\127.0.0.1\tagstore (a folder of the install), terminal
    // 007, no scanners; the mail goes to the test's server.
    void setup()
    {
        write("TAGSTORE.INI", "[9725]\r\nUSED=0\r\nPORT=0#\r\nAUTO=0\r\nAUTOTIME=0\r\n"
                              "[1234]\r\nUSED=0\r\nPORT=0#\r\nAUTO=0\r\nAUTOTIME=0\r\n"
                              "[1504]\r\nUSED=0\r\nPORT=0#\r\nAUTO=0\r\nAUTOTIME=0\r\n"
                              "[SAVE]\r\nTYPE=1\r\nIP=127.0.0.1#\r\nTNO=007#\r\n[FITTER]\r\nTYPE=0\r\n"
                              "[COMPANY]\r\nNAME=Test Motors#\r\nUSER=Workshop#\r\nTEL=01234#\r\nHOEMAIL=#\r\n"
                              "[MISC]\r\nCHKROGUE=1#\r\nREADDELAY=0#\r\n[FIRST]\r\nRUN=1\r\n");
        write("platform.ini", "[dialogs]\nanswers=answers.txt\ntranscript=transcript.txt\nactions=actions.txt\n"
                              "[shares]\n\\\\127.0.0.1\\tagstore=" + root + "/share\n" +
                                  server.mailsection("support=help@vexal.example\n"));
        QDir(QString::fromStdString(root)).mkpath("share");
        QDir(QString::fromStdString(root)).mkpath("LOGS");
        QDir(QString::fromStdString(root)).mkpath("drive_c/TARNBC");
        write("drive_c/TARNBC/ENGLST.TXT", "VEXAL engineers\r\n000123,000123,FRED BLOGGS\r\n");
        write("share/BARCODE.007", "[FILES]\r\nFILES=000\r\n");
        // A download of 5 January in a day log the program leaves alone today.
        const int day = programnow().date().day() == 5 ? 6 : 5;
        const std::string dd = QString::number(day).rightJustified(2, '0').toStdString();
        write("LOGS/" + dd + "_DAT.TXT", dd + "/01/2007\r\nProgram Started : 0800 " + dd + "0107\r\n"
                                        "ENTRY: Scanner 000123 1432 20070105\r\n[000000123]\r\n000=00420070105\r\n003=" +
                                             line1 + "\r\n004=" + line2 + "\r\nEND\r\n");
    }

    SmtpServer server;
    QTemporaryDir config, data;
};

TEST_F(HelpProcessTest, FromHelpARestoreTheStartupEntryAndTheSupportMail)
{
    setup();
    write("answers.txt", "Confirm Data Restore => Yes\n");
    write("actions.txt", "Form1.HelpLabel click\n"
                         "Form18.HelpLabel(0) click\n"
                         "Form26.List1 dblclick 0\n"
                         "Form26.List2 dblclick 0\n"
                         "Form26.Label4(0) click\n"
                         "Form26.Label4(1) click\n"
                         "Form18.HelpIcon(6) click\n"
                         "Form18.HelpLabel(4) click\n"
                         "Form21.Label4(3) click\n"
                         "Form21.Send click\n");
    start();
    ASSERT_TRUE(waituntil([&] { return server.mails().size() == 1; }, 60000)) << read("transcript.txt");

    // The restore: keys from 001, the header recounted, the set counting the new file.
    EXPECT_EQ(read("share/BAR001.007"), "[000000123]\r\n000=00220070105\r\n001=" + line1 + "\r\n002=" + line2 + "\r\n");
    EXPECT_EQ(read("share/BARCODE.007"), "[FILES]\r\nFILES=001\r\n");
    const std::string transcript = read("transcript.txt");
    EXPECT_NE(transcript.find("Operation Complete"), std::string::npos) << transcript;

    // The start-up entry runs this install's program with the word "startup".
    const QString entry = config.path() + "/autostart/Vexal Tag.desktop";
    QFile file(entry);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const std::string text = file.readAll().toStdString();
    EXPECT_NE(text.find("\nExec=\"" + root + "/vexalbc\" \"startup\"\n"), std::string::npos) << text;
    EXPECT_NE(text.find("\nIcon=" + data.path().toStdString() + "/vexalbc/icons/vexalauto4.png\n"), std::string::npos);
    QProcess validate;
    validate.start("desktop-file-validate", {entry});
    ASSERT_TRUE(validate.waitForFinished(10000));
    EXPECT_EQ(validate.exitCode(), 0) << validate.readAllStandardOutput().toStdString();

    // The mail: the settings file first, the store's set last (Attach Data), no logs
    // (unticked); between them whatever set the PC holds.
    const auto mail = server.mails()[0];
    EXPECT_EQ(mail.to, std::vector<std::string>{"help@vexal.example"});
    EXPECT_EQ(mail.subject, "Test Motors: Bench Clock Support Email");
    ASSERT_GE(mail.attachments.size(), 3u);
    const size_t n = mail.attachments.size();
    EXPECT_EQ(mail.attachments[0].first, "TAGSTORE.INI");
    EXPECT_EQ(mail.attachments[0].second, read("TAGSTORE.INI"));
    EXPECT_EQ(mail.attachments[n - 2].first, "BARCODE.007");
    EXPECT_EQ(mail.attachments[n - 1].first, "BAR001.007");
    EXPECT_EQ(mail.attachments[n - 1].second, read("share/BAR001.007"));
    for (const auto& [name, bytes] : mail.attachments) EXPECT_EQ(name.find("_LOG"), std::string::npos) << name;
}

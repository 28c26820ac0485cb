// An OPL 972x transfer in Email mode against the emulator: the raw download becomes an export
// file, the question decides between mailing it now and holding it, and the scanner is
// cleared either way once the file is safe; a held file goes with the list's double click.
#include "delivery/emaildatafiles.h"
#include "downloadfixture.h"
#include "pipeline/mainactions.h"
#include "settings/form3.h"
#include "support/smtpserver.h"

namespace {

class EmailTransfer : public DownloadTest {
protected:
    void SetUp() override
    {
        DownloadTest::SetUp();
        ASSERT_TRUE(server.start()) << server.error();
        form3().HOEmail.settext("ho@example.com");
        form3().User.settext("Bristol Branch");
        g().savetype = 3;
    }
    // Docks the OPL 972x with its three scans (the ports section is rewritten then, so the
    // mail section goes after it).
    void dockopl()
    {
        const Emulator& opl = dock(1, {"--id", "123", "--records", records(oplrecords())});
        install.configure("[ports]\nCOM6=" + opl.link() + "\n" + server.mailsection());
    }
    SmtpServer server;
    // The export file's name: the PC's clock at the copy, 9 March 2007 from 14:05:07 on.
    static bool exportname(const std::string& name) { return name.rfind("export_123_2007391", 0) == 0 && name.size() == 25; }
    const std::string raw = "0001123456780,090307,0830\r\n0002876543210,080307,1745\r\n0001990000010,090307,0900\r\n";
};

TEST_F(EmailTransfer, MailedAtOnceThenCleared)
{
    dockopl();
    dialogs::queueanswer(vbYes);
    runtransfer();
    const auto rows = activity();
    const auto mailed = std::find(rows.begin(), rows.end(), "Data Emailed To ho@example.com");
    ASSERT_NE(mailed, rows.end());
    EXPECT_EQ(*(mailed - 1), "2 Valid Lines Available For Export");
    EXPECT_EQ(*(mailed + 1), "Data Cleared From The Scanner");
    const auto mails = server.mails();
    ASSERT_EQ(mails.size(), 1u);
    const auto& m = mails[0];
    ASSERT_EQ(m.attachments.size(), 1u);
    EXPECT_TRUE(exportname(m.attachments[0].first)) << m.attachments[0].first;
    EXPECT_EQ(m.attachments[0].second, raw);
    EXPECT_TRUE(files::list("c:\\tarnbc\\exports\\*").empty());
    EXPECT_FALSE(has("c:\\tarnbc\\BAR001.INI")) << "no BAR file in Email mode";
    expectidle();
    EXPECT_EQ(stopped(6), 0);
}

TEST_F(EmailTransfer, HeldThenSentFromTheList)
{
    dockopl();
    dialogs::queueanswer(vbNo);
    runtransfer();
    EXPECT_TRUE(hasline("Data Held For Emailing Later"));
    const auto waiting = files::list("c:\\tarnbc\\exports\\*");
    ASSERT_EQ(waiting.size(), 1u);
    EXPECT_TRUE(exportname(waiting[0])) << waiting[0];
    EXPECT_EQ(get("c:\\tarnbc\\exports\\" + waiting[0]), raw);
    EXPECT_EQ(items(form1().List1), (std::vector<std::string>{"File(s) Waiting To Be Emailed:", waiting[0]}));
    EXPECT_TRUE(server.mails().empty());
    EXPECT_EQ(stopped(6), 0) << "the export file holds the scans: the scanner is cleared";

    dialogs::queueanswer(vbYes);
    EXPECT_TRUE(emailfromlist());
    ASSERT_EQ(server.mails().size(), 1u);
    EXPECT_EQ(server.mails()[0].attachments.at(0).second, raw);
    EXPECT_EQ(items(form1().List1), std::vector<std::string>{"No Files Waiting To Be Emailed."});
}

}  // namespace

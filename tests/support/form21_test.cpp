// The support e-mail screen: preparing from the company details, the two ticks, the mail
// as a real SMTP server receives it (attachments in index order), a server that is away,
// the copy of the logs to the server, and the way back.
#include <QDir>
#include <gtest/gtest.h>

#include "core/globals.h"
#include "pipeline/form1.h"
#include "pipeline/screens.h"
#include "platform/dialogs.h"
#include "platform/paths.h"
#include "settings/form2.h"
#include "settings/form3.h"
#include "support/form18.h"
#include "support/form21.h"
#include "support/smtpserver.h"
#include "support/tempinstall.h"

namespace {

using Names = std::vector<std::string>;

Names names(const SmtpServer::Mail& m)
{
    Names out;
    for (const auto& [name, bytes] : m.attachments) out.push_back(name);
    return out;
}

}  // namespace

class SupportMail : public ::testing::Test {
protected:
    void SetUp() override
    {
        resetglobals();
        g().homedir = platform::installfolder;
        g().serverip = "127.0.0.1";
        g().terminalno = "007";
        dialogs::reset();
        dialogs::setunattended(true);
        dialogs::cleartranscript();
        company("Test Motors", "Fred", "01234 567890");
        share = install.addshare("\\\\127.0.0.1\\tagstore");
        QDir().mkpath(QString::fromStdString(install.root() + "/LOGS"));
        QDir().mkpath(QString::fromStdString(install.drivec() + "/tarnbc"));
        form21().hide();
        form1().hide();
        form2().hide();
    }
    void TearDown() override
    {
        form21().hide();
        form1().hide();
        form2().hide();
    }
    static void company(const std::string& name, const std::string& user, const std::string& telephone)
    {
        form3().Company.settext(name);
        form3().User.settext(user);
        form3().Telephone.settext(telephone);
    }
    void mailserver(SmtpServer::Mode mode = SmtpServer::accept)
    {
        ASSERT_TRUE(server.start(mode)) << server.error();
        install.configure(server.mailsection("support=help@vexal.example\n"));
    }
    void put(const std::string& hostpath, const std::string& bytes) { TempInstall::writefile(hostpath, bytes); }
    std::string lastbox() const
    {
        const auto& t = dialogs::transcript();
        return t.empty() ? "" : t.back().title + ": " + t.back().text;
    }

    TempInstall install;
    SmtpServer server;
    std::string share;
};

TEST_F(SupportMail, PreparedFromTheCompanyDetails)
{
    const struct {
        const char *name, *user, *telephone;
        int savetype;
        std::string subject, text;
    } table[] = {
        {"Test Motors", "Fred", "01234 567890", 1, "Test Motors: Bench Clock Support Email", "From: Fred Tel: 01234 567890"},
        {"N/A", "Fred", "N/A", 2, "Bench Clock Support Email", "From: Fred"},
        {"", "Fred", "", 3, "Bench Clock Support Email", "From: Fred"},
        {"Test Motors", "N/A", "01234", 0, "Test Motors: Bench Clock Support Email", ""},
    };
    Form21& f = form21();
    for (const auto& row : table) {
        SCOPED_TRACE(row.subject + " / " + row.text);
        company(row.name, row.user, row.telephone);
        g().savetype = row.savetype;
        f.Att1.settext("0");
        f.preparemail();
        EXPECT_EQ(f.EmailSubject.value(), row.subject);
        EXPECT_EQ(f.EmailText.value(), row.text);
        EXPECT_EQ(f.Att1.value(), "1");
        EXPECT_EQ(f.Att2.value(), "1");
        EXPECT_EQ(f.Attach[1].picturelist(), "ColorIcons");
        EXPECT_EQ(f.CopyLogs.isEnabled(), row.savetype != 0);
        EXPECT_EQ(f.Label4[4].isEnabled(), row.savetype != 0);
        EXPECT_EQ(f.CopyLogs.picturelist(), row.savetype != 0 ? "ColorIcons" : "GreyIcons");
    }
    EXPECT_EQ(f.Label3.caption(), "Email To Be Sent To support@vexal.co.uk") << "the default support mailbox";

    // The ticks flip their flags and their pictures.
    emit f.Label4[2].clicked();
    EXPECT_EQ(f.Att1.value(), "0");
    EXPECT_EQ(f.Attach[1].picturelist(), "GreyIcons");
    emit f.Attach[2].clicked();
    emit f.Label4[3].clicked();
    emit f.Attach[1].clicked();
    EXPECT_EQ(f.Att1.value(), "1");
    EXPECT_EQ(f.Att2.value(), "1");
}

TEST_F(SupportMail, SettingsDataAndWeekdayLogsGoInIndexOrder)
{
    mailserver();
    put(install.root() + "/TAGSTORE.INI", "[SAVE]\r\nTYPE=1\r\n");
    put(install.drivec() + "/tarnbc/BARCODE.INI", "[FILES]\r\nFILES=002\r\n");
    put(install.drivec() + "/tarnbc/BAR001.INI", "[000000123]\r\n000=00120070309\r\n");
    put(install.drivec() + "/tarnbc/BAR003.INI", "three");
    put(share + "/BARCODE.007", "[FILES]\r\nFILES=001\r\n");
    put(share + "/BAR001.007", "store one");
    put(share + "/BAR002.INI", "not of this terminal");
    put(install.root() + "/LOGS/FRI_LOG.TXT", "friday");
    put(install.root() + "/LOGS/MON_LOG.TXT", "monday");
    put(install.root() + "/LOGS/09_LOG.TXT", "day nine");
    put(install.root() + "/LOGS/MON_DAT.TXT", "data log");
    g().savetype = 1;
    g().storestate = 0;
    Form21& f = form21();
    f.preparemail();
    mailreturn() = 1;
    g().pressedop = 1;
    f.show();
    emit f.Send.clicked();

    const auto mails = server.mails();
    ASSERT_EQ(mails.size(), 1u);
    EXPECT_EQ(mails[0].to, Names{"help@vexal.example"});
    EXPECT_EQ(mails[0].subject, "Test Motors: Bench Clock Support Email");
    EXPECT_EQ(mails[0].note.substr(0, 28), "From: Fred Tel: 01234 567890");
    EXPECT_EQ(names(mails[0]), (Names{"TAGSTORE.INI", "barcode.ini", "bar001.ini", "bar003.ini", "BARCODE.007",
                                      "BAR001.007", "MON_LOG.TXT", "FRI_LOG.TXT"}));
    EXPECT_EQ(mails[0].attachments[2].second, "[000000123]\r\n000=00120070309\r\n");
    EXPECT_EQ(mails[0].attachments[5].second, "store one");
    EXPECT_TRUE(f.isHidden());
    EXPECT_TRUE(form1().isVisible());
    EXPECT_EQ(g().pressedop, 0);

    // The store down: only the PC's files; no ticks: the note alone.
    g().storestate = 2;
    f.preparemail();
    emit f.Label4[3].clicked();
    f.sendthemail();
    f.preparemail();
    emit f.Label4[2].clicked();
    emit f.Label4[3].clicked();
    f.sendthemail();
    ASSERT_EQ(server.mails().size(), 3u);
    EXPECT_EQ(names(server.mails()[1]), (Names{"TAGSTORE.INI", "barcode.ini", "bar001.ini", "bar003.ini"}));
    EXPECT_EQ(names(server.mails()[2]), Names{"TAGSTORE.INI"});
}

TEST_F(SupportMail, NothingToSayAndNoSettingsFileStillSendsTheNote)
{
    mailserver();
    company("N/A", "N/A", "N/A");
    Form21& f = form21();
    f.preparemail();
    f.EmailSubject.settext("");
    emit f.Label4[2].clicked();
    emit f.Label4[3].clicked();
    mailreturn() = 2;
    emit f.Label4[0].clicked();
    const auto mails = server.mails();
    ASSERT_EQ(mails.size(), 1u);
    EXPECT_EQ(mails[0].subject, "Bench Clock Support Email");
    EXPECT_EQ(mails[0].note.substr(0, 20), "No Details Supplied!");
    EXPECT_TRUE(mails[0].attachments.empty()) << "index 0 stays empty without TAGSTORE.INI";
    EXPECT_TRUE(form2().isVisible());

    // With a weekday log but no settings file, the log goes from index 1 on.
    put(install.root() + "/LOGS/SUN_LOG.TXT", "sunday");
    f.preparemail();
    f.sendthemail();
    ASSERT_EQ(server.mails().size(), 2u);
    EXPECT_EQ(names(server.mails()[1]), Names{"SUN_LOG.TXT"});
}

TEST_F(SupportMail, AServerThatIsAwayKeepsTheScreenAndItsText)
{
    mailserver();
    server.stop();
    Form21& f = form21();
    f.preparemail();
    f.EmailText.settext("The scanner in bay 2 will not read");
    mailreturn() = 1;
    f.show();
    emit f.Send.clicked();
    const auto& box = dialogs::transcript().back();
    EXPECT_EQ(box.title, "VEXAL Scanner Interface");
    EXPECT_NE(box.text.find("mail server 127.0.0.1"), std::string::npos) << box.text;
    EXPECT_TRUE(f.isVisible());
    EXPECT_EQ(f.EmailText.value(), "The scanner in bay 2 will not read");
    EXPECT_TRUE(form1().isHidden());
    // A later send opens a fresh session.
    ASSERT_TRUE(server.start()) << server.error();
    install.configure(server.mailsection());
    f.sendthemail();
    EXPECT_EQ(server.mails().size(), 1u);
}

TEST_F(SupportMail, LogsAreCopiedToTheServerByWeekdayName)
{
    Form21& f = form21();
    put(install.root() + "/LOGS/MON_LOG.TXT", "monday");
    put(install.root() + "/LOGS/SAT_DAT.TXT", "saturday data");
    put(install.root() + "/LOGS/09_LOG.TXT", "day nine");

    g().savetype = 0;
    f.copythelogs();
    EXPECT_TRUE(dialogs::transcript().empty());

    g().savetype = 1;
    g().storedown = 1;
    emit f.Label4[4].clicked();
    EXPECT_EQ(lastbox(), "Server Unavailable: The server store folder appears to be unavailable! Check system status "
                         "for more information!");
    EXPECT_FALSE(QFile::exists(QString::fromStdString(share + "/MON_LOG.TXT")));

    g().storedown = 0;
    emit f.CopyLogs.clicked();
    EXPECT_EQ(lastbox(), "Files Copied: All available log files have been copied to the server for support!");
    EXPECT_EQ(TempInstall::readfile(share + "/MON_LOG.TXT"), "monday");
    EXPECT_EQ(TempInstall::readfile(share + "/SAT_DAT.TXT"), "saturday data");
    EXPECT_EQ(QDir(QString::fromStdString(share)).entryList(QDir::Files).size(), 2) << "day-numbered logs stay";
}

TEST_F(SupportMail, CancelSendsNothing)
{
    mailserver();
    Form21& f = form21();
    f.preparemail();
    mailreturn() = 2;
    f.show();
    emit f.Delete.clicked();
    EXPECT_TRUE(f.isHidden());
    EXPECT_TRUE(form2().isVisible());
    mailreturn() = 1;
    f.show();
    f.close();
    EXPECT_TRUE(form1().isVisible());
    EXPECT_TRUE(server.mails().empty());
}

TEST_F(SupportMail, TheHelpMenuPreparesTheScreenAndPassesItsWayBack)
{
    g().savetype = 0;
    helpreturn() = 2;
    form18().show();
    emit form18().HelpLabel[4].clicked();
    EXPECT_TRUE(form18().isHidden());
    EXPECT_TRUE(form21().isVisible());
    EXPECT_EQ(mailreturn(), 2);
    EXPECT_EQ(form21().EmailSubject.value(), "Test Motors: Bench Clock Support Email");
    EXPECT_FALSE(form21().CopyLogs.isEnabled());
}

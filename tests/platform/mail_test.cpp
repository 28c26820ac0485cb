#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

#include "platform/mail.h"
#include "runtime/fault.h"
#include "support/loopback.h"
#include "support/smtpserver.h"
#include "support/tempinstall.h"

namespace {

// platform.ini the owner's alone, as a password demands.
void private_(const TempInstall& t)
{
    QFile::setPermissions(QString::fromStdString(t.root() + "/platform.ini"), QFile::ReadOwner | QFile::WriteOwner);
}

struct Sent {
    int number = 0;          // 0: sent
    std::string description;
};

// One message through a fresh session: recipient, subject, note and attachments by index.
Sent send(const std::string& to, const std::map<int, std::string>& attachments = {},
          const std::string& subject = "Subject", const std::string& note = "Note")
{
    MAPISession session;
    MAPIMessages message;
    try {
        session.SignOn();
        message.SessionID = session.SessionID();
        message.Compose();
        message.RecipIndex = 0;
        message.RecipType = 1;
        message.RecipAddress = to;
        message.MsgSubject = subject;
        message.MsgNoteText = note;
        for (const auto& [index, path] : attachments) {
            message.AttachmentIndex = index;
            message.setAttachmentPathName(path);
        }
        message.Send(false);
        session.SignOff();
    } catch (const Fault& f) {
        return {f.number, f.description};
    }
    return {};
}

TEST(Mail, DeliversRecipientSubjectNoteAndAttachmentsInIndexOrder)
{
    SmtpServer server;
    ASSERT_TRUE(server.start()) << server.error();
    TempInstall t(server.mailsection());
    const std::string binary("\x00\x01\r\n\xff\xfe line\r\n", 13);
    QDir().mkpath(QString::fromStdString(t.drivec() + "/tarnbc/exports"));
    TempInstall::writefile(t.drivec() + "/tarnbc/exports/export_042_2024315930.txt", "0112345678,251224,0830\r\n");
    TempInstall::writefile(t.drivec() + "/tarnbc/exports/raw.bin", binary);

    // Index 0 left empty carries nothing; the others go in index order, not name order.
    Sent r = send("head.office@example.com",
                  {{2, "c:\\tarnbc\\exports\\export_042_2024315930.txt"}, {1, "C:\\TARNBC\\EXPORTS\\RAW.BIN"}},
                  "Workshop Time Clock Files From Caf\xe9", "Please save all files to c:\\tarnbc\\imports\r\nThanks");
    ASSERT_EQ(r.number, 0) << r.description;

    auto mails = server.mails();
    ASSERT_EQ(mails.size(), 1u);
    const auto& m = mails[0];
    EXPECT_EQ(m.from, "branch@example.com");
    EXPECT_EQ(m.to, std::vector<std::string>{"head.office@example.com"});
    EXPECT_EQ(m.subject, "Workshop Time Clock Files From Caf\xe9");
    EXPECT_EQ(m.note, "Please save all files to c:\\tarnbc\\imports\r\nThanks");
    ASSERT_EQ(m.attachments.size(), 2u);
    EXPECT_EQ(m.attachments[0].first, "RAW.BIN");
    EXPECT_EQ(m.attachments[0].second, binary);
    EXPECT_EQ(m.attachments[1].first, "export_042_2024315930.txt");
    EXPECT_EQ(m.attachments[1].second, "0112345678,251224,0830\r\n");

    // A subject cannot carry a header of its own.
    r = send("head.office@example.com", {}, "Files\r\nBcc: someone@example.com");
    ASSERT_EQ(r.number, 0) << r.description;
    mails = server.mails();
    ASSERT_EQ(mails.size(), 2u);
    EXPECT_EQ(mails[1].to, std::vector<std::string>{"head.office@example.com"});
    EXPECT_EQ(mails[1].subject, "Files  Bcc: someone@example.com");
    EXPECT_TRUE(mails[1].attachments.empty());
}

// Every way a send can fail ends in its own number and words, and nothing is sent.
TEST(Mail, FailuresSayWhatWentWrong)
{
    struct Case {
        const char* legend;
        SmtpServer::Mode mode;
        std::string to;
        int number;
        std::string words;
    };
    const std::vector<Case> cases = {
        {"recipient refused", SmtpServer::refuserecipient, "nobody@example.com", mail::unknownrecipient,
         "refused the recipient nobody@example.com (550)"},
        {"mail refused", SmtpServer::refusemail, "ho@example.com", mail::failure, "refused the mail (554)"},
        {"dropped in the middle", SmtpServer::drop, "ho@example.com", mail::networkfailure,
         "closed the connection before the mail was sent"},
        {"no recipient", SmtpServer::accept, "", mail::unknownrecipient, "There is no e-mail address"},
        {"not an address", SmtpServer::accept, "head office", mail::unknownrecipient,
         "The mail recipient \"head office\" is not an e-mail address"},
    };
    for (const Case& c : cases) {
        SmtpServer server;
        ASSERT_TRUE(server.start(c.mode)) << server.error();
        TempInstall t(server.mailsection());
        const Sent r = send(c.to);
        EXPECT_EQ(r.number, c.number) << c.legend << ": " << r.description;
        EXPECT_NE(r.description.find(c.words), std::string::npos) << c.legend << ": " << r.description;
        EXPECT_TRUE(server.mails().empty()) << c.legend;
    }

    const int closed = freeport();
    TempInstall t("[mail]\nserver=smtp://127.0.0.1:" + std::to_string(closed) + "\n");
    Sent r = send("ho@example.com");
    EXPECT_EQ(r.number, mail::networkfailure);
    EXPECT_EQ(r.description, "Could not connect to the mail server 127.0.0.1:" + std::to_string(closed));

    // A missing attachment stops the send before the server is asked.
    r = send("ho@example.com", {{0, "c:\\tarnbc\\exports\\gone.txt"}});
    EXPECT_EQ(r.number, mail::attachmentnotfound);
    EXPECT_EQ(r.description, "The file to attach was not found: c:\\tarnbc\\exports\\gone.txt");

    // Settings that cannot work are said at SignOn.
    t.configure("[mail]\nserver=mail.example.com\n");
    EXPECT_EQ(send("ho@example.com").number, mail::failure);
    t.configure("[mail]\ntls=maybe\n");
    EXPECT_NE(send("ho@example.com").description.find("must be auto, required or off"), std::string::npos);

    // A message without an open session.
    MAPIMessages message;
    message.Compose();
    message.RecipAddress = "ho@example.com";
    try {
        message.Send();
        ADD_FAILURE() << "sent without a session";
    } catch (const Fault& f) {
        EXPECT_EQ(f.number, mail::invalidsession);
    }
}

TEST(Mail, LogInAndSecureConnection)
{
    SmtpServer server;
    server.requirelogin("branch", "s3cret");
    ASSERT_TRUE(server.start()) << server.error();
    TempInstall t(server.mailsection());

    // A password in a file that others can read is not used.
    QFile::setPermissions(QString::fromStdString(t.root() + "/platform.ini"),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther);
    Sent r = send("ho@example.com");
    EXPECT_EQ(r.number, mail::loginfailure);
    EXPECT_NE(r.description.find("chmod 600"), std::string::npos) << r.description;

    private_(t);
    r = send("ho@example.com");
    EXPECT_EQ(r.number, 0) << r.description;

    t.configure("[mail]\nserver=" + server.url() + "\nuser=branch\npassword=wrong\n");
    private_(t);
    r = send("ho@example.com");
    EXPECT_EQ(r.number, mail::loginfailure) << r.description;
    EXPECT_EQ(server.mails().size(), 1u);

    // tls=required against a server without STARTTLS sends nothing.
    t.configure("[mail]\nserver=" + server.url() + "\ntls=required\n");
    r = send("ho@example.com");
    EXPECT_EQ(r.number, mail::notsupported) << r.description;

    SmtpServer secure;
    secure.offertls();
    ASSERT_TRUE(secure.start()) << secure.error();
    t.configure(secure.mailsection());
    r = send("ho@example.com", {}, "Over TLS");
    ASSERT_EQ(r.number, 0) << r.description;
    ASSERT_EQ(secure.mails().size(), 1u);
    EXPECT_EQ(secure.mails()[0].subject, "Over TLS");

    // Without the site's certificate the secure connection is not trusted.
    t.configure("[mail]\nserver=" + secure.url() + "\ntls=required\n");
    EXPECT_EQ(send("ho@example.com").number, mail::notsupported);
}

TEST(Mail, AddressesAndDefaults)
{
    for (const char* good : {"ho@example.com", "a.b-c+d@mail.example.co.uk", "x@localhost"})
        EXPECT_TRUE(mail::isaddress(good)) << good;
    for (const char* bad : {"", "example.com", "@example.com", "ho@", "a@b@c", "h o@example.com", "<ho@example.com>",
                            "ho@example.com\r\nRCPT TO:<x@y>", "ho@.example.com", "ho@example..com", "a,b@c.com"})
        EXPECT_FALSE(mail::isaddress(bad)) << bad;

    TempInstall t;
    const mail::Settings s = mail::settings();
    EXPECT_EQ(s.server, "smtp://localhost:25");
    EXPECT_EQ(s.tls, "auto");
    EXPECT_NE(s.from.find("vexalbc@"), std::string::npos);
    EXPECT_EQ(mail::supportaddress(), "support@vexal.co.uk");
    t.configure("[mail]\nsupport=help@example.com\n");
    EXPECT_EQ(mail::supportaddress(), "help@example.com");
}

}  // namespace

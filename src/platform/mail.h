// The two mail controls of the monitor form, MAPISession1 and MAPIMessages1, over SMTP.
//
// A session is what a send needs: the [mail] settings of platform.ini, read and checked at
// SignOn. A message is composed on MAPIMessages1 (recipient, subject, note, attachments by
// index) and Send delivers it through libcurl's SMTP with MIME attachments. Send waits for
// the server while letting the screens' events run, so the program stays alive while a slow
// server answers; a second Send while one waits is refused.
//
// platform.ini [mail]:
//   server    smtp://host:port (smtps://host:port for TLS from the start)   default smtp://localhost:25
//   from      the sender's address                                          default vexalbc@<this host>
//   user      log-in name at the server, if it asks for one                 default none
//   password  its password (keep platform.ini mode 0600: a password in a file that others can
//             read is refused)
//   tls       auto (STARTTLS when the server offers it), required (no send without it), off
//   cafile    certificates to trust besides the system's (a site's own mail server)
//   support   the support mailbox                                           default support@vexal.co.uk
//
// Every failure raises a Fault with one of the numbers below and a description that a
// workshop user can act on ("Could not connect to the mail server 127.0.0.1:25").
#pragma once

#include <map>
#include <string>

namespace mail {

// Fault numbers of the mail controls.
constexpr int failure = 32002;          // the server refused the mail, or another failure
constexpr int loginfailure = 32003;     // log-in refused, or a password other users can read
constexpr int attachmentnotfound = 32011;
constexpr int unknownrecipient = 32014; // not an address, or refused by the server
constexpr int invalidsession = 32019;   // no open session behind the message
constexpr int messageinuse = 32022;     // a send while another one waits
constexpr int networkfailure = 32023;   // no connection, or the connection dropped
constexpr int notsupported = 32026;     // a secure connection required but not to be had

struct Settings {
    std::string server;    // smtp://host:port
    std::string from;
    std::string user;
    std::string password;
    std::string tls;       // auto, required, off
    std::string cafile;
    std::string support;
};

// The [mail] settings with their defaults.
Settings settings();
// The support mailbox.
std::string supportaddress();
// Whether `text` is a single plain e-mail address (name@domain, no blanks or brackets).
bool isaddress(const std::string& text);

}  // namespace mail

// MAPISession1: SessionID 0 while no session is open.
class MAPISession {
public:
    ~MAPISession();
    long SessionID() const { return id_; }
    // Reads and checks the [mail] settings. Raises loginfailure for a password in a file
    // others can read, failure for a server address that is not smtp:// or smtps://.
    void SignOn();
    void SignOff();

private:
    long id_ = 0;
};

// MAPIMessages1: one message at a time, composed and sent on an open session.
class MAPIMessages {
public:
    long SessionID = 0;
    // Begins a new message: recipient, subject, note and attachments cleared.
    void Compose();

    int RecipIndex = 0;
    int RecipType = 1;            // 1: a direct recipient
    std::string RecipAddress;
    bool AddressResolveUI = false;
    std::string MsgSubject;
    std::string MsgNoteText;

    // AttachmentPathName sets the Windows path of the attachment at AttachmentIndex. An
    // index left without a path carries nothing.
    int AttachmentIndex = 0;
    void setAttachmentPathName(const std::string& path);
    std::string AttachmentPathName() const;
    int AttachmentCount() const { return (int)attachments_.size(); }

    // Sends the message: the recipient, subject and note, the attachments in index order,
    // each under its file name. Raises a mail fault when it cannot; nothing is sent then.
    void Send(bool dialog = false);

private:
    std::map<int, std::string> attachments_;
};

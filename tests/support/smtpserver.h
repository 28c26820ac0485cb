// A mail server for the tests: Debian's python3-aiosmtpd on a loopback port. Each mail it
// takes is parsed by Python's own e-mail package and kept as one record (envelope, subject,
// note, attachments with their bytes) that the tests read back. It can also refuse the
// recipient, refuse the mail, drop the connection in the middle of a send, ask for a log-in,
// and offer STARTTLS with a certificate it makes for itself.
#pragma once

#include <QProcess>
#include <QTemporaryDir>
#include <string>
#include <utility>
#include <vector>

class SmtpServer {
public:
    enum Mode { accept, refuserecipient, refusemail, drop };

    struct Mail {
        std::string from;                  // envelope sender
        std::vector<std::string> to;       // envelope recipients
        std::string subject;               // decoded
        std::string note;                  // the text part, decoded, as Latin-1
        std::vector<std::pair<std::string, std::string>> attachments;  // name, bytes, in order
    };

    SmtpServer() = default;
    ~SmtpServer();
    SmtpServer(const SmtpServer&) = delete;
    SmtpServer& operator=(const SmtpServer&) = delete;

    // Before start: a log-in the server demands; STARTTLS offered (and demanded).
    void requirelogin(const std::string& user, const std::string& password);
    void offertls();

    // Starts serving; false (with the reason in `error()`) when the server does not come up.
    bool start(Mode mode = accept);
    void stop();
    int port() const { return port_; }
    std::string url() const { return "smtp://127.0.0.1:" + std::to_string(port_); }
    // The [mail] section of platform.ini that sends here (`extra` lines added).
    std::string mailsection(const std::string& extra = "") const;
    // The certificate to trust for STARTTLS (after offertls and start).
    std::string certificate() const { return folder_.path().toStdString() + "/cert.pem"; }
    // The mails taken so far, in the order they came.
    std::vector<Mail> mails() const;
    const std::string& error() const { return why_; }

private:
    QTemporaryDir folder_;
    QProcess server_;
    int port_ = 0;
    std::string user_, password_;
    bool tls_ = false;
    std::string why_;
};

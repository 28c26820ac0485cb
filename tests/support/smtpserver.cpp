#include "support/smtpserver.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QThread>

#include "support/loopback.h"
#include "support/tempinstall.h"

namespace {

// The server: aiosmtpd's controller on 127.0.0.1, one JSON record per mail taken, written
// whole (a temporary name, then renamed) before the server answers the mail's end.
const char* script = R"PY(
import asyncio, base64, email, email.policy, json, logging, os, ssl, sys, threading, warnings
warnings.filterwarnings('ignore')
logging.getLogger('mail.log').setLevel(logging.CRITICAL)
from aiosmtpd.controller import Controller
from aiosmtpd.smtp import AuthResult

folder, port, mode, user, password, tls = sys.argv[1:7]

class Handler:
    count = 0
    async def handle_RCPT(self, server, session, envelope, address, rcpt_options):
        if mode == 'refuserecipient':
            return '550 5.1.1 No such mailbox here'
        envelope.rcpt_tos.append(address)
        return '250 OK'
    async def handle_DATA(self, server, session, envelope):
        if mode == 'drop':
            server.transport.abort()
            return '451 gone'
        if mode == 'refusemail':
            return '554 5.6.0 Message refused'
        msg = email.message_from_bytes(envelope.original_content, policy=email.policy.default)
        note, parts = '', []
        for part in msg.walk():
            if part.is_multipart():
                continue
            name = part.get_filename()
            if name is not None:
                parts.append({'name': name, 'data': base64.b64encode(part.get_payload(decode=True)).decode()})
            elif part.get_content_type() == 'text/plain':
                note = part.get_payload(decode=True).decode(part.get_content_charset() or 'latin-1')
        Handler.count += 1
        record = {'from': envelope.mail_from, 'to': envelope.rcpt_tos, 'subject': str(msg['subject'] or ''),
                  'note': note, 'attachments': parts}
        path = os.path.join(folder, 'mail_%04d.json' % Handler.count)
        with open(path + '.tmp', 'w') as f:
            json.dump(record, f)
        os.replace(path + '.tmp', path)
        return '250 Message accepted'

def authenticator(server, session, envelope, mechanism, auth_data):
    good = auth_data.login.decode() == user and auth_data.password.decode() == password
    return AuthResult(success=good, handled=False)

options = {}
if user:
    options.update(authenticator=authenticator, auth_required=True, auth_require_tls=False)
if tls == '1':
    context = ssl.create_default_context(ssl.Purpose.CLIENT_AUTH)
    context.load_cert_chain(os.path.join(folder, 'cert.pem'), os.path.join(folder, 'key.pem'))
    options.update(tls_context=context, require_starttls=True)
controller = Controller(Handler(), hostname='127.0.0.1', port=int(port), **options)
controller.start()
print('ready', flush=True)
threading.Event().wait()
)PY";

std::string text(const QJsonValue& v) { return v.toString().toLatin1().toStdString(); }

}  // namespace

SmtpServer::~SmtpServer() { stop(); }

void SmtpServer::requirelogin(const std::string& user, const std::string& password)
{
    user_ = user;
    password_ = password;
}

void SmtpServer::offertls() { tls_ = true; }

bool SmtpServer::start(Mode mode)
{
    static const char* modes[] = {"accept", "refuserecipient", "refusemail", "drop"};
    const std::string dir = folder_.path().toStdString();
    TempInstall::writefile(dir + "/server.py", script);
    if (tls_) {
        QProcess openssl;
        openssl.start("openssl", {"req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "1", "-subj", "/CN=127.0.0.1",
                                  "-addext", "subjectAltName=IP:127.0.0.1", "-keyout", folder_.path() + "/key.pem",
                                  "-out", folder_.path() + "/cert.pem"});
        if (!openssl.waitForFinished(20000) || openssl.exitCode() != 0) {
            why_ = "openssl could not make a certificate";
            return false;
        }
    }
    port_ = freeport();
    server_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    server_.start("/usr/bin/python3",
                  {QString::fromStdString(dir + "/server.py"), folder_.path(), QString::number(port_), modes[mode],
                   QString::fromStdString(user_), QString::fromStdString(password_), tls_ ? "1" : "0"});
    if (!server_.waitForStarted(5000)) {
        why_ = "cannot start /usr/bin/python3 with aiosmtpd";
        return false;
    }
    for (int i = 0; i < 200 && !server_.canReadLine() && server_.state() == QProcess::Running; ++i)
        server_.waitForReadyRead(50);
    if (!server_.readLine().startsWith("ready") || !listening(port_)) {
        why_ = "the SMTP server did not come up on port " + std::to_string(port_) + " (is python3-aiosmtpd installed?)";
        return false;
    }
    return true;
}

void SmtpServer::stop()
{
    if (server_.state() == QProcess::NotRunning) return;
    server_.kill();
    server_.waitForFinished(2000);
}

std::string SmtpServer::mailsection(const std::string& extra) const
{
    std::string s = "[mail]\nserver=" + url() + "\nfrom=branch@example.com\n";
    if (!user_.empty()) s += "user=" + user_ + "\npassword=" + password_ + "\n";
    if (tls_) s += "tls=required\ncafile=" + certificate() + "\n";
    return s + extra;
}

std::vector<SmtpServer::Mail> SmtpServer::mails() const
{
    std::vector<Mail> out;
    const QStringList names = QDir(folder_.path()).entryList({"mail_*.json"}, QDir::Files, QDir::Name);
    for (const QString& name : names) {
        const QJsonObject o =
            QJsonDocument::fromJson(QByteArray::fromStdString(TempInstall::readfile(folder_.path().toStdString() + "/" +
                                                                                    name.toStdString())))
                .object();
        Mail m;
        m.from = text(o["from"]);
        for (const QJsonValue& to : o["to"].toArray()) m.to.push_back(text(to));
        m.subject = text(o["subject"]);
        m.note = text(o["note"]);
        for (const QJsonValue& a : o["attachments"].toArray())
            m.attachments.emplace_back(text(a["name"]),
                                       QByteArray::fromBase64(a["data"].toString().toLatin1()).toStdString());
        out.push_back(std::move(m));
    }
    return out;
}

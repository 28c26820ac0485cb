#include "platform/mail.h"

#include <QCoreApplication>
#include <QDateTime>
#include <curl/curl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/files.h"
#include "platform/paths.h"
#include "runtime/fault.h"
#include "runtime/vb.h"

namespace {

std::map<long, mail::Settings>& sessions()
{
    static std::map<long, mail::Settings> open;
    return open;
}

long nextsession = 0;
bool sending = false;

[[noreturn]] void fail(int number, const std::string& text) { throw Fault(number, text); }

std::string thishost()
{
    char name[256] = {0};
    if (gethostname(name, sizeof name - 1) != 0 || !name[0]) return "localhost";
    return name;
}

// "host:port" of the server address, for the messages.
std::string hostport(const std::string& server)
{
    std::string rest = server;
    const auto scheme = rest.find("://");
    const bool secure = LCase(rest.substr(0, scheme == std::string::npos ? 0 : scheme)) == "smtps";
    if (scheme != std::string::npos) rest = rest.substr(scheme + 3);
    rest = rest.substr(0, rest.find('/'));
    const auto at = rest.rfind('@');
    if (at != std::string::npos) rest = rest.substr(at + 1);
    if (rest.find(':') == std::string::npos || (rest[0] == '[' && rest.back() == ']'))
        rest += secure ? ":465" : ":25";
    return rest;
}

// A header value on one line: line breaks would start headers of their own.
std::string oneline(const std::string& text)
{
    std::string out = text;
    for (char& c : out)
        if (c == '\r' || c == '\n') c = ' ';
    return out;
}

// The program's texts are single-byte Latin-1: a subject with other than plain ASCII goes
// as an encoded word.
std::string headertext(const std::string& text)
{
    const std::string line = oneline(text);
    bool plain = true;
    for (unsigned char c : line)
        if (c >= 0x80) plain = false;
    if (plain) return line;
    return "=?ISO-8859-1?B?" + QByteArray::fromStdString(line).toBase64().toStdString() + "?=";
}

// The last component of a Windows path.
std::string filename(const std::string& path)
{
    const auto cut = path.find_last_of("\\/");
    return cut == std::string::npos ? path : path.substr(cut + 1);
}

// A password is kept only in platform.ini, and that file must be the owner's alone.
void checkpasswordfile(const mail::Settings& s)
{
    if (s.password.empty()) return;
    const std::string file = platform::hostinstalldir() + "/platform.ini";
    struct stat st;
    if (::stat(file.c_str(), &st) == 0 && (st.st_mode & 077) != 0)
        fail(mail::loginfailure, "The mail password in " + file +
                                     " can be read by other users: make the file private (chmod 600)");
}

void checksettings(const mail::Settings& s)
{
    const std::string scheme = LCase(s.server.substr(0, s.server.find("://")));
    if (s.server.find("://") == std::string::npos || (scheme != "smtp" && scheme != "smtps"))
        fail(mail::failure, "The mail server in platform.ini is not an smtp:// address: \"" + s.server + "\"");
    if (s.tls != "auto" && s.tls != "required" && s.tls != "off")
        fail(mail::failure, "The tls setting of [mail] in platform.ini must be auto, required or off, not \"" +
                                s.tls + "\"");
    checkpasswordfile(s);
}

struct Attachment {
    std::string name;
    std::string bytes;
};

// Reads the attachments in index order before anything is sent.
std::vector<Attachment> readattachments(const std::map<int, std::string>& paths)
{
    std::vector<Attachment> out;
    for (const auto& [index, path] : paths) {
        if (path.empty()) continue;
        try {
            out.push_back({filename(path), files::readall(path)});
        } catch (const std::exception& e) {
            const Fault f = Fault::from(e);
            if (f.number == fault::filenotfound || f.number == fault::pathnotfound || f.number == fault::badfilename)
                fail(mail::attachmentnotfound, "The file to attach was not found: " + path);
            fail(mail::attachmentnotfound, "The file to attach could not be read: " + path + " (" + f.description + ")");
        }
    }
    return out;
}

// Runs the transfer, letting the screens' events run while the server is waited for.
CURLcode perform(CURL* curl)
{
    CURLM* multi = curl_multi_init();
    if (!multi) return CURLE_OUT_OF_MEMORY;
    curl_multi_add_handle(multi, curl);
    CURLcode result = CURLE_OK;
    int running = 1;
    while (running) {
        if (curl_multi_perform(multi, &running) != CURLM_OK) {
            result = CURLE_FAILED_INIT;
            break;
        }
        if (!running) break;
        curl_multi_poll(multi, nullptr, 0, 50, nullptr);
        if (QCoreApplication::instance()) QCoreApplication::processEvents();
    }
    int left = 0;
    while (CURLMsg* msg = curl_multi_info_read(multi, &left))
        if (msg->msg == CURLMSG_DONE) result = msg->data.result;
    curl_multi_remove_handle(multi, curl);
    curl_multi_cleanup(multi);
    return result;
}

// A transfer's failure as the mail fault a user can act on.
[[noreturn]] void failsend(CURLcode code, long response, const std::string& detail, const std::string& server,
                           const std::string& recipient)
{
    const std::string where = hostport(server);
    const std::string why = detail.empty() ? curl_easy_strerror(code) : detail;
    switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_CONNECT:
        fail(mail::networkfailure, "Could not connect to the mail server " + where);
    case CURLE_OPERATION_TIMEDOUT:
        fail(mail::networkfailure, "The mail server " + where + " did not answer in time");
    case CURLE_LOGIN_DENIED:
        fail(mail::loginfailure, "The mail server " + where + " refused the user name or password");
    case CURLE_USE_SSL_FAILED:
        fail(mail::notsupported, "The mail server " + where +
                                     " offers no secure connection, and platform.ini requires one (tls=required)");
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_CERTPROBLEM:
        fail(mail::notsupported, "The secure connection to the mail server " + where + " failed: " + why);
    default:
        break;
    }
    if (response >= 400) {
        const std::string reply = " (" + std::to_string(response) + ")";
        if (why.find("RCPT") != std::string::npos)
            fail(mail::unknownrecipient, "The mail server " + where + " refused the recipient " + recipient + reply);
        if (response == 530 || response == 535 || response == 534)
            fail(mail::loginfailure, "The mail server " + where + " refused the user name or password" + reply);
        fail(mail::failure, "The mail server " + where + " refused the mail" + reply);
    }
    if (code == CURLE_GOT_NOTHING || code == CURLE_SEND_ERROR || code == CURLE_RECV_ERROR ||
        code == CURLE_WEIRD_SERVER_REPLY || code == CURLE_PARTIAL_FILE)
        fail(mail::networkfailure, "The mail server " + where + " closed the connection before the mail was sent");
    fail(mail::failure, "The mail could not be sent through " + where + ": " + why);
}

struct Transfer {
    CURL* curl = curl_easy_init();
    curl_mime* mime = nullptr;
    curl_slist* headers = nullptr;
    curl_slist* rcpt = nullptr;
    ~Transfer()
    {
        if (mime) curl_mime_free(mime);
        curl_slist_free_all(headers);
        curl_slist_free_all(rcpt);
        if (curl) curl_easy_cleanup(curl);
    }
};

void addpart(curl_mime* mime, const std::string& bytes, const char* type, const char* encoder, const std::string& name)
{
    curl_mimepart* part = curl_mime_addpart(mime);
    curl_mime_data(part, bytes.data(), bytes.size());
    curl_mime_type(part, type);
    curl_mime_encoder(part, encoder);
    if (!name.empty()) curl_mime_filename(part, name.c_str());
}

}  // namespace

namespace mail {

Settings settings()
{
    Settings s;
    s.server = platform::setting("mail", "server", "smtp://localhost:25");
    if (s.server.empty()) s.server = "smtp://localhost:25";
    s.from = platform::setting("mail", "from", "");
    if (s.from.empty()) s.from = "vexalbc@" + thishost();
    s.user = platform::setting("mail", "user", "");
    s.password = platform::setting("mail", "password", "");
    s.tls = LCase(platform::setting("mail", "tls", "auto"));
    if (s.tls.empty()) s.tls = "auto";
    s.cafile = platform::setting("mail", "cafile", "");
    s.support = platform::setting("mail", "support", "");
    if (s.support.empty()) s.support = "support@vexal.co.uk";
    return s;
}

std::string supportaddress() { return settings().support; }

bool isaddress(const std::string& text)
{
    const auto at = text.find('@');
    if (at == std::string::npos || at == 0 || at + 1 >= text.size() || text.find('@', at + 1) != std::string::npos)
        return false;
    for (unsigned char c : text)
        if (c <= ' ' || c >= 0x7f || c == '<' || c == '>' || c == ',' || c == ';' || c == '"' || c == '(' ||
            c == ')' || c == '[' || c == ']' || c == '\\')
            return false;
    const std::string domain = text.substr(at + 1);
    return domain.front() != '.' && domain.back() != '.' && domain.find("..") == std::string::npos;
}

}  // namespace mail

MAPISession::~MAPISession()
{
    if (id_ != 0) sessions().erase(id_);
}

void MAPISession::SignOn()
{
    mail::Settings s = mail::settings();
    checksettings(s);
    static bool ready = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
    if (!ready) fail(mail::failure, "The mail system could not be started");
    if (id_ != 0) sessions().erase(id_);
    id_ = ++nextsession;
    sessions()[id_] = s;
}

void MAPISession::SignOff()
{
    if (id_ == 0) fail(mail::invalidsession, "No mail session is open");
    sessions().erase(id_);
    id_ = 0;
}

void MAPIMessages::Compose()
{
    RecipIndex = 0;
    RecipType = 1;
    RecipAddress.clear();
    MsgSubject.clear();
    MsgNoteText.clear();
    AttachmentIndex = 0;
    attachments_.clear();
}

void MAPIMessages::setAttachmentPathName(const std::string& path)
{
    if (AttachmentIndex < 0) fail(fault::invalidcall, faultdescription(fault::invalidcall));
    attachments_[AttachmentIndex] = path;
}

std::string MAPIMessages::AttachmentPathName() const
{
    auto it = attachments_.find(AttachmentIndex);
    return it == attachments_.end() ? "" : it->second;
}

void MAPIMessages::Send(bool)
{
    auto open = sessions().find(SessionID);
    if (SessionID == 0 || open == sessions().end()) fail(mail::invalidsession, "No mail session is open");
    if (sending) fail(mail::messageinuse, "A mail is being sent already: try again when it has gone");
    const mail::Settings s = open->second;
    const std::string recipient = trimblanks(RecipAddress);
    if (recipient.empty()) fail(mail::unknownrecipient, "There is no e-mail address to send the mail to");
    if (!mail::isaddress(recipient))
        fail(mail::unknownrecipient, "The mail recipient \"" + recipient + "\" is not an e-mail address");
    const std::vector<Attachment> parts = readattachments(attachments_);

    Transfer t;
    if (!t.curl) fail(mail::failure, "The mail system could not be started");
    char detail[CURL_ERROR_SIZE] = {0};
    curl_easy_setopt(t.curl, CURLOPT_ERRORBUFFER, detail);
    curl_easy_setopt(t.curl, CURLOPT_URL, s.server.c_str());
    curl_easy_setopt(t.curl, CURLOPT_MAIL_FROM, ("<" + s.from + ">").c_str());
    t.rcpt = curl_slist_append(t.rcpt, ("<" + recipient + ">").c_str());
    curl_easy_setopt(t.curl, CURLOPT_MAIL_RCPT, t.rcpt);
    if (!s.user.empty()) {
        curl_easy_setopt(t.curl, CURLOPT_USERNAME, s.user.c_str());
        curl_easy_setopt(t.curl, CURLOPT_PASSWORD, s.password.c_str());
    }
    curl_easy_setopt(t.curl, CURLOPT_USE_SSL,
                     s.tls == "required" ? (long)CURLUSESSL_ALL : s.tls == "off" ? (long)CURLUSESSL_NONE
                                                                    : (long)CURLUSESSL_TRY);
    if (!s.cafile.empty()) curl_easy_setopt(t.curl, CURLOPT_CAINFO, s.cafile.c_str());
    curl_easy_setopt(t.curl, CURLOPT_CONNECTTIMEOUT, 30L);
    curl_easy_setopt(t.curl, CURLOPT_SERVER_RESPONSE_TIMEOUT, 60L);
    curl_easy_setopt(t.curl, CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(t.curl, CURLOPT_LOW_SPEED_TIME, 60L);
    curl_easy_setopt(t.curl, CURLOPT_NOSIGNAL, 1L);

    const std::string date = QDateTime::currentDateTime().toString(Qt::RFC2822Date).toStdString();
    for (const std::string& h : {"Date: " + date, "From: <" + s.from + ">", "To: <" + recipient + ">",
                                 "Subject: " + headertext(MsgSubject), std::string("X-Mailer: vexalbc")})
        t.headers = curl_slist_append(t.headers, h.c_str());
    curl_easy_setopt(t.curl, CURLOPT_HTTPHEADER, t.headers);

    t.mime = curl_mime_init(t.curl);
    addpart(t.mime, MsgNoteText, "text/plain; charset=ISO-8859-1", "quoted-printable", "");
    for (const Attachment& a : parts) addpart(t.mime, a.bytes, "application/octet-stream", "base64", a.name);
    curl_easy_setopt(t.curl, CURLOPT_MIMEPOST, t.mime);

    struct Busy {
        Busy() { sending = true; }
        ~Busy() { sending = false; }
    };
    CURLcode code;
    {
        Busy busy;
        code = perform(t.curl);
    }
    long response = 0;
    curl_easy_getinfo(t.curl, CURLINFO_RESPONSE_CODE, &response);
    if (code != CURLE_OK) failsend(code, response, detail, s.server, recipient);
}

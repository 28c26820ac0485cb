#include "platform/opl.h"

#include <QMetaObject>
#include <chrono>
#include <cstdio>

#include "platform/loaddll.h"
#include "platform/opl_link.h"
#include "platform/paths.h"
#include "core/runtimeerror.h"

namespace opl {
namespace {

std::string com(int port) { return "COM" + std::to_string(port); }

}  // namespace

Control::Control(QObject* parent) : QObject(parent) {}

Control::~Control()
{
    stopdownload();
    loader_.reset();
    if (owner_) closeshared(port_);
}

void Control::setport(int port) { port_ = port; }

void Control::settarget(const std::string& file) { target_ = file; }

void Control::post(std::function<void()> f)
{
    QMetaObject::invokeMethod(this, guard(std::move(f)), Qt::QueuedConnection);
}

int Control::fail(int status, const std::string& text)
{
    emit Error(QString::fromLatin1(text.c_str()));
    return status;
}

std::shared_ptr<Link> Control::link() { return linkfor(port_); }

int Control::openport()
{
    bool wasopen = sharedlink(port_) != nullptr;
    if (!openshared(port_)) return fail(statusnoport, "Unable to open port " + com(port_));
    if (!wasopen) owner_ = true;
    return statusok;
}

int Control::closeport()
{
    stopdownload();
    closeshared(port_);
    owner_ = false;
    return statusok;
}

int Control::request(uint8_t command, const std::vector<uint8_t>& payload, std::vector<uint8_t>& data,
                     const char* what)
{
    data.clear();
    auto l = link();
    if (!l) return fail(statusnoport, "Unable to open port " + com(port_));
    if (l->busy) return fail(statusbusy, "Port " + com(port_) + " is busy");
    Frame reply;
    switch (l->exchange(command, payload, reply)) {
    case Link::timeout: return fail(statusnoanswer, "No response from scanner on " + com(port_));
    case Link::gone: return fail(statusnoanswer, "Connection to the scanner on " + com(port_) + " was lost");
    case Link::broken: return fail(statuslinkerror, "Communication error on " + com(port_));
    case Link::ok: break;
    }
    if (reply.command == frmnak || reply.payload.empty())
        return fail(statuslinkerror, "Communication error on " + com(port_));
    uint8_t result = reply.payload[0];
    if (result == resrefused) return fail(statusrefused, std::string("The scanner refused to ") + what);
    if (result != resok)
        return fail(statuslinkerror, std::string("The scanner could not ") + what + " (error " +
                                         std::to_string(result) + ")");
    data.assign(reply.payload.begin() + 1, reply.payload.end());
    return statusok;
}

int Control::writeclock(const std::string& text)
{
    if (!validclock(text)) return fail(statusrefused, "Invalid clock text '" + text + "'");
    Bytes data;
    return request(cmdwriteclock, textbytes(text), data, "set its clock");
}

std::string Control::readclock()
{
    Bytes data;
    if (request(cmdreadclock, {}, data, "read its clock") != statusok) return "";
    std::string text = bytestext(data);
    if (!validclock(text)) {
        fail(statuslinkerror, "Invalid clock reading '" + text + "'");
        return "";
    }
    return text;
}

int Control::writeid(int16_t id)
{
    Bytes data;
    return request(cmdwriteid, be16(id), data, "set its ID");
}

int16_t Control::readid()
{
    Bytes data;
    if (request(cmdreadid, {}, data, "read its ID") != statusok) return 0;
    if (data.size() != 2) {
        fail(statuslinkerror, "Communication error on " + com(port_));
        return 0;
    }
    return (int16_t)getbe16(data, 0);
}

int32_t Control::readlinecount()
{
    Bytes data;
    if (request(cmdlinecount, {}, data, "count its lines") != statusok) return 0;
    if (data.size() != 4) {
        fail(statuslinkerror, "Communication error on " + com(port_));
        return 0;
    }
    return (int32_t)getbe32(data, 0);
}

std::string Control::readbattery()
{
    Bytes data;
    if (request(cmdbattery, {}, data, "read its battery") != statusok) return "";
    return bytestext(data);
}

int Control::cleardata()
{
    Bytes data;
    return request(cmdclear, {}, data, "clear its memory");
}

// ---- download ------------------------------------------------------------------------

bool Control::startdownload()
{
    if (running_) {
        fail(statusbusy, "A download is already running on " + com(port_));
        return false;
    }
    stopdownload();
    platform::HostPath out = platform::resolve(target_);
    if (out.kind != platform::HostPath::local || target_.empty()) {
        fail(statusnoport, "Unable to write the download file " + target_);
        return false;
    }
    auto l = link();
    if (!l) {
        fail(statusnoport, "Unable to open port " + com(port_));
        return false;
    }
    bool expected = false;
    if (!l->busy.compare_exchange_strong(expected, true)) {
        fail(statusbusy, "Port " + com(port_) + " is busy");
        return false;
    }
    running_ = true;
    cancel_ = false;
    worker_ = std::thread([this, l, path = out.path, target = target_, name = com(port_)] { rundownload(l, path, target, name); });
    return true;
}

// Runs on the worker thread: it touches no member but the atomics, and posts its events.
void Control::rundownload(std::shared_ptr<Link> l, std::string hostfile, std::string target, std::string name)
{
    std::string failure;  // the error text, empty on success
    FILE* out = std::fopen(hostfile.c_str(), "wb");
    Frame f;
    Link::Result r = Link::ok;
    if (!out) {
        failure = "Unable to write the download file " + target;
    } else if ((r = l->exchange(cmddownload, {}, f)) != Link::ok || f.command != (cmddownload | replybit) ||
               f.payload.size() != 5 || f.payload[0] != resok) {
        failure = r == Link::timeout ? "No response from scanner on " + name
                                     : "Communication error on " + name;
    } else {
        uint32_t count = getbe32(f.payload, 1), got = 0;
        bool writeok = true;
        using clock = std::chrono::steady_clock;
        auto last = clock::now();
        for (;;) {
            if (cancel_) {
                failure = "The download was abandoned";
                break;
            }
            r = l->receive(f, 100);
            if (r == Link::gone) {
                failure = "Connection to the scanner was lost during the download";
                break;
            }
            if (r == Link::timeout) {
                if (clock::now() - last < std::chrono::milliseconds(streamtimeoutms)) continue;
                failure = "The download stopped: no data from the scanner";
                break;
            }
            last = clock::now();
            if (f.command == frmrecord && f.payload.size() >= 4) {
                std::string line = bytestext(f.payload, 4) + "\r\n";
                writeok = writeok && std::fwrite(line.data(), 1, line.size(), out) == line.size();
                int position = (int)getbe32(f.payload, 0);
                ++got;
                post([this, position] { emit DownloadProgress(position); });
            } else if (f.command == frmend) {
                uint32_t total = getbe32(f.payload, 0);
                writeok = std::fclose(out) == 0 && writeok;
                out = nullptr;
                if (got != total || got != count)
                    failure = "Download incomplete: " + std::to_string(got) + " of " + std::to_string(count) +
                              " lines received";
                else if (!writeok)
                    failure = "Unable to write the download file " + target;
                break;
            }
        }
    }
    if (out) std::fclose(out);
    // The port is free again before the last event goes out.
    l->busy = false;
    running_ = false;
    if (failure.empty())
        post([this] { emit DownloadComplete(); });
    else
        post([this, failure] { emit Error(QString::fromLatin1(failure.c_str())); });
}

void Control::stopdownload()
{
    cancel_ = true;
    if (worker_.joinable()) worker_.join();
    cancel_ = false;
}

// ---- software ------------------------------------------------------------------------

bool Control::loadsoftware(const std::string& imagefile)
{
    loader_ = std::make_unique<loaddll::LoadDll>();
    connect(loader_.get(), &loaddll::LoadDll::Status, this, guard([this](int progress, int code, const QString& text) {
        if (code >= 1 && code <= 999) emit Error(text);
        else if (code == loaddll::loadfinished) emit DownloadComplete();
        else if (code == loaddll::progressfirst || code == loaddll::progresssecond) emit DownloadProgress(progress);
    }));
    loader_->setport(port_);
    loader_->setfile(imagefile);
    loader_->setstep(0);
    loader_->load();
    return loader_->running();
}

}  // namespace opl

#include "platform/loaddll.h"

#include <QMetaObject>
#include <chrono>
#include <fstream>
#include <iterator>

#include "platform/opl_link.h"
#include "platform/paths.h"
#include "core/runtimeerror.h"

namespace loaddll {
namespace {

using opl::Bytes;
using opl::Frame;
using opl::Link;

std::string com(int port) { return "COM" + std::to_string(port); }

// What went wrong, as a status code and text; code 0 when nothing did.
struct Outcome {
    int code = 0;
    std::string text;
};

Outcome linkfailure(Link::Result r, int port)
{
    switch (r) {
    case Link::timeout: return {errnoanswer, "No response from scanner on " + com(port)};
    case Link::gone: return {errlinklost, "Connection to the scanner on " + com(port) + " was lost"};
    case Link::broken: return {errlink, "Communication error on " + com(port)};
    case Link::ok: break;
    }
    return {};
}

Outcome resultfailure(const Frame& reply, int port)
{
    if (reply.command == opl::frmnak || reply.payload.empty())
        return {errlink, "Communication error on " + com(port)};
    switch (reply.payload[0]) {
    case opl::resok: return {};
    case opl::resbadimage: return {errbadimage, "The scanner refused the image as unsound"};
    case opl::resbusy: return {errbusy, "The scanner is busy"};
    default: return {errrefused, "The scanner refused the operation (error " + std::to_string(reply.payload[0]) + ")"};
    }
}

}  // namespace

LoadDll::LoadDll(QObject* parent) : QObject(parent) {}

LoadDll::~LoadDll()
{
    cancel_ = true;
    if (worker_.joinable()) worker_.join();
}

void LoadDll::load() { start(opload); }
void LoadDll::readversions() { start(opversions); }
void LoadDll::erase() { start(operase); }

void LoadDll::start(Operation op)
{
    if (running_) {
        status(0, errbusy, "An operation is already running on " + com(port_));
        return;
    }
    if (worker_.joinable()) worker_.join();
    running_ = true;
    cancel_ = false;
    worker_ = std::thread([this, op] { run(op); });
}

void LoadDll::status(int progress, int code, const std::string& text)
{
    QMetaObject::invokeMethod(
        this, guard([this, progress, code, text] { emit Status(progress, code, QString::fromLatin1(text.c_str())); }),
        Qt::QueuedConnection);
}

void LoadDll::progress(int percent, int code, const std::string& text, int& last)
{
    int step = step_ > 0 ? step_ : 1;
    if (last >= 0 && percent - last < step && percent < 100) return;
    last = percent;
    status(percent, code, text + " " + std::to_string(percent) + "%");
}

void LoadDll::run(Operation op)
{
    // The loader is free again before the last event goes out.
    auto finish = [this](const Outcome& o) {
        running_ = false;
        status(o.code < 1000 ? 0 : 100, o.code, o.text);
    };
    Bytes image;
    if (op == opload) {
        platform::HostPath p = platform::resolve(file_);
        std::ifstream in(p.path, std::ios::binary);
        if (p.kind != platform::HostPath::local || !in) return finish({errnofile, "Unable to read the image file " + file_});
        image.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
        if (image.empty()) return finish({errnofile, "Unable to read the image file " + file_});
    }
    auto link = opl::linkfor(port_);
    if (!link) return finish({errnoport, "Unable to open port " + com(port_)});
    bool expected = false;
    if (!link->busy.compare_exchange_strong(expected, true)) return finish({errbusy, "Port " + com(port_) + " is busy"});

    Frame reply;
    auto ask = [&](uint8_t command, const Bytes& payload, int timeoutms) {
        Outcome o = linkfailure(link->exchange(command, payload, reply, timeoutms), port_);
        return o.code ? o : resultfailure(reply, port_);
    };
    // Progress frames of a long operation up to its finish frame.
    auto follow = [&](int code, const std::string& text) -> Outcome {
        using clock = std::chrono::steady_clock;
        auto last = clock::now();
        int shown = -1;
        Frame f;
        while (!cancel_) {
            Link::Result r = link->receive(f, 100);
            if (r == Link::timeout) {
                if (clock::now() - last < std::chrono::milliseconds(opl::operationtimeoutms)) continue;
                return {errnoanswer, "No response from scanner on " + com(port_)};
            }
            if (r != Link::ok) return linkfailure(r, port_);
            last = clock::now();
            if (f.command == opl::frmprogress && f.payload.size() == 2) progress(f.payload[1], code, text, shown);
            if (f.command == opl::frmfinished) return resultfailure(f, port_);
        }
        return {errlinklost, "The operation was abandoned"};
    };

    Outcome o, done;
    if (op == opversions) {
        std::string os, app;
        o = ask(opl::cmdversions, {}, opl::replytimeoutms);
        if (!o.code && !opl::parseversions(Bytes(reply.payload.begin() + 1, reply.payload.end()), os, app))
            o = {errlink, "Communication error on " + com(port_)};
        if (!o.code) done = {versionsread, "OS version: " + os + " APP version: " + app};
    } else if (op == operase) {
        o = ask(opl::cmderase, {}, opl::replytimeoutms);
        if (!o.code) o = follow(progresssecond, "Erasing application");
        if (!o.code) done = {erasefinished, "Erase complete"};
    } else {
        o = ask(opl::cmdloadbegin, opl::be32((uint32_t)image.size()), opl::replytimeoutms);
        int shown = -1;
        for (size_t at = 0; !o.code && at < image.size() && !cancel_; at += opl::chunksize) {
            size_t n = std::min(opl::chunksize, image.size() - at);
            Bytes chunk = opl::be32((uint32_t)at);
            chunk.insert(chunk.end(), image.begin() + (long)at, image.begin() + (long)(at + n));
            // The scanner answers once the chunk is in: allow for its time on the line.
            int linems = (int)((chunk.size() + 6) * opl::bitsperbyte * 1000 / opl::baud);
            o = ask(opl::cmdloadchunk, chunk, opl::replytimeoutms + 2 * linems);
            if (!o.code) progress((int)((at + n) * 100 / image.size()), progresssecond, "Transferring image", shown);
        }
        if (!o.code && cancel_) o = {errlinklost, "The operation was abandoned"};
        if (!o.code) o = ask(opl::cmdloadgo, {}, opl::replytimeoutms);
        if (!o.code) o = follow(progressfirst, "Programming");
        if (!o.code) done = {loadfinished, "Load complete"};
    }
    link->busy = false;
    finish(o.code ? o : done);
}

}  // namespace loaddll

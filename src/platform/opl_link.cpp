#include "platform/opl_link.h"

#include <chrono>
#include <map>
#include <mutex>

namespace opl {

bool Link::open(int port)
{
    number_ = port;
    framer_.reset();
    return port_.open(port, baud, serial::Port::none);
}

void Link::close() { port_.close(); }

bool Link::send(uint8_t command, const Bytes& payload)
{
    Bytes f = encode(command, payload);
    return port_.write(f.data(), (int)f.size());
}

Link::Result Link::receive(Frame& f, int firstms)
{
    using clock = std::chrono::steady_clock;
    auto deadline = clock::now() + std::chrono::milliseconds(firstms);
    bool started = false;
    for (;;) {
        if (framer_.next(f)) return ok;
        int wait = bytetimeoutms;
        if (!started) {
            auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - clock::now()).count();
            if (left <= 0) return timeout;
            wait = (int)left;
        }
        uint8_t buf[4096];
        size_t want = std::min(framer_.need(), sizeof buf);
        int r = port_.read(buf, (int)want, wait);
        if (r < 0) return gone;
        if (r == 0) {
            if (started) framer_.reset();  // a frame broke off: drop it and wait anew
            started = false;
            if (clock::now() >= deadline) return timeout;
            continue;
        }
        framer_.feed(buf, (size_t)r);
        started = true;
        if ((size_t)r < want) {  // the rest of the frame did not come
            framer_.reset();
            started = false;
        }
    }
}

Link::Result Link::exchange(uint8_t command, const Bytes& payload, Frame& reply, int timeoutms)
{
    flushinput();
    size_t damage = framer_.badframes() + framer_.garbage();
    if (!send(command, payload)) return gone;
    using clock = std::chrono::steady_clock;
    auto deadline = clock::now() + std::chrono::milliseconds(timeoutms);
    for (;;) {
        auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - clock::now()).count();
        Result r = receive(reply, (int)std::max<long long>(left, 1));
        if (r == timeout && framer_.badframes() + framer_.garbage() != damage) return broken;
        if (r != ok) return r;
        if (reply.command == (command | replybit) || reply.command == frmnak) return ok;
    }
}

void Link::flushinput()
{
    framer_.reset();
    port_.flushinput();
}

namespace {

std::mutex tablelock;
std::map<int, std::shared_ptr<Link>>& table()
{
    static std::map<int, std::shared_ptr<Link>> t;
    return t;
}

}  // namespace

std::shared_ptr<Link> sharedlink(int port)
{
    std::lock_guard<std::mutex> hold(tablelock);
    auto it = table().find(port);
    return it == table().end() ? nullptr : it->second;
}

std::shared_ptr<Link> openshared(int port)
{
    std::lock_guard<std::mutex> hold(tablelock);
    auto it = table().find(port);
    if (it != table().end()) return it->second;
    auto link = std::make_shared<Link>();
    if (!link->open(port)) return nullptr;
    table()[port] = link;
    return link;
}

void closeshared(int port)
{
    std::lock_guard<std::mutex> hold(tablelock);
    table().erase(port);
}

std::shared_ptr<Link> linkfor(int port)
{
    if (auto link = sharedlink(port)) return link;
    auto link = std::make_shared<Link>();
    if (!link->open(port)) return nullptr;
    return link;
}

}  // namespace opl

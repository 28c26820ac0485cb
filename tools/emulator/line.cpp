#include "line.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <stdexcept>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <thread>
#include <unistd.h>

volatile int stoprequested = 0;
volatile int wakerequested = 0;

Line::Line(const std::string& link, long baud, int bitsperbyte, long vanishbytes)
    : link_(link), secondsperbyte_((double)bitsperbyte / (double)baud), vanishbytes_(vanishbytes)
{
    char name[256] = {};
    if (openpty(&master_, &slave_, name, nullptr, nullptr) != 0)
        throw std::runtime_error(std::string("openpty: ") + std::strerror(errno));
    termios t{};
    tcgetattr(slave_, &t);
    cfmakeraw(&t);
    tcsetattr(slave_, TCSANOW, &t);
    tcgetattr(master_, &t);
    cfmakeraw(&t);
    tcsetattr(master_, TCSANOW, &t);
    fcntl(master_, F_SETFL, fcntl(master_, F_GETFL) | O_NONBLOCK);
    fcntl(master_, F_SETFD, FD_CLOEXEC);
    fcntl(slave_, F_SETFD, FD_CLOEXEC);
    struct stat st {};
    if (lstat(link.c_str(), &st) == 0) {
        if (!S_ISLNK(st.st_mode)) throw std::runtime_error(link + " exists and is not a link");
        ::unlink(link.c_str());
    }
    if (symlink(name, link.c_str()) != 0)
        throw std::runtime_error("cannot link " + link + ": " + std::strerror(errno));
    txfree_ = rxdone_ = clock::now();
}

Line::~Line()
{
    if (master_ >= 0) ::close(master_);
    if (slave_ >= 0) ::close(slave_);
}

void Line::unlink()
{
    struct stat st {};
    if (lstat(link_.c_str(), &st) == 0 && S_ISLNK(st.st_mode)) ::unlink(link_.c_str());
}

void Line::vanish()
{
    if (master_ < 0) return;
    // What was sent reaches the other side before the line goes: wait (a while) until the
    // reader has taken it.
    // The kernel moves written bytes to the reading side a little later, so the queue must
    // stay empty for a while before it counts as taken.
    std::this_thread::sleep_until(txfree_);
    auto until = clock::now() + std::chrono::seconds(1);
    auto emptysince = clock::now();
    int waiting = 0;
    while (clock::now() < until) {
        if (::ioctl(slave_, TIOCINQ, &waiting) != 0) break;
        if (waiting > 0) emptysince = clock::now();
        else if (clock::now() - emptysince > std::chrono::milliseconds(30)) break;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    ::close(master_);
    ::close(slave_);
    master_ = slave_ = -1;
    unlink();
    std::printf("vanished\n");
    std::fflush(stdout);
}

bool Line::dtr() const
{
    termios t{};
    // The master reads the slave's settings: what the program on the port last set.
    if (master_ < 0 || ::tcgetattr(master_, &t) != 0) return true;
    return cfgetospeed(&t) != B0;
}

Line::clock::duration Line::bytetime(size_t n) const
{
    return std::chrono::duration_cast<clock::duration>(std::chrono::duration<double>(secondsperbyte_ * (double)n));
}

int Line::read(uint8_t* buf, size_t n, int ms)
{
    if (master_ < 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(ms));
        return 0;
    }
    pollfd p{master_, POLLIN, 0};
    if (::poll(&p, 1, ms) <= 0 || !(p.revents & POLLIN)) return 0;
    ssize_t k = ::read(master_, buf, n);
    if (k <= 0) return 0;
    // The bytes left the other end just now; they are in once the line has carried them.
    auto now = clock::now();
    rxdone_ = std::max(rxdone_, now) + bytetime((size_t)k);
    return (int)k;
}

void Line::awaitinput() { std::this_thread::sleep_until(rxdone_); }

bool Line::write(const std::vector<uint8_t>& bytes)
{
    if (master_ < 0) return false;
    size_t n = bytes.size();
    bool vanishing = false;
    if (vanishbytes_ >= 0 && sent_ + (long)n >= vanishbytes_) {
        n = (size_t)(vanishbytes_ - sent_);
        vanishing = true;
    }
    bool ok = writepaced(bytes.data(), n);
    sent_ += (long)n;
    if (vanishing) {
        vanish();
        return false;
    }
    return ok;
}

bool Line::writepaced(const uint8_t* p, size_t n)
{
    // Bytes go out in slices of about 2 ms of line time, each when the line is free.
    size_t slice = std::max<size_t>(1, (size_t)(0.002 / secondsperbyte_));
    txfree_ = std::max(txfree_, clock::now());
    size_t done = 0;
    while (done < n) {
        if (stoprequested) return false;
        std::this_thread::sleep_until(txfree_);
        size_t k = std::min(slice, n - done);
        size_t put = 0;
        auto stuck = clock::now() + std::chrono::seconds(2);
        while (put < k) {
            ssize_t w = ::write(master_, p + done + put, k - put);
            if (w > 0) {
                put += (size_t)w;
                continue;
            }
            if (w < 0 && errno != EAGAIN && errno != EINTR) return false;
            if (clock::now() > stuck || stoprequested) {
                // Nobody reads the port: what is waiting there is dropped with the rest.
                tcflush(slave_, TCIFLUSH);
                return false;
            }
            pollfd q{master_, POLLOUT, 0};
            ::poll(&q, 1, 50);
        }
        done += k;
        txfree_ += bytetime(k);
    }
    return true;
}

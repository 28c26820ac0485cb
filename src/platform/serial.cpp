// Serial ports on POSIX termios. A port is exclusive while we hold it: TIOCEXCL keeps
// ordinary users out, and since root passes TIOCEXCL, an flock on the device and a look at
// the exclusive flag keep out every other holder as well.
#include "platform/serial.h"

#include <cerrno>
#include <map>
#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include "platform/paths.h"

namespace serial {
namespace {

speed_t speedof(int baud)
{
    switch (baud) {
    case 1200: return B1200;
    case 2400: return B2400;
    case 4800: return B4800;
    case 9600: return B9600;
    case 19200: return B19200;
    case 38400: return B38400;
    case 57600: return B57600;
    case 115200: return B115200;
    case 230400: return B230400;
    case 460800: return B460800;
    case 921600: return B921600;
    default: return B9600;
    }
}

// Opens the device for our sole use, or gives -1 when it is missing or another holds it.
int openexclusive(const std::string& device)
{
    if (device.empty()) return -1;
    int fd = ::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) return -1;
    int held = 0;
    if (::ioctl(fd, TIOCGEXCL, &held) == 0 && held) {
        ::close(fd);  // another holder set the flag; it is theirs to clear
        return -1;
    }
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        ::close(fd);
        return -1;
    }
    ::ioctl(fd, TIOCEXCL);
    return fd;
}

void closeexclusive(int fd)
{
    // The flag outlives us on a pseudo-terminal whose master stays open: clear it first.
    ::ioctl(fd, TIOCNXCL);
    ::flock(fd, LOCK_UN);
    ::close(fd);
}

// Devices this process holds open through a Port, with how many Ports hold each.
std::map<std::string, int>& heldhere()
{
    static std::map<std::string, int> held;
    return held;
}

}  // namespace

std::string devicepath(int port)
{
    if (port < 1) return "";
    return platform::setting("ports", "COM" + std::to_string(port));
}

bool portexists(int port)
{
    const std::string device = devicepath(port);
    // A port that a session of ours still holds is there as long as its device is.
    if (heldhere().count(device)) return ::access(device.c_str(), F_OK) == 0;
    int fd = openexclusive(device);
    if (fd < 0) return false;
    closeexclusive(fd);
    return true;
}

Port::~Port() { close(); }

bool Port::open(int port, int baud, Parity parity)
{
    return openpath(devicepath(port), baud, parity);
}

bool Port::openpath(const std::string& device, int baud, Parity parity)
{
    close();
    int fd = openexclusive(device);
    if (fd < 0) return false;
    termios t{};
    if (::tcgetattr(fd, &t) != 0) {
        closeexclusive(fd);
        return false;
    }
    cfmakeraw(&t);
    t.c_cflag |= CLOCAL | CREAD;
    t.c_cflag &= ~(CSTOPB | CRTSCTS | PARENB | PARODD);
    if (parity == odd) t.c_cflag |= PARENB | PARODD;
    if (parity == even) t.c_cflag |= PARENB;
    t.c_cc[VMIN] = 0;
    t.c_cc[VTIME] = 0;
    cfsetispeed(&t, speedof(baud));
    cfsetospeed(&t, speedof(baud));
    // A pseudo-terminal drops the parity bit and the C library then reports the whole call as
    // failed; what counts is that the line took 8 data bits and the speed.
    ::tcsetattr(fd, TCSANOW, &t);
    termios got{};
    if (::tcgetattr(fd, &got) != 0 || (got.c_cflag & CSIZE) != CS8 || cfgetospeed(&got) != speedof(baud)) {
        closeexclusive(fd);
        return false;
    }
    fd_ = fd;
    baud_ = baud;
    device_ = device;
    ++heldhere()[device_];
    return true;
}

void Port::close()
{
    if (fd_ < 0) return;
    closeexclusive(fd_);
    fd_ = -1;
    auto held = heldhere().find(device_);
    if (held != heldhere().end() && --held->second == 0) heldhere().erase(held);
    device_.clear();
}

int Port::read(uint8_t* buf, int n, int timeoutms)
{
    if (fd_ < 0) return -1;
    int got = 0;
    while (got < n) {
        pollfd p{fd_, POLLIN, 0};
        int r = ::poll(&p, 1, timeoutms);
        if (r < 0) {
            if (errno == EINTR) continue;
            return -1;
        }
        if (r == 0) break;  // quiet for the whole wait
        if (p.revents & POLLIN) {
            ssize_t k = ::read(fd_, buf + got, n - got);
            if (k > 0) {
                got += (int)k;
                continue;
            }
            if (k < 0 && (errno == EAGAIN || errno == EINTR)) continue;
            return got > 0 ? got : -1;  // end of file or an error: the device has gone
        }
        if (p.revents & (POLLHUP | POLLERR | POLLNVAL)) return got > 0 ? got : -1;
    }
    return got;
}

bool Port::write(const uint8_t* buf, int n)
{
    if (fd_ < 0) return false;
    int done = 0;
    while (done < n) {
        ssize_t k = ::write(fd_, buf + done, n - done);
        if (k > 0) {
            done += (int)k;
            continue;
        }
        if (k < 0 && errno == EINTR) continue;
        if (k < 0 && errno == EAGAIN) {
            pollfd p{fd_, POLLOUT, 0};
            if (::poll(&p, 1, 1000) <= 0 || (p.revents & (POLLHUP | POLLERR | POLLNVAL))) return false;
            continue;
        }
        return false;
    }
    return true;
}

bool Port::setdtr(bool on)
{
    if (fd_ < 0) return false;
    int bit = TIOCM_DTR;
    if (::ioctl(fd_, on ? TIOCMBIS : TIOCMBIC, &bit) == 0) return true;
    if (errno != ENOTTY && errno != EINVAL) return false;
    termios t{};
    if (::tcgetattr(fd_, &t) != 0) return false;
    speed_t speed = on ? speedof(baud_) : B0;
    cfsetospeed(&t, speed);
    cfsetispeed(&t, on ? speed : B0);
    ::tcsetattr(fd_, TCSANOW, &t);  // fails in part on a pty (parity), as at the open
    termios got{};
    return ::tcgetattr(fd_, &got) == 0 && cfgetospeed(&got) == speed;
}

void Port::flushinput()
{
    if (fd_ >= 0) ::tcflush(fd_, TCIFLUSH);
}

}  // namespace serial

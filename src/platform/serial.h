// Serial ports COM1..COM16, mapped to devices by [ports] of platform.ini.
#pragma once

#include <cstdint>
#include <string>

namespace serial {

// The device path of COMn, "" when not mapped.
std::string devicepath(int port);
// The port exists: its device opens for our exclusive use at this moment. A port held
// open by another program (exclusive flag or lock) counts as absent; one that this program
// holds open itself (a scanner session left bound) is there while its device is.
bool portexists(int port);

// A raw 8-bit line to a mapped port, exclusive while open.
class Port {
public:
    enum Parity { none, odd, even };
    Port() = default;
    ~Port();
    Port(const Port&) = delete;
    Port& operator=(const Port&) = delete;

    bool open(int port, int baud = 9600, Parity parity = none);
    bool openpath(const std::string& device, int baud = 9600, Parity parity = none);
    void close();
    bool isopen() const { return fd_ >= 0; }
    // Reads up to n bytes, waiting at most timeoutms for the first and for each further one.
    // Returns the count read, -1 when the device has gone.
    int read(uint8_t* buf, int n, int timeoutms);
    // Writes all of the bytes; false when the device has gone.
    bool write(const uint8_t* buf, int n);
    void flushinput();
    // Raises or lowers DTR. A port without modem lines (a pseudo-terminal) takes the
    // hang-up form instead: its speed set to 0 while DTR is low, which is how a POSIX line
    // drops DTR and what the scanner emulator watches. False when the line took neither.
    bool setdtr(bool on);
    int fd() const { return fd_; }

private:
    int fd_ = -1;
    int baud_ = 9600;
    std::string device_;
};

}  // namespace serial

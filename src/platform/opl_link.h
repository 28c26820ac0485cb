// One OPL link on a serial port: frames out, frames in, with the link's timings. Shared by
// the opl control and the software loader.
//
// Ports opened by a control's open call stay open, in a table for the whole process, until
// a close: every control on the same port uses that open line, which is how nested routines
// share a port. A control whose port is not open opens the line for each call by itself.
#pragma once

#include <atomic>
#include <memory>
#include <string>

#include "platform/opl_protocol.h"
#include "platform/serial.h"

namespace opl {

class Link {
public:
    // broken: no sound answer came, but broken frames or stray bytes did.
    enum Result { ok, timeout, gone, broken };

    bool open(int port);
    void close();
    bool isopen() const { return port_.isopen(); }
    int port() const { return number_; }

    // Sends a frame; false when the line has gone.
    bool send(uint8_t command, const Bytes& payload = {});
    // The next whole frame within `firstms` (then bytetimeoutms between its bytes).
    Result receive(Frame& f, int firstms);
    // Sends a request and waits for its reply (the command with the reply bit) or a NAK,
    // skipping frames of other kinds.
    Result exchange(uint8_t command, const Bytes& payload, Frame& reply, int timeoutms = replytimeoutms);
    void flushinput();

    // Set while a background operation (download, software load) owns the line.
    std::atomic<bool> busy{false};

private:
    serial::Port port_;
    Framer framer_;
    int number_ = 0;
};

// The open line of a port, or null.
std::shared_ptr<Link> sharedlink(int port);
// Opens the line of a port for sharing (or gives the one open); null when it will not open.
std::shared_ptr<Link> openshared(int port);
// Takes the port out of the table; the line closes when its last user lets go.
void closeshared(int port);

// A line for one call or operation: the shared one when the port is open, else a line of
// its own. Null when the port will not open.
std::shared_ptr<Link> linkfor(int port);

}  // namespace opl

// The emulated scanner's end of the line: the pseudo-terminal, paced at the line rate in both
// directions, and the fault of a scanner that disappears.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

class Line {
public:
    using clock = std::chrono::steady_clock;

    // Opens the pseudo-terminal and links its device path at `link`. Throws on failure.
    Line(const std::string& link, long baud, int bitsperbyte, long vanishbytes);
    ~Line();

    // Takes what the other side has written, at most `n` bytes, waiting up to `ms`.
    // Returns the count, 0 when nothing came.
    int read(uint8_t* buf, size_t n, int ms);
    // Waits until the bytes read so far would have come over the line.
    void awaitinput();
    // Sends, paced at the line rate. False when the scanner has gone (or goes now).
    bool write(const std::vector<uint8_t>& bytes);
    // The scanner disappears: the port closes and its link goes.
    void vanish();
    bool gone() const { return master_ < 0; }
    // DTR as the other side set it: low while the line's speed is 0 (the hang-up form, the
    // only one a pseudo-terminal carries).
    bool dtr() const;
    // Time for n bytes on the line.
    clock::duration bytetime(size_t n) const;
    // Removes the link (at exit).
    void unlink();

private:
    bool writepaced(const uint8_t* p, size_t n);

    std::string link_;
    int master_ = -1;
    int slave_ = -1;     // kept open so that the port lives between the driver's opens
    double secondsperbyte_;
    long vanishbytes_;
    long sent_ = 0;
    clock::time_point txfree_{};
    clock::time_point rxdone_{};
};

// Set by the signal handlers.
extern volatile int stoprequested;
extern volatile int wakerequested;

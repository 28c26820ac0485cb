// scanner-emulator: one OPL 972x, OPN 2001 or CS 1504 on a pseudo-terminal.
#include <csignal>
#include <cstdio>
#include <memory>
#include <stdexcept>

#include "cspdevice.h"
#include "line.h"
#include "memory.h"
#include "opldevice.h"
#include "options.h"
#include "platform/csp2_constants.h"
#include "platform/opl_protocol.h"

namespace {

void onstop(int) { stoprequested = 1; }
void onwake(int) { wakerequested = 1; }

void handlesignals()
{
    struct sigaction a {};
    a.sa_handler = onstop;
    sigemptyset(&a.sa_mask);
    sigaction(SIGTERM, &a, nullptr);
    sigaction(SIGINT, &a, nullptr);
    a.sa_handler = onwake;
    sigaction(SIGUSR1, &a, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
}

}  // namespace

int main(int argc, char** argv)
{
    Options o = parseoptions(argc, argv);
    handlesignals();
    Memory memory;
    try {
        memory = Memory::start(o);
        memory.save(o.state);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "scanner-emulator: %s\n", e.what());
        return 2;
    }
    bool isopl = o.type == Options::opl;
    long baud = o.baud > 0 ? o.baud : (isopl ? opl::baud : csp::baud);
    std::unique_ptr<Line> line;
    try {
        line = std::make_unique<Line>(o.link, baud, isopl ? opl::bitsperbyte : csp::bitsperbyte, o.vanishbytes);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "scanner-emulator: %s\n", e.what());
        return 1;
    }
    std::unique_ptr<Device> device;
    if (isopl) device = std::make_unique<OplDevice>(*line, memory, o);
    else device = std::make_unique<CspDevice>(*line, memory, o);

    std::printf("ready %s\n", o.link.c_str());
    std::fflush(stdout);
    uint8_t buf[4096];
    while (!stoprequested) {
        if (wakerequested) {
            wakerequested = 0;
            device->wake();
        }
        int n = line->read(buf, sizeof buf, 10);
        if (n > 0) device->received(buf, (size_t)n);
        device->tick();
    }
    line->unlink();
    try {
        memory.save(o.state);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "scanner-emulator: %s\n", e.what());
        return 1;
    }
    return 0;
}

// An OPN 2001 or CS 1504 on the CSP link.
#pragma once

#include "device.h"
#include "platform/csp2_protocol.h"

class CspDevice : public Device {
public:
    CspDevice(Line& line, Memory& memory, const Options& options);
    void received(const uint8_t* p, size_t n) override;
    void wake() override;
    void tick() override;

private:
    void handle(uint8_t command, const std::vector<csp::Bytes>& strings);
    void reply(uint8_t command, const csp::Bytes& fixed, const std::vector<csp::Bytes>& strings = {});
    void upload();
    csp::Bytes clockbytes() const;
    // Whether the scanner is asleep now (after --sleep-after of quiet).
    bool sleeping(Line::clock::time_point now);

    csp::Quirks q_;
    csp::Bytes buf_;
    bool asleep_;
    bool dtr_ = true;
    Line::clock::time_point lastactive_;
};

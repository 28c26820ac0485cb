// An OPN 2001 or CS 1504 on the CSP link.
#pragma once

#include "device.h"
#include "platform/csp2_protocol.h"

class CspDevice : public Device {
public:
    CspDevice(Line& line, Memory& memory, const Options& options);
    void received(const uint8_t* p, size_t n) override;
    void wake() override { poweredoff_ = false; }

private:
    void handle(uint8_t command, const csp::Bytes& payload);
    void reply(uint8_t command, const csp::Bytes& payload);
    void upload();
    csp::Bytes clockbytes() const;

    csp::Quirks q_;
    csp::Bytes buf_;
    bool poweredoff_ = false;
    bool asleep_;
    Line::clock::time_point lastinput_;
};

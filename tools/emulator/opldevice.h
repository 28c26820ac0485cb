// An OPL 972x on the OPL link (docs/opl-link.md), with its software loader.
#pragma once

#include "device.h"
#include "platform/opl_protocol.h"

class OplDevice : public Device {
public:
    OplDevice(Line& line, Memory& memory, const Options& options);
    void received(const uint8_t* p, size_t n) override;

private:
    void handle(const opl::Frame& f);
    void reply(uint8_t command, const opl::Bytes& payload, const char* name);
    void download();
    // A long operation: progress frames over the operation's time, then the finish frame.
    bool operate(uint8_t phase);
    void program();

    opl::Framer framer_;
    Line::clock::time_point lastinput_{};
    size_t badframes_ = 0;
    opl::Bytes image_;
    long expected_ = -1;   // size of the image being loaded, -1 when none
};

// One emulated scanner behind the line: takes what the driver sends and answers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "line.h"
#include "memory.h"
#include "options.h"

class Device {
public:
    Device(Line& line, Memory& memory, const Options& options) : line_(line), mem_(memory), o_(options) {}
    virtual ~Device() = default;
    virtual void received(const uint8_t* p, size_t n) = 0;
    // A key pressed on the scanner (SIGUSR1): wakes it from power-down.
    virtual void wake() {}
    // Called between reads, at least every 10 ms: the device looks at the line's state.
    virtual void tick() {}

protected:
    // Whether a fault option (--garbage, --bad-crc) names this command.
    static bool names(const std::string& option, const char* command)
    {
        return option == "all" || option == command;
    }
    // Bytes that make no frame of either link.
    static std::vector<uint8_t> garbage()
    {
        return {0xA5, 0x5A, 0xC3, 0x3C, 0x99, 0x66, 0xF0, 0x0F, 0xAA, 0x55, 0xE7, 0x7E};
    }
    void save() { mem_.save(o_.state); }

    Line& line_;
    Memory& mem_;
    const Options& o_;
};

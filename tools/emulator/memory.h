// What the emulated scanner keeps: ID, clock offset, battery, versions and stored records,
// with the records file it starts from and the state file that outlives it.
//
// State file, one `key=value` a line:
//   type=opl|opn|cs1504   id=N (opl)   scratchpad=<hex> (opn, cs1504, parameter 38)
//   clockoffset=<whole seconds, scanner minus PC>   battery=N   poweredoff=1 (cs1504)
//   version=TEXT (opn, cs1504)   osversion=TEXT   appversion=TEXT (opl)
//   line=TEXT (opl, one per stored line)   record=<hex> (opn, cs1504, one per record)
#pragma once

#include <cstdint>
#include <ctime>
#include <string>
#include <vector>

#include "options.h"

struct Memory {
    Options::Type type = Options::opn;
    int id = 0;                          // opl
    std::vector<uint8_t> scratchpad;     // opn, cs1504: parameter 38, 32 bytes
    long long clockoffset = 0;           // whole seconds, scanner minus PC
    int battery = 100;
    bool poweredoff = false;             // cs1504: turned off by power-down until a key press
    std::string version;                 // opn, cs1504
    std::string osversion, appversion;   // opl
    std::vector<std::string> lines;      // opl
    std::vector<std::vector<uint8_t>> records;  // opn, cs1504, length byte first

    // From the options and the records file; or from the state file when it exists.
    // Throws std::runtime_error with a message for the user on bad input.
    static Memory start(const Options& o);
    void save(const std::string& statefile) const;

    // The scanner's clock now, as broken-down local time.
    std::tm now() const;
    // Sets the clock to the given local time.
    void setclock(const std::tm& t);
};

// A CSP record from one line of a records file.
std::vector<uint8_t> parserecord(const std::string& line);
std::string hex(const std::vector<uint8_t>& b);
std::vector<uint8_t> unhex(const std::string& text);

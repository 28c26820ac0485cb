// Numbered faults of the program's runtime. The routines' failure handlers catch these and
// report "<number> <description>" exactly as the classic runtime named them.
#pragma once

#include <exception>
#include <string>

struct Fault : std::exception {
    int number = 0;
    std::string description;

    Fault() = default;
    Fault(int n, std::string text) : number(n), description(std::move(text)) {}
    const char* what() const noexcept override { return description.c_str(); }

    // A fault with the runtime's own description for its number.
    static Fault of(int n);
    // Any exception as a fault: a Fault keeps its number, anything else becomes 5 or 7.
    static Fault from(const std::exception& e);
};

// The runtime's description of a fault number ("Overflow" for 6 ...).
std::string faultdescription(int number);

[[noreturn]] void raisefault(int number);

// Fault numbers used by the platform layer and the helpers.
namespace fault {
constexpr int invalidcall = 5;
constexpr int overflow = 6;
constexpr int outofmemory = 7;
constexpr int subscript = 9;
constexpr int divisionbyzero = 11;
constexpr int typemismatch = 13;
constexpr int outofstack = 28;
constexpr int badfilename = 52;
constexpr int filenotfound = 53;
constexpr int filealreadyopen = 55;
constexpr int deviceio = 57;
constexpr int fileexists = 58;
constexpr int diskfull = 61;
constexpr int inputpastend = 62;
constexpr int toomanyfiles = 67;
constexpr int deviceunavailable = 68;
constexpr int permissiondenied = 70;
constexpr int disknotready = 71;
constexpr int pathfileaccess = 75;
constexpr int pathnotfound = 76;
}  // namespace fault

// The runtime's stack space for routines that call each other round in a circle (a clock
// write that re-judges the clock, which writes it again): each entry takes one level, and
// the entry past the limit raises 28 "Out of stack space" in the caller, whose handler
// deals with it like any other fault.
class StackLevel {
public:
    StackLevel();
    ~StackLevel();
    StackLevel(const StackLevel&) = delete;
    StackLevel& operator=(const StackLevel&) = delete;

    static int depth();
    // Levels available (500 unless set; tests set fewer).
    static void setlimit(int levels);
    static int limit();
};

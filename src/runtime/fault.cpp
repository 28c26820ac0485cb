#include "runtime/fault.h"

#include <new>

std::string faultdescription(int number)
{
    switch (number) {
    case 5: return "Invalid procedure call or argument";
    case 6: return "Overflow";
    case 7: return "Out of memory";
    case 9: return "Subscript out of range";
    case 11: return "Division by zero";
    case 13: return "Type mismatch";
    case 28: return "Out of stack space";
    case 52: return "Bad file name or number";
    case 53: return "File not found";
    case 55: return "File already open";
    case 57: return "Device I/O error";
    case 58: return "File already exists";
    case 61: return "Disk full";
    case 62: return "Input past end of file";
    case 67: return "Too many files";
    case 68: return "Device unavailable";
    case 70: return "Permission denied";
    case 71: return "Disk not ready";
    case 75: return "Path/File access error";
    case 76: return "Path not found";
    default: return "Application-defined or object-defined error";
    }
}

Fault Fault::of(int n) { return Fault(n, faultdescription(n)); }

Fault Fault::from(const std::exception& e)
{
    if (auto f = dynamic_cast<const Fault*>(&e))
        return *f;
    if (dynamic_cast<const std::bad_alloc*>(&e))
        return Fault::of(fault::outofmemory);
    return Fault(fault::invalidcall, faultdescription(fault::invalidcall));
}

void raisefault(int number) { throw Fault::of(number); }

namespace {
int stackdepth = 0;
int stacklimit = 500;
}  // namespace

StackLevel::StackLevel()
{
    if (stackdepth >= stacklimit) raisefault(fault::outofstack);
    ++stackdepth;
}

StackLevel::~StackLevel() { --stackdepth; }

int StackLevel::depth() { return stackdepth; }
void StackLevel::setlimit(int levels) { stacklimit = levels; }
int StackLevel::limit() { return stacklimit; }

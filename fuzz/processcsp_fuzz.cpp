// processdata on a CS 1504 / OPN 2001 record dump (a safety copy of a read).
#include "processrun.h"

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    processrun::start();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    processrun::run(3, std::string(reinterpret_cast<const char*>(data), size));
    return 0;
}

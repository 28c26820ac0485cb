// processdata on a raw OPL 972x download file.
#include "processrun.h"

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    processrun::start();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    processrun::run(1, std::string(reinterpret_cast<const char*>(data), size));
    return 0;
}

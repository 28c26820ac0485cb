// The stamp decoder: four stamp bytes through getbin and bintodate, and any run of bits
// through bintodate alone.
#include <cstddef>
#include <cstdint>
#include <string>

#include "pipeline/stamps.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    std::string bits, result;
    for (size_t i = 0; i < size && i < 4; ++i) {
        Int16 value = data[i];
        std::string eight;
        getbin(value, eight);
        if (eight.size() != 8 || value != 0) __builtin_trap();
        bits += eight;
    }
    bintodate(bits, result);
    if (size > 4) bintodate(std::string(reinterpret_cast<const char*>(data) + 4, size - 4), result);
    return 0;
}

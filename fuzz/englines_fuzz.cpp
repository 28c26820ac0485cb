// The engineer-list line test and the owner look-up's number: any text as one line.
#include <cstddef>
#include <cstdint>
#include <string>

#include "core/globals.h"
#include "settings/englines.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string line(reinterpret_cast<const char*>(data), size);
    doenglinetest(line);
    const Int16 status = g().englinestatus;
    if (status < 0 || status > 2) __builtin_trap();
    if (status == 0) {
        const EngRecord r = engrecord(line);
        (void)engnumber(r.field1);
        (void)engnumber(r.field2);
    }
    return 0;
}

// The OPL link framer: any bytes, fed in pieces of the sizes the first bytes give; every
// frame it finds is encoded again and must frame the same.
#include <cstddef>
#include <cstdint>

#include "platform/opl_protocol.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    opl::Framer framer;
    size_t at = 0;
    while (at < size) {
        const size_t piece = std::min<size_t>(1 + data[at] % 64, size - at);
        framer.feed(data + at, piece);
        at += piece;
        opl::Frame f;
        while (framer.next(f)) {
            const opl::Bytes again = opl::encode(f);
            opl::Framer check;
            check.feed(again.data(), again.size());
            opl::Frame g;
            if (!check.next(g) || g.command != f.command || g.payload != f.payload) __builtin_trap();
        }
    }
    return 0;
}

// The save journal's reader: any bytes as c:\tarnbc\SAVE.JNL left by a run that died.
#include <cstddef>
#include <cstdint>
#include <string>

#include "pipeline/savejournal.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::vector<savejournal::Kept> kept;
    std::vector<savejournal::Check> checks;
    if (savejournal::parse(text, kept, checks)) {
        size_t bytes = 0;
        for (const auto& k : kept) bytes += k.path.size() + k.bytes.size();
        for (const auto& c : checks) bytes += c.file.size() + c.section.size() + c.key.size() + c.value.size();
        if (bytes > size) __builtin_trap();
    }
    return 0;
}

// The profile-file parser: any bytes as a file. The lines it finds give back the file byte
// for byte, and every section and key it names can be found again.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/profileformat.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto lines = profile::parse(bytes);
    std::string again;
    profile::Span span;
    for (size_t i = 0; i < lines.size(); ++i) {
        const auto& line = lines[i];
        again.append(line.text).append(line.eol);
        if (line.kind == profile::Line::header) {
            // The first section of the name, which may be an earlier one.
            span = profile::findsection(lines, profile::trimspaces(line.name));
            if (!span.found || span.header > i) __builtin_trap();
        } else if (line.kind == profile::Line::key && span.found && i > span.header && i < span.end) {
            // A key of that section is found, here or earlier.
            if (profile::findkey(lines, span, profile::trimspaces(line.name)) > i) __builtin_trap();
        }
    }
    if (again != bytes) __builtin_trap();
    return 0;
}

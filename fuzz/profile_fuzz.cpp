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
    for (const auto& line : lines) {
        again.append(line.text).append(line.eol);
        if (line.kind == profile::Line::header) {
            span = profile::findsection(lines, profile::trimspaces(line.name));
            if (!span.found) __builtin_trap();
        } else if (line.kind == profile::Line::key && span.found) {
            if (profile::findkey(lines, span, profile::trimspaces(line.name)) >= lines.size()) __builtin_trap();
        }
    }
    if (again != bytes) __builtin_trap();
    return 0;
}

// Inside the profile calls: a profile file cut into lines, shared by the look-up, the
// rewrite and the name lists. profile.h holds the calls and the core entry points.
#pragma once

#include <string_view>
#include <vector>

#include "platform/profile.h"

namespace profile {

struct Line {
    enum Kind { blank, comment, header, key, entry } kind = blank;
    std::string_view text;   // the line without its end
    std::string_view eol;    // "\r\n", "\n", "\r" or "" on an unterminated last line
    std::string_view name;   // header: the section; key: the key (trimmed)
    std::string_view value;  // key: the value (trimmed)
};

// The first section of a name: its header line and the line after its last.
struct Span {
    bool found = false;
    size_t header = 0;
    size_t end = 0;
};

std::vector<Line> parse(std::string_view bytes);
Span findsection(const std::vector<Line>& lines, std::string_view section);
// The first key line of that name in the section; lines.size() when there is none.
size_t findkey(const std::vector<Line>& lines, const Span& s, std::string_view key);
// Section and key arguments lose their outer spaces (not tabs).
std::string_view trimspaces(std::string_view s);

}  // namespace profile

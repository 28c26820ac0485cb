// The profile-file format on bytes: finding a key and rewriting a file for a write, as the
// Windows calls do it. Lines end in CR LF, LF or CR; leading blanks are ignored; a line that
// starts with '[' is a header whose name ends at the first ']' (or the line's end); ';'
// starts a comment; a key line holds '='. Lines before the first header belong to no
// section. Only the first section of a name is searched, and the first key of a name in it.
// A write keeps every line it does not change byte for byte.
#include "platform/profileformat.h"

#include <cctype>

namespace profile {
namespace {

bool blank(char c) { return c == ' ' || c == '\t' || c == '\v'; }

std::string_view trimblanks(std::string_view s)
{
    while (!s.empty() && blank(s.front())) s.remove_prefix(1);
    while (!s.empty() && blank(s.back())) s.remove_suffix(1);
    return s;
}

bool sameword(std::string_view a, std::string_view b)
{
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (std::tolower((unsigned char)a[i]) != std::tolower((unsigned char)b[i])) return false;
    return true;
}

}  // namespace

std::string_view trimspaces(std::string_view s)
{
    while (!s.empty() && s.front() == ' ') s.remove_prefix(1);
    while (!s.empty() && s.back() == ' ') s.remove_suffix(1);
    return s;
}

std::vector<Line> parse(std::string_view bytes)
{
    std::vector<Line> lines;
    size_t at = 0;
    while (at < bytes.size()) {
        size_t end = bytes.find_first_of("\r\n", at);
        size_t next = end == std::string_view::npos ? bytes.size()
                      : (bytes[end] == '\r' && end + 1 < bytes.size() && bytes[end + 1] == '\n') ? end + 2
                                                                                                  : end + 1;
        if (end == std::string_view::npos) end = bytes.size();
        Line line;
        line.text = bytes.substr(at, end - at);
        line.eol = bytes.substr(end, next - end);
        std::string_view body = line.text;
        while (!body.empty() && blank(body.front())) body.remove_prefix(1);
        if (body.empty()) {
            line.kind = Line::blank;
        } else if (body.front() == ';') {
            line.kind = Line::comment;
        } else if (body.front() == '[') {
            line.kind = Line::header;
            body.remove_prefix(1);
            line.name = trimblanks(body.substr(0, body.find(']')));
        } else if (auto eq = body.find('='); eq != std::string_view::npos) {
            line.kind = Line::key;
            line.name = trimblanks(body.substr(0, eq));
            line.value = trimblanks(body.substr(eq + 1));
        } else {
            line.kind = Line::entry;
        }
        lines.push_back(line);
        at = next;
    }
    return lines;
}

Span findsection(const std::vector<Line>& lines, std::string_view section)
{
    section = trimspaces(section);
    for (size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].kind != Line::header || !sameword(lines[i].name, section)) continue;
        size_t end = i + 1;
        while (end < lines.size() && lines[end].kind != Line::header) ++end;
        return {true, i, end};
    }
    return {false, lines.size(), lines.size()};
}

size_t findkey(const std::vector<Line>& lines, const Span& s, std::string_view key)
{
    key = trimspaces(key);
    for (size_t i = s.header + 1; s.found && i < s.end; ++i)
        if (lines[i].kind == Line::key && sameword(lines[i].name, key)) return i;
    return lines.size();
}

ReadResult lookup(std::string_view filebytes, std::string_view section, std::string_view key)
{
    auto lines = parse(filebytes);
    size_t k = findkey(lines, findsection(lines, section), key);
    if (k == lines.size()) return {};
    std::string_view v = lines[k].value;
    if (v.size() >= 2 && (v.front() == '"' || v.front() == '\'') && v.back() == v.front())
        v = v.substr(1, v.size() - 2);
    return {true, std::string(v)};
}

std::string update(std::string_view filebytes, const char* section, const char* key, const char* value)
{
    if (!section) return std::string(filebytes);
    auto lines = parse(filebytes);
    Span s = findsection(lines, section);
    std::string_view name = trimspaces(key ? key : "");

    if (!s.found) {
        if (!key || !value) return std::string(filebytes);
        std::string out(filebytes);
        if (!out.empty() && out.back() != '\r' && out.back() != '\n') out += "\r\n";
        out += "[" + std::string(trimspaces(section)) + "]\r\n";
        out += std::string(name) + "=" + value + "\r\n";
        return out;
    }

    size_t k = key ? findkey(lines, s, name) : lines.size();
    // Where a new key goes: after the section's last key or entry line, else the header.
    size_t after = s.header;
    for (size_t i = s.header + 1; i < s.end; ++i)
        if (lines[i].kind == Line::key || lines[i].kind == Line::entry) after = i;

    std::string out;
    out.reserve(filebytes.size() + 64);
    for (size_t i = 0; i < lines.size(); ++i) {
        const Line& line = lines[i];
        bool inside = i >= s.header && i < s.end;
        if (!key && inside && line.kind != Line::comment && line.kind != Line::blank) continue;
        if (key && i == k) {
            if (value) out += std::string(line.name) + "=" + value + "\r\n";
            continue;
        }
        out += line.text;
        if (key && value && k == lines.size() && i == after) {
            out += line.eol.empty() ? std::string_view("\r\n") : line.eol;
            out += std::string(name) + "=" + value + "\r\n";
            continue;
        }
        out += line.eol;
    }
    return out;
}

}  // namespace profile

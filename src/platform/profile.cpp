// GetPrivateProfileStringA and WritePrivateProfileStringA over the file layer, so mapped
// shares, SMB and injected faults apply to them. Every call reads the file afresh; every
// write rewrites it before returning.
#include "platform/profile.h"

#include <cstring>

#include "platform/files.h"
#include "platform/fsys.h"
#include "platform/profileformat.h"

namespace {

using fsys::err;
using platform::HostPath;

constexpr uint32_t errormoredata = 234, errorinvalidparameter = 87;

// The names of the sections (no section given) or of the keys of one section, each closed
// by a NUL, the list by one more. A list that does not fit is cut to size-2 characters and
// closed by two NULs.
uint32_t copylist(const std::string& list, char* buffer, uint32_t size)
{
    if (size == 0) return 0;
    if (list.size() + 1 <= size) {
        std::memcpy(buffer, list.data(), list.size());
        buffer[list.size()] = 0;
        return (uint32_t)list.size();
    }
    if (size == 1) {
        buffer[0] = 0;
        return 0;
    }
    std::memcpy(buffer, list.data(), size - 2);
    buffer[size - 2] = 0;
    buffer[size - 1] = 0;
    files::SetLastError(errormoredata);
    return size - 2;
}

std::string names(std::string_view bytes, const char* section)
{
    auto lines = profile::parse(bytes);
    std::string list;
    if (!section) {
        for (const auto& line : lines)
            if (line.kind == profile::Line::header) list += std::string(line.name) + '\0';
        return list;
    }
    auto s = profile::findsection(lines, section);
    for (size_t i = s.header + 1; s.found && i < s.end; ++i)
        if (lines[i].kind == profile::Line::key) list += std::string(lines[i].name) + '\0';
    return list;
}

// The text and a NUL; the bytes after the NUL stay as they were.
uint32_t copytext(std::string_view text, char* buffer, uint32_t size)
{
    if (size == 0) return 0;
    uint32_t n = text.size() > size - 1 ? size - 1 : (uint32_t)text.size();
    std::memcpy(buffer, text.data(), n);
    buffer[n] = 0;
    if (n < text.size()) files::SetLastError(errormoredata);
    return n;
}

uint32_t readfrom(const HostPath& file, const char* section, const char* key, const char* def,
                  char* buffer, uint32_t size)
{
    if (!buffer || size == 0) return 0;
    std::string bytes;
    err e = fsys::read(file, bytes);
    files::SetLastError(fsys::win32of(e));
    if (!section || !key) return copylist(e == err::none ? names(bytes, section) : std::string(), buffer, size);

    std::string_view fallback = def ? def : "";
    while (!fallback.empty() && fallback.back() == ' ') fallback.remove_suffix(1);
    if (e != err::none) return copytext(fallback, buffer, size);
    auto found = profile::lookup(bytes, section, key);
    return copytext(found.found ? std::string_view(found.value) : fallback, buffer, size);
}

int writeto(const HostPath& file, const char* section, const char* key, const char* value)
{
    if (!section) {
        // All three null asks for a flush, which has nothing to do here; it returns FALSE.
        files::SetLastError(key || value ? errorinvalidparameter : 0);
        return 0;
    }
    std::string before;
    err e = fsys::read(file, before);
    bool missing = e == err::nofile;
    if (e != err::none && !missing) {
        files::SetLastError(fsys::win32of(e));
        return 0;
    }
    std::string after = profile::update(before, section, key, value);
    if (missing && after.empty()) {  // a delete in a file that is not there
        files::SetLastError(0);
        return 1;
    }
    e = fsys::write(file, after, fsys::writemode::replace);
    files::SetLastError(fsys::win32of(e));
    return e == err::none ? 1 : 0;
}

}  // namespace

uint32_t GetPrivateProfileStringA(const char* section, const char* key, const char* def, char* buffer,
                                  uint32_t size, const char* file)
{
    return readfrom(platform::resolve(file ? file : ""), section, key, def, buffer, size);
}

int WritePrivateProfileStringA(const char* section, const char* key, const char* value, const char* file)
{
    return writeto(platform::resolve(file ? file : ""), section, key, value);
}

uint32_t GetPrivateProfileStringA(const std::string& section, const std::string& key, const std::string& def,
                                  std::string& buffer, uint32_t size, const std::string& file)
{
    // The buffer is the caller's; never write past it, whatever size is claimed.
    if (size > buffer.size()) size = (uint32_t)buffer.size();
    return GetPrivateProfileStringA(section.c_str(), key.c_str(), def.c_str(), buffer.data(), size, file.c_str());
}

int WritePrivateProfileStringA(const std::string& section, const std::string& key, const std::string& value,
                               const std::string& file)
{
    return WritePrivateProfileStringA(section.c_str(), key.c_str(), value.c_str(), file.c_str());
}

namespace profile {

uint32_t readhostfile(const char* section, const char* key, const char* def, char* buffer, uint32_t size,
                      const std::string& hostfile)
{
    return readfrom({HostPath::local, hostfile}, section, key, def, buffer, size);
}

int writehostfile(const char* section, const char* key, const char* value, const std::string& hostfile)
{
    return writeto({HostPath::local, hostfile}, section, key, value);
}

}  // namespace profile

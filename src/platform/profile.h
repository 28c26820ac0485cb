// The two profile-file calls the settings, BAR and master files are read and written with.
// They behave as the Windows calls do: a read copies into the caller's fixed buffer, returns
// the count, and leaves the bytes after the terminator as they were; a read with the file's
// own path as its default tells a missing key from a present one. Every call reads the file
// afresh and every write rewrites it before returning. Paths are Windows paths (paths.h).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// section, key and def may be null (null def means ""); size is the buffer's size.
uint32_t GetPrivateProfileStringA(const char* section, const char* key, const char* def,
                                  char* buffer, uint32_t size, const char* file);
// A null value deletes the key, a null key deletes the section. Returns 0 on failure and
// sets the last error (files::GetLastError).
int WritePrivateProfileStringA(const char* section, const char* key, const char* value,
                               const char* file);

// The same calls on a text buffer that the caller keeps between reads (it must hold at
// least `size` characters; it is never resized or cleared).
uint32_t GetPrivateProfileStringA(const std::string& section, const std::string& key,
                                  const std::string& def, std::string& buffer, uint32_t size,
                                  const std::string& file);
int WritePrivateProfileStringA(const std::string& section, const std::string& key,
                               const std::string& value, const std::string& file);

// The file-format core on bytes, shared by the calls above and by the tools.
namespace profile {
struct ReadResult {
    bool found = false;   // the key was found in the first matching section
    std::string value;    // value as found: trimmed, one outer pair of quotes removed
};
ReadResult lookup(std::string_view filebytes, std::string_view section, std::string_view key);
// File bytes after a write; value null deletes the key, key null deletes the section.
std::string update(std::string_view filebytes, const char* section, const char* key, const char* value);

// The two calls on a file named by its path on this machine instead of a Windows path, for
// the support tools.
uint32_t readhostfile(const char* section, const char* key, const char* def, char* buffer,
                      uint32_t size, const std::string& hostfile);
int writehostfile(const char* section, const char* key, const char* value, const std::string& hostfile);
}  // namespace profile

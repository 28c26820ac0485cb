// Reading TAGSTORE.INI, the settings file in the install folder. Every read of one routine
// goes into the same 50-character buffer, which is never cleared: after a value come its
// terminator and whatever an earlier read left there. The default of every read is the
// file's own path, so a missing key reads as a text that begins with a drive letter.
// Codes are taken from the first character; texts of varying length are stored with a
// trailing "#" and cut at the first "#" in the buffer.
#pragma once

#include <cstdint>
#include <string>

// homedir followed by "TAGSTORE.INI".
std::string settingsfile();

// The buffer of one routine's reads.
class SettingsReader {
public:
    static constexpr uint32_t size = 50;

    SettingsReader();
    // Reads a key into the buffer; returns the count of characters the read delivered.
    long read(const std::string& section, const std::string& key);
    // The first character as a number; a text that is not one raises 13.
    int16_t code() const;
    // Whether the buffer holds a "#" anywhere, the tail of earlier reads included.
    bool hashash() const;
    // The text before the first "#"; with none, the cut raises 5.
    std::string cut() const;
    // The cut as a 16-bit number (13 when it is not one).
    int16_t number() const;
    const std::string& buffer() const { return buffer_; }

private:
    std::string file_;
    std::string buffer_;
};

// MISC CHKROGUE into chkrogue, cut at "#". When the cut fails the key is rewritten as "1"
// and chkrogue becomes "1".
void readchkrogue(SettingsReader& reader);

// The e-mail test: not empty, a first "@" at a position above 1 that is not the last.
bool emailtest(const std::string& text);

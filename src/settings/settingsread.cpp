#include "settings/settingsread.h"

#include "core/globals.h"
#include "platform/profile.h"
#include "runtime/vb.h"

std::string settingsfile() { return g().homedir + "TAGSTORE.INI"; }

SettingsReader::SettingsReader() : file_(settingsfile()), buffer_(size, '\0') {}

long SettingsReader::read(const std::string& section, const std::string& key)
{
    return (long)GetPrivateProfileStringA(section, key, file_, buffer_, size, file_);
}

int16_t SettingsReader::code() const { return CInt(Left(buffer_, 1)); }

bool SettingsReader::hashash() const { return InStr(buffer_, "#") > 0; }

std::string SettingsReader::cut() const { return Left(buffer_, InStr(buffer_, "#") - 1); }

int16_t SettingsReader::number() const { return CInt(cut()); }

void readchkrogue(SettingsReader& reader)
{
    try {
        reader.read("MISC", "CHKROGUE");
        g().chkrogue = reader.cut();
    } catch (const std::exception&) {
        WritePrivateProfileStringA("MISC", "CHKROGUE", "1", settingsfile());
        g().chkrogue = "1";
    }
}

bool emailtest(const std::string& text)
{
    if (text.empty()) return false;
    long at = InStr(text, "@");
    return at > 1 && at != Len(text);
}

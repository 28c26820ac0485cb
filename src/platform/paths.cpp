#include "platform/paths.h"
#include "runtime/vb.h"

#include <cctype>
#include <dirent.h>
#include <fstream>
#include <map>
#include <sys/stat.h>
#include <vector>

namespace platform {
namespace {

struct Config {
    std::string installdir;
    // section (lower case) -> key (lower case) -> value
    std::map<std::string, std::map<std::string, std::string>> values;
};

Config& config()
{
    static Config c;
    return c;
}

// platform.ini is a plain Linux configuration file: [section], key=value, ; or # comments.
void readconfig(const std::string& file)
{
    auto& values = config().values;
    values.clear();
    std::ifstream in(file);
    std::string line, section;
    while (std::getline(in, line)) {
        line = trimblanks(line);
        if (line.empty() || line[0] == ';' || line[0] == '#') continue;
        if (line[0] == '[') {
            auto close = line.find(']');
            section = LCase(trimblanks(line.substr(1, close == std::string::npos ? std::string::npos : close - 1)));
            continue;
        }
        auto eq = line.find('=');
        if (eq == std::string::npos) continue;
        values[section][LCase(trimblanks(line.substr(0, eq)))] = trimblanks(line.substr(eq + 1));
    }
}

std::string absolute(const std::string& p)
{
    if (!p.empty() && p[0] == '/') return p;
    return config().installdir + "/" + p;
}

bool isdir(const std::string& p)
{
    struct stat st;
    return ::stat(p.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

bool present(const std::string& p)
{
    struct stat st;
    return ::lstat(p.c_str(), &st) == 0;
}

// Splits a Windows path tail at backslashes, dropping empty and "." parts and folding "..".
std::vector<std::string> components(const std::string& tail)
{
    std::vector<std::string> parts;
    std::string cur;
    auto flush = [&] {
        if (cur == "..") {
            if (!parts.empty()) parts.pop_back();
        } else if (!cur.empty() && cur != ".") {
            parts.push_back(cur);
        }
        cur.clear();
    };
    for (char c : tail) {
        if (c == '\\' || c == '/') flush();
        else cur += c;
    }
    flush();
    return parts;
}

// Appends the components to a host folder, each matched without regard to case against
// what exists; the first that matches nothing, and all after it, keep the case written.
std::string lookup(std::string base, const std::vector<std::string>& parts)
{
    bool searching = true;
    for (const auto& part : parts) {
        std::string next = base + "/" + part;
        if (searching && !present(next)) {
            std::string found;
            if (DIR* d = ::opendir(base.c_str())) {
                std::string want = LCase(part);
                while (dirent* e = ::readdir(d)) {
                    if (LCase(e->d_name) == want) {
                        found = e->d_name;
                        break;
                    }
                }
                ::closedir(d);
            }
            if (found.empty()) searching = false;
            else next = base + "/" + found;
        }
        base = next;
    }
    return base;
}

bool startsnocase(const std::string& s, const std::string& prefix)
{
    return s.size() >= prefix.size() && LCase(s.substr(0, prefix.size())) == LCase(prefix);
}

}  // namespace

void initplatform(const std::string& hostinstalldir)
{
    std::string dir = hostinstalldir;
    while (dir.size() > 1 && dir.back() == '/') dir.pop_back();
    config().installdir = dir;
    readconfig(dir + "/platform.ini");
}

std::string hostinstalldir() { return config().installdir; }

std::string hostdrivec() { return absolute(setting("drives", "C", "drive_c")); }

std::string setting(const std::string& section, const std::string& key, const std::string& fallback)
{
    const auto& values = config().values;
    auto s = values.find(LCase(section));
    if (s == values.end()) return fallback;
    auto k = s->second.find(LCase(key));
    return k == s->second.end() ? fallback : k->second;
}

HostPath resolve(const std::string& winpath)
{
    std::string p = winpath;
    for (auto& c : p)
        if (c == '/') c = '\\';

    if (p.size() >= 2 && p[0] == '\\' && p[1] == '\\') {
        auto parts = components(p.substr(2));
        if (parts.size() < 2) return {};
        std::string share = "\\\\" + parts[0] + "\\" + parts[1];
        std::vector<std::string> rest(parts.begin() + 2, parts.end());
        for (const auto& [key, folder] : config().values["shares"]) {
            if (key == LCase(share)) return {HostPath::local, lookup(absolute(folder), rest)};
        }
        std::string url = "smb://" + parts[0] + "/" + parts[1];
        for (const auto& r : rest) url += "/" + r;
        return {HostPath::smb, url};
    }

    if (p.size() >= 2 && std::isalpha((unsigned char)p[0]) && p[1] == ':') {
        std::string install = installfolder;
        install.pop_back();  // without its trailing backslash
        if (startsnocase(p, install) && (p.size() == install.size() || p[install.size()] == '\\'))
            return {HostPath::local, lookup(config().installdir, components(p.substr(install.size())))};
        std::string letter(1, (char)std::toupper((unsigned char)p[0]));
        std::string root = letter == "C" ? hostdrivec() : setting("drives", letter, "");
        if (root.empty()) return {};
        root = absolute(root);
        if (!isdir(root)) ::mkdir(root.c_str(), 0755);
        return {HostPath::local, lookup(root, components(p.substr(2)))};
    }
    return {};
}

std::string winjoin(const std::string& folder, const std::string& name)
{
    if (folder.empty()) return name;
    if (folder.back() == '\\') return folder + name;
    return folder + "\\" + name;
}

}  // namespace platform

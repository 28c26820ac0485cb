#include "platform/paths.h"
#include "runtime/vb.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fstream>
#include <map>
#include <sys/stat.h>
#include <vector>

namespace platform {
namespace {

struct Config {
    std::string installdir;
    std::string homedir;     // [drives] home, or installdir
    // section (lower case) -> key (lower case) -> value
    std::map<std::string, std::map<std::string, std::string>> values;
};

Config& config()
{
    static Config c;
    return c;
}

// platform.ini is a plain Linux configuration file: [section], key=value, ; or # comments.
// Keys of a later file replace those of an earlier one.
void readconfig(const std::string& file)
{
    auto& values = config().values;
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

// A relative path is taken from `base`, by default the install folder.
std::string absolute(const std::string& p, const std::string& base = config().installdir)
{
    if (!p.empty() && p[0] == '/') return p;
    return base + "/" + p;
}

std::string environment(const std::string& name)
{
    const char* v = std::getenv(name.c_str());
    std::string value = v ? v : "";
    if (name == "XDG_DATA_HOME" && (value.empty() || value[0] != '/')) return environment("HOME") + "/.local/share";
    return value;
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

void makepath(const std::string& dir)
{
    std::string sofar;
    for (const auto& part : components(dir)) {
        sofar += "/" + part;
        if (!isdir(sofar)) ::mkdir(sofar.c_str(), 0755);
    }
}

bool isinstallpath(const std::string& p)
{
    std::string install = installfolder;
    install.pop_back();  // without its trailing backslash
    return startsnocase(p, install) && (p.size() == install.size() || p[install.size()] == '\\');
}

}  // namespace

std::string expand(const std::string& value)
{
    std::string v = value;
    if (v == "~" || v.rfind("~/", 0) == 0) v = environment("HOME") + v.substr(1);
    std::string out;
    for (size_t i = 0; i < v.size(); ++i) {
        if (v[i] != '$' || i + 1 == v.size()) {
            out += v[i];
            continue;
        }
        size_t start = i + 1, end;
        if (v[start] == '{') {
            end = v.find('}', start);
            if (end == std::string::npos) {
                out += v.substr(i);
                break;
            }
            out += environment(v.substr(start + 1, end - start - 1));
            i = end;
            continue;
        }
        end = start;
        while (end < v.size() && (std::isalnum((unsigned char)v[end]) || v[end] == '_')) ++end;
        if (end == start) {
            out += '$';
            continue;
        }
        out += environment(v.substr(start, end - start));
        i = end - 1;
    }
    return out;
}

void initplatform(const std::string& hostinstalldir)
{
    std::string dir = hostinstalldir;
    while (dir.size() > 1 && dir.back() == '/') dir.pop_back();
    auto& c = config();
    c.installdir = dir;
    c.values.clear();
    readconfig(dir + "/platform.ini");
    std::string site = expand(setting("platform", "site"));
    if (!site.empty()) readconfig(absolute(site));
    c.homedir = dir;
    std::string home = expand(setting("drives", "home"));
    if (!home.empty()) {
        home = absolute(home);
        while (home.size() > 1 && home.back() == '/') home.pop_back();
        makepath(home);
        if (!isdir(home)) std::fprintf(stderr, "platform: cannot make the home folder %s\n", home.c_str());
        c.homedir = home;
    }
}

std::string hostinstalldir() { return config().installdir; }

std::string hosthomedir() { return config().homedir; }

std::string hostdrivec() { return absolute(expand(setting("drives", "C", "drive_c")), config().homedir); }

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
        if (isinstallpath(p)) {
            const auto& c = config();
            auto parts = components(p.substr(std::string(installfolder).size() - 1));
            std::string home = lookup(c.homedir, parts);
            if (c.homedir == c.installdir || present(home)) return {HostPath::local, home};
            std::string install = lookup(c.installdir, parts);
            if (present(install)) return {HostPath::local, install};
            // A new name goes to the home folder; a folder it lies in that so far exists only
            // in the install folder is made there first.
            auto slash = install.rfind('/');
            if (!parts.empty() && slash > c.installdir.size() && isdir(install.substr(0, slash))) {
                makepath(c.homedir + install.substr(c.installdir.size(), slash - c.installdir.size()));
                home = lookup(c.homedir, parts);
            }
            return {HostPath::local, home};
        }
        std::string letter(1, (char)std::toupper((unsigned char)p[0]));
        std::string root = letter == "C" ? hostdrivec() : expand(setting("drives", letter, ""));
        if (root.empty()) return {};
        root = absolute(root, config().homedir);
        if (!isdir(root)) ::mkdir(root.c_str(), 0755);
        return {HostPath::local, lookup(root, components(p.substr(2)))};
    }
    return {};
}

std::vector<HostPath> layers(const std::string& winfolder)
{
    HostPath first = resolve(winfolder);
    if (first.kind == HostPath::none) return {};
    std::vector<HostPath> all{first};
    std::string p = winfolder;
    for (auto& c : p)
        if (c == '/') c = '\\';
    const auto& c = config();
    if (c.homedir != c.installdir && isinstallpath(p)) {
        HostPath install{HostPath::local, lookup(c.installdir, components(p.substr(std::string(installfolder).size() - 1)))};
        if (install.path != first.path) all.push_back(install);
    }
    return all;
}

std::string winjoin(const std::string& folder, const std::string& name)
{
    if (folder.empty()) return name;
    if (folder.back() == '\\') return folder + name;
    return folder + "\\" + name;
}

}  // namespace platform

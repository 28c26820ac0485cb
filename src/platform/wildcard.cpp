// Wild-card names as Windows matches them in a folder listing.
#include <algorithm>
#include <cctype>

#include "platform/fsys.h"

namespace fsys {
namespace {

bool matchfrom(std::string_view s, std::string_view p)
{
    size_t si = 0, pi = 0, star = std::string_view::npos, mark = 0;
    while (si < s.size()) {
        if (pi < p.size() && (p[pi] == '?' || std::toupper((unsigned char)p[pi]) == std::toupper((unsigned char)s[si]))) {
            ++si;
            ++pi;
        } else if (pi < p.size() && p[pi] == '*') {
            star = pi++;
            mark = si;
        } else if (star != std::string_view::npos) {
            pi = star + 1;
            si = ++mark;
        } else {
            return false;
        }
    }
    while (pi < p.size() && p[pi] == '*') ++pi;
    return pi == p.size();
}

std::string upper(std::string s)
{
    for (auto& c : s) c = (char)std::toupper((unsigned char)c);
    return s;
}

}  // namespace

bool haswild(std::string_view name) { return name.find_first_of("*?") != std::string_view::npos; }

bool wildmatch(std::string_view name, std::string_view pattern)
{
    if (pattern == "*.*" || pattern.empty()) pattern = "*";
    return matchfrom(name, pattern);
}

void splitlast(const std::string& winpath, std::string& folder, std::string& last)
{
    auto cut = winpath.find_last_of("\\/");
    if (cut == std::string::npos) {
        folder.clear();
        last = winpath;
    } else {
        folder = winpath.substr(0, cut + 1);
        last = winpath.substr(cut + 1);
    }
}

err matching(const HostPath& folder, const std::string& pattern, bool withfolders, std::vector<Entry>& found)
{
    std::vector<Entry> all;
    if (err e = list(folder, all); e != err::none) return e;
    for (auto& entry : all)
        if ((withfolders || !entry.folder) && wildmatch(entry.name, pattern)) found.push_back(std::move(entry));
    sortentries(found);
    return err::none;
}

void sortentries(std::vector<Entry>& entries)
{
    std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
        std::string ua = upper(a.name), ub = upper(b.name);
        return ua != ub ? ua < ub : a.name < b.name;
    });
}

}  // namespace fsys

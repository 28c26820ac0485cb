// vexal-ini: the program's profile calls on a file of this machine, for support and scripts.
//
//   vexal-ini get FILE SECTION KEY DEFAULT [SIZE]   prints the count, then the text
//   vexal-ini set FILE SECTION KEY VALUE
//   vexal-ini delete FILE SECTION [KEY]             removes the key, or the whole section
//
// A read behaves exactly as the program's: SIZE (50 unless given) is the buffer's size, so
// a longer value comes back cut to SIZE-1 characters.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/files.h"
#include "platform/profile.h"

namespace {

int usage()
{
    std::fprintf(stderr,
                 "usage: vexal-ini get FILE SECTION KEY DEFAULT [SIZE]\n"
                 "       vexal-ini set FILE SECTION KEY VALUE\n"
                 "       vexal-ini delete FILE SECTION [KEY]\n");
    return 2;
}

int failed(const char* what, const std::string& file)
{
    std::fprintf(stderr, "vexal-ini: cannot %s %s (Windows error %u)\n", what, file.c_str(),
                 (unsigned)files::GetLastError());
    return 1;
}

int get(const std::vector<std::string>& a)
{
    if (a.size() != 5 && a.size() != 6) return usage();
    unsigned long size = 50;
    if (a.size() == 6) {
        char* end = nullptr;
        size = std::strtoul(a[5].c_str(), &end, 10);
        if (a[5].empty() || *end || a[5][0] == '-' || size > 1u << 20) {
            std::fprintf(stderr, "vexal-ini: SIZE must be a number from 0 to 1048576, not \"%s\"\n", a[5].c_str());
            return 2;
        }
    }
    std::vector<char> buffer(size + 1, 0);
    uint32_t n = profile::readhostfile(a[2].c_str(), a[3].c_str(), a[4].c_str(), buffer.data(), (uint32_t)size, a[1]);
    std::printf("%u\n%s\n", (unsigned)n, buffer.data());
    return 0;
}

int set(const std::vector<std::string>& a)
{
    if (a.size() != 5) return usage();
    if (!profile::writehostfile(a[2].c_str(), a[3].c_str(), a[4].c_str(), a[1])) return failed("write", a[1]);
    return 0;
}

int remove(const std::vector<std::string>& a)
{
    if (a.size() != 3 && a.size() != 4) return usage();
    const char* key = a.size() == 4 ? a[3].c_str() : nullptr;
    if (!profile::writehostfile(a[2].c_str(), key, nullptr, a[1])) return failed("write", a[1]);
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    std::vector<std::string> a;
    for (int i = 1; i < argc; ++i) a.emplace_back(argv[i]);
    if (a.size() < 2) return usage();
    a[1] = std::filesystem::absolute(a[1]).lexically_normal().string();
    if (a[0] == "get") return get(a);
    if (a[0] == "set") return set(a);
    if (a[0] == "delete") return remove(a);
    return usage();
}

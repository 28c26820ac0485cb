// Faults a test can inject into the file layer: a disk that fills on the Nth write, a folder
// that refuses changes even to root, a share that goes away. Each is kept as the host path
// it resolved to when it was set, so every name of the same place meets it.
#include <cctype>
#include <vector>

#include "platform/files.h"
#include "runtime/vb.h"
#include "platform/fsys.h"

namespace {

struct Injected {
    int writesleft = -1;                       // -1: no write fails
    std::vector<platform::HostPath> readonly;  // folders
    std::vector<platform::HostPath> vanished;  // share roots
};

Injected& state()
{
    static Injected s;
    return s;
}

// p is `root` or lies below it. SMB names compare without regard to case.
bool within(const platform::HostPath& p, const platform::HostPath& root, bool orself)
{
    if (p.kind != root.kind || root.path.empty()) return false;
    bool smb = p.kind == platform::HostPath::smb;
    std::string a = smb ? LCase(p.path) : p.path;
    std::string b = smb ? LCase(root.path) : root.path;
    if (a == b) return orself;
    if (b.back() != '/') b += '/';
    return a.compare(0, b.size(), b) == 0;
}

}  // namespace

namespace files::inject {

void failwriteafter(int n) { state().writesleft = n < 0 ? -1 : n; }

void readonlyfolder(const std::string& path)
{
    auto p = platform::resolve(path);
    if (p.kind != platform::HostPath::none) state().readonly.push_back(p);
}

void vanishshare(const std::string& share)
{
    auto p = platform::resolve(share);
    if (p.kind != platform::HostPath::none) state().vanished.push_back(p);
}

void reset() { state() = Injected{}; }

}  // namespace files::inject

namespace fsys::injected {

bool vanished(const HostPath& p)
{
    for (const auto& root : state().vanished)
        if (within(p, root, true)) return true;
    return false;
}

bool readonly(const HostPath& p)
{
    for (const auto& folder : state().readonly)
        if (within(p, folder, false)) return true;
    return false;
}

bool failthiswrite()
{
    int& left = state().writesleft;
    if (left < 0) return false;
    if (left-- == 0) return true;
    return false;
}

}  // namespace fsys::injected

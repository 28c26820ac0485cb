#include "pipeline/savejournal.h"

#include <algorithm>

#include "core/logs.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "runtime/vb.h"

namespace savejournal {
namespace {

constexpr const char* heading = "VEXALBC SAVE JOURNAL";
constexpr const char* workfolder = "c:\\tarnbc";

// The files of the save under way; empty when none is.
std::vector<std::string>& underway()
{
    static std::vector<std::string> files;
    return files;
}

// One line up to CR LF from `at`, which moves past it; false when there is none.
bool takeline(const std::string& text, size_t& at, std::string& line)
{
    const size_t end = text.find("\r\n", at);
    if (end == std::string::npos) return false;
    line = text.substr(at, end - at);
    at = end + 2;
    return true;
}

bool startswith(const std::string& s, const char* head)
{
    const std::string h = head;
    return s.compare(0, h.size(), h) == 0;
}

}  // namespace

bool parse(const std::string& text, std::vector<Kept>& kept)
{
    size_t at = 0;
    std::string line;
    if (!takeline(text, at, line) || line != heading) return false;
    while (takeline(text, at, line)) {
        if (line == "END") return at == text.size();
        if (!startswith(line, "FILE ")) return false;
        Kept k;
        k.path = line.substr(5);
        if (!takeline(text, at, line)) return false;
        if (line != "NONE") {
            if (!startswith(line, "SIZE ") || line.size() > 16) return false;
            const std::string digits = line.substr(5);
            if (digits.empty() || !std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; }))
                return false;
            const size_t n = std::stoul(digits);
            if (n > text.size() - at || text.compare(at + n, 2, "\r\n") != 0) return false;
            k.existed = true;
            k.bytes = text.substr(at, n);
            at += n + 2;
        }
        kept.push_back(std::move(k));
    }
    return false;
}

namespace {

// Writes the kept files back and flushes them; false when one cannot be written now.
bool putback(const std::vector<Kept>& kept, bool logged)
{
    try {
        for (const Kept& k : kept) {
            if (k.existed) {
                files::writeall(k.path, k.bytes);
                files::flush(k.path);
            } else if (files::exists(k.path)) {
                files::removefile(k.path);
            }
            if (logged) addtologfile("Unfinished save put back: " + k.path);
        }
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

// Puts back the save of one journal and removes it. False when the journal stays.
bool replayfile(const std::string& journal, bool logged)
{
    std::vector<Kept> kept;
    try {
        const std::string text = files::readall(journal);
        // A journal cut off while it was written: its save had changed nothing yet.
        if (parse(text, kept) && !putback(kept, logged)) return false;
        files::removefile(journal);
        files::flush(workfolder);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace

void begin(const std::vector<std::string>& files)
{
    if (files::exists(journalfile) && !replayfile(journalfile, true)) {
        const std::string aside = std::string(workfolder) + "\\SAVE_" +
                                  Format(platform::clock::now(), "YYMMDD_HHMMSS") + ".JNL";
        files::renamefile(journalfile, aside);
    }
    std::string text = std::string(heading) + "\r\n";
    for (const std::string& f : files) {
        text += "FILE " + f + "\r\n";
        if (files::exists(f)) {
            const std::string bytes = files::readall(f);
            text += "SIZE " + std::to_string(bytes.size()) + "\r\n" + bytes + "\r\n";
        } else {
            text += "NONE\r\n";
        }
    }
    text += "END\r\n";
    files::writeall(journalfile, text);
    files::flush(journalfile);
    underway() = files;
}

void commit()
{
    for (const std::string& f : underway())
        if (files::exists(f)) files::flush(f);
    underway().clear();
    files::removefile(journalfile);
    files::flush(workfolder);
}

bool rollback()
{
    if (underway().empty()) return true;
    underway().clear();
    return replayfile(journalfile, false);
}

void replay()
{
    std::vector<std::string> journals;
    try {
        // Set-aside journals are older than SAVE.JNL: they go first, by their stamps.
        for (const std::string& name : files::list(std::string(workfolder) + "\\SAVE_*.JNL"))
            journals.push_back(std::string(workfolder) + "\\" + name);
        if (files::exists(journalfile)) journals.push_back(journalfile);
    } catch (const std::exception&) {
        return;
    }
    for (const std::string& journal : journals) replayfile(journal, true);
}

}  // namespace savejournal

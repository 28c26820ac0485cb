#include "pipeline/savejournal.h"

#include <algorithm>

#include "core/logs.h"
#include "pipeline/formats.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "runtime/fault.h"
#include "runtime/vb.h"

namespace savejournal {
namespace {

constexpr const char* heading = "VEXALBC SAVE JOURNAL";
constexpr const char* workfolder = "c:\\tarnbc";

// The files of the save under way as the journal keeps them; empty when none is.
std::vector<Kept>& underway()
{
    static std::vector<Kept> kept;
    return kept;
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

bool parse(const std::string& text, std::vector<Kept>& kept, std::vector<Check>& checks)
{
    size_t at = 0;
    std::string line;
    if (!takeline(text, at, line) || line != heading) return false;
    while (takeline(text, at, line)) {
        if (line == "END") return at == text.size();
        if (startswith(line, "CHECK ")) {
            Check c;
            c.file = line.substr(6);
            std::string keyline;
            if (!takeline(text, at, line) || !startswith(line, "SECTION ") || !takeline(text, at, keyline) ||
                !startswith(keyline, "KEY "))
                return false;
            c.section = line.substr(8);
            const size_t equals = keyline.find('=', 4);
            if (equals == std::string::npos) return false;
            c.key = keyline.substr(4, equals - 4);
            c.value = keyline.substr(equals + 1);
            checks.push_back(std::move(c));
            continue;
        }
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
                files::flush(k.path, true);
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

// Every key the checks name holds its value (a file out of reach holds nothing).
bool finished(const std::vector<Check>& checks)
{
    if (checks.empty()) return false;
    try {
        for (const Check& c : checks) {
            if (!files::exists(c.file)) return false;
            if (std::string(formats::readvalue(c.file, c.section, c.key).c_str()) != c.value) return false;
        }
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

// The journal emptied on the disk: no save is under way. The file itself stays, so that
// the next save writes it without a new name to flush.
void clear(const std::string& journal)
{
    files::writeall(journal, "");
    files::flush(journal);
}

// Puts back the save of one journal and empties it (a set-aside one is removed). False when
// the journal stays as it is.
bool replayfile(const std::string& journal, bool logged)
{
    std::vector<Kept> kept;
    try {
        const std::string text = files::readall(journal);
        if (text.empty()) return true;
        // A journal cut off while it was written: its save had changed nothing yet. One
        // whose checks hold: its save finished.
        std::vector<Check> checks;
        if (parse(text, kept, checks) && !finished(checks) && !putback(kept, logged)) return false;
        if (journal == journalfile) {
            clear(journal);
        } else {
            files::removefile(journal);
            files::flush(workfolder);
        }
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

bool pending() { return files::exists(journalfile) && files::filelength(journalfile) > 0; }

}  // namespace

void begin(const std::vector<std::string>& files, const std::vector<Check>& checks)
{
    bool fresh = !files::exists(journalfile);
    if (pending() && !replayfile(journalfile, true)) {
        const std::string aside = std::string(workfolder) + "\\SAVE_" +
                                  Format(platform::clock::now(), "YYMMDD_HHMMSS") + ".JNL";
        files::renamefile(journalfile, aside);
        fresh = true;
    }
    std::vector<Kept> kept;
    std::string text = std::string(heading) + "\r\n";
    for (const std::string& f : files) {
        Kept k;
        k.path = f;
        // Only a file that is not there is kept as missing; one out of reach stops the save.
        try {
            k.bytes = files::readall(f);
            k.existed = true;
        } catch (const Fault& e) {
            if (e.number != fault::filenotfound) throw;
        }
        text += "FILE " + f + "\r\n";
        if (k.existed) {
            text += "SIZE " + std::to_string(k.bytes.size()) + "\r\n" + k.bytes + "\r\n";
        } else {
            text += "NONE\r\n";
        }
        kept.push_back(std::move(k));
    }
    for (const Check& c : checks)
        text += "CHECK " + c.file + "\r\nSECTION " + c.section + "\r\nKEY " + c.key + "=" + c.value + "\r\n";
    text += "END\r\n";
    files::writeall(journalfile, text);
    files::flush(journalfile, fresh);
    underway() = std::move(kept);
}

void commit()
{
    // A file the save left as it was needs no flush (the master file, unless a BAR file was
    // added); a file the save made needs its name flushed too.
    for (const Kept& k : underway()) {
        if (!files::exists(k.path)) continue;
        if (k.existed && files::readall(k.path) == k.bytes) continue;
        files::flush(k.path, !k.existed);
    }
    underway().clear();
    // A power cut that loses this leaves a journal whose checks hold: the start keeps the save.
    files::writeall(journalfile, "");
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
        if (pending()) journals.push_back(journalfile);
    } catch (const std::exception&) {
        return;
    }
    for (const std::string& journal : journals) replayfile(journal, true);
}

}  // namespace savejournal

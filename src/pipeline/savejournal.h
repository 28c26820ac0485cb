// The save journal: what a save is about to change, kept as it stood, so that a save that
// did not finish (the program killed, the power cut, a write that failed half way) can be
// put back whole. The BAR file and the master file are rewritten in place by the profile
// writes, which is fast but leaves a torn file if the writing stops in the middle; the
// journal makes that harmless.
//
// c:\tarnbc\SAVE.JNL, written and flushed before the first change of a save:
//   "VEXALBC SAVE JOURNAL" CR LF, then for each file "FILE " path CR LF and either
//   "NONE" CR LF (the file did not exist) or "SIZE " n CR LF, its n bytes and CR LF; then
//   then for each check "CHECK " file, "SECTION " section and "KEY " key "=" value, each
//   closed by CR LF; then "END" CR LF. A journal without its END was cut off before any
//   change was made. An empty journal: no save is under way (the file stays, so writing it
//   costs no new name). The checks name the last keys the save writes: a journal whose
//   checks all hold belongs to a save that finished, whose emptying the disk had not kept
//   yet, so emptying it needs no flush of its own.
//
// A save's lines are in the data log and (for the CS 1504 and the OPN 2001) in the safety
// copy before the journal is written, and the scanner is cleared only after the save has
// finished, so a save put back loses nothing: the scanner still holds the lines.
#pragma once

#include <string>
#include <vector>

namespace savejournal {

inline constexpr const char* journalfile = "c:\\tarnbc\\SAVE.JNL";

// A file as a journal keeps it.
struct Kept {
    std::string path;
    bool existed = false;
    std::string bytes;
};
// A key a finished save has written: when every check of a journal holds, its save got to
// its end and stays.
struct Check {
    std::string file, section, key, value;
};
// The files and checks a journal holds; false for one that was cut off or is not a journal.
bool parse(const std::string& text, std::vector<Kept>& kept, std::vector<Check>& checks);

// Keeps the files as they stand (a missing one as missing) in the journal, on the disk.
// A journal left by an earlier save is put back first; one that cannot be (its share is
// away) is set aside as SAVE_YYMMDD_HHMMSS.JNL for the next start. Raises the file
// layer's faults.
void begin(const std::vector<std::string>& files, const std::vector<Check>& checks);
// The save has finished: the files it changed go to the disk, then the journal is emptied
// (not flushed: its checks tell a finished save).
void commit();
// The save failed: its files are put back as the journal holds them and the journal is
// emptied.
// False, with the journal kept, when they cannot be written now.
bool rollback();
// At start: puts back every save the journals say did not finish, oldest first, and logs
// each file put back. A journal whose files cannot be reached stays for the next start.
void replay();

}  // namespace savejournal

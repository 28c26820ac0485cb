// The save journal: what a save is about to change, kept as it stood, so that a save that
// did not finish (the program killed, the power cut, a write that failed half way) can be
// put back whole. The BAR file and the master file are rewritten in place by the profile
// writes, which is fast but leaves a torn file if the writing stops in the middle; the
// journal makes that harmless.
//
// c:\tarnbc\SAVE.JNL, written and flushed before the first change of a save:
//   "VEXALBC SAVE JOURNAL" CR LF, then for each file "FILE " path CR LF and either
//   "NONE" CR LF (the file did not exist) or "SIZE " n CR LF, its n bytes and CR LF; then
//   "END" CR LF. A journal without its END was cut off before any change was made.
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
// The files a journal holds; false for one that was cut off or is not a journal.
bool parse(const std::string& text, std::vector<Kept>& kept);

// Keeps the files as they stand (a missing one as missing) in the journal, on the disk.
// A journal left by an earlier save is put back first; one that cannot be (its share is
// away) is set aside as SAVE_YYMMDD_HHMMSS.JNL for the next start. Raises the file
// layer's faults.
void begin(const std::vector<std::string>& files);
// The save has finished: its files go to the disk, then the journal goes.
void commit();
// The save failed: its files are put back as the journal holds them and the journal goes.
// False, with the journal kept, when they cannot be written now.
bool rollback();
// At start: puts back every save the journals say did not finish, oldest first, and logs
// each file put back. A journal whose files cannot be reached stays for the next start.
void replay();

}  // namespace savejournal

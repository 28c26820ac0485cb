// The files of scan data and their names: the canonical line, the BAR files, the master
// file, the raw download file with its backup and export copies, the data log block, the
// lock file and the writability probe. Tarn reads the store, so these are a contract with
// another system: every writer and reader of them goes through here.
//
// Text files are single-byte text with CR LF line ends. Numbers in names and keys are
// three digits, zero-padded ("000"), unless a function says otherwise.
#pragma once

#include <QDateTime>
#include <string>
#include <vector>

#include "runtime/vb.h"

namespace formats {

// ---- places ------------------------------------------------------------------------------
enum class Place { local, store };

inline constexpr const char* localfolder = "c:\\tarnbc\\";
// \\<serverip>\tagstore\ .
std::string storefolder(const std::string& serverip);

// Where saves go for a savetype and storedown: local for 0 and 2, and for 1 while the
// store is down; the store folder otherwise (also for 3, reached only from the repair
// screen's accept).
Place saveplace(int savetype, int storedown);
// The same for the settings in the shared block.
Place saveplace();
// The folder of a place, by the server address setting for the store.
std::string folder(Place place);

// ---- names ---------------------------------------------------------------------------
// Local names end in ".INI", store names in "." and the terminal number.
std::string masterfile(Place place);      // BARCODE.INI / BARCODE.<TNO>
std::string barfile(Place place, long n);  // BARnnn.INI / BARnnn.<TNO>
std::string tmpfile(Place place, long n);  // TMPnnn.INI / TMPnnn.<TNO>, used while renumbering
std::string probefile(Place place);        // BARTEST.INI / BARTEST.<TNO>
// BARLCK.<TNO> in the store folder: data is being loaded into Tarn. Never created here.
std::string lockfile();
// A file of a place by its name without the extension ("BAR004"), as the file editor's
// entries carry it.
std::string namedfile(Place place, const std::string& stem);
// The file copied to prove a place can be written: BAR999.INI in the install folder.
std::string probesource();

// BAR files above the master file's count are looked for up to this number, no further.
inline constexpr int roguelimit = 20;

// ---- scanner IDs in names --------------------------------------------------------------
// NNN of the raw file names: the last three characters of the ID in "000" form.
std::string idnumber(const std::string& scannerid);
// The raw download file c:\tarnbc\temp_NNN.txt (OPL 972x only).
std::string rawfile(const std::string& scannerid);
// c:\tarnbc\backups\temp_NNN_YYMMDD_HHMM.txt, stamped with `when`.
std::string backupfile(const std::string& scannerid, const QDateTime& when);
inline constexpr const char* backupfolder = "C:\\TARNBC\\BACKUPS";
// c:\tarnbc\backups\csp_NNN_YYMMDD_HHMMSS.dat: the safety copy of a CS 1504 or OPN 2001
// read, its records one after another as the device handed them over (the length byte N,
// then N bytes more), the form `vexal-decode csp` reads.
std::string safetycopyfile(const std::string& scannerid, const QDateTime& when);
// A record of a packet as the device handed it over: its length byte and the bytes the
// length byte counts.
std::string packetrecord(const std::string& packet);
// c:\tarnbc\exports\export_NNN_<Y><M><D><h><m><s>.txt: the six parts unpadded, so two
// moments can share a name.
std::string exportfile(const std::string& scannerid, const QDateTime& when);
inline constexpr const char* exportfolder = "C:\\TARNBC\\EXPORTS";

// Rewrites the raw download file whole with lines[1..count], one a line, in order; an
// index past the table's end raises 9 with the lines before it written.
void writerawfile(const std::string& scannerid, const FixedArray<std::string, 0, 1000>& lines, long count);

// ---- the canonical line ------------------------------------------------------------------
// type (2) + field (8) + "20" + year (2) + month (2) + day (2) + time HHMM (4) + tail (3 or
// none): 22 characters, or 25 with the tail.
std::string canonicalline(const std::string& type, const std::string& field, const std::string& year,
                          const std::string& month, const std::string& day, const std::string& time,
                          const std::string& tail = "");

// ---- BAR files -------------------------------------------------------------------------
// [000000nnn]: the section of a scanner, without and with the brackets.
std::string sectionname(const std::string& scannerid);
std::string sectionline(const std::string& scannerid);
// Key 000: the line count in "000" form and the date of the last save as YYYYMMDD.
std::string barheader(long lines, const QDate& saved);
// The key of line n: "001" ...
std::string linekey(long n);
// The raw first line of a BAR file, as the file list and the rogue file editor read it:
// the section name (positions 2 to 10, or 2 for length less 2 when the line is not 11
// long) and the scanner number (from position 8 up to the closing bracket, or to the end
// of the line when the bracket is missing).
std::string sectionfromline(const std::string& line);
std::string scannerfromline(const std::string& line);
bool faultyid(const std::string& line);   // a first line that is not 11 long

// Is the section in the file? Key 000 is read with the file's own path as the default; a
// first character that is not a digit means absent (-1). Otherwise the count is the first
// three characters, converted with the runtime's conversion (a bad number raises 13).
long sectionlines(const std::string& file, const std::string& section);
// Key 000 of a section as read (the path itself when absent).
std::string readheader(const std::string& file, const std::string& section);

// ---- the master file -------------------------------------------------------------------
// FILES of section FILES, read with the path as the default: the first three characters
// as a number. A missing file or key gives the path, which raises 13.
long masterfilecount(const std::string& file);
// FILES = count in "000" form; a write that fails raises its fault (see writevalue).
void writemastercount(const std::string& file, long count);

// ---- the data log block ----------------------------------------------------------------
// The lines that mirror a save in the day's data log: "ENTRY: Scanner <ID as 000000>
// <HHMM> <YYYYMMDD>", the section line, "000=" and the header, one "<key>=<line>" for each
// line saved (keys from `firstkey` on), and "END".
std::vector<std::string> datalogblock(const std::string& scannerid, const QDateTime& when,
                                      const std::string& header, long firstkey,
                                      const std::vector<std::string>& lines);
// Writes the block to the data log, one line a call.
void writedatalogblock(const std::vector<std::string>& block);

// ---- profile reads ---------------------------------------------------------------------
// Every read of these files passes a fresh 50-character buffer and the file's own path as
// the default, and callers take fixed parts of the answer.
inline constexpr unsigned readbuffer = 50;
std::string readvalue(const std::string& file, const std::string& section, const std::string& key);
// Writes a key of a data file. The profile call only reports a failed write; here it raises
// the fault of its cause (61 disk full, 70 refused, 76 folder or share out of reach, 75
// otherwise), so a save that cannot write stops where it is.
void writevalue(const std::string& file, const std::string& section, const std::string& key,
                const std::string& value);

}  // namespace formats

// ENGLST.TXT, the engineer list: one engineer a line as "<number>,<number>,<name>", the
// first number matched against scanner IDs, the second keeping the file in order; header
// lines begin "Unit" or "VEXAL". The list is read from the server share when fittertype
// is 1 (Direct), otherwise from c:\tarnbc\ (Local, and the PC Copy of the server file).
#pragma once

#include <functional>
#include <string>
#include <vector>

class ListBox;

// Sets englinestatus for a line: 0 a record, 1 invalid (empty, a leading blank, or the
// first or second field not all digits), 2 a header.
void doenglinetest(const std::string& line);

// The three fields of a line that passed as a record; the name is everything after the
// second comma.
struct EngRecord {
    std::string field1, field2, name;
};
EngRecord engrecord(const std::string& line);
// A field's number, leading zeros and all.
long long engnumber(const std::string& field);
// The record this program writes: the ID in six digits twice, then the name.
std::string englistline(long long id, const std::string& name);

std::string englocalfile();    // c:\tarnbc\ENGLST.TXT
std::string englocalbackup();  // c:\tarnbc\ENGLST.BAK, the working copy of a rewrite
std::string engserverfile();   // \\<serverip>\tagstore\ENGLST.TXT
// The file every reader takes: the server's for fittertype 1, the local one otherwise.
std::string engfile();

// The lines of an engineer file; none when a look-up does not find the file, and only those
// read before a failure when it cannot be read.
std::vector<std::string> readenglines(const std::string& file);
// Fills an engineer list screen's list from the file every reader takes: a row for each
// record as `row` words it (given the record and its first number in six digits), "Invalid
// Entry" for an invalid line; header and blank-test lines are left out.
void fillenglist(ListBox& list, const std::function<std::string(const EngRecord&, const std::string&)>& row);
// The records of the local list, in file order, headers and invalid lines left out.
std::vector<std::string> englistrecords();
// Writes `records` as the local list: first complete into ENGLST.BAK, then ENGLST.TXT is
// deleted and the copy put in its place; ENGLST.BAK stays.
void rewriteenglist(const std::vector<std::string>& records);

// The owner of a scanner: the name of the first record whose first number is the ID's,
// without trailing blanks; "Unknown" when there is none or no file.
std::string engineerowner(const std::string& scannerid);
// A name for display: lower case but for the first letter and each letter after a blank;
// a leading blank is dropped, a one-character name stays as it is.
std::string namecase(const std::string& name);

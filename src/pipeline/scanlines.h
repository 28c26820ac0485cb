// The forms of a raw scan line and how each becomes a canonical line and a text.
//
// OPL 972x lines are text, positions from 1, date and time after commas:
//   kind 0 plain  "TTtt99999999d,DDMMYY,HHMM"  25 long, commas 14 and 21, type 3-4,
//                 field 5-12, day 15-16, month 17-18, year 19-20, time 22-25; 1-2 and 13
//                 only tell the form or are carried nowhere.
//   kind 1 long   "1TTffffffffTTT,DDMMYY,HHMM" 26 long, commas 15 and 22, type 2-3,
//                 field 4-11, tail 12-14, day 16-17, month 18-19, year 20-21, time 23-26.
//   kind 1 short  type "80" or "90" at 2-3, 23 long, commas 12 and 19; made long by "000"
//                 after position 11.
//   kind 2 FR     position 1 not "1", position 2 "1"; length not checked; type "01",
//                 field "0" + position 7 + positions 7-12 (7 twice), tail "0" + 3-4.
// The kind comes from positions 1 and 2: "1" first is long or short, "1" second is FR.
//
// CS 1504 and OPN 2001 records are binary: position 1 holds N, the barcode is the N-5
// characters from position 3 (1-3 the type, 4-11 the field), the stamp the four bytes at
// N-2 to N+1. Barcode "001" to "006" give type "01" to "06", anything else "00".
#pragma once

#include <string>

// ---- every scanner ---------------------------------------------------------------------
// A line holding the character of code 255 had its date written DD/MM/YYYY and its time
// HH:MM. Deletes the first such character, then the "/" at 17, the "/" at 19, a "20" at
// 19-20 and the ":" at 24, each tested on the line as it then stands. False when the line
// has no such character and is left alone.
bool correctline(std::string& line);

// 0 plain, 1 long or short, 2 FR, from positions 1 and 2.
int linekindof(const std::string& line);
// Is a character that is not a digit, at `pos` of a line of `kind`, allowed there?
bool oplcharok(const std::string& line, int kind, long pos, char c);
// Records refuse such a character only among barcode characters 1-12 (positions 3-14).
bool recordcharok(long pos);

// ---- OPL 972x lines ----------------------------------------------------------------------
bool isshortline(const std::string& line);           // positions 2-3 "80" or "90"
bool badlength(const std::string& line, int kind);   // kind 2 is never bad
std::string makelong(const std::string& line);       // "000" after position 11
// Test lines: plain with "99" at 5-6, long with "99" at 3-4; never FR.
bool istestline(const std::string& line, int kind);
std::string oplcanonical(const std::string& line, int kind);
std::string opltext(const std::string& line, int kind);
// What the repair screen gets: the canonical line, but for kind 1 type, field, " ", tail,
// " ", "20", year, month, day, time, 27 characters.
std::string oplreview(const std::string& line, int kind);

// ---- CS 1504 and OPN 2001 records --------------------------------------------------------
// The barcode: N-5 characters from position 3 (a length below 0 raises 5).
std::string recordbarcode(const std::string& record);
// Field characters 4-11 of the barcode short of 8.
bool shortfield(const std::string& barcode);
// The 12-digit datecode of the record's stamp, decoded into `result`.
void recorddatecode(const std::string& record, std::string& result);
std::string recordtype(const std::string& barcode);
bool istestrecord(const std::string& barcode);        // barcode 4-5 "99"
std::string recordcanonical(const std::string& barcode, const std::string& datecode);
std::string recordtext(const std::string& barcode, const std::string& datecode);

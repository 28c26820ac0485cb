// The owner of a scanner as a download names it, from the engineer list.
#pragma once

#include <string>

// The name after the last comma of the first record whose first number is the ID's, without
// trailing blanks, in capitals per word (a leading blank dropped); a one-character name
// gives an empty text. "Unknown" when no record matches or there is no list.
std::string scannerowner(const std::string& scannerid);

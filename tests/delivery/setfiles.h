// The paths of the outstanding sets, on the PC and in the store, and a BAR file of `count`
// like lines, for the delivery and recovery tests.
#pragma once

#include "support/storeworld.h"

inline const char* const localmaster = "c:\\tarnbc\\BARCODE.INI";
inline const char* const storemaster = "\\\\127.0.0.1\\tagstore\\BARCODE.007";

inline std::string localbar(int n) { return "c:\\tarnbc\\BAR" + Format(n, "000") + ".INI"; }
inline std::string storebar(int n) { return "\\\\127.0.0.1\\tagstore\\BAR" + Format(n, "000") + ".007"; }

inline std::string barof(const std::string& scanner, int count, const std::string& date = "20070309")
{
    std::vector<std::string> lines(count, "0112345678200703091430");
    return StoreTest::barbytes(scanner, Format(count, "000") + date, lines);
}

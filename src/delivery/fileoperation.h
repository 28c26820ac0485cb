// The transfer screen's copies and deletes: one SHFileOperationA call each, silent, with no
// confirmations and no question before a folder is made (flags 532), the names closed by
// two extra NULs. A call has failed when the operation says it aborted, or when the last
// platform error is neither 0 nor 6 (6 is tolerated); the number to report is the last
// platform error.
#pragma once

#include <cstdint>
#include <string>

#include "runtime/fault.h"

struct FileOperation {
    bool failed = false;
    uint32_t error = 0;      // the last platform error after the call
    int32_t aborted = 0;     // fAnyOperationsAborted

    // The failure as the handlers report it: the last platform error and its description.
    Fault fault() const;
};

// Judges a call by its two reports.
bool fileoperationfailed(int32_t aborted, uint32_t lasterror);

// Copies `from` (wild cards allowed) into the folder `to`; title "Please wait, copying files...".
FileOperation copyfiles(const std::string& from, const std::string& to);
// Deletes `what` (wild cards allowed, folders with what they hold); title "Please wait,
// deleting files...".
FileOperation deletefiles(const std::string& what);

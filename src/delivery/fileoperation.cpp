#include "delivery/fileoperation.h"

#include "platform/files.h"

namespace {

constexpr uint32_t silentflags = files::FOF_SILENT + files::FOF_NOCONFIRMATION + files::FOF_NOCONFIRMMKDIR;   // 532

FileOperation run(uint32_t func, const std::string& from, const std::string& to, const char* title)
{
    files::SHFILEOPSTRUCTA op;
    op.wFunc = func;
    op.pFrom = from + std::string(2, '\0');
    op.pTo = to + std::string(2, '\0');
    op.fFlags = silentflags;
    op.lpszProgressTitle = title;
    files::SHFileOperationA(op);
    FileOperation result;
    result.error = files::GetLastError();
    result.aborted = op.fAnyOperationsAborted;
    result.failed = fileoperationfailed(result.aborted, result.error);
    return result;
}

}  // namespace

bool fileoperationfailed(int32_t aborted, uint32_t lasterror) { return aborted != 0 || (lasterror != 0 && lasterror != 6); }

Fault FileOperation::fault() const
{
    // The platform's own words for the errors its file operations give.
    switch (error) {
    case 2: return Fault(2, "The system cannot find the file specified.");
    case 3: return Fault(3, "The system cannot find the path specified.");
    case 5: return Fault(5, "Access is denied.");
    case 53: return Fault(53, "The network path was not found.");
    case 80: return Fault(80, "The file exists.");
    case 112: return Fault(112, "There is not enough space on the disk.");
    case 145: return Fault(145, "The directory is not empty.");
    default: return Fault::of((int)error);
    }
}

FileOperation copyfiles(const std::string& from, const std::string& to)
{
    return run(files::FO_COPY, from, to, "Please wait, copying files...");
}

FileOperation deletefiles(const std::string& what) { return run(files::FO_DELETE, what, "", "Please wait, deleting files..."); }

// File and folder operations on Windows paths (see paths.h), with the classic fault numbers
// and the few Win32 calls the routines name. Shares mapped in [shares] are plain folders;
// other shares are reached over SMB.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace files {

// ---- statement-style operations: raise a Fault on failure -----------------------------
bool exists(const std::string& path);          // file or folder
bool isfolder(const std::string& path);
void makefolder(const std::string& path);      // MkDir: 75 if it exists, 76 if no parent
void removefolder(const std::string& path);    // RmDir: 75 if not empty, 76 if missing
void copyfile(const std::string& from, const std::string& to);  // FileCopy: 53, 76, 70
void removefile(const std::string& path);      // Kill: 53 when missing (wild cards allowed)
void renamefile(const std::string& from, const std::string& to);  // Name: 53, 58
long long filelength(const std::string& path); // FileLen: 53
std::string readall(const std::string& path);  // 53 when missing
void writeall(const std::string& path, const std::string& bytes);   // replaces
void appendbytes(const std::string& path, const std::string& bytes);  // creates if missing
// The file's bytes put on the disk (fsync), so that a power cut after the return does not
// lose them; with `entry` (a file just made) also its name in its folder. 53 when missing.
void flush(const std::string& path, bool entry = false);

// Names (not paths) in a folder that match a pattern with * and ?, without regard to case,
// sorted by name. `pattern` is a full path whose last component holds the wild cards.
// With `folders`, folders are listed besides files. A folder that cannot be read lists
// nothing; a path that maps nowhere raises 52.
std::vector<std::string> list(const std::string& pattern, bool folders = false);

// Dir(pattern) gives the first file that matches or ""; Dir() the next of the last pattern,
// "" after the last, and raises 5 when asked again.
std::string Dir(const std::string& pattern);
std::string Dir();

// ---- text files: line input and print ------------------------------------------------
// Reads lines ending in CR LF, LF or CR. Opening a missing file raises 53; reading past the
// end raises 62.
class TextReader {
public:
    explicit TextReader(const std::string& path);
    bool eof() const;
    std::string lineinput();

private:
    std::string data_;
    size_t pos_ = 0;
};

// Writes lines ending in CR LF. Output replaces the file, Append adds to it. Every print is
// one write, so an injected write fault lands on the line it hits.
class TextWriter {
public:
    enum Mode { output, append };
    TextWriter(const std::string& path, Mode mode);
    void print(const std::string& line);   // the line and CR LF
    void write(const std::string& bytes);  // as it stands
    void close() {}

private:
    std::string path_;
};

// ---- Win32 calls ---------------------------------------------------------------------
uint32_t GetLastError();
void SetLastError(uint32_t code);

bool PathFileExistsA(const std::string& path);
bool CopyFileA(const std::string& from, const std::string& to, bool failifexists);
bool DeleteFileA(const std::string& path);
// 3 fixed, 4 remote, 1 no such root.
uint32_t GetDriveTypeA(const std::string& root);
bool SetFileAttributesA(const std::string& path, uint32_t attributes);

constexpr uint32_t FO_MOVE = 1, FO_COPY = 2, FO_DELETE = 3, FO_RENAME = 4;
constexpr uint32_t FOF_SILENT = 4, FOF_NOCONFIRMATION = 16, FOF_NOCONFIRMMKDIR = 512;

struct SHFILEOPSTRUCTA {
    void* hwnd = nullptr;
    uint32_t wFunc = 0;
    std::string pFrom;  // names separated by NUL, closed by two NULs; wild cards allowed
    std::string pTo;
    uint32_t fFlags = 0;
    int32_t fAnyOperationsAborted = 0;
    void* hNameMappings = nullptr;
    std::string lpszProgressTitle;
};
// Copy or delete with wild cards. Returns 0 when every file was done; sets
// fAnyOperationsAborted and the last error when one failed. Nothing to delete is error 2.
int SHFileOperationA(SHFILEOPSTRUCTA& op);

// ---- fault injection for tests -------------------------------------------------------
namespace inject {
void failwriteafter(int n);                     // the (n+1)th write from now fails with 61
void readonlyfolder(const std::string& path);   // writes into it fail with 70, even as root
void vanishshare(const std::string& share);     // \\host\share no longer exists
void reset();
}  // namespace inject

}  // namespace files

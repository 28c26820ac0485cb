// Handing documents and programs to the desktop.
#pragma once

#include <string>

constexpr int SW_HIDE = 0, SW_SHOWNORMAL = 1, SW_SHOWMINIMIZED = 2, SW_SHOWMAXIMIZED = 3;

// Opens a document, folder or address with the desktop's "open" verb: xdg-open, started
// with the file's host path or the address as its one argument. Above 32 on success; 2 or
// 3 for a file or folder that is not there, 31 when xdg-open is missing or cannot start.
long ShellExecuteA(void* hwnd, const std::string& operation, const std::string& file,
                   const std::string& parameters, const std::string& directory, int show);
// Starts a program (a Windows path, then its arguments) without waiting. Above 31 on
// success.
long WinExec(const std::string& commandline, int show);

namespace shell {
// Marks a file of this PC (a Windows path) as a program that may be started: a fetched
// program arrives without the mark. Raises 53 when the file is missing, 75 when it is on a
// share or cannot be marked.
void makeprogram(const std::string& path);

// The user's start-up folder (host path): $XDG_CONFIG_HOME/autostart.
std::string startupfolder();
// Where the pictures of start-up entries go: $XDG_DATA_HOME/vexalbc/icons (by default
// ~/.local/share/vexalbc/icons).
std::string iconfolder();
// Writes (or removes) a start-up entry that runs `program` (a host path, or a Windows path
// of this PC) with `arguments` at log-in: an XDG autostart file named <name>.desktop,
// replaced whole. `icon` (a Windows path of an .ico) is drawn as <iconfolder>/<stem>.png
// and named by the entry's Icon key; an icon that cannot be read leaves the key out. True
// when the entry was written.
bool createstartupentry(const std::string& name, const std::string& program, const std::string& arguments,
                        const std::string& icon = "");
bool removestartupentry(const std::string& name);
bool startupentryexists(const std::string& name);
}  // namespace shell

// Handing documents and programs to the desktop.
#pragma once

#include <string>

constexpr int SW_HIDE = 0, SW_SHOWNORMAL = 1, SW_SHOWMINIMIZED = 2, SW_SHOWMAXIMIZED = 3;

// Opens a document, folder or address with the desktop's "open" verb. Above 32 on success.
long ShellExecuteA(void* hwnd, const std::string& operation, const std::string& file,
                   const std::string& parameters, const std::string& directory, int show);
// Starts a program (a Windows path, then its arguments) without waiting. Above 31 on
// success.
long WinExec(const std::string& commandline, int show);

namespace shell {
// The user's start-up folder (host path): $XDG_CONFIG_HOME/autostart.
std::string startupfolder();
// Writes (or removes) a start-up entry that runs `program` with `arguments` at log-in: an
// XDG autostart file named <name>.desktop. True on success.
bool createstartupentry(const std::string& name, const std::string& program, const std::string& arguments);
bool removestartupentry(const std::string& name);
bool startupentryexists(const std::string& name);
}  // namespace shell

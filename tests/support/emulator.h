// A scanner emulator for tests: starts scanner-emulator on a pseudo-terminal, waits until it
// says "ready", and stops it with SIGTERM. Without a --baud of their own, emulators here
// run at a high line rate so that tests stay fast.
#pragma once

#include <QProcess>
#include <QTemporaryDir>
#include <string>
#include <vector>

class Emulator {
public:
    // type: "opl", "opn" or "cs1504"; args: further options of the emulator. The port's
    // link goes into a temporary folder of the fixture unless `link` names a path.
    explicit Emulator(const std::string& type, std::vector<std::string> args = {}, std::string link = "");
    ~Emulator();
    Emulator(const Emulator&) = delete;
    Emulator& operator=(const Emulator&) = delete;

    bool ready() const { return ready_; }
    const std::string& link() const { return link_; }
    // A file in the fixture's temporary folder (records, state).
    std::string path(const std::string& name) const;
    // Everything printed on stdout and stderr so far.
    std::string output();
    // Waits until stdout holds `text`.
    bool waitfor(const std::string& text, int ms = 5000);
    void signal(int sig);
    // SIGTERM and wait; the exit code, -1 if it had to be killed.
    int stop();

    // The [ports] section that maps COMn to this emulator's port.
    std::string portsection(int com) const;
    static std::string program();
    // Writes a file (records) into a folder, returns its path.
    static std::string writefile(const std::string& path, const std::string& text);

private:
    QTemporaryDir dir_;
    QProcess proc_;
    std::string link_;
    std::string out_;
    bool ready_ = false;
};

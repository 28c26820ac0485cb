// A throw-away install folder for a test: its own drive C, platform.ini and share folders.
#pragma once

#include <QTemporaryDir>
#include <string>

class TempInstall {
public:
    // `extra` is added to platform.ini as it stands (sections and keys).
    explicit TempInstall(const std::string& extra = "");
    ~TempInstall();

    // Host paths.
    std::string root() const;                       // the real install folder
    std::string drivec() const { return root() + "/drive_c"; }
    std::string host(const std::string& winpath) const;  // where a Windows path lands
    // A folder standing for the share \\<host>\<share>, mapped in [shares].
    std::string addshare(const std::string& share);

    // Rewrites platform.ini with `extra` and rereads it.
    void configure(const std::string& extra);

    static void writefile(const std::string& hostpath, const std::string& bytes);
    static std::string readfile(const std::string& hostpath);

private:
    QTemporaryDir dir_;
    std::string extra_;
    std::string shares_;
};

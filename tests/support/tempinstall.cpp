#include "support/tempinstall.h"

#include <QDir>
#include <fstream>
#include <sstream>

#include "platform/paths.h"

TempInstall::TempInstall(const std::string& extra)
{
    QDir(dir_.path()).mkpath("drive_c");
    configure(extra);
}

TempInstall::~TempInstall() = default;

std::string TempInstall::root() const { return dir_.path().toStdString(); }

std::string TempInstall::host(const std::string& winpath) const
{
    return platform::resolve(winpath).path;
}

std::string TempInstall::addshare(const std::string& share)
{
    std::string name = share;
    for (auto& c : name)
        if (c == '\\' || c == '.') c = '_';
    std::string folder = root() + "/share" + name;
    QDir().mkpath(QString::fromStdString(folder));
    shares_ += share + "=" + folder + "\n";
    configure(extra_);
    return folder;
}

void TempInstall::configure(const std::string& extra)
{
    extra_ = extra;
    std::string ini = "[drives]\nC=" + drivec() + "\n";
    if (!shares_.empty()) ini += "[shares]\n" + shares_;
    ini += extra;
    writefile(root() + "/platform.ini", ini);
    platform::initplatform(root());
}

void TempInstall::writefile(const std::string& hostpath, const std::string& bytes)
{
    std::ofstream out(hostpath, std::ios::binary | std::ios::trunc);
    out << bytes;
}

std::string TempInstall::readfile(const std::string& hostpath)
{
    std::ifstream in(hostpath, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

#include "platform/shell.h"

#include <QImage>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QSaveFile>
#include <QStandardPaths>
#include <cstdio>
#include <cstdlib>

#include "platform/paths.h"
#include "runtime/fault.h"

#include <sys/stat.h>

namespace {

// Classic results: 2 file not found, 3 path not found, 31 no application for it, 33 done.
constexpr long ERROR_FILE_NOT_FOUND = 2, ERROR_PATH_NOT_FOUND = 3, SE_ERR_NOASSOC = 31, SE_DONE = 33;

bool isaddress(const std::string& s)
{
    auto colon = s.find("://");
    return colon != std::string::npos && colon > 1 && s.find_first_of("\\") == std::string::npos;
}

// Splits a command line into its program (quoted or up to the first blank) and the rest.
void splitcommand(const std::string& line, std::string& program, std::string& rest)
{
    size_t i = line.find_first_not_of(' ');
    if (i == std::string::npos) return;
    size_t end;
    if (line[i] == '"') {
        end = line.find('"', i + 1);
        program = line.substr(i + 1, end == std::string::npos ? std::string::npos : end - i - 1);
        end = end == std::string::npos ? line.size() : end + 1;
    } else {
        end = line.find(' ', i);
        if (end == std::string::npos) end = line.size();
        program = line.substr(i, end - i);
    }
    rest = end < line.size() ? line.substr(end) : "";
}

// Arguments as the program's own start-up would split them: blanks separate, quotes group.
QStringList splitarguments(const std::string& rest)
{
    return QProcess::splitCommand(QString::fromLatin1(rest.c_str()));
}

std::string desktopentry(const std::string& name) { return shell::startupfolder() + "/" + name + ".desktop"; }

// One word of a desktop entry's Exec key: quoted, with \, ", ` and $ escaped inside the
// quotes, then backslashes doubled again and % doubled for the key's own string rules.
std::string execword(const std::string& word)
{
    std::string quoted = "\"";
    for (char c : word) {
        if (c == '"' || c == '`' || c == '$' || c == '\\') quoted += '\\';
        quoted += c;
    }
    quoted += '"';
    std::string out;
    for (char c : quoted) {
        if (c == '\\') out += "\\\\";
        else if (c == '%') out += "%%";
        else out += c;
    }
    return out;
}

// A Windows path (drive letter or share) as its host path; anything else as it stands.
std::string hostprogram(const std::string& program)
{
    bool windows = (program.size() >= 2 && program[1] == ':') || program.rfind("\\\\", 0) == 0;
    if (!windows) return program;
    auto host = platform::resolve(program);
    return host.kind == platform::HostPath::local ? host.path : program;
}

// The picture of a start-up entry: the icon file (a Windows path, an .ico) drawn as a PNG of
// the same name in the user's icon folder, which desktops take as an absolute Icon path.
// "" when the icon cannot be read or the picture not written: the entry then goes without.
std::string startupicon(const std::string& icon)
{
    if (icon.empty()) return "";
    const auto host = platform::resolve(icon);
    if (host.kind != platform::HostPath::local) return "";
    QImage image(QString::fromLocal8Bit(host.path.c_str()));
    if (image.isNull()) return "";
    const QString folder = QString::fromLocal8Bit(shell::iconfolder().c_str());
    if (!QDir().mkpath(folder)) return "";
    const QString png = folder + "/" + QFileInfo(QString::fromLocal8Bit(host.path.c_str())).completeBaseName() + ".png";
    return image.save(png, "PNG") ? png.toLocal8Bit().toStdString() : "";
}

std::string utf8(const std::string& latin1) { return QString::fromLatin1(latin1.c_str()).toUtf8().toStdString(); }

}  // namespace

long ShellExecuteA(void*, const std::string& operation, const std::string& file,
                   const std::string& parameters, const std::string& directory, int show)
{
    if (!operation.empty() && operation != "open") return SE_ERR_NOASSOC;
    QString target;
    if (isaddress(file)) {
        target = QString::fromLatin1(file.c_str());
    } else {
        auto host = platform::resolve(file);
        if (host.kind == platform::HostPath::none) return ERROR_PATH_NOT_FOUND;
        if (host.kind == platform::HostPath::smb) {
            target = QString::fromLatin1(host.path.c_str());
        } else {
            QFileInfo info(QString::fromLocal8Bit(host.path.c_str()));
            if (!info.exists()) return info.dir().exists() ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
            target = info.absoluteFilePath();
        }
    }
    // The desktop's opener, started with the one argument: no shell sees the name.
    const QString opener = QStandardPaths::findExecutable("xdg-open");
    if (opener.isEmpty()) return SE_ERR_NOASSOC;
    return QProcess::startDetached(opener, {target}) ? SE_DONE : SE_ERR_NOASSOC;
}

long WinExec(const std::string& commandline, int show)
{
    std::string program, rest;
    splitcommand(commandline, program, rest);
    if (program.empty()) return ERROR_FILE_NOT_FOUND;
    auto host = platform::resolve(program);
    if (host.kind != platform::HostPath::local) return ERROR_PATH_NOT_FOUND;
    QFileInfo info(QString::fromLocal8Bit(host.path.c_str()));
    if (!info.exists()) return info.dir().exists() ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
    if (!info.isExecutable() || info.isDir()) return 11;  // ERROR_BAD_FORMAT
    bool started = QProcess::startDetached(info.absoluteFilePath(), splitarguments(rest), info.absolutePath());
    return started ? SE_DONE : ERROR_FILE_NOT_FOUND;
}

namespace shell {

void makeprogram(const std::string& path)
{
    const auto host = platform::resolve(path);
    struct stat st {};
    if (host.kind != platform::HostPath::local || ::stat(host.path.c_str(), &st) != 0 || S_ISDIR(st.st_mode))
        raisefault(host.kind == platform::HostPath::local ? fault::filenotfound : fault::pathfileaccess);
    // Whoever may read the file may run it.
    const mode_t run = S_IXUSR | ((st.st_mode & S_IRGRP) ? S_IXGRP : 0) | ((st.st_mode & S_IROTH) ? S_IXOTH : 0);
    if (::chmod(host.path.c_str(), st.st_mode | run) != 0) raisefault(fault::pathfileaccess);
}

std::string startupfolder()
{
    const char* config = std::getenv("XDG_CONFIG_HOME");
    if (config && *config == '/') return std::string(config) + "/autostart";
    const char* home = std::getenv("HOME");
    return std::string(home ? home : "") + "/.config/autostart";
}

std::string iconfolder()
{
    const char* data = std::getenv("XDG_DATA_HOME");
    if (data && *data == '/') return std::string(data) + "/vexalbc/icons";
    const char* home = std::getenv("HOME");
    return std::string(home ? home : "") + "/.local/share/vexalbc/icons";
}

bool createstartupentry(const std::string& name, const std::string& program, const std::string& arguments,
                        const std::string& icon)
{
    if (!QDir().mkpath(QString::fromLocal8Bit(startupfolder().c_str()))) return false;
    const std::string picture = startupicon(icon);
    std::string exec = execword(hostprogram(program));
    for (const auto& a : QProcess::splitCommand(QString::fromLatin1(arguments.c_str())))
        exec += " " + execword(a.toLatin1().toStdString());
    std::string entry = "[Desktop Entry]\nType=Application\nName=" + utf8(name) + "\nExec=" + utf8(exec) +
                        "\nTerminal=false\n";
    if (!picture.empty()) entry += "Icon=" + picture + "\n";
    entry += "X-GNOME-Autostart-enabled=true\n";
    // Written beside and renamed over the old entry, so a log-in never meets half an entry.
    QSaveFile out(QString::fromLocal8Bit(desktopentry(name).c_str()));
    if (!out.open(QIODevice::WriteOnly)) return false;
    out.write(entry.data(), (qint64)entry.size());
    return out.commit();
}

bool removestartupentry(const std::string& name)
{
    return std::remove(desktopentry(name).c_str()) == 0;
}

bool startupentryexists(const std::string& name)
{
    return QFileInfo::exists(QString::fromLocal8Bit(desktopentry(name).c_str()));
}

}  // namespace shell

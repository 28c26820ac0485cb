#include "support/asuser.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <cstdlib>
#include <unistd.h>

namespace {

std::string setpriv()
{
    for (const char* p : {"/usr/bin/setpriv", "/bin/setpriv"})
        if (QFileInfo(p).isExecutable()) return p;
    return "";
}

}  // namespace

std::vector<std::string> asuser(const std::vector<std::string>& argv)
{
    if (::geteuid() != 0) return argv;
    std::vector<std::string> full{setpriv(), "--reuid=65534", "--regid=65534", "--clear-groups", "--reset-env"};
    full.insert(full.end(), argv.begin(), argv.end());
    return full;
}

bool canrunasuser()
{
    if (::geteuid() != 0) return true;
    if (setpriv().empty()) return false;
    // A build tree inside a folder closed to others (a home folder) cannot be run as nobody.
    std::vector<std::string> line = asuser({"/usr/bin/test", "-x", QCoreApplication::applicationFilePath().toStdString()});
    QStringList args;
    for (size_t i = 1; i < line.size(); ++i) args << QString::fromStdString(line[i]);
    return QProcess::execute(QString::fromStdString(line[0]), args) == 0;
}

bool innerrun()
{
    const char* v = std::getenv("VEXAL_AS_USER");
    return v && std::string(v) == "1";
}

UserRun rerunasuser(const std::string& filter, int timeoutms)
{
    UserRun r;
    std::vector<std::string> argv{QCoreApplication::applicationFilePath().toStdString(), "--gtest_filter=" + filter};
    // setpriv --reset-env leaves a bare environment: the inner run gets it back through env.
    std::vector<std::string> line = asuser({"/usr/bin/env", "VEXAL_AS_USER=1", "QT_QPA_PLATFORM=offscreen",
                                            "HOME=/tmp", "TMPDIR=/tmp", "PATH=/usr/bin:/bin:/usr/sbin:/sbin"});
    line.insert(line.end(), argv.begin(), argv.end());
    QProcess p;
    p.setProcessChannelMode(QProcess::MergedChannels);
    QStringList args;
    for (size_t i = 1; i < line.size(); ++i) args << QString::fromStdString(line[i]);
    p.start(QString::fromStdString(line[0]), args);
    if (!p.waitForStarted(5000)) return r;
    if (!p.waitForFinished(timeoutms)) {
        p.kill();
        p.waitForFinished(2000);
        r.output = p.readAll().toStdString();
        return r;
    }
    r.output = p.readAll().toStdString();
    r.exitcode = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    return r;
}

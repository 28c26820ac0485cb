#include "webhost.h"

#include <QDir>
#include <QFileInfo>
#include <QThread>

#include "loopback.h"
#include "tempinstall.h"

WebHost::~WebHost() { stop(); }

void WebHost::put(const std::string& path, const std::string& bytes)
{
    const QString full = site.path() + "/" + QString::fromStdString(path);
    QDir().mkpath(QFileInfo(full).path());
    TempInstall::writefile(full.toStdString(), bytes);
}

bool WebHost::start()
{
    port = freeport();
    server.start("/usr/bin/python3", {"-m", "http.server", QString::number(port), "--bind", "127.0.0.1",
                                      "--directory", site.path()});
    if (!server.waitForStarted(5000)) {
        why = "cannot start python3 -m http.server";
        return false;
    }
    for (int i = 0; i < 150 && !listening(port); ++i) QThread::msleep(30);
    if (!listening(port)) {
        why = "the HTTP server did not come up on port " + std::to_string(port);
        return false;
    }
    return true;
}

void WebHost::stop()
{
    if (server.state() == QProcess::NotRunning) return;
    server.kill();
    server.waitForFinished(2000);
}

std::string WebHost::base() const { return "http://127.0.0.1:" + std::to_string(port); }

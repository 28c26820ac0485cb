#include "support/emulator.h"
#include "support/testdirs.h"

#include <QElapsedTimer>
#include <csignal>
#include <fstream>

Emulator::Emulator(const std::string& type, std::vector<std::string> args, std::string link)
{
    link_ = link.empty() ? dir_.path().toStdString() + "/port" : link;
    QStringList a{"--type", QString::fromStdString(type), "--link", QString::fromStdString(link_)};
    bool baud = false;
    for (const auto& s : args) {
        if (s == "--baud") baud = true;
        a << QString::fromStdString(s);
    }
    if (!baud) a << "--baud" << "2000000";
    proc_.setProcessChannelMode(QProcess::MergedChannels);
    proc_.start(QString::fromStdString(program()), a);
    ready_ = proc_.waitForStarted(5000) && waitfor("ready " + link_);
}

Emulator::~Emulator() { stop(); }

std::string Emulator::program() { return std::string(VEXAL_BINARY_DIR) + "/tools/emulator/scanner-emulator"; }

std::string Emulator::path(const std::string& name) const { return dir_.path().toStdString() + "/" + name; }

std::string Emulator::output()
{
    out_ += proc_.readAll().toStdString();
    return out_;
}

bool Emulator::waitfor(const std::string& text, int ms)
{
    QElapsedTimer t;
    t.start();
    while (output().find(text) == std::string::npos) {
        if (t.elapsed() > ms || proc_.state() == QProcess::NotRunning) return output().find(text) != std::string::npos;
        proc_.waitForReadyRead(50);
    }
    return true;
}

void Emulator::signal(int sig)
{
    if (proc_.state() != QProcess::NotRunning) ::kill((pid_t)proc_.processId(), sig);
}

int Emulator::stop()
{
    if (proc_.state() == QProcess::NotRunning) return proc_.exitCode();
    signal(SIGTERM);
    if (!proc_.waitForFinished(5000)) {
        proc_.kill();
        proc_.waitForFinished(2000);
        return -1;
    }
    output();
    return proc_.exitStatus() == QProcess::NormalExit ? proc_.exitCode() : -1;
}

std::string Emulator::portsection(int com) const { return "[ports]\nCOM" + std::to_string(com) + "=" + link_ + "\n"; }

std::string Emulator::writefile(const std::string& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
    return path;
}

#include "support/smbserver.h"

#include "support/loopback.h"

#include <QDir>
#include <QFile>
#include <QThread>
#include <sys/stat.h>

SmbServer::SmbServer()
{
    const QString smbd = "/usr/sbin/smbd";
    if (!QFile::exists(smbd)) {
        whynot_ = "smbd is not installed (Debian package samba)";
        return;
    }
    int port = 4445;
    while (listening(port) && port < 4465) ++port;
    QString d = dir_.path();
    QDir(d).mkpath("share");
    QDir(d).mkpath("state");
    QDir(d).mkpath("run");
    // The guest is an ordinary user: it must get through to the share and write in it.
    ::chmod(dir_.path().toLocal8Bit().constData(), 0755);
    ::chmod((d + "/share").toLocal8Bit().constData(), 0777);
    QFile conf(d + "/smb.conf");
    conf.open(QIODevice::WriteOnly);
    conf.write(QString("[global]\n"
                       "interfaces = lo\nbind interfaces only = yes\nsmb ports = %1\ndisable netbios = yes\n"
                       "server role = standalone server\nmap to guest = Bad User\n"
                       "pid directory = %2/run\nlock directory = %2/state\nstate directory = %2/state\n"
                       "private dir = %2/state\ncache directory = %2/state\nncalrpc dir = %2/run/ncalrpc\n"
                       "passdb backend = tdbsam:%2/state/passdb.tdb\nlog file = %2/log\n"
                       "load printers = no\nprinting = bsd\nprintcap name = /dev/null\ndisable spoolss = yes\n"
                       "[tagstore]\npath = %2/share\nguest ok = yes\nguest only = yes\nread only = no\n")
                   .arg(port)
                   .arg(d)
                   .toLatin1());
    conf.close();
    smbd_.setProcessChannelMode(QProcess::MergedChannels);
    smbd_.setStandardOutputFile(d + "/smbd.out");
    smbd_.start(smbd, {"-F", "--debug-stdout", "-s", d + "/smb.conf"});
    if (!smbd_.waitForStarted(3000)) {
        whynot_ = "smbd did not start: " + smbd_.errorString().toStdString();
        return;
    }
    for (int i = 0; i < 100; ++i) {
        if (listening(port)) {
            port_ = port;
            return;
        }
        if (smbd_.state() != QProcess::Running) break;
        QThread::msleep(50);
    }
    QFile out(d + "/smbd.out");
    out.open(QIODevice::ReadOnly);
    whynot_ = "smbd did not listen on port " + std::to_string(port) + ": " + out.readAll().right(400).toStdString();
}

SmbServer::~SmbServer() { stop(); }

void SmbServer::stop()
{
    if (smbd_.state() != QProcess::NotRunning) {
        smbd_.terminate();
        if (!smbd_.waitForFinished(3000)) smbd_.kill();
        smbd_.waitForFinished(1000);
    }
}

std::string SmbServer::folder() const { return dir_.path().toStdString() + "/share"; }

std::string SmbServer::settings() const { return "[smb]\nport=" + std::to_string(port_) + "\n"; }

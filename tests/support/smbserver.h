// A real smbd on loopback for one test: a guest share `tagstore` over a temporary folder.
// It listens on port 4445, or on a free port near it when 4445 is taken.
#pragma once

#include <QProcess>
#include <QTemporaryDir>
#include <string>

class SmbServer {
public:
    SmbServer();
    ~SmbServer();

    bool running() const { return port_ != 0; }
    // Stops the server and the processes it started for its clients: the share is gone.
    void stop();
    std::string whynot() const { return whynot_; }   // why it did not start
    int port() const { return port_; }
    std::string folder() const;                      // host folder behind \\127.0.0.1\tagstore
    // platform.ini lines that reach it: the [smb] section with the port.
    std::string settings() const;

private:
    QTemporaryDir dir_;
    QProcess smbd_;
    int port_ = 0;
    std::string whynot_;
};

// A web host for the tests: Python's own HTTP server on a loopback port, serving a
// temporary folder that the test fills with the files the program fetches.
#pragma once

#include <QProcess>
#include <QTemporaryDir>
#include <string>

class WebHost {
public:
    WebHost() = default;
    ~WebHost();
    WebHost(const WebHost&) = delete;
    WebHost& operator=(const WebHost&) = delete;

    // Writes a file under the served folder (`path` relative, with '/'), making its folders.
    void put(const std::string& path, const std::string& bytes);
    // Starts serving; false (with the reason in `error()`) when the server does not come up.
    bool start();
    // Stops serving: the host is then away, as a site that is down.
    void stop();
    bool running() const { return server.state() != QProcess::NotRunning; }
    // "http://127.0.0.1:<port>", without a trailing slash.
    std::string base() const;
    std::string folder() const { return site.path().toStdString(); }
    const std::string& error() const { return why; }

private:
    QTemporaryDir site;
    QProcess server;
    int port = 0;
    std::string why;
};

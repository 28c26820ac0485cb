// A settings test's world: a temporary install with drive C, c:\tarnbc and today's logs,
// a fresh shared block, unattended message boxes, and helpers for the settings file's
// bytes, the log and the boxes.
#pragma once

#include <QDateTime>
#include <gtest/gtest.h>
#include <pty.h>
#include <string>
#include <sys/file.h>
#include <unistd.h>
#include <vector>

#include "core/colorbox.h"
#include "core/globals.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "pipeline/pipelinefixture.h"
#include "support/tempinstall.h"

// A settings test's world: the pipeline tests' install, dated 9 March 2007 14:05:07.
class SettingsTest : public PipelineTest {
protected:
    std::string inipath() const { return install.host(g().homedir + "TAGSTORE.INI"); }
    void writeini(const std::string& bytes) const { TempInstall::writefile(inipath(), bytes); }
    std::string ini() const { return TempInstall::readfile(inipath()); }
    std::string local(const std::string& name) const { return install.host("c:\\tarnbc\\" + name); }

    bool logged(const std::string& text) const
    {
        for (const auto& l : loglines())
            if (l.find(text) != std::string::npos) return true;
        return false;
    }

    // Titles and texts of the boxes shown since the last clear.
    std::vector<std::string> boxes() const
    {
        std::vector<std::string> out;
        for (const auto& e : dialogs::transcript()) out.push_back(e.title + ": " + e.text);
        return out;
    }

};

// A pseudo-terminal that stands for a serial port: COMn of platform.ini maps to its slave.
class Pty {
public:
    Pty()
    {
        char name[256] = {};
        if (openpty(&master_, &slave_, name, nullptr, nullptr) == 0) name_ = name;
    }
    ~Pty()
    {
        if (slave_ >= 0) close(slave_);
        if (master_ >= 0) close(master_);
    }
    const std::string& name() const { return name_; }
    // Holds the port as another program would, so it no longer counts as present.
    void hold() { flock(slave_, LOCK_EX | LOCK_NB); }

private:
    int master_ = -1, slave_ = -1;
    std::string name_;
};

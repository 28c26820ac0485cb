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
#include "platform/icmp.h"
#include "platform/paths.h"
#include "settings/form3.h"
#include "pipeline/pipelinefixture.h"
#include "support/tempinstall.h"

using Rows = std::vector<std::string>;

// Whether this machine lets us open an ICMP socket for echoes.
inline bool canecho()
{
    IcmpHandle h = IcmpCreateFile();
    if (h == INVALID_ICMP_HANDLE) return false;
    IcmpCloseHandle(h);
    return true;
}

// A settings test's world: the pipeline tests' install, dated 9 March 2007 14:05:07.
class SettingsTest : public PipelineTest {
protected:
    std::string inipath() const { return install.host(g().homedir + "TAGSTORE.INI"); }
    void writeini(const std::string& bytes) const { TempInstall::writefile(inipath(), bytes); }
    std::string ini() const { return TempInstall::readfile(inipath()); }
    std::string local(const std::string& name) const { return install.host("c:\\tarnbc\\" + name); }
    // The write tests' probe file, so that the store on the PC works.
    void probefile() const
    {
        TempInstall::writefile(install.host(g().homedir + "BAR999.INI"), "[000000999]\r\n000=000 20070309\r\n");
    }

    bool logged(const std::string& text) const
    {
        for (const auto& l : loglines())
            if (l.find(text) != std::string::npos) return true;
        return false;
    }

    // Titles and texts of the boxes shown since the last clear.
    static Rows boxes()
    {
        Rows out;
        for (const auto& e : dialogs::transcript()) out.push_back(e.title + ": " + e.text);
        return out;
    }
    static Rows titles()
    {
        Rows out;
        for (const auto& e : dialogs::transcript()) out.push_back(e.title);
        return out;
    }

    // The company screen's boxes: name, user, telephone, head office address.
    static Rows company()
    {
        const Form3& c = form3();
        return {c.Company.value(), c.User.value(), c.Telephone.value(), c.HOEmail.value()};
    }

    static void expecthidden(std::initializer_list<QWidget*> widgets)
    {
        for (QWidget* w : widgets) EXPECT_TRUE(w->isHidden()) << w->objectName().toStdString();
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

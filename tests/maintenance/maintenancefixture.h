// A maintenance test's world: a temporary install with drive C and logs, fresh shared
// state, the screens at rest and unattended message boxes.
#pragma once

#include <QCoreApplication>
#include <QDateTime>
#include <QElapsedTimer>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "core/globals.h"
#include "maintenance/form10.h"
#include "maintenance/form24.h"
#include "maintenance/screens.h"
#include "pipeline/form1.h"
#include "pipeline/screens.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "runtime/fault.h"
#include "support/tempinstall.h"

class MaintenanceTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        resetglobals();
        g().homedir = platform::installfolder;
        g().lastscannerid = "000";
        files::makefolder(g().homedir + "LOGS");
        files::makefolder("c:\\tarnbc");
        dialogs::reset();
        dialogs::setunattended(true);
        dialogs::cleartranscript();
        form1().List2.clear();
        form1().Label3.setcaption("ID: 000 Date: HHMM DDMMYY");
        Form10& f = form10();
        f.Timer1.stop();
        f.Text2.settext("0");
        Form24& t = form24();
        t.Timer1.stop();
        t.Timer2.stop();
        t.boostcounter = 0;
        t.lasttimecounter = 0;
        t.lastboostincounter = 0;
        t.setupscreen();
        StackLevel::setlimit(500);
    }
    void TearDown() override
    {
        form10().Timer1.stop();
        form24().Timer1.stop();
        form24().Timer2.stop();
        platform::clock::reset();
        StackLevel::setlimit(500);
    }

    // Lines of today's log.
    std::vector<std::string> loglines() const
    {
        const std::string day = Format(platform::clock::now(), "DD");
        std::vector<std::string> lines;
        std::string text = TempInstall::readfile(install.host(g().homedir + "LOGS\\" + day + "_LOG.TXT")), line;
        for (char c : text) {
            if (c == '\n') {
                lines.push_back(line);
                line.clear();
            } else if (c != '\r') {
                line += c;
            }
        }
        return lines;
    }
    bool logged(const std::string& part) const
    {
        for (const auto& l : loglines())
            if (l.find(part) != std::string::npos) return true;
        return false;
    }

    static std::vector<std::string> rows(const ListBox& list)
    {
        std::vector<std::string> out;
        for (int i = 0; i < list.listcount(); ++i) out.push_back(list.list(i));
        return out;
    }

    // The boxes shown so far with this title.
    static std::vector<dialogs::Entry> boxes(const std::string& title)
    {
        std::vector<dialogs::Entry> out;
        for (const auto& e : dialogs::transcript())
            if (e.title == title) out.push_back(e);
        return out;
    }

    TempInstall install;
};

// A pipeline test's world: a temporary install with drive C, today's logs, fresh shared
// state, empty lists and unattended message boxes.
#pragma once

#include <QDateTime>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

#include "core/controls.h"
#include "core/form16.h"
#include "core/globals.h"
#include "core/screens.h"
#include "pipeline/form1.h"
#include "pipeline/form12.h"
#include "pipeline/screens.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "support/tempinstall.h"

class PipelineTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        resetglobals();
        platform::clock::set(QDateTime(QDate(2007, 3, 9), QTime(14, 5, 7)));
        g().homedir = platform::installfolder;
        files::makefolder(g().homedir + "LOGS");
        files::makefolder("c:\\tarnbc");
        dialogs::reset();
        dialogs::setunattended(true);
        dialogs::cleartranscript();
        form1().List1.clear();
        form1().List2.clear();
        form12().List1.clear();
        form16().hide();
        ListBox::setobserver(nullptr);
    }
    void TearDown() override
    {
        ListBox::setobserver(nullptr);
        platform::clock::reset();
    }

    // Lines of today's log, from the first one this test wrote.
    std::vector<std::string> loglines() const { return textlines(install.host(g().homedir + "LOGS\\09_LOG.TXT")); }

    static std::vector<std::string> textlines(const std::string& hostpath)
    {
        std::vector<std::string> lines;
        std::string text = TempInstall::readfile(hostpath), line;
        for (size_t i = 0; i < text.size(); ++i) {
            if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
                lines.push_back(line);
                line.clear();
                ++i;
            } else {
                line += text[i];
            }
        }
        if (!line.empty()) lines.push_back(line);
        return lines;
    }

    static std::vector<std::string> items(const ListBox& list)
    {
        std::vector<std::string> out;
        for (int i = 0; i < list.listcount(); ++i) out.push_back(list.list(i));
        return out;
    }

    TempInstall install;
};

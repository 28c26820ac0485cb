// The line processing under a fuzzer: one offscreen application and one throw-away drive C
// for the whole run, the shared block made fresh for each input, message boxes answered
// unattended. A run may end in its own failure handler; it may not crash, and and what it
// keeps for saving is never longer than a canonical line.
#pragma once

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <cstdlib>
#include <string>

#include "core/globals.h"
#include "pipeline/form1.h"
#include "pipeline/processdata.h"
#include "pipeline/recorded.h"
#include "pipeline/screens.h"
#include "platform/dialogs.h"
#include "platform/paths.h"

namespace processrun {

inline void start()
{
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    static int argc = 1;
    static char name[] = "fuzz";
    static char* argv[] = {name, nullptr};
    static QApplication app(argc, argv);
    static QTemporaryDir dir;
    if (!dir.isValid() || !recorded::makeworkplace(dir.path().toStdString())) std::abort();
    dialogs::setunattended(true);
}

// Runs processdata on a recorded download of `type` (1 OPL 972x, 3 CS 1504).
inline void run(int type, const std::string& bytes)
{
    // Every run writes the day's log; it is emptied now and then so it does not grow for ever.
    static unsigned runs = 0;
    if (++runs % 512 == 0) {
        QDir logs(QString::fromStdString(platform::resolve(g().homedir + "LOGS").path));
        for (const QString& name : logs.entryList(QDir::Files)) logs.remove(name);
    }
    const std::string home = g().homedir;
    resetglobals();
    Globals& s = g();
    s.homedir = home;
    s.scannerid = "123";
    s.lastscannerid = "123";
    s.scannertype = type;
    s.runmode = 1;
    s.outlines[0] = "123";
    form1().List2.clear();
    dialogs::cleartranscript();
    try {
        s.scancount = type == 1 ? recorded::loadopl(bytes) : recorded::loadcsp(bytes);
    } catch (const std::exception&) {
        return;
    }
    s.deleteallowed = 1;
    processdata();
    const bool failed = !dialogs::transcript().empty();
    if (failed && s.deleteallowed != 0) std::abort();   // a broken run may not allow the clear
    if (failed) return;
    // 22 or 25 characters; shorter only for the empty line after an FR line, which has no
    // length check and is built from the positions it lacks. (Not all digits: a short line
    // may carry its comma at position 22, which lands in the time.)
    for (long i = 1; i <= s.outcount; ++i)
        if (s.outlines[i].size() > 25) std::abort();
}

}  // namespace processrun

// vexal-decode: runs the line processing on a recorded download, as the program does after
// reading a scanner, and prints every text the run adds to a list, the lines it made and
// its counts.
//
//   vexal-decode opl FILE [--repair] [--id ID]   FILE: a raw OPL 972x download file
//   vexal-decode csp FILE [--repair] [--id ID]   FILE: CS 1504 / OPN 2001 records, each
//                                                its length byte N and N more bytes
//
// Output, one item a line: "List2: " or "Form12.List1: " and each text in the order added;
// "out NNN: " and each saved line; with --repair "review NNN: " and each entry of the
// repair table from 1 to the count of lines or records; then "outcount: N", "badcount: N".
// Message boxes go to standard error as "MsgBox: <title>: <text>".
#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>
#include <vector>

#include "core/globals.h"
#include "core/controls.h"
#include "pipeline/form1.h"
#include "pipeline/form12.h"
#include "pipeline/formats.h"
#include "pipeline/processdata.h"
#include "pipeline/recorded.h"
#include "pipeline/screens.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/paths.h"

namespace {

int usage()
{
    std::cerr << "usage: vexal-decode opl|csp FILE [--repair] [--id ID]\n";
    return 2;
}

bool readhostfile(const std::string& path, std::string& bytes)
{
    std::ifstream in(path, std::ios::binary);
    if (!in) return false;
    std::stringstream s;
    s << in.rdbuf();
    bytes = s.str();
    return true;
}

}  // namespace

int main(int argc, char** argv)
{
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    if (!getenv("XDG_RUNTIME_DIR")) {
        static char xdg[] = "/tmp/vexal-decode-XXXXXX";
        if (mkdtemp(xdg)) setenv("XDG_RUNTIME_DIR", xdg, 1);
    }
    std::vector<std::string> args(argv + 1, argv + argc);
    std::string mode, file, id = "000";
    bool repair = false;
    for (size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--repair") repair = true;
        else if (args[i] == "--id" && i + 1 < args.size()) id = args[++i];
        else if (mode.empty()) mode = args[i];
        else if (file.empty()) file = args[i];
        else return usage();
    }
    if ((mode != "opl" && mode != "csp") || file.empty()) return usage();

    QApplication app(argc, argv);
    std::string bytes;
    if (!readhostfile(file, bytes)) {
        std::cerr << "vexal-decode: cannot read " << file << "\n";
        return 1;
    }
    QTemporaryDir dir;
    if (!dir.isValid() || !recorded::makeworkplace(dir.path().toStdString())) {
        std::cerr << "vexal-decode: cannot make a work folder\n";
        return 1;
    }
    dialogs::setunattended(true);

    Globals& s = g();
    s.scannerid = id;
    s.lastscannerid = id;
    s.scannertype = mode == "opl" ? 1 : 3;
    s.runmode = repair ? 4 : 1;
    s.outlines[0] = id;
    try {
        s.scancount = mode == "opl" ? recorded::loadopl(bytes) : recorded::loadcsp(bytes);
    } catch (const std::exception& e) {
        std::cerr << "vexal-decode: " << e.what() << "\n";
        return 1;
    }

    std::vector<std::string> out;
    ListBox::setobserver([&](const ListBox& list, const std::string& text) {
        if (&list == &form1().List2) out.push_back("List2: " + text);
        else if (&list == &form12().List1) out.push_back("Form12.List1: " + text);
    });
    processdata();
    ListBox::setobserver(nullptr);

    for (long i = 1; i <= s.outcount && i <= s.outlines.ubound(); ++i)
        out.push_back("out " + Format(i, "000") + ": " + s.outlines[i]);
    if (repair)
        for (long i = 1; i <= s.scancount && i <= s.reviewlines.ubound(); ++i)
            out.push_back("review " + Format(i, "000") + ": " + s.reviewlines[i]);
    out.push_back("outcount: " + CStr((long long)s.outcount));
    out.push_back("badcount: " + CStr((long long)s.badcount));
    for (const auto& line : out) std::cout << line << "\n";
    for (const auto& box : dialogs::transcript())
        std::cerr << "MsgBox: " << box.title << ": " << box.text << "\n";
    return 0;
}

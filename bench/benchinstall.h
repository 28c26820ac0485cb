// A benchmark program's world: an offscreen application and a temporary install with drive
// C, c:\tarnbc, the install folder's LOGS and unattended message boxes.
#pragma once

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <fstream>
#include <string>

#include "core/globals.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/paths.h"

// Runs the benchmarks in a temporary install; `extra` is added to its platform.ini, with
// "{root}" standing for the install's real folder, and `folder` (below the install) is made
// first.
inline int runbenchmarks(int argc, char** argv, const std::string& extra = "", const char* folder = nullptr)
{
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QTemporaryDir xdg, install;
    setenv("XDG_RUNTIME_DIR", xdg.path().toLocal8Bit().constData(), 0);
    QApplication app(argc, argv);

    const std::string root = install.path().toStdString();
    QDir(install.path()).mkpath("drive_c/tarnbc");
    if (folder) QDir(install.path()).mkpath(folder);
    std::string more = extra;
    for (size_t at; (at = more.find("{root}")) != std::string::npos;) more.replace(at, 6, root);
    std::ofstream(root + "/platform.ini") << "[drives]\nC=" << root << "/drive_c\n" << more;
    platform::initplatform(root);
    g().homedir = platform::installfolder;
    files::makefolder(g().homedir + "LOGS");
    dialogs::setunattended(true);

    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

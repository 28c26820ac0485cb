// The transfer of local data to the server: 20 local BAR files of 500 lines merged into a
// store set of 20 files (the same 20 scanners, so every line is appended) on a share served
// by a real smbd on loopback. One iteration is the whole screen: the store check, the
// backups and the copy down, the merge, the copy back and the tidy-up.
//
// Counters (seconds per iteration): copydown_s from "Copying server files to PC" to the
// lists, merge_s the merge loop, paced_s the part of it the arrow animation waits (300 ms
// a file, the screen's own pace), copyback_s and tidy_s. KeyWrites times the 10000 key
// writes of the merge alone, on the same files, for the share of the merge they take;
// KeyReads the 10000 reads of the local keys; Refresh one of the 20 list refreshes the
// merge makes.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <sys/stat.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <memory>
#include <string>

#include "core/controls.h"
#include "core/globals.h"
#include "delivery/form20.h"
#include "pipeline/formats.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "support/smbserver.h"

namespace {

constexpr int filecount = 20, linecount = 500;

std::string host;    // the install's drive C
std::string share;   // the host folder behind \\127.0.0.1\tagstore

void writehost(const std::string& path, const std::string& bytes)
{
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

std::string barbytes(int scanner, int lines, int first)
{
    std::string b = "[000000" + std::to_string(scanner) + "]\r\n000=" + Format(lines, "000") + "20070309\r\n";
    for (int k = 1; k <= lines; ++k)
        b += Format(k, "000") + "=0112" + Format(first + k, "000000") + "20070309" + Format(k % 2400, "0000") + "\r\n";
    return b;
}

// The local set and the store's set, as before a transfer; the work folder gone.
void arrange()
{
    QDir(QString::fromStdString(host + "/tarnbc/INITEMP")).removeRecursively();
    writehost(host + "/tarnbc/BARCODE.INI", "[FILES]\r\nFILES=" + Format(filecount, "000") + "\r\n");
    writehost(share + "/BARCODE.007", "[FILES]\r\nFILES=" + Format(filecount, "000") + "\r\n");
    for (int i = 1; i <= filecount; ++i) {
        writehost(host + "/tarnbc/BAR" + Format(i, "000") + ".INI", barbytes(100 + i, linecount, 0));
        const std::string server = share + "/BAR" + Format(i, "000") + ".007";
        writehost(server, barbytes(100 + i, 10, 900000));
        ::chmod(server.c_str(), 0666);
    }
    ::chmod((share + "/BARCODE.007").c_str(), 0666);
}

void BM_TransferToSmbShare(benchmark::State& state)
{
    std::map<std::string, double> at;
    QElapsedTimer clock;
    ListBox::setobserver([&](const ListBox&, const std::string& text) {
        if (!at.count(text)) at[text] = clock.nsecsElapsed() / 1e9;
    });
    double copydown = 0, merge = 0, copyback = 0, tidy = 0, total = 0;
    for (auto _ : state) {
        state.PauseTiming();
        arrange();
        at.clear();
        state.ResumeTiming();
        clock.start();
        g().pressedop = 1;
        g().callerof[20] = 9;
        opentransferscreen();
        form20().runtransfer();
        total += clock.nsecsElapsed() / 1e9;
        if (!at.count("All operations completed")) state.SkipWithError("the transfer did not complete");
        copydown += at["Backing up server files"] - at["Copying server files to PC"];
        merge += at["Copying data back to server"] - at["Adding local data to server files"];
        copyback += at["Data transfer operation complete"] - at["Copying data back to server"];
        tidy += at["All operations completed"] - at["Tidying up local files"];
        form20().hide();
    }
    ListBox::setobserver(nullptr);
    const double n = (double)state.iterations();
    state.counters["total_s"] = total / n;
    state.counters["copydown_s"] = copydown / n;
    state.counters["merge_s"] = merge / n;
    state.counters["paced_s"] = filecount * 0.3;
    state.counters["copyback_s"] = copyback / n;
    state.counters["tidy_s"] = tidy / n;
}
BENCHMARK(BM_TransferToSmbShare)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

// The merge's key writes alone: 500 keys appended to each of 20 work files of 10 lines,
// and key 000 after them, each through the profile call.
void BM_KeyWrites(benchmark::State& state)
{
    const std::string folder = "C:\\TARNBC\\KEYS\\";
    QDir().mkpath(QString::fromStdString(host + "/tarnbc/KEYS"));
    for (auto _ : state) {
        state.PauseTiming();
        for (int i = 1; i <= filecount; ++i)
            writehost(host + "/tarnbc/KEYS/BAR" + Format(i, "000") + ".007", barbytes(100 + i, 10, 900000));
        state.ResumeTiming();
        for (int i = 1; i <= filecount; ++i) {
            const std::string file = folder + "BAR" + Format(i, "000") + ".007";
            const std::string section = "000000" + std::to_string(100 + i);
            for (int k = 1; k <= linecount; ++k)
                formats::writevalue(file, section, Format(k + 10, "000"), "0112345678002007030914" + Format(k % 100, "00"));
            formats::writevalue(file, section, "000", Format(linecount + 10, "000") + "20070309");
        }
    }
    state.counters["writes"] = benchmark::Counter((double)filecount * (linecount + 1), benchmark::Counter::kIsIterationInvariant);
}
BENCHMARK(BM_KeyWrites)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

// The merge's key reads alone: the 500 keys of each of the 20 local files, each through the
// profile call with its 50-character buffer.
void BM_KeyReads(benchmark::State& state)
{
    arrange();
    for (auto _ : state) {
        for (int i = 1; i <= filecount; ++i) {
            const std::string file = "c:\\tarnbc\\BAR" + Format(i, "000") + ".INI";
            const std::string section = "000000" + std::to_string(100 + i);
            for (int k = 1; k <= linecount; ++k) benchmark::DoNotOptimize(formats::readvalue(file, section, Format(k, "000")));
        }
    }
}
BENCHMARK(BM_KeyReads)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

// One refresh of the lists as the merge runs it after each file (filllists(0)): the store
// check and the master file check on the share, and both lists read from the files.
void BM_Refresh(benchmark::State& state)
{
    arrange();
    g().pressedop = 1;
    g().callerof[20] = 9;
    opentransferscreen();
    for (auto _ : state) form20().filllists(0);
    form20().hide();
}
BENCHMARK(BM_Refresh)->Unit(benchmark::kMillisecond)->Iterations(10)->UseRealTime();

}  // namespace

int main(int argc, char** argv)
{
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QTemporaryDir xdg, install;
    setenv("XDG_RUNTIME_DIR", xdg.path().toLocal8Bit().constData(), 0);
    QApplication app(argc, argv);
    SmbServer server;
    if (!server.running()) {
        std::fprintf(stderr, "merge_bench: %s\n", server.whynot().c_str());
        return 1;
    }
    const std::string root = install.path().toStdString();
    host = root + "/drive_c";
    share = server.folder();
    QDir(install.path()).mkpath("drive_c/tarnbc");
    std::ofstream(root + "/platform.ini") << "[drives]\nC=" << host << "\n" << server.settings();
    platform::initplatform(root);
    g().homedir = platform::installfolder;
    files::makefolder(g().homedir + "LOGS");
    // The store check copies the install's BAR999.INI to the share.
    writehost(root + "/BAR999.INI", "[000000999]\r\n000=00020070309\r\n");
    g().savetype = 2;
    g().serverip = "127.0.0.1";
    g().terminalno = "007";
    g().commandline = "startup";
    dialogs::setunattended(true);

    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

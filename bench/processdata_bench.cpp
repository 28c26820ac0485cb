// processdata on a download of 1000 lines: an OPL 972x raw file and a CS 1504 record set,
// in normal and in repair running. Each run writes its texts to the list and the day's log,
// as the program does.
#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include "benchinstall.h"
#include <cstdlib>
#include <fstream>

#include "core/globals.h"
#include "pipeline/form1.h"
#include "pipeline/form12.h"
#include "pipeline/formats.h"
#include "pipeline/processdata.h"
#include "pipeline/screens.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/paths.h"

namespace {

constexpr long lines = 1000;

// A working day's mix: mostly plain and long lines, a few short, FR, test and bad ones.
std::string opldownload()
{
    static const char* forms[] = {"0001123456780,120307,1430", "10212345678456,120307,1432",
                                  "0001123456780,120307,1431", "18012345678,120307,1433",
                                  "0134567890123,120307,1434", "10212345678456,120307,1435",
                                  "0001993456780,120307,1436", "0001123456780,120307,1437",
                                  "00011234a6780,120307,1438", "0001123456780,120307,1439"};
    std::string bytes;
    for (long i = 0; i < lines; ++i) bytes += std::string(forms[i % 10]) + "\r\n";
    return bytes;
}

void cspdownload()
{
    for (long i = 1; i <= lines; ++i) {
        std::string barcode = i % 20 == 0 ? "001993456789" : "00" + std::to_string(1 + i % 6) + "123456789";
        g().scanlines[i] = std::string(1, (char)(barcode.size() + 5)) + "\x01" + barcode + "\x15\xE7\x64\xC8";
    }
}

void runonce(benchmark::State& state, int scannertype)
{
    g().scannertype = scannertype;
    g().scannerid = "123";
    g().scancount = lines;
    g().runmode = state.range(0) ? 4 : 1;
    processdata();
    state.PauseTiming();
    if (g().outcount == 0 || !dialogs::transcript().empty()) state.SkipWithError("the run did not go through");
    form1().List2.clear();
    form12().List1.clear();
    state.ResumeTiming();
}

void BM_ProcessOplDownload(benchmark::State& state)
{
    files::writeall(formats::rawfile("123"), opldownload());
    for (auto _ : state) runonce(state, 1);
    state.SetItemsProcessed(state.iterations() * lines);
}
BENCHMARK(BM_ProcessOplDownload)->Arg(0)->Arg(1)->ArgName("repair")->Unit(benchmark::kMillisecond);

void BM_ProcessCspDownload(benchmark::State& state)
{
    cspdownload();
    for (auto _ : state) runonce(state, 3);
    state.SetItemsProcessed(state.iterations() * lines);
}
BENCHMARK(BM_ProcessCspDownload)->Arg(0)->Arg(1)->ArgName("repair")->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) { return runbenchmarks(argc, argv); }

// Saving a download of 1000 lines into a new BAR file, on the PC and on a share that is a
// mounted folder; and drawing the outstanding file list over a set of 20 BAR files. Each
// key of a BAR file is one profile write, which rewrites the file.
#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include "benchinstall.h"
#include <cstdlib>
#include <fstream>

#include "core/globals.h"
#include "delivery/listfiles.h"
#include "pipeline/form1.h"
#include "pipeline/formats.h"
#include "pipeline/savetoinifile.h"
#include "pipeline/screens.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/paths.h"

namespace {

using formats::Place;

constexpr long lines = 1000;
constexpr long setsize = 20;

void fillout()
{
    g().outlines[0] = "123";
    for (long i = 1; i <= lines; ++i) {
        std::string line = "01" + Format(12000000 + i, "00000000") + "20070309" + Format(800 + i % 900, "0000");
        g().outlines[i] = i % 3 == 0 ? line + "456" : line;
    }
    g().outcount = lines;
}

// Removes the set of a place, so each save starts from an empty master file.
void emptyset(Place place)
{
    for (const auto& name : files::list(formats::folder(place) + "*.*")) files::removefile(formats::folder(place) + name);
}

// A count of 1000 takes four digits in key 000, so its text is checked, not the three-digit
// reading of it.
bool saved(Place place)
{
    return dialogs::transcript().empty() && formats::masterfilecount(formats::masterfile(place)) == 1 &&
           Left(formats::readheader(formats::barfile(place, 1), "000000123"), 4) == "1000";
}

void BM_SaveToIniFile(benchmark::State& state)
{
    const bool share = state.range(0) != 0;
    g().savetype = share ? 1 : 0;
    g().storedown = 0;
    const Place place = share ? Place::store : Place::local;
    fillout();
    for (auto _ : state) {
        state.PauseTiming();
        emptyset(place);
        form1().List2.clear();
        state.ResumeTiming();
        savetoinifile();
        state.PauseTiming();
        if (!saved(place)) {
            state.SkipWithError("the save did not go through");
            break;
        }
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * lines);
}
BENCHMARK(BM_SaveToIniFile)->Arg(0)->Arg(1)->ArgName("share")->Unit(benchmark::kMillisecond);

void BM_ListFiles(benchmark::State& state)
{
    const bool share = state.range(0) != 0;
    g().savetype = share ? 1 : 0;
    g().storedown = 0;
    g().chkrogue = 1;
    const Place place = share ? Place::store : Place::local;
    emptyset(Place::local);
    emptyset(Place::store);
    formats::writemastercount(formats::masterfile(place), setsize);
    for (long n = 1; n <= setsize; ++n) {
        const std::string file = formats::barfile(place, n);
        std::string bytes = formats::sectionline(Format(100 + n, "000")) + "\r\n000=" + formats::barheader(50, QDate(2007, 3, 9)) + "\r\n";
        for (long k = 1; k <= 50; ++k) bytes += formats::linekey(k) + "=0112345678200703090800\r\n";
        files::writeall(file, bytes);
    }
    for (auto _ : state) {
        listfiles();
        if (form1().List1.listcount() != setsize || !dialogs::transcript().empty()) {
            state.SkipWithError("the list is wrong");
            break;
        }
    }
    state.SetItemsProcessed(state.iterations() * setsize);
}
BENCHMARK(BM_ListFiles)->Arg(0)->Arg(1)->ArgName("share")->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    g().serverip = "127.0.0.1";
    g().terminalno = "007";
    return runbenchmarks(argc, argv, "[shares]\n\\\\127.0.0.1\\tagstore={root}/share\n", "share");
}

// The import at head office: 100 mailed-in files of 500 lines each, from 100 scanners, in
// c:\tarnbc\imports, taken through the line processing and saved on the PC (Local), as one
// click on the import icon does. Each key of a BAR file is one profile write, which rewrites
// the file, and each new scanner's save looks through every BAR file before it.
#include "benchinstall.h"

#include "delivery/processemails.h"
#include "pipeline/form1.h"
#include "pipeline/formats.h"
#include "pipeline/screens.h"
#include "runtime/vb.h"

namespace {

constexpr int filecount = 100;
constexpr int linecount = 500;

// One scanner's raw download: clock-in scans a minute apart on 12 March 2007.
std::string rawfile()
{
    std::string out;
    for (int i = 0; i < linecount; ++i)
        out += "0001" + Format((long long)(12000000 + i), "00000000") + "0,120307," +
               Format((long long)(6 + i / 60), "00") + Format((long long)(i % 60), "00") + "\r\n";
    return out;
}

void fillimports(const std::string& bytes)
{
    for (int n = 1; n <= filecount; ++n)
        files::writeall("c:\\tarnbc\\imports\\export_" + Format((long long)n, "000") + "_2007312143000.txt", bytes);
}

void emptylocalset()
{
    for (const auto& name : files::list("c:\\tarnbc\\BAR*.*")) files::removefile("c:\\tarnbc\\" + name);
    for (const auto& name : files::list("c:\\tarnbc\\temp_*.txt")) files::removefile("c:\\tarnbc\\" + name);
}

void BM_ImportHundredFiles(benchmark::State& state)
{
    g().savetype = 0;
    const std::string bytes = rawfile();
    files::makefolder("C:\\TARNBC\\IMPORTS");
    for (auto _ : state) {
        state.PauseTiming();
        emptylocalset();
        fillimports(bytes);
        form1().List2.clear();
        dialogs::cleartranscript();
        dialogs::queueanswer(vbYes);
        state.ResumeTiming();
        processemails();
        state.PauseTiming();
        const bool done = files::list("c:\\tarnbc\\imports\\*").empty() &&
                          formats::masterfilecount(formats::masterfile(formats::Place::local)) == filecount &&
                          dialogs::transcript().size() == 1;
        if (!done) state.SkipWithError("the import did not store every file");
        state.ResumeTiming();
    }
    state.counters["lines"] = benchmark::Counter((double)filecount * linecount * state.iterations(),
                                                 benchmark::Counter::kIsRate);
}
BENCHMARK(BM_ImportHundredFiles)->Unit(benchmark::kSecond)->Iterations(2);

}  // namespace

int main(int argc, char** argv) { return runbenchmarks(argc, argv); }

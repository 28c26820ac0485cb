// The data log screen where support waits: the day list over a full month of data logs
// (31 days, 20 downloads of 50 lines each), and the restore of the longest download the
// screen holds (998 lines) into a fresh BAR file on the PC, each key one profile write.
#include "benchinstall.h"

#include "pipeline/formats.h"
#include "recovery/form26.h"
#include "runtime/vb.h"

namespace {

std::string block(long scanner, long lines)
{
    std::string b = "ENTRY: Scanner " + Format(scanner, "000000") + " 1430 20070305\r\n[000000" + Format(scanner, "000") +
                    "]\r\n000=" + Format(lines, "000") + "20070305\r\n";
    for (long i = 1; i <= lines; ++i)
        b += Format(i, "000") + "=01" + Format(12000000 + i, "00000000") + "200703051430\r\n";
    return b + "END\r\n";
}

void writelog(int day, const std::string& bytes)
{
    files::writeall(g().homedir + "LOGS\\" + Format(day, "00") + "_DAT.TXT", bytes);
}

void BM_DayListOfAFullMonth(benchmark::State& state)
{
    for (int day = 1; day <= 31; ++day) {
        std::string log = Format(day, "00") + "/03/2007\r\n";
        for (long d = 1; d <= 20; ++d) log += "Program line\r\n" + block(100 + d, 50);
        writelog(day, log);
    }
    for (auto _ : state) {
        form26().setupscreen();
        if (form26().logcount != 31) state.SkipWithError("not every day listed");
    }
}
BENCHMARK(BM_DayListOfAFullMonth)->Unit(benchmark::kMillisecond);

void BM_RestoreOfTheLongestDownload(benchmark::State& state)
{
    for (int day = 1; day <= 31; ++day) {
        const std::string file = g().homedir + "LOGS\\" + Format(day, "00") + "_DAT.TXT";
        if (files::exists(file)) files::removefile(file);
    }
    writelog(5, "05/03/2007\r\n" + block(123, 998));
    Form26& f = form26();
    const std::string master = formats::masterfile(formats::Place::local);
    for (auto _ : state) {
        state.PauseTiming();
        files::writeall(master, "[FILES]\r\nFILES=000\r\n");
        f.setupscreen();
        f.List1.setlistindex(0);
        f.list1dblclick();
        f.List2.setlistindex(0);
        f.list2dblclick();
        dialogs::queueanswer(vbYes);
        state.ResumeTiming();
        f.dodatarestore();
        state.PauseTiming();
        if (formats::sectionlines(formats::barfile(formats::Place::local, 1), "000000123") != 998)
            state.SkipWithError("the download was not restored");
        state.ResumeTiming();
    }
}
BENCHMARK(BM_RestoreOfTheLongestDownload)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace

int main(int argc, char** argv) { return runbenchmarks(argc, argv); }

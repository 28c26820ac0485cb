// What keeping every scan safe adds to a download of 1000 lines and its save: the safety
// copy of a CS 1504 read (written and flushed to the disk), and in the save the flush of the
// data log block and the save journal (the BAR and master files kept before the save, the
// changed one flushed after it). Compare with BM_SaveToIniFile of store_bench, which
// includes them. Run with TMPDIR
// on the disk that is to be measured: on a tmpfs a flush costs nothing.
#include "benchinstall.h"

#include "core/logs.h"
#include "pipeline/formats.h"
#include "pipeline/savejournal.h"
#include "platform/clock.h"

namespace {

constexpr long lines = 1000;

// 1000 records as the device hands them over: length byte, code type, barcode, stamp.
std::string recorddump()
{
    std::string dump;
    for (long i = 0; i < lines; ++i) {
        const std::string barcode = "001" + Format(12000000 + i, "00000000") + "9";
        dump += std::string(1, (char)(barcode.size() + 5)) + "\x01" + barcode + "\x2a\x61\x26\x47";
    }
    return dump;
}

void BM_SafetyCopy(benchmark::State& state)
{
    const std::string dump = recorddump();
    if (!files::isfolder(formats::backupfolder)) files::makefolder(formats::backupfolder);
    const std::string copy = formats::safetycopyfile("123", platform::clock::now());
    for (auto _ : state) {
        files::writeall(copy, dump);
        files::flush(copy);
    }
    state.SetBytesProcessed(state.iterations() * (long long)dump.size());
}
BENCHMARK(BM_SafetyCopy)->Unit(benchmark::kMillisecond);

// What a save adds, in its order: the data log block written as always, then the journal
// of a BAR file that holds 1000 lines and of the master file, the block flushed, the save's
// own writes (not timed), and the commit that flushes the changed BAR file and empties the
// journal.
void BM_SaveSafety(benchmark::State& state)
{
    const std::string bar = formats::barfile(formats::Place::local, 1);
    const std::string master = formats::masterfile(formats::Place::local);
    const std::string section = formats::sectionname("123");
    std::string bytes = formats::sectionline("123") + "\r\n000=" + formats::barheader(lines, QDate(2007, 3, 9)) + "\r\n";
    for (long k = 1; k <= lines; ++k) bytes += formats::linekey(k) + "=0112345678200703090800\r\n";
    formats::writemastercount(master, 1);
    for (auto _ : state) {
        state.PauseTiming();
        files::writeall(bar, bytes);
        state.ResumeTiming();
        addtodatfile("END");
        savejournal::begin({bar, master}, {{bar, section, formats::linekey(lines + 1), "0112345678200703090800"}});
        flushdatfile();
        state.PauseTiming();
        formats::writevalue(bar, section, "000", formats::barheader(lines + 1, QDate(2007, 3, 9)));
        formats::writevalue(bar, section, formats::linekey(lines + 1), "0112345678200703090800");
        state.ResumeTiming();
        savejournal::commit();
    }
}
BENCHMARK(BM_SaveSafety)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) { return runbenchmarks(argc, argv); }

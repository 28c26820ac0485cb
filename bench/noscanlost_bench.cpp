// What keeping every scan safe adds to a download of 1000 lines and its save: the safety
// copy of a CS 1504 read (written and flushed to the disk), the flush of the data log, and
// the save journal (the BAR and master files kept before the save, flushed after it).
// Compare with BM_SaveToIniFile of store_bench, which includes the journal. Run with TMPDIR
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

void BM_DataLogFlush(benchmark::State& state)
{
    for (auto _ : state) {
        addtodatfile("END");
        flushdatfile();
    }
}
BENCHMARK(BM_DataLogFlush)->Unit(benchmark::kMillisecond);

// The journal of a save into a BAR file that holds 1000 lines already: begin before the
// writes, commit after them.
void BM_SaveJournal(benchmark::State& state)
{
    const std::string bar = formats::barfile(formats::Place::local, 1);
    const std::string master = formats::masterfile(formats::Place::local);
    std::string bytes = formats::sectionline("123") + "\r\n000=" + formats::barheader(lines, QDate(2007, 3, 9)) + "\r\n";
    for (long k = 1; k <= lines; ++k) bytes += formats::linekey(k) + "=0112345678200703090800\r\n";
    files::writeall(bar, bytes);
    formats::writemastercount(master, 1);
    for (auto _ : state) {
        savejournal::begin({bar, master});
        savejournal::commit();
    }
}
BENCHMARK(BM_SaveJournal)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) { return runbenchmarks(argc, argv); }

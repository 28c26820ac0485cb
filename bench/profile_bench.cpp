// Writing 1000 keys into one profile file, one WritePrivateProfileStringA call each, on a
// local folder: the cost of the merge of a large BAR file, which rereads and rewrites the
// whole file for every key.
#include <benchmark/benchmark.h>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

#include "platform/paths.h"
#include "platform/profile.h"

namespace {

void WriteThousandKeys(benchmark::State& state)
{
    char tmpl[] = "/tmp/vexal-bench-XXXXXX";
    std::string root = mkdtemp(tmpl);
    std::filesystem::create_directories(root + "/drive_c/TARNBC/INITEMP");
    std::ofstream(root + "/platform.ini") << "[drives]\nC=" << root << "/drive_c\n";
    platform::initplatform(root);
    const std::string file = "C:\\TARNBC\\INITEMP\\BAR001.007";
    char key[8];
    for (auto _ : state) {
        std::filesystem::remove(root + "/drive_c/TARNBC/INITEMP/BAR001.007");
        for (int k = 1; k <= 1000; ++k) {
            std::snprintf(key, sizeof key, "%03d", k % 1000);
            if (!WritePrivateProfileStringA("007000123", key, "1234567890123456789012", file)) {
                state.SkipWithError("write failed");
                break;
            }
        }
    }
    state.SetItemsProcessed(state.iterations() * 1000);
    std::filesystem::remove_all(root);
}

}  // namespace

BENCHMARK(WriteThousandKeys)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();

// A CSP download of 500 records from the scanner emulator at 9600 baud, against the time
// its bytes need on the line (11 bits a byte: start, 8 data, parity, stop). The counter
// line_rate_pct is that line time as a share of the time csp2ReadData took.
#include <benchmark/benchmark.h>

#include <QDir>
#include <QTemporaryDir>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/csp2.h"
#include "platform/csp2_protocol.h"
#include "platform/paths.h"

namespace {

constexpr int records = 500;

// The emulator as a child process, up once it has said "ready".
class EmulatorProcess {
public:
    EmulatorProcess(const std::string& link, const std::string& recordsfile)
    {
        int out[2];
        if (pipe(out) != 0) return;
        std::string program = std::string(VEXAL_BINARY_DIR) + "/tools/emulator/scanner-emulator";
        pid_ = fork();
        if (pid_ == 0) {
            dup2(out[1], 1);
            close(out[0]);
            execl(program.c_str(), program.c_str(), "--type", "cs1504", "--link", link.c_str(), "--records",
                  recordsfile.c_str(), (char*)nullptr);
            _exit(127);
        }
        close(out[1]);
        std::string said;
        char c;
        while (said.find('\n') == std::string::npos && read(out[0], &c, 1) == 1) said += c;
        close(out[0]);
        ready_ = said.rfind("ready ", 0) == 0;
    }
    ~EmulatorProcess()
    {
        if (pid_ > 0) {
            kill(pid_, SIGTERM);
            waitpid(pid_, nullptr, 0);
        }
    }
    bool ready() const { return ready_; }

private:
    pid_t pid_ = -1;
    bool ready_ = false;
};

void CspDownload500(benchmark::State& state)
{
    QTemporaryDir dir;
    std::string root = dir.path().toStdString();
    std::string link = root + "/port";
    std::ofstream(root + "/platform.ini") << "[drives]\nC=" << root << "\n[ports]\nCOM1=" << link << "\n";
    platform::initplatform(root);

    // 500 records of a 12-character barcode: 18 bytes each on the line.
    size_t replybytes = 2 + csp::serialsize + 1 + 2;
    {
        std::ofstream f(root + "/records.txt");
        for (int i = 0; i < records; ++i) {
            char line[64];
            std::snprintf(line, sizeof line, "%012d,1,2024-03-%02d 08:%02d:%02d", 1000000 + i, 1 + i % 28, i % 60, i % 60);
            f << line << "\n";
            replybytes += 1 + 1 + 12 + csp::stampsize;
        }
    }
    EmulatorProcess emu(link, root + "/records.txt");
    if (!emu.ready()) {
        state.SkipWithError("the emulator did not start");
        return;
    }
    size_t linebytes = 5 + replybytes;  // the request and the reply
    double lineseconds = (double)linebytes * csp::bitsperbyte / csp::baud;
    double took = 0;
    for (auto _ : state) {
        csp2Restore();
        csp2Init(0);
        auto start = std::chrono::steady_clock::now();
        int32_t n = csp2ReadData();
        took = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        state.SetIterationTime(took);
        if (n != records) state.SkipWithError("the download did not bring 500 records");
        csp2Restore();
    }
    state.counters["line_bytes"] = (double)linebytes;
    state.counters["line_s"] = lineseconds;
    state.counters["took_s"] = took;
    state.counters["line_rate_pct"] = 100.0 * lineseconds / took;
}

BENCHMARK(CspDownload500)->Iterations(1)->UseManualTime()->Unit(benchmark::kSecond);

}  // namespace

BENCHMARK_MAIN();

// A whole transfer of 500 lines from the main screen (read, process, save, clear) against
// the scanner emulator at its real line rate, for the OPL 972x and the CS 1504. The line's
// own time is the time the bytes of every exchange of the transfer need on the wire; the
// counter beyond_s is what the transfer took on top of that.
//
// The CS 1504's memory crosses the line twice: the clear reads the scanner again first.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <chrono>
#include <fstream>
#include <string>

#include "core/globals.h"
#include "pipeline/form1.h"
#include "pipeline/mainactions.h"
#include "pipeline/mainopl.h"
#include "pipeline/screens.h"
#include "platform/csp2.h"
#include "platform/csp2_constants.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/opl_protocol.h"
#include "platform/paths.h"

namespace {

constexpr int lines = 500;

// Bytes on the wire of one OPL link exchange: a request frame with no payload and a reply
// frame with a result byte and `data` bytes.
size_t oplexchange(size_t data) { return 6 + 6 + 1 + data; }

// The OPL 972x transfer: clock, ID, battery and count; the download (its reply, one frame
// a line, the end frame); then the clear's clock, ID and count and the clear itself.
double opllineseconds(size_t linelength)
{
    size_t bytes = oplexchange(19) + oplexchange(2) + oplexchange(4) + oplexchange(4);
    bytes += oplexchange(4) + lines * (6 + 4 + linelength) + (6 + 4);
    bytes += oplexchange(19) + oplexchange(2) + oplexchange(4) + oplexchange(0);
    return (double)bytes * opl::bitsperbyte / opl::baud;
}

// A CSP frame with `payload` bytes: command, STX, length, the payload and its pad, CRC.
size_t cspframe(size_t payload) { return 5 + payload + (payload > 0 ? 1 : 0); }

// The CS 1504 transfer: upload, ASCII mode, clock and ID parameter, twice (read and the
// clear's own read), then the clear; each session starts with one wake-up byte.
double csplineseconds(size_t barcodelength)
{
    const size_t upload = cspframe(0) + 2 + csp::serialsize + lines * (2 + barcodelength + csp::stampsize) + 1 + 2;
    const size_t rest = cspframe(1) + cspframe(2) + cspframe(0) + cspframe(6) + cspframe(1) +
                        cspframe(1 + csp::paramidsize);
    const size_t bytes = 2 * (1 + upload + rest) + 1 + cspframe(0) + cspframe(0);
    return (double)bytes * csp::bitsperbyte / csp::baud;
}

class Install {
public:
    Install()
    {
        root_ = dir_.path().toStdString();
        QDir().mkpath(QString::fromStdString(root_ + "/drive_c"));
        std::ofstream(root_ + "/platform.ini") << "[drives]\nC=" << root_ << "/drive_c\n[ports]\nCOM6=" << link()
                                               << "\n";
        platform::initplatform(root_);
    }
    std::string link() const { return root_ + "/port"; }
    std::string file(const std::string& name) const { return root_ + "/" + name; }

private:
    QTemporaryDir dir_;
    std::string root_;
};

// A fresh emulated scanner with the records, up once it has said "ready".
class Scanner {
public:
    Scanner(const char* type, const std::string& link, const std::string& records)
    {
        proc_.setProcessChannelMode(QProcess::MergedChannels);
        proc_.start(QString(VEXAL_BINARY_DIR "/tools/emulator/scanner-emulator"),
                    {"--type", type, "--link", QString::fromStdString(link), "--id", "123", "--battery", "85",
                     "--records", QString::fromStdString(records)});
        std::string said;
        while (proc_.waitForReadyRead(5000)) {
            said += proc_.readAll().toStdString();
            if (said.find("ready") != std::string::npos) {
                ready_ = true;
                break;
            }
        }
    }
    ~Scanner()
    {
        proc_.terminate();
        proc_.waitForFinished(5000);
    }
    bool ready() const { return ready_; }

private:
    QProcess proc_;
    bool ready_ = false;
};

void transfer(benchmark::State& state, int type, const char* emulatortype, const std::string& recordtext,
              double lineseconds)
{
    Install install;
    const std::string records = install.file("records.txt");
    std::ofstream(records) << recordtext;
    double took = 0;
    for (auto _ : state) {
        resetglobals();
        Globals& s = g();
        s.homedir = platform::installfolder;
        s.lastscannerid = "000";
        s.timemargin = 5;
        s.scannerused[type] = 1;
        s.scannerport[type] = 6;
        files::makefolder(s.homedir + "LOGS");
        if (!files::isfolder("c:\\tarnbc")) files::makefolder("c:\\tarnbc");
        for (const char* f : {"c:\\tarnbc\\BAR001.INI", "c:\\tarnbc\\BARCODE.INI"})
            if (files::exists(f)) files::removefile(f);
        dialogs::setunattended(true);
        Scanner scanner(emulatortype, install.link(), records);
        if (!scanner.ready()) {
            state.SkipWithError("the emulator did not start");
            return;
        }
        auto start = std::chrono::steady_clock::now();
        runtransfer();
        took = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        state.SetIterationTime(took);
        ListBox& list = form1().List2;
        if (list.list(list.listcount() - (type == 1 ? 1 : 2)) != "Data Cleared From The Scanner" ||
            files::readall("c:\\tarnbc\\BAR001.INI").substr(13, 7) != "000=500")
            state.SkipWithError("the transfer did not save and clear 500 lines");
    }
    state.counters["line_s"] = lineseconds;
    state.counters["took_s"] = took;
    state.counters["beyond_s"] = took - lineseconds;
    state.counters["beyond_pct"] = 100.0 * (took - lineseconds) / lineseconds;
}

void OplTransfer500(benchmark::State& state)
{
    std::string text;
    for (int i = 0; i < lines; ++i)
        text += "0001" + std::to_string(10000000 + i) + "0,090307,0830\n";
    transfer(state, 1, "opl", text, opllineseconds(25));
}

void Cs1504Transfer500(benchmark::State& state)
{
    std::string text;
    for (int i = 0; i < lines; ++i)
        text += "001" + std::to_string(100000000 + i) + ",1,2007-03-09 08:30:05\n";
    transfer(state, 3, "cs1504", text, csplineseconds(12));
}

BENCHMARK(OplTransfer500)->Iterations(1)->UseManualTime()->Unit(benchmark::kSecond);
BENCHMARK(Cs1504Transfer500)->Iterations(1)->UseManualTime()->Unit(benchmark::kSecond);

}  // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    installsessioncloser();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

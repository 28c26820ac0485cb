// Thousands of random and mutated lines and records through processdata: the run never
// crashes, a fault only ever lands in its own handler, and what it saves is sound.
#include "pipelinefixture.h"

#include <cstdlib>
#include <random>

#include "pipeline/formats.h"
#include "pipeline/processdata.h"

namespace {

class Fuzz : public PipelineTest {
protected:
    std::mt19937 rng{seed()};

    static unsigned seed()
    {
        const char* s = std::getenv("VEXAL_FUZZ_SEED");
        return s ? (unsigned)std::strtoul(s, nullptr, 10) : 20070309u;
    }
    int below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(rng); }
    char anybyte() { return (char)below(256); }

    // A byte that matters to the line rules more often than chance would give it.
    char pickbyte(bool text)
    {
        static const char telling[] = {',', '/', ':', '\xff', '1', '8', '9', '0', ' ', '2'};
        char c = below(3) == 0 ? telling[below(sizeof telling)] : (below(2) ? (char)('0' + below(10)) : anybyte());
        if (text && (c == '\r' || c == '\n')) c = '5';   // a text line cannot hold a line end
        return c;
    }

    std::string mutate(std::string s, bool text)
    {
        for (int n = below(4); n >= 0; --n) {
            const int at = s.empty() ? 0 : below((int)s.size());
            switch (below(5)) {
            case 0: if (!s.empty()) s[at] = pickbyte(text); break;
            case 1: s.insert(s.begin() + at, pickbyte(text)); break;
            case 2: if (!s.empty()) s.erase(at, 1); break;
            case 3: s.resize(below((int)s.size() + 1)); break;
            default: s += s.substr(at, below(4)); break;
            }
        }
        return s;
    }

    std::string randomline(bool text)
    {
        std::string s;
        for (int n = below(40); n > 0; --n) s += pickbyte(text);
        return s;
    }

    std::string oplsample()
    {
        static const char* samples[] = {"0001123456780,120307,1430", "0001993456780,120307,1431",
                                        "10212345678456,120307,1432", "18012345678,120307,1433",
                                        "19012345678,120307,1433", "0134567890123,120307,1434",
                                        "0001123456780,12/03/2007,14:30\xff"};
        return samples[below(sizeof samples / sizeof *samples)];
    }

    std::string recordsample()
    {
        std::string barcode = "00" + std::string(1, (char)('0' + below(9))) + "12345678";
        for (int n = below(6); n > 0; --n) barcode += (char)('0' + below(10));
        std::string r = std::string(1, (char)(barcode.size() + 5)) + "\x01" + barcode;
        for (int i = 0; i < 4; ++i) r += anybyte();
        // As the device hands it over: a longer buffer behind the record, sometimes.
        for (int n = below(2) ? below(20) : 0; n > 0; --n) r += anybyte();
        return r;
    }

    // The run ended in its handler, or not at all with a box.
    void expectonlythehandler(const char* what)
    {
        for (const auto& box : dialogs::transcript()) {
            EXPECT_EQ(box.title, "Error While Processing Data") << what;
            EXPECT_EQ(box.text.rfind("An unexpected error had occured while attempting to process the data from the "
                                     "scanner! Error : ", 0), 0u) << what;
        }
        if (!dialogs::transcript().empty()) {
            EXPECT_EQ(loglines().back().rfind("processdata: Unexpected error. Error : ", 0), 0u) << what;
        }
    }

    void run(int scannertype, bool repair, long count)
    {
        g().scannertype = scannertype;
        g().scannerid = "123";
        g().scancount = count;
        g().runmode = repair ? 4 : 1;
        dialogs::cleartranscript();
        processdata();
    }
};

bool alldigits(const std::string& s)
{
    for (char c : s)
        if (c < '0' || c > '9') return false;
    return true;
}

TEST_F(Fuzz, OplLinesNeverCrashAndSaveOnlySoundLines)
{
    for (int batch = 0; batch < 24; ++batch) {
        const bool repair = batch % 2;
        std::vector<std::string> lines;
        std::string bytes;
        for (int i = 0; i < 200; ++i) {
            lines.push_back(below(3) == 0 ? randomline(true) : mutate(oplsample(), true));
            bytes += lines.back() + "\r\n";
        }
        files::writeall(formats::rawfile("123"), bytes);
        run(1, repair, (long)lines.size());
        EXPECT_TRUE(dialogs::transcript().empty()) << "batch " << batch << ": " << dialogs::transcript()[0].text;
        EXPECT_EQ(g().outcount + g().badcount, (long)lines.size());
        for (long i = 1; i <= g().outcount; ++i) {
            const std::string& line = g().outlines[i];
            // Plain and long lines passed the checks: digits only, 22 or 25 long. FR lines
            // have no length check and carry what stood at their places.
            if (line.size() == 22 || line.size() == 25) continue;
            EXPECT_EQ(line.substr(0, 2), "01") << line;
        }
    }
}

TEST_F(Fuzz, RecordsNeverCrashAndFaultsLandInTheHandler)
{
    int faults = 0, whole = 0;
    for (int batch = 0; batch < 600; ++batch) {
        const bool repair = batch % 2;
        const long count = 5;
        form1().List2.clear();
        form12().List1.clear();
        for (long i = 1; i <= count; ++i) {
            const int kind = below(4);
            g().scanlines[i] = kind == 0 ? randomline(false) : kind == 1 ? mutate(recordsample(), false) : recordsample();
        }
        run(below(2) ? 2 : 3, repair, count);
        expectonlythehandler("records");
        if (!dialogs::transcript().empty()) {
            ++faults;
            EXPECT_EQ(g().runmode, 0);
            continue;
        }
        ++whole;
        EXPECT_EQ(g().outcount + g().badcount, count);
        for (long i = 1; i <= g().outcount; ++i) {
            EXPECT_EQ(g().outlines[i].size(), 22u) << g().outlines[i];
            EXPECT_TRUE(alldigits(g().outlines[i].substr(0, 10))) << g().outlines[i];
        }
    }
    EXPECT_GT(faults, 0) << "random records should reach the handler now and then";
    EXPECT_GT(whole, 100) << "most batches of sound and mutated records should run through";
}

}  // namespace

// No scan lost: a transfer that goes wrong at each point of the road from the scanner to the
// files, with an emulated scanner and the program's own routines. Whatever happens, every
// record the scanner held is afterwards still on the scanner, or in a BAR file, the data log
// or a safety copy; no BAR or master file is left half written; and the program's answer is
// the one its routines give (the message, the rows, whether the scanner is cleared).
#include "downloadfixture.h"
#include "pipeline/formats.h"
#include "pipeline/mainactions.h"
#include "pipeline/savejournal.h"

#include <QDir>
#include <sstream>

namespace {

enum class Outcome {
    kept,        // nothing saved, nothing cleared: the scanner holds everything
    saved,       // saved and cleared
    lostsave,    // the save failed, the scanner was cleared anyway: the copies hold the lines
};

struct Case {
    const char* name;
    int type;                       // 1 OPL 972x, 2 OPN 2001, 3 CS 1504
    std::string records;            // the records file
    std::vector<std::string> args;  // further emulator options
    int savetype;                   // 0 local, 1 Direct to the share
    std::string armat;              // the activity row at which the fault is set
    std::function<void()> fault;
    std::string box;                // the message box the transfer ends with ("" for none)
    Outcome outcome;
};

std::string csprecords()
{
    return "001123456789,1,2007-03-09 08:30:05\n002876543210,1,2007-03-08 17:45:00\n001990000019,1,2007-03-09 "
           "09:00:00\n";
}
std::string oplrecords() { return "0001123456780,090307,0830\n0002876543210,080307,1745\n0001990000010,090307,0900\n"; }
// A record no decoder can take (its length byte counts fewer bytes than a stamp), between
// two good ones: the good one after it must not be lost with it.
std::string garbled()
{
    return "001123456789,1,2007-03-09 08:30:05\nhex:03 01 30 30\n002876543210,1,2007-03-08 17:45:00\n";
}
std::string overlong()
{
    std::string text;
    for (int i = 0; i < 1001; ++i) text += "0001" + std::to_string(10000000 + i) + "0,090307,0830\n";
    return text;
}

void PrintTo(const Case& c, std::ostream* os) { *os << c.name; }

const char* firstrow = "Adding Entries to BAR001 File (New File)";

std::vector<Case> cases()
{
    const auto vanish = [] { files::inject::vanishshare("\\\\127.0.0.1\\tagstore"); };
    return {
        {"GoodTransfer", 3, csprecords(), {}, 1, "", nullptr, "", Outcome::saved},
        {"OpnPulledOutMidRead", 2, csprecords(), {"--vanish-after-records", "1"}, 0, "", nullptr,
         "Problem with Scanner", Outcome::kept},
        {"Cs1504PulledOutMidRead", 3, csprecords(), {"--vanish-after-records", "2"}, 1, "", nullptr,
         "Problem with Scanner", Outcome::kept},
        {"Opl972xPulledOutMidDownload", 1, oplrecords(), {"--vanish-after-records", "1"}, 0, "", nullptr, "",
         Outcome::kept},
        {"ShareGoneBeforeTheSave", 2, csprecords(), {}, 1, "2 Valid Lines Available For Export", vanish,
         "Error While Saving Data", Outcome::lostsave},
        // Gone once the save has begun: the journal cannot keep what it cannot read, and
        // the save stops before its first change (the data log holds the block).
        {"ShareGoneMidSave", 3, csprecords(), {}, 1, firstrow, vanish, "Error While Saving Data", Outcome::lostsave},
        // The data log block (six lines), key 000 and the first line go through; the second
        // line meets a full disk.
        {"DiskFullMidSave", 2, csprecords(), {}, 0, firstrow, [] { files::inject::failwriteafter(8); },
         "Error While Saving Data", Outcome::lostsave},
        {"DiskFullMidSaveOnTheShare", 1, oplrecords(), {"--battery", "85"}, 1, firstrow,
         [] { files::inject::failwriteafter(7); }, "Error While Saving Data", Outcome::lostsave},
        {"GarbageRecordOnOpn2001", 2, garbled(), {}, 0, "", nullptr, "Error While Processing Data", Outcome::kept},
        {"GarbageRecordOnCs1504", 3, garbled(), {}, 1, "", nullptr, "Error While Processing Data", Outcome::kept},
        {"OverlongOplDownload", 1, overlong(), {"--battery", "85"}, 0, "", nullptr, "Error While Processing Data",
         Outcome::kept},
    };
}

std::vector<uint8_t> unhex(const std::string& text)
{
    std::vector<uint8_t> out;
    for (size_t i = 0; i + 1 < text.size(); i += 2) out.push_back((uint8_t)std::stoi(text.substr(i, 2), nullptr, 16));
    return out;
}

// A profile file as Tarn reads it is whole: it ends with its line end, and each section's
// key 000 counts exactly the keys after it.
::testing::AssertionResult whole(const std::string& name, const std::string& bytes)
{
    if (bytes.empty()) return ::testing::AssertionSuccess();
    if (bytes.size() < 2 || bytes.compare(bytes.size() - 2, 2, "\r\n") != 0)
        return ::testing::AssertionFailure() << name << " is cut short";
    if (name.rfind("BARCODE", 0) == 0) return ::testing::AssertionSuccess();
    long promised = -1, keys = 0;
    const auto close = [&]() -> bool { return promised < 0 || promised == keys; };
    size_t at = 0;
    while (at < bytes.size()) {
        const size_t end = bytes.find("\r\n", at);
        const std::string line = bytes.substr(at, end - at);
        at = end + 2;
        if (!line.empty() && line[0] == '[') {
            if (!close()) return ::testing::AssertionFailure() << name << ": a section promises " << promised << " lines";
            promised = -1;
            keys = 0;
        } else if (line.rfind("000=", 0) == 0) {
            promised = std::stol(line.substr(4, 3));
        } else if (line.size() > 4 && line[3] == '=') {
            ++keys;
        } else {
            return ::testing::AssertionFailure() << name << ": torn line '" << line << "'";
        }
    }
    if (!close()) return ::testing::AssertionFailure() << name << ": a section promises " << promised << " lines";
    return ::testing::AssertionSuccess();
}

}  // namespace

class NoScanLostJournal : public DownloadTest {
protected:
    // A save under way (or one the journal could not put back yet).
    bool journal() const { return files::exists(savejournal::journalfile) && files::filelength(savejournal::journalfile) > 0; }
};

class NoScanLost : public NoScanLostJournal, public ::testing::WithParamInterface<Case> {
protected:
    void TearDown() override
    {
        ListBox::setobserver(nullptr);
        NoScanLostJournal::TearDown();
    }

    // The data files of both places, by folder and name.
    std::map<std::string, std::string> storefiles() const
    {
        std::map<std::string, std::string> found;
        for (const std::string& folder : {share, install.host("c:\\tarnbc")}) {
            for (const QString& name : QDir(QString::fromStdString(folder)).entryList({"BAR*"}, QDir::Files))
                found[folder + "/" + name.toStdString()] = TempInstall::readfile(folder + "/" + name.toStdString());
        }
        return found;
    }
    // The records (or OPL lines) the scanner holds by its state file, as bytes.
    std::vector<std::string> sent(int type) const
    {
        std::vector<std::string> out;
        const std::string key = type == 1 ? "line=" : "record=";
        std::istringstream text(TempInstall::readfile(state(6)));
        for (std::string l; std::getline(text, l);)
            if (l.rfind(key, 0) == 0) {
                const std::string v = l.substr(key.size());
                if (type == 1) out.push_back(v);
                else {
                    const auto b = unhex(v);
                    out.push_back(std::string(b.begin(), b.end()));
                }
            }
        return out;
    }
    // The copies under c:\tarnbc\backups of this scanner's reads, each whole.
    std::vector<std::string> copies(int type) const
    {
        std::vector<std::string> out;
        const std::string folder = install.host("c:\\tarnbc\\backups");
        const QString pattern = type == 1 ? "temp_123_*.txt" : "csp_123_*.dat";
        for (const QString& name : QDir(QString::fromStdString(folder)).entryList({pattern}, QDir::Files))
            out.push_back(TempInstall::readfile(folder + "/" + name.toStdString()));
        return out;
    }
    // OPL 972x pulled out during its download: the program waits (by design, for ever).
    // Once it has waited a while the test ends the wait as the control's complete event
    // would, and the transfer goes on with what it has.
    void endthewaitlater()
    {
        int ticks = 0;
        whilewaiting([this, ticks]() mutable {
            bool error = false;
            for (const auto& e : dialogs::transcript()) error = error || (e.title.empty() && !e.text.empty());
            if (!error || ++ticks < 25) return false;
            EXPECT_EQ(g().opldone, 0);
            EXPECT_EQ(g().runmode, 1);
            EXPECT_TRUE(datalog().empty());
            opl_DownloadComplete();
            return true;
        });
    }
};

TEST_P(NoScanLost, EveryRecordIsSomewhere)
{
    const Case& c = GetParam();
    g().savetype = c.savetype;
    std::vector<std::string> args = {"--id", "123", "--records", records(c.records)};
    args.insert(args.end(), c.args.begin(), c.args.end());
    dock(c.type, args);
    const std::vector<std::string> held = sent(c.type);
    ASSERT_FALSE(held.empty());
    const auto before = storefiles();

    ListBox::setobserver([&c](const ListBox&, const std::string& text) {
        if (c.fault && text == c.armat) c.fault();
    });
    if (c.type == 1 && !c.args.empty() && c.args[0] == "--vanish-after-records") endthewaitlater();
    runtransfer();
    ListBox::setobserver(nullptr);
    files::inject::reset();

    if (!c.box.empty()) EXPECT_EQ(boxes(c.box).size(), 1u) << c.box;
    expectidle();
    const long left = stopped(6);

    switch (c.outcome) {
    case Outcome::kept:
        EXPECT_EQ(left, (long)held.size()) << "the scanner keeps all it held";
        if (c.box == "Error While Processing Data") {
            EXPECT_TRUE(hasline("Data NOT deleted from scanner due to possible error!"));
            EXPECT_EQ(storefiles(), before) << "a processing fault saves nothing";
            EXPECT_TRUE(datalog().empty());
        }
        break;
    case Outcome::saved:
        EXPECT_EQ(left, 0);
        EXPECT_EQ(get("\\\\127.0.0.1\\tagstore\\BAR001.007"), barbytes("123", "00220070309", goodlines()));
        break;
    case Outcome::lostsave: {
        // The Parts clear the scanner after a failed save: the copies must hold every record.
        EXPECT_EQ(left, 0);
        const auto kept = copies(c.type);
        ASSERT_EQ(kept.size(), 1u);
        for (const std::string& r : held) EXPECT_NE(kept[0].find(r), std::string::npos) << "not in the safety copy";
        // What the failed save had begun is put back.
        for (const auto& [name, bytes] : storefiles())
            if (name.find("BARCODE") == std::string::npos) EXPECT_EQ(before.count(name) ? before.at(name) : "", bytes) << name;
        break;
    }
    }

    // A CSP read that came to its end left its records in the safety copy, exactly as the
    // scanner handed them over.
    if (c.type != 1 && c.args.empty()) {
        std::string dump;
        for (const std::string& r : held) dump += r;
        const auto kept = copies(c.type);
        ASSERT_EQ(kept.size(), 1u);
        EXPECT_EQ(kept[0], dump);
    }
    EXPECT_FALSE(journal());
    for (const auto& [name, bytes] : storefiles()) EXPECT_TRUE(whole(name.substr(name.rfind('/') + 1), bytes));
}

INSTANTIATE_TEST_SUITE_P(FaultMatrix, NoScanLost, ::testing::ValuesIn(cases()),
                         [](const ::testing::TestParamInfo<Case>& info) { return std::string(info.param.name); });

// A save that fails while its share is away cannot put the share's files back: the journal
// keeps them until the share is back, and the next start (or save) puts them back then.
TEST_F(NoScanLostJournal, WaitsForTheShareToComeBack)
{
    const std::string bar = "\\\\127.0.0.1\\tagstore\\BAR001.007", master = "\\\\127.0.0.1\\tagstore\\BARCODE.007";
    put(master, masterbytes("001"));
    put(bar, barbytes("123", "00120070308", {"0112345678200703080830"}));
    const std::string before = get(bar);
    savejournal::begin({bar, master}, {{bar, "000000123", "002", "0287654321200703091745"}});
    formats::writevalue(bar, "000000123", "000", "00220070309");
    files::inject::vanishshare("\\\\127.0.0.1\\tagstore");
    EXPECT_FALSE(savejournal::rollback());
    EXPECT_TRUE(journal());

    savejournal::replay();
    EXPECT_TRUE(journal()) << "still away";
    files::inject::reset();
    savejournal::replay();
    EXPECT_FALSE(journal());
    EXPECT_EQ(get(bar), before);
    EXPECT_EQ(get(master), masterbytes("001"));
    EXPECT_TRUE(logged("Unfinished save put back: " + bar));

    // A save that got to its end (its checks hold) is kept, though its journal was not
    // emptied on the disk.
    savejournal::begin({bar, master}, {{bar, "000000123", "002", "0287654321200703091745"}});
    formats::writevalue(bar, "000000123", "000", "00220070309");
    formats::writevalue(bar, "000000123", "002", "0287654321200703091745");
    const std::string after = get(bar);
    savejournal::replay();
    EXPECT_FALSE(journal());
    EXPECT_EQ(get(bar), after);
    savejournal::commit();
}

// Automatic download in the real program: emulated scanners docked and undocked while the
// installed program runs from the start-up group, the files it leaves on the share, the
// day's logs, the scanners' memory afterwards, the lock question and the day change. How
// each type is polled tick by tick is tested in-process (e2e/automatic_test).
#include <algorithm>
#include <csignal>
#include <memory>

#include <QFileInfo>

#include "processfixture.h"
#include "support/emulator.h"

namespace {

constexpr int OPL = 1, OPN = 2, CS1504 = 3;
constexpr int comof[] = {0, 4, 5, 6};   // each type on a port of its own

size_t count(const std::string& text, const std::string& what)
{
    size_t n = 0;
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + what.size())) ++n;
    return n;
}

class AutomaticProcessTest : public ProcessTest {
protected:
    void TearDown() override
    {
        ProcessTest::TearDown();
        for (auto& [type, e] : scanners) e->signal(SIGCONT);
        scanners.clear();
    }

    // TAGSTORE.INI as the setup screen stores it, with `types` in use on their ports, AUTO
    // as given, Direct saving to 127.0.0.1 (or `serverip`) as terminal 007, and the local
    // engineer list with the owner of scanner 123.
    void setup(std::vector<int> types, bool autoon = true, const std::string& serverip = "127.0.0.1")
    {
        static const char* sections[] = {"", "9725", "1234", "1504"};
        std::string ini;
        for (int t = 1; t <= 3; ++t) {
            bool used = std::find(types.begin(), types.end(), t) != types.end();
            ini += std::string("[") + sections[t] + "]\r\nUSED=" + (used ? "1" : "0") + "\r\nPORT=" +
                   std::to_string(used ? comof[t] : 0) + "#\r\nAUTO=" + (used && autoon ? "1" : "0") + "\r\nAUTOTIME=0\r\n";
        }
        ini += "[SAVE]\r\nTYPE=1\r\nIP=" + serverip + "#\r\nTNO=007#\r\n[FITTER]\r\nTYPE=0\r\n"
               "[COMPANY]\r\nNAME=Test Motors#\r\nUSER=Workshop#\r\nTEL=01234#\r\nHOEMAIL=#\r\n"
               "[MISC]\r\nCHKROGUE=1#\r\nREADDELAY=0#\r\n[FIRST]\r\nRUN=1\r\n";
        write("TAGSTORE.INI", ini);
        std::string ports = "[ports]\n";
        for (int t = 1; t <= 3; ++t) ports += "COM" + std::to_string(comof[t]) + "=" + link(t) + "\n";
        write("platform.ini", "[dialogs]\nanswers=answers.txt\ntranscript=transcript.txt\n[shares]\n\\\\127.0.0.1\\tagstore=" +
                                  root + "/share\n" + ports);
        QDir(QString::fromStdString(root)).mkpath("share");
        QDir(QString::fromStdString(root)).mkpath("drive_c/TARNBC");
        write("drive_c/TARNBC/ENGLST.TXT", "VEXAL engineers\r\n000123,000123,FRED BLOGGS\r\n");
    }

    std::string link(int type) const { return root + "/com" + std::to_string(comof[type]); }
    static std::string statefile(int type) { return "scanner" + std::to_string(type) + ".state"; }

    // Docks scanner 123 of `type` holding `records` (a records file's text), its clock with
    // the program's. With `keepstate` it comes back with the memory it left with.
    Emulator& dock(int type, const std::string& records, bool keepstate = false)
    {
        static const char* names[] = {"", "opl", "opn", "cs1504"};
        if (!keepstate) QFile::remove(QString::fromStdString(root + "/" + statefile(type)));
        const std::string file = root + "/records" + std::to_string(++recordfiles) + ".txt";
        Emulator::writefile(file, records);
        std::vector<std::string> args = {"--id", "123", "--battery", "85", "--records", file, "--baud", "115200",
                                         "--state", root + "/" + statefile(type), "--clock-offset", std::to_string(clockshift / 60.0)};
        scanners[type] = std::make_unique<Emulator>(names[type], args, link(type));
        EXPECT_TRUE(scanners[type]->ready()) << scanners[type]->output();
        return *scanners[type];
    }
    // Takes the scanner away: its port goes.
    void undock(int type) { EXPECT_EQ(scanners[type]->stop(), 0) << scanners[type]->output(); }

    // The lines or records the scanner holds now.
    long held(int type) const
    {
        const std::string state = read(statefile(type));
        return (long)(count("\n" + state, "\nline=") + count("\n" + state, "\nrecord="));
    }

    // Downloads begun so far (by the log of `day`, the program's today by default).
    size_t downloads(const QDate& day) const { return count(log(day), "Reading: ID: 123 Date: "); }
    size_t downloads() const { return downloads(programnow().date()); }
    // Waits for `n` downloads begun and `clears` scanners cleared (a scanner read empty is
    // not cleared).
    bool waitfordownloads(size_t n, size_t clears, int ms = 15000)
    {
        return waituntil([&] { return downloads() >= n && count(log(), "Data Cleared From The Scanner") >= clears; }, ms);
    }
    bool waitfordownloads(size_t n) { return waitfordownloads(n, n); }

    // Scans as the scanners keep them and the lines they become, for a day and a serial.
    static std::string ddmmyy(const QDate& d) { return d.toString("ddMMyy").toStdString(); }
    static std::string ymd(const QDate& d) { return d.toString("yyyyMMdd").toStdString(); }
    static std::string oplscan(const std::string& serial, const QDate& d, const std::string& hhmm)
    {
        return "0001" + serial + "0," + ddmmyy(d) + "," + hhmm + "\n";
    }
    static std::string cspscan(const std::string& serial, const QDate& d, const std::string& hhmm)
    {
        return "001" + serial + "9,1," + d.toString("yyyy-MM-dd").toStdString() + " " + hhmm.substr(0, 2) + ":" +
               hhmm.substr(2) + ":05\n";
    }
    static std::string line(const std::string& serial, const QDate& d, const std::string& hhmm)
    {
        return "01" + serial + ymd(d) + hhmm;
    }
    // Two good scans and a test scan of the day before the program's today.
    std::string threescans(int type) const
    {
        const QDate d = programnow().date().addDays(-1);
        auto scan = type == OPL ? oplscan : cspscan;
        return scan("12345678", d, "0830") + scan("87654321", d, "1745") + scan("99000001", d, "0900");
    }
    std::vector<std::string> goodlines() const
    {
        const QDate d = programnow().date().addDays(-1);
        return {line("12345678", d, "0830"), line("87654321", d, "1745")};
    }

    // A BAR file of scanner 123 and the master file, as Tarn reads them from the share.
    static std::string barfile(const std::vector<std::string>& lines, const QDate& saved)
    {
        std::string b = "[000000123]\r\n000=" + QString::number(lines.size()).rightJustified(3, '0').toStdString() +
                        ymd(saved) + "\r\n";
        for (size_t i = 0; i < lines.size(); ++i)
            b += QString::number(i + 1).rightJustified(3, '0').toStdString() + "=" + lines[i] + "\r\n";
        return b;
    }
    std::string share(const std::string& name) const { return read("share/" + name); }

    std::map<int, std::unique_ptr<Emulator>> scanners;
    int recordfiles = 0;
};

TEST_F(AutomaticProcessTest, Opl972xIsTakenWhenDockedThenRestsTenTicksBeforeLinesAddedAreTaken)
{
    setup({OPL});
    dock(OPL, threescans(OPL));
    start({"startup"});

    ASSERT_TRUE(waitfordownloads(1)) << log();
    QElapsedTimer sincefirst;
    sincefirst.start();
    const QDate today = programnow().date();
    EXPECT_EQ(share("BAR001.007"), barfile(goodlines(), today));
    EXPECT_EQ(share("BARCODE.007"), "[FILES]\r\nFILES=001\r\n");
    EXPECT_EQ(held(OPL), 0);
    // The day's log: the owner, the lines as read, the outcome; the data log keeps the block.
    const QDate scanday = today.addDays(-1);
    const std::string dmy = scanday.toString("dd-MMM-yy").toStdString();
    for (const std::string& text : {std::string("Scanner From : Fred Bloggs"), std::string("Scanner Lines: 3"),
                                    "01 12 345678 At 08:30 " + dmy, "01 99 000001 At 09:00 " + dmy + " TEST",
                                    std::string("2 Valid Lines Available For Export")})
        EXPECT_EQ(count(log(), text + "\r\n"), 1u) << text << "\n" << log();
    const std::string block = "[000000123]\r\n000=002" + ymd(today) + "\r\n001=" + goodlines()[0] + "\r\n002=" +
                              goodlines()[1] + "\r\nEND\r\n";
    EXPECT_EQ(count(read("LOGS/" + today.toString("dd").toStdString() + "_DAT.TXT"), block), 1u);

    // Taken away and docked again at once with one new scan: it waits out the pause.
    undock(OPL);
    write(statefile(OPL), read(statefile(OPL)) + "line=" + oplscan("55555555", today.addDays(-1), "1200"));
    dock(OPL, "", true);
    ASSERT_TRUE(waituntil([&] { return downloads() >= 2; }, 20000)) << log();
    EXPECT_GE(sincefirst.elapsed(), 9500) << "downloaded again inside the ten-tick pause";
    ASSERT_TRUE(waitfordownloads(2)) << log();
    auto lines = goodlines();
    lines.push_back(line("55555555", today.addDays(-1), "1200"));
    EXPECT_EQ(share("BAR001.007"), barfile(lines, today)) << "the new line joins the scanner's file";
    EXPECT_EQ(share("BARCODE.007"), "[FILES]\r\nFILES=001\r\n");
    EXPECT_EQ(held(OPL), 0);
    EXPECT_EQ(read("transcript.txt"), "");
}

TEST_F(AutomaticProcessTest, Cs1504IsTurnedOffAfterItsDownloadAndTakenAgainOnlyWhenWoken)
{
    setup({CS1504});
    Emulator& scanner = dock(CS1504, threescans(CS1504));
    start({"startup"});

    ASSERT_TRUE(waitfordownloads(1)) << log();
    const QDate today = programnow().date();
    EXPECT_EQ(share("BAR001.007"), barfile(goodlines(), today));
    EXPECT_EQ(held(CS1504), 0);

    // Polled every fourth tick; left in its cradle, turned off, it is not taken again.
    QThread::msleep(4500);
    EXPECT_EQ(downloads(), 1u) << log();

    // A key press wakes it in its cradle: the next poll takes it, empty.
    scanner.signal(SIGUSR1);
    ASSERT_TRUE(waitfordownloads(2, 1, 8000)) << log();
    EXPECT_EQ(share("BAR001.007"), barfile(goodlines(), today));
    EXPECT_EQ(read("transcript.txt"), "");
}

// With a lock file of Tarn's in the store, a docked OPL 972x raises the question.
class LockQuestion : public AutomaticProcessTest, public ::testing::WithParamInterface<bool> {};

TEST_P(LockQuestion, KeptLockLeavesTheScannerAloneAndAsksAgainRemovedLockDownloads)
{
    const bool remove = GetParam();
    setup({OPL});
    write("answers.txt", std::string("Data Upload In Progress => ") + (remove ? "Yes" : "No") +
                             "\nPlease remove scanner => OK\n");
    write("share/BARLCK.007", "LOCKED\r\n");
    dock(OPL, threescans(OPL));
    start({"startup"});

    const std::string question = "MsgBox \"Data Upload In Progress\" \"There is a lock file in place that indicates you are "
                                 "currently loading data into Tarn! You should not download from additional scanners "
                                 "until this is complete! Would you like to remove the lock file?\"";
    const std::string removebox = "MsgBox \"Please remove scanner\" \"Please remove the scanner from the cradle or cable "
                                  "and then click on 'OK' (Note: No data has been downloaded from the scanner). The "
                                  "scanner can be reconnected once the Tarn processing is complete.\"";
    if (remove) {
        ASSERT_TRUE(waitfordownloads(1)) << log() << read("transcript.txt");
        EXPECT_EQ(count(read("transcript.txt"), question), 1u) << read("transcript.txt");
        EXPECT_EQ(count(read("transcript.txt"), removebox), 0u);
        EXPECT_FALSE(QFile::exists(QString::fromStdString(root + "/share/BARLCK.007")));
        EXPECT_EQ(share("BAR001.007"), barfile(goodlines(), programnow().date()));
        EXPECT_EQ(held(OPL), 0);
    } else {
        ASSERT_TRUE(waituntil([&] { return count(read("transcript.txt"), removebox) >= 2; })) << read("transcript.txt");
        const std::string t = read("transcript.txt");
        EXPECT_EQ(count(t, question), count(t, removebox));
        EXPECT_LT(t.find(question), t.find(removebox)) << "the question comes first";
        EXPECT_EQ(share("BARLCK.007"), "LOCKED\r\n");
        EXPECT_EQ(share("BAR001.007"), "");
        EXPECT_EQ(held(OPL), 3) << "nothing was read or cleared";
        EXPECT_EQ(downloads(), 0u);
    }
}

INSTANTIATE_TEST_SUITE_P(Answer, LockQuestion, ::testing::Values(false, true),
                         [](const auto& info) { return info.param ? "Removed" : "Kept"; });

// The program's and the scanners' clocks start `before` seconds short of midnight.
qint64 shiftto(int before)
{
    const QDateTime now = QDateTime::currentDateTime();
    return now.secsTo(QDateTime(now.date().addDays(1), QTime(0, 0))) - before;
}

// A scanner docked before midnight, taken away and docked again after it.
TEST_F(AutomaticProcessTest, WithAutomaticOnTheProgramRunsOverMidnightAndStillDownloads)
{
    if (libfaketime().empty()) GTEST_SKIP() << "libfaketime is not installed (scripts/deps)";
    clockshift = shiftto(8);
    setup({OPN});
    dock(OPN, threescans(OPN));
    QProcess* program = start({"startup"});

    ASSERT_TRUE(waitfordownloads(1)) << log();
    const QDate before = programnow().date();
    ASSERT_GT(programnow().time(), QTime(23, 0)) << "the first download ended after midnight: too slow for this test";
    ASSERT_TRUE(waituntil([&] { return programnow().date() > before && programnow().time() > QTime(0, 0, 1); }, 20000));
    EXPECT_FALSE(program->waitForFinished(100)) << "the program ended";

    const QDate after = before.addDays(1);
    undock(OPN);
    QThread::msleep(1500);
    dock(OPN, cspscan("55555555", after, "0000"));
    ASSERT_TRUE(waitfordownloads(1)) << log(after);
    EXPECT_EQ(downloads(before), 1u);
    // The first download's scans are of the day before `before`.
    const std::vector<std::string> lines = {line("12345678", before.addDays(-1), "0830"),
                                            line("87654321", before.addDays(-1), "1745"), line("55555555", after, "0000")};
    EXPECT_EQ(share("BAR001.007"), barfile(lines, after));
    EXPECT_FALSE(program->waitForFinished(100)) << "the program ended";
}

// Without automatic download the icon timer ends the program on its first tick of a new day.
// That timer runs without AUTO only while a tool screen holds the program or for one tick
// after it is armed; the start-up's store question, answered Yes, arms it and opens the
// setup screen. The day turns between the start and that question.
class NewDayWithoutAutomatic : public AutomaticProcessTest, public ::testing::WithParamInterface<bool> {};

TEST_P(NewDayWithoutAutomatic, TheFirstTickOfTheIconTimerAfterMidnightClosesTheProgram)
{
    if (libfaketime().empty()) GTEST_SKIP() << "libfaketime is not installed (scripts/deps)";
    const bool daychanges = GetParam();
    setup({OPL}, false, "0.0.0.0");
    write("answers.txt", "Remote Store Location Not Responding => Yes\n");
    clockfile = "clock.txt";
    clockshift = shiftto(120);
    QProcess* program = start();

    ASSERT_TRUE(waitforlog("Program Started")) << log();
    if (daychanges) setclockfile(shiftto(-5));
    ASSERT_TRUE(waituntil([&] { return read("transcript.txt").find("Remote Store Location Not Responding") !=
                                       std::string::npos; }))
        << read("transcript.txt");
    if (daychanges) {
        ASSERT_TRUE(program->waitForFinished(5000)) << "still running on the new day";
        EXPECT_EQ(program->exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(program->exitCode(), 0);
    } else {
        EXPECT_FALSE(program->waitForFinished(2000));
    }
    EXPECT_EQ(count(read("transcript.txt"), "MsgBox"), 1u) << read("transcript.txt");
}

INSTANTIATE_TEST_SUITE_P(Day, NewDayWithoutAutomatic, ::testing::Values(true, false),
                         [](const auto& info) { return info.param ? "Changes" : "Stays"; });

}  // namespace

// The program killed in the middle of a save (as by a power cut): the scanner keeps its
// records, the data log and the safety copy hold them already, and the next start puts the
// half-written files back before anything else, so that the download taken again leaves
// each line once and no file that Tarn would misread.
TEST_F(AutomaticProcessTest, KilledMidSaveIsPutBackAtTheNextStart)
{
    setup({CS1504});
    const QDate d = programnow().date().addDays(-1);
    std::string scans;
    std::vector<std::string> lines;
    for (int i = 0; i < 1000; ++i) {
        const std::string serial = std::to_string(10000000 + i);
        const std::string hhmm = QString::asprintf("%02d%02d", 8 + i / 60 % 10, i % 60).toStdString();
        scans += cspscan(serial, d, hhmm);
        lines.push_back(line(serial, d, hhmm));
    }
    dock(CS1504, scans);
    QProcess* program = start({"startup"});

    // Killed once the save has begun writing the share's BAR file.
    const QString journal = QString::fromStdString(root + "/drive_c/TARNBC/SAVE.JNL");
    const QString bar = QString::fromStdString(root + "/share/BAR001.007");
    QElapsedTimer waited;
    waited.start();
    while (!(QFileInfo(journal).size() > 0 && QFile::exists(bar)) && waited.elapsed() < 60000) QThread::msleep(1);
    program->kill();
    program->waitForFinished(5000);
    ASSERT_GT(QFileInfo(journal).size(), 0) << "the save had finished before the kill\n" << log();
    EXPECT_EQ(held(CS1504), 1000) << "the scanner is cleared only after the save";
    const std::string datalog = read("LOGS/" + programnow().toString("dd").toStdString() + "_DAT.TXT");
    EXPECT_NE(datalog.find("1000=" + lines.back() + "\r\nEND\r\n"), std::string::npos) << "the block is whole";
    const QStringList copies = QDir(QString::fromStdString(root + "/drive_c/TARNBC/BACKUPS")).entryList({"csp_123_*.dat"});
    ASSERT_EQ(copies.size(), 1);
    EXPECT_EQ(read("drive_c/TARNBC/BACKUPS/" + copies[0].toStdString()).size(), 1000u * 18);

    // Started again without the scanner: the save is put back.
    undock(CS1504);
    start({"startup"});
    ASSERT_TRUE(waitforlog("Unfinished save put back: \\\\127.0.0.1\\tagstore\\BAR001.007")) << log();
    EXPECT_TRUE(waituntil([&] { return QFileInfo(journal).size() == 0; })) << "the journal is emptied";
    EXPECT_FALSE(QFile::exists(bar)) << "the file the save began is gone again";

    // Docked again: taken again, each line once.
    dock(CS1504, "", true);
    ASSERT_TRUE(waituntil([&] { return count(log(), "Data Cleared From The Scanner") >= 1; }, 60000)) << log();
    EXPECT_EQ(share("BAR001.007"), barfile(lines, programnow().date()));
    EXPECT_EQ(share("BARCODE.007"), "[FILES]\r\nFILES=001\r\n");
    EXPECT_EQ(held(CS1504), 0);
}

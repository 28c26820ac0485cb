// savetoinifile: the BAR files and the master file of each save type, the data log block,
// and saves that fail half way. A Direct save to a reachable store is run whole by
// e2e/transfer_test.
#include "core/colorbox.h"
#include "pipeline/savetoinifile.h"
#include "support/storeworld.h"

namespace {

const char* localmaster = "c:\\tarnbc\\BARCODE.INI";
const char* storemaster = "\\\\127.0.0.1\\tagstore\\BARCODE.007";

std::string localbar(int n) { return "c:\\tarnbc\\BAR" + Format(n, "000") + ".INI"; }
std::string storebar(int n) { return "\\\\127.0.0.1\\tagstore\\BAR" + Format(n, "000") + ".007"; }

// Canonical lines of a download: a 22-character and a 25-character line in turn.
std::vector<std::string> download(int count, int day = 9)
{
    std::vector<std::string> lines;
    for (int i = 1; i <= count; ++i) {
        std::string line = "01" + Format(12345600 + i, "00000000") + "200703" + Format(day, "00") + "14" + Format(i % 60, "00");
        if (i % 2 == 0) line = "02" + line.substr(2) + "456";
        lines.push_back(line);
    }
    return lines;
}

}  // namespace

class SaveToIniFile : public StoreTest {
protected:
    void save(const std::string& scanner, const std::vector<std::string>& lines)
    {
        g().outlines[0] = scanner;
        for (size_t i = 0; i < lines.size(); ++i) g().outlines[(long)i + 1] = lines[i];
        g().outcount = (long)lines.size();
        form1().List2.clear();
        savetoinifile();
    }
    std::vector<std::string> activity() const { return items(form1().List2); }
    std::vector<std::string> datalog() const { return textlines(install.host(g().homedir + "LOGS\\09_DAT.TXT")); }
};

TEST_F(SaveToIniFile, FirstSaveEverMakesBar001)
{
    g().savetype = 0;
    const auto lines = download(3);
    save("123", lines);
    EXPECT_EQ(get(localbar(1)), barbytes("123", "00320070309", lines));
    EXPECT_EQ(get(localmaster), masterbytes("001"));
    EXPECT_EQ(activity(), (std::vector<std::string>{"Adding Entries to BAR001 File (New File)", "Entries Added To File On Local PC"}));
    EXPECT_EQ(items(form1().List1), std::vector<std::string>{"BAR001   Scanner 123   003 Lines"}) << "the list is redrawn";
    EXPECT_EQ(datalog(), (std::vector<std::string>{"ENTRY: Scanner 000123 1405 20070309", "[000000123]", "000=00320070309",
                                                   "001=" + lines[0], "002=" + lines[1], "003=" + lines[2], "END"}));
    EXPECT_TRUE(dialogs::transcript().empty());
}

TEST_F(SaveToIniFile, SameScannerAgainContinuesItsSection)
{
    g().savetype = 0;
    const auto first = download(2);
    save("123", first);
    platform::clock::set(QDateTime(QDate(2007, 3, 12), QTime(8, 30)));
    const auto second = download(3, 12);
    save("123", second);

    std::vector<std::string> all = first;
    all.insert(all.end(), second.begin(), second.end());
    EXPECT_EQ(get(localbar(1)), barbytes("123", "00520070312", all)) << "one section, the sum, the date of the last save";
    EXPECT_EQ(get(localmaster), masterbytes("001"));
    EXPECT_EQ(activity()[0], "Adding Entries to BAR001 File (Contains 2 Lines)");
    const auto block = textlines(install.host(g().homedir + "LOGS\\12_DAT.TXT"));
    EXPECT_EQ(block, (std::vector<std::string>{"ENTRY: Scanner 000123 0830 20070312", "[000000123]", "000=00520070312",
                                               "003=" + second[0], "004=" + second[1], "005=" + second[2], "END"}));
}

TEST_F(SaveToIniFile, EachScannerHasItsOwnFile)
{
    g().savetype = 2;
    save("456", download(1));
    save("123", download(2));
    save("456", download(1));
    save("789", download(1));
    EXPECT_EQ(get(localmaster), masterbytes("003"));
    EXPECT_EQ(Left(get(localbar(1)), 28), "[000000456]\r\n000=00220070309");
    EXPECT_EQ(Left(get(localbar(2)), 28), "[000000123]\r\n000=00220070309");
    EXPECT_EQ(Left(get(localbar(3)), 28), "[000000789]\r\n000=00120070309");
    EXPECT_EQ(activity(), (std::vector<std::string>{"Adding Entries to BAR003 File (New File)", "Entries Added To Batch On PC",
                                                    "Batch Must Be Sent To Tarn Server"}));
}

TEST_F(SaveToIniFile, StaleFileUnderTheNewNumberIsDropped)
{
    g().savetype = 0;
    put(localmaster, masterbytes("001"));
    put(localbar(1), barbytes("123", "00120070301", {"0111111111200703011200"}));
    put(localbar(2), barbytes("999", "00420070301", download(4)));
    const auto lines = download(1);
    save("456", lines);
    EXPECT_EQ(get(localbar(2)), barbytes("456", "00120070309", lines)) << "nothing of the stale file is left";
    EXPECT_EQ(get(localmaster), masterbytes("002"));
}

TEST_F(SaveToIniFile, DirectModeWithTheStoreDownHoldsDataOnThePc)
{
    g().savetype = 1;
    g().storedown = 1;
    g().storestate = 3;
    save("123", download(1));
    EXPECT_TRUE(has(localbar(1)));
    EXPECT_FALSE(has(storebar(1)));
    EXPECT_EQ(activity(), (std::vector<std::string>{"Store Location Unavailable!", "Data Held On PC",
                                                    "Adding Entries to BAR001 File (New File)",
                                                    "Entries Added To Temp File On PC", "Data Now Ready For Import To Tarn"}));
}

TEST_F(SaveToIniFile, EmailModeSavesToTheStoreWithoutClosingRows)
{
    g().savetype = 3;
    save("123", download(1));
    EXPECT_TRUE(has(storebar(1)));
    EXPECT_EQ(activity(), std::vector<std::string>{"Adding Entries to BAR001 File (New File)"});
}

TEST_F(SaveToIniFile, BatchFilesOnThePcWaitWhenTheModeTurnsDirect)
{
    g().savetype = 2;
    save("123", download(2));
    g().savetype = 1;
    g().storedown = 0;
    save("123", download(1));
    EXPECT_EQ(get(storemaster), masterbytes("001"));
    EXPECT_EQ(Left(get(storebar(1)), 28), "[000000123]\r\n000=00120070309");
    EXPECT_EQ(get(localmaster), masterbytes("001")) << "the PC's set is left for the transfer";
    EXPECT_EQ(Left(get(localbar(1)), 28), "[000000123]\r\n000=00220070309");
}

TEST_F(SaveToIniFile, FullDiskHalfWayPutsTheFilesBack)
{
    g().savetype = 0;
    g().runmode = 1;
    const auto lines = download(5);
    // From the row of step 8: the data log takes 5 + 4 writes, the journal one, key 000 one,
    // then two lines.
    ListBox::setobserver([](const ListBox&, const std::string& row) {
        if (Left(row, 20) == "Adding Entries to BA") files::inject::failwriteafter(9 + 1 + 1 + 2);
    });
    save("123", lines);
    ListBox::setobserver(nullptr);

    // The header promised five lines and two were written: the file the save began is gone
    // again, so no file says what it does not hold.
    EXPECT_FALSE(files::exists(localbar(1)));
    EXPECT_EQ(get(localmaster), masterbytes("000")) << "the master file does not count the new file";
    EXPECT_EQ(get("c:\\tarnbc\\SAVE.JNL"), "") << "nothing waits to be put back";
    EXPECT_EQ(datalog().size(), 9u) << "the whole block went to the data log first";
    EXPECT_EQ(datalog()[7], "005=" + lines[4]);
    auto shown = boxes("Error While Saving Data");
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text,
              "An unexpected error had occured while attempting to save the data from the scanner at line 12! Error : 61 Disk full");
    EXPECT_EQ(shown[0].flags, vbExclamation);
    EXPECT_TRUE(logged("savetoinifile: Line 12 Unexpected error. Error : 61 Disk full"));
    EXPECT_EQ(g().runmode, 0);
    EXPECT_EQ(activity(), std::vector<std::string>{"Adding Entries to BAR001 File (New File)"});

    // The lines stay in the data log, from which they can be restored; the next save starts
    // BAR001 anew.
    save("123", download(1));
    EXPECT_EQ(get(localbar(1)), barbytes("123", "00120070309", download(1)));
}

TEST_F(SaveToIniFile, ShareVanishingBeforeTheKeysAreWrittenStopsAtTheJournal)
{
    g().savetype = 1;
    g().storedown = 0;
    const auto lines = download(2);
    ListBox::setobserver([](const ListBox&, const std::string& row) {
        if (Left(row, 20) == "Adding Entries to BA") files::inject::vanishshare("\\\\127.0.0.1\\tagstore");
    });
    save("123", lines);
    ListBox::setobserver(nullptr);

    auto shown = boxes("Error While Saving Data");
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, "An unexpected error had occured while attempting to save the data from the scanner at line "
                             "10! Error : 76 Path not found");
    EXPECT_EQ(datalog(), (std::vector<std::string>{"ENTRY: Scanner 000123 1405 20070309", "[000000123]", "000=00220070309",
                                                   "001=" + lines[0], "002=" + lines[1], "END"}))
        << "the lines are safe in the data log";
    files::inject::reset();
    EXPECT_FALSE(QFile::exists(QString::fromStdString(share + "/BAR001.007")));
    EXPECT_EQ(get(storemaster), masterbytes("000"));
}

TEST_F(SaveToIniFile, StatusScreenCountsTheSave)
{
    g().savetype = 0;
    form16().setupstatus();
    form16().show();
    save("123", download(4));
    EXPECT_EQ(form16().SaveData.caption(), "004 / 004");
    EXPECT_EQ(form16().SaveData.forecolor(), colorbox(11));
    EXPECT_TRUE(form16().SaveLabel.bold());
    form16().hide();
}

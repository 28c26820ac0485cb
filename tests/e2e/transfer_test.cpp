// Transfers from the main screen against emulated scanners of each type, with each of the
// three save types that write files: the lists, the logs, the files byte for byte, the
// raw file and its backup, the flags on the way and the scanner's memory afterwards.
#include "core/form9.h"
#include "downloadfixture.h"

namespace {

struct Row {
    std::string text;
    int runmode, pressedop;
};

// Every row added to the main screen's activity list, with the flags at that moment.
class ActivityRecorder {
public:
    ActivityRecorder()
    {
        ListBox::setobserver([this](const ListBox& list, const std::string& text) {
            if (&list == &form1().List2) rows.push_back({text, g().runmode, g().pressedop});
        });
    }
    ~ActivityRecorder() { ListBox::setobserver(nullptr); }
    std::vector<std::string> texts() const
    {
        std::vector<std::string> out;
        for (const auto& r : rows) out.push_back(r.text);
        return out;
    }
    const Row& row(const std::string& text) const
    {
        for (const auto& r : rows)
            if (r.text == text) return r;
        static Row none{"", -1, -1};
        return none;
    }
    std::vector<Row> rows;
};

}  // namespace

class TransferEndToEnd : public DownloadTest, public ::testing::WithParamInterface<std::tuple<int, int>> {};

TEST_P(TransferEndToEnd, ReadsProcessesSavesAndClears)
{
    const auto [type, savetype] = GetParam();
    g().savetype = savetype;
    dock(type, {"--id", "123", "--battery", "85", "--records", records(type == 1 ? oplrecords() : csprecords())});
    ASSERT_EQ(held(6), 3);
    // A raw file left by an earlier download is replaced.
    if (type == 1) put("c:\\tarnbc\\temp_123.txt", "stale\r\n");
    reseticons();
    ActivityRecorder recorder;

    emit form1().Transfer.clicked();

    // The activity list, row by row as it was written.
    std::vector<std::string> expected = {"Reading Data From Scanner 123", "Scanner Belongs To : Fred Bloggs",
                                         "The Scanner Contains 3 Lines", "Data Download Complete", "Processing Data"};
    for (const auto& t : linetexts()) expected.push_back(t);
    expected.insert(expected.end(), {"1 Invalid/Test Line Has Been Ignored", "2 Valid Lines Available For Export",
                                     "Adding Entries to BAR001 File (New File)"});
    if (savetype == 0) expected.push_back("Entries Added To File On Local PC");
    if (savetype == 1) expected.insert(expected.end(), {"Entries Added To File On Server", "Data Ready For Transfer And Import To Tarn"});
    if (savetype == 2) expected.insert(expected.end(), {"Entries Added To Batch On PC", "Batch Must Be Sent To Tarn Server"});
    expected.push_back("Data Cleared From The Scanner");
    if (type != 1) expected.push_back("Please Remove Scanner");
    EXPECT_EQ(recorder.texts(), expected);
    // The clear after a save empties the list first, but not for the OPL 972x.
    if (type == 1) EXPECT_EQ(activity(), expected);
    else EXPECT_EQ(activity(), (std::vector<std::string>{"Data Cleared From The Scanner", "Please Remove Scanner"}));
    EXPECT_EQ(form1().List2.listindex(), form1().List2.listcount() - 1) << "the newest row is selected";

    // The flags: a transfer from the first row to the clear, idle at the end.
    EXPECT_EQ(recorder.row("Reading Data From Scanner 123").runmode, 1);
    EXPECT_EQ(recorder.row("Reading Data From Scanner 123").pressedop, 3);
    EXPECT_EQ(recorder.row("Data Cleared From The Scanner").runmode, 1);
    expectidle();
    EXPECT_EQ(g().deleteallowed, 1);
    EXPECT_TRUE(form9().Timer1.isActive()) << "the monitor's icon timer runs during a transfer";
    EXPECT_EQ(form9().Timer1.interval(), 1000);
    EXPECT_TRUE(form1().Transfer.isEnabled());
    EXPECT_EQ(form1().Transfer.picturelist(), "ColorIcons");
    EXPECT_EQ(form1().Label3.forecolor(), colorbox(13));
    EXPECT_EQ(Left(form1().Label3.caption(), 14), "ID: 123 Date: ");
    EXPECT_EQ(Right(form1().Label3.caption(), 6), "090307");

    // The files, byte for byte, where the save type puts them.
    const auto lines = goodlines();
    if (savetype == 1) {
        EXPECT_EQ(TempInstall::readfile(share + "/BAR001.007"), barbytes("123", "00220070309", lines));
        EXPECT_EQ(TempInstall::readfile(share + "/BARCODE.007"), masterbytes("001"));
        EXPECT_FALSE(has("c:\\tarnbc\\BAR001.INI"));
    } else {
        EXPECT_EQ(get("c:\\tarnbc\\BAR001.INI"), barbytes("123", "00220070309", lines));
        EXPECT_EQ(get("c:\\tarnbc\\BARCODE.INI"), masterbytes("001"));
        EXPECT_FALSE(has("\\\\127.0.0.1\\tagstore\\BAR001.007"));
    }
    EXPECT_EQ(datalog(), (std::vector<std::string>{"ENTRY: Scanner 000123 1405 20070309", "[000000123]",
                                                   "000=00220070309", "001=" + lines[0], "002=" + lines[1], "END"}));
    // The OPL 972x's lines land in the raw file, with a dated copy.
    if (type == 1) {
        const std::string raw = "0001123456780,090307,0830\r\n0002876543210,080307,1745\r\n0001990000010,090307,0900\r\n";
        EXPECT_EQ(get("c:\\tarnbc\\temp_123.txt"), raw);
        EXPECT_EQ(get("c:\\tarnbc\\backups\\temp_123_070309_1405.txt"), raw);
        EXPECT_TRUE(logged("Killing existing temp file c:\\tarnbc\\temp_123.txt"));
    } else {
        EXPECT_FALSE(has("c:\\tarnbc\\temp_123.txt"));
    }

    EXPECT_TRUE(logged("Reading: " + Left(form1().Label3.caption(), 14) + Right(form1().Label3.caption(), 11) +
                       " (Type:" + std::to_string(type) + ")"));
    EXPECT_TRUE(logged("Scanner From : Fred Bloggs"));
    EXPECT_TRUE(logged("Scanner Lines: 3"));
    EXPECT_TRUE(logged("Delete type 1 selected"));
    EXPECT_TRUE(logged("Data Cleared From The Scanner"));

    // Three lines fill every ball; the progress screen is gone again.
    EXPECT_EQ(form6().Image1[9].pictureindex(), 3);
    EXPECT_TRUE(form6().isHidden());
    EXPECT_TRUE(dialogs::transcript().empty()) << dialogs::describe(dialogs::transcript().front());

    EXPECT_EQ(stopped(6), 0) << "the scanner was cleared";
}

namespace {
std::string casename(const ::testing::TestParamInfo<std::tuple<int, int>>& info)
{
    static const char* const types[] = {"", "Opl", "Opn", "Cs1504"};
    return std::string(types[std::get<0>(info.param)]) + "Save" + std::to_string(std::get<1>(info.param));
}
}  // namespace

INSTANTIATE_TEST_SUITE_P(TypesAndSaveTypes, TransferEndToEnd,
                         ::testing::Combine(::testing::Values(1, 2, 3), ::testing::Values(0, 1, 2)), casename);

// The scanner data log screen: the day list, the three double clicks, and the restore of a
// logged download into a fresh BAR file of the set, with its refusals and its fault.
#include "delivery/setfiles.h"
#include "recovery/form26.h"
#include "support/form18.h"

namespace {

const std::string line1 = "0112345678200703051430", line2 = "0212345678200703051431";
const std::string line3 = "0112345678200703051500", line4 = "0112345678200703051501123";

// Day 5's data log: a download of scanner 123 (keys as a first save writes them) and one of
// scanner 456 appended to an earlier section (keys 004 on, header counting all five).
std::string dayfive()
{
    return "05/03/2007\r\nProgram Started : 0800 050307\r\n"
           "ENTRY: Scanner 000123 1430 20070305\r\n[000000123]\r\n000=00220070305\r\n001=" + line1 + "\r\n002=" + line2 +
           "\r\nEND\r\n"
           "ENTRY: Scanner 000456 1500 20070305\r\n[000000456]\r\n000=00520070305\r\n004=" + line3 + "\r\n005=" + line4 +
           "\r\nEND\r\n"
           "ENTRY: Scanner 000789 1600 20070305\r\n[000000789]\r\n000=00720070305\r\n007=" + line1 + "\r\nEND\r\n"
           "ENTRY: Scanner 000321 1700 20070305\r\n000000321]\r\n000=00120070305\r\n001=" + line1 + "\r\nEND\r\n";
}

}  // namespace

class DataLog : public StoreTest {
protected:
    void SetUp() override
    {
        StoreTest::SetUp();
        form26().restorecount = 0;
        form26().List1a.clear();
        g().savetype = 0;
    }
    void TearDown() override
    {
        form26().hide();
        form18().hide();
        StoreTest::TearDown();
    }
    void datalog(const std::string& name, const std::string& bytes) { put(g().homedir + "LOGS\\" + name + "_DAT.TXT", bytes); }

    // The screen set up, the day of `row` and the download starting `entry` chosen.
    void choose(int row, const std::string& entry)
    {
        Form26& f = form26();
        f.setupscreen();
        f.List1.setlistindex(row);
        f.list1dblclick();
        for (int i = 0; i < f.List2.listcount(); ++i)
            if (f.List2.list(i).rfind(entry, 0) == 0) {
                f.List2.setlistindex(i);
                f.list2dblclick();
                return;
            }
        FAIL() << "no download " << entry;
    }
    std::vector<std::string> titles() const
    {
        std::vector<std::string> out;
        for (const auto& e : dialogs::transcript()) out.push_back(e.title);
        return out;
    }
    std::string lastbox() const
    {
        const auto& t = dialogs::transcript();
        return t.empty() ? "" : t.back().title + ": " + t.back().text;
    }
};

TEST_F(DataLog, DaysAreListedOldestFirstAndOnlyWithADate)
{
    datalog("05", dayfive());
    datalog("28", "28/02/2007\r\nProgram Started : 0800 280207\r\n");
    datalog("12", "Program Started : 0800 120307\r\nENTRY: Scanner 000123 1430 20070312\r\n");
    datalog("13", "ab/cd/efgh\r\n");
    datalog("14", "");
    datalog("MON", "05/03/2007\r\n");
    Form26& f = form26();
    f.setupscreen();
    EXPECT_EQ(items(f.List1), (std::vector<std::string>{"28/02/2007   WED   (No data entries)",
                                                         "05/03/2007   MON   (4 data entries)"}));
    EXPECT_EQ(f.logcount, 2);
    EXPECT_EQ(f.logkeys[1], "20070228");
    EXPECT_EQ(items(f.List2), std::vector<std::string>{"please select day"});
    EXPECT_EQ(items(f.List3), std::vector<std::string>{"Please select from downloads"});
    EXPECT_EQ(f.List1a.listcount(), 0);
}

TEST_F(DataLog, DoubleClicksListDownloadsAndTheirLines)
{
    datalog("05", dayfive() + "ENTRY: Scanner 000123 1430 20070305\r\n003=" + line4 + "\r\nEND\r\n");
    datalog("28", "28/02/2007\r\n");
    Form26& f = form26();
    f.setupscreen();

    f.List1.setlistindex(0);
    f.list1dblclick();
    EXPECT_EQ(items(f.List2), std::vector<std::string>{"No data entries in this file"});
    EXPECT_EQ(items(f.List3), std::vector<std::string>{"Please select from downloads"});
    f.list2dblclick();
    EXPECT_EQ(items(f.List3), std::vector<std::string>{"No data lines found"}) << "not one of the exceptions";

    f.List1.setlistindex(1);
    emit f.List1.doubleclicked();
    ASSERT_EQ(f.List2.listcount(), 5);
    EXPECT_EQ(f.List2.list(0), "ENTRY: Scanner 000123 1430 20070305");
    // An ENTRY text met twice: both blocks are taken together.
    f.List2.setlistindex(0);
    emit f.List2.doubleclicked();
    EXPECT_EQ(items(f.List3), (std::vector<std::string>{"[000000123]", "000=00220070305", "001=" + line1,
                                                         "002=" + line2, "003=" + line4}));
    EXPECT_EQ(f.restorecount, 5);
    EXPECT_EQ(f.restorelines[5], "003=" + line4);

    // The day's file gone since it was listed.
    QFile::remove(QString::fromStdString(install.host(g().homedir + "LOGS\\05_DAT.TXT")));
    f.list1dblclick();
    EXPECT_EQ(items(f.List2), std::vector<std::string>{"No log file for this day"});
    f.list2dblclick();
    EXPECT_EQ(f.List3.listcount(), 0);
    EXPECT_EQ(f.restorecount, 5) << "kept until a download is read";
}

TEST_F(DataLog, WeekdayLeftoversListTheirOwnFile)
{
    datalog("05", dayfive());
    datalog("TUE", "06/02/2007\r\nENTRY: Scanner 000555 0900 20070206\r\n[000000555]\r\nEND\r\n");
    datalog("WED", "07/02/2007\r\n");
    Form26& f = form26();
    f.setupscreen();
    for (const char* day : {"MON", "TUE", "WED", "THU", "FRI", "SAT", "SUN"}) f.List1a.additem(day);
    const struct {
        int row;
        std::vector<std::string> list2;
    } table[] = {
        {1, {"ENTRY: Scanner 000555 0900 20070206"}},
        {2, {"No entries in this log file"}},
        {6, {"No log file for this day"}},
    };
    for (const auto& row : table) {
        f.List1a.setlistindex(row.row);
        emit f.List1a.doubleclicked();
        EXPECT_EQ(items(f.List2), row.list2) << row.row;
    }
    f.List1a.setlistindex(0);
    f.list1adblclick();
    EXPECT_EQ(f.List1.listindex(), 0) << "the day list follows the weekday row";
    // The two messages of the weekday list stop the download's double click.
    f.List2.setlistindex(0);
    f.list2dblclick();
    EXPECT_EQ(f.List3.listcount(), 0);
}

TEST_F(DataLog, RestoreWritesAFreshFileOfTheSetByteForByte)
{
    datalog("05", dayfive());
    const struct {
        const char* name;
        int savetype, storedown;
        std::string master, bar;
    } places[] = {
        {"local", 0, 0, localmaster, localbar(1)},
        {"batch", 2, 0, localmaster, localbar(1)},
        {"direct", 1, 0, storemaster, storebar(1)},
        {"email", 3, 1, storemaster, storebar(1)},
    };
    for (const auto& p : places) {
        SCOPED_TRACE(p.name);
        QFile::remove(QString::fromStdString(install.host(localbar(1))));
        QFile::remove(QString::fromStdString(install.host(storebar(1))));
        put(p.master, masterbytes("000"));
        g().savetype = p.savetype;
        g().storedown = p.storedown;
        // The second download was appended to keys 004 and 005: it comes back as 001 and 002
        // with a header counting two.
        choose(0, "ENTRY: Scanner 000456");
        dialogs::cleartranscript();
        dialogs::queueanswer(vbYes);
        emit form26().Label4[0].clicked();
        EXPECT_EQ(get(p.bar), barbytes("456", "00220070305", {line3, line4}));
        EXPECT_EQ(get(p.master), masterbytes("001"));
        EXPECT_EQ(titles(), (std::vector<std::string>{"Confirm Data Restore", "Operation Complete"}));
        EXPECT_EQ(dialogs::transcript()[0].text, "Are you sure that you wish to restore the selected data entries? The "
                                                 "risk is minimal as Tarn will identify duplicate lines!");
        EXPECT_EQ(lastbox(), "Operation Complete: Restore of data for scanner has been complete. The data may now be "
                             "loaded into Tarn.");
        EXPECT_EQ(items(form26().List3), std::vector<std::string>{"Please select from downloads"});
    }
}

TEST_F(DataLog, ThreeLinesKeepTheirLoggedHeaderAndTheSetGrowsAboveOtherScanners)
{
    datalog("05", dayfive());
    put(localmaster, masterbytes("002"));
    put(localbar(1), barof("111", 1));
    put(localbar(2), barof("222", 3));
    put(localbar(3), "left over from an earlier restore");
    choose(0, "ENTRY: Scanner 000789");
    ASSERT_EQ(form26().restorecount, 3);
    dialogs::queueanswer(vbYes);
    emit form26().List3.itemClicked(form26().List3.item(1));   // a click on a line restores, as the button does
    EXPECT_EQ(get(localbar(3)), barbytes("789", "00720070305", {line1}));
    EXPECT_EQ(get(localmaster), masterbytes("003"));
    EXPECT_EQ(get(localbar(1)), barof("111", 1));
}

TEST_F(DataLog, RefusalsWriteNothing)
{
    datalog("05", dayfive());
    put(localmaster, masterbytes("001"));
    put(localbar(1), barof("456", 2));
    const auto untouched = [&] {
        EXPECT_EQ(get(localmaster), masterbytes("001"));
        EXPECT_EQ(get(localbar(1)), barof("456", 2));
        EXPECT_FALSE(has(localbar(2)));
        EXPECT_FALSE(has(storebar(1)));
    };
    Form26& f = form26();

    f.dodatarestore();
    EXPECT_EQ(lastbox(), "Insufficent Lines In Data: There are insufficent lines of data, this would indicate there were "
                         "no scans present in that log or a problem with the logged data. Please refer to Vexal Support!");

    const struct {
        const char* entry;
        int savetype, storedown, answer;
        std::string box;
        int flags;
    } table[] = {
        {"ENTRY: Scanner 000123", 0, 0, vbNo, "Confirm Data Restore", vbYesNo + vbQuestion},
        {"ENTRY: Scanner 000456", 0, 0, vbYes,
         "Outstanding Scanner Data: There is currently data outstanding for scanner 456. This most be loaded into Tarn "
         "before data recovery can be done.",
         vbInformation},
        {"ENTRY: Scanner 000123", 1, 1, vbYes,
         "Data Store Unavailable: The data store is currently unavailable! Data restore is only possible when the store "
         "location is available!",
         vbCritical},
        {"ENTRY: Scanner 000321", 0, 0, vbYes,
         "Invalid Data Format: The first line of the data to be restored does not seem to contain a valid scanner ID, "
         "restoration is not possible. Please contact Vexal for assistance!",
         vbExclamation},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(row.box);
        g().savetype = row.savetype;
        g().storedown = row.storedown;
        choose(0, row.entry);
        dialogs::cleartranscript();
        dialogs::queueanswer(row.answer);
        f.dodatarestore();
        EXPECT_EQ(row.box.find(':') == std::string::npos ? dialogs::transcript().back().title : lastbox(), row.box);
        EXPECT_EQ(dialogs::transcript().back().flags, row.flags);
        untouched();
    }

    // A count left from an earlier download, with nothing of it on the screen.
    g().savetype = 0;
    choose(0, "ENTRY: Scanner 000123");
    f.List3.clear();
    f.List3.additem("Please select from downloads");
    f.dodatarestore();
    EXPECT_EQ(lastbox(), "Please select download to be restored: No download has been selected!");
    f.List3.clear();
    f.List3.additem("No data lines found");
    f.dodatarestore();
    EXPECT_EQ(lastbox(), "No Data Lines: There are no data lines to restore!");
    untouched();
}

TEST_F(DataLog, MasterFileFaultsAndAFailedWriteLeaveTheSetAsItWas)
{
    datalog("05", dayfive());
    const std::string fault13 = "Error While Restoring Data: An unexpected error had occured while attempting to restore "
                                "the data file! Error : 13 Type mismatch";
    Form26& f = form26();
    for (const std::string master : {"[FILES]\r\nFILES=\r\n", "[FILES]\r\nFILES=abc\r\n"}) {
        put(localmaster, master);
        choose(0, "ENTRY: Scanner 000123");
        dialogs::queueanswer(vbYes);
        f.dodatarestore();
        EXPECT_EQ(lastbox(), fault13);
        EXPECT_EQ(get(localmaster), master);
        EXPECT_FALSE(has(localbar(1)));
    }
    EXPECT_TRUE(logged("dodatarestore: Unexpected error. Error : 13 Type mismatch"));

    // The disk fills after the section and header: those stay, outside the set.
    put(localmaster, masterbytes("000"));
    choose(0, "ENTRY: Scanner 000123");
    dialogs::queueanswer(vbYes);
    files::inject::failwriteafter(1);
    f.dodatarestore();
    files::inject::reset();
    EXPECT_EQ(lastbox(), "Error While Restoring Data: An unexpected error had occured while attempting to restore the "
                         "data file! Error : 61 Disk full");
    EXPECT_EQ(get(localmaster), masterbytes("000"));
    EXPECT_EQ(get(localbar(1)), "[000000123]\r\n000=00220070305\r\n");
}

TEST_F(DataLog, ADownloadTooLongToHoldIsNotOfferedInPart)
{
    std::string block = "05/03/2007\r\nENTRY: Scanner 000123 1430 20070305\r\n[000000123]\r\n000=99920070305\r\n";
    for (int i = 1; i <= 999; ++i) block += Format(i, "000") + "=" + line1 + "\r\n";
    datalog("05", block + "END\r\n");
    put(localmaster, masterbytes("000"));
    choose(0, "ENTRY: Scanner 000123");
    EXPECT_EQ(lastbox(), "Error While Restoring Data: An unexpected error had occured while attempting to restore the "
                         "data file! Error : 9 Subscript out of range");
    EXPECT_EQ(form26().restorecount, 0);
    EXPECT_EQ(items(form26().List3), std::vector<std::string>{"Please select from downloads"});
    form26().dodatarestore();
    EXPECT_EQ(dialogs::transcript().back().title, "Insufficent Lines In Data");
    EXPECT_FALSE(has(localbar(1)));
}

TEST_F(DataLog, LeavingShowsTheHelpMenu)
{
    Form26& f = form26();
    f.show();
    emit f.Label4[1].clicked();
    EXPECT_TRUE(f.isHidden());
    EXPECT_TRUE(form18().isVisible());
    form18().hide();
    f.show();
    f.close();
    EXPECT_TRUE(f.isHidden());
    EXPECT_TRUE(form18().isVisible());
}

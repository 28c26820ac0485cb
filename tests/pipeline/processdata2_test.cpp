// processdata2: outlines rebuilt from the repair table after a repair.
#include "pipelinefixture.h"

#include "pipeline/processdata.h"

namespace {

class ProcessData2 : public PipelineTest {
protected:
    // reviewlines[1..] and scanlines[1..] as given, then the run in `runmode`.
    void run(const std::vector<std::string>& review, const std::vector<std::string>& raw, int runmode = 1)
    {
        for (size_t i = 0; i < review.size(); ++i) g().reviewlines[(long)i + 1] = review[i];
        for (size_t i = 0; i < raw.size(); ++i) g().scanlines[(long)i + 1] = raw[i];
        g().scancount = (long)review.size();
        g().runmode = runmode;
        processdata2();
    }
};

TEST_F(ProcessData2, CopiesTheRepairTableAndShowsEachLineAtFixedPlaces)
{
    run({"0112345678200703121430", "Invalid Line (x)", "", "0212345678 456 200703121432", "0199345678200703121431"},
        {"0001123456780,120307,1430", "x", "", "10212345678456,120307,1432", "0001993456780,120307,1431"});
    EXPECT_EQ(items(form1().List2),
              (std::vector<std::string>{"Processing Ammended Data", "01 12 345678 At 14:30 12-Mar-07", "Invalid Line (x)",
                                        "   At : --", "02 12 345678 At 70:31 00-Feb-56",
                                        "01 99 345678 At 14:31 12-Mar-07", "1 Invalid/Test Line Has Been Ignored",
                                        "4 Valid Lines Available For Export"}));
    // The empty entry is no invalid line: it is copied, empty. The long line keeps its
    // two blanks, 27 characters. The plain line with "99" at 5-6 is not found as a test.
    EXPECT_EQ(g().outcount, 4);
    EXPECT_EQ(g().outlines[2], "");
    EXPECT_EQ(g().outlines[3], "0212345678 456 200703121432");
    EXPECT_EQ(g().outlines[4], "0199345678200703121431");
    EXPECT_EQ(g().badcount, 1);
    // Here the count of ignored lines is logged too.
    EXPECT_EQ(loglines(), (std::vector<std::string>(items(form1().List2))));
}

TEST_F(ProcessData2, TestLinesAreFoundOnTheRawLineAtThreeAndFour)
{
    const std::string record = std::string("\x11\x01") + "001993456789" + "\x15\xE7\x64\xC8";
    run({"0112345678200703121430", "0199345678200803251430", "0212345678 456 200703121432"},
        {"0099123456780,120307,1430", record, "10991234567456,251207,0905"});
    EXPECT_EQ(items(form1().List2),
              (std::vector<std::string>{"Processing Ammended Data", "01 12 345678 At 14:30 12-Mar-07 TEST",
                                        "01 99 345678 At 14:30 25-Mar-08",
                                        "02 12 345678 At 70:31 00-Feb-56 TEST",
                                        "2 Invalid/Test Lines Have Been Ignored",
                                        "1 Valid Line Available For Export"}));
    EXPECT_EQ(g().outlines[1], "0199345678200803251430") << "a record is looked at in barcode 1-2";
}

TEST_F(ProcessData2, TheEntryOverwrittenByTheOffByOneCountsOnceInPlaceOfTheLineBefore)
{
    // As the repair table stands after valid, bad length, valid.
    run({"Invalid Line (0001123456780,120307,143)", "", "0212345678 456 200703121432"},
        {"0001123456780,120307,1430", "0001123456780,120307,143", "10212345678456,120307,1432"});
    EXPECT_EQ(g().badcount, 1);
    EXPECT_EQ(g().outcount, 2);
    EXPECT_EQ(g().outlines[1], "");
}

TEST_F(ProcessData2, RunmodeAndTheSummary)
{
    run({"Invalid Line (x)"}, {"x"}, 2);
    EXPECT_EQ(items(form1().List2).back(), "None of the entries are valid!");
    EXPECT_EQ(g().runmode, 0);
    run({"0112345678200703121430"}, {"0001123456780,120307,1430"}, 1);
    EXPECT_EQ(g().runmode, 1);
    EXPECT_EQ(g().badcount, 0) << "each run counts from 0";
}

TEST_F(ProcessData2, AnIndexPastTheTableReachesTheHandler)
{
    g().runmode = 2;
    g().pressedop = 3;
    g().scancount = 1001;
    processdata2();
    ASSERT_EQ(dialogs::transcript().size(), 1u);
    const auto& box = dialogs::transcript()[0];
    EXPECT_EQ(box.title, "Error While Processing Revised Data");
    EXPECT_EQ(box.text, "An unexpected error had occured while attempting to process the revised data from the "
                        "scanner! Error : 9 Subscript out of range");
    EXPECT_EQ(loglines().back(), "processdata2: Unexpected error. Error : 9 Subscript out of range");
    EXPECT_EQ(g().outcount, 1000);
    EXPECT_EQ(g().runmode, 0);
    EXPECT_EQ(g().pressedop, 0);
}

}  // namespace

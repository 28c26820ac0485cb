#include "delivery/listfiles.h"
#include "recovery/form28.h"
#include "settings/form17.h"
#include "settings/form2.h"
#include "setfiles.h"

class ListFiles : public StoreTest {
protected:
    void SetUp() override
    {
        StoreTest::SetUp();
        form28().hide();
        form1().show();
    }
    void TearDown() override
    {
        form28().hide();
        form1().hide();
        StoreTest::TearDown();
    }
    std::vector<std::string> rows() const { return items(form1().List1); }
};

TEST_F(ListFiles, RowsOfTheLocalSet)
{
    g().savetype = 0;
    put(localmaster, masterbytes("003"));
    put(localbar(1), "[000000123\r\n000=00120070309\r\n001=0112345678200703091430\r\n");   // no closing bracket
    put(localbar(2), barof("456", 12));
    put(localbar(3), barbytes("789", "00020070309", {}));
    form1().List1.additem("stale row");
    listfiles();
    EXPECT_EQ(rows(), (std::vector<std::string>{"BAR001   Scanner 123   001 Line", "BAR002   Scanner 456   012 Lines",
                                                "BAR003   Scanner 789   000 Lines"}));
    EXPECT_EQ(form1().List1.listindex(), 2) << "the newest row is selected";
    EXPECT_TRUE(dialogs::transcript().empty());
}

TEST_F(ListFiles, EmptySetsByMode)
{
    struct Row {
        int savetype, storedown;
        std::vector<std::string> rows;
    } table[] = {
        {0, 0, {"No Outstanding Data"}},
        {2, 0, {"Batched Files Currently On PC:", "No Outstanding Batched Data"}},
        {1, 1, {"Store Location Unavailable!", "Checking For Temporary Files:", "No Outstanding Temporary Data"}},
        {1, 0, {"No Outstanding Data"}},
    };
    for (const auto& r : table) {
        SCOPED_TRACE(testing::Message() << r.savetype << " " << r.storedown);
        g().savetype = r.savetype;
        g().storedown = r.storedown;
        listfiles();
        EXPECT_EQ(rows(), r.rows);
    }
}

TEST_F(ListFiles, ExportsWaitingToBeMailed)
{
    g().savetype = 3;
    listfiles();
    EXPECT_EQ(rows(), std::vector<std::string>{"No Files Waiting To Be Emailed."});
    EXPECT_FALSE(has(storemaster)) << "the master file is not looked at in Email mode";

    files::makefolder("c:\\tarnbc\\exports");
    put("c:\\tarnbc\\exports\\export_123_2007391457.txt", "x");
    put("c:\\tarnbc\\exports\\export_045_200731000.txt", "y");
    listfiles();
    EXPECT_EQ(rows(), (std::vector<std::string>{"File(s) Waiting To Be Emailed:", "export_045_200731000.txt",
                                                "export_123_2007391457.txt"}));
}

TEST_F(ListFiles, ServerRowsThenLocalFilesHeldBack)
{
    g().savetype = 1;
    g().storedown = 0;
    put(storemaster, masterbytes("001"));
    put(storebar(1), barof("123", 2));
    put(localmaster, masterbytes("002"));
    put(localbar(1), barof("456", 1));
    put(localbar(2), barof("789", 1));
    listfiles();
    EXPECT_EQ(rows(), (std::vector<std::string>{"BAR001   Scanner 123   002 Lines", "There are 2 outstanding local files",
                                                "Double click here to transfer."}));

    put(localmaster, masterbytes("001"));
    files::removefile(localbar(2));
    listfiles();
    EXPECT_EQ(rows(), (std::vector<std::string>{"BAR001   Scanner 123   002 Lines", "There is 1 outstanding local file",
                                                "Double click here to transfer."}));
}

TEST_F(ListFiles, GarbageMasterIsRecreated)
{
    g().savetype = 0;
    put(localmaster, "\x7f\x45LF garbage\r\n\r\n");
    listfiles();
    EXPECT_EQ(rows(), std::vector<std::string>{"No Outstanding Data"});
    EXPECT_EQ(get(localmaster), masterbytes("000"));
    EXPECT_TRUE(logged("checkbarcodeini: Corrupt Main BARCODE.INI File - Recreated"));
}

TEST_F(ListFiles, RogueFilesOnTheServer)
{
    g().savetype = 1;
    g().storedown = 0;
    g().chkrogue = "1";
    put(storemaster, masterbytes("002"));
    put(storebar(1), barof("123", 1));
    put(storebar(2), barof("456", 1));
    put(storebar(21), barof("999", 1));
    listfiles();
    EXPECT_TRUE(boxes("Rogue Data Files").empty()) << "number 21 is beyond the look-up";

    put(storebar(3), barof("789", 4));
    dialogs::queueanswer(vbNo);
    listfiles();
    auto shown = boxes("Rogue Data Files");
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, "There appear to be 'rogue' data files on the server that may or may not have been processed "
                             "into Tarn. Would you like to open the maintance screen to try and fix this?");
    EXPECT_EQ(shown[0].flags, vbYesNo + vbQuestion);
    EXPECT_FALSE(form28().isVisible());
    EXPECT_EQ(rows().size(), 2u);

    g().chkrogue = "0";
    listfiles();
    EXPECT_EQ(boxes("Rogue Data Files").size(), 1u) << "nothing is looked at";

    g().chkrogue = "1";
    dialogs::queueanswer(vbYes);
    listfiles();
    EXPECT_TRUE(form28().isVisible());
    EXPECT_FALSE(form1().isVisible());
    EXPECT_EQ(items(form28().List2), std::vector<std::string>{"BAR003    Scanner 789     004 Lines  Processed 09/03/2007"});
}

TEST_F(ListFiles, RoguesAreLookedForOnlyInDirectModeWithTheStoreUp)
{
    g().chkrogue = "1";
    put(storebar(1), barof("123", 1));
    for (int savetype : {0, 2, 3}) {
        g().savetype = savetype;
        listfiles();
    }
    g().savetype = 1;
    g().storedown = 1;
    listfiles();
    EXPECT_TRUE(boxes("Rogue Data Files").empty());
}

TEST_F(ListFiles, UnreadableFirstLineSendsTheListToTheErrorRow)
{
    g().savetype = 0;
    put(localmaster, masterbytes("002"));
    put(localbar(1), barof("123", 1));
    put(localbar(2), "");
    dialogs::queueanswer(vbNo);
    listfiles();
    EXPECT_EQ(rows(), (std::vector<std::string>{"BAR001   Scanner 123   001 Line", "Error processing file list At Line 5!"}));
    EXPECT_TRUE(logged("listfiles: Unexpected error. Error: 62 Input past end of file At Line 5"));
    auto shown = boxes("Error In File List At Line 5");
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, "There was any error processing the file list. This normally occurs when there is a faulty "
                             "scanner ID in one of the files. Would you like to open the maintance screen to try and fix "
                             "this?");
    EXPECT_EQ(shown[0].flags, vbYesNo + vbQuestion);

    dialogs::queueanswer(vbYes);
    listfiles();
    EXPECT_TRUE(form28().isVisible()) << "the editor opens although a file cannot be read";
    EXPECT_EQ(items(form28().List1), (std::vector<std::string>{"BAR001    Scanner 123     001 Line", "Error processing file list!"}));
}

TEST_F(ListFiles, UnreachableStoreEndsAtTheRead)
{
    g().savetype = 1;
    g().storedown = 0;
    files::inject::vanishshare("\\\\127.0.0.1\\tagstore");
    dialogs::queueanswer(vbOK);
    dialogs::queueanswer(vbNo);
    listfiles();
    EXPECT_EQ(boxes("Error While Checking File").size(), 1u);
    EXPECT_EQ(rows(), std::vector<std::string>{"Error processing file list At Line 4!"});
    EXPECT_TRUE(logged("listfiles: Unexpected error. Error: 13 Type mismatch At Line 4"));
}

TEST_F(ListFiles, SystemCheckScreenReturnsByItsCaller)
{
    g().savetype = 0;
    g().pressedop = 1;
    g().callerof[17] = 1;
    form1().hide();
    form17().show();
    form17().closescreen();
    EXPECT_FALSE(form17().isVisible());
    EXPECT_TRUE(form1().isVisible());
    EXPECT_EQ(g().pressedop, 0);
    EXPECT_EQ(rows(), std::vector<std::string>{"No Outstanding Data"});

    g().callerof[17] = 2;
    form17().show();
    form17().closescreen();
    EXPECT_TRUE(form2().isVisible());
    form2().hide();
}

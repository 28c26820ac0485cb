#include "recovery/form28.h"
#include "delivery/setfiles.h"

class FileEditor : public StoreTest {
protected:
    void SetUp() override
    {
        StoreTest::SetUp();
        form28().List1.clear();
        form28().List2.clear();
    }
    void TearDown() override
    {
        form28().hide();
        form1().hide();
        StoreTest::TearDown();
    }
    // Direct mode with the store up and rogue files looked for.
    void direct()
    {
        g().savetype = 1;
        g().storedown = 0;
        g().chkrogue = "1";
    }
    std::vector<std::string> left() const { return items(form28().List1); }
    std::vector<std::string> right() const { return items(form28().List2); }
    void pick(ListBox& list, const std::string& start)
    {
        for (int i = 0; i < list.listcount(); ++i)
            if (Left(list.list(i), (long)start.size()) == start) return list.setlistindex(i);
        FAIL() << "no entry " << start;
    }
    // A local set of the one file BAR001 with these bytes, listed, its row picked.
    void pickone(const std::string& bytes)
    {
        g().savetype = 0;
        put(localmaster, masterbytes("001"));
        put(localbar(1), bytes);
        form28().listerrorfiles();
        pick(form28().List1, "BAR001");
    }
};

TEST_F(FileEditor, EntriesOfTheSetAndTheRogueFiles)
{
    direct();
    put(storemaster, masterbytes("003"));
    put(storebar(1), barof("123", 1));
    put(storebar(2), barof("456", 12));
    put(storebar(3), barbytes("4567", "00220070309", {"0112345678200703091430", "0112345678200703091431"}));
    put(storebar(5), barof("321", 1, "20070228"));
    put(storebar(7), barof("654", 3, "20061231"));
    put(storebar(8), "[0000007\r\n000=00120070309\r\n");
    put(storebar(21), barof("999", 1));
    put(localmaster, masterbytes("002"));
    put(localbar(1), barof("777", 1));
    put(localbar(2), barof("888", 1));
    form28().listerrorfiles();
    EXPECT_EQ(left(), (std::vector<std::string>{"BAR001    Scanner 123     001 Line", "BAR002    Scanner 456     012 Lines",
                                                "BAR003    Scanner 4567   002 Lines  *ID ERROR*",
                                                "There are 2 outstanding local files"}));
    EXPECT_EQ(right(), (std::vector<std::string>{"BAR005    Scanner 321     001 Line   Processed 28/02/2007",
                                                 "BAR007    Scanner 654     003 Lines  Processed 31/12/2006",
                                                 "BAR008    Scanner 7   \\\\1 Lines  *ID ERROR*"}))
        << "a section that is not found shows the start of the file's path as its count";
}

TEST_F(FileEditor, ModesAndEmptySets)
{
    put(storebar(1), barof("123", 1));
    struct Row {
        int savetype, storedown, chkrogue;
        std::vector<std::string> left;
        size_t rogues;
    } table[] = {
        {0, 0, 1, {"No Outstanding Data"}, 0},
        {2, 0, 1, {"Batched Files Currently On PC:", "No Outstanding Batched Data"}, 1},
        {1, 1, 1, {"Store Location Unavailable!", "Checking For Temporary Files:", "No Outstanding Temporary Data"}, 0},
        {1, 0, 0, {"No Outstanding Data"}, 0},
        {1, 0, 1, {"No Outstanding Data"}, 1},
    };
    for (const auto& r : table) {
        SCOPED_TRACE(testing::Message() << r.savetype << " " << r.storedown << " " << r.chkrogue);
        g().savetype = r.savetype;
        g().storedown = r.storedown;
        g().storestate = r.storedown ? 3 : 0;
        g().chkrogue = r.chkrogue ? "1" : "0";
        form28().listerrorfiles();
        EXPECT_EQ(left(), r.left);
        EXPECT_EQ(right().size(), r.rogues);
    }
}

TEST_F(FileEditor, NewIdMendsAFileWithoutItsBracket)
{
    pickone("[000000123\r\n000=00220070309\r\n001=0112345678200703091430\r\n002=0212345678200703091431456\r\n");
    EXPECT_EQ(left(), std::vector<std::string>{"BAR001    Scanner 123   c:\\ Lines  *ID ERROR*"});
    dialogs::queueinput("7");
    form28().list1dblclick();
    EXPECT_EQ(get(localbar(1)),
              "[000000007]\r\n000=00220070309\r\n001=0112345678200703091430\r\n002=0212345678200703091431456\r\n");
    auto shown = boxes("Fitter ID");
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].kind, "InputBox");
    EXPECT_EQ(shown[0].text, "Please enter the new ID for this file (you do not need to include leading zeros)");
    EXPECT_EQ(left(), std::vector<std::string>{"BAR001    Scanner 007     002 Lines"});
}

TEST_F(FileEditor, NewIdInTheStoreAndCancel)
{
    direct();
    put(storemaster, masterbytes("001"));
    const std::string bytes = barof("12", 2);
    put(storebar(1), bytes);
    form28().listerrorfiles();
    pick(form28().List1, "BAR001");
    dialogs::queueinput("");
    form28().list1dblclick();
    EXPECT_EQ(get(storebar(1)), bytes) << "an empty answer changes nothing";

    dialogs::queueinput("0456");
    form28().list1dblclick();
    EXPECT_EQ(Left(get(storebar(1)), 13), "[000000456]\r\n");
    EXPECT_EQ(get(storebar(1)).substr(13), bytes.substr(12)) << "the keys stay";
}

TEST_F(FileEditor, TooLongAFileOrAFailedRewriteLeavesTheFileAsItWas)
{
    const std::string bytes = barof("123", 499);   // 501 lines with the section and key 000
    pickone(bytes);
    dialogs::queueinput("5");
    try {
        form28().list1dblclick();
        ADD_FAILURE() << "no fault";
    } catch (const Fault& f) {
        EXPECT_EQ(f.number, 9);
    }
    EXPECT_EQ(get(localbar(1)), bytes);

    // Through the list's double click the fault becomes the runtime's error box.
    dialogs::queueinput("5");
    emit form28().List1.doubleclicked();
    auto shown = boxes("VEXAL Scanner Interface");
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, "Run-time error '9':\r\n\r\nSubscript out of range");
    EXPECT_EQ(get(localbar(1)), bytes);

    put(localbar(1), barof("123", 498));
    dialogs::queueinput("5");
    form28().list1dblclick();
    EXPECT_EQ(Left(get(localbar(1)), 11), "[000000005]") << "500 lines still fit";

    const std::string three = barof("123", 3);
    pickone(three);
    dialogs::queueinput("9");
    files::inject::failwriteafter(2);
    EXPECT_THROW(form28().list1dblclick(), Fault);
    EXPECT_EQ(get(localbar(1)), three) << "the old file is put back";
}

TEST_F(FileEditor, RogueFileTakenIntoTheSet)
{
    direct();
    put(storemaster, masterbytes("002"));
    put(storebar(1), barof("111", 1));
    put(storebar(2), barof("222", 1));
    const std::string rogue = barof("555", 4);
    put(storebar(5), rogue);
    form28().listerrorfiles();
    pick(form28().List2, "BAR005");
    dialogs::queueanswer(vbYes);
    form28().list2dblclick();

    auto shown = boxes("Add File To Outstanding List");
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, "PLEASE READ CAREFULLY: In order to add the rogue file 'BAR005' to the current file list for "
                             "processing in Tarn click 'YES', to delete this file click 'NO', to leave this file for later "
                             "click 'CANCEL'.");
    EXPECT_EQ(shown[0].flags, vbYesNoCancel + vbQuestion);
    EXPECT_EQ(get(storemaster), masterbytes("003"));
    EXPECT_EQ(get(storebar(3)), rogue);
    EXPECT_FALSE(has(storebar(5)));
    EXPECT_EQ(left().back(), "BAR003    Scanner 555     004 Lines");
    EXPECT_TRUE(right().empty());
}

TEST_F(FileEditor, RogueWithTheNextNumberIsOnlyCounted)
{
    direct();
    put(storemaster, masterbytes("001"));
    put(storebar(1), barof("111", 1));
    const std::string rogue = barof("222", 2);
    put(storebar(2), rogue);
    form28().listerrorfiles();
    pick(form28().List2, "BAR002");
    dialogs::queueanswer(vbYes);
    form28().list2dblclick();
    EXPECT_EQ(get(storemaster), masterbytes("002"));
    EXPECT_EQ(get(storebar(2)), rogue);
    EXPECT_FALSE(has("\\\\127.0.0.1\\tagstore\\TMP001.007"));
}

TEST_F(FileEditor, RogueFileDeletedOnlyWhenConfirmed)
{
    direct();
    put(storemaster, masterbytes("000"));
    put(storebar(4), barof("444", 1));
    form28().listerrorfiles();

    pick(form28().List2, "BAR004");
    dialogs::queueanswer(vbCancel);
    form28().list2dblclick();
    EXPECT_TRUE(has(storebar(4)));
    EXPECT_TRUE(boxes("Confirm Deletion").empty());

    dialogs::queueanswer(vbNo);
    dialogs::queueanswer(vbNo);
    form28().list2dblclick();
    EXPECT_TRUE(has(storebar(4)));
    auto shown = boxes("Confirm Deletion");
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, "Are you sure that you want to delete the file 'BAR004'?");
    EXPECT_EQ(shown[0].flags, vbYesNo + vbDefaultButton2);

    dialogs::queueanswer(vbNo);
    dialogs::queueanswer(vbYes);
    form28().list2dblclick();
    EXPECT_FALSE(has(storebar(4)));
    EXPECT_TRUE(right().empty());
    EXPECT_EQ(get(storemaster), masterbytes("000"));
}

TEST_F(FileEditor, UnreadableFileStillOpensTheScreen)
{
    g().savetype = 0;
    put(localmaster, masterbytes("002"));
    put(localbar(1), "");
    put(localbar(2), barof("222", 1));
    showfileeditor();
    EXPECT_TRUE(form28().isVisible());
    EXPECT_FALSE(form1().isVisible());
    EXPECT_EQ(left(), std::vector<std::string>{"Error processing file list!"});
    EXPECT_TRUE(logged("listerrorfiles: Unexpected error. Error: 62 Input past end of file"));
}

TEST_F(FileEditor, FinishedReturnsToTheMainScreen)
{
    g().savetype = 0;
    showfileeditor();
    form1().List1.clear();
    form28().finished();
    EXPECT_FALSE(form28().isVisible());
    EXPECT_TRUE(form1().isVisible());
    EXPECT_EQ(items(form1().List1), std::vector<std::string>{"No Outstanding Data"});
}

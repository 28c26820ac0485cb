#include "delivery/checkbarcodeini.h"
#include "setfiles.h"

using CheckBarcodeIni = StoreTest;

TEST_F(CheckBarcodeIni, MissingMasterIsRecreatedEmpty)
{
    g().savetype = 0;
    checkbarcodeini(0);
    EXPECT_EQ(get(localmaster), masterbytes("000"));
    checkbarcodeini(0);
    EXPECT_EQ(loglines(), std::vector<std::string>{"checkbarcodeini: Missing Main BARCODE.INI File - Recreated"})
        << "a sound empty master needs nothing";

    g().savetype = 1;
    checkbarcodeini(3);
    EXPECT_EQ(TempInstall::readfile(share + "/BARCODE.007"), masterbytes("000"));
    EXPECT_TRUE(logged("checkbarcodeini: Missing Temp BARCODE.INI File - Recreated"));
}

TEST_F(CheckBarcodeIni, CorruptMasterFiles)
{
    struct Row {
        const char* legend;
        const char* bytes;
        const char* count;
    } rows[] = {
        {"section line lost", "FILES=004\r\n", "004"},
        {"section line lost, LF ends", "FILES=012\n", "012"},
        {"garbage", "\x01\x02 this is not a master file\r\nnor this\r\n", "000"},
        {"section only", "[FILES]\r\n", "000"},
        {"blank second line", "[FILES]\r\n\r\nFILES=003\r\n", "000"},
        {"lower-case key", "[FILES]\r\nfiles=002\r\n", "000"},
        {"empty file", "", "000"},
    };
    g().savetype = 2;
    for (const auto& r : rows) {
        SCOPED_TRACE(r.legend);
        put(localmaster, r.bytes);
        checkbarcodeini(1);
        EXPECT_EQ(get(localmaster), masterbytes(r.count));
    }
    EXPECT_EQ(logcount("checkbarcodeini: Corrupt Temp BARCODE.INI File - Recreated"), 7);
}

TEST_F(CheckBarcodeIni, RecreatingDoesNotCheckTheFilesInTheSameCall)
{
    g().savetype = 0;
    put(localmaster, "FILES=003\r\n");
    put(localbar(2), barbytes("123", "00120070309", {"0112345678200703091430"}));
    checkbarcodeini(0);
    EXPECT_EQ(get(localmaster), masterbytes("003"));
    EXPECT_TRUE(has(localbar(2)));
    checkbarcodeini(0);
    EXPECT_EQ(get(localmaster), masterbytes("001")) << "the next call closes the gaps";
    EXPECT_EQ(get(localbar(1)), barbytes("123", "00120070309", {"0112345678200703091430"}));
}

TEST_F(CheckBarcodeIni, GapsAreClosedThroughTemporaryFiles)
{
    g().savetype = 0;
    const std::string one = barbytes("111", "00120070309", {"0111111111200703091430"});
    const std::string three = barbytes("333", "00220070309", {"0133333333200703091430", "0233333333200703091431456"});
    put(localmaster, masterbytes("003"));
    put(localbar(1), one);
    put(localbar(3), three);
    checkbarcodeini(0);
    EXPECT_EQ(get(localmaster), masterbytes("002"));
    EXPECT_EQ(get(localbar(1)), one);
    EXPECT_EQ(get(localbar(2)), three);
    EXPECT_FALSE(has(localbar(3)));
    EXPECT_FALSE(has("c:\\tarnbc\\TMP001.INI"));
    EXPECT_FALSE(has("c:\\tarnbc\\TMP002.INI"));
    EXPECT_EQ(loglines(), std::vector<std::string>{"checkbarcodeini: Missing Main File(s) From Folder - Fixed"});
}

TEST_F(CheckBarcodeIni, GapsInTheStoreFolderAndAllFilesGone)
{
    g().savetype = 0;   // which 3 works on the store whatever the mode
    const std::string five = barbytes("555", "00120070309", {"0155555555200703091430"});
    put(storemaster, masterbytes("005"));
    put(storebar(5), five);
    checkbarcodeini(3);
    EXPECT_EQ(get(storemaster), masterbytes("001"));
    EXPECT_EQ(get(storebar(1)), five);
    EXPECT_FALSE(has(storebar(5)));
    EXPECT_TRUE(logged("checkbarcodeini: Missing Temp File(s) From Folder - Fixed"));

    put(storemaster, masterbytes("002"));
    files::removefile(storebar(1));
    checkbarcodeini(3);
    EXPECT_EQ(get(storemaster), masterbytes("000")) << "nothing left";
}

TEST_F(CheckBarcodeIni, WhichSetByModeAndStoreState)
{
    struct Row {
        int savetype, storestate, which;
        bool store;
    } rows[] = {
        {0, 0, 0, false}, {2, 0, 0, false}, {1, 0, 0, true}, {1, 5, 0, false},
        {3, 0, 0, true},  {1, 0, 1, false}, {0, 0, 3, true},  {1, 3, 3, true},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(testing::Message() << r.savetype << " " << r.storestate << " " << r.which);
        for (const char* all : {"c:\\tarnbc\\*.*", "\\\\127.0.0.1\\tagstore\\*.*"}) {
            try {
                files::removefile(all);
            } catch (const Fault&) {   // nothing there
            }
        }
        g().savetype = r.savetype;
        g().storestate = r.storestate;
        g().storedown = 0;
        checkbarcodeini((int16_t)r.which);
        EXPECT_EQ(has(storemaster), r.store);
        EXPECT_EQ(has(localmaster), !r.store);
    }
}

TEST_F(CheckBarcodeIni, CountThatIsNotANumberIsReported)
{
    g().savetype = 0;
    put(localmaster, "[FILES]\r\nFILES=abc\r\n");
    checkbarcodeini(0);
    auto shown = boxes("Error While Checking File");
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text,
              "An unexpected error had occured while attempting to check the BARCODE.INI file! Error : 13 Type mismatch");
    EXPECT_EQ(shown[0].flags, vbExclamation);
    EXPECT_EQ(loglines(), std::vector<std::string>{"checkbarcodeini: Unexpected error. Error: 13 Type mismatch"});
    EXPECT_EQ(get(localmaster), "[FILES]\r\nFILES=abc\r\n");
}

TEST_F(CheckBarcodeIni, FailureWhileRenumberingLosesNoFile)
{
    g().savetype = 1;
    g().storestate = 0;
    const std::string two = barbytes("222", "00120070309", {"0122222222200703091430"});
    const std::string three = barbytes("333", "00120070309", {"0133333333200703091430"});
    put(storemaster, masterbytes("003"));
    put(storebar(2), two);
    put(storebar(3), three);
    files::inject::failwriteafter(1);   // the second copy fills the disk
    checkbarcodeini(0);
    ASSERT_EQ(boxes("Error While Checking File").size(), 1u);
    EXPECT_EQ(boxes("Error While Checking File")[0].text,
              "An unexpected error had occured while attempting to check the BARCODE.INI file! Error : 61 Disk full");
    EXPECT_EQ(get("\\\\127.0.0.1\\tagstore\\TMP001.007"), two);
    EXPECT_EQ(get(storebar(3)), three);
    EXPECT_FALSE(logged("checkbarcodeini: Missing Main File(s) From Folder - Fixed"));

    // The next call takes the TMP file that was left into the set, ahead of the others.
    files::inject::reset();
    checkbarcodeini(0);
    EXPECT_EQ(get(storemaster), masterbytes("002"));
    EXPECT_EQ(get(storebar(1)), two);
    EXPECT_EQ(get(storebar(2)), three);
    EXPECT_FALSE(has(storebar(3)));
    EXPECT_FALSE(has("\\\\127.0.0.1\\tagstore\\TMP001.007"));
    EXPECT_FALSE(has("\\\\127.0.0.1\\tagstore\\TMP002.007"));
}

TEST_F(CheckBarcodeIni, UnreachableStoreIsReported)
{
    g().savetype = 1;
    files::inject::vanishshare("\\\\127.0.0.1\\tagstore");
    checkbarcodeini(0);
    auto shown = boxes("Error While Checking File");
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text,
              "An unexpected error had occured while attempting to check the BARCODE.INI file! Error : 76 Path not found");
    EXPECT_FALSE(logged("checkbarcodeini: Missing Main BARCODE.INI File - Recreated"));
}

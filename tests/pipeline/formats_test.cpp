// Names, places and reads of the data files, and the data log block.
#include "pipelinefixture.h"

#include "pipeline/formats.h"
#include "platform/profile.h"

#include <functional>

namespace {

using formats::Place;

class Formats : public PipelineTest {
protected:
    void SetUp() override
    {
        PipelineTest::SetUp();
        g().serverip = "10.0.0.5";
        g().terminalno = "7";
    }
    void put(const std::string& winpath, const std::string& bytes) { files::writeall(winpath, bytes); }
};

TEST_F(Formats, NamesOnTheTwoSides)
{
    EXPECT_EQ(formats::masterfile(Place::local), "c:\\tarnbc\\BARCODE.INI");
    EXPECT_EQ(formats::masterfile(Place::store), "\\\\10.0.0.5\\tagstore\\BARCODE.7");
    EXPECT_EQ(formats::barfile(Place::local, 1), "c:\\tarnbc\\BAR001.INI");
    EXPECT_EQ(formats::barfile(Place::store, 20), "\\\\10.0.0.5\\tagstore\\BAR020.7");
    EXPECT_EQ(formats::tmpfile(Place::local, 3), "c:\\tarnbc\\TMP003.INI");
    EXPECT_EQ(formats::tmpfile(Place::store, 3), "\\\\10.0.0.5\\tagstore\\TMP003.7");
    EXPECT_EQ(formats::probefile(Place::local), "c:\\tarnbc\\BARTEST.INI");
    EXPECT_EQ(formats::probefile(Place::store), "\\\\10.0.0.5\\tagstore\\BARTEST.7");
    EXPECT_EQ(formats::lockfile(), "\\\\10.0.0.5\\tagstore\\BARLCK.7");
    EXPECT_EQ(formats::probesource(), "C:\\Program Files\\VexalBCv4\\BAR999.INI");
}

TEST_F(Formats, WhereSavesGo)
{
    struct Row { int savetype, storedown; Place place; } rows[] = {
        {0, 0, Place::local}, {0, 1, Place::local}, {1, 0, Place::store}, {1, 1, Place::local},
        {2, 0, Place::local}, {2, 1, Place::local}, {3, 0, Place::store}, {3, 1, Place::store},
    };
    for (const auto& r : rows) EXPECT_EQ(formats::saveplace(r.savetype, r.storedown), r.place) << r.savetype << r.storedown;
    g().savetype = 1;
    g().storedown = 1;
    EXPECT_EQ(formats::folder(formats::saveplace()), "c:\\tarnbc\\");
}

TEST_F(Formats, RawBackupAndExportNames)
{
    const QDateTime when(QDate(2007, 3, 9), QTime(14, 5, 7));
    EXPECT_EQ(formats::exportfile("123", when), "c:\\tarnbc\\exports\\export_123_2007391457.txt");
    EXPECT_EQ(formats::exportfile("7", QDateTime(QDate(2010, 12, 31), QTime(0, 0, 0))),
              "c:\\tarnbc\\exports\\export_007_20101231000.txt");
    EXPECT_EQ(formats::backupfile("123", when), "c:\\tarnbc\\backups\\temp_123_070309_1405.txt");
    struct Row { const char* id; const char* nnn; } rows[] = {{"123", "123"}, {"1234", "234"}, {"5", "005"},
                                                              {"045", "045"}, {"12a", "12a"}};
    for (const auto& r : rows) EXPECT_EQ(formats::idnumber(r.id), r.nnn) << r.id;
    EXPECT_EQ(formats::rawfile("12"), "c:\\tarnbc\\temp_012.txt");
}

TEST_F(Formats, CanonicalLinesAndBarFileParts)
{
    EXPECT_EQ(formats::canonicalline("01", "12345678", "07", "03", "12", "1430"), "0112345678200703121430");
    EXPECT_EQ(formats::canonicalline("02", "12345678", "07", "03", "12", "1430", "456"), "0212345678200703121430456");
    EXPECT_EQ(formats::sectionline("123"), "[000000123]");
    EXPECT_EQ(formats::barheader(5, QDate(2007, 3, 9)), "00520070309");
    EXPECT_EQ(formats::barheader(1000, QDate(2007, 3, 9)), "100020070309") << "a count above 999 grows a digit";
    EXPECT_EQ(formats::linekey(7), "007");

    struct Row { const char* line; const char* section; const char* scanner; bool faulty; } rows[] = {
        {"[000000123]", "000000123", "123", false},
        {"[0000001234]", "0000001234", "1234", true},
        {"[00000012]", "00000012", "12", true},
        {"[000000123", "00000012", "123", true},
    };
    for (const auto& r : rows) {
        EXPECT_EQ(formats::sectionfromline(r.line), r.section) << r.line;
        EXPECT_EQ(formats::scannerfromline(r.line), r.scanner) << r.line;
        EXPECT_EQ(formats::faultyid(r.line), r.faulty) << r.line;
    }
}

TEST_F(Formats, TheSectionPresentTest)
{
    put("c:\\tarnbc\\BAR001.INI", "[000000123]\r\n000=00520070309\r\n001=0112345678200703121430\r\n");
    put("c:\\tarnbc\\BAR002.INI", "[000000456]\r\n000=\r\n");
    put("c:\\tarnbc\\BAR003.INI", "[000000789]\r\n000=abc\r\n");
    EXPECT_EQ(formats::sectionlines("c:\\tarnbc\\BAR001.INI", "000000123"), 5);
    EXPECT_EQ(formats::sectionlines("c:\\tarnbc\\BAR001.INI", "000000456"), -1) << "another scanner's file";
    EXPECT_EQ(formats::sectionlines("c:\\tarnbc\\BAR009.INI", "000000123"), -1) << "no file";
    EXPECT_EQ(formats::sectionlines("c:\\tarnbc\\BAR002.INI", "000000456"), -1) << "an empty header";
    EXPECT_EQ(formats::sectionlines("c:\\tarnbc\\BAR003.INI", "000000789"), -1);
    EXPECT_EQ(Mid(formats::readheader("c:\\tarnbc\\BAR001.INI", "000000123"), 4, 8), "20070309");
    EXPECT_EQ(formats::readheader("c:\\tarnbc\\BAR009.INI", "X").size(), formats::readbuffer);
    // The store side reads with its own path as the default too.
    g().serverip = "127.0.0.1";
    install.addshare("\\\\127.0.0.1\\tagstore");
    put("\\\\127.0.0.1\\tagstore\\BAR001.7", "[000000123]\r\n000=01220070309\r\n");
    EXPECT_EQ(formats::sectionlines(formats::barfile(Place::store, 1), "000000123"), 12);
}

TEST_F(Formats, TheMasterFile)
{
    const std::string master = formats::masterfile(Place::local);
    try {
        formats::masterfilecount(master);
        ADD_FAILURE() << "a missing master file converts its own path";
    } catch (const Fault& f) {
        EXPECT_EQ(f.number, 13);
    }
    formats::writemastercount(master, 0);
    EXPECT_EQ(TempInstall::readfile(install.host(master)), "[FILES]\r\nFILES=000\r\n");
    EXPECT_EQ(formats::masterfilecount(master), 0);
    formats::writemastercount(master, 4);
    EXPECT_EQ(formats::masterfilecount(master), 4);
    put(master, "FILES=004\r\n");
    EXPECT_THROW(formats::masterfilecount(master), Fault) << "the header line lost";
}

TEST_F(Formats, AFailedWriteRaisesItsCause)
{
    const std::string bar = formats::barfile(Place::local, 1);
    struct Row {
        const char* legend;
        std::function<void()> inject;
        std::string file;
        int fault;
    } rows[] = {
        {"disk full", [] { files::inject::failwriteafter(0); }, bar, 61},
        {"read-only folder", [] { files::inject::readonlyfolder("c:\\tarnbc"); }, bar, 70},
        {"missing folder", [] {}, "c:\\tarnbc\\nofolder\\BAR001.INI", 76},
        {"share gone", [] { files::inject::vanishshare("\\\\10.0.0.5\\tagstore"); }, formats::barfile(Place::store, 1), 76},
    };
    install.addshare("\\\\10.0.0.5\\tagstore");
    for (const auto& r : rows) {
        SCOPED_TRACE(r.legend);
        r.inject();
        try {
            formats::writevalue(r.file, "000000123", "000", "00120070309");
            ADD_FAILURE() << "no fault";
        } catch (const Fault& f) {
            EXPECT_EQ(f.number, r.fault);
        }
        files::inject::reset();
    }
    formats::writevalue(bar, "000000123", "000", "00120070309");
    EXPECT_EQ(TempInstall::readfile(install.host(bar)), "[000000123]\r\n000=00120070309\r\n");
}

TEST_F(Formats, TheDataLogBlock)
{
    const QDateTime when(QDate(2007, 3, 9), QTime(14, 5, 7));
    const auto block = formats::datalogblock("123", when, "00720070309", 6,
                                             {"0112345678200703121430", "0212345678200703121430456"});
    EXPECT_EQ(block, (std::vector<std::string>{"ENTRY: Scanner 000123 1405 20070309", "[000000123]",
                                               "000=00720070309", "006=0112345678200703121430",
                                               "007=0212345678200703121430456", "END"}));
    formats::writedatalogblock(block);
    EXPECT_EQ(textlines(install.host(g().homedir + "LOGS\\09_DAT.TXT")), block);
}

TEST_F(Formats, TheRawFileIsRewrittenLineByLine)
{
    g().scanlines[1] = "a";
    g().scanlines[2] = "b";
    formats::writerawfile("123", g().scanlines, 2);
    EXPECT_EQ(TempInstall::readfile(install.host("c:\\tarnbc\\temp_123.txt")), "a\r\nb\r\n");
    EXPECT_THROW(formats::writerawfile("123", g().scanlines, 1001), Fault);
    EXPECT_EQ(TempInstall::readfile(install.host("c:\\tarnbc\\temp_123.txt")).size(), 1000u * 2 + 2u)
        << "the lines before the table's end are written";
}

}  // namespace

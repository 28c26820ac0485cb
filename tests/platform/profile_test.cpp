#include <cstring>
#include <optional>
#include <string_view>
#include <gtest/gtest.h>

#include "platform/files.h"
#include "platform/profile.h"
#include "support/tempinstall.h"

using namespace std::literals;

namespace {

const char* const kFile = "C:\\TARNBC\\TEST.INI";
constexpr size_t kBuffer = 64;   // room past the largest size used, to see what is left alone
constexpr char kFill = '~';

struct ReadRow {
    const char* legend;
    const char* in;          // nullptr: the file is missing
    const char* section;
    const char* key;
    const char* def;
    uint32_t size;
    const char* result;
    uint32_t count;
};
void PrintTo(const ReadRow& r, std::ostream* os) { *os << r.legend; }

// An install with the folder C:\TARNBC; `put` writes the test file's bytes.
class Profile : public ::testing::Test {
protected:
    void SetUp() override { files::makefolder("C:\\TARNBC"); }
    void put(const std::string& bytes) { TempInstall::writefile(t.host(kFile), bytes); }
    TempInstall t;
};

// A 60-character default, as the program's own full-path default of a deep file would be.
const char* const kLongPath = "C:\\Program Files\\VexalBCv4\\TARNBC\\INITEMP\\BACKUPS\\BAR001.INI   ";

const ReadRow kReads[] = {
    {"plain value", "[S]\r\nK=V\r\n", "S", "K", "d", 50, "V", 1},
    {"names without regard to case", "[Sec]\r\nKey=Val\r\n", "sEC", "kEY", "d", 50, "Val", 3},
    {"spaces round the arguments", "[S]\r\nK=V\r\n", "  S ", " K  ", "d", 50, "V", 1},
    {"cut to size-1", "[S]\r\nK=value\r\n", "S", "K", "d", 4, "val", 3},
    {"exact fit still size-1", "[S]\r\nK=abc\r\n", "S", "K", "d", 4, "abc", 3},
    {"size 1 gives empty", "[S]\r\nK=abc\r\n", "S", "K", "d", 1, "", 0},
    {"missing key: default", "[S]\r\nK=V\r\n", "S", "X", "dflt", 50, "dflt", 4},
    {"missing section: default", "[S]\r\nK=V\r\n", "T", "K", "dflt", 50, "dflt", 4},
    {"missing file: default", nullptr, "S", "K", "dflt", 50, "dflt", 4},
    {"null default", "[S]\r\n", "S", "K", nullptr, 50, "", 0},
    {"default loses trailing spaces only", "", "S", "K", "  de fault  ", 50, "  de fault", 10},
    {"default keeps trailing tabs", "", "S", "K", "dflt\t ", 50, "dflt\t", 5},
    {"default spaces go before the cut", "", "S", "K", "abc     ", 5, "abc", 3},
    {"full-path default cut to 49", "", "S", "K", kLongPath, 50,
     "C:\\Program Files\\VexalBCv4\\TARNBC\\INITEMP\\BACKUPS", 49},
    {"empty value is found", "[S]\r\nK=\r\n", "S", "K", "dflt", 50, "", 0},
    {"value and key trimmed", "[S]\r\n \t K \t= \t v w \t\r\n", "S", "K", "d", 50, "v w", 3},
    {"one outer pair of double quotes", "[S]\r\nK=\" v \"\r\n", "S", "K", "d", 50, " v ", 3},
    {"single quotes too", "[S]\r\nK='v'\r\n", "S", "K", "d", 50, "v", 1},
    {"mismatched quotes stay", "[S]\r\nK=\"v'\r\n", "S", "K", "d", 50, "\"v'", 3},
    {"only one pair comes off", "[S]\r\nK=\"\"v\"\"\r\n", "S", "K", "d", 50, "\"v\"", 3},
    {"a lone quote stays", "[S]\r\nK=\"\r\n", "S", "K", "d", 50, "\"", 1},
    {"comment line never matches", "[S]\r\n;K=1\r\n", "S", ";K", "d", 50, "d", 1},
    {"commented key is not the key", "[S]\r\n ;K=1\r\nK=2\r\n", "S", "K", "d", 50, "2", 1},
    {"semicolon inside a value is text", "[S]\r\nK=v ;c\r\n", "S", "K", "d", 50, "v ;c", 4},
    {"hash is not a comment", "[S]\r\n#K=1\r\n", "S", "#K", "d", 50, "1", 1},
    {"blank lines ignored", "\r\n[S]\r\n\r\n   \r\nK=V\r\n", "S", "K", "d", 50, "V", 1},
    {"lines before any header unreachable", "K=V\r\n[S]\r\n", "", "K", "d", 50, "d", 1},
    {"... also under the first section", "K=V\r\n[S]\r\n", "S", "K", "d", 50, "d", 1},
    {"first of duplicated sections only", "[S]\r\nA=1\r\n[T]\r\n[S]\r\nK=2\r\n", "S", "K", "d", 50, "d", 1},
    {"first of duplicated keys", "[S]\r\nK=1\r\nK=2\r\n", "S", "K", "d", 50, "1", 1},
    {"LF and CR line ends", "[S]\nA=1\rK=2\r", "S", "K", "d", 50, "2", 1},
    {"header ends at first ]", "[S]x]\r\nK=1\r\n", "S", "K", "d", 50, "1", 1},
    {"header without ]", "  [ S \r\nK=1\r\n", "S", "K", "d", 50, "1", 1},
    {"key ends at first =", "[S]\r\nK=a=b\r\n", "S", "K", "d", 50, "a=b", 3},
    {"line without = is no key", "[S]\r\nK\r\n", "S", "K", "d", 50, "d", 1},
    {"master file that lost its header", "FILES=004\r\n", "FILES", "FILES", kLongPath, 50,
     "C:\\Program Files\\VexalBCv4\\TARNBC\\INITEMP\\BACKUPS", 49},
    {"... unless a later [FILES] holds it", "FILES=004\r\n[FILES]\r\nFILES=007\r\n", "FILES", "FILES", kLongPath,
     50, "007", 3},
};

class ProfileReads : public Profile, public ::testing::WithParamInterface<ReadRow> {};

TEST_P(ProfileReads, ResultCountBufferAndFile)
{
    const ReadRow& row = GetParam();
    if (row.in) put(row.in);

    char buffer[kBuffer];
    std::memset(buffer, kFill, sizeof buffer);
    uint32_t n = GetPrivateProfileStringA(row.section, row.key, row.def, buffer, row.size, kFile);

    EXPECT_EQ(n, row.count);
    std::string expected = std::string(row.result) + '\0';
    expected += std::string(kBuffer - expected.size(), kFill);
    EXPECT_EQ(std::string(buffer, kBuffer), expected);
    if (row.in) EXPECT_EQ(TempInstall::readfile(t.host(kFile)), row.in);
    else EXPECT_FALSE(files::exists(kFile));
}

INSTANTIATE_TEST_SUITE_P(Table, ProfileReads, ::testing::ValuesIn(kReads),
                         [](const auto& info) { return "row" + std::to_string(info.index); });

TEST_F(Profile, SizeZeroLeavesTheBufferAlone)
{
    put("[S]\r\nK=V\r\n");
    char buffer[8];
    std::memset(buffer, kFill, sizeof buffer);
    EXPECT_EQ(GetPrivateProfileStringA("S", "K", "d", buffer, 0, kFile), 0u);
    EXPECT_EQ(std::string(buffer, sizeof buffer), std::string(8, kFill));
}

TEST_F(Profile, MissingFileSetsFileNotFoundAndCutSetsMoreData)
{
    char buffer[50];
    GetPrivateProfileStringA("S", "K", "d", buffer, 50, kFile);
    EXPECT_EQ(files::GetLastError(), 2u);
    put("[S]\r\nK=value\r\n");
    GetPrivateProfileStringA("S", "K", "d", buffer, 3, kFile);
    EXPECT_EQ(files::GetLastError(), 234u);
}

// The settings reads cut a value at its first "#". A value without one then finds the "#"
// that an earlier, longer read left after the terminator: the program relies on that.
TEST_F(Profile, StaleBytesAfterTheTerminatorStay)
{
    put("[SAVE]\r\nIP=10.0.0.200#\r\nTNO=7\r\n");
    std::string buffer(50, '\0');
    EXPECT_EQ(GetPrivateProfileStringA("SAVE", "IP", kFile, buffer, 50, kFile), 11u);
    EXPECT_EQ(GetPrivateProfileStringA("SAVE", "TNO", kFile, buffer, 50, kFile), 1u);
    EXPECT_EQ(buffer.size(), 50u);
    EXPECT_EQ(buffer.substr(0, 12), "7\0.0.0.200#\0"sv);
    EXPECT_EQ(buffer.find('#'), 10u);
    EXPECT_EQ(buffer.substr(12), std::string(38, '\0'));
}

TEST_F(Profile, NullKeyListsKeysNullSectionListsSections)
{
    put("X=0\r\n[A]\r\nk1=1\r\n;c=2\r\nnoequals\r\nk2=3\r\n[B]\r\n");
    char buffer[32];
    uint32_t n = GetPrivateProfileStringA("a", nullptr, "d", buffer, sizeof buffer, kFile);
    EXPECT_EQ(std::string(buffer, n + 1), std::string("k1\0k2\0", 6) + '\0');
    n = GetPrivateProfileStringA(nullptr, nullptr, "d", buffer, sizeof buffer, kFile);
    EXPECT_EQ(std::string(buffer, n + 1), std::string("A\0B\0", 4) + '\0');
    n = GetPrivateProfileStringA(nullptr, nullptr, "d", buffer, 4, kFile);
    EXPECT_EQ(n, 2u);
    EXPECT_EQ(std::string(buffer, 4), std::string("A\0\0\0", 4));
}

struct WriteRow {
    const char* legend;
    std::optional<std::string_view> in;   // none: the file is missing
    const char* section;
    const char* key;                      // nullptr deletes the section
    const char* value;                    // nullptr deletes the key
    std::optional<std::string_view> out;  // none: the file is still missing
};
void PrintTo(const WriteRow& r, std::ostream* os) { *os << r.legend; }

const WriteRow kWrites[] = {
    {"new file", std::nullopt, "S", "K", "V", "[S]\r\nK=V\r\n"},
    {"new section at the very end", "[A]\r\nx=1\r\n\r\n", "S", "K", "V", "[A]\r\nx=1\r\n\r\n[S]\r\nK=V\r\n"},
    {"CRLF first when the last line is open", "[A]\r\nx=1", "S", "K", "V", "[A]\r\nx=1\r\n[S]\r\nK=V\r\n"},
    {"new key after the last key, before comments and blanks", "[S]\r\nA=1\r\n;note\r\n\r\n[T]\r\n", "S", "B",
     "2", "[S]\r\nA=1\r\nB=2\r\n;note\r\n\r\n[T]\r\n"},
    {"new key right after a bare header", "[S]\r\n;c\r\n[T]\r\n", "S", "K", "V", "[S]\r\nK=V\r\n;c\r\n[T]\r\n"},
    {"new key after an open last line", "[S]\r\nA=1", "S", "B", "2", "[S]\r\nA=1\r\nB=2\r\n"},
    {"new key after an open header", "[S]", "S", "B", "2", "[S]\r\nB=2\r\n"},
    {"replace in place, file's spelling, CRLF", "[Sec]\n  Key = old \n[T]\n", "SEC", "KEY", "new",
     "[Sec]\nKey=new\r\n[T]\n"},
    {"replaced open last line gets CRLF", "[S]\rK=1", "S", "K", "2", "[S]\rK=2\r\n"},
    {"value written as given", "", " S ", " K ", "  \"q\"  ", "[S]\r\nK=  \"q\"  \r\n"},
    {"empty value", "[S]\r\nK=1\r\n", "S", "K", "", "[S]\r\nK=\r\n"},
    {"untouched lines byte for byte", "junk\n[S]\r\n;c\rK=1\r\nZ=\0x\r\n"sv, "S", "K", "2",
     "junk\n[S]\r\n;c\rK=2\r\nZ=\0x\r\n"sv},
    {"duplicate section: first one", "[S]\r\nA=1\r\n[S]\r\nK=1\r\n", "S", "K", "2", "[S]\r\nA=1\r\nK=2\r\n[S]\r\nK=1\r\n"},
    {"duplicate key: first one", "[S]\r\nK=1\r\nK=2\r\n", "S", "K", "3", "[S]\r\nK=3\r\nK=2\r\n"},
    {"delete key, header stays", "[S]\r\nK=1\r\n[T]\r\n", "S", "K", nullptr, "[S]\r\n[T]\r\n"},
    {"delete missing key", "[S]\r\nA=1\r\n", "S", "K", nullptr, "[S]\r\nA=1\r\n"},
    {"delete section keeps its comments", "[A]\r\n[S]\r\nK=1\r\n;c\r\nL=2\r\n\r\n[T]\r\nM=3\r\n", "s", nullptr,
     nullptr, "[A]\r\n;c\r\n\r\n[T]\r\nM=3\r\n"},
    {"delete in a missing file", std::nullopt, "S", "K", nullptr, std::nullopt},
    {"master file that lost its header", "FILES=004", "FILES", "FILES", "005", "FILES=004\r\n[FILES]\r\nFILES=005\r\n"},
};

class ProfileWrites : public Profile, public ::testing::WithParamInterface<WriteRow> {};

TEST_P(ProfileWrites, ResultAndFileBytes)
{
    const WriteRow& row = GetParam();
    if (row.in) put(std::string(*row.in));

    EXPECT_EQ(WritePrivateProfileStringA(row.section, row.key, row.value, kFile), 1);
    EXPECT_EQ(files::GetLastError(), 0u);
    if (row.out) EXPECT_EQ(TempInstall::readfile(t.host(kFile)), *row.out);
    else EXPECT_FALSE(files::exists(kFile));
}

INSTANTIATE_TEST_SUITE_P(Table, ProfileWrites, ::testing::ValuesIn(kWrites),
                         [](const auto& info) { return "row" + std::to_string(info.index); });

TEST(ProfileWrite, FailuresReturnZeroWithTheLastError)
{
    TempInstall t;
    EXPECT_EQ(WritePrivateProfileStringA("S", "K", "V", "C:\\NOWHERE\\X.INI"), 0);
    EXPECT_EQ(files::GetLastError(), 3u);
    EXPECT_FALSE(files::exists("C:\\NOWHERE"));

    files::makefolder("C:\\TARNBC");
    files::inject::failwriteafter(0);
    EXPECT_EQ(WritePrivateProfileStringA("S", "K", "V", kFile), 0);
    EXPECT_EQ(files::GetLastError(), 112u);
    files::inject::readonlyfolder("c:\\tarnbc");
    EXPECT_EQ(WritePrivateProfileStringA("S", "K", "V", kFile), 0);
    EXPECT_EQ(files::GetLastError(), 5u);
    files::inject::reset();
    EXPECT_FALSE(files::exists(kFile));

    EXPECT_EQ(WritePrivateProfileStringA(nullptr, nullptr, nullptr, kFile), 0);  // flush request
}

// The master file on a share mapped to a folder, found under another case.
TEST(ProfileWrite, EveryCallSeesTheFileAsItStandsNow)
{
    TempInstall t;
    std::string folder = t.addshare("\\\\10.0.0.200\\tagstore");
    TempInstall::writefile(folder + "/BARCODE.007", "[FILES]\r\nFILES=002\r\n");
    const char* master = "\\\\10.0.0.200\\TAGSTORE\\barcode.007";
    std::string buffer(50, '\0');
    EXPECT_EQ(GetPrivateProfileStringA("FILES", "FILES", master, buffer, 50, master), 3u);
    EXPECT_EQ(WritePrivateProfileStringA("FILES", "FILES", "003", master), 1);
    EXPECT_EQ(TempInstall::readfile(folder + "/BARCODE.007"), "[FILES]\r\nFILES=003\r\n");
    TempInstall::writefile(folder + "/BARCODE.007", "[FILES]\r\nFILES=009\r\n");  // edited outside
    GetPrivateProfileStringA("FILES", "FILES", master, buffer, 50, master);
    EXPECT_EQ(buffer.substr(0, 4), std::string("009\0", 4));
}

TEST(ProfileCore, LookupAndUpdateOnBytes)
{
    auto r = profile::lookup("[A]\nk = \"x\" \n", " a ", "K ");
    EXPECT_TRUE(r.found);
    EXPECT_EQ(r.value, "x");
    EXPECT_FALSE(profile::lookup("[A]\nk\n", "A", "k").found);
    EXPECT_EQ(profile::update("", "A", "k", "v"), "[A]\r\nk=v\r\n");
    EXPECT_EQ(profile::update("[A]\r\nk=v\r\n", nullptr, "k", "w"), "[A]\r\nk=v\r\n");
}

}  // namespace

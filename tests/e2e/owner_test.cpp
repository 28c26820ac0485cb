// The owner a download names from the engineer list: the record whose first number is the
// ID's, the name after its last comma, in capitals per word.
#include "downloadfixture.h"
#include "pipeline/readowner.h"

class ScannerOwner : public DownloadTest {};

TEST_F(ScannerOwner, NamesByTheListRules)
{
    TempInstall::writefile(install.host("c:\\tarnbc\\ENGLST.TXT"),
                           "Unit list\r\n"
                           " 000001,000001,Leading Blank Line\r\n"
                           "000002,000002,BILL O'BRIEN  \r\n"
                           "000003,000003,smith, john\r\n"
                           "000004,000004,x\r\n"
                           "000005,000005, ann  lee\r\n"
                           "000006,000006,first\r\n"
                           "6,6,second\r\n"
                           "0000x7,000007,Bad Digits\r\n"
                           "000008,000008,\r\n");
    struct Row {
        const char* legend;
        const char* id;
        const char* owner;
    } rows[] = {
        {"a line with a leading blank is no record", "1", "Unknown"},
        {"lower case but the first letters, trailing blanks cut", "002", "Bill O'brien"},
        {"only what follows the last comma", "3", "John"},
        {"a one-character name is no name", "4", ""},
        {"a leading blank goes, the second of two blanks stays", "5", "Ann  Lee"},
        {"the first record wins, leading zeros do not matter", "006", "First"},
        {"a record with letters in its number is skipped", "7", "Unknown"},
        {"an empty name", "8", ""},
        {"no record", "9", "Unknown"},
    };
    for (const auto& r : rows) EXPECT_EQ(scannerowner(r.id), r.owner) << r.legend;
}

TEST_F(ScannerOwner, ListOfTheServerInDirectMode)
{
    g().fittertype = 1;
    EXPECT_EQ(scannerowner("123"), "Unknown") << "no list there; the local one is not looked at";
    TempInstall::writefile(share + "/ENGLST.TXT", "000123,000123,JOE SERVER\r\n");
    EXPECT_EQ(scannerowner("123"), "Joe Server");
    g().fittertype = 2;
    EXPECT_EQ(scannerowner("123"), "Fred Bloggs") << "a PC copy is read locally";
}

#include <QDir>
#include <gtest/gtest.h>

#include "platform/files.h"
#include "runtime/fault.h"
#include "support/tempinstall.h"

namespace {

// The fault number a statement raises, 0 when it raises none.
template <class F>
int faultof(F&& f)
{
    try {
        f();
    } catch (const Fault& e) {
        return e.number;
    }
    return 0;
}

class Files : public ::testing::Test {
protected:
    void SetUp() override
    {
        files::inject::reset();
        QDir(QString::fromStdString(t.drivec())).mkpath("TARNBC/INITEMP");
    }
    void TearDown() override { files::inject::reset(); }
    std::string c(const std::string& rest) const { return t.drivec() + "/" + rest; }
    TempInstall t;
};

TEST_F(Files, NamesFoundWithoutRegardToCaseNewNamesKeepTheirCase)
{
    TempInstall::writefile(c("TARNBC/BARCODE.INI"), "[FILES]\r\n");
    EXPECT_TRUE(files::exists("c:\\tarnbc\\barcode.ini"));
    EXPECT_EQ(files::readall("C:\\TarnBC\\Barcode.Ini"), "[FILES]\r\n");
    EXPECT_EQ(files::filelength("c:\\TARNBC\\barcode.INI"), 9);
    files::writeall("c:\\tarnbc\\barcode.ini", "x");  // replaces the file found, no twin
    files::writeall("c:\\tarnbc\\New.Txt", "y");
    EXPECT_EQ(QDir(QString::fromStdString(c("TARNBC"))).entryList(QDir::Files).join(","), "BARCODE.INI,New.Txt");
    EXPECT_TRUE(files::isfolder("C:\\TARNBC\\initemp\\"));
    EXPECT_FALSE(files::isfolder("C:\\TARNBC\\new.txt"));
}

TEST_F(Files, ListAndDirMatchWildCardsWithoutCaseSorted)
{
    for (const char* name : {"bar002.007", "BAR001.007", "BARCODE.007", "BAR001.INI", "XBAR1.007"})
        TempInstall::writefile(c("TARNBC/INITEMP/") + name, "");
    QDir().mkpath(QString::fromStdString(c("TARNBC/INITEMP/BAR9.007")));
    std::vector<std::string> bars = {"BAR001.007", "bar002.007", "BARCODE.007"};
    EXPECT_EQ(files::list("c:\\tarnbc\\initemp\\Bar*.007"), bars);
    EXPECT_EQ(files::list("c:\\tarnbc\\initemp\\BAR00?.*").size(), 3u);
    EXPECT_EQ(files::list("c:\\tarnbc\\initemp\\bar*.007", true).size(), 4u);
    EXPECT_EQ(files::list("c:\\tarnbc\\initemp\\*.*").size(), 5u);
    EXPECT_TRUE(files::list("c:\\tarnbc\\missing\\*.007").empty());

    EXPECT_EQ(files::Dir("C:\\TARNBC\\INITEMP\\BAR*.007"), "BAR001.007");
    EXPECT_EQ(files::Dir(), "bar002.007");
    EXPECT_EQ(files::Dir(), "BARCODE.007");
    EXPECT_EQ(files::Dir(), "");
    EXPECT_EQ(faultof([] { files::Dir(); }), 5);
    EXPECT_EQ(files::Dir("c:\\tarnbc\\initemp\\barcode.007"), "BARCODE.007");  // the name as stored
    EXPECT_EQ(files::Dir("c:\\tarnbc\\initemp\\BARLCK.007"), "");
    EXPECT_EQ(faultof([] { files::Dir("Q:\\X\\*.*"); }), 52);
}

TEST_F(Files, StatementsRaiseTheClassicFaults)
{
    EXPECT_EQ(faultof([] { files::readall("C:\\TARNBC\\NONE.TXT"); }), 53);
    EXPECT_EQ(faultof([] { files::readall("C:\\NOFOLDER\\NONE.TXT"); }), 76);
    EXPECT_EQ(faultof([] { files::readall("C:\\TARNBC\\INITEMP"); }), 75);
    EXPECT_EQ(faultof([] { files::filelength("C:\\NOFOLDER\\NONE.TXT"); }), 53);
    EXPECT_EQ(faultof([] { files::writeall("C:\\NOFOLDER\\X.TXT", "x"); }), 76);
    EXPECT_EQ(faultof([] { files::writeall("Q:\\X.TXT", "x"); }), 52);
    EXPECT_EQ(faultof([] { files::makefolder("c:\\tarnbc\\initemp"); }), 75);
    EXPECT_EQ(faultof([] { files::makefolder("c:\\a\\b"); }), 76);
    EXPECT_EQ(faultof([] { files::removefolder("c:\\tarnbc\\gone"); }), 76);
    EXPECT_EQ(faultof([] { files::removefolder("c:\\tarnbc"); }), 75);
    EXPECT_EQ(faultof([] { files::copyfile("c:\\tarnbc\\none", "c:\\tarnbc\\x"); }), 53);
    EXPECT_EQ(faultof([] { files::removefile("c:\\tarnbc\\none"); }), 53);
    EXPECT_EQ(faultof([] { files::removefile("c:\\tarnbc\\*.none"); }), 53);

    files::writeall("C:\\TARNBC\\A.TXT", "a");
    files::writeall("C:\\TARNBC\\B.TXT", "b");
    EXPECT_EQ(faultof([] { files::renamefile("c:\\tarnbc\\a.txt", "C:\\TARNBC\\b.txt"); }), 58);
    EXPECT_EQ(faultof([] { files::renamefile("c:\\tarnbc\\z.txt", "C:\\TARNBC\\y.txt"); }), 53);
    files::renamefile("c:\\tarnbc\\a.txt", "C:\\TARNBC\\a.Txt");
    EXPECT_EQ(files::Dir("c:\\tarnbc\\A.*"), "a.Txt");
    files::renamefile("c:\\tarnbc\\a.txt", "C:\\TARNBC\\INITEMP\\C.TXT");
    EXPECT_EQ(files::readall("c:\\tarnbc\\initemp\\c.txt"), "a");
    files::copyfile("c:\\tarnbc\\b.txt", "c:\\tarnbc\\initemp\\c.txt");
    EXPECT_EQ(files::readall("c:\\tarnbc\\initemp\\c.txt"), "b");
    files::appendbytes("c:\\tarnbc\\initemp\\c.txt", "+");
    files::appendbytes("c:\\tarnbc\\initemp\\d.txt", "new");
    EXPECT_EQ(files::readall("c:\\tarnbc\\initemp\\c.txt") + files::readall("c:\\tarnbc\\initemp\\d.txt"), "b+new");
    files::removefile("c:\\tarnbc\\initemp\\?.TXT");
    EXPECT_TRUE(files::list("c:\\tarnbc\\initemp\\*").empty());
    files::removefolder("c:\\tarnbc\\initemp");
    EXPECT_FALSE(files::exists("c:\\tarnbc\\initemp"));
}

TEST_F(Files, LineInputTakesCrLfLfAndCrEndsThenFaults62)
{
    TempInstall::writefile(c("TARNBC/ENGLST.TXT"), "a\r\nb\nc\rd\r\n\r\n\n\re");
    files::TextReader in("c:\\tarnbc\\englst.txt");
    std::vector<std::string> lines;
    while (!in.eof()) lines.push_back(in.lineinput());
    EXPECT_EQ(lines, (std::vector<std::string>{"a", "b", "c", "d", "", "", "", "e"}));
    EXPECT_EQ(faultof([&] { in.lineinput(); }), 62);

    TempInstall::writefile(c("TARNBC/EMPTY.TXT"), "");
    files::TextReader empty("c:\\tarnbc\\empty.txt");
    EXPECT_TRUE(empty.eof());
    EXPECT_EQ(faultof([&] { empty.lineinput(); }), 62);
    EXPECT_EQ(faultof([] { files::TextReader("c:\\tarnbc\\none.txt"); }), 53);
}

TEST_F(Files, PrintWritesCrLfLinesAndAWriteFaultHitsItsLine)
{
    {
        files::TextWriter out("C:\\TARNBC\\LOG.TXT", files::TextWriter::output);
        out.print("one");
        files::inject::failwriteafter(1);
        out.print("two");
        EXPECT_EQ(faultof([&] { out.print("three"); }), 61);
        out.write("four");
    }
    EXPECT_EQ(TempInstall::readfile(c("TARNBC/LOG.TXT")), "one\r\ntwo\r\nfour");
    files::TextWriter more("C:\\TARNBC\\log.txt", files::TextWriter::append);
    more.print("five");
    EXPECT_EQ(TempInstall::readfile(c("TARNBC/LOG.TXT")), "one\r\ntwo\r\nfourfive\r\n");
    files::TextWriter again("C:\\TARNBC\\LOG.TXT", files::TextWriter::output);
    EXPECT_EQ(TempInstall::readfile(c("TARNBC/LOG.TXT")), "");
    EXPECT_EQ(faultof([] { files::TextWriter("C:\\NOFOLDER\\LOG.TXT", files::TextWriter::append); }), 76);
}

TEST_F(Files, ReadOnlyFolderRefusesEveryWriteEvenToRoot)
{
    TempInstall::writefile(c("TARNBC/INITEMP/BAR001.007"), "x");
    files::inject::readonlyfolder("C:\\TarnBC\\InitTemp");  // a name that does not exist yet: no effect
    files::writeall("c:\\tarnbc\\initemp\\ok.txt", "fine");
    files::inject::readonlyfolder("c:\\tarnbc\\INITEMP");
    const std::string f = "c:\\tarnbc\\initemp\\bar001.007";
    EXPECT_EQ(faultof([&] { files::writeall(f, "y"); }), 70);
    EXPECT_EQ(faultof([&] { files::appendbytes(f, "y"); }), 70);
    EXPECT_EQ(faultof([] { files::TextWriter("c:\\tarnbc\\initemp\\n.txt", files::TextWriter::output); }), 70);
    EXPECT_EQ(faultof([&] { files::copyfile("c:\\tarnbc\\initemp\\ok.txt", f); }), 70);
    EXPECT_EQ(faultof([&] { files::renamefile(f, "c:\\tarnbc\\moved.007"); }), 70);
    EXPECT_EQ(faultof([&] { files::removefile(f); }), 70);
    EXPECT_EQ(faultof([] { files::makefolder("c:\\tarnbc\\initemp\\backups"); }), 70);
    EXPECT_FALSE(files::DeleteFileA(f));
    EXPECT_EQ(files::GetLastError(), 5u);
    EXPECT_EQ(files::readall(f), "x");
    files::copyfile(f, "c:\\tarnbc\\copy.007");  // reading out of it still works
}

TEST_F(Files, VanishedShareIsNowhere)
{
    std::string folder = t.addshare("\\\\10.0.0.200\\tagstore");
    TempInstall::writefile(folder + "/BAR001.007", "x");
    const std::string share = "\\\\10.0.0.200\\tagstore\\";
    EXPECT_TRUE(files::PathFileExistsA(share));
    EXPECT_EQ(files::GetDriveTypeA(share), 4u);
    files::inject::vanishshare("\\\\10.0.0.200\\TAGSTORE");
    EXPECT_FALSE(files::exists(share + "BAR001.007"));
    EXPECT_FALSE(files::PathFileExistsA(share));
    EXPECT_EQ(files::GetLastError(), 53u);
    EXPECT_EQ(files::GetDriveTypeA(share), 1u);
    EXPECT_EQ(faultof([&] { files::readall(share + "BAR001.007"); }), 76);
    EXPECT_EQ(faultof([&] { files::filelength(share + "BAR001.007"); }), 53);
    EXPECT_EQ(faultof([&] { files::writeall(share + "BARLCK.007", ""); }), 76);
    EXPECT_EQ(faultof([&] { files::makefolder(share + "SUB"); }), 76);
    EXPECT_EQ(faultof([&] { files::renamefile(share + "BAR001.007", share + "X"); }), 53);
    EXPECT_TRUE(files::list(share + "*.*").empty());
    EXPECT_FALSE(files::CopyFileA("c:\\tarnbc\\none", share + "X", false));
    EXPECT_EQ(files::GetLastError(), 2u);
    files::writeall("c:\\tarnbc\\a.txt", "a");
    EXPECT_FALSE(files::CopyFileA("c:\\tarnbc\\a.txt", share + "A.TXT", false));
    EXPECT_EQ(files::GetLastError(), 53u);
    EXPECT_EQ(TempInstall::readfile(folder + "/BAR001.007"), "x");
}

TEST_F(Files, Win32CallsSetTheLastError)
{
    files::writeall("c:\\tarnbc\\a.txt", "a");
    EXPECT_TRUE(files::CopyFileA("c:\\tarnbc\\A.TXT", "c:\\tarnbc\\b.txt", true));
    EXPECT_EQ(files::GetLastError(), 0u);
    EXPECT_FALSE(files::CopyFileA("c:\\tarnbc\\a.txt", "c:\\tarnbc\\B.TXT", true));
    EXPECT_EQ(files::GetLastError(), 80u);
    EXPECT_FALSE(files::CopyFileA("c:\\tarnbc\\a.txt", "c:\\none\\b.txt", false));
    EXPECT_EQ(files::GetLastError(), 3u);
    files::inject::failwriteafter(0);
    EXPECT_FALSE(files::CopyFileA("c:\\tarnbc\\a.txt", "c:\\tarnbc\\b.txt", false));
    EXPECT_EQ(files::GetLastError(), 112u);
    EXPECT_TRUE(files::DeleteFileA("c:\\tarnbc\\b.txt"));
    EXPECT_FALSE(files::DeleteFileA("c:\\tarnbc\\b.txt"));
    EXPECT_EQ(files::GetLastError(), 2u);
    EXPECT_EQ(files::GetDriveTypeA("C:\\"), 3u);
    EXPECT_EQ(files::GetDriveTypeA("Q:\\"), 1u);

    // The read-only attribute holds off writes and deletes until it is taken away.
    EXPECT_TRUE(files::SetFileAttributesA("c:\\tarnbc\\a.txt", 1));
    EXPECT_FALSE(files::DeleteFileA("c:\\tarnbc\\a.txt"));
    EXPECT_EQ(files::GetLastError(), 5u);
    EXPECT_EQ(faultof([] { files::writeall("c:\\tarnbc\\a.txt", "b"); }), 70);
    EXPECT_TRUE(files::SetFileAttributesA("c:\\tarnbc\\a.txt", 128));
    EXPECT_TRUE(files::DeleteFileA("c:\\tarnbc\\a.txt"));
}

}  // namespace

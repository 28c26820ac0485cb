#include <QDir>
#include <algorithm>
#include <gtest/gtest.h>

#include "platform/files.h"
#include "support/tempinstall.h"

namespace {

using files::SHFILEOPSTRUCTA;

// The record as the transfer screen fills it: flags 532, names closed by two NULs.
SHFILEOPSTRUCTA operation(uint32_t func, const std::string& from, const std::string& to = "")
{
    SHFILEOPSTRUCTA op;
    op.wFunc = func;
    op.pFrom = from + std::string(2, '\0');
    op.pTo = to + std::string(2, '\0');
    op.fFlags = files::FOF_SILENT + files::FOF_NOCONFIRMATION + files::FOF_NOCONFIRMMKDIR;
    op.fAnyOperationsAborted = 7;  // must be set by the call
    op.lpszProgressTitle = "Please wait, copying files...";
    return op;
}

class ShFileOp : public ::testing::Test {
protected:
    void SetUp() override
    {
        files::inject::reset();
        store = t.addshare("\\\\10.0.0.200\\tagstore");
        for (const char* name : {"BAR001.007", "bar002.007", "BARCODE.007", "ENGLST.TXT", "BAR001.008"})
            TempInstall::writefile(store + "/" + name, name);
        files::SetLastError(6);
    }
    void TearDown() override { files::inject::reset(); }
    std::string work() const { return t.drivec() + "/TARNBC/INITEMP"; }
    std::vector<std::string> names(const std::string& folder) const
    {
        std::vector<std::string> out;
        for (const auto& n : QDir(QString::fromStdString(folder)).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot))
            out.push_back(n.toStdString());
        std::sort(out.begin(), out.end());
        return out;
    }
    TempInstall t;
    std::string store;
};

TEST_F(ShFileOp, CopyWithWildCardsMakesTheTargetAndLeavesNoError)
{
    auto op = operation(files::FO_COPY, "\\\\10.0.0.200\\tagstore\\bar*.007", "C:\\TARNBC\\INITEMP\\");
    EXPECT_EQ(files::SHFileOperationA(op), 0);
    EXPECT_EQ(op.fAnyOperationsAborted, 0);
    EXPECT_EQ(files::GetLastError(), 0u);
    EXPECT_EQ(names(work()), (std::vector<std::string>{"BAR001.007", "BARCODE.007", "bar002.007"}));
    EXPECT_EQ(TempInstall::readfile(work() + "/bar002.007"), "bar002.007");

    // Copying back overwrites, and keeps the name the target already has.
    TempInstall::writefile(work() + "/BAR002.007", "merged");
    QFile::remove(QString::fromStdString(work() + "/bar002.007"));
    op = operation(files::FO_COPY, "C:\\TARNBC\\INITEMP\\BAR*.007", "\\\\10.0.0.200\\tagstore\\");
    EXPECT_EQ(files::SHFileOperationA(op), 0);
    EXPECT_EQ(TempInstall::readfile(store + "/bar002.007"), "merged");
    EXPECT_EQ(names(store).size(), 5u);
}

TEST_F(ShFileOp, DeleteTakesFoldersTooAndNothingToDeleteIsError2)
{
    QDir().mkpath(QString::fromStdString(work() + "/BACKUPS/DEEP"));
    TempInstall::writefile(work() + "/BACKUPS/DEEP/X.INI", "x");
    TempInstall::writefile(work() + "/BAR001.007", "x");
    auto op = operation(files::FO_DELETE, "C:\\TARNBC\\INITEMP\\*");
    EXPECT_EQ(files::SHFileOperationA(op), 0);
    EXPECT_EQ(files::GetLastError(), 0u);
    EXPECT_TRUE(names(work()).empty());

    op = operation(files::FO_DELETE, "C:\\TARNBC\\INITEMP\\*");
    EXPECT_EQ(files::SHFileOperationA(op), 2);
    EXPECT_EQ(files::GetLastError(), 2u);
    EXPECT_EQ(op.fAnyOperationsAborted, 0);
}

TEST_F(ShFileOp, SeveralNamesInOneRecord)
{
    std::string from = "\\\\10.0.0.200\\tagstore\\ENGLST.TXT";
    from += '\0';
    from += "\\\\10.0.0.200\\tagstore\\*.008";
    auto op = operation(files::FO_COPY, from, "C:\\TARNBC\\INITEMP");
    EXPECT_EQ(files::SHFileOperationA(op), 0);
    EXPECT_EQ(names(work()), (std::vector<std::string>{"BAR001.008", "ENGLST.TXT"}));
    op = operation(files::FO_MOVE, "C:\\TARNBC\\INITEMP\\ENGLST.TXT", "C:\\TARNBC\\ENG.TXT");
    EXPECT_EQ(files::SHFileOperationA(op), 0);
    EXPECT_EQ(TempInstall::readfile(t.drivec() + "/TARNBC/ENG.TXT"), "ENGLST.TXT");
    EXPECT_EQ(names(work()), (std::vector<std::string>{"BAR001.008"}));
}

TEST_F(ShFileOp, FailedWriteAbortsTheRestWithDiskFull)
{
    files::inject::failwriteafter(1);
    auto op = operation(files::FO_COPY, "\\\\10.0.0.200\\tagstore\\BAR*.007", "C:\\TARNBC\\INITEMP\\");
    EXPECT_EQ(files::SHFileOperationA(op), 112);
    EXPECT_EQ(op.fAnyOperationsAborted, 1);
    EXPECT_EQ(files::GetLastError(), 112u);
    EXPECT_EQ(names(work()), (std::vector<std::string>{"BAR001.007"}));
    // The next try works: the fault hit one write.
    EXPECT_EQ(files::SHFileOperationA(op), 0);
    EXPECT_EQ(op.fAnyOperationsAborted, 0);
    EXPECT_EQ(names(work()).size(), 3u);
}

TEST_F(ShFileOp, ReadOnlyFolderRefusesCopyAndDelete)
{
    files::makefolder("C:\\TARNBC");
    files::makefolder("C:\\TARNBC\\INITEMP");
    TempInstall::writefile(work() + "/KEEP.INI", "k");
    files::inject::readonlyfolder("C:\\TARNBC\\INITEMP");
    auto op = operation(files::FO_COPY, "\\\\10.0.0.200\\tagstore\\BAR*.007", "C:\\TARNBC\\INITEMP\\");
    EXPECT_EQ(files::SHFileOperationA(op), 5);
    EXPECT_EQ(op.fAnyOperationsAborted, 1);
    op = operation(files::FO_DELETE, "C:\\TARNBC\\INITEMP\\*.INI");
    EXPECT_EQ(files::SHFileOperationA(op), 5);
    EXPECT_EQ(files::GetLastError(), 5u);
    EXPECT_EQ(names(work()), (std::vector<std::string>{"KEEP.INI"}));
}

TEST_F(ShFileOp, VanishedShareIsABadNetPathBothWays)
{
    files::makefolder("C:\\TARNBC");
    files::makefolder("C:\\TARNBC\\INITEMP");
    TempInstall::writefile(work() + "/BAR001.007", "merged");
    files::inject::vanishshare("\\\\10.0.0.200\\tagstore");

    auto down = operation(files::FO_COPY, "\\\\10.0.0.200\\tagstore\\BAR*.007", "C:\\TARNBC\\INITEMP\\");
    EXPECT_NE(files::SHFileOperationA(down), 0);
    EXPECT_EQ(files::GetLastError(), 53u);

    auto up = operation(files::FO_COPY, "C:\\TARNBC\\INITEMP\\BAR*.007", "\\\\10.0.0.200\\tagstore\\");
    EXPECT_EQ(files::SHFileOperationA(up), 53);
    EXPECT_EQ(up.fAnyOperationsAborted, 1);
    EXPECT_EQ(files::GetLastError(), 53u);
    EXPECT_EQ(TempInstall::readfile(store + "/BAR001.007"), "BAR001.007");
}

}  // namespace

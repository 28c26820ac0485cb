#include "support/testdirs.h"
#include <QProcess>
#include <gtest/gtest.h>

#include "support/tempinstall.h"

namespace {

struct ToolRun {
    int code = -1;
    std::string out, err;
};

ToolRun vexalini(const QStringList& args)
{
    QProcess p;
    p.start(QString(VEXAL_BINARY_DIR) + "/tools/vexal-ini/vexal-ini", args);
    p.waitForFinished(10000);
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1, p.readAllStandardOutput().toStdString(),
            p.readAllStandardError().toStdString()};
}

TEST(VexalIni, GetSetDeleteOnAHostFile)
{
    TempInstall t;
    QString file = QString::fromStdString(t.root() + "/TAGSTORE.INI");
    TempInstall::writefile(file.toStdString(), "; settings\n[SAVE]\nIP=10.0.0.200#\n");

    EXPECT_EQ(vexalini({"set", file, "save", "TNO", "7"}).code, 0);
    EXPECT_EQ(vexalini({"set", file, "MISC", "MARGIN", "5"}).code, 0);
    EXPECT_EQ(TempInstall::readfile(file.toStdString()),
              "; settings\n[SAVE]\nIP=10.0.0.200#\nTNO=7\r\n[MISC]\r\nMARGIN=5\r\n");

    ToolRun r = vexalini({"get", file, "SAVE", "ip", "x"});
    EXPECT_EQ(r.code, 0);
    EXPECT_EQ(r.out, "11\n10.0.0.200#\n");
    EXPECT_EQ(vexalini({"get", file, "SAVE", "IP", "x", "5"}).out, "4\n10.0\n");
    EXPECT_EQ(vexalini({"get", file, "SAVE", "NONE", "default   "}).out, "7\ndefault\n");

    EXPECT_EQ(vexalini({"delete", file, "SAVE", "IP"}).code, 0);
    EXPECT_EQ(vexalini({"delete", file, "misc"}).code, 0);
    EXPECT_EQ(TempInstall::readfile(file.toStdString()), "; settings\n[SAVE]\nTNO=7\r\n");
}

TEST(VexalIni, ErrorsGoToStderrWithNonZeroExit)
{
    TempInstall t;
    ToolRun r = vexalini({"set", QString::fromStdString(t.root() + "/none/X.INI"), "S", "K", "V"});
    EXPECT_NE(r.code, 0);
    EXPECT_NE(r.err.find("none/X.INI"), std::string::npos);
    EXPECT_NE(vexalini({"get", "x.ini", "S"}).code, 0);
    EXPECT_NE(vexalini({"get", "x.ini", "S", "K", "D", "many"}).code, 0);
    EXPECT_NE(vexalini({"frobnicate", "x.ini"}).code, 0);
    EXPECT_FALSE(vexalini({"frobnicate", "x.ini"}).err.empty());
}

}  // namespace

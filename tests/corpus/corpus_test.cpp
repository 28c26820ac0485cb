// The decoder corpus: every recorded download in tests/corpus run through vexal-decode, in
// normal and in repair running, and diffed against its golden output. scripts/regen-goldens
// rebuilds the goldens.
#include "support/testdirs.h"
#include <QDir>
#include <QProcess>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace {

const std::string corpus = std::string(VEXAL_SOURCE_DIR) + "/tests/corpus";
const std::string decoder = std::string(VEXAL_BINARY_DIR) + "/tools/vexal-decode/vexal-decode";

struct Recording {
    std::string mode;   // "opl" or "csp"
    std::string path;   // the recording, without its extension
    std::string ext;
    bool repair;
};

void PrintTo(const Recording& r, std::ostream* os) { *os << r.path << "." << r.ext << (r.repair ? " --repair" : ""); }

std::vector<Recording> recordings()
{
    std::vector<Recording> all;
    for (auto [mode, ext] : {std::pair{"opl", "raw"}, std::pair{"csp", "bin"}}) {
        QDir dir(QString::fromStdString(corpus + "/" + mode));
        for (const QString& name : dir.entryList({QString("*.") + ext}, QDir::Files, QDir::Name))
            for (bool repair : {false, true})
                all.push_back({mode, corpus + "/" + mode + "/" + QFileInfo(name).completeBaseName().toStdString(), ext,
                               repair});
    }
    return all;
}

std::string readfile(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

class Corpus : public ::testing::TestWithParam<Recording> {};

TEST_P(Corpus, MatchesItsGolden)
{
    const Recording& r = GetParam();
    const std::string stem = r.path + (r.repair ? ".repair" : "");
    ASSERT_FALSE(readfile(r.path + ".txt").empty()) << "every recording says what it exercises";
    const std::string golden = readfile(stem + ".out");
    ASSERT_FALSE(golden.empty()) << stem << ".out missing: run scripts/regen-goldens";

    QProcess run;
    QStringList args{QString::fromStdString(r.mode), QString::fromStdString(r.path + "." + r.ext)};
    if (r.repair) args << "--repair";
    run.start(QString::fromStdString(decoder), args);
    ASSERT_TRUE(run.waitForFinished(60000)) << "vexal-decode did not finish";
    EXPECT_EQ(run.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_EQ(run.readAllStandardOutput().toStdString(), golden);
    EXPECT_EQ(run.readAllStandardError().toStdString(), readfile(stem + ".err"));
}

std::string testname(const ::testing::TestParamInfo<Recording>& info)
{
    std::string name = info.param.mode + "_" + info.param.path.substr(info.param.path.rfind('/') + 1) +
                       (info.param.repair ? "_repair" : "");
    for (auto& c : name)
        if (!isalnum((unsigned char)c)) c = '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(Recordings, Corpus, ::testing::ValuesIn(recordings()), testname);

}  // namespace

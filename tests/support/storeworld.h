// A store test's world: a pipeline test's install with BAR999.INI in the install folder, the
// server 127.0.0.1 whose share \\127.0.0.1\tagstore is a real folder, terminal number 007,
// and no injected faults.
#pragma once
#include "support/testdirs.h"

#include "pipeline/pipelinefixture.h"
#include "platform/icmp.h"
#include "platform/profile.h"

class StoreTest : public PipelineTest {
public:
    // A BAR file's bytes: the section of `scanner`, key 000, then keys 001... for `lines`.
    static std::string barbytes(const std::string& scanner, const std::string& header,
                                const std::vector<std::string>& lines)
    {
        std::string b = "[000000" + scanner + "]\r\n000=" + header + "\r\n";
        for (size_t i = 0; i < lines.size(); ++i) b += Format((long long)i + 1, "000") + "=" + lines[i] + "\r\n";
        return b;
    }
    static std::string masterbytes(const std::string& count) { return "[FILES]\r\nFILES=" + count + "\r\n"; }

protected:
    void SetUp() override
    {
        PipelineTest::SetUp();
        files::inject::reset();
        icmp::inject::reset();
        TempInstall::writefile(install.root() + "/BAR999.INI",
                               TempInstall::readfile(std::string(VEXAL_SOURCE_DIR) + "/resources/BAR999.INI"));
        g().serverip = "127.0.0.1";
        g().terminalno = "007";
        share = install.addshare("\\\\127.0.0.1\\tagstore");
    }
    void TearDown() override
    {
        files::inject::reset();
        icmp::inject::reset();
        PipelineTest::TearDown();
    }

    void put(const std::string& winpath, const std::string& bytes) { TempInstall::writefile(install.host(winpath), bytes); }
    std::string get(const std::string& winpath) const { return TempInstall::readfile(install.host(winpath)); }
    bool has(const std::string& winpath) const { return files::exists(winpath); }

    // Today's log lines that carry `text`.
    long logcount(const std::string& text) const
    {
        long n = 0;
        for (const auto& l : loglines())
            if (l == text) ++n;
        return n;
    }
    bool logged(const std::string& text) const { return logcount(text) > 0; }

    // Message boxes of the transcript by title.
    std::vector<dialogs::Entry> boxes(const std::string& title) const
    {
        std::vector<dialogs::Entry> out;
        for (const auto& e : dialogs::transcript())
            if (e.title == title) out.push_back(e);
        return out;
    }

    std::string share;   // host folder of \\127.0.0.1\tagstore
};

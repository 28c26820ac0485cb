// The real program in a real install: each test installs this build (cmake --install) into
// a temporary folder, writes what it needs beside it and starts `vexalbc` there offscreen.
// Message boxes are answered from answers.txt and written to transcript.txt.
//
// The program's clock can run `clockshift` seconds away from the real one (libfaketime,
// monotonic clock left alone so the timers keep real time); with `clockfile` the shift is
// read from that file on every clock read, so a test can move it while the program runs.
#pragma once
#include "support/testdirs.h"

#include <QDate>
#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <gtest/gtest.h>
#include <functional>
#include <map>
#include <string>
#include <vector>

class ProcessTest : public ::testing::Test {
protected:
    QTemporaryDir dir;
    std::string root;
    std::vector<QProcess*> running;
    qint64 clockshift = 0;
    std::string clockfile;

    void SetUp() override
    {
        root = dir.path().toStdString();
        QProcess install;
        install.start("cmake", {"--install", VEXAL_BINARY_DIR, "--prefix", QString::fromStdString(root)});
        ASSERT_TRUE(install.waitForFinished(60000));
        ASSERT_EQ(install.exitCode(), 0) << install.readAllStandardError().toStdString();
        write("platform.ini", "[dialogs]\nanswers=answers.txt\ntranscript=transcript.txt\n");
        write("answers.txt", "Remote Store Location Not Responding => No\n");
    }
    void TearDown() override
    {
        for (QProcess* p : running) {
            p->kill();
            p->waitForFinished(5000);
            delete p;
        }
    }

    void write(const std::string& name, const std::string& bytes)
    {
        QFile f(QString::fromStdString(root + "/" + name));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly)) << name;
        f.write(bytes.data(), (qint64)bytes.size());
    }
    std::string read(const std::string& name) const
    {
        QFile f(QString::fromStdString(root + "/" + name));
        return f.open(QIODevice::ReadOnly) ? f.readAll().toStdString() : std::string();
    }

    // The program's idea of now, and the log of a day by its clock.
    QDateTime programnow() const { return QDateTime::currentDateTime().addSecs(clockshift); }
    std::string log(const QDate& day) const { return read("LOGS/" + day.toString("dd").toStdString() + "_LOG.TXT"); }
    std::string log() const { return log(programnow().date()); }

    // libfaketime, or "" when it is not installed.
    static std::string libfaketime()
    {
        for (const char* p : {"/usr/lib/x86_64-linux-gnu/faketime/libfaketime.so.1",
                              "/usr/lib/aarch64-linux-gnu/faketime/libfaketime.so.1", "/usr/lib/faketime/libfaketime.so.1",
                              "/usr/local/lib/faketime/libfaketime.so.1"})
            if (QFile::exists(p)) return p;
        return "";
    }
    // The text libfaketime takes for a shift of `seconds`.
    static std::string shifttext(qint64 seconds) { return (seconds < 0 ? "" : "+") + std::to_string(seconds); }
    // Moves the clock of a program started with `clockfile` set.
    void setclockfile(qint64 seconds)
    {
        clockshift = seconds;
        write(clockfile, shifttext(seconds) + "\n");
    }

    QProcess* start(const QStringList& args = {})
    {
        auto* p = new QProcess;
        auto env = QProcessEnvironment::systemEnvironment();
        env.insert("QT_QPA_PLATFORM", "offscreen");
        if (clockshift != 0 || !clockfile.empty()) {
            env.insert("LD_PRELOAD", QString::fromStdString(libfaketime()));
            env.insert("DONT_FAKE_MONOTONIC", "1");
            if (clockfile.empty()) {
                env.insert("FAKETIME", QString::fromStdString(shifttext(clockshift)));
            } else {
                setclockfile(clockshift);
                env.insert("FAKETIME_TIMESTAMP_FILE", QString::fromStdString(root + "/" + clockfile));
                env.insert("FAKETIME_NO_CACHE", "1");
            }
        }
        p->setProcessEnvironment(env);
        p->setWorkingDirectory(QString::fromStdString(root));
        p->start(QString::fromStdString(root + "/vexalbc"), args);
        running.push_back(p);
        EXPECT_TRUE(p->waitForStarted(5000));
        return p;
    }
    // Polls every 50 ms until `done` holds or `ms` pass.
    static bool waituntil(const std::function<bool()>& done, int ms = 15000)
    {
        QElapsedTimer t;
        t.start();
        while (!done()) {
            if (t.elapsed() > ms) return done();
            QThread::msleep(50);
        }
        return true;
    }
    // Waits until the log of the program's day holds `text`.
    bool waitforlog(const std::string& text, int ms = 15000)
    {
        return waituntil([&] { return log().find(text) != std::string::npos; }, ms);
    }
    // Every file of the install with its bytes.
    std::map<std::string, std::string> snapshot() const
    {
        std::map<std::string, std::string> all;
        QDirIterator it(QString::fromStdString(root), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            QString path = it.next();
            QFile f(path);
            f.open(QIODevice::ReadOnly);
            all[path.toStdString()] = f.readAll().toStdString();
        }
        return all;
    }
    // Ends the first run's wait by marking the settings as set up (as the setup screen's
    // save does), so the next start takes the normal path.
    void setupdone(const std::string& savetype = "0")
    {
        std::string ini = read("TAGSTORE.INI");
        auto mark = [&](const std::string& from, const std::string& to) {
            size_t at = ini.find(from);
            ASSERT_NE(at, std::string::npos) << from;
            ini.replace(at, from.size(), to);
        };
        mark("RUN=0", "RUN=1");
        size_t save = ini.find("[SAVE]");
        ASSERT_NE(save, std::string::npos);
        size_t type = ini.find("TYPE=", save);
        ini.replace(type + 5, 1, savetype);
        write("TAGSTORE.INI", ini);
    }
};

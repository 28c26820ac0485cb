// Pictures for docs/screens/ of what the user sees on a real X server: an automatic download
// of an OPL 972x with the main screen hidden (status screen, progress balls, tray icon), and
// the corrupt data screen during a repair. They are taken only when VEXAL_SHOTS names a
// folder and the program draws on X (scripts/screens-auto); otherwise the tests are skipped.
// Each picture is checked for what it must show before it is written.
#include "support/testdirs.h"
#include <QDir>
#include <QElapsedTimer>
#include <QTimer>
#include <functional>

#include "core/form9.h"
#include "core/iconstate.h"
#include "core/trayicon.h"
#include "downloadfixture.h"
#include "pipeline/autodownload.h"
#include "pipeline/form12.h"
#include "platform/tray.h"
#include "support/screengrab.h"

namespace {

// Runs `step` on every pass of the event loop while a routine under test waits, until it is
// stopped; a step that itself lets events run is not entered twice.
class Watcher {
public:
    explicit Watcher(std::function<void()> step) : step_(std::move(step))
    {
        QObject::connect(&timer_, &QTimer::timeout, [this] {
            if (busy_) return;
            busy_ = true;
            step_();
            busy_ = false;
        });
        timer_.start(0);
    }
    ~Watcher() { timer_.stop(); }

private:
    std::function<void()> step_;
    QTimer timer_;
    bool busy_ = false;
};

// The lines of an OPL 972x: engineer 01 clocking jobs through one morning.
std::string morning(int lines)
{
    std::string text;
    for (int i = 0; i < lines; ++i) {
        const int minutes = 8 * 60 + 7 * i;
        text += "000112" + Format((long long)(345600 + i), "000000") + "0,090307," +
                Format((long long)(minutes / 60 * 100 + minutes % 60), "0000") + "\n";
    }
    return text;
}

}  // namespace

class Screens : public DownloadTest {
protected:
    void SetUp() override
    {
        if (screengrab::shotsdir().isEmpty()) GTEST_SKIP() << "VEXAL_SHOTS is not set";
        if (!screengrab::realdisplay()) GTEST_SKIP() << "pictures need an X server (QT_QPA_PLATFORM=xcb)";
        DownloadTest::SetUp();
        // The tray and the monitor form take their pictures from the install's icons folder.
        const QString icons = QString::fromStdString(install.host(g().homedir + "icons"));
        QDir().mkpath(icons);
        const QDir from(QString(VEXAL_SOURCE_DIR) + "/resources/icons");
        for (const QString& f : from.entryList({"*.ico"})) QFile::copy(from.filePath(f), icons + "/" + f);
    }
    void TearDown() override
    {
        if (screengrab::shotsdir().isEmpty() || !screengrab::realdisplay()) return;
        removetrayicon();
        DownloadTest::TearDown();
    }

    // The bottom right corner of the display from the status screen's frame: the status
    // screen and the notification area beside it.
    static QImage corner(const QImage& display)
    {
        const QRect status = screengrab::framed(form16()).adjusted(-8, -8, 0, 0);
        return display.copy(QRect(status.topLeft(), display.rect().bottomRight()));
    }
    // The notification area: the tray panel of scripts/screens-auto in the display's bottom
    // right corner, found where the corner differs from the desktop while no screen is
    // shown there.
    static QRect traypanel(const QImage& display)
    {
        const QRgb desktop = display.pixel(0, display.height() - 1);
        QRect panel;
        for (int y = display.height() - 64; y < display.height(); ++y)
            for (int x = display.width() - 96; x < display.width(); ++x)
                if (display.pixel(x, y) != desktop) panel |= QRect(x, y, 1, 1);
        return panel;
    }
    static void save(const QImage& image, const char* name)
    {
        EXPECT_GT(screengrab::colours(image), 4) << name << " looks blank";
        EXPECT_TRUE(screengrab::save(image, name)) << name;
    }
};

TEST_F(Screens, AutomaticDownloadOfAnOplWithTheMainScreenHidden)
{
    const int lines = 40;
    // A slow line, so that the balls can be seen filling: about six seconds for the lines.
    dock(1, {"--id", "123", "--battery", "85", "--baud", "9600", "--records", records(morning(lines))});
    Globals& s = g();
    s.scannerauto[1] = 1;
    s.automaticactive = 1;
    s.savetype = 0;
    s.datecheck = platform::clock::now().toString("ddMMyyyy").toStdString();
    form9().seticon("icons\\vexalgrey.ico");
    addtrayicon();
    reseticons();
    ASSERT_FALSE(form1().isVisible());

    // Idle with automatic on: the tray turns through its animation.
    for (int i = 0; i < 4; ++i) timer1tick();
    EXPECT_EQ(form9().iconpath(), "icons\\vexalauto3.ico");
    const QImage idle = screengrab::display(300);
    const QRect panel = traypanel(idle);
    ASSERT_FALSE(panel.isEmpty()) << "no tray panel in the display's corner";
    const auto trayicon = [&](const QImage& display) { return screengrab::enlarged(display.copy(panel), 3); };
    std::vector<QImage> tray = {trayicon(idle)};

    QImage start, middle, full;
    int middlecount = 0;
    Watcher watch([&] {
        Form16& status = form16();
        Form6& balls = form6();
        if (start.isNull() && status.isVisible() && status.ScanData.caption() == "Getting Data" &&
            form9().iconpath() == "icons\\store.ico") {
            const QImage d = screengrab::display(300);
            start = corner(d);
            tray.push_back(trayicon(d));
        }
        if (!balls.isVisible()) return;
        const int filled = (int)Val(balls.TimeCount.value());
        if (middle.isNull() && filled >= 4 && filled <= 6) {
            const QImage d = screengrab::display();
            middle = screengrab::row({d.copy(screengrab::framed(balls)), corner(d)});
            middlecount = filled;
        }
        // The last picture of the balls before the screen goes is the full row.
        if (filled >= 9) {
            const QImage d = screengrab::display(0);
            full = screengrab::row({d.copy(screengrab::framed(balls)), corner(d)});
        }
    });
    timer2tick();

    EXPECT_EQ(s.runmode, 0);
    EXPECT_EQ(s.autoscannerwait, 10);
    EXPECT_EQ(held(6), 0) << "the scanner is cleared after the download";
    ASSERT_FALSE(start.isNull()) << "the status screen never showed Getting Data";
    ASSERT_FALSE(middle.isNull()) << "no picture with half the balls";
    ASSERT_FALSE(full.isNull()) << "no picture with every ball";
    EXPECT_GE(middlecount, 4);
    EXPECT_EQ(form16().SaveData.caption(), Format((long long)lines, "000") + " / " + Format((long long)lines, "000"));
    EXPECT_TRUE(form16().SaveLabel.bold());
    EXPECT_EQ(form9().iconpath(), "icons\\store.ico") << "the store symbol stays until Timer1's next tick";
    const QImage saved = screengrab::display(300);
    EXPECT_TRUE(form16().isVisible());

    // The next tick of Timer1 takes the animation up again.
    timer1tick();
    tray.push_back(trayicon(screengrab::display(300)));

    save(start, "auto-1-start");
    save(middle, "auto-2-middle");
    save(full, "auto-3-balls-full");
    save(corner(saved), "auto-4-saved");
    save(screengrab::row(tray), "auto-tray");
}

TEST_F(Screens, CorruptDataScreenThroughARepair)
{
    // The scanner is 10 days ahead. Two lines of yesterday were stamped before its clock went
    // wrong, one stamp lies 37 days on, and three of this morning carry the scanner's wrong
    // date, 10 days ahead.
    dock(1, {"--id", "123", "--battery", "85", "--clock-offset", clockoffset(10 * 1440), "--records",
             records("0001123456780,080307,0830\n0002876543210,080307,1745\n0001555555550,150407,0700\n"
                     "0001123456780,190307,0815\n0002876543210,190307,0940\n0001990000010,190307,1030\n")});
    g().savetype = 0;
    reseticons();
    Form12& repair = form12();

    QImage asread, processing;
    bool userpass = false;
    Watcher watch([&] {
        if (!repair.isVisible() || repair.List1.listcount() == 0) return;
        const std::string last = repair.List1.list(repair.List1.listcount() - 1);
        // The lines as read, while the screen pauses before its automatic pass.
        if (asread.isNull() && repair.Timer1.isActive() && repair.List1.listcount() == 6 &&
            last != "PROCESSING LINE")
            asread = screengrab::display(200).copy(screengrab::framed(repair));
        // A line being shifted, after the user's choice.
        if (userpass && processing.isNull() && repair.List1.listcount() == 5 && last == "PROCESSING LINE")
            processing = screengrab::display(0).copy(screengrab::framed(repair));
    });
    dialogs::queueanswer(vbYes);
    emit form1().Transfer.clicked();

    ASSERT_TRUE(repair.isVisible());
    ASSERT_FALSE(asread.isNull()) << "the screen never showed the lines as read";
    EXPECT_EQ(repair.daysshift(), 10);
    EXPECT_EQ(repair.List1.list(2), "01 55 555555 At 07:00 05-Apr-07 Thu") << "the far line comes back 10 days";
    EXPECT_EQ(repair.List1.list(3), "01 12 345678 At 08:15 19-Mar-07 Mon") << "within 30 days: left for the user";
    const QImage opened = screengrab::display(200).copy(screengrab::framed(repair));

    // The user picks the first of this morning's lines; it and those below go back 10 days.
    repair.List1.setlistindex(3);
    userpass = true;
    emit repair.List1.doubleclicked();
    ASSERT_FALSE(processing.isNull()) << "no picture of a line being processed";
    EXPECT_EQ(repair.List1.list(3), "01 12 345678 At 08:15 09-Mar-07 Fri");
    EXPECT_EQ(repair.List1.list(5), "01 99 000001 At 10:30 09-Mar-07 Fri");
    const QImage chosen = screengrab::display(200).copy(screengrab::framed(repair));

    emit repair.Delete.clicked();
    EXPECT_FALSE(repair.isVisible());
    EXPECT_TRUE(hasline("Scanner Update Successful!"));

    save(asread, "repair-1-as-read");
    save(opened, "repair-2-opened");
    save(processing, "repair-3-processing");
    save(chosen, "repair-4-before-accept");
}

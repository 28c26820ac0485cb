// Timer1's icon state machine: the rows of its table, the animation, the forced red while the
// store is down, when it stops itself, and the day test.
#include "support/testdirs.h"
#include <QDir>
#include <QFile>

#include "core/exit.h"
#include "core/form9.h"
#include "core/iconstate.h"
#include "core/runtimeerror.h"
#include "core/imagelists.h"
#include "pipeline/autodownload.h"
#include "pipeline/form1.h"
#include "pipeline/pipelinefixture.h"
#include "platform/clock.h"
#include "platform/tray.h"
#include "core/trayicon.h"

namespace {

class IconStateTest : public PipelineTest {
protected:
    void SetUp() override
    {
        PipelineTest::SetUp();
        const QString icons = QString::fromStdString(install.root() + "/icons");
        QDir().mkpath(icons);
        for (const QString& name : QDir(QString(VEXAL_SOURCE_DIR) + "/resources/icons").entryList(QDir::Files))
            QFile::copy(QString(VEXAL_SOURCE_DIR) + "/resources/icons/" + name, icons + "/" + name);
        platform::clock::set(QDateTime(QDate(2007, 3, 9), QTime(14, 5)));
        g().datecheck = "09032007";
        form9().seticon("icons\\vexalgrey.ico");
        form9().iconm1 = "0";
        form9().iconm2 = "0";
        addtrayicon();
        setprocessend([this] { ++ended; });
    }
    void TearDown() override
    {
        setprocessend(nullptr);
        removetrayicon();
        form9().Timer1.stop();
        platform::clock::reset();
        PipelineTest::TearDown();
    }
    // Which scanners are used and on AUTO: "ua" pairs per scanner, as "11 10 00".
    static void scanners(const char* pairs)
    {
        for (int i = 1; i <= 3; ++i) {
            g().scannerused[i] = pairs[(i - 1) * 3] - '0';
            g().scannerauto[i] = pairs[(i - 1) * 3 + 1] - '0';
        }
    }
    // One tick with Timer1 running; the tray icon's file and the Status ball after it.
    std::pair<std::string, int> tick()
    {
        setinterval(form9().Timer1, 1000);
        guarded(timer1tick);   // the ending of the process unwinds to here
        return {form9().iconpath(), form1().Status.pictureindex()};
    }
    int ended = 0;
};

struct Row {
    const char* name;
    int storestate, pressedop, automaticactive;
    const char* scanners;   // used and AUTO per scanner
    const char* iconm1;
    const char* iconm2;
    const char* icon;
    int ball;
    const char* nextm1;
    const char* nextm2;
    bool keepsrunning;      // Timer1 still armed after the tick
};

const Row rows[] = {
    {"ToolScreenOpen", 0, 1, 1, "11 00 00", "3", "0", "vexalyellow.ico", 14, "3", "0", true},
    {"ToolScreenNoAuto", 0, 1, 0, "10 00 00", "3", "0", "vexalyellow.ico", 14, "3", "0", true},
    {"AnimationFirstStep", 0, 0, 1, "11 00 00", "0", "0", "vexalgrey.ico", 13, "1", "0", true},
    {"AnimationStepFive", 0, 0, 1, "11 00 00", "5", "0", "vexalauto5.ico", 10, "6", "0", true},
    {"AnimationLastStep", 0, 0, 1, "11 00 00", "7", "0", "vexalauto7.ico", 12, "0", "0", true},
    {"AutomaticOffBlue", 0, 0, 0, "11 00 00", "1", "0", "vexalblue.ico", 16, "1", "1", true},
    {"AutomaticOffGrey", 0, 0, 0, "11 00 00", "1", "1", "vexalgrey.ico", 13, "1", "0", true},
    // AUTO on an unused scanner still blinks, but the timer stops.
    {"AutoOnUnusedScanner", 0, 0, 0, "01 10 00", "1", "0", "vexalblue.ico", 16, "1", "1", false},
    {"NoAuto", 0, 0, 0, "10 10 00", "4", "0", "vexalyellow.ico", 14, "4", "0", false},
    {"StoreDownRed", 2, 0, 1, "11 11 00", "1", "0", "vexalred.ico", 17, "2", "0", true},
    {"StoreDownToolScreen", 2, 1, 1, "11 00 00", "2", "0", "vexalyellow.ico", 14, "1", "0", true},
    {"StoreDownAutomatic", 2, 0, 1, "11 00 00", "2", "0", "vexalauto4.ico", 9, "1", "0", true},
    {"StoreDownAutomaticOff", 2, 0, 0, "11 00 00", "0", "0", "vexalblue.ico", 16, "1", "0", true},
    // Both other scanners on AUTO: no forced red either.
    {"StoreDownOthersOnAuto", 2, 0, 0, "10 11 11", "2", "0", "vexalblue.ico", 16, "1", "0", true},
    // Forced red: the OPL 972x not on AUTO and one of the others not either.
    {"StoreDownForcedRed", 2, 0, 1, "10 11 00", "2", "0", "vexalred.ico", 17, "2", "0", true},
    {"StoreDownNoAutoForcedRed", 4, 0, 0, "10 00 00", "0", "0", "vexalred.ico", 17, "2", "0", false},
};

class IconRows : public IconStateTest, public ::testing::WithParamInterface<Row> {};

TEST_P(IconRows, IconBallAndNextStep)
{
    const Row& r = GetParam();
    Globals& s = g();
    s.storestate = r.storestate;
    s.pressedop = r.pressedop;
    s.automaticactive = r.automaticactive;
    scanners(r.scanners);
    form9().iconm1 = r.iconm1;
    form9().iconm2 = r.iconm2;
    const auto [icon, ball] = tick();
    EXPECT_EQ(icon, std::string("icons\\") + r.icon);
    EXPECT_EQ(ball, r.ball);
    EXPECT_EQ(form1().Status.picturelist(), "Balls");
    EXPECT_EQ(form9().iconm1, r.nextm1);
    EXPECT_EQ(form9().iconm2, r.nextm2);
    EXPECT_EQ(form9().Timer1.isActive(), r.keepsrunning);
    EXPECT_EQ(tray::tip(), "Vexal Barcoding") << "the tray took the new icon";
    EXPECT_EQ(ended, 0);
}

INSTANTIATE_TEST_SUITE_P(Table, IconRows, ::testing::ValuesIn(rows),
                         [](const ::testing::TestParamInfo<Row>& info) { return std::string(info.param.name); });

TEST_F(IconStateTest, AnimationWalksEightStepsAndStoreDownAlternatesOnlyWhenNotForced)
{
    Globals& s = g();
    scanners("11 00 00");
    s.automaticactive = 1;
    std::vector<int> balls;
    for (int i = 0; i < 9; ++i) balls.push_back(tick().second);
    EXPECT_EQ(balls, (std::vector<int>{13, 6, 7, 8, 9, 10, 11, 12, 13}));
    EXPECT_EQ(form9().iconpath(), "icons\\vexalgrey.ico");

    // The store goes down: with the OPL 972x on automatic red (the step stands at 1) alternates
    // with the animation's fourth picture ...
    s.storestate = 3;
    std::vector<std::string> icons;
    for (int i = 0; i < 4; ++i) icons.push_back(tick().first);
    EXPECT_EQ(icons, (std::vector<std::string>{"icons\\vexalred.ico", "icons\\vexalauto4.ico", "icons\\vexalred.ico",
                                               "icons\\vexalauto4.ico"}));
    // ... without it, red holds on every tick.
    scanners("10 01 00");
    icons.clear();
    for (int i = 0; i < 3; ++i) icons.push_back(tick().first);
    EXPECT_EQ(icons, (std::vector<std::string>(3, "icons\\vexalred.ico")));
}

TEST_F(IconStateTest, ARunningOperationLeavesTheIconAsTheDownloadSetIt)
{
    Globals& s = g();
    scanners("11 00 00");
    s.automaticactive = 1;
    form9().seticon("icons\\store.ico");
    form1().Status.setpicture(MiscIcons(), 3);
    form9().iconm1 = "3";
    for (Int16 mode : {1, 2, 4, 5}) {
        s.runmode = mode;
        tick();
        EXPECT_EQ(form9().iconpath(), "icons\\store.ico");
        EXPECT_EQ(form1().Status.picturelist(), "MiscIcons");
        EXPECT_EQ(form9().iconm1, "3");
        EXPECT_TRUE(form9().Timer1.isActive());
    }
    // Without a used scanner on automatic the timer stops only once the program is idle.
    scanners("10 00 00");
    tick();
    EXPECT_TRUE(form9().Timer1.isActive());
    s.runmode = 0;
    tick();
    EXPECT_FALSE(form9().Timer1.isActive());
}

TEST_F(IconStateTest, NewDayClosesOnlyWithoutAuto)
{
    Globals& s = g();
    scanners("11 00 00");
    s.automaticactive = 1;
    platform::clock::set(QDateTime(QDate(2007, 3, 10), QTime(0, 0, 1)));
    tick();
    guarded(timer2tick);
    EXPECT_EQ(ended, 0) << "a scanner on AUTO keeps the program over midnight";
    EXPECT_EQ(form9().iconpath(), "icons\\vexalgrey.ico") << "and the tick goes on";

    // Even an unused scanner's AUTO counts; none at all ends the program at the next tick,
    // also with an operation running or the main screen open.
    scanners("10 01 00");
    tick();
    EXPECT_EQ(ended, 0);
    scanners("10 00 00");
    s.runmode = 1;
    form1().show();
    tick();
    EXPECT_EQ(ended, 1);
    s.runmode = 0;
    s.autoscannerwait = 0;
    guarded(timer2tick);
    EXPECT_EQ(ended, 2);
    form1().hide();
}

TEST_F(IconStateTest, StatusClickSwitchesAutomaticExceptDuringTransferReadOrDelete)
{
    Globals& s = g();
    scanners("11 10 00");
    s.automaticactive = 1;
    for (Int16 mode : {1, 2}) {
        s.runmode = mode;
        emit form1().Status.clicked();
        EXPECT_EQ(s.automaticactive, 1);
    }
    // During the repair wait it still switches.
    s.runmode = 4;
    emit form1().Status.clicked();
    EXPECT_EQ(s.automaticactive, 0);
    s.runmode = 0;
    emit form1().Status.clicked();
    EXPECT_EQ(s.automaticactive, 1);
    // It comes on only for a used scanner on AUTO.
    emit form1().Status.clicked();
    scanners("10 01 01");
    emit form1().Status.clicked();
    EXPECT_EQ(s.automaticactive, 0);
}

TEST_F(IconStateTest, TheUncalledSwitchArmsTimersOrStopsTheDownload)
{
    Globals& s = g();
    scanners("11 11 00");
    form9().Timer2.stop();
    startstopauto();
    EXPECT_FALSE(form1().Transfer.isEnabled()) << "every used scanner is on AUTO";
    EXPECT_TRUE(form9().Timer1.isActive());
    EXPECT_FALSE(form9().Timer2.isActive()) << "the CS 1504 is not on AUTO";
    EXPECT_EQ(s.automaticactive, 0) << "it never sets the flag";
    s.automaticactive = 1;
    setinterval(form9().Timer2, 1000);
    startstopauto();
    EXPECT_EQ(s.automaticactive, 0);
    EXPECT_FALSE(form9().Timer2.isActive());
    EXPECT_TRUE(form1().Transfer.isEnabled());
}

}  // namespace

namespace {

TEST_F(IconStateTest, AMissingIconShowsOneRuntimeBoxAndLaterFaultsGoToTheLog)
{
    g().automaticactive = 1;
    g().scannerused[1] = 1;
    g().scannerauto[1] = 1;
    QFile::remove(QString::fromStdString(install.root() + "/icons/vexalgrey.ico"));
    // The box waits for its OK while the timer goes on ticking.
    int ticksinbox = 0;
    dialogs::setwhileopen([&ticksinbox](const std::string&) {
        for (; ticksinbox < 3; ++ticksinbox) guarded(timer1tick);
    });
    guarded(timer1tick);
    dialogs::setwhileopen(nullptr);
    long boxes = 0;
    for (const auto& e : dialogs::transcript()) boxes += e.title == "VEXAL Scanner Interface";
    EXPECT_EQ(boxes, 1);
    EXPECT_EQ(ticksinbox, 3);
    const auto lines = loglines();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "Run-time error '53': File not found"), 3);
}

}  // namespace

// The tray icon, its mouse messages and menu, the display sizes, Timer4's flag file and
// closeforms, in-process through the platform's tray interface.
#include "support/testdirs.h"
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QTimer>

#include "core/exit.h"
#include "core/form9.h"
#include "core/startup.h"
#include "core/trayicon.h"
#include "pipeline/form1.h"
#include "pipeline/pipelinefixture.h"
#include "platform/profile.h"
#include "platform/tray.h"
#include "settings/settingscreate.h"
#include "settings/settingsread.h"

namespace {

class TrayTest : public PipelineTest {
protected:
    void SetUp() override
    {
        PipelineTest::SetUp();
        QDir().mkpath(QString::fromStdString(install.root() + "/icons"));
        for (const char* name : {"vexalgrey.ico", "vexalred.ico"})
            QFile::copy(QString(VEXAL_SOURCE_DIR) + "/resources/icons/" + name,
                        QString::fromStdString(install.root() + "/icons/" + name));
        createsettingsfile();
        connectmonitor();
        form9().seticon("icons\\vexalgrey.ico");
        removetrayicon();
        addtrayicon();
        form1().hide();
        ended = 0;
        setprocessend([this] { ++ended; });
    }
    void TearDown() override
    {
        setprocessend(nullptr);
        removetrayicon();
        PipelineTest::TearDown();
    }
    int ended = 0;
};

TEST_F(TrayTest, IconTipsFollowTheFormsIconAndTheIconGoesOnRemoval)
{
    ASSERT_TRUE(tray::present());
    EXPECT_EQ(tray::tip(), "TaskTray");
    const qint64 grey = tray::icon().pixmap(16, 16).toImage().pixel(8, 5);
    form9().seticon("icons\\vexalred.ico");
    updateicon();
    EXPECT_EQ(tray::tip(), "Vexal Barcoding");
    EXPECT_NE(tray::icon().pixmap(16, 16).toImage().pixel(8, 5), grey);
    EXPECT_THROW(form9().seticon("icons\\nosuch.ico"), Fault);
    removetrayicon();
    EXPECT_FALSE(tray::present());
}

TEST_F(TrayTest, DoubleClicksOpenTheMainScreenAndAMessageDuringTheMenuIsDropped)
{
    tray::sendmouse(&form9().picHook, WM_LBUTTONDBLCLK);
    EXPECT_TRUE(form1().isVisible());
    form1().hide();
    tray::sendmouse(&form9().picHook, WM_RBUTTONDBLCLK);
    EXPECT_TRUE(form1().isVisible());
    form1().hide();

    bool menushown = false;
    QTimer::singleShot(50, [&] {
        menushown = form9().mnuPopup.isVisible();
        tray::sendmouse(&form9().picHook, WM_LBUTTONDBLCLK);   // arrives while the menu is up
        form9().mnuPopup.close();
    });
    tray::sendmouse(&form9().picHook, WM_RBUTTONUP);
    EXPECT_TRUE(menushown);
    EXPECT_FALSE(form1().isVisible());
    tray::sendmouse(&form9().picHook, WM_LBUTTONDBLCLK);   // the mark is clear again
    EXPECT_TRUE(form1().isVisible());
}

TEST_F(TrayTest, MenuHoldsItsEntriesInOrder)
{
    std::vector<std::string> texts;
    for (QAction* a : form9().mnuPopup.actions()) texts.push_back(a->isSeparator() ? "-" : a->text().toStdString());
    EXPECT_EQ(texts, (std::vector<std::string>{"Open &Main", "&Setup", "-", "&Transfer Batch", "-", "&Display Size", "-", "Exit"}));
}

TEST_F(TrayTest, TransferEntryDoesNothingInLocalModeAndSetupRemembersTheCaller)
{
    g().savetype = 0;
    form9().mnuTransfer.trigger();
    EXPECT_EQ(g().pressedop, 0);
    EXPECT_EQ(g().callerof[20], 0);
    g().savetype = 1;
    form9().mnuTransfer.trigger();
    EXPECT_EQ(g().pressedop, 1);
    EXPECT_EQ(g().callerof[20], 9);

    g().pressedop = 0;
    form1().show();
    form9().mnuSetup.trigger();
    EXPECT_EQ(g().callerof[2], 1);
    EXPECT_FALSE(form1().isVisible());
    form9().mnuSetup.trigger();
    EXPECT_EQ(g().callerof[2], 9);
}

TEST_F(TrayTest, DisplaySizeFlipsIsStoredAndTwiceReturnsToTheFirstLayout)
{
    g().displaytype = 0;
    const QSize tall = form1().size();
    form9().mnuDisplay.trigger();
    EXPECT_EQ(g().displaytype, 1);
    EXPECT_GT(form1().width(), tall.width());
    EXPECT_LT(form1().height(), tall.height());
    SettingsReader r;
    r.read("DISPLAY", "TYPE");
    EXPECT_EQ(r.cut(), "1");
    form9().mnuDisplay.trigger();
    EXPECT_EQ(form1().size(), tall);
    SettingsReader again;
    again.read("DISPLAY", "TYPE");
    EXPECT_EQ(again.cut(), "0");
}

TEST_F(TrayTest, FlagFileBringsTheMainScreenUpOnlyWhileTimer4Runs)
{
    files::writeall("c:\\tarnbc\\max.txt", "Do It\r\n");
    setinterval(form9().Timer4, 1000);
    timer4tick();
    EXPECT_TRUE(form1().isVisible());
    EXPECT_FALSE(files::exists("c:\\tarnbc\\max.txt"));
    EXPECT_FALSE(form9().Timer4.isActive());

    // Leaving the main screen by its window arms Timer4 again.
    form1().close();
    EXPECT_TRUE(form9().Timer4.isActive());
    setinterval(form9().Timer4, 0);
}

TEST_F(TrayTest, CloseformsAsksOnlyWithLocalFilesOnAServerAndNoEndsAtOnce)
{
    files::writeall("c:\\tarnbc\\BARCODE.INI", "[FILES]\r\nFILES=002#\r\n");
    g().savetype = 0;
    EXPECT_THROW(closeforms(), Fault);
    EXPECT_TRUE(dialogs::transcript().empty());
    EXPECT_EQ(ended, 1);
    EXPECT_FALSE(tray::present());

    addtrayicon();
    g().savetype = 1;
    dialogs::queueanswer(vbNo);
    EXPECT_THROW(closeforms(), Fault);
    ASSERT_EQ(dialogs::transcript().size(), 1u);
    EXPECT_EQ(dialogs::transcript()[0].title, "Transfer Local Data");
    EXPECT_EQ(dialogs::transcript()[0].flags, vbYesNo + vbQuestion);
    EXPECT_EQ(ended, 2);
    EXPECT_TRUE(files::exists("c:\\tarnbc\\BARCODE.INI"));

    addtrayicon();
    dialogs::queueanswer(vbYes);
    closeforms();   // goes to the transfer screen: the program stays
    EXPECT_EQ(g().callerof[20], 99);
    EXPECT_EQ(ended, 2);
    EXPECT_TRUE(tray::present());
}

}  // namespace

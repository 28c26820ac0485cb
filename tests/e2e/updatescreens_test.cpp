// Pictures for docs/screens/ of the update check and the scanner software update on a real X
// server: the splash with its reminder over it, and the software update screen during the
// operating system load and at "Upload Complete". Taken only when VEXAL_SHOTS names a folder
// and the program draws on X (scripts/screens-auto); otherwise the tests are skipped.
#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <gtest/gtest.h>

#include "core/exit.h"
#include "core/globals.h"
#include "maintenance/form10.h"
#include "maintenance/form19.h"
#include "maintenance/screens.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "support/emulator.h"
#include "support/frmsplash.h"
#include "support/screengrab.h"
#include "support/tempinstall.h"
#include "support/testdirs.h"
#include "support/webhost.h"

namespace {

class UpdateScreens : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (screengrab::shotsdir().isEmpty()) GTEST_SKIP() << "VEXAL_SHOTS is not set";
        if (!screengrab::realdisplay()) GTEST_SKIP() << "pictures need an X server (QT_QPA_PLATFORM=xcb)";
        resetglobals();
        g().homedir = platform::installfolder;
        files::makefolder(g().homedir + "LOGS");
        files::makefolder(g().homedir + "OS");
        dialogs::reset();
        dialogs::cleartranscript();
        setprocessend([] {});
    }
    void TearDown() override
    {
        setprocessend(nullptr);
        platform::clock::reset();
    }
    static void save(const QImage& image, const char* name)
    {
        EXPECT_GT(screengrab::colours(image), 4) << name << " looks blank";
        EXPECT_TRUE(screengrab::save(image, name)) << name;
    }

    TempInstall install;
};

TEST_F(UpdateScreens, SplashWithItsReminder)
{
    files::writeall(g().homedir + "TAGSTORE.INI", "[UPDATE]\r\nNAG=0#\r\n");
    WebHost web;
    web.put("support/Tagstore/support/bcver", "01052011#\r\n");
    ASSERT_TRUE(web.start()) << web.error();
    install.configure("[web]\nupdate=" + web.base() + "\n");
    platform::clock::set(QDateTime(QDate(2011, 5, 26), QTime(8, 30)));
    frmSplash& splash = frmsplash();
    splash.move(200, 150);
    splash.show();

    // The reminder is a real box: pictured while it is up, then answered No.
    QImage picture;
    QTimer::singleShot(800, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box) return;
        const QImage d = screengrab::display(300);
        picture = d.copy(screengrab::framed(splash) | screengrab::framed(*box));
        box->button(QMessageBox::No)->click();
    });
    splash.load();
    splash.Timer1.stop();
    splash.hide();
    ASSERT_FALSE(picture.isNull()) << "the reminder was not shown";
    ASSERT_EQ(dialogs::transcript().size(), 1u);
    EXPECT_EQ(dialogs::transcript()[0].answer, "No");
    save(picture, "frmSplash-reminder");
}

TEST_F(UpdateScreens, SoftwareUpdateDuringTheSystemLoadAndComplete)
{
    dialogs::setunattended(true);
    for (const char* name : {"vexal.S32", "vexalOS.S32", "osver.ini"})
        TempInstall::writefile(install.root() + "/OS/" + name,
                               TempInstall::readfile(std::string(VEXAL_SOURCE_DIR) + "/resources/OS/" + name));
    // The line rate of the cradle, so the load can be seen: about five seconds an image.
    Emulator emu("opl", {"--baud", "19200", "--records", Emulator::writefile(install.root() + "/l.txt", "01,251224,0830\n")});
    ASSERT_TRUE(emu.ready()) << emu.output();
    install.configure(emu.portsection(6));
    g().scannertype = 1;
    g().scannerport[1] = 6;

    Form19& u = form19();
    u.standalone = false;
    u.setupscreen();
    u.move(200, 150);
    u.show();
    QImage loading, complete;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        if (loading.isNull() && u.stage == 1 && u.secondpass == 1 && u.progress >= 40)
            loading = screengrab::display(100).copy(screengrab::framed(u));
        if (complete.isNull() && u.isVisible() && u.Label1.caption() == "Upload Complete")
            complete = screengrab::display(300).copy(screengrab::framed(u));
    });
    watch.start(0);
    u.uploadsoftware();
    watch.stop();
    form10().hide();
    ASSERT_FALSE(loading.isNull()) << "no picture of the system load";
    ASSERT_FALSE(complete.isNull()) << "no picture at Upload Complete";
    save(loading, "Form19-os-load");
    save(complete, "Form19-complete");
}

}  // namespace

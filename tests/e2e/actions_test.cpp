// The main screen's other actions against emulated scanners: Read, Delete, Check, the
// select scanner type screen with several scanners in use, the status screen during a
// download, and the clicks of Settings, the battery caption, Help and the outstanding list.
#include "support/testdirs.h"
#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QImage>
#include <QMouseEvent>
#include <QThread>
#include <csignal>

#include "core/form16.h"
#include "downloadfixture.h"
#include "pipeline/mainactions.h"
#include "support/form18.h"

namespace {

// Counts the times a screen is shown.
struct ShowCounter : QObject {
    int shows = 0;
    bool eventFilter(QObject*, QEvent* e) override
    {
        if (e->type() == QEvent::Show) ++shows;
        return false;
    }
};

}  // namespace

class ScannerAction : public DownloadTest, public ::testing::WithParamInterface<int> {
protected:
    void docktypical() { dock(GetParam(), {"--id", "123", "--battery", "85", "--records", records(GetParam() == 1 ? oplrecords() : csprecords())}); }
};

TEST_P(ScannerAction, ReadOnlyKeepsEverythingWhereItIs)
{
    docktypical();
    reseticons();
    int runmodeatprocessing = -1;
    ListBox::setobserver([&](const ListBox&, const std::string& text) {
        if (text == "Processing Data") runmodeatprocessing = g().runmode;
    });
    emit form1().ReadLabel.clicked();

    const auto rows = activity();
    ASSERT_GE(rows.size(), 3u);
    EXPECT_EQ(rows[0], "Reading Data From Scanner 123");
    EXPECT_EQ(rows[rows.size() - 2], "2 Valid Lines Available For Export");
    EXPECT_EQ(rows.back(), "Data has been read only!");
    EXPECT_EQ(runmodeatprocessing, 2);
    expectidle();
    EXPECT_EQ(g().outcount, 2) << "the lines are processed for display";
    EXPECT_FALSE(has("c:\\tarnbc\\BAR001.INI"));
    EXPECT_FALSE(has("c:\\tarnbc\\BARCODE.INI"));
    EXPECT_TRUE(datalog().empty());
    EXPECT_EQ(stopped(6), 3);
}

TEST_P(ScannerAction, DeleteAsksThenClears)
{
    docktypical();
    reseticons();
    dialogs::queueanswer(vbYes);
    emit form1().Delete.clicked();

    // The OPN 2001 and CS 1504 read the ID as it stands in the scanner; the OPL 972x says none.
    const std::string id = GetParam() == 1 ? "" : "000123";
    EXPECT_EQ(activity(), (std::vector<std::string>{"Reading Data From Scanner " + id, "The Scanner Contains 3 Lines",
                                                    "3 Lines Cleared From The Device"}));
    const auto asked = onebox("Confirm Clearing Of Data");
    EXPECT_EQ(asked.text, "Are You SURE That You Want To Clear The 3 Lines Of Data From The Device Currently Connected?");
    EXPECT_EQ(asked.flags, vbYesNo + vbQuestion);
    EXPECT_TRUE(logged("Delete type 0 selected"));
    EXPECT_TRUE(logged("3 Lines Cleared From The Device"));
    expectidle();
    EXPECT_EQ(stopped(6), 0);
}

TEST_P(ScannerAction, DeleteAnsweredNoKeepsTheData)
{
    docktypical();
    dialogs::queueanswer(vbNo);
    rundelete();
    EXPECT_EQ(activity().back(), "The Scanner Contains 3 Lines");
    EXPECT_EQ(g().runmode, 0);
    EXPECT_EQ(stopped(6), 3);
}

TEST_P(ScannerAction, EmptyScannerIsNeverAskedAbout)
{
    dock(GetParam(), {"--id", "123", "--battery", "85"});
    rundelete();
    EXPECT_EQ(activity().back(), "The Scanner Contains No History To Delete!");
    EXPECT_TRUE(boxes("Confirm Clearing Of Data").empty());

    form1().List2.clear();
    runtransfer();
    std::vector<std::string> expected = {"Reading Data From Scanner 123", "Scanner Belongs To : Fred Bloggs",
                                         "No Items On Scanner", "Aborted due to no records!"};
    if (GetParam() != 1) expected.push_back("Please Remove Scanner");
    EXPECT_EQ(activity(), expected);
    EXPECT_TRUE(logged("No Items On Scanner"));
    EXPECT_FALSE(logged("Delete type 1 selected")) << "nothing to clear after no records";
    // With no lines the OPL 972x's port state stays as the read set it.
    if (GetParam() == 1) {
        EXPECT_EQ(g().oplportstate, 1);
    }
    expectidle();
}

INSTANTIATE_TEST_SUITE_P(EachType, ScannerAction, ::testing::Values(1, 2, 3));

// ---- one type at a time where the types do not differ ----------------------------------

class MainScreen : public DownloadTest {};

TEST_F(MainScreen, ProgressScreenOnlyForMoreThanOneLine)
{
    for (const std::string& text : {std::string("001123456789,1,2007-03-09 08:30:05\n"), csprecords()}) {
        dock(3, {"--id", "123", "--records", records(text)});
        ShowCounter shown;
        form6().installEventFilter(&shown);
        runread();
        form6().removeEventFilter(&shown);
        const bool one = text.size() < 40;
        EXPECT_EQ(shown.shows, one ? 0 : 1);
        EXPECT_TRUE(form6().isHidden());
        EXPECT_TRUE(hasline(one ? "The Scanner Contains 1 Line" : "The Scanner Contains 3 Lines"));
        EXPECT_EQ(activity().back(), "Data has been read only!");
    }
}

TEST_F(MainScreen, StatusScreenFollowsTheDownload)
{
    for (int type : {2, 1}) {
        SCOPED_TRACE(type);
        freshstart();
        dock(type, {"--id", "123", "--battery", "85", "--records", records(type == 1 ? oplrecords() : csprecords())});
        Form16& status = form16();
        status.setupstatus();
        status.show();
        runread();
        EXPECT_EQ(status.ScanData.caption(), "FRED BLOGGS 123") << "the engineer as the list has him";
        EXPECT_EQ(status.ScanData.forecolor(), colorbox(11));
        // The copy loop counts from 1; the OPL 972x's progress event gives positions from 0.
        EXPECT_EQ(status.DownData.caption(), type == 1 ? "002 / 003" : "003 / 003");
        EXPECT_FALSE(status.DownData.isHidden());
        status.hide();
    }
}

TEST_F(MainScreen, NoScannersConfigured)
{
    for (void (*action)() : {&runtransfer, &runread, &rundelete}) {
        form1().List2.clear();
        action();
        EXPECT_EQ(activity(), std::vector<std::string>{"No scanners configured for use!"});
        expectidle();
    }
    // Check hides the main screen and leaves it so.
    form1().show();
    runcheck();
    EXPECT_TRUE(form1().isHidden());
    EXPECT_TRUE(form10().isHidden());
    EXPECT_EQ(g().pressedop, 0);
}

TEST_F(MainScreen, CheckOpensTheScannerScreen)
{
    dock(2, {"--id", "123"});
    form1().show();
    emit form1().CheckLabel.clicked();
    EXPECT_TRUE(form10().isVisible());
    EXPECT_TRUE(form1().isHidden());
    EXPECT_EQ(g().pressedop, 2);
    EXPECT_EQ(g().callerof[10], 1);
    EXPECT_EQ(form10().STypeL.caption(), "Opticon OPN 2001");
    EXPECT_EQ(form10().IDLabel[1].caption(), "123") << "the screen has read the scanner";
    form10().cancelclose();
    EXPECT_TRUE(form1().isVisible());
}

TEST_F(MainScreen, SeveralScannersAskWhichOne)
{
    dock(2, {"--id", "123", "--records", records(csprecords())}, 6);
    dock(3, {"--id", "456", "--records", records("004123456789,1,2007-03-09 10:00:00\n")}, 7);
    reseticons();
    Form13& select = form13();

    runtransfer();
    EXPECT_TRUE(select.isVisible());
    EXPECT_EQ(select.windowTitle().toStdString(), "Select Scanner Type");
    EXPECT_EQ(select.Text1.value(), "3");
    EXPECT_FALSE(select.STypeL[1].isEnabled());
    EXPECT_EQ(select.STypeB[1].fillcolor(), colorbox(5));
    EXPECT_TRUE(select.STypeL[2].isEnabled() && select.STypeL[3].isEnabled());
    EXPECT_EQ(select.STypeB[3].fillcolor(), colorbox(0));
    EXPECT_EQ(g().scannertype, 0);
    EXPECT_EQ(g().runmode, 1);
    EXPECT_EQ(g().pressedop, 3);
    EXPECT_EQ(form1().Shape1[1].fillcolor(), colorbox(1));
    EXPECT_FALSE(form1().Read.isEnabled()) << "the buttons are locked while the choice is open";

    select.STypeL_Click(3);
    EXPECT_TRUE(select.isHidden());
    EXPECT_EQ(activity().back(), "Please Remove Scanner");
    EXPECT_EQ(Left(get("c:\\tarnbc\\BAR001.INI"), 11), "[000000456]");
    EXPECT_EQ(g().runmode, 0);
    scanners[6]->stop();
    scanners[7]->stop();
    EXPECT_EQ(held(6), 3) << "the other scanner is untouched";
    EXPECT_EQ(held(7), 0);
}

TEST_F(MainScreen, SelectScreenCancelGivesTheButtonsBack)
{
    dock(2, {"--id", "123"}, 6);
    dock(3, {"--id", "456"}, 7);
    rundelete();
    EXPECT_EQ(form13().Text1.value(), "2");
    EXPECT_EQ(form1().Shape1[3].fillcolor(), colorbox(12));
    EXPECT_EQ(g().runmode, 2);
    emit form13().Label4.clicked();
    EXPECT_TRUE(form13().isHidden());
    expectidle();
    EXPECT_TRUE(form1().Delete.isEnabled());
    EXPECT_EQ(form1().Shape1[3].fillcolor(), colorbox(5));
}

TEST_F(MainScreen, ReadWithSeveralScannersJudgesTheLastReadAtOnce)
{
    dock(2, {"--id", "123"}, 6);
    dock(3, {"--id", "456"}, 7);
    // What the last read left: lines, and a row in the list.
    g().scancount = 4;
    form1().List2.additem("Reading Data From Scanner 999");
    runread();
    EXPECT_TRUE(form13().isVisible());
    EXPECT_EQ(form13().Text1.value(), "4");
    EXPECT_EQ(activity().back(), "Data has been read only!") << "before the user has chosen";
    form13().Cancel_Click();
}

TEST_F(MainScreen, SettingsOpensTheSetupScreen)
{
    form1().show();
    emit form1().SettingsLabel.clicked();
    EXPECT_TRUE(form2().isVisible());
    EXPECT_TRUE(form1().isHidden());
    EXPECT_EQ(g().pressedop, 1);
    EXPECT_EQ(g().callerof[2], 1);
    form2().hide();
}

TEST_F(MainScreen, SetupWithTheServerListUnreachableMarksTheListFrame)
{
    g().savetype = 1;
    g().fittertype = 1;
    icmp::inject::noreply(true);
    runsetup();
    EXPECT_GT(g().storestate, 0);
    EXPECT_EQ(form2().Shape1[10].fillcolor(), colorbox(2));
    form2().hide();
}

TEST_F(MainScreen, BatteryCaptionOpensTheTimer)
{
    dock(1, {"--id", "123", "--battery", "85"});
    form1().show();
    emit form1().Label1.clicked();
    EXPECT_TRUE(form24().isVisible());
    EXPECT_TRUE(form1().isHidden());
    EXPECT_EQ(g().pressedop, 1);
    EXPECT_TRUE(form24().Timer1.isActive());
    form24().closetimer();
}

TEST_F(MainScreen, GuardQuestionFreesAStuckFlag)
{
    const std::string question =
        "The appears to be a data transfer or operation in progress, which means that additional operations should "
        "wait! Is this the case?";
    // Idle: no question, the help menu.
    emit form1().Help.clicked();
    EXPECT_TRUE(dialogs::transcript().empty());
    EXPECT_TRUE(form18().isVisible());
    form18().cancel();

    g().runmode = 1;
    dialogs::queueanswer(vbYes);
    emit form1().HelpLabel.clicked();
    const auto asked = onebox("Confirm Transfer Status");
    EXPECT_EQ(asked.text, question);
    EXPECT_EQ(asked.flags, vbYesNo + vbQuestion);
    EXPECT_EQ(g().runmode, 1) << "Yes: the operation is running";

    g().pressedop = 3;
    dialogs::queueanswer(vbNo);
    emit form1().List1.doubleclicked();
    EXPECT_EQ(boxes("Confirm Transfer Status").size(), 2u);
    expectidle();
}

TEST_F(MainScreen, ClicksDuringATransferDoNothing)
{
    std::string lines;
    for (int i = 1; i <= 20; ++i) lines += "0001" + Format(10000000 + i, "00000000") + "0,090307,0830\n";
    dock(1, {"--id", "123", "--battery", "85", "--baud", "19200", "--records", records(lines)});
    form1().show();
    reseticons();
    bool clicked = false;
    whilewaiting([&] {
        if (!form6().isVisible()) return false;
        // The download is running: every button is locked.
        for (QWidget* w : std::initializer_list<QWidget*>{&form1().Transfer, &form1().TransferLabel, &form1().Read,
                                                          &form1().Delete, &form1().Check}) {
            EXPECT_FALSE(w->isEnabled());
            QMouseEvent press(QEvent::MouseButtonPress, QPointF(5, 5), QPointF(5, 5), Qt::LeftButton, Qt::LeftButton,
                              Qt::NoModifier);
            QApplication::sendEvent(w, &press);
        }
        clicked = true;
        return true;
    });
    runtransfer();
    EXPECT_TRUE(clicked);
    EXPECT_TRUE(form10().isHidden());
    EXPECT_EQ(Left(get("c:\\tarnbc\\BAR001.INI"), 28), "[000000123]\r\n000=02020070309") << "one transfer, all lines";
    EXPECT_EQ(get("c:\\tarnbc\\BARCODE.INI"), masterbytes("001"));
    EXPECT_EQ(g().runmode, 0);

    // Entered again while a transfer holds the flag, it returns before doing anything.
    g().runmode = 1;
    g().pressedop = 3;
    form1().List2.clear();
    runtransfer();
    EXPECT_TRUE(activity().empty());
    EXPECT_EQ(g().runmode, 1);
    EXPECT_EQ(g().pressedop, 3);
    runread();
    rundelete();
    runcheck();
    EXPECT_TRUE(activity().empty());
    EXPECT_TRUE(form10().isHidden());
}

TEST_F(MainScreen, PictureAfterATransfer)
{
    // The OPL 972x: its clear after the save keeps the activity list, so the picture shows
    // the whole transfer.
    dock(1, {"--id", "123", "--battery", "85", "--records", records(oplrecords())});
    form1().show();
    reseticons();
    runtransfer();
    QCoreApplication::processEvents();
    EXPECT_EQ(activity().back(), "Data Cleared From The Scanner");
    const QImage image = form1().grab().toImage();
    EXPECT_EQ(image.size(), form1().size());
    QDir().mkpath(QString(VEXAL_BINARY_DIR) + "/screens");
    EXPECT_TRUE(image.save(QString(VEXAL_BINARY_DIR) + "/screens/form1-transfer.png"));
}

TEST_F(MainScreen, SymbolOnAutomaticIsTurnedOffAfterTheTransfer)
{
    dock(3, {"--id", "123", "--records", records(csprecords())});
    g().scannerauto[3] = 1;
    runtransfer();
    EXPECT_EQ(activity().back(), "Please Remove Scanner");
    // It no longer answers the poll.
    csp2Init(5);
    csp2SetRetryCount(1);
    EXPECT_EQ(csp2Interrogate(), csp2::nocomms);
    csp2Restore();
    // A key press wakes it.
    scanners[6]->signal(SIGUSR1);
    QThread::msleep(100);
    csp2Init(5);
    EXPECT_EQ(csp2Interrogate(), csp2::ok);
    csp2Restore();
}

// The transfer screen against both kinds of share: the merge byte for byte, the copies and
// their failures, the restore, the closing, and the entries that open the screen.
#include "core/colorbox.h"
#include "core/form9.h"
#include "delivery/fileoperation.h"
#include "delivery/outstanding.h"
#include "delivery/transferplaces.h"
#include "pipeline/mainactions.h"
#include "transferfixture.h"

namespace {

const std::vector<std::string> cleanrun = {
    "Adding data to file lists",        "Backing up local files",   "Copying server files to PC",
    "Backing up server files",          "Beginning transfer of data", "Adding local data to server files",
};

std::string line(int i) { return "01123456" + Format(i, "00") + "200703091430"; }

std::string barwith(const std::string& scanner, int from, int count, const std::string& header)
{
    std::vector<std::string> lines;
    for (int i = from; i < from + count; ++i) lines.push_back(line(i));
    return StoreTest::barbytes(scanner, header, lines);
}

}  // namespace

TEST_P(TransferTest, EmptyStoreTakesEachScannerAsANewFileHighestLocalNumberFirst)
{
    put(localmaster, masterbytes("003"));
    put(localbar(1), barwith("123", 1, 2, "00220070301"));
    put(localbar(2), barwith("456", 11, 3, "00320070302"));
    put(localbar(3), barbytes("789", "00020070303", {}));   // no lines: deleted, nothing written
    openscreen();
    Form20& f = form20();
    EXPECT_TRUE(f.isVisible());
    EXPECT_TRUE(form1().isHidden());
    EXPECT_EQ(f.Label2.caption(), "Batched Local Files");
    EXPECT_EQ(f.Label1.caption(), "Server Files For 007");
    EXPECT_EQ(items(f.List1), (std::vector<std::string>{"BAR001   Scanner 123   002 Lines", "BAR002   Scanner 456   003 Lines",
                                                       "BAR003   Scanner 789   000 Lines"}));
    EXPECT_EQ(items(f.List2), std::vector<std::string>{"No data currently on server"});
    EXPECT_EQ(f.ListFileBox[1].fillcolor(), colorbox(14));
    EXPECT_TRUE(f.Transfer.isEnabled());
    EXPECT_TRUE(has("C:\\TARNBC\\INITEMP\\BACKUPS\\BAR002.INI")) << "local files backed up before anything changes";

    f.runtransfer();
    EXPECT_EQ(storefile("BARCODE.007"), masterbytes("002"));
    EXPECT_EQ(storefile("BAR001.007"), barwith("456", 11, 3, "00320070309")) << "the highest local number goes first";
    EXPECT_EQ(storefile("BAR002.007"), barwith("123", 1, 2, "00220070309"));
    EXPECT_FALSE(has(storebar(3)));
    EXPECT_EQ(get(localmaster), masterbytes("000"));
    for (int i = 1; i <= 3; ++i) EXPECT_FALSE(has(localbar(i)));
    EXPECT_FALSE(has("C:\\TARNBC\\INITEMP\\BAR001.007")) << "the work folder is tidied away";
    EXPECT_FALSE(has("C:\\TARNBC\\INITEMP\\BACKUPS"));

    std::vector<std::string> expected = cleanrun;
    for (int i = 0; i < 3; ++i) expected.push_back("Adding data to file lists");   // the refresh after each file
    for (const char* row : {"Copying data back to server", "Data transfer operation complete", "Tidying up local files",
                            "All operations completed"})
        expected.push_back(row);
    EXPECT_EQ(steps(), expected);
    EXPECT_EQ(f.List3.listindex(), f.List3.listcount() - 1);
    EXPECT_EQ(items(f.List1), std::vector<std::string>{"No Outstanding Data Files"});
    EXPECT_FALSE(f.Transfer.isEnabled());
    EXPECT_TRUE(f.CloseScreen.isEnabled());
    EXPECT_TRUE(dialogs::transcript().empty());
}

TEST_P(TransferTest, ScannerWithAFileOnTheServerHasItsLinesAppended)
{
    putstore("BARCODE.007", masterbytes("002"));
    putstore("BAR001.007", barwith("222", 40, 1, "00120070301"));
    putstore("BAR002.007", barwith("456", 50, 2, "00220070301"));
    put(localmaster, masterbytes("002"));
    put(localbar(1), barwith("123", 1, 2, "00220070305"));
    put(localbar(2), barwith("456", 11, 3, "00320070305"));
    openscreen();
    EXPECT_EQ(items(form20().List2), (std::vector<std::string>{"BAR001   Scanner 222   001 Line", "BAR002   Scanner 456   002 Lines"}));
    // The tray's entry chosen while the merge runs leaves it alone.
    atrow("Adding local data to server files", [] { form9().mnuTransfer.trigger(); });
    form20().runtransfer();
    EXPECT_EQ(steps().front(), "Adding data to file lists");
    EXPECT_EQ(steps().back(), "All operations completed");

    // 456's file grows by three keys after its last one, key 000 the last key written and today.
    std::string grown = "[000000456]\r\n000=00520070309\r\n001=" + line(50) + "\r\n002=" + line(51) + "\r\n";
    for (int k = 3; k <= 5; ++k) grown += Format(k, "000") + "=" + line(11 + k - 3) + "\r\n";
    EXPECT_EQ(storefile("BAR002.007"), grown);
    EXPECT_EQ(storefile("BAR001.007"), barwith("222", 40, 1, "00120070301")) << "another scanner's file is untouched";
    EXPECT_EQ(storefile("BAR003.007"), barwith("123", 1, 2, "00220070309"));
    EXPECT_EQ(storefile("BARCODE.007"), masterbytes("003"));
}

TEST_P(TransferTest, StaleWorkFileIsDeletedBeforeItsNumberIsTaken)
{
    putstore("BARCODE.007", masterbytes("002"));
    putstore("BAR001.007", barwith("222", 40, 1, "00120070301"));
    putstore("BAR002.007", barwith("333", 50, 1, "00120070301"));
    files::makefolder("C:\\TARNBC\\INITEMP");
    put(workbar(3), "[000000999]\r\n000=00120060101\r\n001=stale\r\n099=stale\r\n");
    put(localmaster, masterbytes("001"));
    put(localbar(1), barwith("123", 1, 2, "00220070305"));
    openscreen();
    form20().runtransfer();
    EXPECT_EQ(storefile("BAR003.007"), barwith("123", 1, 2, "00220070309"));
}

TEST_P(TransferTest, NoLocalDataLeavesTheTransferOffWithAGoodServer)
{
    put(localmaster, masterbytes("000"));
    openscreen();
    Form20& f = form20();
    EXPECT_EQ(items(f.List1), std::vector<std::string>{"No Outstanding Data Files"});
    EXPECT_EQ(f.ListFileBox[0].fillcolor(), colorbox(2));
    EXPECT_EQ(f.serverready, 1);
    EXPECT_FALSE(f.Transfer.isEnabled());
    EXPECT_FALSE(f.Label3.isVisible());
    EXPECT_EQ(steps(), (std::vector<std::string>{"Adding data to file lists", "Copying server files to PC",
                                                 "Backing up server files"}))
        << "nothing local to back up; the server side is copied down all the same";

    f.runtransfer();   // the caption's click, for all that it is hidden
    const auto asked = boxes("Data Problem");
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0].text, "There seems to be a problem with the local data! Please close the program and then retry the "
                             "transfer. Thank You.");
}

TEST_P(TransferTest, FirstCopyDownFailingIsReportedEvenThoughTheLaterTriesWork)
{
    putstore("BARCODE.007", masterbytes("001"));
    putstore("BAR001.007", barwith("222", 40, 1, "00120070301"));
    put(localmaster, masterbytes("001"));
    put(localbar(1), barwith("123", 1, 2, "00220070305"));
    // The first file of the first try meets a full disk; the four tries after it work.
    atrow("Copying server files to PC", [] { files::inject::failwriteafter(0); });
    openscreen();
    const auto failed = boxes("Error Transfering Data");
    ASSERT_EQ(failed.size(), 1u);
    EXPECT_EQ(failed[0].text, "An unexpected error occured while trying copy the server data to the PC for work to be done! "
                              "This has not damaged the current data and you should exit and retry. Line: 8 Error: 112 "
                              "There is not enough space on the disk.");
    EXPECT_EQ(failed[0].flags, vbExclamation);
    EXPECT_TRUE(logged("form20, filllists: Error While Copying Server Data To PC. Line 8 Unexpected error. Error: 112 "
                       "There is not enough space on the disk."));
    EXPECT_TRUE(has(workbar(1))) << "a later try did copy";
    EXPECT_TRUE(items(form20().List2).empty()) << "the lists stop";
    EXPECT_FALSE(form20().Transfer.isEnabled());
    EXPECT_EQ(get(localbar(1)), barwith("123", 1, 2, "00220070305"));
}

TEST_P(TransferTest, BadInputEndsInItsMessageWithEveryLineKept)
{
    struct Row {
        const char* legend;
        std::function<void(TransferTest&)> arrange;
        const char* title;
        const char* text;
        const char* log;
    } table[] = {
        {"local file with a garbage first line", [](TransferTest&) { files::writeall(localbar(1), "garbage\r\n001=x\r\n"); },
         "Error Transfering Data",
         "An unexpected error occured while trying to build the files lists! Section: 4 - Error: 13 Type mismatch",
         "form20, filllists: Line 4 Unexpected error. Error: 13 Type mismatch"},
        {"backup folder refused",
         [](TransferTest&) {
             transferplaces::makeworkfolders();
             files::inject::readonlyfolder("C:\\TARNBC\\INITEMP\\BACKUPS");
         },
         "Error Creating Backups",
         "An unexpected error occured while trying to create backup files of the data! This has not damaged the current "
         "data and you should exit and retry. Line: 2 Error: 5 Access is denied.",
         "form20, filllists: Error While Backing Up Date. Line 2 Unexpected error. Error: 5 Access is denied."},
    };
    for (const auto& r : table) {
        SCOPED_TRACE(r.legend);
        dialogs::cleartranscript();
        files::inject::reset();
        put(localmaster, masterbytes("001"));
        put(localbar(1), barwith("123", 1, 2, "00220070305"));
        r.arrange(*this);
        const std::string before = get(localbar(1));
        openscreen();
        const auto failed = boxes(r.title);
        ASSERT_EQ(failed.size(), 1u);
        EXPECT_EQ(failed[0].text, r.text);
        EXPECT_TRUE(logged(r.log));
        EXPECT_FALSE(form20().Transfer.isEnabled());
        EXPECT_EQ(get(localbar(1)), before);
        files::inject::reset();
        form20().hide();
    }
}

TEST_P(TransferTest, GarbageServerMasterFileReadsAsNoFiles)
{
    putstore("BARCODE.007", "%%%% not a master file\r\n");
    put(localmaster, masterbytes("001"));
    put(localbar(1), barwith("123", 1, 2, "00220070305"));
    openscreen();
    EXPECT_EQ(items(form20().List2), std::vector<std::string>{"No data currently on server"});
    EXPECT_TRUE(logged("checkbarcodeini: Corrupt Temp BARCODE.INI File - Recreated"));
    EXPECT_EQ(storefile("BARCODE.007"), masterbytes("000"));
    EXPECT_TRUE(form20().Transfer.isEnabled());
}

TEST_P(TransferTest, FullDiskDuringTheMergeStopsWithEveryLineOnThePCOrInTheWorkFolder)
{
    put(localmaster, masterbytes("002"));
    put(localbar(1), barwith("123", 1, 3, "00320070305"));
    put(localbar(2), barwith("456", 11, 3, "00320070305"));
    openscreen();
    // File 2 goes over whole; in the refresh after it the store check writes its two probes
    // (on the PC and on the share) and its log line, then file 1's header and first line go
    // in and its second line meets a full disk.
    atrow("Adding data to file lists", [] { files::inject::failwriteafter(5); });
    form20().runtransfer();
    const auto failed = boxes("Error Transfering Data");
    ASSERT_EQ(failed.size(), 1u);
    EXPECT_EQ(failed[0].text, "An unexpected error occured while trying to transfer the data to the server! Section 16 - "
                              "Error: 61 Disk full");
    EXPECT_TRUE(logged("form20, runtransfer: Unexpected error. Error: 61 Disk full"));
    EXPECT_EQ(get(workbar(1)), barwith("456", 11, 3, "00320070309"));
    EXPECT_FALSE(has(localbar(2)));
    EXPECT_EQ(get(localbar(1)), barwith("123", 1, 3, "00320070305")) << "not deleted before all its lines were over";
    EXPECT_EQ(get("C:\\TARNBC\\INITEMP\\BACKUPS\\BAR002.INI"), barwith("456", 11, 3, "00320070305"));
    EXPECT_FALSE(has(storebar(1))) << "nothing went to the server";
    EXPECT_FALSE(form20().transferring());
}

TEST_P(TransferTest, ShareGoneAtTheCopyBackAsksWithARisingAttemptUntilCancelIsConfirmed)
{
    put(localmaster, masterbytes("001"));
    put(localbar(1), barwith("123", 1, 2, "00220070305"));
    openscreen();
    atrow("Copying data back to server", [] { files::inject::vanishshare("\\\\127.0.0.1\\tagstore"); });
    // Attempt 1: OK. Attempt 2: Cancel, then No to the confirmation. Attempt 3: Cancel, Yes.
    // The failure is reported (OK). Attempt 1: OK. Attempt 2: Cancel, then No to the
    // confirmation. Attempt 3: Cancel, Yes.
    for (int answer : {vbOK, vbOK, vbCancel, vbNo, vbCancel, vbYes}) dialogs::queueanswer(answer);
    form20().runtransfer();

    const auto first = boxes("Error Transfering Data");
    ASSERT_EQ(first.size(), 1u);
    EXPECT_EQ(first[0].text.rfind("An unexpected error occured while trying to transfer the data to the server! As a "
                                  "precaution the program will now attempt to restore the data file to prevent data loss. "
                                  "Error: ",
                                  0),
              0u);
    const auto asked = boxes("Error With Connection To Server");
    ASSERT_EQ(asked.size(), 3u);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(asked[i].text, "Restore attempt : " + CStr((long long)i + 1) +
                                     " The server is showing as unavailable. Please leave this program as it is and check "
                                     "your connection to the head office (if applicable) and the status of the main "
                                     "server. If you have to cancel you will need support to assist you in restoring the "
                                     "backup files");
        EXPECT_EQ(asked[i].flags, vbOKCancel + vbExclamation);
    }
    const auto confirm = boxes("Confirm Cancel");
    ASSERT_EQ(confirm.size(), 2u);
    EXPECT_EQ(confirm[0].text, "Are you SURE you want to cancel the restore?");
    EXPECT_EQ(confirm[0].flags, vbYesNo + vbCritical + vbDefaultButton2);
    EXPECT_EQ(logcount("form20, runtransfer: Restoring Backups To Server. Server Unavailable And User Cancelled Restore."), 1);

    // The merged set stays in the work folder with both backups; the buttons stay off.
    EXPECT_EQ(get(workbar(1)), barwith("123", 1, 2, "00220070309"));
    EXPECT_EQ(get(workmaster), masterbytes("001"));
    EXPECT_EQ(get("C:\\TARNBC\\INITEMP\\BACKUPS\\BAR001.INI"), barwith("123", 1, 2, "00220070305"));
    EXPECT_TRUE(has("C:\\TARNBC\\INITEMP\\BACKUPS\\BARCODE.007"));
    EXPECT_FALSE(form20().CloseScreen.isEnabled());
    EXPECT_NE(steps().back(), "Tidying up local files");

    // Closing from the frame goes back to the main screen.
    files::inject::reset();
    form20().close();
    EXPECT_FALSE(form20().isVisible());
    EXPECT_TRUE(form1().isVisible());
    EXPECT_EQ(g().pressedop, 0);
}

TEST_P(TransferTest, RestoreCopiesOnceTheServerIsBackAndKeepsTheWorkFolder)
{
    put(localmaster, masterbytes("001"));
    put(localbar(1), barwith("123", 1, 2, "00220070305"));
    openscreen();
    atrow("Copying data back to server", [] { files::inject::vanishshare("\\\\127.0.0.1\\tagstore"); });
    // The server comes back while the user reads the first question, and OK is pressed.
    dialogs::setwhileopen([](const std::string& title) {
        if (title == "Error With Connection To Server") files::inject::reset();
    });
    form20().runtransfer();
    EXPECT_EQ(boxes("Error With Connection To Server").size(), 1u);
    EXPECT_TRUE(logged("form20, runtransfer: Restoring Backups To Server. Restore Succedded."));
    EXPECT_EQ(storefile("BAR001.007"), barwith("123", 1, 2, "00220070309"));
    EXPECT_EQ(storefile("BARCODE.007"), masterbytes("001"));
    EXPECT_TRUE(has(workbar(1))) << "no tidy-up after a restore";
    EXPECT_TRUE(has("C:\\TARNBC\\INITEMP\\BACKUPS\\BAR001.INI"));
}

TEST_P(TransferTest, RestoreWithAFailedTryCountsAsFailedEvenWhenTheLaterTriesWork)
{
    put(localmaster, masterbytes("001"));
    put(localbar(1), barwith("123", 1, 2, "00220070305"));
    openscreen();
    // The copy back meets a full disk; in the restore the log line, the store check's two
    // probes and its log line pass, and the first try's first file meets it again.
    atrow("Copying data back to server", [] { files::inject::failwriteafter(0); });
    dialogs::setwhileopen([](const std::string& title) {
        if (title == "Error Transfering Data") files::inject::failwriteafter(4);
    });
    dialogs::queueanswer(vbOK);
    dialogs::queueanswer(vbCancel);
    dialogs::queueanswer(vbYes);
    form20().runtransfer();
    const auto asked = boxes("Error With Connection To Server");
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0].text.substr(0, 56), "Restore attempt : 1 The restore to the server failed. Pl");
    EXPECT_EQ(logcount("form20, runtransfer: Restoring Backups To Server. Dll Error: 112"), 1);
    EXPECT_TRUE(logged("form20, runtransfer: Restoring Backups To Server. Restore Failed And User Cancelled Restore."));
    EXPECT_FALSE(logged("form20, runtransfer: Restoring Backups To Server. Restore Succedded."));
    EXPECT_EQ(storefile("BAR001.007"), barwith("123", 1, 2, "00220070309")) << "a later try did copy";
    EXPECT_TRUE(has(workbar(1)));
}

TEST_P(TransferTest, StoreDownAtTheStartLeavesTheServerSideUnready)
{
    put(localmaster, masterbytes("001"));
    put(localbar(1), barwith("123", 1, 2, "00220070305"));
    files::inject::vanishshare("\\\\127.0.0.1\\tagstore");
    openscreen();
    Form20& f = form20();
    EXPECT_EQ(items(f.List2), std::vector<std::string>{"Error connecting to server!"});
    EXPECT_EQ(f.ListFileBox[1].fillcolor(), colorbox(2));
    EXPECT_FALSE(f.Transfer.isEnabled());
    f.runtransfer();
    const auto asked = boxes("Data Problem");
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0].text, "There seems to be a problem preparing the remote data! Please close the program and then "
                             "retry the transfer. Thank You.");
    EXPECT_TRUE(has(localbar(1)));
}

INSTANTIATE_TEST_SUITE_P(Shares, TransferTest, testing::Values(sharekind::folder, sharekind::smb), sharename);

// ---- the screen's ways in and out, on the mounted folder -----------------------------

class TransferEntries : public TransferTest {};

TEST_P(TransferEntries, ClosingReturnsByTheCaller)
{
    put(localmaster, masterbytes("000"));
    struct Row {
        int caller;
        int pressedop;     // after the closing
        bool mainshown;
        int ended;
    } table[] = {{1, 0, true, 0}, {9, 1, false, 0}, {99, 1, false, 1}};
    for (const auto& r : table) {
        SCOPED_TRACE(r.caller);
        form1().hide();
        ended = 0;
        openscreen(r.caller);
        EXPECT_TRUE(form20().isVisible());
        if (r.caller == 99) EXPECT_THROW(form20().closescreen(), Fault);   // the process ends
        else form20().closescreen();
        EXPECT_FALSE(form20().isVisible());
        EXPECT_EQ(g().pressedop, r.pressedop);
        EXPECT_EQ(form1().isVisible(), r.mainshown);
        EXPECT_EQ(ended, r.ended);
    }
}

TEST_P(TransferEntries, TrayEntryAndExitOpenTheScreen)
{
    put(localmaster, masterbytes("001"));
    put(localbar(1), barwith("123", 1, 2, "00220070305"));
    form9().mnuTransfer.trigger();
    EXPECT_EQ(g().callerof[20], 9);
    EXPECT_EQ(g().pressedop, 1);
    EXPECT_TRUE(form20().isVisible());
    EXPECT_TRUE(form20().Transfer.isEnabled());
    form20().closescreen();
    EXPECT_FALSE(form1().isVisible()) << "from the tray with the main screen hidden it stays hidden";

    g().pressedop = 0;
    dialogs::queueanswer(vbYes);
    closeforms();
    EXPECT_EQ(boxes("Transfer Local Data").size(), 1u);
    EXPECT_EQ(g().callerof[20], 99);
    EXPECT_TRUE(form20().isVisible());
    form20().runtransfer();
    EXPECT_EQ(storefile("BAR001.007"), barwith("123", 1, 2, "00220070309"));
    EXPECT_THROW(form20().closescreen(), Fault);   // nothing is left: the exit goes on
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(boxes("Transfer Local Data").size(), 1u);
}

TEST_P(TransferEntries, OutstandingListDoubleClick)
{
    const std::string guardquestion = "Confirm Transfer Status";
    struct Row {
        const char* legend;
        int savetype;
        const char* master;        // bytes of c:\tarnbc\BARCODE.INI, null: none
        int pressedop;             // before the click
        int guardanswer;           // 0: no question expected
        bool opens;
    } table[] = {
        {"local mode", 0, "[FILES]\r\nFILES=001\r\n", 0, 0, false},
        {"email mode", 3, "[FILES]\r\nFILES=001\r\n", 0, 0, false},
        {"no master file", 2, nullptr, 0, 0, false},
        {"count 0", 1, "[FILES]\r\nFILES=000\r\n", 0, 0, false},
        {"busy, Yes: it waits", 2, "[FILES]\r\nFILES=001\r\n", 3, vbYes, false},
        {"busy, No: it goes on", 2, "[FILES]\r\nFILES=001\r\n", 3, vbNo, true},
        {"direct mode with files held", 1, "[FILES]\r\nFILES=001\r\n", 0, 0, true},
    };
    put(localbar(1), barwith("123", 1, 2, "00220070305"));
    putstore("BARLCK.007", "");   // its test never holds
    for (const auto& r : table) {
        SCOPED_TRACE(r.legend);
        dialogs::cleartranscript();
        form20().hide();
        form1().show();
        g().savetype = r.savetype;
        g().pressedop = r.pressedop;
        g().callerof[20] = 0;
        if (files::exists(localmaster)) files::removefile(localmaster);
        if (r.master) put(localmaster, r.master);
        if (r.guardanswer) dialogs::queueanswer(r.guardanswer);
        emit form1().List1.doubleclicked();
        EXPECT_EQ(boxes(guardquestion).size(), r.guardanswer ? 1u : 0u) << "one question, not two";
        EXPECT_EQ(form20().isVisible(), r.opens);
        EXPECT_EQ(boxes("Data Upload In Progress").size(), 0u);
        if (r.opens) {
            EXPECT_EQ(g().callerof[20], 1);
            EXPECT_EQ(g().pressedop, 1);
            EXPECT_TRUE(form1().isHidden());
            form20().closescreen();
            EXPECT_EQ(g().pressedop, 0);
        } else {
            EXPECT_TRUE(form1().isVisible());
        }
    }
}

TEST_P(TransferEntries, DoubleClickFaultGoesToItsOwnHandler)
{
    put(localmaster, "[FILES]\r\nFILES=x1\r\n");
    outstandingdblclick();
    const auto failed = boxes("Error In Function List1: Dblclick()");
    ASSERT_EQ(failed.size(), 1u);
    EXPECT_EQ(failed[0].text, "An unexpected error has occured attempting to run a system function! Error: 13 Type mismatch");
    EXPECT_TRUE(logged("List1, dblclick : 13 Type mismatch"));
    EXPECT_FALSE(form20().isVisible());
}

TEST_P(TransferEntries, HelpAsksTheGuardQuestionOnce)
{
    g().runmode = 1;
    dialogs::queueanswer(vbNo);
    emit form1().Help.clicked();
    EXPECT_EQ(boxes("Confirm Transfer Status").size(), 1u);
    EXPECT_EQ(g().runmode, 0);
}

INSTANTIATE_TEST_SUITE_P(Folder, TransferEntries, testing::Values(sharekind::folder), sharename);

// ---- pure parts --------------------------------------------------------------------

TEST(TransferScreen, ArrowsLightOneStepAtATime)
{
    Form20& f = form20();
    struct Row {
        int step;
        int frame;   // lit frame, -1 none
        int arrow;   // lit arrow, -1 none
    } table[] = {{0, 0, -1}, {1, -1, 0}, {8, -1, 7}, {9, 1, -1}, {10, -1, 9}};
    for (const auto& r : table) {
        SCOPED_TRACE(r.step);
        f.animstep = r.step;
        f.Timer1_Timer();
        EXPECT_EQ(f.animstep, r.step + 1);
        for (int i = 0; i <= 1; ++i) EXPECT_EQ(f.ListFileBox[i].fillcolor(), colorbox(i == r.frame ? 11 : 9));
        for (int i = 0; i <= 9; ++i) EXPECT_EQ(f.Tran[i].fillcolor(), colorbox(i == r.arrow ? 11 : 5));
    }
}

TEST(TransferScreen, FileOperationFailsOnTheAbortedFlagOrAnErrorOtherThan6)
{
    EXPECT_FALSE(fileoperationfailed(0, 0));
    EXPECT_FALSE(fileoperationfailed(0, 6)) << "error 6 is tolerated";
    EXPECT_TRUE(fileoperationfailed(0, 2));
    EXPECT_TRUE(fileoperationfailed(1, 0));
    EXPECT_TRUE(fileoperationfailed(1, 6));
}

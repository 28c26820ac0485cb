// Transfers that go wrong: a scanner pulled out during the read, a scanner swapped in the
// cradle between the save and the clear, a save that fails half way, the host's lock file,
// the store down in Direct mode, IDs that cannot be used, clocks at fault, and a fault that
// leaves the program's flags set until the guard question frees them.
#include "downloadfixture.h"
#include "pipeline/mainactions.h"
#include "pipeline/readdata.h"
#include "platform/icmp.h"
#include "support/form18.h"

namespace {

const char* lockpath = "\\\\127.0.0.1\\tagstore\\BARLCK.007";
const char* lockquestion =
    "There is a lock file in place that indicates you are currently loading data into Tarn! You should not download "
    "from additional scanners until this is complete! Would you like to remove the lock file?";

}  // namespace

class TransferFault : public DownloadTest {
protected:
    // Replaces the scanner on COM6 by another on the same port while the transfer runs, when
    // the activity list gets `when`. The first scanner's memory stays in state(6).
    void swapat(const std::string& when, int type, const std::string& id, const std::string& recordtext)
    {
        ListBox::setobserver([=, this](const ListBox&, const std::string& text) {
            if (text != when || swapped) return;
            old = std::move(scanners[6]);
            old->stop();
            swapped = std::make_unique<Emulator>(
                typenames[type],
                std::vector<std::string>{"--id", id, "--battery", "85", "--records", records(recordtext),
                                         "--clock-offset", clockoffset(), "--state", swapstate()},
                old->link());
        });
    }
    std::string swapstate() const { return install.root() + "/swapped.state"; }
    void TearDown() override
    {
        ListBox::setobserver(nullptr);
        swapped.reset();
        old.reset();
        DownloadTest::TearDown();
    }

    std::unique_ptr<Emulator> old, swapped;
};

TEST_F(TransferFault, CspScannerPulledOutDuringTheRead)
{
    for (int type : {2, 3}) {
        SCOPED_TRACE(type);
        freshstart();
        std::remove(install.host("c:\\tarnbc\\BAR001.INI").c_str());
        std::remove(install.host(g().homedir + "LOGS\\09_DAT.TXT").c_str());
        dialogs::cleartranscript();
        // A read first, so the last lines and their judgement are still in memory.
        dock(type, {"--id", "123", "--records", records(csprecords())});
        runread();
        ASSERT_EQ(g().outcount, 2);
        ASSERT_EQ(g().idstatus, 0);

        dock(type, {"--id", "456", "--records", records(csprecords()), "--vanish-after-records", "1"});
        runtransfer();
        EXPECT_TRUE(scanners[6]->waitfor("vanished"));
        const auto failures = onebox("Problem with Scanner");
        // The scanner's name never reaches the text: two blanks stand where it would be.
        EXPECT_EQ(failures.text, "There is a problem connecting to the  scanner, @ line 5! Please ensure that the "
                                 "scanner is connected, check the cables and try again!");
        EXPECT_EQ(failures.flags, vbExclamation);
        EXPECT_TRUE(logged("Problem connecting to the  scanner, @ line 5"));
        EXPECT_EQ(activity(), (std::vector<std::string>{"Data NOT deleted from scanner due to possible error!",
                                                        "Please Remove Scanner"}));
        EXPECT_FALSE(has("c:\\tarnbc\\BAR001.INI")) << "nothing saved";
        EXPECT_TRUE(datalog().empty());
        expectidle();
        EXPECT_EQ(stopped(6), 3) << "nothing cleared";
    }
}

TEST_F(TransferFault, OplScannerPulledOutDuringTheDownloadKeepsTheProgramWaiting)
{
    dock(1, {"--id", "123", "--battery", "85", "--records", records(oplrecords()), "--vanish-after-records", "1"});
    reseticons();
    bool sawerror = false, stillwaiting = false;
    int ticks = 0;
    whilewaiting([&] {
        if (!sawerror) {
            for (const auto& e : dialogs::transcript())
                if (e.title.empty() && e.text.rfind(" ", 0) == 0) sawerror = true;
            return false;
        }
        // Half a second after the error: still in the download's wait, locked, nothing saved.
        if (++ticks < 25) return false;
        stillwaiting = g().runmode == 1 && g().pressedop == 3 && g().opldone == 0 && !form1().Transfer.isEnabled() &&
                       !form1().Check.isEnabled() && !has("c:\\tarnbc\\BAR001.INI") && datalog().empty();
        EXPECT_EQ(activity().back(), "The Scanner Contains 3 Lines");
        // Let the test go on: only the complete event ends the wait.
        g().savetype = 0;
        opl_DownloadComplete();
        return true;
    });
    runtransfer();
    EXPECT_TRUE(sawerror);
    EXPECT_TRUE(stillwaiting);
    EXPECT_TRUE(boxes("Problem with Scanner").empty());
}

TEST_F(TransferFault, SwappedOplScannerIsNotCleared)
{
    dock(1, {"--id", "123", "--battery", "85", "--records", records(oplrecords())});
    swapat("Entries Added To File On Local PC", 1, "456", "0001555555550,090307,1000\n");
    runtransfer();
    ASSERT_TRUE(swapped && swapped->ready());
    const auto mismatch = onebox("Mismatch Of Scanner IDs");
    EXPECT_EQ(mismatch.text,
              "ERROR: The delete command was intended for scanner '123', but the scanner currently in the cradle is "
              "'456'! The delete has been aborted to protect your data. If you think that this might have been "
              "stopped in error then please delete the data from the scanner manually!");
    EXPECT_FALSE(hasline("Data Cleared From The Scanner"));
    EXPECT_EQ(get("c:\\tarnbc\\BAR001.INI"), barbytes("123", "00220070309", goodlines()));
    expectidle();
    swapped->stop();
    EXPECT_EQ(held(6), 3) << "the first scanner keeps its lines";
    EXPECT_EQ(heldin(swapstate()), 1) << "and so does the second";
}

TEST_F(TransferFault, SwappedCspScannerIsClearedUnnoticed)
{
    dock(3, {"--id", "123", "--records", records(csprecords())});
    swapat("Entries Added To File On Local PC", 3, "456", "004123456789,1,2007-03-09 10:00:00\n");
    runtransfer();
    ASSERT_TRUE(swapped && swapped->ready());
    EXPECT_TRUE(boxes("Mismatch Of Scanner IDs").empty());
    EXPECT_EQ(activity(), (std::vector<std::string>{"Data Cleared From The Scanner", "Please Remove Scanner"}));
    swapped->stop();
    EXPECT_EQ(held(6), 3) << "the saved scanner still holds its lines";
    EXPECT_EQ(heldin(swapstate()), 0) << "the scanner put in its place lost its lines";
}

TEST_F(TransferFault, SaveFailingHalfWayLeavesTheLinesInTheDataLog)
{
    dock(2, {"--id", "123", "--records", records(csprecords())});
    // From the save's first row on, the data log block (six writes) and key 000 go through;
    // the write of the first line fails with a full disk.
    ListBox::setobserver([](const ListBox&, const std::string& text) {
        if (text == "Adding Entries to BAR001 File (New File)") files::inject::failwriteafter(7);
    });
    runtransfer();
    const auto lines = goodlines();
    EXPECT_EQ(datalog(), (std::vector<std::string>{"ENTRY: Scanner 000123 1405 20070309", "[000000123]",
                                                   "000=00220070309", "001=" + lines[0], "002=" + lines[1], "END"}));
    // The header written before the failure promised two lines that never came: the save is
    // put back, so no file says what it does not hold.
    EXPECT_FALSE(has("c:\\tarnbc\\BAR001.INI"));
    EXPECT_EQ(get("c:\\tarnbc\\SAVE.JNL"), "") << "no save under way";
    const auto failed = onebox("Error While Saving Data");
    EXPECT_NE(failed.text.find("! Error : 61 Disk full"), std::string::npos) << failed.text;
    // The transfer goes on as after a good save: the scanner is cleared.
    EXPECT_EQ(activity(), (std::vector<std::string>{"Data Cleared From The Scanner", "Please Remove Scanner"}));
    expectidle();
    EXPECT_EQ(stopped(6), 0);
}

TEST_F(TransferFault, LockFileStopsTheTransferUnlessRemoved)
{
    for (int savetype : {1, 2}) {
        SCOPED_TRACE(savetype);
        g().savetype = savetype;
        g().storedown = 0;
        g().automaticactive = 1;
        dock(2, {"--id", "123", "--records", records(csprecords())});
        TempInstall::writefile(share + "/BARLCK.007", "");
        reseticons();
        form1().List2.clear();
        form1().List2.additem("before");
        dialogs::cleartranscript();

        runtransfer();   // the question's default is No
        const auto asked = onebox("Data Upload In Progress");
        EXPECT_EQ(asked.text, lockquestion);
        EXPECT_EQ(asked.flags, vbYesNo + vbCritical + vbDefaultButton2);
        EXPECT_EQ(asked.result, vbNo);
        EXPECT_EQ(g().runmode, 0);
        EXPECT_EQ(g().automaticactive, 0);
        EXPECT_EQ(activity(), std::vector<std::string>{"before"}) << "the scanner was not read";
        EXPECT_TRUE(form1().Transfer.isEnabled()) << "the buttons keep their state";
        EXPECT_TRUE(has(lockpath));

        dialogs::queueanswer(vbYes);
        runtransfer();
        EXPECT_FALSE(has(lockpath));
        EXPECT_EQ(activity().back(), "Please Remove Scanner");
        EXPECT_EQ(stopped(6), 0);
    }
}

TEST_F(TransferFault, NoLockTestForLocalOrMail)
{
    TempInstall::writefile(share + "/BARLCK.007", "");
    for (int savetype : {0, 3}) {
        g().savetype = savetype;
        dock(2, {"--id", "123", "--records", records(csprecords())});
        runtransfer();
        EXPECT_TRUE(boxes("Data Upload In Progress").empty());
        EXPECT_EQ(hasline("Please Remove Scanner"), savetype == 0);
    }
    // Email mode mails the raw download file, which only the OPL 972x leaves: with a CSP
    // scanner the copy fails at step 7 and the scanner keeps its records.
    EXPECT_EQ(onebox("Error In Function transferdata()").text,
              "An unexpected error has occured attempting to run a system function at line 7! Error: 53 File not found");
    EXPECT_EQ(stopped(6), 3);
}

TEST_F(TransferFault, StoreDownInDirectMode)
{
    g().savetype = 1;
    icmp::inject::noreply(true);
    TempInstall::writefile(share + "/BARLCK.007", "");
    const std::string question = "There is a problem with the store location, it appears to be unavailable at the "
                                 "moment! Would you like to store files locally on the PC until it is available again?";

    dock(2, {"--id", "123", "--records", records(csprecords())});
    dialogs::queueanswer(vbNo);
    runtransfer();
    const auto asked = onebox("Store Location Unavailable");
    EXPECT_EQ(asked.text, question);
    EXPECT_EQ(asked.flags, vbYesNo + vbExclamation);
    EXPECT_EQ(activity().back(), "Transfer aborted due to server being unavailable!");
    EXPECT_EQ(g().runmode, 0);
    EXPECT_FALSE(has("c:\\tarnbc\\BAR001.INI"));
    EXPECT_EQ(stopped(6), 3);
    // The failed check itself marks the store down.
    EXPECT_EQ(g().storedown, 1);

    g().storedown = 0;
    dock(2, {"--id", "123", "--records", records(csprecords())});
    std::vector<std::string> rows;
    ListBox::setobserver([&](const ListBox&, const std::string& text) { rows.push_back(text); });
    dialogs::queueanswer(vbYes);
    runtransfer();
    ListBox::setobserver(nullptr);
    EXPECT_EQ(boxes("Store Location Unavailable").size(), 2u);
    EXPECT_EQ(g().storedown, 1);
    EXPECT_TRUE(boxes("Data Upload In Progress").empty()) << "the lock is not looked for while the store is down";
    EXPECT_EQ(get("c:\\tarnbc\\BAR001.INI"), barbytes("123", "00220070309", goodlines()));
    EXPECT_FALSE(has("\\\\127.0.0.1\\tagstore\\BAR001.007"));
    for (const char* row : {"Store Location Unavailable!", "Data Held On PC", "Entries Added To Temp File On PC",
                            "Data Now Ready For Import To Tarn"})
        EXPECT_NE(std::find(rows.begin(), rows.end(), row), rows.end()) << row;
    EXPECT_EQ(stopped(6), 0);

    // While the store is known down nothing is asked.
    dock(2, {"--id", "123", "--records", records(csprecords())});
    runtransfer();
    EXPECT_EQ(boxes("Store Location Unavailable").size(), 2u);
    EXPECT_EQ(activity().back(), "Please Remove Scanner");
}

TEST_F(TransferFault, LongOplIdTakenAsItsLastThreeDigits)
{
    dock(1, {"--id", "1234", "--battery", "85", "--records", records(oplrecords())});
    runtransfer();   // OK is the default
    const auto offered = onebox("Scanner ID Incorrect length");
    EXPECT_EQ(offered.text,
              "The scanner ID has read as 1234, but scanner ID's are normally only 3 digits. This may have just have "
              "been an error when reading the scanner ID. If the scanner ID should be '234' and you would like to "
              "proceed with that then click 'OK' otherwise click 'CANCEL' in order to go and fix the ID from the "
              "'Check Scanner' screen before processing the data.");
    EXPECT_EQ(offered.flags, vbOKCancel + vbInformation);
    EXPECT_TRUE(hasline("Scanner ID adjusted to '234'!"));
    EXPECT_TRUE(logged("Scanner ID adjusted to '234'!"));
    EXPECT_EQ(get("c:\\tarnbc\\BAR001.INI"), barbytes("234", "00220070309", goodlines()));
    EXPECT_TRUE(has("c:\\tarnbc\\temp_234.txt"));
    // The clear reads the ID again, whole, and it no longer matches the one saved.
    EXPECT_EQ(boxes("Mismatch Of Scanner IDs").size(), 1u);
    EXPECT_EQ(stopped(6), 3);
}

TEST_F(TransferFault, RefusedOplIds)
{
    struct Case {
        const char* id;
        int answer;
        const char* title;
        const char* text;
    } cases[] = {
        {"1234", vbCancel, "Scanner ID Incorrect length", nullptr},
        {"0", vbOK, "Unconfigured Scanner ID",
         "The scanner ID of '000' is not valid! This ID indicates an unprogrammed scanner! Please go to the 'Check "
         "Scanner' screen and set the scanner with an ID before downloading this data."},
        {"999", vbOK, "Unconfigured Scanner ID", nullptr},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.id);
        dialogs::cleartranscript();
        dock(1, {"--id", c.id, "--battery", "85", "--records", records(oplrecords())});
        dialogs::queueanswer(c.answer);
        runtransfer();
        const auto refused = onebox(c.title);
        if (c.text) {
            EXPECT_EQ(refused.text, c.text);
        }
        EXPECT_EQ(activity(), std::vector<std::string>{"Aborted due to scanner ID error!"});
        expectidle();
        EXPECT_EQ(g().oplportstate, 0);
        EXPECT_FALSE(has("c:\\tarnbc\\BAR001.INI"));
        EXPECT_EQ(stopped(6), 3);
    }
}

TEST_F(TransferFault, UnprogrammedCspScannerIsReadButNotSaved)
{
    dock(3, {"--id", "0", "--records", records(csprecords())});
    runtransfer();
    EXPECT_TRUE(dialogs::transcript().empty()) << "no refusal while reading";
    EXPECT_TRUE(hasline("2 Valid Lines Available For Export"));
    EXPECT_EQ(activity().back(), "Please Remove Scanner");
    EXPECT_TRUE(hasline("Aborted due to scanner ID error!"));
    EXPECT_FALSE(has("c:\\tarnbc\\BAR001.INI"));
    EXPECT_EQ(stopped(6), 3);
}

TEST_F(TransferFault, ScannerClockAtFault)
{
    const std::string prefix = "There is a problem with the date / time on the scanner (Scanner: ";
    // Two days ahead: the date is at fault, the time agrees. Declining the repair still saves.
    dock(2, {"--id", "123", "--records", records(csprecords()), "--clock-offset", clockoffset(2 * 1440)});
    dialogs::queueanswer(vbNo);
    runtransfer();
    const auto asked = onebox("Date / Time Problem Detected");
    EXPECT_EQ(asked.text.rfind(prefix, 0), 0u);
    EXPECT_NE(asked.text.find(" 110307 - PC: 14:05 09/03/07)! Would you like to attempt to repair the data from the scanner?"),
              std::string::npos)
        << asked.text;
    EXPECT_TRUE(has("c:\\tarnbc\\BAR001.INI"));
    EXPECT_EQ(form1().Label3.forecolor(), colorbox(2));
    EXPECT_EQ(stopped(6), 0);

    // An hour out: the time is at fault and the transfer stops after the read.
    std::remove(install.host("c:\\tarnbc\\BAR001.INI").c_str());
    dialogs::cleartranscript();
    dock(2, {"--id", "123", "--records", records(csprecords()), "--clock-offset", clockoffset(60)});
    dialogs::queueanswer(vbNo);
    runtransfer();
    EXPECT_EQ(boxes("Date / Time Problem Detected").size(), 1u);
    EXPECT_TRUE(hasline("Aborted due to error on scanner!"));
    EXPECT_FALSE(has("c:\\tarnbc\\BAR001.INI"));
    EXPECT_EQ(stopped(6), 3);

    // A read of it ends with the same verdict.
    dialogs::queueanswer(vbNo);
    runread();
    EXPECT_EQ(activity().back(), "Aborted due to error on scanner!");

    // Accepting the repair hands the transfer to the corrupt data screen.
    dialogs::cleartranscript();
    dock(2, {"--id", "123", "--records", records(csprecords()), "--clock-offset", clockoffset(60)});
    dialogs::queueanswer(vbYes);
    runtransfer();
    EXPECT_EQ(g().runmode, 4);
    EXPECT_EQ(g().pressedop, 3);
    EXPECT_EQ(g().corruptid, "123");
    EXPECT_TRUE(form12().isVisible());
    EXPECT_EQ(form12().Label2.caption(), "Corrupt Data List - Scanner 123");
    EXPECT_TRUE(logged("Running Date / Data Correction"));
    EXPECT_FALSE(hasline("Please Remove Scanner")) << "the transfer went no further";
    form12().hide();
}

TEST_F(TransferFault, EmptyScannerWithABadClockIsOfferedAClockUpdate)
{
    dock(2, {"--id", "123", "--clock-offset", clockoffset(60)});
    dialogs::queueanswer(vbYes);
    runread();
    const auto asked = onebox("Date / Time Problem Detected");
    EXPECT_NE(asked.text.find(")! Would you like to update the date and time?"), std::string::npos);
    EXPECT_TRUE(logged("Correcting Data And Time"));
    EXPECT_EQ(g().timestatus, 0) << "the scanner's clock was set";
    EXPECT_TRUE(form12().isHidden());
    EXPECT_EQ(g().runmode, 0);
}

TEST_F(TransferFault, FaultInTheButtonRoutineLeavesTheFlagsForTheGuard)
{
    g().savetype = 2;
    dock(2, {"--id", "123", "--records", records(csprecords())});
    TempInstall::writefile(share + "/BARLCK.007", "");
    files::inject::readonlyfolder("\\\\127.0.0.1\\tagstore");
    reseticons();
    dialogs::queueanswer(vbYes);   // remove the lock file: refused
    runtransfer();
    const auto failed = onebox("Error In Function runtransfer()");
    EXPECT_EQ(failed.text,
              "An unexpected error has occured attempting to run a system function at line 6! Error: 70 Permission denied");
    EXPECT_TRUE(logged("Function runtransfer() : Line 6 70 Permission denied"));
    EXPECT_EQ(g().runmode, 1) << "the handler leaves the flag set";

    // Nothing runs while it is set.
    files::inject::reset();
    form1().List2.clear();
    runtransfer();
    runread();
    EXPECT_TRUE(activity().empty());

    dialogs::queueanswer(vbNo);
    emit form1().Help.clicked();
    EXPECT_EQ(g().runmode, 0);
    EXPECT_TRUE(form18().isVisible());
    form18().cancel();
    dialogs::queueanswer(vbYes);
    runtransfer();
    EXPECT_EQ(activity().back(), "Please Remove Scanner");
}

TEST_F(TransferFault, CspIdWithLettersIsOfferedTheRepair)
{
    // A CS 1504 whose ID parameter reads "   1A3".
    dock(3, {"--id", "123", "--records", records(csprecords())});
    scanners[6]->stop();
    std::string memory = TempInstall::readfile(state(6));
    const size_t at = memory.find("scratchpad=") + 11;
    memory.replace(at, 12, "202020314133");
    TempInstall::writefile(state(6), memory);
    dock(3, {}, 6, "", true);

    dialogs::queueanswer(vbNo);
    runtransfer();
    const auto asked = onebox("ID Problem Detected");
    EXPECT_EQ(asked.text, "There is a problem with the ID on the scanner (1A3)! This MUST be corrected in order "
                          "to continue. Do you wish to update now?");
    EXPECT_TRUE(logged("Error with scanner ID (1A3)"));
    EXPECT_EQ(form1().Label3.forecolor(), colorbox(2));
    EXPECT_TRUE(hasline("Aborted due to scanner ID error!"));
    EXPECT_FALSE(hasline("Processing Data")) << "an ID left unrepaired ends the read";
    EXPECT_FALSE(has("c:\\tarnbc\\BAR001.INI"));

    // Repaired through the select new scanner ID screen: the scanner takes the new ID.
    dialogs::cleartranscript();
    dialogs::queueanswer(vbYes);
    whilewaiting([] {
        if (!form14().isVisible()) return false;
        form14().FitterID.settext("456");
        form14().addfunc();
        return true;
    });
    runtransfer();
    EXPECT_TRUE(logged("Running ID Correction"));
    EXPECT_TRUE(hasline("ID updated from 1A3 to 456"));
    EXPECT_TRUE(logged("ID updated from 1A3 to 456"));
    // The ID read back after the write is the parameter's six characters, which the transfer
    // takes as too long: it stops before the save and a second transfer saves the lines.
    EXPECT_TRUE(hasline("Aborted due to scanner ID error!"));
    EXPECT_FALSE(has("c:\\tarnbc\\BAR001.INI"));
    runtransfer();
    EXPECT_EQ(get("c:\\tarnbc\\BAR001.INI"), barbytes("456", "00220070309", goodlines()));
    EXPECT_EQ(stopped(6), 0);
}

TEST_F(TransferFault, NoOplScannerInTheCradle)
{
    dock(1, {"--id", "123", "--no-answer"});
    runtransfer();
    // The control's own error box comes first, then the connection failure at the clock.
    ASSERT_FALSE(dialogs::transcript().empty());
    EXPECT_EQ(dialogs::transcript()[0].title, "");
    EXPECT_EQ(dialogs::transcript()[0].text.rfind(" ", 0), 0u);
    const auto failed = onebox("Problem with Scanner");
    EXPECT_NE(failed.text.find("@ line 1!"), std::string::npos);
    EXPECT_EQ(g().oplportstate, 0);
    expectidle();
    EXPECT_TRUE(mainopl() == nullptr);
}

TEST_F(TransferFault, MoreThanAThousandRecordsEndInTheReadHandler)
{
    std::string text;
    for (int i = 0; i < 1001; ++i) text += "001" + std::to_string(100000000 + i) + ",1,2007-03-09 08:30:05\n";
    dock(3, {"--id", "123", "--records", records(text)});
    runtransfer();
    const auto failed = onebox("Error While Reading Data");
    EXPECT_EQ(failed.text, "An unexpected error has occured while attempting to read the data from the scanner! "
                           "Error : 9 Subscript out of range @ line 14");
    EXPECT_TRUE(logged("readdata: Unexpected error! Error : 9 Subscript out of range @ line 14"));
    EXPECT_FALSE(has("c:\\tarnbc\\BAR001.INI"));
    EXPECT_EQ(g().runmode, 0);
    EXPECT_EQ(stopped(6), 1001);
}

TEST_F(TransferFault, ReadUnderRepairAsksNothing)
{
    dock(2, {"--id", "123", "--records", records(csprecords()), "--clock-offset", clockoffset(60)});
    g().scannertype = 2;
    g().runmode = 4;
    readdata();
    EXPECT_EQ(g().timestatus, 1);
    EXPECT_TRUE(dialogs::transcript().empty());
    EXPECT_EQ(g().deleteallowed, 1);
    EXPECT_EQ(g().outcount, 2);
    EXPECT_FALSE(g().reviewlines[1].empty()) << "the lines are ready for the repair screen";
    EXPECT_EQ(g().runmode, 4);
}

TEST_F(TransferFault, LowBatteryWarnings)
{
    const std::string warning = "The battery level on this scanner is currently on 40%. Unless it is being allowed to "
                                "drop to maintain the battery it is recommended that you recharge this scanner shortly!";
    dock(1, {"--id", "123", "--battery", "40", "--records", records(oplrecords())});
    runtransfer();   // the clear after the save warns no more
    const auto warned = onebox("Low Battery Level");
    EXPECT_EQ(warned.text, warning);
    EXPECT_EQ(warned.flags, vbInformation);
    EXPECT_TRUE(hasline("Data Cleared From The Scanner"));

    dock(1, {"--id", "123", "--battery", "40", "--records", records(oplrecords())});
    dialogs::queueanswer(vbOK);
    dialogs::queueanswer(vbNo);
    rundelete();
    EXPECT_EQ(boxes("Low Battery Level").size(), 2u);
}

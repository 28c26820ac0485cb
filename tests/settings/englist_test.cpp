// The engineer list: the line test, the file check in its three arrangements, the list
// screens' rows, adding and removing engineers through ENGLST.BAK, the select new scanner
// ID screen, the owner look-up and the name case rule.
#include "settingsfixture.h"

#include "core/imagelists.h"
#include "settings/checkfitterfile.h"
#include "settings/englines.h"
#include "settings/form14.h"
#include "settings/form2.h"
#include "settings/form4.h"
#include "settings/form5.h"
#include "settings/form17.h"
#include "settings/setupdisplay.h"

namespace {

class EngineerList : public SettingsTest {
protected:
    void SetUp() override
    {
        SettingsTest::SetUp();
        share = install.addshare("\\\\10.0.0.5\\tagstore");
        g().serverip = "10.0.0.5";
        form17().FitterStatus.setcaption("");
        for (QWidget* w : {(QWidget*)&form4(), (QWidget*)&form5(), (QWidget*)&form14()}) w->hide();
    }
    void writelist(const std::string& text) const { TempInstall::writefile(local("ENGLST.TXT"), text); }
    std::string list() const { return TempInstall::readfile(local("ENGLST.TXT")); }
    void writeserverlist(const std::string& text) const { TempInstall::writefile(share + "/ENGLST.TXT", text); }

    // Update on the details screen with these two boxes.
    void add(const std::string& id, const std::string& name)
    {
        form5().FitterID.settext(id);
        form5().FitterName.settext(name);
        form5().updatedata();
    }

    // The engineer row of the system check screen: its text and its light.
    static std::string shown()
    {
        const Form17& f = form17();
        if (f.FitterStatus.caption().empty()) return "";
        const bool good = f.Status[2].picturelist() == "ColorIcons" && f.Status[2].pictureindex() == 2;
        return f.FitterStatus.caption() + (good ? " (good)" : " (fault)");
    }

    std::string share;
};

TEST_F(EngineerList, DoenglinetestSortsLinesIntoRecordsInvalidLinesAndHeaders)
{
    struct Row { const char* line; int status; } rows[] = {
        {"000005,000005,Bob Smith", 0}, {"5,12,Ann", 0},          {"5,5,", 0},
        {"5,5,Bob, Jr", 0},             {"5,5,Bob,,", 0},         {"Unit,Seq,Name", 2},
        {"VEXAL engineer list", 2},     {"unit,1,x", 1},          {"vexal", 1},
        {"", 1},                        {" 5,5,Bob", 1},          {"5,Bob", 1},
        {"5", 1},                       {",5,Bob", 1},            {"5,,Bob", 1},
        {"5a,5,Bob", 1},                {"5,5a,Bob", 1},          {"-5,5,Bob", 1},
        {"5 ,5,Bob", 1},                {"\t5,5,Bob", 1},
    };
    for (const auto& r : rows) {
        g().englinestatus = 9;
        doenglinetest(r.line);
        EXPECT_EQ(g().englinestatus, r.status) << '"' << r.line << '"';
    }
    const EngRecord r = engrecord("000007,12,Bob, Jr");
    EXPECT_EQ(r.field1, "000007");
    EXPECT_EQ(r.field2, "12");
    EXPECT_EQ(r.name, "Bob, Jr");
}

TEST_F(EngineerList, NamecaseAndTheOwnerLookUp)
{
    struct Row { const char* name; const char* shown; } names[] = {
        {"BOB SMITH", "Bob Smith"}, {"mary-jane o'neil", "Mary-jane O'neil"}, {"x", "x"}, {"", ""},
        {" bob smith", "Bob Smith"}, {"ann  lee", "Ann  Lee"},
    };
    for (const auto& n : names) EXPECT_EQ(namecase(n.name), n.shown) << '"' << n.name << '"';

    EXPECT_EQ(engineerowner("000012"), "Unknown");   // no file
    writelist("VEXAL list\r\n5,12,Not by field two\r\nbad line\r\n000012,000012,BOB SMITH   \r\n12,12,Second match\r\n");
    EXPECT_EQ(engineerowner("000012"), "BOB SMITH");
    EXPECT_EQ(engineerowner("12"), "BOB SMITH");
    EXPECT_EQ(engineerowner("5"), "Not by field two");
    EXPECT_EQ(engineerowner("000099"), "Unknown");
    g().fittertype = 1;   // Direct reads the server's list
    writeserverlist("7,7,Server Sam\r\n");
    EXPECT_EQ(engineerowner("7"), "Server Sam");
    EXPECT_EQ(engineerowner("12"), "Unknown");
}

TEST_F(EngineerList, CheckfitterfileOnALocalList)
{
    Form2& f = form2();
    g().fittertype = 0;
    checkfitterfile();   // no file: an empty one is made, and that is a success
    EXPECT_EQ(g().fitterstatus, 0);
    EXPECT_TRUE(files::exists("c:\\tarnbc\\ENGLST.TXT"));
    EXPECT_EQ(list(), "");
    EXPECT_EQ(f.Shape1[10].fillcolor(), colorbox(6));
    EXPECT_EQ(shown(), "No problems detected (good)");
    EXPECT_EQ(loglines(), Rows{"checkfitterfile: No problems detected"});

    checkfitterfile();   // the file is there: no log line
    EXPECT_EQ(g().fitterstatus, 0);
    EXPECT_EQ(f.Shape1[10].fillcolor(), colorbox(boxgood));
    EXPECT_EQ(loglines().size(), 1u);

    g().storestate = 3;   // a bad store does not matter to a local list
    checkfitterfile();
    EXPECT_EQ(g().fitterstatus, 0);
}

TEST_F(EngineerList, CheckfitterfileOnADirectList)
{
    Form2& f = form2();
    g().fittertype = 1;
    writeserverlist("1,1,Ann\r\n");
    checkfitterfile();
    EXPECT_EQ(g().fitterstatus, 0);
    EXPECT_EQ(f.Shape1[10].fillcolor(), colorbox(boxgood));
    EXPECT_FALSE(files::exists("c:\\tarnbc\\ENGLST.TXT"));

    g().storestate = 4;
    checkfitterfile();
    EXPECT_EQ(g().fitterstatus, 1);
    EXPECT_EQ(shown(), "Problem with server IP address / share (fault)");
    EXPECT_EQ(f.Shape1[10].fillcolor(), colorbox(boxfault));

    g().storestate = 0;
    files::removefile("\\\\10.0.0.5\\tagstore\\ENGLST.TXT");
    checkfitterfile();
    EXPECT_EQ(g().fitterstatus, 1);
    EXPECT_EQ(shown(), "Unable to locate engineer data file on server (fault)");
    EXPECT_FALSE(files::exists("c:\\tarnbc\\ENGLST.TXT"));   // Direct never makes a local file
    EXPECT_EQ(loglines(), (Rows{"checkfitterfile: Problem with server IP address / share",
                                "checkfitterfile: Unable to locate engineer data file on server"}));
}

TEST_F(EngineerList, CheckfitterfileOnAPcCopy)
{
    g().fittertype = 2;
    writeserverlist("1,1,Ann\r\n");
    checkfitterfile();
    EXPECT_EQ(g().fitterstatus, 0);
    EXPECT_EQ(list(), "1,1,Ann\r\n");   // the copy is refreshed

    g().storestate = 3;   // server down, copy present: still a problem, the copy stays
    checkfitterfile();
    EXPECT_EQ(g().fitterstatus, 1);
    EXPECT_EQ(shown(), "Unable to locate engineer data file on server (fault)");
    EXPECT_EQ(list(), "1,1,Ann\r\n");

    // The list stays shut from the setup screen while the check says 1.
    g().callerof[4] = 0;
    openengineerlist();
    EXPECT_TRUE(form4().isHidden());
    EXPECT_EQ(g().callerof[4], 0);

    files::removefile("c:\\tarnbc\\ENGLST.TXT");
    checkfitterfile();   // and no copy either: an empty file is made, which is no copy
    EXPECT_EQ(g().fitterstatus, 2);
    EXPECT_EQ(shown(), "Problem with server file, and no local file (fault)");
    EXPECT_TRUE(files::exists("c:\\tarnbc\\ENGLST.TXT"));
    checkfitterfile();
    EXPECT_EQ(g().fitterstatus, 1);
    EXPECT_EQ(loglines().back(), "checkfitterfile: Unable to locate engineer data file on server");
}

TEST_F(EngineerList, TheListScreenShowsEachArrangementInItsOwnRows)
{
    const std::string text = "Unit,Seq,Name\r\n5,12,Ann Lee\r\n\r\n 6,6,Lead Blank\r\n7,Bob\r\n8,8,Bob, Jr\r\n";
    writelist(text);
    writeserverlist(text);
    Form4& f = form4();

    g().fittertype = 0;
    f.setuplist();
    EXPECT_EQ(items(f.List1), (Rows{"000005 Ann Lee", "Invalid Entry", "Invalid Entry", "Invalid Entry", "000008 Bob, Jr"}));
    EXPECT_FALSE(f.Label4[0].isHidden());
    EXPECT_TRUE(f.Add[1].isEnabled());
    EXPECT_EQ(f.Add[1].picturelist(), "ColorIcons");

    g().fittertype = 2;
    f.setuplist();
    EXPECT_EQ(items(f.List1), (Rows{"000005Ann Lee (12)", "Invalid Entry", "Invalid Entry", "Invalid Entry",
                                   "000008Bob, Jr (8)"}));
    EXPECT_TRUE(f.Add[1].isEnabled());

    g().fittertype = 1;
    writeserverlist("VEXAL\r\n");
    f.setuplist();
    EXPECT_EQ(items(f.List1), Rows{});
    EXPECT_TRUE(f.Label4[0].isHidden());
    EXPECT_FALSE(f.Add[1].isEnabled());
    EXPECT_EQ(f.Add[1].picturelist(), "GreyIcons");
    f.addengineer();
    EXPECT_TRUE(form5().isHidden());

    files::removefile("\\\\10.0.0.5\\tagstore\\ENGLST.TXT");
    f.List1.additem("left over");
    f.setuplist();
    EXPECT_EQ(items(f.List1), Rows{});
    EXPECT_TRUE(dialogs::transcript().empty());
}

TEST_F(EngineerList, AddingKeepsTheOrderOfTheSecondNumberAndDropsHeadersAndInvalidLines)
{
    g().fittertype = 0;
    writelist("VEXAL list\r\n000003,000003,Ann\r\n 4,4,Lead Blank\r\n000008,000008,Cy\r\n");
    add("5", "Bob");
    const std::string after = "000003,000003,Ann\r\n000005,000005,Bob\r\n000008,000008,Cy\r\n";
    EXPECT_EQ(list(), after);
    EXPECT_EQ(TempInstall::readfile(local("ENGLST.BAK")), after);
    EXPECT_EQ(items(form4().List1), (Rows{"000003 Ann", "000005 Bob", "000008 Cy"}));
    EXPECT_TRUE(form5().isHidden());

    add("10", "Dee");
    EXPECT_EQ(list(), after + "000010,000010,Dee\r\n");
    add("0", "Zero");
    EXPECT_EQ(list().substr(0, 21), "000000,000000,Zero\r\n0");
    add("999", "Last");
    EXPECT_EQ(list().substr(list().size() - 20), "000999,000999,Last\r\n");
    EXPECT_TRUE(dialogs::transcript().empty());
}

TEST_F(EngineerList, AFileWithAHeaderOnlyListsNothingAndLosesTheHeaderOnTheFirstAdd)
{
    g().fittertype = 0;
    writelist("Unit,Seq,Name\r\n");
    form4().setuplist();
    EXPECT_EQ(items(form4().List1), Rows{});
    add("12", "ann lee");
    EXPECT_EQ(list(), "000012,000012,ann lee\r\n");
}

TEST_F(EngineerList, UpdateRefusesBadEntriesInOrderWithTheirMessages)
{
    g().fittertype = 0;
    const std::string text = "000003,000003,Ann\r\n000009,000004,Dan\r\n";
    writelist(text);
    struct Row { const char* id; const char* name; const char* box; } rows[] = {
        {"", "", "No Engineer ID: You need to provide the engineers scanner ID in order to be able to save this record!"},
        {"1a", "", "Invalid ID: The engineer ID provided contains invalid characters! The ID may only be numeric!"},
        {" 5", "Bob", "Invalid ID: The engineer ID provided contains invalid characters! The ID may only be numeric!"},
        {"1000", "", "Invalid ID: The engineer ID provided is outside of the currently allowed range! The ID may only be "
                     "between 0 and 999!"},
        {"7", "", "No Engineer Name: You need to provide the engineers name in order to be able to save this record!"},
        {"3", "Bob", "Duplicate Engineer ID: The engineer ID 3 is already in use on engineer 'Ann'!"},
        {"0004", "Bob", "Duplicate Engineer ID: The engineer ID 0004 is already in use on engineer 'Dan'!"},
    };
    for (const auto& r : rows) {
        dialogs::cleartranscript();
        add(r.id, r.name);
        EXPECT_EQ(boxes(), Rows{r.box}) << r.id;
        EXPECT_EQ(dialogs::transcript().at(0).flags, vbExclamation);
    }
    add("9", "Ed");   // field 1 is not compared: 9 is free as a second number
    EXPECT_EQ(list(), "000003,000003,Ann\r\n000009,000004,Dan\r\n000009,000009,Ed\r\n");

    // An existing record cannot be saved under its own number.
    form4().setuplist();
    form4().changeengineer(0);
    dialogs::cleartranscript();
    form5().updatedata();
    EXPECT_EQ(boxes(), Rows{"Duplicate Engineer ID: The engineer ID 000003 is already in use on engineer 'Ann'!"});
}

TEST_F(EngineerList, UpdateAndDeleteDoNothingOnAServerList)
{
    writelist("1,1,Ann\r\n");
    g().fittertype = 2;
    form4().addengineer();   // the details screen opens for a PC Copy
    EXPECT_FALSE(form5().isHidden());
    add("5", "Bob");
    form5().Text1.settext("1");
    form5().deletedata();
    EXPECT_EQ(list(), "1,1,Ann\r\n");
    EXPECT_TRUE(dialogs::transcript().empty());
}

TEST_F(EngineerList, ADoubleClickOpensTheRecordAndDeleteRemovesItsSecondNumber)
{
    g().fittertype = 0;
    writelist("VEXAL\r\n000003,000003,Ann\r\nbad\r\n000005,000002,Old Dan\r\n000002,000002,Dan\r\n");
    Form4& list4 = form4();
    list4.setuplist();
    Form5& f = form5();
    f.hide();
    list4.changeengineer(1);   // the invalid line: nothing happens
    EXPECT_TRUE(f.isHidden());

    list4.changeengineer(2);
    EXPECT_FALSE(f.isHidden());
    EXPECT_EQ(f.FitterID.value(), "000005");
    EXPECT_EQ(f.FitterName.value(), "Old Dan");
    EXPECT_EQ(f.Text1.value(), "000005");
    EXPECT_EQ(f.Text2.value(), "Old Dan");
    EXPECT_TRUE(f.Delete[1].isEnabled());
    EXPECT_FALSE(f.DeleteLabel[1].isHidden());

    dialogs::queueanswer(vbNo);
    f.deletedata();
    EXPECT_EQ(boxes(), Rows{"Confirm Engineer Deletion: Are you sure that you want to remove engineer 'Old Dan' "
                            "(ID:000005) from your stored data?"});
    EXPECT_EQ(dialogs::transcript().at(0).flags & 7, vbYesNo);
    EXPECT_EQ(list(), "VEXAL\r\n000003,000003,Ann\r\nbad\r\n000005,000002,Old Dan\r\n000002,000002,Dan\r\n");
    EXPECT_TRUE(f.isHidden());

    // Yes removes every record whose second number is the ID held in Text1: here none, as
    // Text1 holds the first number; the rewrite still drops the header and the bad line.
    list4.changeengineer(2);
    dialogs::queueanswer(vbYes);
    f.deletedata();
    EXPECT_EQ(list(), "000003,000003,Ann\r\n000005,000002,Old Dan\r\n000002,000002,Dan\r\n");

    list4.changeengineer(2);   // "000002,000002,Dan"
    dialogs::queueanswer(vbYes);
    f.deletedata();
    EXPECT_EQ(list(), "000003,000003,Ann\r\n");
    EXPECT_EQ(items(list4.List1), Rows{"000003 Ann"});

    list4.addengineer();   // Add: empty boxes, no delete button
    EXPECT_EQ(f.FitterID.value(), "");
    EXPECT_EQ(f.Text1.value(), "");
    EXPECT_FALSE(f.Delete[1].isEnabled());
    EXPECT_TRUE(f.DeleteLabel[1].isHidden());
    EXPECT_EQ(f.Delete[1].picturelist(), "GreyIcons");
}

TEST_F(EngineerList, ARewriteThatCannotFinishKeepsTheList)
{
    g().fittertype = 0;
    writelist("000003,000003,Ann\r\n000008,000008,Cy\r\n");
    files::inject::failwriteafter(1);   // the backup's second line hits a full disk
    add("5", "Bob");
    files::inject::reset();
    EXPECT_EQ(list(), "000003,000003,Ann\r\n000008,000008,Cy\r\n");
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].rfind("Error Updating Data: An unexpected error occured while trying to update the engineer "
                               "data! Error: 61 ",
                               0),
              0u)
        << boxes()[0];
    EXPECT_EQ(loglines().back().rfind("form5, updatedata: Unexpected error. Error: 61 ", 0), 0u);
}

TEST_F(EngineerList, OpeningTheListFromTheSetupScreen)
{
    g().fittertype = 1;
    g().storestate = 2;
    openengineerlist();   // a Direct list behind a bad store is not even checked
    EXPECT_TRUE(form4().isHidden());
    EXPECT_EQ(shown(), "");

    g().fittertype = 0;
    g().storestate = 0;
    writelist("1,1,Ann\r\n");
    form2().show();
    openengineerlist();
    EXPECT_FALSE(form4().isHidden());
    EXPECT_TRUE(form2().isHidden());
    EXPECT_EQ(g().callerof[4], 2);
    EXPECT_EQ(items(form4().List1), Rows{"000001 Ann"});
    form4().cancel();
    EXPECT_TRUE(form4().isHidden());
    EXPECT_FALSE(form2().isHidden());
    form2().hide();
}

TEST_F(EngineerList, TheSelectIdScreenHasTwoLayouts)
{
    Form14& f = form14();
    g().fittertype = 0;
    f.FitterID.settext("12");
    f.setuplist();   // no file
    EXPECT_TRUE(f.List1.isHidden());
    EXPECT_TRUE(f.Label2.isHidden());
    EXPECT_EQ(f.Label1.caption(), "Enter ID");
    EXPECT_EQ(f.height(), twips(Form14::boxheight));
    EXPECT_LT(f.FitterID.y() + f.FitterID.height(), f.height());
    EXPECT_EQ(f.FitterID.value(), "");

    writelist("VEXAL\r\n5,12,Ann Lee\r\nbad\r\n");
    f.setuplist();
    EXPECT_EQ(items(f.List1), (Rows{"000005 Ann Lee", "Invalid Entry"}));
    EXPECT_FALSE(f.List1.isHidden());
    EXPECT_EQ(f.Label1.caption(), "Or Enter ID");
    EXPECT_EQ(f.height(), twips(Form14::listheight));
    EXPECT_GT(f.FitterID.y(), f.List1.y() + f.List1.height());
}

TEST_F(EngineerList, AddfuncTestsTheTypedIdButNotAChosenRow)
{
    Form14& f = form14();
    int chosen = 0;
    auto c = QObject::connect(&f, &Form14::idchosen, [&] { ++chosen; });
    const std::string range = "Invalid ID: The engineer ID provided is outside of the currently allowed range! The ID "
                              "may only be between 0 and 999!";
    struct Row { const char* id; const char* box; } rows[] = {
        {"", "No Engineer ID: You need to provide a scanner ID in order to be able to update the scanner!"},
        {"12x", "Invalid ID: The engineer ID provided contains invalid characters! The ID may only be numeric!"},
        {"1000", range.c_str()},
        {"000", range.c_str()},
        {"000123", range.c_str()},
    };
    for (const auto& r : rows) {
        dialogs::cleartranscript();
        f.show();
        f.FitterID.settext(r.id);
        f.addfunc();
        EXPECT_EQ(boxes(), Rows{r.box}) << r.id;
        EXPECT_FALSE(f.isHidden());
    }
    EXPECT_EQ(chosen, 0);
    for (const char* id : {"999", "0", "00123"}) {
        f.show();
        f.FitterID.settext(id);
        f.addfunc();
        EXPECT_TRUE(f.isHidden()) << id;
    }
    EXPECT_EQ(chosen, 3);

    writelist("000123,000123,Ann\r\n");
    f.setuplist();
    f.show();
    f.chooserow(0);   // "000123" from a row passes
    EXPECT_EQ(f.FitterID.value(), "000123");
    EXPECT_TRUE(f.isHidden());
    EXPECT_EQ(chosen, 4);
    QObject::disconnect(c);
}

}  // namespace

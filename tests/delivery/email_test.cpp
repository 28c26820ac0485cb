#include <QDir>
#include <random>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include "core/form9.h"
#include "delivery/checkimports.h"
#include "delivery/emaildatafiles.h"
#include "delivery/listfiles.h"
#include "delivery/processemails.h"
#include "delivery/sendmail.h"
#include "settings/form2.h"
#include "settings/form3.h"
#include "setfiles.h"
#include "support/loopback.h"
#include "support/screenshot.h"
#include "support/smtpserver.h"

namespace {

const std::string exports = "c:\\tarnbc\\exports\\";
const std::string imports = "c:\\tarnbc\\imports\\";

// OPL 972x raw lines of one scanner: clock-in scans a minute apart from 14:30.
std::string rawlines(int count, int from = 0)
{
    std::string out;
    for (int i = from; i < from + count; ++i)
        out += "0001123456780,120307," + Format((long long)(14 + i / 60), "00") + Format((long long)(30 + i) % 60, "00") +
               "\r\n";
    return out;
}

class Email : public StoreTest {
protected:
    void SetUp() override
    {
        StoreTest::SetUp();
        ASSERT_TRUE(server.start()) << server.error();
        install.configure(server.mailsection());
        files::makefolder("C:\\TARNBC\\EXPORTS");
        form3().HOEmail.settext("head.office@example.com");
        form3().User.settext("Bristol Branch");
        g().savetype = 3;
    }
    void TearDown() override
    {
        if (form9().MAPISession1.SessionID() != 0) form9().MAPISession1.SignOff();
        form1().ImportIcon[0].hide();
        StoreTest::TearDown();
    }
    std::vector<std::string> exported() const { return files::list(exports + "*"); }
    static std::vector<std::string> names(const SmtpServer::Mail& m)
    {
        std::vector<std::string> out;
        for (const auto& a : m.attachments) out.push_back(a.first);
        return out;
    }
    // The fault a call lets out, 0 when none.
    template <typename F>
    static int faultof(F call)
    {
        try {
            call();
        } catch (const Fault& f) {
            return f.number;
        }
        return 0;
    }

    SmtpServer server;
};

TEST_F(Email, SendmailAttachesTheFolderAndCleansUpOnlyOnALiveSend)
{
    // Live with nothing waiting: the "test" file goes alone and is gone afterwards.
    sendmail("ho@example.com", "S", "N", "L");
    auto mails = server.mails();
    ASSERT_EQ(mails.size(), 1u);
    EXPECT_EQ(names(mails[0]), std::vector<std::string>{"test"});
    EXPECT_EQ(mails[0].attachments[0].second, "TEST FILE\r\n");
    EXPECT_TRUE(exported().empty());

    // A test send attaches every file and deletes none.
    put(exports + "export_123_2007391457.txt", rawlines(3));
    put(exports + "export_045_200731000.txt", rawlines(1));
    sendmail("ho@example.com", "*TEST* S", "*TEST* N", "T");
    mails = server.mails();
    ASSERT_EQ(mails.size(), 2u);
    EXPECT_EQ(names(mails[1]), (std::vector<std::string>{"export_045_200731000.txt", "export_123_2007391457.txt"}));
    EXPECT_EQ(mails[1].attachments[1].second, rawlines(3));
    EXPECT_EQ(exported().size(), 2u);

    // A live send deletes what it carried.
    sendmail("ho@example.com", "S", "N", "L");
    ASSERT_EQ(server.mails().size(), 3u);
    EXPECT_EQ(names(server.mails()[2]).size(), 2u);
    EXPECT_TRUE(exported().empty());
    EXPECT_EQ(form9().MAPISession1.SessionID(), 0) << "signed off";
}

TEST_F(Email, AFailedSendReachesTheCallerAndKeepsTheFiles)
{
    put(exports + "export_123_2007391457.txt", rawlines(3));
    struct Case {
        const char* legend;
        std::string recipient;
        std::string mailini;   // "" for the running server
        int fault;
    };
    const int closed = freeport();
    const std::vector<Case> cases = {
        {"server down", "ho@example.com", "[mail]\nserver=smtp://127.0.0.1:" + std::to_string(closed) + "\n",
         mail::networkfailure},
        {"empty recipient", "", "", mail::unknownrecipient},
        {"not an address", "Head Office", "", mail::unknownrecipient},
    };
    for (const Case& c : cases) {
        install.configure(c.mailini.empty() ? server.mailsection() : c.mailini);
        EXPECT_EQ(faultof([&] { sendmail(c.recipient, "S", "N", "L"); }), c.fault) << c.legend;
        EXPECT_EQ(exported(), std::vector<std::string>{"export_123_2007391457.txt"}) << c.legend;
        form9().MAPISession1.SignOff();
    }
    EXPECT_TRUE(server.mails().empty());

    // With nothing waiting, the made "test" file does not outlive a failed send: it would go
    // with the next mail as if it were data.
    files::removefile(exports + "export_123_2007391457.txt");
    install.configure(cases[0].mailini);
    EXPECT_EQ(faultof([] { sendmail("ho@example.com", "S", "N", "L"); }), mail::networkfailure);
    EXPECT_TRUE(exported().empty());
}

TEST_F(Email, EmaildatafilesAsksSendsAndReports)
{
    put(exports + "export_123_2007391457.txt", rawlines(2));
    dialogs::queueanswer(vbNo);
    emaildatafiles();
    auto asked = boxes("Confirm Email Sending");
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0].text, "Data is ready to email to head office! Would you like to email the data now? (NB: To "
                             "send emails at a later stage double click on the outstanding file list)");
    EXPECT_EQ(asked[0].flags, vbYesNo + vbQuestion);
    EXPECT_EQ(items(form1().List2).back(), "Data Held For Emailing Later");
    EXPECT_TRUE(logged("Function transferdata() : Data Held For Emailing Later"));
    EXPECT_EQ(items(form1().List1),
              (std::vector<std::string>{"File(s) Waiting To Be Emailed:", "export_123_2007391457.txt"}));
    EXPECT_TRUE(server.mails().empty());

    // The list's double click sends what waits.
    dialogs::queueanswer(vbYes);
    EXPECT_TRUE(emailfromlist());
    auto mails = server.mails();
    ASSERT_EQ(mails.size(), 1u);
    EXPECT_EQ(mails[0].to, std::vector<std::string>{"head.office@example.com"});
    EXPECT_EQ(mails[0].subject, "Workshop Time Clock Files From Bristol Branch");
    EXPECT_EQ(mails[0].note, "Please save all files to c:\\tarnbc\\imports");
    EXPECT_EQ(names(mails[0]), std::vector<std::string>{"export_123_2007391457.txt"});
    EXPECT_EQ(items(form1().List2).back(), "Data Emailed To head.office@example.com");
    EXPECT_EQ(form1().List2.listindex(), form1().List2.listcount() - 1);
    EXPECT_TRUE(logged("Function transferdata() : Data Emailed To head.office@example.com"));
    EXPECT_EQ(items(form1().List1), std::vector<std::string>{"No Files Waiting To Be Emailed."});

    // One row alone ("No Files Waiting ...") does nothing, but the double click ends there;
    // in any other mode the double click goes on.
    dialogs::cleartranscript();
    EXPECT_TRUE(emailfromlist());
    EXPECT_TRUE(dialogs::transcript().empty());
    g().savetype = 1;
    EXPECT_FALSE(emailfromlist());
    EXPECT_EQ(server.mails().size(), 1u);
}

TEST_F(Email, DoubleClickSendFailureReachesTheCaller)
{
    put(exports + "export_123_2007391457.txt", rawlines(2));
    listfiles();
    server.stop();
    dialogs::queueanswer(vbYes);
    EXPECT_EQ(faultof([] { emailfromlist(); }), mail::networkfailure);
    EXPECT_EQ(exported(), std::vector<std::string>{"export_123_2007391457.txt"});
    EXPECT_NE(items(form1().List2).empty() ? "" : items(form1().List2).back(), "Data Emailed To head.office@example.com");
}

TEST_F(Email, SetupTestMailGoesToTheAddressBoxAndLeavesTheFolder)
{
    files::removefolder("C:\\TARNBC\\EXPORTS");
    form2().ServerIP.settext("workshop.test@example.com");
    sendtestmail();
    auto mails = server.mails();
    ASSERT_EQ(mails.size(), 1u);
    EXPECT_EQ(mails[0].to, std::vector<std::string>{"workshop.test@example.com"});
    EXPECT_EQ(mails[0].subject, "*TEST* Workshop Time Clock Files From Bristol Branch");
    EXPECT_EQ(mails[0].note, "*TEST* Please save all files to c:\\tarnbc\\imports");
    EXPECT_EQ(names(mails[0]), std::vector<std::string>{"test"});
    EXPECT_TRUE(files::isfolder("C:\\TARNBC\\EXPORTS"));
    EXPECT_TRUE(exported().empty());

    // The button and its caption: with no server the event's runtime box says why.
    emit form2().Label2.clicked();
    EXPECT_EQ(server.mails().size(), 2u);
    server.stop();
    emit form2().ServerTest[0].clicked();
    const auto box = boxes("VEXAL Scanner Interface");
    ASSERT_EQ(box.size(), 1u);
    EXPECT_EQ(box[0].text, "Run-time error '32023':\r\n\r\nCould not connect to the mail server 127.0.0.1:" +
                               std::to_string(server.port()));
    EXPECT_TRUE(exported().empty()) << "the made test file does not outlive a failed send";
}

// The screens keep drawing while a mail waits for its server: the main screen is drawn
// then, and the server that never answered goes away.
TEST_F(Email, MainScreenWhileTheMailWaits)
{
    QTcpServer silent;
    ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
    install.configure("[mail]\nserver=smtp://127.0.0.1:" + std::to_string(silent.serverPort()) + "\n");
    put(exports + "export_123_2007391457.txt", rawlines(2));
    Form1& f = form1();
    for (const char* row : {"Reading Data From Scanner 123", "Scanner Belongs To : Unknown", "Processing Data",
                            "2 Valid Lines Available For Export"})
        f.List2.additem(row);
    listfiles();
    f.Label3.setcaption("ID: 123 Date: 1405 090307");
    int colours = 0;
    QTimer::singleShot(300, [&] {
        colours = drawscreen(f, "Form1-mail-waiting");
        silent.close();
        delete silent.nextPendingConnection();
    });
    dialogs::queueanswer(vbYes);
    EXPECT_EQ(faultof([] { emaildatafiles(); }), mail::networkfailure);
    EXPECT_GT(colours, 8) << "drawn while the mail waited";
    EXPECT_EQ(exported().size(), 1u);
}

// ---- head office: the import ----------------------------------------------------------

class Import : public Email {
protected:
    void SetUp() override
    {
        Email::SetUp();
        g().savetype = 0;
        files::makefolder("C:\\TARNBC\\IMPORTS");
    }
    std::vector<std::string> waiting() const { return files::list(imports + "*"); }
    dialogs::Entry errorbox() const
    {
        auto b = boxes("Error In Function processemails");
        return b.empty() ? dialogs::Entry{} : b.back();
    }
};

TEST_F(Import, IconFollowsTheFolder)
{
    Form1& f = form1();
    listfiles();
    checkimports();
    EXPECT_TRUE(f.ImportIcon[0].isHidden());
    const int wide = f.Label2.width();
    put(imports + "export_123_2007391457.txt", rawlines(2));
    checkimports();
    EXPECT_FALSE(f.ImportIcon[0].isHidden());
    EXPECT_LT(f.Label2.width(), wide);
    const int narrow = f.ListFileBox[0].width();
    EXPECT_GT(drawscreen(f, "Form1-import-icon"), 8);
    checkimports();
    EXPECT_EQ(f.ListFileBox[0].width(), narrow) << "nothing changed, nothing moved";

    g().importbusy = 1;
    files::removefile(imports + "export_123_2007391457.txt");
    checkimports();
    EXPECT_FALSE(f.ImportIcon[0].isHidden()) << "busy: left alone";
    g().importbusy = 0;
    checkimports();
    EXPECT_TRUE(f.ImportIcon[0].isHidden());
    EXPECT_EQ(f.Label2.width(), wide);
}

TEST_F(Import, EachFileGoesThroughThePipelineAndIsDeletedAfterTheSave)
{
    put(imports + "export_123_2007391457.txt", rawlines(2));
    put(imports + "export_123_2007391500.txt", rawlines(3, 2) + "\r\n");   // a trailing blank line
    put(imports + "export_045_200731000.txt", rawlines(1));
    put("c:\\tarnbc\\temp_123.txt", "stale");
    showimporticon(true);
    dialogs::queueanswer(vbYes);
    importclick();

    auto asked = boxes("Import In Data");
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0].text, "Do you wish to import the data files emailed in from remote users?");
    EXPECT_TRUE(waiting().empty());
    EXPECT_TRUE(form1().ImportIcon[0].isHidden());
    EXPECT_EQ(g().runmode, 0);
    EXPECT_EQ(g().pressedop, 0);
    EXPECT_EQ(g().importbusy, 0);
    // The second file of scanner 123 replaced the first's temp file and joined its section.
    EXPECT_EQ(get("c:\\tarnbc\\temp_123.txt"), rawlines(3, 2) + "\r\n");
    EXPECT_EQ(logcount("Killing existing temp file c:\\tarnbc\\temp_123.txt"), 2);
    EXPECT_EQ(get(localmaster), masterbytes("002"));
    const std::string bar1 = get(localbar(1)), bar2 = get(localbar(2));
    EXPECT_NE(bar1.find("[000000045]"), std::string::npos);
    EXPECT_NE(bar2.find("[000000123]"), std::string::npos);
    EXPECT_NE(bar2.find("005=0112345678200703121434"), std::string::npos) << bar2;

    const auto rows = items(form1().List2);
    for (const char* row : {"Importing Data From Scanner 045", "Scanner Belongs To : Unknown",
                            "The Data Contains 1 Lines", "Importing Data From Scanner 123", "The Data Contains 3 Lines"})
        EXPECT_NE(std::find(rows.begin(), rows.end(), row), rows.end()) << row;
    EXPECT_EQ(rows.front(), "Importing Data From Scanner 045") << "List2 cleared, no blank row first";
    EXPECT_NE(std::find(rows.begin(), rows.end(), ""), rows.end()) << "a blank row between files";
    EXPECT_EQ(form1().Label3.caption(), "ID: 123 Date: N/A  090307");
    EXPECT_TRUE(logged("Scanner From : Unknown"));
    EXPECT_EQ(items(form1().List1).front(), "BAR001   Scanner 045   001 Line");
}

TEST_F(Import, NoAnswerOrNoFilesImportsNothing)
{
    put(imports + "export_123_2007391457.txt", rawlines(2));
    dialogs::queueanswer(vbNo);
    processemails();
    EXPECT_EQ(waiting().size(), 1u);
    EXPECT_FALSE(has(localmaster));
    EXPECT_EQ(g().importbusy, 0);

    // An operation in progress: Yes stops with importbusy left at 1; No clears the flags.
    g().runmode = 1;
    dialogs::queueanswer(vbYes);
    processemails();
    EXPECT_EQ(boxes("Confirm Transfer Status").size(), 1u);
    EXPECT_EQ(g().importbusy, 1);
    processemails();
    EXPECT_EQ(boxes("Confirm Transfer Status").size(), 1u) << "busy: not asked again";
    g().importbusy = 0;
    dialogs::queueanswer(vbNo);
    dialogs::queueanswer(vbNo);
    processemails();
    EXPECT_EQ(g().runmode, 0);
    EXPECT_EQ(boxes("Import In Data").size(), 2u);
}

// Bad import files: each ends in the handler's message at its marker or with the file kept;
// what the handler stops keeps its flags set.
TEST_F(Import, BadFilesEndAtTheirMarkerAndStayInTheFolder)
{
    struct Case {
        const char* legend;
        std::vector<std::pair<std::string, std::string>> files;
        int marker;          // 0: no handler message
        std::string error;   // number and description
        size_t kept;         // import files left
    };
    std::vector<std::pair<std::string, std::string>> many;
    for (int i = 1; i <= 101; ++i) many.emplace_back("export_" + Format((long long)i, "000") + "_1.txt", rawlines(1));
    const std::vector<Case> cases = {
        {"non-numeric ID", {{"export_ab1_2007391457.txt", rawlines(2)}}, 4, "13 Type mismatch", 1},
        {"101 files", many, 2, "9 Subscript out of range", 101},
        {"1001 lines", {{"export_123_1.txt", rawlines(1001)}}, 0, "", 1},
        {"a blank line inside", {{"export_123_1.txt", rawlines(2) + "\r\n" + rawlines(1, 5)}}, 0, "", 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.legend);
        for (const std::string& name : waiting()) files::removefile(imports + name);
        for (const auto& [name, bytes] : c.files) put(imports + name, bytes);
        resetglobals();
        g().homedir = platform::installfolder;
        dialogs::cleartranscript();
        dialogs::queueanswer(vbYes);
        processemails();
        EXPECT_EQ(waiting().size(), c.kept);
        if (c.marker > 0) {
            const auto box = errorbox();
            EXPECT_EQ(box.text, "An unexpected error has occured attempting to run a system function at line " +
                                    std::to_string(c.marker) + "! Error: " + c.error);
            EXPECT_EQ(box.flags, vbExclamation);
            EXPECT_TRUE(logged("Function processemails() : Line " + std::to_string(c.marker) + " " + c.error));
            // The handler leaves the flags: nothing more runs until a restart.
            EXPECT_EQ(g().importbusy, 1);
            if (c.marker > 3) {
                EXPECT_EQ(g().runmode, 1);
            }
        } else {
            EXPECT_TRUE(boxes("Error In Function processemails").empty());
            EXPECT_EQ(g().importbusy, 0);
            const auto rows = items(form1().List2);
            EXPECT_EQ(rows.back(), "Import file export_123_1.txt kept due to possible error!");
        }
    }
}

TEST_F(Import, ShortNameGivesTheDigitsItHas)
{
    put(imports + "temp_4567", rawlines(1));
    dialogs::queueanswer(vbYes);
    processemails();
    EXPECT_TRUE(waiting().empty());
    EXPECT_NE(get(localbar(1)).find("[000000067]"), std::string::npos);
}

// Random import files: mutated good lines, empty lines, stray bytes and line ends. The
// import never lets a fault out, never stops in its own handler for a file with a numeric
// ID, and a file is either gone with its lines stored or still there with the reason said.
TEST_F(Import, RandomFilesAreStoredOrKept)
{
    std::mt19937 rng(20070309u);
    auto below = [&](int n) { return std::uniform_int_distribution<int>(0, n - 1)(rng); };
    long kept = 0, stored = 0;
    for (int round = 0; round < 300; ++round) {
        std::string bytes;
        for (int n = below(12); n > 0; --n) {
            std::string line = below(5) == 0 ? std::string() : rawlines(1, below(300));
            for (int m = below(3); m > 0; --m) {
                const int at = below((int)line.size() + 1);
                const char c = below(4) == 0 ? "\r\n,\xff"[below(4)] : (char)below(256);
                if (below(2)) line.insert(line.begin() + at, c);
                else if (at < (int)line.size()) line.erase(at, 1);
            }
            bytes += line;
            if (line.empty() || line.back() != '\n') bytes += "\r\n";
        }
        const std::string name = "export_" + Format((long long)below(1000), "000") + "_" + std::to_string(round) + ".txt";
        put(imports + name, bytes);
        resetglobals();
        g().homedir = platform::installfolder;
        dialogs::cleartranscript();
        form1().List2.clear();
        dialogs::queueanswer(vbYes);
        ASSERT_NO_THROW(processemails()) << name;
        ASSERT_TRUE(boxes("Error In Function processemails").empty()) << name;
        ASSERT_EQ(g().importbusy, 0);
        const auto rows = items(form1().List2);
        if (has(imports + name)) {
            ++kept;
            EXPECT_EQ(rows.back(), "Import file " + name + " kept due to possible error!");
            files::removefile(imports + name);
        } else {
            ++stored;
            EXPECT_TRUE(boxes("Error While Processing Data").empty()) << name;
        }
    }
    EXPECT_GT(stored, 100);
    EXPECT_GT(kept, 10);
}

}  // namespace

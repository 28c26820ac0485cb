#include <QDir>
#include <QEvent>
#include <functional>

#include "core/colorbox.h"
#include "settings/form11.h"
#include "settings/form17.h"
#include "settings/form2.h"
#include "settings/form25.h"
#include "settings/storecheck.h"
#include "settingsfixture.h"
#include "support/storeworld.h"

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

TEST(ValidateIp, CodesAndNormalForm)
{
    struct Row {
        const char* legend;
        const char* address;
        int iperror;
        const char* ipnormal;
    } rows[] = {
        {"empty", "", 2, "0.0.0.0"},
        {"all zero", "0.0.0.0", 1, "0.0.0.0"},
        {"all zero with a tail", "0.0.0.07", 1, "0.0.0.0"},
        {"sound", "192.168.0.1", 0, "192.168.0.1"},
        {"leading zeros", "010.001.000.099", 0, "10.1.0.99"},
        {"trailing blank", "10.0.0.1 ", 0, "10.0.0.1"},
        {"dot first", ".1.2.3", 3, ".1.2.3"},
        {"empty second octet", "1..2.3", 3, "1..2.3"},
        {"three octets", "1.2.3", 3, "1.2.3"},
        {"five octets", "1.2.3.4.5", 3, "1.2.3."},
        {"empty fourth octet", "1.2.3.", 3, "1.2.3."},
        {"first octet above 255", "256.1.1.1", 4, ""},
        {"third octet above 255", "1.2.300.4", 4, "1.2."},
        {"fourth octet above 255", "127.0.0.256", 4, "127.0.0."},
        {"letters", "1a.2.3.4", 4, ""},
        {"letters last", "1.2.3.x", 4, "1.2.3."},
        {"sign", "-1.2.3.4", 4, ""},
        {"long digits", "99999999999999999999.1.1.1", 4, ""},
        {"host name", "server", 3, "server"},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.legend);
        resetglobals();
        validateip(r.address);
        EXPECT_EQ(g().iperror, r.iperror);
        EXPECT_EQ(g().ipnormal, r.ipnormal);
    }
}

TEST(IpStringToLong, FirstOctetInTheLowestByte)
{
    EXPECT_EQ(ipstringtolong("127.0.0.1"), 0x0100007F);
    EXPECT_EQ(ipstringtolong("1.2.3.4"), 0x04030201);
    EXPECT_EQ((uint32_t)ipstringtolong("127.0.0.255"), 0xFF00007Fu) << "a high last octet gives a negative value";
    EXPECT_EQ(ipstringtolong("10.0.0.1.5"), 0);
    EXPECT_EQ(ipstringtolong("10.0.1"), 0);
    EXPECT_EQ(ipstringtolong(""), 0);
}

TEST(PingAddress, LoopbackAnswersAndSilenceFails)
{
    if (!canecho()) GTEST_SKIP() << "no ICMP socket can be opened here";
    int32_t roundtrip = -7;
    EXPECT_EQ(pingaddress("127.0.0.1", 100, roundtrip), 0);
    EXPECT_GE(roundtrip, 0);
    EXPECT_LT(roundtrip, 1000);
    EXPECT_EQ(pingaddress("127.0.0.9", 100, roundtrip), 0);

    icmp::inject::noreply(true);
    roundtrip = 5;
    EXPECT_EQ(pingaddress("127.0.0.1", 100, roundtrip), (int32_t)IP_REQ_TIMED_OUT);
    EXPECT_EQ(roundtrip, -1);
    icmp::inject::reset();
}

class StoreCheck : public StoreTest {
protected:
    void SetUp() override
    {
        StoreTest::SetUp();
        if (!canecho()) GTEST_SKIP() << "no ICMP socket can be opened here";
        g().commandline = "startup";
        form2().Shape1[7].setfillcolor(colorbox(0));
        form2().Shape1[10].setfillcolor(colorbox(0));
        form17().StoreStatus.setcaption("");
        form25().resetscreen();
    }

    std::string status() const { return form17().StoreStatus.caption(); }
    QColor setupbox() const { return form2().Shape1[7].fillcolor(); }
    // Pictures of the three lights of the server store check screen: 0 waiting, 1 good, 2 fault.
    static std::vector<int> lights()
    {
        std::vector<int> out;
        for (int row = 1; row <= 3; ++row) {
            const PictureBox& p = form25().Cancel[row];
            out.push_back(p.picturelist() == "Balls" ? 0 : p.pictureindex() == 2 ? 1 : 2);
        }
        return out;
    }
    static QColor result(int label) { return form25().Label4[label].palette().color(QPalette::Window); }
    std::string sharefile(const std::string& name) const { return share + "/" + name; }
};

TEST_F(StoreCheck, LocalModeWritesOnThePcOnlyAndSendsNoEcho)
{
    g().savetype = 0;
    g().storedown = 1;
    icmp::inject::noreply(true);   // an echo would fail the check
    checkstorelocation();
    EXPECT_EQ(g().storestate, 0);
    EXPECT_EQ(g().storedown, 0);
    EXPECT_EQ(g().lastgoodip, "1");
    EXPECT_FALSE(has("c:\\tarnbc\\BARTEST.INI")) << "the probe copy is deleted";
    EXPECT_EQ(status(), "Store Location Valid And Writable");
    EXPECT_EQ(setupbox(), colorbox(1));
    EXPECT_EQ(form17().Status[0].pictureindex(), 2);
    EXPECT_EQ(form17().Label1.forecolor(), colorbox(4));
    EXPECT_EQ(loglines(), std::vector<std::string>{"Store Location Valid And Writable"});
    EXPECT_EQ(form25().Label1.caption(), "IP Status") << "the address is never looked at";
}

TEST_F(StoreCheck, MissingProbeFileReadsAsABadStore)
{
    QFile::remove(QString::fromStdString(install.root() + "/BAR999.INI"));
    for (int savetype : {0, 2}) {
        SCOPED_TRACE(savetype);
        g().savetype = savetype;
        g().storedown = 0;
        checkstorelocation();
        EXPECT_EQ(g().storestate, 1);
        EXPECT_EQ(g().storedown, 1);
        EXPECT_EQ(g().lastgoodip, "0");
        EXPECT_EQ(status(), "Error Writing To Local Folder");
        EXPECT_EQ(setupbox(), colorbox(2));
        EXPECT_EQ(form17().Status[0].pictureindex(), 1);
        EXPECT_EQ(form17().Label1.forecolor(), colorbox(2));
        EXPECT_EQ(lights()[0], 0) << "the server is not tried after a failed local test";
    }
    EXPECT_EQ(logcount("checkstorelocation: Error Writing To Local Folder"), 2);
}

TEST_F(StoreCheck, DirectModeProvesTheShare)
{
    for (int savetype : {1, 2}) {
        SCOPED_TRACE(savetype);
        g().savetype = savetype;
        g().storedown = 1;
        form25().resetscreen();
        checkstorelocation();
        EXPECT_EQ(g().storestate, 0);
        EXPECT_EQ(g().storedown, 0);
        EXPECT_EQ(g().lastgoodip, "127.0.0.1");
        EXPECT_EQ(lights(), (std::vector<int>{1, 1, 1}));
        EXPECT_EQ(result(4), colorbox(1));
        EXPECT_EQ(form25().Label1.caption(), "Valid IP Address And Responding");
        EXPECT_FALSE(QFile::exists(QString::fromStdString(sharefile("BARTEST.007"))));
        EXPECT_FALSE(has("c:\\tarnbc\\BARTEST.INI"));
        EXPECT_EQ(status(), "Store Location Valid And Writable");
    }
}

TEST_F(StoreCheck, BadAddressesFailValidationWithoutAnEcho)
{
    g().savetype = 1;
    icmp::inject::noreply(true);
    struct Row { const char* address; int iperror; } rows[] = {{"127.0.0.256", 4}, {"0.0.0.0", 1}, {"", 2}, {"127.0.0", 3}};
    for (const auto& r : rows) {
        SCOPED_TRACE(r.address);
        g().serverip = r.address;
        form25().resetscreen();
        checkstorelocation();
        EXPECT_EQ(g().iperror, r.iperror);
        EXPECT_EQ(g().storestate, 6) << "not 3: no echo was sent";
        EXPECT_EQ(g().storedown, 1);
        EXPECT_EQ(status(), "Invalid Server IP Address");
        EXPECT_EQ(form25().Label1.caption(), "Invalid IP Address");
        EXPECT_EQ(lights(), (std::vector<int>{2, 0, 0}));
        EXPECT_EQ(result(2), colorbox(2));
    }
}

TEST_F(StoreCheck, EachServerStepThatFailsShowsItsStateTextAndLights)
{
    g().savetype = 1;
    const auto noshare = [this] {   // an address that answers, without a share
        g().serverip = "127.0.0.3";
        QDir(QString::fromStdString(install.addshare("\\\\127.0.0.3\\tagstore"))).removeRecursively();
    };
    struct Row {
        const char* legend;
        std::function<void()> fault;
        int storestate;
        const char* status;   // code 3's text, though the silent address is well-formed
        const char* ipstatus;
        std::vector<int> lights;
    } rows[] = {
        {"no echo", [] { icmp::inject::noreply(true); }, 3, "Invalid IP Address", "No Response From IP Address", {2, 0, 0}},
        {"no share", noshare, 4, "No Valid Share", "Valid IP Address And Responding", {1, 2, 0}},
        {"a share that went away", [] { files::inject::vanishshare("\\\\127.0.0.1\\tagstore"); }, 4, "No Valid Share",
         "Valid IP Address And Responding", {1, 2, 0}},
        {"a read-only share", [] { files::inject::readonlyfolder("\\\\127.0.0.1\\tagstore"); }, 5, "Error Copying File",
         "Valid IP Address And Responding", {1, 1, 2}},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.legend);
        files::inject::reset();
        icmp::inject::reset();
        g().serverip = "127.0.0.1";
        form25().resetscreen();
        r.fault();
        const size_t before = loglines().size();
        checkstorelocation();
        EXPECT_EQ(g().storestate, r.storestate);
        EXPECT_EQ(g().lastgoodip, "0");
        EXPECT_EQ(status(), r.status);
        EXPECT_EQ(form25().Label1.caption(), r.ipstatus);
        EXPECT_EQ(lights(), r.lights);
        for (int i = 0; i < 3; ++i)
            if (r.lights[i] == 2) {
                EXPECT_EQ(result(i + 2), colorbox(2)) << "the caption beside light " << i + 1;
            }
        EXPECT_EQ(loglines().size(), before + 1u);
        EXPECT_EQ(loglines().back(), std::string("checkstorelocation: ") + r.status);
    }
}

TEST_F(StoreCheck, EmailModeTestsNothingAndKeepsStoredown)
{
    g().savetype = 3;
    g().storedown = 1;
    g().storestate = 4;
    g().lastgoodip = "127.0.0.1";
    checkstorelocation();
    EXPECT_EQ(g().storestate, 0);
    EXPECT_EQ(g().storedown, 1);
    EXPECT_EQ(g().lastgoodip, "0");
    EXPECT_EQ(status(), "");
    EXPECT_EQ(setupbox(), colorbox(0));
    EXPECT_TRUE(loglines().empty());
}

TEST_F(StoreCheck, BusyBoxOnlyWhenNeitherStartupNorTestMode)
{
    ShowCounter counter;
    form11().installEventFilter(&counter);
    g().savetype = 0;
    checkstorelocation();
    EXPECT_EQ(counter.shows, 0) << "startup";

    g().commandline = "";
    checkstorelocation();
    EXPECT_EQ(counter.shows, 1);
    EXPECT_EQ(form11().Label1.caption(), "Checking Store Location");
    EXPECT_FALSE(form11().isVisible()) << "hidden again at the end";

    form2().ServerIP.settext("127.0.0.1");
    form25().storetest();
    EXPECT_EQ(counter.shows, 1) << "the store check screen stands in for it";
    EXPECT_TRUE(form25().isVisible());
    EXPECT_EQ(form25().Label4[5].caption(), "127.0.0.1");
    EXPECT_EQ(g().testmode, 0);
    form25().hide();
    form11().removeEventFilter(&counter);
}

TEST_F(StoreCheck, ServerIpRecheckOnlyForANewAddress)
{
    g().savetype = 1;
    g().fittertype = 1;
    checkserverip();
    checkserverip();
    EXPECT_EQ(logcount("Store Location Valid And Writable"), 1);

    g().serverip = "127.0.0.2";   // answers, but has no share
    QDir(QString::fromStdString(install.addshare("\\\\127.0.0.2\\tagstore"))).removeRecursively();
    checkserverip();
    EXPECT_EQ(g().storestate, 4);
    EXPECT_EQ(form2().Shape1[10].fillcolor(), colorbox(2)) << "engineer data from a bad store";
    checkserverip();
    EXPECT_EQ(logcount("checkstorelocation: No Valid Share"), 2) << "a failed address is checked again";

    // In Local mode the proof is "1", never the address, so each call checks again.
    g().savetype = 0;
    checkserverip();
    checkserverip();
    EXPECT_EQ(logcount("Store Location Valid And Writable"), 3);
}

TEST_F(StoreCheck, SystemCheckScreenRunsTheStoreAndPortChecks)
{
    g().savetype = 0;
    g().scannerused[1] = 1;
    g().scannerport[1] = 3;   // no COM3 on this machine
    g().scannerused[2] = 0;
    g().scannerused[3] = 0;
    form17().runtests();
    EXPECT_EQ(form17().StoreStatus.caption(), "Store Location Valid And Writable");
    EXPECT_EQ(form17().ScanPort[1].caption(), "COM3");
    EXPECT_EQ(form17().ScanStatus[1].caption(), "Scanner COM Port Does Not Exist");
    EXPECT_EQ(form17().ScanStatus[2].caption(), "Scanner not in use");
    EXPECT_EQ(form17().Status[1].pictureindex(), 1);
    EXPECT_EQ(form17().Label3.forecolor(), colorbox(2));
    EXPECT_EQ(form2().PortBox[1].fillcolor(), colorbox(2));
    EXPECT_FALSE(form11().isVisible());
}

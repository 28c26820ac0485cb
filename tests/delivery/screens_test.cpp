// Pictures of the transfer screen for docs/screens/ on a real X server (scripts/screens-auto):
// both lists filled, an arrow lit during the merge, and the restore's question over it
// once the share has gone. Skipped unless VEXAL_SHOTS names a folder and the program draws
// on X.
#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>

#include "support/screengrab.h"
#include "transferfixture.h"

namespace {

std::string lines(const std::string& scanner, int count, int first)
{
    std::vector<std::string> l;
    for (int i = 0; i < count; ++i) l.push_back("0112" + Format(first + i, "000000") + "200703091430");
    return StoreTest::barbytes(scanner, Format(count, "000") + "20070309", l);
}

}  // namespace

class TransferScreens : public TransferTest {
protected:
    void SetUp() override
    {
        if (screengrab::shotsdir().isEmpty()) GTEST_SKIP() << "VEXAL_SHOTS is not set";
        if (!screengrab::realdisplay()) GTEST_SKIP() << "pictures need an X server (QT_QPA_PLATFORM=xcb)";
        TransferTest::SetUp();
    }
    QImage window(const QImage& display) const { return display.copy(screengrab::framed(form20()).adjusted(-4, -4, 4, 4)); }
    static void save(const QImage& image, const char* name)
    {
        EXPECT_GT(screengrab::colours(image), 4) << name << " looks blank";
        EXPECT_TRUE(screengrab::save(image, name)) << name;
    }
};

TEST_P(TransferScreens, ListsMergeAndRestoreQuestion)
{
    putstore("BARCODE.007", masterbytes("002"));
    putstore("BAR001.007", lines("222", 14, 100));
    putstore("BAR002.007", lines("456", 30, 200));
    put(localmaster, masterbytes("003"));
    put(localbar(1), lines("123", 12, 1));
    put(localbar(2), lines("456", 8, 300));
    put(localbar(3), lines("789", 1, 400));
    openscreen();
    Form20& f = form20();
    f.move(40, 40);
    save(window(screengrab::display(400)), "form20-lists");

    // An arrow lit while the second file goes over; then the share goes before the copy back.
    bool merging = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        if (!merging && f.transferring() && f.animstep == 9 && f.List1.listcount() == 2) {
            merging = true;
            save(window(screengrab::display(30)), "form20-merge");
        }
    });
    watch.start(5);
    atrow("Copying data back to server", [] { files::inject::vanishshare("\\\\127.0.0.1\\tagstore"); });

    // The restore's question is shown for real, pictured with the screen behind it, then
    // cancelled and the cancel confirmed.
    dialogs::setunattended(false);
    dialogs::queueanswer(vbOK);   // the report of the failed copy
    bool asked = false;
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box || !box->isVisible()) return;
        if (box->windowTitle() == "Error With Connection To Server" && !asked) {
            asked = true;
            const QImage d = screengrab::display(300);
            save(d.copy(screengrab::framed(f).united(screengrab::framed(*box)).adjusted(-4, -4, 4, 4)), "form20-restore");
            box->button(QMessageBox::Cancel)->click();
        } else if (box->windowTitle() == "Confirm Cancel") {
            box->button(QMessageBox::Yes)->click();
        }
    });
    answer.start(50);
    f.runtransfer();
    answer.stop();
    watch.stop();
    EXPECT_TRUE(merging);
    EXPECT_TRUE(asked);
    EXPECT_TRUE(logged("form20, runtransfer: Restoring Backups To Server. Server Unavailable And User Cancelled Restore."));
    dialogs::setunattended(true);
    files::inject::reset();
}

INSTANTIATE_TEST_SUITE_P(Folder, TransferScreens, testing::Values(sharekind::folder), sharename);

// The screens of the download: progress balls, status rows, the main screen's buttons,
// lists, image lists and the palette.
#include "pipelinefixture.h"

#include "core/colorbox.h"
#include "core/form6.h"
#include "core/imagelists.h"
#include "pipeline/reseticons.h"

namespace {

class Screens : public PipelineTest {};

TEST_F(Screens, FillballsFillsUpToNine)
{
    struct Row { const char* count; int filled; } rows[] = {
        {"0", 0}, {"1", 1}, {"5", 5}, {"9", 9}, {"10", 9}, {"12", 9}, {"-3", 0}, {"", 0}, {"abc", 0},
    };
    Form6& f = form6();
    EXPECT_EQ(f.windowTitle(), "Downloading Barcode Data");
    for (const auto& r : rows) {
        f.resetballs();
        f.TimeCount.settext(r.count);
        f.fillballs();
        for (int i = 1; i <= 9; ++i) {
            EXPECT_EQ(f.Image1[i].picturelist(), "Balls");
            EXPECT_EQ(f.Image1[i].pictureindex(), i <= r.filled ? 3 : 1) << "TimeCount " << r.count << " ball " << i;
        }
    }
    EXPECT_TRUE(dialogs::transcript().empty());
    EXPECT_TRUE(f.TimeCount.isHidden());
    EXPECT_TRUE(f.ScanSource.isHidden());
    EXPECT_THROW(f.Image1[0], Fault);
}

TEST_F(Screens, SetupstatusPutsTheStatusScreenBackToItsFirstStage)
{
    Form16& f = form16();
    EXPECT_EQ(f.windowTitle(), "Current Status");
    f.showstage(f.SaveLabel, f.SaveData, "004 / 009");
    EXPECT_TRUE(f.SaveLabel.bold());
    EXPECT_FALSE(f.SaveData.isHidden());
    f.setupstatus();
    EXPECT_TRUE(f.ScanLabel.bold());
    for (Caption* c : {&f.DownLabel, &f.ProcLabel, &f.SaveLabel}) EXPECT_FALSE(c->bold());
    EXPECT_EQ(f.ScanData.caption(), "Getting Data");
    EXPECT_FALSE(f.ScanData.isHidden());
    for (Caption* c : {&f.ScanData, &f.DownData, &f.ProcData, &f.SaveData}) EXPECT_EQ(c->forecolor(), colorbox(10));
    for (Caption* c : {&f.DownData, &f.ProcData, &f.SaveData}) {
        EXPECT_EQ(c->caption(), "000 / 000");
        EXPECT_TRUE(c->isHidden());
    }
    EXPECT_EQ(f.ScanLabel.caption(), "Current Scanner");
    EXPECT_EQ(f.SaveLabel.caption(), "Saving Data");
}

TEST_F(Screens, ControlArraysEndAtTheirLastIndex)
{
    EXPECT_EQ(form12().windowTitle(), "Corrupt Scanner Data");
    EXPECT_THROW(form1().Shape1[5], Fault);
    EXPECT_NO_THROW(form1().Shape1[4]);
}

TEST_F(Screens, AListSelectsItsNewestRow)
{
    ListBox& list = form1().List2;
    list.additem("one");
    list.additem("two");
    EXPECT_EQ(list.listindex(), 1);
    list.setlistindex(0);
    list.additem("three");
    EXPECT_EQ(list.listindex(), 2);
    EXPECT_EQ(list.list(2), "three");
    EXPECT_EQ(list.list(3), "");
    EXPECT_THROW(list.removeitem(3), Fault);
    form1().List1.additem("file");
    clearlist(2);
    EXPECT_EQ(list.listcount(), 0);
    EXPECT_EQ(form1().List1.listcount(), 1);
    clearlist(1);
    EXPECT_EQ(form1().List1.listcount(), 0);
}

TEST_F(Screens, ReseticonsFollowsTheFlags)
{
    struct Row {
        const char* legend;
        int runmode, automatic;
        std::array<int, 3> used, autoflag;
        bool checkon, actionson;
    } rows[] = {
        {"idle, one scanner", 0, 0, {1, 0, 0}, {0, 0, 0}, true, true},
        {"idle, no scanner", 0, 0, {0, 0, 0}, {0, 0, 0}, true, false},
        {"automatic with every used scanner on it", 0, 1, {1, 0, 1}, {1, 0, 1}, true, false},
        {"automatic with one used scanner by hand", 0, 1, {1, 0, 1}, {1, 0, 0}, true, true},
        {"automatic, unused scanner off automatic", 0, 1, {1, 0, 0}, {1, 0, 0}, true, false},
        {"busy", 1, 0, {1, 1, 1}, {0, 0, 0}, false, false},
    };
    Form1& f = form1();
    for (const auto& r : rows) {
        SCOPED_TRACE(r.legend);
        g().runmode = r.runmode;
        g().automaticactive = r.automatic;
        for (int i = 1; i <= 3; ++i) {
            g().scannerused[i] = r.used[i - 1];
            g().scannerauto[i] = r.autoflag[i - 1];
        }
        f.Shape1[1].setfillcolor(colorbox(1));
        reseticons();
        EXPECT_EQ(f.Check.isEnabled(), r.checkon);
        EXPECT_EQ(f.SettingsLabel.isEnabled(), r.checkon);
        EXPECT_EQ(f.Check.picturelist(), r.checkon ? "ColorIcons" : "GreyIcons");
        EXPECT_EQ(f.Check.pictureindex(), 6);
        EXPECT_EQ(f.Settings.pictureindex(), 8);
        for (PictureBox* p : {&f.Transfer, &f.Read, &f.Delete}) {
            EXPECT_EQ(p->isEnabled(), r.actionson);
            EXPECT_EQ(p->picturelist(), r.actionson ? "ColorIcons" : "GreyIcons");
        }
        EXPECT_EQ(f.ReadLabel.isEnabled(), r.actionson);
        EXPECT_EQ(f.Transfer.pictureindex(), 3);
        EXPECT_EQ(f.Read.pictureindex(), 4);
        EXPECT_EQ(f.Delete.pictureindex(), 1);
        EXPECT_EQ(f.Shape1[0].fillcolor(), colorbox(6));
        EXPECT_EQ(f.Shape1[1].fillcolor(), colorbox(5));
    }
}

TEST_F(Screens, ImageListsTellTheirPicturesApart)
{
    for (const ImageList* list : {&ColorIcons(), &GreyIcons(), &Balls(), &MiscIcons(), &FormIcons()}) {
        SCOPED_TRACE(list->name());
        ASSERT_GE(list->count(), 17);
        for (int a = 1; a <= list->count(); ++a)
            for (int b = a + 1; b <= list->count(); ++b)
                EXPECT_NE(list->picture(a).toImage(), list->picture(b).toImage()) << a << " " << b;
        try {
            list->picture(0);
            ADD_FAILURE();
        } catch (const Fault& f) {
            EXPECT_EQ(f.number, 35600);
        }
        EXPECT_THROW(list->picture(list->count() + 1), Fault);
    }
    EXPECT_NE(ColorIcons().picture(3).toImage(), GreyIcons().picture(3).toImage());
}

}  // namespace

// The two layouts of the main and setup screens, and captions that shrink instead of being
// clipped: what a user sees on a real desktop at any scale.
#include <QCoreApplication>
#include <QFontMetrics>
#include <QGroupBox>
#include <gtest/gtest.h>
#include <map>

#include "core/captionfit.h"
#include "core/controls.h"
#include "core/displaysize.h"
#include "core/globals.h"
#include "pipeline/form1.h"
#include "pipeline/screens.h"
#include "settings/form2.h"

namespace {

void layout(int displaytype)
{
    g().displaytype = displaytype;
    changedisplaysize();
}

std::map<QString, QRect> places(QWidget& screen)
{
    std::map<QString, QRect> all;
    for (QWidget* w : screen.findChildren<QWidget*>())
        if (!w->objectName().isEmpty()) all[w->objectName()] = w->geometry();
    all["screen"] = screen.geometry();
    return all;
}

// A caption's text fits inside it (as a user would read it) when it is one line.
::testing::AssertionResult fits(const Caption& c)
{
    if (c.wordWrap() || c.text().isEmpty()) return ::testing::AssertionSuccess();
    const int needed = QFontMetrics(c.font()).horizontalAdvance(c.text());
    if (needed <= c.contentsRect().width()) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << c.objectName().toStdString() << " \"" << c.caption() << "\" needs "
                                         << needed << " px of " << c.contentsRect().width();
}

TEST(DisplaySize, BothLayoutsPlaceEveryControlInsideItsScreen)
{
    for (int type : {0, 1}) {
        layout(type);
        for (QWidget* screen : {(QWidget*)&form1(), (QWidget*)&form2()}) {
            for (QWidget* w : screen->findChildren<QWidget*>()) {
                if (w->parentWidget() != screen || w->objectName().isEmpty() || w->isHidden() && w->size().isEmpty())
                    continue;
                EXPECT_TRUE(screen->rect().contains(w->geometry()))
                    << type << " " << w->objectName().toStdString() << " lies outside its screen";
            }
        }
        // The action buttons: a picture and a caption inside each Shape1 panel, none overlapping.
        Form1& f = form1();
        PictureBox* pictures[] = {&f.Check, &f.Transfer, &f.Read, &f.Delete, &f.Settings};
        Caption* captions[] = {&f.CheckLabel, &f.TransferLabel, &f.ReadLabel, &f.DeleteLabel, &f.SettingsLabel};
        for (int i = 0; i <= 4; ++i) {
            EXPECT_TRUE(f.Shape1[i].geometry().contains(pictures[i]->geometry())) << i;
            EXPECT_TRUE(f.Shape1[i].geometry().contains(captions[i]->geometry())) << i;
            if (i > 0) EXPECT_FALSE(f.Shape1[i].geometry().intersects(f.Shape1[i - 1].geometry())) << i;
        }
        // The setup screen's frames keep their contents and lie one under the other.
        Form2& s = form2();
        for (int n = 1; n <= 3; ++n) {
            for (QWidget* w : s.Frame[n].findChildren<QWidget*>())
                if (w->parentWidget() == &s.Frame[n] && !w->objectName().isEmpty())
                    EXPECT_TRUE(s.Frame[n].rect().contains(w->geometry()))
                        << type << " " << w->objectName().toStdString() << " leaves Frame" << n;
            if (n > 1) {
                EXPECT_FALSE(s.Frame[n].geometry().intersects(s.Frame[n - 1].geometry())) << type << " Frame" << n;
                EXPECT_LT(s.Frame[n - 1].geometry().bottom(), s.Frame[n].geometry().top());
            }
        }
        EXPECT_LT(s.Frame[3].geometry().bottom(), type == 0 ? s.Update[0].geometry().top() : s.height());
    }
    layout(0);
    EXPECT_EQ(form1().size(), QSize(twips(7380), twips(9690)));
    EXPECT_EQ(form2().size(), QSize(twips(9615), twips(9780)));
    EXPECT_EQ(form2().Frame[2].y(), twips(4680));
    EXPECT_EQ(form2().Frame[3].y(), twips(6480));
    layout(1);
    EXPECT_EQ(form1().size(), QSize(twips(10935), twips(6120)));
    EXPECT_EQ(form2().size(), QSize(twips(12060), twips(8340)));
    layout(0);
}

TEST(DisplaySize, FlippingTwiceEndsInTheFirstLayout)
{
    layout(0);
    const auto main = places(form1()), setup = places(form2());
    layout(1);
    EXPECT_NE(places(form1()), main);
    EXPECT_NE(places(form2()), setup);
    layout(0);
    EXPECT_EQ(places(form1()), main);
    EXPECT_EQ(places(form2()), setup);
}

// checkimports narrows the outstanding list's frame and caption while the import icon shows;
// a flip of the layout keeps that, and widens them again once the icon has gone.
TEST(DisplaySize, AFlipKeepsTheImportIconsNarrowing)
{
    Form1& f = form1();
    f.ImportIcon[0].show();
    for (int type : {1, 0}) {
        layout(type);
        EXPECT_EQ(f.ListFileBox[0].width(), twips(2655)) << type;
        EXPECT_EQ(f.Label2.width(), twips(2655)) << type;
        EXPECT_LT(f.ListFileBox[0].geometry().right(), f.ImportIcon[0].geometry().left()) << type;
    }
    f.ImportIcon[0].hide();
    layout(1);
    EXPECT_EQ(f.ListFileBox[0].width(), twips(3375));
    EXPECT_EQ(f.Label2.width(), twips(3375));
    layout(0);
}

TEST(DisplaySize, NoCaptionOfTheMainAndSetupScreensIsClipped)
{
    // A hidden screen gets its resizes when it is shown, as a user would see it.
    for (int type : {0, 1}) {
        layout(type);
        for (QWidget* screen : {(QWidget*)&form1(), (QWidget*)&form2()}) {
            screen->show();
            QCoreApplication::processEvents();
            for (const Caption* c : screen->findChildren<Caption*>()) EXPECT_TRUE(fits(*c)) << "layout " << type;
            screen->hide();
        }
    }
    layout(0);
    const Caption& check = form1().CheckLabel;
    EXPECT_LT(check.font().pointSizeF(), captionfont(check).pointSizeF()) << "\"Check Scanner\" had to shrink";
}

TEST(Caption, ShrinksToFitAndGrowsBack)
{
    Caption c(nullptr, "Check Scanner");
    c.setGeometry(0, 0, 400, 20);
    c.show();
    const qreal own = captionfont(c).pointSizeF();
    auto drawn = [&] { return c.font().pointSizeF(); };
    EXPECT_EQ(drawn(), own);
    c.resize(QFontMetrics(c.font()).horizontalAdvance(c.text()) * 3 / 4, 20);
    EXPECT_LT(drawn(), own);
    EXPECT_TRUE(fits(c));
    // Bold is a property of the caption's own font and survives the shrinking.
    c.setbold(true);
    EXPECT_TRUE(c.bold());
    EXPECT_TRUE(fits(c));
    c.setcaption("OK");
    EXPECT_EQ(drawn(), own) << "a short text takes the full size again";
    c.setcaption("A caption far too long for any place on a screen");
    EXPECT_GE(drawn(), own * 2 / 3 - 0.01) << "never below two thirds";
    c.resize(2000, 20);
    EXPECT_EQ(drawn(), own);
    EXPECT_TRUE(c.bold());
}

}  // namespace

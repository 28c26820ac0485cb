// The image lists: the greyed buttons are twins of the coloured ones, the balls keep their
// states, and a sheet of all five lists goes to <build>/screens/image-lists.png.
#include "support/testdirs.h"
#include <QDir>
#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include "core/imagelists.h"

namespace {

bool isgrey(QRgb c) { return qAlpha(c) == 0 || (qRed(c) == qGreen(c) && qGreen(c) == qBlue(c)); }

TEST(ImageLists, GreyButtonsAreTheColourShapesWithoutColour)
{
    for (int n = 1; n <= ColorIcons().count(); ++n) {
        const QImage colour = ColorIcons().picture(n).toImage(), grey = GreyIcons().picture(n).toImage();
        ASSERT_EQ(colour.size(), QSize(32, 32));
        int coloured = 0;
        for (int y = 0; y < 32; ++y)
            for (int x = 0; x < 32; ++x) {
                EXPECT_EQ(qAlpha(colour.pixel(x, y)), qAlpha(grey.pixel(x, y))) << n << " at " << x << "," << y;
                EXPECT_TRUE(isgrey(grey.pixel(x, y))) << n << " at " << x << "," << y;
                coloured += !isgrey(colour.pixel(x, y));
            }
        EXPECT_GT(coloured, 20) << n;
    }
}

TEST(ImageLists, EmptyBallIsPaleAndProgressBallIsGreen)
{
    const QColor empty = Balls().picture(1).toImage().pixelColor(16, 16);
    const QColor full = Balls().picture(3).toImage().pixelColor(16, 16);
    EXPECT_GT(empty.lightness(), 230);
    EXPECT_GT(full.green(), full.red() + 60);
    EXPECT_GT(full.green(), full.blue() + 60);
}

TEST(ImageLists, ContactSheet)
{
    const ImageList* lists[] = {&ColorIcons(), &GreyIcons(), &Balls(), &MiscIcons(), &FormIcons()};
    const int cell = 40, left = 90;
    QImage sheet(left + 20 * cell, 16 + 5 * cell, QImage::Format_ARGB32);
    sheet.fill(QColor(236, 233, 216));
    QPainter p(&sheet);
    for (int n = 1; n <= 20; ++n)
        p.drawText(QRect(left + (n - 1) * cell, 0, cell, 16), Qt::AlignCenter, QString::number(n));
    for (int row = 0; row < 5; ++row) {
        const int top = 16 + row * cell;
        p.drawText(QRect(4, top, left - 8, cell), Qt::AlignVCenter, QString::fromStdString(lists[row]->name()));
        for (int n = 1; n <= lists[row]->count(); ++n)
            p.drawPixmap(left + (n - 1) * cell + 4, top + 4, lists[row]->picture(n));
    }
    p.end();
    QDir().mkpath(QString(VEXAL_BINARY_DIR) + "/screens");
    EXPECT_TRUE(sheet.save(QString(VEXAL_BINARY_DIR) + "/screens/image-lists.png"));
}

}  // namespace

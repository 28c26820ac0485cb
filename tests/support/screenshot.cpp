#include "support/screenshot.h"

#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <QSet>
#include <gtest/gtest.h>

int drawscreen(QWidget& screen, const char* name)
{
    screen.show();
    QCoreApplication::processEvents();
    const QImage image = screen.grab().toImage();
    screen.hide();
    EXPECT_EQ(image.size(), screen.size()) << name;
    QDir().mkpath(VEXAL_BINARY_DIR "/screens");
    EXPECT_TRUE(image.save(QString(VEXAL_BINARY_DIR "/screens/") + name + ".png")) << name;
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); y += 2)
        for (int x = 0; x < image.width(); x += 2) colours.insert(image.pixel(x, y));
    return colours.size();
}

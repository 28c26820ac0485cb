#include "support/screenshot.h"
#include "support/screengrab.h"
#include "support/testdirs.h"

#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <gtest/gtest.h>

int drawscreen(QWidget& screen, const char* name)
{
    screen.show();
    QCoreApplication::processEvents();
    const QImage image = screen.grab().toImage();
    screen.hide();
    EXPECT_EQ(image.size(), screen.size()) << name;
    QDir().mkpath(QString(VEXAL_BINARY_DIR) + "/screens");
    EXPECT_TRUE(image.save((QString(VEXAL_BINARY_DIR) + "/screens/") + name + ".png")) << name;
    return screengrab::colours(image);
}

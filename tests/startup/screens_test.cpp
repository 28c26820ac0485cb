// Pictures of the start-up's screens and the tray icon's states, for docs/screens/.
#include "support/testdirs.h"
#include <QDir>
#include <QImage>
#include <QPainter>

#include "core/displaysize.h"
#include "core/form22.h"
#include "pipeline/form1.h"
#include "pipeline/pipelinefixture.h"
#include "support/frmsplash.h"
#include "support/screenshot.h"

namespace {

TEST(StartupScreens, SplashExitOptionsAndBothLayoutsOfTheMainScreen)
{
    frmsplash().load();
    frmsplash().done();
    EXPECT_GT(drawscreen(frmsplash(), "frmSplash"), 2);
    EXPECT_EQ(frmsplash().lblVersion.text().toStdString(), "Version 4.65 Issue: 21022011");
    EXPECT_EQ(form1().windowTitle().toStdString(), "VEXAL Bench Clock Utility v4.65 (Issue: 21/02/11)");
    EXPECT_GT(drawscreen(form22(), "Form22"), 2);
    g().displaytype = 0;
    changedisplaysize();
    EXPECT_GT(drawscreen(form1(), "Form1-tall"), 2);
    g().displaytype = 1;
    changedisplaysize();
    EXPECT_GT(drawscreen(form1(), "Form1-wide"), 2);
    g().displaytype = 0;
    changedisplaysize();
}

TEST(StartupScreens, TrayIconStatesAreDifferentPictures)
{
    const char* names[] = {"vexalgrey", "vexalyellow", "vexalblue", "vexalred", "vexalauto1", "vexalauto2",
                           "vexalauto3", "vexalauto4", "vexalauto5", "vexalauto6", "vexalauto7", "store"};
    QImage sheet(12 * 40, 40, QImage::Format_ARGB32);
    sheet.fill(Qt::white);
    QPainter p(&sheet);
    std::vector<QImage> seen;
    for (int i = 0; i < 12; ++i) {
        QImage icon(QString(VEXAL_SOURCE_DIR) + "/resources/icons/" + names[i] + ".ico");
        ASSERT_FALSE(icon.isNull()) << names[i];
        EXPECT_EQ(icon.size(), QSize(16, 16));
        for (const QImage& other : seen) EXPECT_NE(icon, other) << names[i];
        seen.push_back(icon);
        p.drawImage(QRect(i * 40 + 4, 4, 32, 32), icon);
    }
    p.end();
    QDir().mkpath(QString(VEXAL_BINARY_DIR) + "/screens");
    EXPECT_TRUE(sheet.save(QString(VEXAL_BINARY_DIR) + "/screens/tray-icons.png"));
}

}  // namespace

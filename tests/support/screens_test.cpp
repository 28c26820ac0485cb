// The support screens as a user sees them, drawn offscreen into <build>/screens/ (a copy is
// kept in docs/screens/).
#include <gtest/gtest.h>

#include "core/globals.h"
#include "platform/paths.h"
#include "support/form23.h"
#include "support/screenshot.h"
#include "support/tempinstall.h"

TEST(SupportScreens, DriverInstallation)
{
    TempInstall install;
    resetglobals();
    g().homedir = platform::installfolder;
    EXPECT_GT(drawscreen(form23(), "Form23"), 4);
}

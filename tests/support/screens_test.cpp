// The support screens as a user sees them, drawn offscreen into <build>/screens/ (a copy is
// kept in docs/screens/).
#include <gtest/gtest.h>

#include "core/globals.h"
#include "platform/paths.h"
#include "settings/form3.h"
#include "support/form18.h"
#include "support/form21.h"
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

TEST(SupportScreens, HelpMenu)
{
    TempInstall install;
    resetglobals();
    g().homedir = platform::installfolder;
    EXPECT_GT(drawscreen(form18(), "Form18"), 4);
}

TEST(SupportScreens, SupportEmail)
{
    TempInstall install;
    resetglobals();
    g().homedir = platform::installfolder;
    g().savetype = 1;
    form3().Company.settext("Test Motors");
    form3().User.settext("Fred");
    form3().Telephone.settext("01234 567890");
    form21().preparemail();
    form21().flipattach(2);
    EXPECT_GT(drawscreen(form21(), "Form21"), 4);
}

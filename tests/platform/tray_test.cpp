#include <QApplication>
#include <QPixmap>
#include <QSystemTrayIcon>
#include <QWidget>
#include <gtest/gtest.h>

#include "platform/tray.h"

namespace {

QIcon filled(Qt::GlobalColor colour)
{
    QPixmap p(16, 16);
    p.fill(colour);
    return QIcon(p);
}

TEST(Tray, OperationsWithoutANotificationArea)
{
    QWidget picHook;
    std::vector<int> got;
    tray::setmousehandler(&picHook, [&](int x) { got.push_back(x); });
    EXPECT_FALSE(tray::available());  // offscreen

    NOTIFYICONDATA nid;
    nid.hWnd = &picHook;
    nid.uID = 1;
    nid.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
    nid.uCallbackMessage = WM_MOUSEMOVE;
    nid.hIcon = filled(Qt::gray);
    nid.szTip = "TaskTray";
    ASSERT_TRUE(Shell_NotifyIconA(NIM_ADD, nid));
    EXPECT_FALSE(Shell_NotifyIconA(NIM_ADD, nid));  // one icon
    EXPECT_TRUE(tray::present());
    EXPECT_EQ(tray::tip(), "TaskTray");

    // A change of tip alone keeps the icon; the tip is cut to 63 characters.
    NOTIFYICONDATA tip;
    tip.hWnd = &picHook;
    tip.uID = 1;
    tip.uFlags = NIF_TIP;
    tip.szTip = std::string(60, 'a') + "bcdefg";
    ASSERT_TRUE(Shell_NotifyIconA(NIM_MODIFY, tip));
    EXPECT_EQ(tray::tip(), std::string(60, 'a') + "bcd");
    EXPECT_EQ(tray::icon().cacheKey(), nid.hIcon.cacheKey());
    nid.hIcon = filled(Qt::green);
    nid.szTip = "Vexal Barcoding";
    ASSERT_TRUE(Shell_NotifyIconA(NIM_MODIFY, nid));
    EXPECT_EQ(tray::icon().cacheKey(), nid.hIcon.cacheKey());

    // Mouse messages arrive as twips: through the seam, and from Qt's own activation.
    tray::sendmouse(&picHook, WM_RBUTTONDBLCLK);
    auto* qt = qApp->findChild<QSystemTrayIcon*>();
    ASSERT_NE(qt, nullptr);
    emit qt->activated(QSystemTrayIcon::DoubleClick);
    emit qt->activated(QSystemTrayIcon::Context);
    EXPECT_EQ(got, (std::vector<int>{518 * 15, 515 * 15, 517 * 15}));

    // Another window gets nothing; after removal nobody does.
    QWidget stranger;
    tray::sendmouse(&stranger, WM_LBUTTONDBLCLK);
    NOTIFYICONDATA del;
    del.hWnd = &picHook;
    del.uID = 1;
    ASSERT_TRUE(Shell_NotifyIconA(NIM_DELETE, del));
    EXPECT_FALSE(Shell_NotifyIconA(NIM_DELETE, del));
    EXPECT_FALSE(Shell_NotifyIconA(NIM_MODIFY, nid));
    tray::sendmouse(&picHook, WM_LBUTTONDBLCLK);
    EXPECT_EQ(got.size(), 3u);
    EXPECT_FALSE(tray::present());
    EXPECT_EQ(tray::tip(), "");

    // Added again without the message flag: no mouse messages.
    nid.uFlags = NIF_ICON | NIF_TIP;
    ASSERT_TRUE(Shell_NotifyIconA(NIM_ADD, nid));
    tray::sendmouse(&picHook, WM_LBUTTONDBLCLK);
    EXPECT_EQ(got.size(), 3u);
    ASSERT_TRUE(Shell_NotifyIconA(NIM_DELETE, del));
    tray::setmousehandler(&picHook, nullptr);
}

}  // namespace

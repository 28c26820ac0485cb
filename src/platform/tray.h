// The notification-area icon, by the operations of Shell_NotifyIconA over Qt's tray.
//
// Mouse messages reach the owner as the classic numbers (512 move, 515 left double-click,
// 517 right button up, 518 right double-click), passed the way the owner's picture box got
// them: as a horizontal position in twips, the message number times the twips per pixel.
#pragma once

#include <QIcon>
#include <cstdint>
#include <functional>
#include <string>

class QWidget;

constexpr uint32_t NIM_ADD = 0, NIM_MODIFY = 1, NIM_DELETE = 2;
constexpr uint32_t NIF_MESSAGE = 1, NIF_ICON = 2, NIF_TIP = 4;
constexpr uint32_t WM_MOUSEMOVE = 512, WM_LBUTTONDBLCLK = 515, WM_RBUTTONUP = 517,
                   WM_RBUTTONDBLCLK = 518;

struct NOTIFYICONDATA {
    uint32_t cbSize = 88;
    QWidget* hWnd = nullptr;      // the owner that receives the mouse messages
    uint32_t uID = 0;
    uint32_t uFlags = 0;
    uint32_t uCallbackMessage = 0;
    QIcon hIcon;
    std::string szTip;            // up to 63 characters are kept
};

bool Shell_NotifyIconA(uint32_t operation, const NOTIFYICONDATA& data);

namespace tray {

constexpr int twipsperpixel = 15;

// Where the owner's mouse messages go: called with the message number times twipsperpixel.
void setmousehandler(QWidget* owner, std::function<void(int x)> handler);
// Whether the desktop has a notification area (false under the offscreen platform).
bool available();
// Test seam: deliver a mouse message as the tray would.
void sendmouse(QWidget* owner, uint32_t message);
// What the icon currently shows: present, tip, icon.
bool present();
std::string tip();
QIcon icon();

}  // namespace tray

#include "platform/tray.h"

#include <QApplication>
#include <QPointer>
#include <QSystemTrayIcon>
#include <QWidget>
#include <map>
#include "core/runtimeerror.h"

// One icon in the notification area, kept as the record the program last gave it. The
// record is kept even where the desktop has no notification area (the offscreen platform,
// a bare X server): Qt shows the icon when an area appears, so adding and changing succeed
// there too.

namespace {

constexpr uint32_t WM_LBUTTONUP = 514, WM_MBUTTONUP = 520;

struct State {
    bool present = false;
    NOTIFYICONDATA data;
    QPointer<QWidget> owner;
    std::map<QWidget*, std::function<void(int)>> handlers;
    QSystemTrayIcon* icon = nullptr;
};

State& state()
{
    static State s;
    return s;
}

void deliver(uint32_t message)
{
    auto& s = state();
    if (!s.present || !(s.data.uFlags & NIF_MESSAGE) || !s.data.uCallbackMessage || !s.owner) return;
    auto h = s.handlers.find(s.owner.data());
    if (h == s.handlers.end() || !h->second) return;
    auto handler = h->second;  // the handler may replace itself while it runs
    handler((int)message * tray::twipsperpixel);
}

// Qt tells clicks apart less finely than the classic tray: a right double-click arrives as a
// context request (517) like a single right click, so 518 never comes from Qt itself.
void activated(QSystemTrayIcon::ActivationReason reason)
{
    switch (reason) {
    case QSystemTrayIcon::DoubleClick: deliver(WM_LBUTTONDBLCLK); break;
    case QSystemTrayIcon::Context: deliver(WM_RBUTTONUP); break;
    case QSystemTrayIcon::Trigger: deliver(WM_LBUTTONUP); break;
    case QSystemTrayIcon::MiddleClick: deliver(WM_MBUTTONUP); break;
    default: break;
    }
}

// The Qt icon, made on first need and parented to the application so it goes with it.
QSystemTrayIcon* qticon()
{
    auto& s = state();
    if (!s.icon && qobject_cast<QApplication*>(QCoreApplication::instance())) {
        s.icon = new QSystemTrayIcon(QCoreApplication::instance());
        QObject::connect(s.icon, &QSystemTrayIcon::activated, guard(activated));
        QObject::connect(s.icon, &QObject::destroyed, guard([] { state().icon = nullptr; }));
    }
    return s.icon;
}

void apply(const NOTIFYICONDATA& data)
{
    auto& s = state();
    if (data.uFlags & NIF_ICON) s.data.hIcon = data.hIcon;
    if (data.uFlags & NIF_TIP) s.data.szTip = data.szTip.substr(0, 63);
    if (data.uFlags & NIF_MESSAGE) s.data.uCallbackMessage = data.uCallbackMessage;
    s.data.uFlags |= data.uFlags;
    if (auto* icon = qticon()) {
        icon->setIcon(s.data.hIcon);
        icon->setToolTip(QString::fromLatin1(s.data.szTip.c_str()));
        if (!s.data.hIcon.isNull()) icon->show();
    }
}

}  // namespace

bool Shell_NotifyIconA(uint32_t operation, const NOTIFYICONDATA& data)
{
    auto& s = state();
    switch (operation) {
    case NIM_ADD:
        if (s.present) return false;
        s.present = true;
        s.data = NOTIFYICONDATA{};
        s.data.hWnd = data.hWnd;
        s.data.uID = data.uID;
        s.owner = data.hWnd;
        apply(data);
        return true;
    case NIM_MODIFY:
        if (!s.present || data.uID != s.data.uID) return false;
        apply(data);
        return true;
    case NIM_DELETE:
        if (!s.present || data.uID != s.data.uID) return false;
        s.present = false;
        if (s.icon) s.icon->hide();
        return true;
    default:
        return false;
    }
}

namespace tray {

void setmousehandler(QWidget* owner, std::function<void(int x)> handler)
{
    auto& s = state();
    if (!owner) return;
    if (!handler) {
        s.handlers.erase(owner);
        return;
    }
    bool known = s.handlers.count(owner) > 0;
    s.handlers[owner] = std::move(handler);
    if (!known) QObject::connect(owner, &QObject::destroyed, guard([owner] { state().handlers.erase(owner); }));
}

bool available()
{
    return qobject_cast<QApplication*>(QCoreApplication::instance()) && QSystemTrayIcon::isSystemTrayAvailable();
}

void sendmouse(QWidget* owner, uint32_t message)
{
    if (owner != state().owner.data()) return;
    deliver(message);
}

bool present() { return state().present; }
std::string tip() { return state().present ? state().data.szTip : ""; }
QIcon icon() { return state().present ? state().data.hIcon : QIcon(); }

}  // namespace tray

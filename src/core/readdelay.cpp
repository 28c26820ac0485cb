#include "core/readdelay.h"

#include <QCoreApplication>
#include <QTimer>

#include "core/globals.h"
#include "runtime/vb.h"

namespace {

// The monitor form's ReadDelayTimer and the seconds still to wait.
Int16 readdelaycount;

QTimer& ReadDelayTimer()
{
    static QTimer* timer = [] {
        auto* t = new QTimer;
        t->setInterval(1000);
        QObject::connect(t, &QTimer::timeout, [] { readdelaycount -= 1; });
        return t;
    }();
    return *timer;
}

}  // namespace

void waitreaddelay()
{
    if (g().readdelay <= 0) return;
    readdelaycount = g().readdelay;
    ReadDelayTimer().start();
    while (readdelaycount >= 0) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    ReadDelayTimer().stop();
}

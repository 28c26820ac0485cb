#include "core/readdelay.h"

#include <QCoreApplication>

#include "core/form9.h"
#include "core/globals.h"
#include "runtime/vb.h"
#include "core/runtimeerror.h"

namespace {

// The seconds still to wait, counted down by the monitor form's ReadDelayTimer.
Int16 readdelaycount;

QTimer& ReadDelayTimer()
{
    static QTimer& timer = []() -> QTimer& {
        QTimer& t = form9().ReadDelayTimer;
        QObject::connect(&t, &QTimer::timeout, guard([] { readdelaycount -= 1; }));
        return t;
    }();
    return timer;
}

}  // namespace

void waitreaddelay()
{
    if (g().readdelay <= 0) return;
    readdelaycount = g().readdelay;
    setinterval(ReadDelayTimer(), 1000);
    while (readdelaycount >= 0) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    setinterval(ReadDelayTimer(), 0);
}

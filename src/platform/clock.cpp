#include "platform/clock.h"

#include <QElapsedTimer>
#include <optional>

namespace platform::clock {
namespace {

// A set clock is a fixed moment plus the time that has run since it was set.
struct SetClock {
    QDateTime moment;
    QElapsedTimer running;
};

std::optional<SetClock>& setclock()
{
    static std::optional<SetClock> c;
    return c;
}

}  // namespace

QDateTime now()
{
    auto& c = setclock();
    if (!c) return QDateTime::currentDateTime();
    return c->moment.addMSecs(c->running.elapsed());
}

QDate today() { return now().date(); }

double Timer()
{
    QTime t = now().time();
    return t.msecsSinceStartOfDay() / 1000.0;
}

void set(const QDateTime& moment)
{
    auto& c = setclock();
    c.emplace();
    c->moment = moment;
    c->running.start();
}

void advance(qint64 seconds)
{
    // Moving the real clock first fixes it at the present moment.
    set(now().addSecs(seconds));
}

void reset() { setclock().reset(); }

}  // namespace platform::clock

// The PC's clock, settable in tests (day change, clock-change windows, 30-day ages).
#pragma once

#include <QDateTime>

namespace platform::clock {

QDateTime now();
QDate today();
// Seconds since midnight, as the classic Timer function.
double Timer();

// Tests: run the clock from a given moment (it keeps ticking from there), move it, or go
// back to the real clock.
void set(const QDateTime& moment);
void advance(qint64 seconds);
void reset();

}  // namespace platform::clock

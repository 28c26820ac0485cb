// Faults that reach an event with no handler of its own: the runtime's error box, title
// "VEXAL Scanner Interface", text "Run-time error '<n>':" and the description after a blank
// line; the program goes on.
#pragma once

#include <exception>

void runtimeerror(const std::exception& e);

// Runs an event's routine, showing a fault that escapes it in the runtime's box.
template <typename Handler>
void guarded(Handler handler)
{
    try {
        handler();
    } catch (const std::exception& e) {
        runtimeerror(e);
    }
}

// Faults that reach an event with no handler of its own: the runtime's error box, title
// "VEXAL Scanner Interface", text "Run-time error '<n>':" and the description after a blank
// line; the program goes on.
#pragma once

#include <exception>
#include <functional>
#include <utility>

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

// The slot form of `guarded`: connect(&control, &Control::clicked, owner, guard([this] { ... })).
// Every slot, timer and device event is connected through it, so no fault ever unwinds into
// the event loop. The call operator takes whatever the signal passes that the handler accepts.
template <typename Handler>
struct Guard {
    Handler handler;
    template <typename... Args>
    auto operator()(Args&&... args) -> decltype(std::invoke(handler, std::forward<Args>(args)...), void())
    {
        guarded([&] { std::invoke(handler, std::forward<Args>(args)...); });
    }
};

template <typename Handler>
Guard<Handler> guard(Handler handler)
{
    return Guard<Handler>{std::move(handler)};
}

#include "pipeline/session.h"

#include <exception>

namespace {
std::function<void()>& closer()
{
    static std::function<void()> c;
    return c;
}
}  // namespace

void setsessioncloser(std::function<void()> c) { closer() = std::move(c); }

void closesession()
{
    if (!closer()) return;
    try {
        closer()();
    } catch (const std::exception&) {
    }
}

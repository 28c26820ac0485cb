#include "core/globals.h"

#include <memory>

namespace {
std::unique_ptr<Globals> block = std::make_unique<Globals>();
}

Globals& g() { return *block; }

void resetglobals() { block = std::make_unique<Globals>(); }

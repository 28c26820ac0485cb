#include "support/testdirs.h"

namespace testdirs {
const char* source() { return VEXAL_SOURCE_FOLDER; }
const char* binary() { return VEXAL_BINARY_FOLDER; }
}  // namespace testdirs

// The project's source folder and this build's folder, for tests that read resources or
// start the built tools. They come from one object file, so every other test object is the
// same whatever folder the project is checked out in (and can come from a compiler cache).
#pragma once

namespace testdirs {
const char* source();
const char* binary();
}  // namespace testdirs

#define VEXAL_SOURCE_DIR (testdirs::source())
#define VEXAL_BINARY_DIR (testdirs::binary())

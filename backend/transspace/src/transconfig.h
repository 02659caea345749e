// Included first by every unit of the library: assertions are part of the library's contract
// (their texts are fixed) and must be compiled in whatever the build type.
#pragma once

#ifdef NDEBUG
#error "libtransspace must be built with assertions enabled (no NDEBUG)"
#endif
#include <cassert>

// Included first by every unit of the library: the spec's assertions are part of its behaviour
// and must be compiled in whatever the build type.
#pragma once

#ifdef NDEBUG
#error "libtransspace must be built with assertions enabled (no NDEBUG)"
#endif
#include <cassert>

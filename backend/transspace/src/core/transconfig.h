// Included first by every unit of the library: assertions are part of the library's contract
// (their texts are fixed) and must be compiled in whatever the build type.
#pragma once

#ifdef NDEBUG
#error "libtransspace must be built with assertions enabled (no NDEBUG)"
#endif
#include <cassert>

// assert() whose report names `function` instead of the enclosing function's own signature: for
// an assertion whose fixed report text names the function by a signature the compiler would spell
// differently (the UTF-16 results are typed unsigned short at the boundary, UChar in the report).
// The report is glibc's, exactly as assert() makes it.
#define TRANS_ASSERT_IN(function, expression) \
  (static_cast<bool>(expression) ? void(0) : __assert_fail(#expression, __FILE__, __LINE__, function))

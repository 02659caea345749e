// The one number formatting of the values, shared by TransDoubleImpl and TransIntegerImpl: an ICU
// formatter for the locale with the decimal pattern "#0.###" (kept per thread and locale, see the
// unit), the result as a new TransString (failure and warning when it is empty).
#pragma once

#include <transspace/transstatus.h>
#include <transspace/transstring.h>

#include <cstdint>
#include <unicode/locid.h>

namespace transnumberformat {

TransString* format(double value, icu::Locale const& locale, TransStatus& status);
TransString* format(std::int64_t value, icu::Locale const& locale, TransStatus& status);

}  // namespace transnumberformat

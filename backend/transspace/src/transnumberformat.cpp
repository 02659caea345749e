#include "transconfig.h"

#include "transnumberformat.h"

#include <memory>
#include <unicode/decimfmt.h>
#include <unicode/numfmt.h>

namespace {

template <typename Number>
TransString* formatWithPattern(Number value, icu::Locale const& locale, TransStatus& status) {
  status.reset();
  icu::UnicodeString result;
  UErrorCode error = U_ZERO_ERROR;
  std::unique_ptr<icu::NumberFormat> format(icu::NumberFormat::createInstance(locale, error));
  if (format) {
    // The error code is deliberately not consulted (Part 2.3): only an empty result is reported.
    if (auto* decimal = dynamic_cast<icu::DecimalFormat*>(format.get())) {
      decimal->applyPattern(icu::UnicodeString(u"#0.###"), error);
    }
    format->format(value, result);
  }
  if (result.isEmpty()) {
    status.failure(true);
    status.warning(true);
  }
  return new TransString(reinterpret_cast<unsigned short const*>(result.getTerminatedBuffer()));
}

}  // namespace

namespace transnumberformat {

TransString* format(double value, icu::Locale const& locale, TransStatus& status) {
  return formatWithPattern(value, locale, status);
}

TransString* format(std::int64_t value, icu::Locale const& locale, TransStatus& status) {
  return formatWithPattern(value, locale, status);
}

}  // namespace transnumberformat

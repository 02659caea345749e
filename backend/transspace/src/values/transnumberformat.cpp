#include "core/transconfig.h"

#include "values/transnumberformat.h"
#include "core/transutf16.h"

#include <map>
#include <memory>
#include <string>
#include <unicode/decimfmt.h>
#include <unicode/numfmt.h>

namespace {

// A fresh ICU formatter for every number would be the simple way, but creating one costs far more than
// formatting (the dictionary of 100,000 variables formats about a million numbers), so each thread
// keeps one formatter per locale, with the pattern applied, for as long as it lives. The text is
// the same: a formatter's output depends only on its locale and pattern, and the locale is still
// read at every call by the callers. A formatter that ICU cannot make is not remembered.
class PatternFormatters {
public:
  icu::NumberFormat* forLocale(icu::Locale const& locale) {
    std::string const key = locale.getName();
    auto found = formatters_.find(key);
    if (found != formatters_.end()) return found->second.get();
    std::unique_ptr<icu::NumberFormat> format = create(locale);
    if (!format) return nullptr;
    return formatters_.emplace(key, std::move(format)).first->second.get();
  }

private:
  static std::unique_ptr<icu::NumberFormat> create(icu::Locale const& locale) {
    UErrorCode error = U_ZERO_ERROR;
    std::unique_ptr<icu::NumberFormat> format(icu::NumberFormat::createInstance(locale, error));
    if (!format) return nullptr;
    // The error code is deliberately not consulted: only an empty result is reported.
    if (auto* decimal = dynamic_cast<icu::DecimalFormat*>(format.get())) {
      decimal->applyPattern(icu::UnicodeString(u"#0.###"), error);
    }
    return format;
  }

  std::map<std::string, std::unique_ptr<icu::NumberFormat>> formatters_;
};

template <typename Number>
TransString* formatWithPattern(Number value, icu::Locale const& locale, TransStatus& status) {
  status.reset();
  thread_local PatternFormatters formatters;
  icu::UnicodeString result;
  if (icu::NumberFormat* format = formatters.forLocale(locale)) format->format(value, result);
  if (result.isEmpty()) {
    status.failure(true);
    status.warning(true);
  }
  return new TransString(TransUTF16::exported(result.getTerminatedBuffer()));
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

#include "core/transconfig.h"

#include "values/transnumbertext.h"

#include "values/transdoubleimpl.h"
#include "values/transintegerimpl.h"
#include <transspace/transstatus.h>
#include <transspace/transstring.h>
#include <transspace/transvalue.h>
#include "core/transutf16.h"

#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace {

// Whole numbers up to here are exact in a double and have no exponent in the formatter's text.
constexpr double kExactWholeLimit = 9007199254740992.0;  // 2^53

}  // namespace

XMLCh const* TransNumberText::integer(long value) {
  if (!plainIntegers()) return integerByFormatter(value);
  char text[24];
  std::to_chars_result result = std::to_chars(text, text + sizeof text, value);
  return ascii(text, result.ptr);
}

XMLCh const* TransNumberText::number(double value) {
  // A negative zero keeps its sign in the formatter's text; fractions are rounded by it.
  bool const wholeAndSmall = std::fabs(value) < kExactWholeLimit && value == std::trunc(value);
  if (!wholeAndSmall || (value == 0.0 && std::signbit(value))) return numberByFormatter(value);
  char text[24];
  std::to_chars_result result = std::to_chars(text, text + sizeof text, static_cast<std::int64_t>(value));
  return ascii(text, result.ptr);
}

XMLCh const* TransNumberText::integerByFormatter(long value) {
  TransStatus status;
  return kept(TransIntegerImpl(value).asString(status), status);
}

XMLCh const* TransNumberText::numberByFormatter(double value) {
  TransStatus status;
  return kept(TransDoubleImpl(value).asXMLString(status), status);
}

// The formatter's text, copied unless the conversion failed; the string is given back either way,
// since the caller owns every returned string.
XMLCh const* TransNumberText::kept(TransString* text, TransStatus const& status) {
  bool const failed = status.failure();
  if (!failed) formatted_ = icu::UnicodeString(TransUTF16::internal(text->asUTF16()));
  TransValue::releaseString(text);
  return failed ? nullptr : reinterpret_cast<XMLCh const*>(formatted_.getTerminatedBuffer());
}

// Whether the current numeric locale's formatter writes integers as the C library does: ASCII
// digits after an ASCII minus. Asked of the formatter once per locale, with the values that would
// show grouping, other digits or another sign.
bool TransNumberText::plainIntegers() {
  struct Known {
    std::string locale;
    bool plain = false;
  };
  thread_local std::vector<Known> known;
  char const* current = std::setlocale(LC_NUMERIC, nullptr);
  if (current == nullptr) current = "";
  for (Known const& k : known) {
    if (k.locale == current) return k.plain;
  }
  static long const probes[] = {
      0, 7, -1, 1234567, -9876543210L, std::numeric_limits<long>::max(), std::numeric_limits<long>::min()};
  bool plain = true;
  for (long probe : probes) {
    char text[24];
    std::to_chars_result result = std::to_chars(text, text + sizeof text, probe);
    XMLCh const* formatted = integerByFormatter(probe);
    plain = plain && formatted != nullptr && std::u16string(formatted) == std::u16string(text, result.ptr);
  }
  known.push_back({current, plain});
  return plain;
}

XMLCh const* TransNumberText::ascii(char const* begin, char const* end) {
  XMLCh* out = digits_;
  for (char const* c = begin; c != end; ++c) *out++ = static_cast<XMLCh>(*c);
  *out = 0;
  return digits_;
}

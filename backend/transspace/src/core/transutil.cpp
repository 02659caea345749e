#include "core/transconfig.h"

#include "core/transutil.h"
#include "core/transhosttext.h"

#include <transspace/zorb/platform.h>

#include <clocale>
#include <memory>
#include <vector>

#include <unicode/fmtable.h>
#include <unicode/locid.h>
#include <unicode/numfmt.h>
#include <unicode/ucnv.h>

std::string TransUtil::codepage() {
  if (qUTF8mode() != 0) return "UTF-8";
  return ZORBMBDefaultCodePage();
}

UConverter* TransUtil::openHostConverter() {
  UErrorCode error = U_ZERO_ERROR;
  UConverter* converter = ucnv_open(codepage().c_str(), &error);
  if (U_FAILURE(error)) {
    if (converter != nullptr) ucnv_close(converter);
    return nullptr;
  }
  return converter;
}

icu::UnicodeString TransUtil::MBCStoUTF16(std::string const& text) {
  TransHostText host;
  return host.toUTF16(text.data(), text.size());
}

std::string TransUtil::UTF16toMBCS(icu::UnicodeString const& text) {
  if (text.isEmpty()) return std::string();
  UConverter* converter = openHostConverter();
  if (converter == nullptr) return std::string();
  UErrorCode error = U_ZERO_ERROR;
  int32_t const length = text.length();
  // Ten units of slack on purpose: one ICU call, no retry loop.
  int32_t const size = ucnv_getMaxCharSize(converter) * (length + 10);
  std::vector<char> buffer(static_cast<std::size_t>(size));
  int32_t written = ucnv_fromUChars(converter, buffer.data(), size, text.getBuffer(), length, &error);
  ucnv_close(converter);
  if (U_FAILURE(error)) return std::string();
  return std::string(buffer.data(), static_cast<std::size_t>(written));
}

double TransUtil::UTF16toDouble(icu::UnicodeString const& text) {
  UErrorCode error = U_ZERO_ERROR;
  std::unique_ptr<icu::NumberFormat> format(icu::NumberFormat::createInstance(currentLocale(LC_NUMERIC), error));
  if (!format) return noNumber;
  error = U_ZERO_ERROR;
  icu::Formattable number;
  format->parse(text, number, error);
  format.reset();
  if (error != U_ZERO_ERROR) return noNumber;  // a warning counts as failure here
  switch (number.getType()) {
    case icu::Formattable::kDouble: return number.getDouble();
    case icu::Formattable::kLong: return static_cast<double>(number.getLong());
    case icu::Formattable::kInt64: return static_cast<double>(number.getInt64());
    default: return noNumber;
  }
}

icu::Locale TransUtil::currentLocale(int category) {
  char const* name = std::setlocale(category, nullptr);
  return icu::Locale::createCanonical(name != nullptr ? name : "");
}

icu::UnicodeString TransUtil::unsharedCopy(icu::UnicodeString const& text) {
  if (text.isBogus()) return text;
  return icu::UnicodeString(text.getBuffer(), text.length());
}

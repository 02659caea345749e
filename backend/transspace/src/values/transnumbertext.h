// TransNumberText: the texts of the dictionary's numbers, exactly as the value kinds give them:
// an integer as TransIntegerImpl::asString (the numeric locale's formatter), a value's number as
// TransDoubleImpl::asXMLString (English notation). A dictionary formats about ten numbers per
// variable, so the common cases skip the formatter where its text is known: integers while the
// numeric locale writes them in plain ASCII digits (checked once per locale), and whole numbers
// of double values below 2^53. Everything else goes through the value kinds themselves. What a
// locale's formatter does with integers is remembered per thread, as the formatters themselves are.
#pragma once

#include <string>

#include <unicode/unistr.h>
#include <xercesc/util/XercesDefs.hpp>

class TransStatus;
class TransString;

class TransNumberText {
public:
  // The text, zero-terminated, valid until the next call; null when the conversion fails (the
  // attribute is then left out).
  XMLCh const* integer(long value);
  XMLCh const* number(double value);

  // The same through the value kinds alone, for the tests that prove the short cuts exact.
  XMLCh const* integerByFormatter(long value);
  XMLCh const* numberByFormatter(double value);

private:
  bool plainIntegers();
  XMLCh const* ascii(char const* begin, char const* end);
  XMLCh const* kept(TransString* text, TransStatus const& status);

  XMLCh digits_[32] = {};
  icu::UnicodeString formatted_;
};

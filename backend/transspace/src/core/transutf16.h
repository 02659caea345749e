// TransUTF16: the one conversion between the two spellings of a UTF-16 code unit. The exported
// signatures carry UTF-16 as `unsigned short` (what a host written against the library uses),
// while ICU, Xerces and Xalan hold it as `char16_t` (ICU's UChar, Xerces' XMLCh, Xalan's
// XalanDOMChar). The same units, so the pointers are converted, never the text. Exported, but
// not a public header.
#pragma once

#include <type_traits>

#include <unicode/char16ptr.h>
#include <unicode/umachine.h>

class TransUTF16 {
public:
  // ICU's own pointer conversions: they keep the compiler from assuming that the two types never
  // point at the same memory (strict aliasing), which a plain reinterpret_cast would allow.
  static UChar const* internal(unsigned short const* units) { return icu::ConstChar16Ptr(units).get(); }
  static unsigned short const* exported(UChar const* text) { return icu::toOldUCharPtr(text); }

  static_assert(std::is_same<OldUChar, unsigned short>::value && sizeof(UChar) == sizeof(unsigned short),
                "UTF-16 code units are unsigned short on this platform");
};

// The host's platform functions that the library calls, and the small setter
// API of the stand-alone host through which a program or a test chooses the process-wide settings
// that a real host would own. The library only calls the first four functions.
#pragma once

#include <functional>
#include <string>
#include <vector>

// Non-zero when the host runs in UTF-8 mode. The stand-alone host starts in UTF-8 mode.
int qUTF8mode();

// The ICU converter name of the host's default multibyte code page, used when UTF-8 mode is off.
// The stand-alone host starts with "UTF-8".
std::string ZORBMBDefaultCodePage();

// Given a C-library locale name, fills `list` with the matching server locale names and returns
// their number (0 when there are none). The default resolver maps a name of the form
// language_TERRITORY[.codeset][@modifier] to the one entry language_TERRITORY and knows no other
// names ("C", "POSIX", "C.UTF-8" give 0). `locale` may be rewritten by a resolver.
int GetServerLocaleList(std::string& locale, std::vector<std::string>& list);

// Writes the ISO 8601 text of a time stamp into `out` in the host's multibyte encoding (ASCII).
// `time` is in seconds since 1970-01-01 00:00:00 of the data source's own clock (no time zone; the
// unit of ZORB_DataSource::GetTimestamp). `dateStyle` 2 is the extended form with separators
// (YYYY-MM-DD; any other value gives the basic form YYYYMMDD), `withTime` adds "Thh:mm" and
// `withSeconds` adds ":ss". The library calls it with (2, true, true): "2026-11-21T06:03:40".
// A time that is not finite, or lies outside the years 1 to 9999, gives the empty text.
void ToISODateTime(std::string& out, double time, int dateStyle, bool withTime, bool withSeconds);

// ---- the stand-alone host's settings (not part of the library's interface) ----
namespace zorb {

void SetUTF8Mode(bool on);
void SetDefaultCodePage(std::string const& icuConverterName);

using ServerLocaleResolver = std::function<int(std::string& locale, std::vector<std::string>& list)>;
// Installs a resolver for GetServerLocaleList; an empty function restores the default one.
void SetServerLocaleResolver(ServerLocaleResolver resolver);

// Restores every setting above to the host's defaults (UTF-8 mode on, code page "UTF-8",
// default locale resolver).
void ResetPlatformSettings();

}  // namespace zorb

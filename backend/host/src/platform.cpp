#include <transspace/zorb/platform.h>

#include <cmath>
#include <cstdio>
#include <utility>

namespace {

struct PlatformSettings {
  bool utf8Mode = true;
  std::string codePage = "UTF-8";
  zorb::ServerLocaleResolver resolver;
};

PlatformSettings& settings() {
  static PlatformSettings instance;
  return instance;
}

// language_TERRITORY[.codeset][@modifier] -> language_TERRITORY; anything else has no server locale.
int defaultServerLocales(std::string& locale, std::vector<std::string>& list) {
  list.clear();
  std::string base = locale.substr(0, locale.find_first_of(".@"));
  std::size_t underscore = base.find('_');
  if (underscore == std::string::npos || underscore == 0 || underscore + 1 == base.size()) return 0;
  list.push_back(base);
  return 1;
}

// Days since 1970-01-01 to a proleptic Gregorian date, by 400-year eras of 146097 days each.
void civilFromDays(long long days, long long& year, unsigned& month, unsigned& day) {
  days += 719468;
  long long era = (days >= 0 ? days : days - 146096) / 146097;
  unsigned dayOfEra = static_cast<unsigned>(days - era * 146097);
  unsigned yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  year = static_cast<long long>(yearOfEra) + era * 400;
  unsigned dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  unsigned monthIndex = (5 * dayOfYear + 2) / 153;
  day = dayOfYear - (153 * monthIndex + 2) / 5 + 1;
  month = monthIndex < 10 ? monthIndex + 3 : monthIndex - 9;
  if (month <= 2) ++year;
}

}  // namespace

int qUTF8mode() { return settings().utf8Mode ? 1 : 0; }

std::string ZORBMBDefaultCodePage() { return settings().codePage; }

int GetServerLocaleList(std::string& locale, std::vector<std::string>& list) {
  if (settings().resolver) return settings().resolver(locale, list);
  return defaultServerLocales(locale, list);
}

void ToISODateTime(std::string& out, double time, int dateStyle, bool withTime, bool withSeconds) {
  out.clear();
  // 9999-12-31T23:59:59 and 0001-01-01T00:00:00 in seconds since the epoch.
  if (!std::isfinite(time) || time < -62135596800.0 || time > 253402300799.0) return;
  long long seconds = static_cast<long long>(std::floor(time));
  long long days = seconds >= 0 ? seconds / 86400 : -((-seconds + 86399) / 86400);
  long long secondOfDay = seconds - days * 86400;
  long long year;
  unsigned month, day;
  civilFromDays(days, year, month, day);
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, dateStyle == 2 ? "%04lld-%02u-%02u" : "%04lld%02u%02u", year, month, day);
  out = buffer;
  if (!withTime) return;
  std::snprintf(buffer, sizeof buffer, dateStyle == 2 ? "T%02lld:%02lld" : "T%02lld%02lld", secondOfDay / 3600,
                secondOfDay / 60 % 60);
  out += buffer;
  if (!withSeconds) return;
  std::snprintf(buffer, sizeof buffer, dateStyle == 2 ? ":%02lld" : "%02lld", secondOfDay % 60);
  out += buffer;
}

namespace zorb {

void SetUTF8Mode(bool on) { settings().utf8Mode = on; }

void SetDefaultCodePage(std::string const& icuConverterName) { settings().codePage = icuConverterName; }

void SetServerLocaleResolver(ServerLocaleResolver resolver) { settings().resolver = std::move(resolver); }

void ResetPlatformSettings() { settings() = PlatformSettings(); }

}  // namespace zorb

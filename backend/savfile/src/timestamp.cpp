#include "timestamp.h"

#include <cctype>
#include <cstdint>

namespace savfile {

namespace {

// A field of up to `width` characters: leading blanks, then digits only.
bool field(std::string const& s, std::size_t start, std::size_t width, int& value) {
  if (start + width > s.size()) return false;
  std::size_t i = start, end = start + width;
  while (i < end && s[i] == ' ') ++i;
  if (i == end) return false;
  int v = 0;
  for (; i < end; ++i) {
    if (!std::isdigit(static_cast<unsigned char>(s[i]))) return false;
    v = v * 10 + (s[i] - '0');
  }
  value = v;
  return true;
}

bool separator(char c, char expected) { return c == expected || c == '-' || c == ' '; }

int month(std::string const& s) {
  static char const* const names[] = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                                      "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};
  std::string upper;
  for (char c : s) upper += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  for (int i = 0; i < 12; ++i) {
    if (upper == names[i]) return i + 1;
  }
  return 0;
}

// Days from 1970-01-01 to the given proleptic Gregorian date.
std::int64_t daysFromCivil(int y, int m, int d) {
  y -= m <= 2;
  std::int64_t era = (y >= 0 ? y : y - 399) / 400;
  std::int64_t yoe = y - era * 400;
  std::int64_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  std::int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + doe - 719468;
}

int daysInMonth(int y, int m) {
  static int const days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  bool leap = (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
  return m == 2 && leap ? 29 : days[m - 1];
}

}  // namespace

std::optional<double> parseTimestamp(std::string const& date, std::string const& time) {
  int day = 0, year = 0, hour = 0, minute = 0, second = 0;
  if (date.size() < 9 || time.size() < 8) return std::nullopt;
  if (!field(date, 0, 2, day) || !separator(date[2], ' ') || !separator(date[6], ' ')) return std::nullopt;
  int mon = month(date.substr(3, 3));
  if (mon == 0 || !field(date, 7, 2, year)) return std::nullopt;
  if (!field(time, 0, 2, hour) || time[2] != ':' || !field(time, 3, 2, minute) || time[5] != ':' ||
      !field(time, 6, 2, second)) {
    return std::nullopt;
  }
  year += year >= 69 ? 1900 : 2000;
  if (day < 1 || day > daysInMonth(year, mon) || hour > 23 || minute > 59 || second > 59) return std::nullopt;
  return static_cast<double>(daysFromCivil(year, mon, day) * 86400 + hour * 3600 + minute * 60 + second);
}

}  // namespace savfile

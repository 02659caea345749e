// The header's creation date ("dd Mmm yy") and time ("hh:mm:ss") as seconds since 1970-01-01
// 00:00:00 (no time zone), the unit of ZORB_DataSource::GetTimestamp.
#pragma once

#include <optional>
#include <string>

namespace savfile {

// Tolerates what real writers produce: upper- or lower-case months, '-' instead of ' ', blanks
// instead of leading zeros (" 1-Jan- 5", " 0: 0: 0"). Anything else gives no value.
//
// Two-digit years follow the POSIX strptime("%y") rule: 69..99 are 1969..1999, 00..68 are
// 2000..2068. PSPP's own default (its EPOCH setting) is a window that moves with the current
// date; a fixed rule keeps a file's time stamp the same whenever it is read, and the two agree for
// every file written between 1969 and 2055.
std::optional<double> parseTimestamp(std::string const& date, std::string const& time);

}  // namespace savfile

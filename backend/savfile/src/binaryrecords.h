// Parsers of the extension records whose data mixes integers and bytes: subtypes 11, 21 and 22.
// Like the text parsers, they keep what they could parse and warn about the rest.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "byteorder.h"
#include "diagnostics.h"

namespace savfile {

// Subtype 11: measure, optional width, alignment per non-continuation variable record.
struct RawDisplayParameter {
  std::int32_t measure = 0;
  std::int32_t width = -1;  // -1 when the record has no widths
  std::int32_t alignment = 0;
};
// `entries` is the number of entries the caller expects; the record's count must be two or three
// times that. Returns an empty list (with a warning) otherwise.
std::vector<RawDisplayParameter> parseDisplayParameters(std::string const& data, std::int32_t elementSize,
                                                        std::int32_t count, std::size_t entries,
                                                        ByteOrder order, std::uint64_t offset, Diagnostics& diag,
                                                        bool warnOnMismatch = true);

// Subtype 21: value labels of long string variables.
struct RawLongStringLabels {
  std::uint64_t offset = 0;
  std::string variable;  // long name
  std::int32_t width = 0;
  std::vector<std::pair<std::string, std::string>> labels;  // value, label
};
std::vector<RawLongStringLabels> parseLongStringLabels(std::string const& data, ByteOrder order,
                                                       std::uint64_t offset, Diagnostics& diag);

// Subtype 22: missing values of long string variables.
struct RawLongStringMissing {
  std::uint64_t offset = 0;
  std::string variable;  // long name
  std::vector<std::string> values;
};
std::vector<RawLongStringMissing> parseLongStringMissing(std::string const& data, ByteOrder order,
                                                         std::uint64_t offset, Diagnostics& diag);

}  // namespace savfile

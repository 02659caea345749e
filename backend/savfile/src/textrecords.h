// Parsers of the text-based extension records. Each takes the record's bytes (in the file's
// encoding) and the file offset of its first byte, returns what it could parse, and reports what
// it skipped as warnings: a malformed entry never stops the read.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "diagnostics.h"

namespace savfile {

// Subtype 5: "NAME= m1 m2\n" per line (CR LF tolerated).
struct RawVariableSet {
  std::string name;
  std::vector<std::string> members;
};
std::vector<RawVariableSet> parseVariableSets(std::string const& text, std::uint64_t offset, Diagnostics& diag);

// Subtypes 7 and 19: multiple response sets.
struct RawMrSet {
  std::uint64_t offset = 0;
  std::string name;  // with its '$'
  char kind = 'C';   // 'C' categories, 'D' dichotomies, 'E' dichotomies with counted-value labels
  int labelSource = 0;  // E only: 1, or 11 for LABELSOURCE=VARLABEL
  std::string countedValue;  // D and E, trailing blanks removed
  std::string label;
  std::vector<std::string> variables;  // short names as listed (lower case)
};
std::vector<RawMrSet> parseMrSets(std::string const& text, std::uint64_t offset, Diagnostics& diag);

// Subtype 13: SHORT=Long pairs separated by tabs.
std::vector<std::pair<std::string, std::string>> parseLongNames(std::string const& text, std::uint64_t offset,
                                                                Diagnostics& diag);

// Subtype 14: SHORT=width pairs separated by NUL TAB (padded or unpadded digits).
struct RawVeryLongString {
  std::string name;
  int width = 0;
};
std::vector<RawVeryLongString> parseVeryLongStrings(std::string const& text, std::uint64_t offset,
                                                    Diagnostics& diag);

// Subtypes 17 and 18: attribute sets, Name('v1'\n'v2'\n)Name2('x'\n).
using RawAttribute = std::pair<std::string, std::vector<std::string>>;
std::vector<RawAttribute> parseAttributeSet(std::string const& text, std::uint64_t offset, Diagnostics& diag);
struct RawVariableAttributes {
  std::string variable;  // long name
  std::vector<RawAttribute> attributes;
};
std::vector<RawVariableAttributes> parseVariableAttributes(std::string const& text, std::uint64_t offset,
                                                           Diagnostics& diag);

}  // namespace savfile

// The variables of the dictionary as the host sees them: type-2 records with their continuation
// records folded in, and very long strings (subtype 14) merged from their segments. Keeps the
// three numberings the file's records refer to: dictionary index (type-2 records including
// continuations: weight and value labels), segment index (records without continuations:
// subtype 11) and names (short names: subtypes 7, 13, 14, 19; long names: 18, 21, 22).
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "diagnostics.h"
#include "rawdictionary.h"
#include "textrecords.h"

namespace savfile {

struct MergedVariable {
  int record = 0;     // index of its first type-2 record
  int segments = 1;   // 1, or the number of segments of a very long string
  int width = 0;      // 0 numeric, else the string width in bytes
  std::string shortName;  // raw bytes, trailing blanks and NULs removed
  std::string name;       // final name in the host's code page
};

class VariableTable {
public:
  void build(std::vector<RawVariable> const& records, std::vector<RawVeryLongString> const& veryLong,
             std::uint64_t veryLongOffset, Diagnostics& diag);

  std::vector<MergedVariable>& variables() { return variables_; }
  std::vector<MergedVariable> const& variables() const { return variables_; }
  // The variable whose first record has that 0-based dictionary index, -1 for other records.
  int byRecord(std::size_t record) const;
  std::size_t segmentCount() const { return segmentOwner_.size(); }
  // The variable a segment belongs to, and whether it is that variable's first segment.
  int bySegment(std::size_t segment, bool& first) const;
  // By raw short name, ASCII case-insensitive; -1 when none.
  int byShortName(std::string const& raw) const;
  // By final name, ASCII case-insensitive; -1 when none. Valid after indexNames().
  int byName(std::string const& name) const;
  void indexNames();

  static std::string upper(std::string const& s);

private:
  void addVariable(std::vector<RawVariable> const& records, std::size_t first, int width, int segments,
                   std::vector<std::size_t> const& segmentRecords);

  std::vector<MergedVariable> variables_;
  std::vector<int> recordOwner_;    // per record: variable index if it is the variable's first record
  std::vector<int> segmentOwner_;   // per segment: variable index
  std::vector<bool> segmentFirst_;
  std::unordered_map<std::string, int> byShortName_;
  std::unordered_map<std::string, int> byName_;
};

}  // namespace savfile

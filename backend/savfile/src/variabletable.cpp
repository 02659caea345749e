#include "variabletable.h"

#include "textscanner.h"

namespace savfile {

std::string VariableTable::upper(std::string const& s) {
  std::string u = s;
  for (char& c : u) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return u;
}

void VariableTable::build(std::vector<RawVariable> const& records, std::vector<RawVeryLongString> const& veryLong,
                          std::uint64_t veryLongOffset, Diagnostics& diag) {
  std::unordered_map<std::string, int> pendingWidth;
  for (auto const& v : veryLong) pendingWidth.emplace(upper(v.name), v.width);

  recordOwner_.assign(records.size(), -1);
  // Non-continuation records, in order: segments of very long strings are counted among them.
  std::vector<std::size_t> starts;
  for (std::size_t i = 0; i < records.size(); ++i) {
    if (records[i].type != -1) starts.push_back(i);
  }
  for (std::size_t s = 0; s < starts.size();) {
    RawVariable const& r = records[starts[s]];
    int width = r.type;
    int segments = 1;
    auto found = r.type > 0 ? pendingWidth.find(upper(trimmed(r.name))) : pendingWidth.end();
    if (found != pendingWidth.end()) {
      int w = found->second;
      pendingWidth.erase(found);  // segment names may repeat the first one's: merge once
      int n = (w + 251) / 252;
      bool ok = w > 255 && s + static_cast<std::size_t>(n) <= starts.size();
      for (int k = 1; ok && k < n; ++k) ok = records[starts[s + static_cast<std::size_t>(k)]].type > 0;
      if (ok) {
        width = w;
        segments = n;
      } else if (w > 255 || w != r.type) {
        diag.warn(r.offset, "very long string width " + std::to_string(w) + " for '" + trimmed(r.name) +
                                "' does not match its records: not merged");
      }
    }
    std::vector<std::size_t> segmentRecords(starts.begin() + static_cast<std::ptrdiff_t>(s),
                                            starts.begin() + static_cast<std::ptrdiff_t>(s + static_cast<std::size_t>(segments)));
    addVariable(records, starts[s], width, segments, segmentRecords);
    s += static_cast<std::size_t>(segments);
  }
  for (auto const& left : pendingWidth) {
    diag.warn(veryLongOffset, "very long string entry names no string variable: '" + left.first + "'");
  }
}

void VariableTable::addVariable(std::vector<RawVariable> const& records, std::size_t first, int width,
                                int segments, std::vector<std::size_t> const& segmentRecords) {
  int index = static_cast<int>(variables_.size());
  MergedVariable v;
  v.record = static_cast<int>(first);
  v.segments = segments;
  v.width = width;
  v.shortName = trimmed(records[first].name);
  variables_.push_back(v);
  recordOwner_[first] = index;
  for (std::size_t k = 0; k < segmentRecords.size(); ++k) {
    segmentOwner_.push_back(index);
    segmentFirst_.push_back(k == 0);
  }
  byShortName_.emplace(upper(v.shortName), index);
}

int VariableTable::byRecord(std::size_t record) const {
  return record < recordOwner_.size() ? recordOwner_[record] : -1;
}

int VariableTable::bySegment(std::size_t segment, bool& first) const {
  if (segment >= segmentOwner_.size()) return -1;
  first = segmentFirst_[segment];
  return segmentOwner_[segment];
}

int VariableTable::byShortName(std::string const& raw) const {
  auto it = byShortName_.find(upper(trimmed(raw)));
  return it == byShortName_.end() ? -1 : it->second;
}

int VariableTable::byName(std::string const& name) const {
  auto it = byName_.find(upper(name));
  return it == byName_.end() ? -1 : it->second;
}

void VariableTable::indexNames() {
  byName_.clear();
  for (std::size_t i = 0; i < variables_.size(); ++i) byName_.emplace(upper(variables_[i].name), static_cast<int>(i));
}

}  // namespace savfile

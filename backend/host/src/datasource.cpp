// The in-memory data-source model: the operations the dictionary export calls, over the plain data
// that zorb::DataSourceBuilder fills in.
#include <transspace/zorb/datasource.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "asciicase.h"

// ---- DatasourceAttributes ----

void DatasourceAttributes::Add(std::string const& name, std::vector<std::string> const& values) {
  auto found = indexByName_.find(name);
  if (found != indexByName_.end()) {
    std::vector<std::string>& stored = entries_[found->second].second;
    stored.insert(stored.end(), values.begin(), values.end());
    return;
  }
  indexByName_.emplace(name, entries_.size());
  entries_.emplace_back(name, values);
}

// ---- ZORB_ValueLabelMap ----

ZORB_ValueLabelMap::ZORB_ValueLabelMap(ZORB_VLImplPointer labels) : labels_(std::move(labels)) {}

unsigned long ZORB_ValueLabelMap::Size() const {
  if (!labels_) return 0;
  return static_cast<unsigned long>(labels_->numeric.size() + labels_->text.size());
}

void ZORB_ValueLabelMap::Reset() { next_ = 0; }

bool ZORB_ValueLabelMap::GetNextPair(double& value, char const*& label) const {
  if (!labels_ || next_ >= labels_->numeric.size()) return false;
  auto const& pair = labels_->numeric[next_++];
  value = pair.first;
  label = pair.second.c_str();
  return true;
}

bool ZORB_ValueLabelMap::GetNextPair(std::string& value, char const*& label) const {
  if (!labels_ || next_ >= labels_->text.size()) return false;
  auto const& pair = labels_->text[next_++];
  value = pair.first;
  label = pair.second.c_str();
  return true;
}

// ---- ZORB_Variable ----

void ZORB_Variable::GetFormatEx(FormatType& type, int& width, int& decimals) const {
  type = printType_;
  width = printWidth_;
  decimals = printDecimals_;
}

void ZORB_Variable::GetWriteFormatEx(FormatType& type, int& width, int& decimals) const {
  type = writeType_;
  width = writeWidth_;
  decimals = writeDecimals_;
}

int ZORB_Variable::GetMissingValues(OBS const*& first, OBS const*& second, OBS const*& third) const {
  OBS const** slots[3] = {&first, &second, &third};
  for (std::size_t i = 0; i < 3; ++i) {
    // Only values that exist and hold at least one OBS are handed out; the rest stay null.
    bool present = i < missing_.size() && !missing_[i].empty();
    *slots[i] = present ? missing_[i].data() : nullptr;
  }
  return missingCount_;
}

// ---- ZORB_DataSource ----

ZORB_Variable const& ZORB_DataSource::GetVariable(int index) const {
  if (index < 0 || static_cast<std::size_t>(index) >= variables_.size()) {
    throw std::out_of_range("ZORB_DataSource::GetVariable: index " + std::to_string(index) + " is outside 0.." +
                            std::to_string(variables_.size()));
  }
  return variables_[static_cast<std::size_t>(index)];
}

int ZORB_DataSource::FindVarIndex(char const* name, int /*flags: the library always passes 0*/) const {
  if (name == nullptr) return -1;
  auto found = indexByUpperName_.find(zorb::detail::asciiUpper(std::string(name)));
  return found == indexByUpperName_.end() ? -1 : found->second;
}

// ---- ZORB_DataSource::Extension ----

ZORB_DataSource::Extension::Extension(ZORB_DataSource const& ds, int type) : type_(type) {
  auto found = ds.extensions_.find(type);
  if (found == ds.extensions_.end()) return;  // an absent type reads as an empty record
  elementSize_ = found->second.elementSize;
  length_ = found->second.length;
  bytes_ = &found->second.bytes;
}

long ZORB_DataSource::Extension::GetNext(void* buffer, long count) {
  if (count <= 0 || bytes_ == nullptr) return 0;
  // The elements actually stored bound every copy, whatever Length() claims.
  std::int64_t stored = length_;
  if (elementSize_ > 0) {
    stored = std::min<std::int64_t>(stored, static_cast<std::int64_t>(bytes_->size() / elementSize_));
  } else if (elementSize_ < 0) {
    stored = 0;
  }
  std::int64_t copied = std::min<std::int64_t>(count, stored - nextElement_);
  if (copied <= 0) return 0;
  std::size_t byteCount = static_cast<std::size_t>(copied) * static_cast<std::size_t>(elementSize_);
  if (byteCount > 0) {
    if (buffer == nullptr) return 0;
    std::size_t offset = static_cast<std::size_t>(nextElement_) * static_cast<std::size_t>(elementSize_);
    std::memcpy(buffer, bytes_->data() + offset, byteCount);
  }
  nextElement_ += copied;
  return static_cast<long>(copied);
}

// ---- VariableSet ----

namespace {

std::string changeCase(std::string const& text, VariableSet::ChangeCase changeCase) {
  switch (changeCase) {
    case VariableSet::ToLower: return zorb::detail::asciiLower(text);
    case VariableSet::ToUpper: return zorb::detail::asciiUpper(text);
    default: return text;
  }
}

}  // namespace

std::string VariableSet::GetName(ChangeCase changeCase) const { return ::changeCase(name_, changeCase); }

std::vector<std::string> VariableSet::GetVariableNames(ChangeCase changeCase) const {
  std::vector<std::string> names;
  names.reserve(variableNames_.size());
  for (std::string const& name : variableNames_) names.push_back(::changeCase(name, changeCase));
  return names;
}

std::vector<VariableSet> VariableSets(ZORB_DataSource const& ds, VarSetsType type) {
  switch (type) {
    case PlainVariableSets: return ds.PlainSets();
    case MultipleResponseSets: return ds.ResponseSets();
    default: return {};
  }
}

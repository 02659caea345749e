// The stand-alone host's data-source model: exactly the operations of the host's closed data-source
// library that the dictionary export calls, with the argument and result types it expects,
// backed by plain in-memory data. Tests fill it through zorb::DataSourceBuilder
// (zorb/datasourcebuilder.h); the .sav reader fills it the same way. The names (ZORB_DataSource,
// ZORB_Variable, OBS, ...) are the host library's own, which the library's contract names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace zorb {
class DataSourceBuilder;
class VariableBuilder;
class VariableSetBuilder;
}  // namespace zorb

// One stored value: an IEEE double for a numeric variable; for a string variable the variable's
// bytes, blank-padded to its width, spread over as many consecutive OBS as the width needs
// (ceil(width / 8)); the bytes are not zero-terminated.
union OBS {
  double f;
  char s[8];
};

// A collection of custom attributes: ordered entries of a name and its values, plus a version.
class DatasourceAttributes {
public:
  DatasourceAttributes() = default;

  unsigned long Size() const { return static_cast<unsigned long>(entries_.size()); }
  std::string Name(unsigned long i) const { return entries_.at(i).first; }
  std::vector<std::string> Values(unsigned long i) const { return entries_.at(i).second; }

  // Appends an entry, or appends the values to the entry of that exact name if there is one.
  void Add(std::string const& name, std::vector<std::string> const& values);

  // The collection's version number, read directly by the dictionary export.
  std::int64_t version = 0;

private:
  std::vector<std::pair<std::string, std::vector<std::string>>> entries_;
  // Position of each name in entries_, so that Add stays linear over a large collection.
  std::unordered_map<std::string, std::size_t> indexByName_;
};

// The value labels of one variable, in the order they were added (a value added twice keeps its
// place and takes the later label). Numeric variables use the numeric pairs, string variables the
// string pairs (values blank-padded to the variable's width).
struct ZORB_ValueLabelData {
  std::vector<std::pair<double, std::string>> numeric;
  std::vector<std::pair<std::string, std::string>> text;
};
using ZORB_VLImplPointer = std::shared_ptr<ZORB_ValueLabelData const>;

class ZORB_ValueLabelMap {
public:
  explicit ZORB_ValueLabelMap(ZORB_VLImplPointer labels);

  unsigned long Size() const;
  void Reset();
  // The next pair and true; false at the end. The label pointer stays valid while the map lives.
  bool GetNextPair(double& value, char const*& label) const;
  bool GetNextPair(std::string& value, char const*& label) const;

private:
  ZORB_VLImplPointer labels_;
  mutable std::size_t next_ = 0;
};

class ZORB_Variable {
public:
  // The host's format type code.
  using FormatType = int;

  ZORB_Variable() = default;

  char const* GetName() const { return name_.c_str(); }
  char const* GetLabel() const { return hasLabel_ ? label_.c_str() : nullptr; }
  // 0 for a numeric variable, otherwise the width in bytes of a string variable.
  int GetType() const { return type_; }
  // 0 left, 1 right, 2 center.
  int GetAlignment() const { return alignment_; }
  // 0 unknown, 1 nominal, 2 ordinal, 3 scale.
  int GetMeasurementLevel() const { return measurementLevel_; }
  std::int16_t GetDisplayWidth() const { return displayWidth_; }
  void GetFormatEx(FormatType& type, int& width, int& decimals) const;
  void GetWriteFormatEx(FormatType& type, int& width, int& decimals) const;
  // Fills up to three pointers and returns the signed count: its magnitude is the number filled;
  // negative means the first two are the lower and upper bound of a range (a third, if any, is a
  // discrete value). Pointers not filled are set to null. They stay valid while the variable lives.
  int GetMissingValues(OBS const*& first, OBS const*& second, OBS const*& third) const;
  ZORB_VLImplPointer GetValueLabels() const { return valueLabels_; }
  DatasourceAttributes const& GetAttributes() const { return attributes_; }

private:
  friend class zorb::DataSourceBuilder;
  friend class zorb::VariableBuilder;
  std::string name_;
  std::string label_;
  bool hasLabel_ = false;
  int type_ = 0;
  int alignment_ = 1;
  int measurementLevel_ = 0;
  std::int16_t displayWidth_ = 8;
  int printType_ = 5, printWidth_ = 8, printDecimals_ = 2;
  int writeType_ = 5, writeWidth_ = 8, writeDecimals_ = 2;
  int missingCount_ = 0;                   // signed, as GetMissingValues returns it
  std::vector<std::vector<OBS>> missing_;  // |missingCount_| values of ceil(width/8) OBS (1 if numeric)
  // Shared between copies of the variable (and with every ZORB_ValueLabelMap made from it); the
  // builder copies the data before it changes a shared one, so a map never sees its labels change.
  std::shared_ptr<ZORB_ValueLabelData> valueLabels_ = std::make_shared<ZORB_ValueLabelData>();
  DatasourceAttributes attributes_;
};

// A plain variable set (type 0) or a multiple response set (type 1 categories, 2 dichotomies).
class VariableSet {
public:
  // How names are returned; the dictionary export always asks for AsStored (2).
  enum ChangeCase { ToLower = 0, ToUpper = 1, AsStored = 2 };
  enum Type { Plain = 0, Categories = 1, Dichotomies = 2 };

  std::string GetName(ChangeCase changeCase) const;
  std::vector<std::string> GetVariableNames(ChangeCase changeCase) const;
  int GetType() const { return type_; }
  // For dichotomies: true when category labels come from the counted values.
  bool qUseVariableCategoryLabels() const { return useCategoryLabels_; }
  // For dichotomies: the counted value as text, possibly empty.
  std::string GetValue() const { return countedValue_; }
  // True when the set's label is taken from a variable's label.
  bool qLabelSetByVariable() const { return labelSetByVariable_; }
  std::string GetLabel() const { return label_; }

private:
  friend class zorb::DataSourceBuilder;
  friend class zorb::VariableSetBuilder;
  std::string name_;
  std::vector<std::string> variableNames_;
  int type_ = Plain;
  bool useCategoryLabels_ = false;
  std::string countedValue_;
  bool labelSetByVariable_ = false;
  std::string label_;
};

enum VarSetsType { PlainVariableSets = 0, MultipleResponseSets = 1 };

class ZORB_DataSource {
public:
  ZORB_DataSource() = default;
  ZORB_DataSource(ZORB_DataSource const&) = default;
  ZORB_DataSource& operator=(ZORB_DataSource const&) = default;
  virtual ~ZORB_DataSource() = default;

  int ColumnCount() const { return static_cast<int>(variables_.size()); }
  // The variable at a zero-based index (0 <= index < ColumnCount(); checked, throws std::out_of_range).
  ZORB_Variable const& GetVariable(int index) const;
  // Zero-based index of the weight variable, negative when the data source is not weighted.
  int GetWeightVarIndex() const { return weightIndex_; }
  // Seconds since 1970-01-01 00:00:00 of the data source's own clock (see ToISODateTime).
  double GetTimestamp() const { return timestamp_; }
  // The number of rows (cases); negative when it is not known.
  virtual std::int64_t RowCount() const { return rowCount_; }
  DatasourceAttributes const& GetAttributes() const { return attributes_; }
  bool HasExtension(int type) const { return extensions_.count(type) != 0; }
  // Index of the variable with exactly this name (compared case-insensitively in ASCII, as the
  // host's variable names are), -1 when there is none. `flags` is accepted and must be 0.
  int FindVarIndex(char const* name, int flags) const;

  // One extension record, opened for reading its elements in order.
  class Extension {
  public:
    // The record of that type; a type the data source does not have opens an empty record.
    Extension(ZORB_DataSource const& ds, int type);
    int Type() const { return type_; }
    int ElementSize() const { return elementSize_; }
    std::int64_t Length() const { return length_; }
    // Copies up to `count` further elements into `buffer`; returns the number copied.
    long GetNext(void* buffer, long count);

  private:
    int type_;
    int elementSize_ = 0;
    std::int64_t length_ = 0;
    std::string const* bytes_ = nullptr;
    std::int64_t nextElement_ = 0;
  };

  // The model's own accessors for the sets (VariableSets below reads them).
  std::vector<VariableSet> const& PlainSets() const { return plainSets_; }
  std::vector<VariableSet> const& ResponseSets() const { return responseSets_; }

private:
  friend class zorb::DataSourceBuilder;
  struct ExtensionRecord {
    int elementSize = 1;
    std::int64_t length = 0;
    std::string bytes;  // elementSize * length bytes
  };
  std::vector<ZORB_Variable> variables_;
  int weightIndex_ = -1;
  double timestamp_ = 0.0;
  std::int64_t rowCount_ = -1;
  DatasourceAttributes attributes_;
  std::map<int, ExtensionRecord> extensions_;
  std::vector<VariableSet> plainSets_;
  std::vector<VariableSet> responseSets_;
  std::map<std::string, int> indexByUpperName_;
};

// The data source's plain variable sets (type 0) or its multiple response sets (type 1), in order.
std::vector<VariableSet> VariableSets(ZORB_DataSource const& ds, VarSetsType type);

// Builds a ZORB_DataSource (zorb/datasource.h) in a few lines: the tests describe their data sources
// with it, and the .sav reader fills the model through it.
//
//   zorb::DataSourceBuilder b;
//   b.addVariable("age").label("Age").missingRange(-9, -1).valueLabel(1, "young");
//   b.addVariable("city").string(12).valueLabel("Bonn", "the old capital");
//   b.weightVariable(0).rowCount(100).extension(3, 4, std::string(32, '\0'));
//   ZORB_DataSource ds = b.build();
//
// The builder keeps the model consistent where the model's own operations rely on it (unique
// variable names for FindVarIndex, missing values and value labels of the variable's kind and width,
// extension bytes that match their element size and length, a weight index that names a variable).
// It deliberately accepts every code the host keeps as a plain number (format types, alignments,
// measurement levels, display widths, set types), any label text, and set members that name no
// variable, because the tests need exactly those to reach the library's edge cases.
// Every rule it enforces throws std::invalid_argument (bad value) or std::logic_error (wrong order or
// kind), and leaves the model unchanged.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

#include "datasource.h"

namespace zorb {

// Format type codes of the host that the builder's defaults use.
constexpr int kFormatA = 1;
constexpr int kFormatF = 5;

// A handle on one variable of a DataSourceBuilder; it stays valid as long as its builder lives.
class VariableBuilder {
public:
  // Renames the variable (the .sav reader applies long names after the short ones). Throws
  // std::invalid_argument when another variable already has that name (ASCII case-insensitive).
  VariableBuilder& name(std::string const& name);
  // A label, which may be empty; a variable starts without one.
  VariableBuilder& label(std::string const& label);
  VariableBuilder& noLabel();

  // Numeric (type 0, the default) or a string of `width` bytes (width >= 1). Changing the kind or
  // width is refused once the variable has missing values or value labels, which depend on it. A
  // format not set explicitly follows the kind: F8.2 for numeric, A<width> for a string.
  VariableBuilder& numeric();
  VariableBuilder& string(int width);

  VariableBuilder& alignment(int code);               // 0 left, 1 right (default), 2 center; any code kept
  VariableBuilder& measurementLevel(int code);        // 0 unknown (default) .. 3 scale; any code kept
  VariableBuilder& displayWidth(std::int16_t width);  // default 8; negative widths are kept
  VariableBuilder& printFormat(int type, int width, int decimals);
  VariableBuilder& writeFormat(int type, int width, int decimals);
  // Sets the print and the write format to the same value.
  VariableBuilder& format(int type, int width, int decimals);

  // Numeric missing values: up to three discrete values, a range (count -2), or a range and one
  // discrete value (count -3). Each call replaces the variable's missing values.
  VariableBuilder& missingValues(std::vector<double> const& values);
  VariableBuilder& missingRange(double low, double high);
  VariableBuilder& missingRange(double low, double high, double discrete);
  // String missing values: up to three, none longer than the width, blank-padded to it.
  VariableBuilder& missingStrings(std::vector<std::string> const& values);
  VariableBuilder& noMissingValues();

  // Value labels in the order added; adding a value again replaces its label in place. Numeric
  // values are matched bit for bit; string values are blank-padded to the width (not longer).
  VariableBuilder& valueLabel(double value, std::string const& label);
  VariableBuilder& valueLabel(std::string const& value, std::string const& label);

  // Custom attributes (DatasourceAttributes::Add) and the collection's version.
  VariableBuilder& attribute(std::string const& name, std::vector<std::string> const& values);
  VariableBuilder& attributesVersion(std::int64_t version);

  int index() const { return index_; }
  ZORB_Variable const& variable() const;

private:
  friend class DataSourceBuilder;
  VariableBuilder(DataSourceBuilder& owner, int index) : owner_(&owner), index_(index) {}

  ZORB_Variable& target();
  ZORB_ValueLabelData& writableLabels();
  void requireNumeric(char const* operation) const;
  void requireString(char const* operation) const;
  void applyDefaultFormats();
  void setMissing(int count, std::vector<std::vector<OBS>> values);
  std::string padToWidth(std::string const& value, char const* operation) const;

  DataSourceBuilder* owner_;
  int index_;
  bool printFormatSet_ = false;
  bool writeFormatSet_ = false;
  // Where each value already stands in the label list, so a repeated value is found at once.
  std::unordered_map<std::uint64_t, std::size_t> numericLabelAt_;
  std::unordered_map<std::string, std::size_t> textLabelAt_;
};

// A handle on one variable set or multiple response set; valid as long as its builder lives.
class VariableSetBuilder {
public:
  VariableSetBuilder& name(std::string const& name);
  // Multiple response sets: 1 categories, 2 dichotomies; any code is kept.
  VariableSetBuilder& type(int type);
  VariableSetBuilder& label(std::string const& label);
  VariableSetBuilder& labelSetByVariable(bool on);
  // Dichotomies: the counted value (may be empty) and where the category labels come from.
  VariableSetBuilder& countedValue(std::string const& value);
  VariableSetBuilder& useCategoryLabels(bool on);
  // Members by name, in order; names the data source does not have are kept as they are.
  VariableSetBuilder& member(std::string const& name);
  VariableSetBuilder& members(std::vector<std::string> const& names);

  VariableSet const& set() const;

private:
  friend class DataSourceBuilder;
  VariableSetBuilder(DataSourceBuilder& owner, bool response, std::size_t index)
      : owner_(&owner), response_(response), index_(index) {}
  VariableSet& target();

  DataSourceBuilder* owner_;
  bool response_;
  std::size_t index_;
};

class DataSourceBuilder {
public:
  DataSourceBuilder() = default;
  // The handles point back at their builder, so a builder stays where it was made.
  DataSourceBuilder(DataSourceBuilder const&) = delete;
  DataSourceBuilder& operator=(DataSourceBuilder const&) = delete;

  // Appends a numeric variable with the defaults (F8.2, right, unknown, display width 8, no label).
  // Throws std::invalid_argument when the name is already used (ASCII case-insensitive).
  VariableBuilder& addVariable(std::string const& name);
  // The handle of an existing variable; throws std::out_of_range when there is none.
  VariableBuilder& variable(int index);
  VariableBuilder& variable(std::string const& name);
  int variableCount() const { return dataSource_.ColumnCount(); }
  // Index of a variable by name (ASCII case-insensitive), -1 when absent.
  int findVariable(std::string const& name) const;

  // The weight variable by index or name; a negative index removes the weight. An index or name
  // that is not (yet) a variable throws std::out_of_range.
  DataSourceBuilder& weightVariable(int index);
  DataSourceBuilder& weightVariable(std::string const& name);
  DataSourceBuilder& noWeight() { return weightVariable(-1); }
  // Seconds since 1970-01-01 00:00:00 (default 0); any double, non-finite included, is kept.
  DataSourceBuilder& timestamp(double seconds);
  // The row count RowCount returns; default -1 (unknown); zero and negative values are kept.
  DataSourceBuilder& rowCount(std::int64_t rows);

  DataSourceBuilder& attribute(std::string const& name, std::vector<std::string> const& values);
  DataSourceBuilder& attributesVersion(std::int64_t version);

  // An extension record of `bytes.size() / elementSize` elements (elementSize >= 1, and the size a
  // multiple of it), or with an explicit length (elementSize >= 0, length >= 0, and
  // bytes.size() == elementSize * length). A second record of the same type replaces the first.
  DataSourceBuilder& extension(int type, int elementSize, std::string bytes);
  DataSourceBuilder& extension(int type, int elementSize, std::int64_t length, std::string bytes);
  DataSourceBuilder& removeExtension(int type);
  // A record that claims `length` elements but holds only the whole elements in `bytes` (fewer than
  // `length`; elementSize >= 1): its GetNext delivers short. Real hosts keep their records whole;
  // this models one that does not, so that tests can reach the library's check of the count.
  DataSourceBuilder& extensionDeliveringFewer(int type, int elementSize, std::int64_t length, std::string bytes);

  // A plain variable set.
  DataSourceBuilder& variableSet(std::string const& name, std::vector<std::string> const& members);
  // A multiple response set of categories (type 1).
  DataSourceBuilder& categorySet(std::string const& name, std::string const& label,
                                 std::vector<std::string> const& members, bool labelSetByVariable = false);
  // A multiple response set of dichotomies (type 2).
  DataSourceBuilder& dichotomySet(std::string const& name, std::string const& label, std::string const& countedValue,
                                  bool useCategoryLabels, std::vector<std::string> const& members,
                                  bool labelSetByVariable = false);
  // Handles for sets described field by field (for example a multiple response set of type 7).
  VariableSetBuilder& addVariableSet(std::string const& name);
  VariableSetBuilder& addMultipleResponseSet(std::string const& name, int type);

  // The model as built so far; it stays consistent after every call.
  ZORB_DataSource const& dataSource() const { return dataSource_; }
  // A copy of the model.
  ZORB_DataSource build() const { return dataSource_; }
  // Copies the model into an existing data source, for example a subclass that overrides RowCount.
  void buildInto(ZORB_DataSource& target) const { target = dataSource_; }

private:
  friend class VariableBuilder;
  friend class VariableSetBuilder;

  ZORB_Variable& variableAt(int index) { return dataSource_.variables_[static_cast<std::size_t>(index)]; }
  VariableSet& setAt(bool response, std::size_t index);
  void rename(int index, std::string const& name);
  VariableSetBuilder& appendSet(bool response, std::string const& name, int type);

  ZORB_DataSource dataSource_;
  // Deques, so the references handed out survive later additions.
  std::deque<VariableBuilder> variables_;
  std::deque<VariableSetBuilder> sets_;
};

}  // namespace zorb

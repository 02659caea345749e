#include <transspace/zorb/datasourcebuilder.h>

#include <cstring>
#include <stdexcept>
#include <utility>

#include "asciicase.h"

namespace zorb {

namespace {

constexpr int kDefaultNumericWidth = 8;
constexpr int kDefaultNumericDecimals = 2;
constexpr std::size_t kMaxMissingValues = 3;

std::uint64_t bitsOf(double value) {
  std::uint64_t bits;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

std::vector<OBS> numericObs(double value) {
  OBS obs;
  obs.f = value;
  return {obs};
}

// A string value of exactly the variable's width, spread over ceil(width / 8) OBS; the unused tail
// of the last OBS is blank too, so no stored byte is ever uninitialised.
std::vector<OBS> stringObs(std::string const& padded) {
  std::vector<OBS> values((padded.size() + 7) / 8);
  for (OBS& obs : values) std::memset(obs.s, ' ', sizeof obs.s);
  for (std::size_t i = 0; i < padded.size(); ++i) values[i / 8].s[i % 8] = padded[i];
  return values;
}

std::string nameError(std::string const& name) {
  return "zorb::DataSourceBuilder: a variable named \"" + name + "\" already exists";
}

}  // namespace

// ---- VariableBuilder ----

ZORB_Variable& VariableBuilder::target() { return owner_->variableAt(index_); }

ZORB_Variable const& VariableBuilder::variable() const { return owner_->dataSource_.GetVariable(index_); }

VariableBuilder& VariableBuilder::name(std::string const& name) {
  owner_->rename(index_, name);
  return *this;
}

VariableBuilder& VariableBuilder::label(std::string const& label) {
  target().label_ = label;
  target().hasLabel_ = true;
  return *this;
}

VariableBuilder& VariableBuilder::noLabel() {
  target().label_.clear();
  target().hasLabel_ = false;
  return *this;
}

// Missing values and value labels are stored in the variable's kind and width, so they pin them.
static bool hasKindDependentData(ZORB_Variable const& var) {
  OBS const *first, *second, *third;
  return var.GetMissingValues(first, second, third) != 0 || ZORB_ValueLabelMap(var.GetValueLabels()).Size() != 0;
}

VariableBuilder& VariableBuilder::numeric() {
  ZORB_Variable& var = target();
  if (var.type_ == 0) return *this;
  if (hasKindDependentData(var)) {
    throw std::logic_error("zorb::VariableBuilder::numeric: set the type before missing values and value labels");
  }
  var.type_ = 0;
  applyDefaultFormats();
  return *this;
}

VariableBuilder& VariableBuilder::string(int width) {
  if (width < 1) throw std::invalid_argument("zorb::VariableBuilder::string: the width must be at least 1");
  ZORB_Variable& var = target();
  if (var.type_ == width) return *this;
  if (hasKindDependentData(var)) {
    throw std::logic_error("zorb::VariableBuilder::string: set the type before missing values and value labels");
  }
  var.type_ = width;
  applyDefaultFormats();
  return *this;
}

void VariableBuilder::applyDefaultFormats() {
  ZORB_Variable& var = target();
  bool isString = var.type_ != 0;
  int type = isString ? kFormatA : kFormatF;
  int width = isString ? var.type_ : kDefaultNumericWidth;
  int decimals = isString ? 0 : kDefaultNumericDecimals;
  if (!printFormatSet_) {
    var.printType_ = type, var.printWidth_ = width, var.printDecimals_ = decimals;
  }
  if (!writeFormatSet_) {
    var.writeType_ = type, var.writeWidth_ = width, var.writeDecimals_ = decimals;
  }
}

VariableBuilder& VariableBuilder::alignment(int code) {
  target().alignment_ = code;
  return *this;
}

VariableBuilder& VariableBuilder::measurementLevel(int code) {
  target().measurementLevel_ = code;
  return *this;
}

VariableBuilder& VariableBuilder::displayWidth(std::int16_t width) {
  target().displayWidth_ = width;
  return *this;
}

VariableBuilder& VariableBuilder::printFormat(int type, int width, int decimals) {
  ZORB_Variable& var = target();
  var.printType_ = type, var.printWidth_ = width, var.printDecimals_ = decimals;
  printFormatSet_ = true;
  return *this;
}

VariableBuilder& VariableBuilder::writeFormat(int type, int width, int decimals) {
  ZORB_Variable& var = target();
  var.writeType_ = type, var.writeWidth_ = width, var.writeDecimals_ = decimals;
  writeFormatSet_ = true;
  return *this;
}

VariableBuilder& VariableBuilder::format(int type, int width, int decimals) {
  return printFormat(type, width, decimals).writeFormat(type, width, decimals);
}

void VariableBuilder::requireNumeric(char const* operation) const {
  if (variable().GetType() != 0) {
    throw std::logic_error(std::string("zorb::VariableBuilder::") + operation + ": the variable is a string variable");
  }
}

void VariableBuilder::requireString(char const* operation) const {
  if (variable().GetType() == 0) {
    throw std::logic_error(std::string("zorb::VariableBuilder::") + operation + ": the variable is numeric");
  }
}

std::string VariableBuilder::padToWidth(std::string const& value, char const* operation) const {
  std::size_t width = static_cast<std::size_t>(variable().GetType());
  if (value.size() > width) {
    throw std::invalid_argument(std::string("zorb::VariableBuilder::") + operation + ": the value \"" + value +
                                "\" is longer than the variable's width " + std::to_string(width));
  }
  return value + std::string(width - value.size(), ' ');
}

void VariableBuilder::setMissing(int count, std::vector<std::vector<OBS>> values) {
  ZORB_Variable& var = target();
  var.missingCount_ = count;
  var.missing_ = std::move(values);
}

VariableBuilder& VariableBuilder::missingValues(std::vector<double> const& values) {
  requireNumeric("missingValues");
  if (values.size() > kMaxMissingValues) {
    throw std::invalid_argument("zorb::VariableBuilder::missingValues: at most three discrete values");
  }
  std::vector<std::vector<OBS>> stored;
  for (double value : values) stored.push_back(numericObs(value));
  setMissing(static_cast<int>(values.size()), std::move(stored));
  return *this;
}

VariableBuilder& VariableBuilder::missingRange(double low, double high) {
  requireNumeric("missingRange");
  setMissing(-2, {numericObs(low), numericObs(high)});
  return *this;
}

VariableBuilder& VariableBuilder::missingRange(double low, double high, double discrete) {
  requireNumeric("missingRange");
  setMissing(-3, {numericObs(low), numericObs(high), numericObs(discrete)});
  return *this;
}

VariableBuilder& VariableBuilder::missingStrings(std::vector<std::string> const& values) {
  requireString("missingStrings");
  if (values.size() > kMaxMissingValues) {
    throw std::invalid_argument("zorb::VariableBuilder::missingStrings: at most three values");
  }
  std::vector<std::vector<OBS>> stored;
  for (std::string const& value : values) stored.push_back(stringObs(padToWidth(value, "missingStrings")));
  setMissing(static_cast<int>(values.size()), std::move(stored));
  return *this;
}

VariableBuilder& VariableBuilder::noMissingValues() {
  setMissing(0, {});
  return *this;
}

// Copy on write: a built data source or a ZORB_ValueLabelMap may still share the current labels.
ZORB_ValueLabelData& VariableBuilder::writableLabels() {
  ZORB_Variable& var = target();
  if (var.valueLabels_.use_count() > 1) var.valueLabels_ = std::make_shared<ZORB_ValueLabelData>(*var.valueLabels_);
  return *var.valueLabels_;
}

VariableBuilder& VariableBuilder::valueLabel(double value, std::string const& label) {
  requireNumeric("valueLabel");
  ZORB_ValueLabelData& labels = writableLabels();
  auto placed = numericLabelAt_.emplace(bitsOf(value), labels.numeric.size());
  if (placed.second) {
    labels.numeric.emplace_back(value, label);
  } else {
    labels.numeric[placed.first->second].second = label;
  }
  return *this;
}

VariableBuilder& VariableBuilder::valueLabel(std::string const& value, std::string const& label) {
  requireString("valueLabel");
  std::string padded = padToWidth(value, "valueLabel");
  ZORB_ValueLabelData& labels = writableLabels();
  auto placed = textLabelAt_.emplace(padded, labels.text.size());
  if (placed.second) {
    labels.text.emplace_back(std::move(padded), label);
  } else {
    labels.text[placed.first->second].second = label;
  }
  return *this;
}

VariableBuilder& VariableBuilder::attribute(std::string const& name, std::vector<std::string> const& values) {
  target().attributes_.Add(name, values);
  return *this;
}

VariableBuilder& VariableBuilder::attributesVersion(std::int64_t version) {
  target().attributes_.version = version;
  return *this;
}

// ---- VariableSetBuilder ----

VariableSet& VariableSetBuilder::target() { return owner_->setAt(response_, index_); }

VariableSet const& VariableSetBuilder::set() const { return owner_->setAt(response_, index_); }

VariableSetBuilder& VariableSetBuilder::name(std::string const& name) {
  target().name_ = name;
  return *this;
}

VariableSetBuilder& VariableSetBuilder::type(int type) {
  target().type_ = type;
  return *this;
}

VariableSetBuilder& VariableSetBuilder::label(std::string const& label) {
  target().label_ = label;
  return *this;
}

VariableSetBuilder& VariableSetBuilder::labelSetByVariable(bool on) {
  target().labelSetByVariable_ = on;
  return *this;
}

VariableSetBuilder& VariableSetBuilder::countedValue(std::string const& value) {
  target().countedValue_ = value;
  return *this;
}

VariableSetBuilder& VariableSetBuilder::useCategoryLabels(bool on) {
  target().useCategoryLabels_ = on;
  return *this;
}

VariableSetBuilder& VariableSetBuilder::member(std::string const& name) {
  target().variableNames_.push_back(name);
  return *this;
}

VariableSetBuilder& VariableSetBuilder::members(std::vector<std::string> const& names) {
  std::vector<std::string>& stored = target().variableNames_;
  stored.insert(stored.end(), names.begin(), names.end());
  return *this;
}

// ---- DataSourceBuilder ----

VariableBuilder& DataSourceBuilder::addVariable(std::string const& name) {
  std::string key = detail::asciiUpper(name);
  if (dataSource_.indexByUpperName_.count(key) != 0) throw std::invalid_argument(nameError(name));
  int index = dataSource_.ColumnCount();
  ZORB_Variable var;
  var.name_ = name;
  dataSource_.variables_.push_back(std::move(var));
  dataSource_.indexByUpperName_.emplace(std::move(key), index);
  variables_.push_back(VariableBuilder(*this, index));
  return variables_.back();
}

VariableBuilder& DataSourceBuilder::variable(int index) {
  if (index < 0 || index >= variableCount()) {
    throw std::out_of_range("zorb::DataSourceBuilder::variable: no variable at index " + std::to_string(index));
  }
  return variables_[static_cast<std::size_t>(index)];
}

VariableBuilder& DataSourceBuilder::variable(std::string const& name) {
  int index = findVariable(name);
  if (index < 0) throw std::out_of_range("zorb::DataSourceBuilder::variable: no variable named \"" + name + "\"");
  return variables_[static_cast<std::size_t>(index)];
}

int DataSourceBuilder::findVariable(std::string const& name) const { return dataSource_.FindVarIndex(name.c_str(), 0); }

void DataSourceBuilder::rename(int index, std::string const& name) {
  std::string newKey = detail::asciiUpper(name);
  auto existing = dataSource_.indexByUpperName_.find(newKey);
  if (existing != dataSource_.indexByUpperName_.end() && existing->second != index) {
    throw std::invalid_argument(nameError(name));
  }
  ZORB_Variable& var = variableAt(index);
  dataSource_.indexByUpperName_.erase(detail::asciiUpper(var.name_));
  dataSource_.indexByUpperName_.emplace(std::move(newKey), index);
  var.name_ = name;
}

DataSourceBuilder& DataSourceBuilder::weightVariable(int index) {
  if (index >= variableCount()) {
    throw std::out_of_range("zorb::DataSourceBuilder::weightVariable: no variable at index " + std::to_string(index));
  }
  dataSource_.weightIndex_ = index < 0 ? -1 : index;
  return *this;
}

DataSourceBuilder& DataSourceBuilder::weightVariable(std::string const& name) {
  int index = findVariable(name);
  if (index < 0) {
    throw std::out_of_range("zorb::DataSourceBuilder::weightVariable: no variable named \"" + name + "\"");
  }
  return weightVariable(index);
}

DataSourceBuilder& DataSourceBuilder::timestamp(double seconds) {
  dataSource_.timestamp_ = seconds;
  return *this;
}

DataSourceBuilder& DataSourceBuilder::rowCount(std::int64_t rows) {
  dataSource_.rowCount_ = rows;
  return *this;
}

DataSourceBuilder& DataSourceBuilder::attribute(std::string const& name, std::vector<std::string> const& values) {
  dataSource_.attributes_.Add(name, values);
  return *this;
}

DataSourceBuilder& DataSourceBuilder::attributesVersion(std::int64_t version) {
  dataSource_.attributes_.version = version;
  return *this;
}

DataSourceBuilder& DataSourceBuilder::extension(int type, int elementSize, std::string bytes) {
  if (elementSize < 1 || bytes.size() % static_cast<std::size_t>(elementSize) != 0) {
    throw std::invalid_argument("zorb::DataSourceBuilder::extension: " + std::to_string(bytes.size()) +
                                " bytes are not a whole number of elements of size " + std::to_string(elementSize));
  }
  std::int64_t length = static_cast<std::int64_t>(bytes.size() / static_cast<std::size_t>(elementSize));
  return extension(type, elementSize, length, std::move(bytes));
}

DataSourceBuilder& DataSourceBuilder::extension(int type, int elementSize, std::int64_t length, std::string bytes) {
  // elementSize * length could overflow, so the byte count is divided instead of the product formed.
  bool consistent = elementSize >= 0 && length >= 0 &&
                    (elementSize == 0 ? bytes.empty()
                                      : bytes.size() % static_cast<std::size_t>(elementSize) == 0 &&
                                            bytes.size() / static_cast<std::size_t>(elementSize) ==
                                                static_cast<std::uint64_t>(length));
  if (!consistent) {
    throw std::invalid_argument("zorb::DataSourceBuilder::extension: " + std::to_string(bytes.size()) +
                                " bytes do not hold " + std::to_string(length) + " elements of size " +
                                std::to_string(elementSize));
  }
  ZORB_DataSource::ExtensionRecord& record = dataSource_.extensions_[type];
  record.elementSize = elementSize;
  record.length = length;
  record.bytes = std::move(bytes);
  return *this;
}

DataSourceBuilder& DataSourceBuilder::extensionDeliveringFewer(int type, int elementSize, std::int64_t length,
                                                               std::string bytes) {
  bool shortOfLength = elementSize >= 1 && length >= 0 && bytes.size() % static_cast<std::size_t>(elementSize) == 0 &&
                       bytes.size() / static_cast<std::size_t>(elementSize) < static_cast<std::uint64_t>(length);
  if (!shortOfLength) {
    throw std::invalid_argument("zorb::DataSourceBuilder::extensionDeliveringFewer: " + std::to_string(bytes.size()) +
                                " bytes are not fewer whole elements of size " + std::to_string(elementSize) +
                                " than " + std::to_string(length));
  }
  ZORB_DataSource::ExtensionRecord& record = dataSource_.extensions_[type];
  record.elementSize = elementSize;
  record.length = length;
  record.bytes = std::move(bytes);
  return *this;
}

DataSourceBuilder& DataSourceBuilder::removeExtension(int type) {
  dataSource_.extensions_.erase(type);
  return *this;
}

VariableSet& DataSourceBuilder::setAt(bool response, std::size_t index) {
  return response ? dataSource_.responseSets_[index] : dataSource_.plainSets_[index];
}

VariableSetBuilder& DataSourceBuilder::appendSet(bool response, std::string const& name, int type) {
  std::vector<VariableSet>& sets = response ? dataSource_.responseSets_ : dataSource_.plainSets_;
  VariableSet set;
  set.name_ = name;
  set.type_ = type;
  sets.push_back(std::move(set));
  sets_.push_back(VariableSetBuilder(*this, response, sets.size() - 1));
  return sets_.back();
}

VariableSetBuilder& DataSourceBuilder::addVariableSet(std::string const& name) {
  return appendSet(false, name, VariableSet::Plain);
}

VariableSetBuilder& DataSourceBuilder::addMultipleResponseSet(std::string const& name, int type) {
  return appendSet(true, name, type);
}

DataSourceBuilder& DataSourceBuilder::variableSet(std::string const& name, std::vector<std::string> const& members) {
  addVariableSet(name).members(members);
  return *this;
}

DataSourceBuilder& DataSourceBuilder::categorySet(std::string const& name, std::string const& label,
                                                  std::vector<std::string> const& members, bool labelSetByVariable) {
  addMultipleResponseSet(name, VariableSet::Categories)
      .label(label)
      .labelSetByVariable(labelSetByVariable)
      .members(members);
  return *this;
}

DataSourceBuilder& DataSourceBuilder::dichotomySet(std::string const& name, std::string const& label,
                                                   std::string const& countedValue, bool useCategoryLabels,
                                                   std::vector<std::string> const& members, bool labelSetByVariable) {
  addMultipleResponseSet(name, VariableSet::Dichotomies)
      .label(label)
      .countedValue(countedValue)
      .useCategoryLabels(useCategoryLabels)
      .labelSetByVariable(labelSetByVariable)
      .members(members);
  return *this;
}

}  // namespace zorb

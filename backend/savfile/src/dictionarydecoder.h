// Phase 2: decodes the raw records into the host model, in dependency order whatever order the
// file used: encoding, variables and very long strings, long names, then everything that names
// variables (labels, missing values, display parameters, attributes, sets), then the data source's
// own facts and the raw extension records.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "diagnostics.h"
#include "rawdictionary.h"
#include <transspace/savfile/reader.h>
#include "textconverter.h"
#include "variabletable.h"
#include <transspace/zorb/datasourcebuilder.h>

namespace savfile {

class DictionaryDecoder {
public:
  DictionaryDecoder(RawDictionary const& raw, Diagnostics& diagnostics);

  // Fills `result` (data source and file information; not the warnings).
  void decode(ReadResult& result);

private:
  std::vector<RawExtension const*> extensions(int subtype) const;
  RawExtension const* single(int subtype) const;
  std::string text(std::string const& raw) const;
  std::string fit(std::string const& raw, int width) const;
  double number(std::string const& raw8) const;

  void chooseEncoding();
  void checkMachineRecords();
  void buildVariables();
  void applyLongNames();
  void addVariables();
  void addVariable(MergedVariable const& v);
  void addFormats(zorb::VariableBuilder& b, MergedVariable const& v, RawVariable const& r);
  void addMissingValues(zorb::VariableBuilder& b, MergedVariable const& v, RawVariable const& r);
  void addNumericMissing(zorb::VariableBuilder& b, RawVariable const& r);
  void addValueLabels();
  void addLongStringLabels();
  void addLongStringMissing();
  void addDisplayParameters();
  void addVariableAttributes();
  void addWeight();
  void addCaseCount();
  void addTimestamp();
  void addFileAttributes();
  void addVariableSets();
  void addMrSets();
  void addExtensions();
  void fillInfo(FileInfo& info) const;

  RawDictionary const& raw_;
  Diagnostics& diag_;
  std::unique_ptr<TextConverter> converter_;
  VariableTable table_;
  zorb::DataSourceBuilder builder_;
  // Values of the file's subtype 4, which some writers forge, mapped to the host's meanings.
  double fileLowest_ = 0, fileHighest_ = 0;
  bool haveFileConstants_ = false;
};

}  // namespace savfile

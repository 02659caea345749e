#include "dictionarydecoder.h"

#include <cfloat>
#include <cmath>
#include <algorithm>
#include <cstring>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include "binaryrecords.h"
#include "formats.h"
#include "textrecords.h"
#include "textscanner.h"
#include "timestamp.h"

namespace savfile {

namespace {

constexpr std::uint64_t lowestBits = 0xFFEFFFFFFFFFFFFEull;

double fromBits(std::uint64_t bits) {
  double d;
  std::memcpy(&d, &bits, sizeof d);
  return d;
}

std::uint64_t toBits(double d) {
  std::uint64_t bits;
  std::memcpy(&bits, &d, sizeof bits);
  return bits;
}

std::string blankTrimmed(std::string const& s) {
  std::size_t end = s.size();
  while (end > 0 && (s[end - 1] == ' ' || s[end - 1] == '\0')) --end;
  return s.substr(0, end);
}

}  // namespace

DictionaryDecoder::DictionaryDecoder(RawDictionary const& raw, Diagnostics& diagnostics)
    : raw_(raw), diag_(diagnostics) {}

void DictionaryDecoder::decode(ReadResult& result) {
  chooseEncoding();
  checkMachineRecords();
  buildVariables();
  applyLongNames();
  addVariables();
  addValueLabels();
  addLongStringLabels();
  addLongStringMissing();
  addDisplayParameters();
  addVariableAttributes();
  addWeight();
  addCaseCount();
  addTimestamp();
  addFileAttributes();
  addVariableSets();
  addMrSets();
  addExtensions();
  if (std::size_t replaced = converter_->unfitReplaced()) {
    diag_.warn(0, std::to_string(replaced) + " control character(s) that XML cannot carry were replaced by blanks");
  }
  result.dataSource = std::make_shared<ZORB_DataSource>();
  builder_.buildInto(*result.dataSource);
  fillInfo(result.info);
}

// ---- helpers ----

std::vector<RawExtension const*> DictionaryDecoder::extensions(int subtype) const {
  std::vector<RawExtension const*> found;
  for (auto const& e : raw_.extensions) {
    if (e.subtype == subtype) found.push_back(&e);
  }
  return found;
}

RawExtension const* DictionaryDecoder::single(int subtype) const {
  auto found = extensions(subtype);
  if (found.empty()) return nullptr;
  for (std::size_t i = 1; i < found.size(); ++i) {
    diag_.warn(found[i]->offset, "a second extension record of subtype " + std::to_string(subtype) + " is ignored");
  }
  return found.front();
}

std::string DictionaryDecoder::text(std::string const& raw) const { return converter_->convert(raw); }

// Text of a string value: converted, then cut to the variable's width (the host keeps values
// blank-padded to the width, so a converted text that grew must be shortened; in UTF-8 the cut
// falls on a character boundary).
std::string DictionaryDecoder::fit(std::string const& raw, int width) const {
  std::string s = blankTrimmed(text(blankTrimmed(raw)));
  if (static_cast<int>(s.size()) <= width) return s;
  std::size_t cut = static_cast<std::size_t>(width);
  if (converter_->to() == "UTF-8") {
    while (cut > 0 && (static_cast<unsigned char>(s[cut]) & 0xC0) == 0x80) --cut;
  }
  return s.substr(0, cut);
}

double DictionaryDecoder::number(std::string const& raw8) const { return raw_.order.f64(raw8.data()); }

// ---- encoding and machine records ----

void DictionaryDecoder::chooseEncoding() {
  std::string from;
  if (RawExtension const* e = single(20)) {
    std::string name = trimmed(e->data, true);
    if (TextConverter::available(name)) {
      from = name;
    } else {
      diag_.warn(e->dataOffset, "unknown character encoding '" + name.substr(0, 40) + "'");
    }
  }
  auto infos = extensions(3);  // (checkMachineRecords warns about a second one)
  RawExtension const* info = infos.empty() ? nullptr : infos.front();
  if (from.empty() && info && info->elementSize == 4 && info->count == 8) {
    int code = raw_.order.i32(info->data.data() + 28);
    from = TextConverter::codePageName(code);
    if (from.empty() || !TextConverter::available(from)) {
      diag_.warn(info->dataOffset + 28, "unknown character code " + std::to_string(code) + "; assuming windows-1252");
      from.clear();
    }
  }
  // Files without either record come from old writers, mostly on Windows: its Western code page is
  // the best guess.
  if (from.empty()) from = "windows-1252";
  std::string to = TextConverter::hostEncoding();
  try {
    converter_ = std::make_unique<TextConverter>(from, to);
  } catch (std::exception const&) {
    diag_.warn(0, "cannot convert from " + from + " to the host code page " + to + "; using UTF-8 for both");
    converter_ = std::make_unique<TextConverter>("UTF-8", "UTF-8");
  }
}

void DictionaryDecoder::checkMachineRecords() {
  RawHeader const& h = raw_.header;
  if (h.bias != 100.0 && h.bias != 0.0) {
    diag_.warn(84, "compression bias is " + std::to_string(h.bias) + ", not 100");
  }
  if (h.compression < 0 || h.compression > 2) {
    diag_.warn(72, "unknown compression code " + std::to_string(h.compression));
  } else if ((h.compression == 2) != (h.magic == "$FL3")) {
    diag_.warn(72, "compression code " + std::to_string(h.compression) + " does not match the signature " + h.magic);
  }
  if (RawExtension const* e = single(3)) {
    if (e->elementSize != 4 || e->count != 8) {
      diag_.warn(e->offset, "machine integer info record has size " + std::to_string(e->elementSize) + " x " +
                                std::to_string(e->count) + " instead of 4 x 8");
    } else {
      int floatRep = raw_.order.i32(e->data.data() + 16);
      if (floatRep != 1) diag_.warn(e->dataOffset + 16, "floating-point representation " + std::to_string(floatRep) + " is not IEEE 754; assuming IEEE 754");
    }
  }
  if (RawExtension const* e = single(4)) {
    if (e->elementSize != 8 || e->count != 3) {
      diag_.warn(e->offset, "machine floating-point info record has size " + std::to_string(e->elementSize) + " x " +
                                std::to_string(e->count) + " instead of 8 x 3");
    } else {
      fileHighest_ = raw_.order.f64(e->data.data() + 8);
      fileLowest_ = raw_.order.f64(e->data.data() + 16);
      // Only constants in their proper order mean anything (ReadStat has written them swapped).
      haveFileConstants_ = fileLowest_ < fileHighest_;
    }
  }
}

// ---- variables ----

void DictionaryDecoder::buildVariables() {
  std::vector<RawVeryLongString> veryLong;
  std::uint64_t offset = 0;
  if (RawExtension const* e = single(14)) {
    veryLong = parseVeryLongStrings(e->data, e->dataOffset, diag_);
    offset = e->dataOffset;
  }
  if (!raw_.variables.empty() && raw_.variables.front().type == -1) {
    diag_.fail(raw_.variables.front().offset, "the first variable record is a continuation record");
  }
  table_.build(raw_.variables, veryLong, offset, diag_);
  // Files from before long names (release 12) hold upper-case short names; like PSPP, show them in
  // lower case, the spelling that release 12 and later writers give such variables.
  bool lowerCase = extensions(13).empty();
  for (std::size_t i = 0; i < table_.variables().size(); ++i) {
    MergedVariable& v = table_.variables()[i];
    v.name = text(v.shortName);
    if (lowerCase) {
      for (char& c : v.name) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
      }
    }
    if (v.name.empty()) {
      diag_.warn(raw_.variables[static_cast<std::size_t>(v.record)].offset, "variable without a name; calling it V" + std::to_string(i + 1));
      v.name = "V" + std::to_string(i + 1);
    }
  }
}

void DictionaryDecoder::applyLongNames() {
  if (RawExtension const* e = single(13)) {
    for (auto const& pair : parseLongNames(e->data, e->dataOffset, diag_)) {
      int index = table_.byShortName(pair.first);
      if (index < 0) {
        diag_.warn(e->dataOffset, "long name for unknown variable '" + excerpt(text(pair.first)) + "' is ignored");
        continue;
      }
      // Names have at most 64 bytes (PSPP ignores longer ones too). A longer one would be copied
      // wherever the variable is named by its short name (set members), a few bytes of the file
      // each time.
      if (pair.second.size() > 64) {
        diag_.warn(e->dataOffset, "long name '" + excerpt(text(pair.second)) + "' has more than 64 bytes: ignored");
        continue;
      }
      std::string name = text(pair.second);
      if (!name.empty()) table_.variables()[static_cast<std::size_t>(index)].name = name;
    }
  }
  // The host needs unique names (ASCII case-insensitive): rename later duplicates. The suffix
  // tried first for a name is the one after the last that name got: the names in use only grow, so
  // the smaller ones are still taken, and a file of n equal names costs n steps, not n*n/2.
  std::unordered_set<std::string> used;
  std::unordered_map<std::string, int> nextSuffix;
  for (auto& v : table_.variables()) {
    std::string name = v.name;
    std::string key = VariableTable::upper(v.name);
    if (!used.insert(key).second) {
      int& next = nextSuffix.emplace(key, 2).first->second;
      do {
        name = v.name + "_" + std::to_string(next++);
      } while (!used.insert(VariableTable::upper(name)).second);
    }
    if (name != v.name) {
      diag_.warn(raw_.variables[static_cast<std::size_t>(v.record)].offset, "duplicate variable name '" + excerpt(v.name) + "' renamed to '" + excerpt(name) + "'");
      v.name = name;
    }
  }
  table_.indexNames();
}

void DictionaryDecoder::addVariables() {
  for (auto const& v : table_.variables()) addVariable(v);
}

void DictionaryDecoder::addVariable(MergedVariable const& v) {
  RawVariable const& r = raw_.variables[static_cast<std::size_t>(v.record)];
  zorb::VariableBuilder& b = builder_.addVariable(v.name);
  if (v.width > 0) {
    b.string(v.width);
    b.alignment(0);  // strings are left aligned unless subtype 11 says otherwise (as in PSPP)
    b.displayWidth(static_cast<std::int16_t>(v.width < 32 ? v.width : 32));
  }
  if (r.hasLabel) b.label(text(r.label));
  addFormats(b, v, r);
  addMissingValues(b, v, r);
}

void DictionaryDecoder::addFormats(zorb::VariableBuilder& b, MergedVariable const& v, RawVariable const& r) {
  if (v.segments > 1) {
    // A very long string's segments carry A255 formats; the variable's own is its full width.
    b.format(1, v.width, 0);
    return;
  }
  Format print, write;
  std::string problem;
  if (!decodeFormat(r.print, v.width, print, problem)) {
    diag_.warn(r.offset + 12, "variable " + excerpt(v.name) + ": print " + problem + "; using " + formatTypeName(print.type) +
                                  std::to_string(print.width) + (v.width ? "" : "." + std::to_string(print.decimals)));
  }
  if (!decodeFormat(r.write, v.width, write, problem)) {
    diag_.warn(r.offset + 16, "variable " + excerpt(v.name) + ": write " + problem + "; using " + formatTypeName(write.type) +
                                  std::to_string(write.width) + (v.width ? "" : "." + std::to_string(write.decimals)));
  }
  b.printFormat(print.type, print.width, print.decimals);
  b.writeFormat(write.type, write.width, write.decimals);
}

void DictionaryDecoder::addMissingValues(zorb::VariableBuilder& b, MergedVariable const& v, RawVariable const& r) {
  if (r.missingCode == 0) return;
  if (v.width == 0) {
    addNumericMissing(b, r);
    return;
  }
  if (r.missingCode < 0) {
    diag_.warn(r.offset + 8, "string variable " + excerpt(v.name) + " has a missing value range: ignored");
    return;
  }
  std::vector<std::string> values;
  for (auto const& raw : r.missing) values.push_back(fit(raw.substr(0, static_cast<std::size_t>(v.width < 8 ? v.width : 8)), v.width));
  b.missingStrings(values);
}

void DictionaryDecoder::addNumericMissing(zorb::VariableBuilder& b, RawVariable const& r) {
  std::vector<double> values;
  for (auto const& raw : r.missing) values.push_back(number(raw));
  if (r.missingCode > 0) {
    b.missingValues(values);
    return;
  }
  if (r.missingCode == -1) {
    diag_.warn(r.offset + 8, "missing value code -1 is not valid: ignored");
    return;
  }
  // LOWEST is stored as 0xffeffffffffffffe (or -DBL_MAX in release-21 files and later, says the
  // format's documentation); writers that forge subtype 4 use their own constants throughout.
  double low = values[0], high = values[1];
  if (low == -DBL_MAX || (haveFileConstants_ && low == fileLowest_)) low = fromBits(lowestBits);
  if (haveFileConstants_ && high == fileHighest_) high = DBL_MAX;
  if (!(low <= high) && toBits(low) != lowestBits) diag_.warn(r.offset + 8, "missing value range's low end is above its high end");
  if (r.missingCode == -2) {
    b.missingRange(low, high);
  } else {
    b.missingRange(low, high, values[2]);
  }
}

// ---- value labels ----

void DictionaryDecoder::addValueLabels() {
  // One record's labels go to every variable it lists, and the model (like the dictionary, which
  // has one valueLabelSet per variable) keeps a copy per variable: a record of L labels listing K
  // variables costs L x K entries, quadratic in the file's size (a 156 KB file asked for 9 million,
  // 1 GB). Real files need a few labels per variable; beyond this budget, which grows with the
  // dictionary's size, variables get no labels from the record, with a warning.
  std::uint64_t const budget = std::max<std::uint64_t>(std::uint64_t(1) << 22, 16 * raw_.dataOffset);
  std::uint64_t given = 0;
  for (auto const& set : raw_.valueLabels) {
    std::vector<int> targets;
    // A variable listed again gets the same labels again: skip it, or a record that lists one
    // variable many times would cost labels x indices.
    std::unordered_set<int> listed;
    bool stringLabels = false;
    for (std::size_t k = 0; k < set.indices.size(); ++k) {
      std::int32_t index = set.indices[k];
      std::uint64_t at = set.indicesOffset + 4 + 4 * k;
      int var = index >= 1 ? table_.byRecord(static_cast<std::size_t>(index - 1)) : -1;
      if (var < 0) {
        diag_.warn(at, "value labels for dictionary index " + std::to_string(index) + ", which is no variable: ignored");
        continue;
      }
      if (!listed.insert(var).second) continue;
      MergedVariable const& v = table_.variables()[static_cast<std::size_t>(var)];
      if (v.width > 8) {
        diag_.warn(at, "value labels for long string variable " + excerpt(v.name) + " in a type 3 record: ignored");
        continue;
      }
      if (targets.empty()) stringLabels = v.width > 0;
      if ((v.width > 0) != stringLabels) {
        diag_.warn(at, "value labels for numeric and string variables in one record: " + excerpt(v.name) + " ignored");
        continue;
      }
      targets.push_back(var);
    }
    std::size_t const within = set.labels.empty() ? targets.size()
                                                  : static_cast<std::size_t>(std::min<std::uint64_t>(
                                                        targets.size(), (budget - given) / set.labels.size()));
    if (within < targets.size()) {
      diag_.warn(set.offset, "value labels: " + std::to_string(targets.size() - within) + " of the " +
                                 std::to_string(targets.size()) + " variables of this record get none, since the " +
                                 "labels of all records would exceed " + std::to_string(budget) + " entries");
      targets.resize(within);
    }
    given += targets.size() * set.labels.size();
    if (targets.empty()) continue;
    std::vector<std::string> texts;  // converted once for all the variables
    texts.reserve(set.labels.size());
    for (auto const& label : set.labels) texts.push_back(text(label.second));
    for (int var : targets) {
      MergedVariable const& v = table_.variables()[static_cast<std::size_t>(var)];
      zorb::VariableBuilder& b = builder_.variable(var);
      for (std::size_t i = 0; i < set.labels.size(); ++i) {
        std::string const& value = set.labels[i].first;
        if (stringLabels) {
          b.valueLabel(fit(value.substr(0, static_cast<std::size_t>(v.width)), v.width), texts[i]);
        } else {
          b.valueLabel(number(value), texts[i]);
        }
      }
    }
  }
}

void DictionaryDecoder::addLongStringLabels() {
  for (RawExtension const* e : extensions(21)) {
    for (auto const& entry : parseLongStringLabels(e->data, raw_.order, e->dataOffset, diag_)) {
      int var = table_.byName(text(entry.variable));
      MergedVariable const* v = var >= 0 ? &table_.variables()[static_cast<std::size_t>(var)] : nullptr;
      if (!v || v->width == 0) {
        diag_.warn(entry.offset, "long string value labels for '" + excerpt(text(entry.variable)) + "', which is no string variable: ignored");
        continue;
      }
      if (entry.width != v->width) {
        diag_.warn(entry.offset, "long string value labels for " + excerpt(v->name) + " give width " + std::to_string(entry.width) +
                                     " instead of " + std::to_string(v->width) + ": ignored");
        continue;
      }
      zorb::VariableBuilder& b = builder_.variable(var);
      for (auto const& label : entry.labels) b.valueLabel(fit(label.first, v->width), text(label.second));
    }
  }
}

void DictionaryDecoder::addLongStringMissing() {
  RawExtension const* e = single(22);
  if (!e) return;
  for (auto const& entry : parseLongStringMissing(e->data, raw_.order, e->dataOffset, diag_)) {
    int var = table_.byName(text(entry.variable));
    MergedVariable const* v = var >= 0 ? &table_.variables()[static_cast<std::size_t>(var)] : nullptr;
    if (!v || v->width == 0) {
      diag_.warn(entry.offset, "long string missing values for '" + excerpt(text(entry.variable)) + "', which is no string variable: ignored");
      continue;
    }
    std::vector<std::string> values;
    for (auto const& raw : entry.values) values.push_back(fit(raw, v->width));
    if (!values.empty()) builder_.variable(var).missingStrings(values);
  }
}

// ---- display parameters and variable attributes ----

void DictionaryDecoder::addDisplayParameters() {
  RawExtension const* e = single(11);
  if (!e) return;
  std::size_t segments = table_.segmentCount();
  std::size_t merged = table_.variables().size();
  // One entry per segment, as most writers store it; some count merged variables instead.
  bool perVariable = false;
  auto params = parseDisplayParameters(e->data, e->elementSize, e->count, segments, raw_.order, e->dataOffset, diag_,
                                       merged == segments);
  if (params.empty() && merged != segments && e->count > 0) {
    params = parseDisplayParameters(e->data, e->elementSize, e->count, merged, raw_.order, e->dataOffset, diag_);
    perVariable = !params.empty();
  }
  bool withWidth = static_cast<std::size_t>(e->count) == 3 * params.size();
  std::size_t stride = withWidth ? 12 : 8;
  for (std::size_t i = 0; i < params.size(); ++i) {
    bool first = true;
    int var = perVariable ? static_cast<int>(i) : table_.bySegment(i, first);
    if (var < 0 || !first) continue;
    std::uint64_t at = e->dataOffset + stride * i;
    RawDisplayParameter const& p = params[i];
    zorb::VariableBuilder& b = builder_.variable(var);
    std::string const name = excerpt(table_.variables()[static_cast<std::size_t>(var)].name);
    if (p.measure >= 0 && p.measure <= 3) {
      b.measurementLevel(p.measure);
    } else {
      diag_.warn(at, "variable " + name + ": measurement level " + std::to_string(p.measure) + " is unknown; using 0 (unknown)");
      b.measurementLevel(0);
    }
    if (p.alignment >= 0 && p.alignment <= 2) {
      b.alignment(p.alignment);
    } else {
      diag_.warn(at + stride - 4, "variable " + name + ": alignment " + std::to_string(p.alignment) + " is unknown; using 0 (left)");
      b.alignment(0);
    }
    if (p.width >= 0 && p.width <= 32767) {
      b.displayWidth(static_cast<std::int16_t>(p.width));
    } else if (withWidth) {
      diag_.warn(at + 4, "variable " + name + ": display width " + std::to_string(p.width) + " is out of range; ignored");
    }
  }
}

void DictionaryDecoder::addVariableAttributes() {
  for (RawExtension const* e : extensions(18)) {
    for (auto const& entry : parseVariableAttributes(e->data, e->dataOffset, diag_)) {
      int var = table_.byName(text(entry.variable));
      if (var < 0) {
        diag_.warn(e->dataOffset, "attributes for unknown variable '" + excerpt(text(entry.variable)) + "' are ignored");
        continue;
      }
      zorb::VariableBuilder& b = builder_.variable(var);
      for (auto const& attribute : entry.attributes) {
        std::vector<std::string> values;
        for (auto const& value : attribute.second) values.push_back(text(value));
        b.attribute(text(attribute.first), values);
      }
    }
  }
}

// ---- data source facts ----

void DictionaryDecoder::addWeight() {
  std::int32_t index = raw_.header.weightIndex;
  if (index == 0) return;
  int var = index > 0 ? table_.byRecord(static_cast<std::size_t>(index - 1)) : -1;
  if (var < 0 || table_.variables()[static_cast<std::size_t>(var)].width != 0) {
    diag_.warn(76, "weight index " + std::to_string(index) + " names no numeric variable: the file is read unweighted");
    return;
  }
  builder_.weightVariable(var);
}

void DictionaryDecoder::addCaseCount() {
  std::int64_t count = raw_.header.caseCount;
  if (count < -1) {
    diag_.warn(80, "case count " + std::to_string(count) + " is not valid: taken as unknown");
    count = -1;
  }
  if (RawExtension const* e = single(16)) {
    if (e->elementSize != 8 || e->count != 2) {
      diag_.warn(e->offset, "extended case count record has size " + std::to_string(e->elementSize) + " x " +
                                std::to_string(e->count) + " instead of 8 x 2: ignored");
    } else {
      std::int64_t count64 = raw_.order.i64(e->data.data() + 8);
      if (count < 0 && count64 >= 0) {
        count = count64;
      } else if (count64 != count && count64 != -1) {
        diag_.warn(e->dataOffset + 8, "extended case count " + std::to_string(count64) +
                                          " differs from the header's " + std::to_string(count) + "; using the header's");
      }
    }
  }
  builder_.rowCount(count < 0 ? -1 : count);
}

void DictionaryDecoder::addTimestamp() {
  auto stamp = parseTimestamp(raw_.header.date, raw_.header.time);
  if (!stamp) {
    diag_.warn(92, "creation date '" + text(raw_.header.date) + "' and time '" + text(raw_.header.time) +
                       "' are not readable: time stamp 0");
    return;
  }
  builder_.timestamp(*stamp);
}

void DictionaryDecoder::addFileAttributes() {
  for (RawExtension const* e : extensions(17)) {
    for (auto const& attribute : parseAttributeSet(e->data, e->dataOffset, diag_)) {
      std::vector<std::string> values;
      for (auto const& value : attribute.second) values.push_back(text(value));
      builder_.attribute(text(attribute.first), values);
    }
  }
}

void DictionaryDecoder::addVariableSets() {
  RawExtension const* e = single(5);
  if (!e) return;
  for (auto const& set : parseVariableSets(e->data, e->dataOffset, diag_)) {
    std::string const setName = text(set.name);
    std::vector<std::string> members;
    for (auto const& raw : set.members) {
      std::string name = text(raw);
      // Members are long names, or (release 12) short names in upper case: keep the file's spelling
      // when it is a variable's name, else the name of the variable whose short name it is.
      if (table_.byName(name) >= 0) {
        members.push_back(name);
      } else if (int var = table_.byShortName(raw); var >= 0) {
        members.push_back(table_.variables()[static_cast<std::size_t>(var)].name);
      } else {
        diag_.warn(e->dataOffset, "variable set " + excerpt(setName) + " names unknown variable '" + excerpt(name) + "': left out");
      }
    }
    builder_.variableSet(setName, members);
  }
}

void DictionaryDecoder::addMrSets() {
  for (int subtype : {7, 19}) {
    RawExtension const* e = single(subtype);
    if (!e) continue;
    for (auto const& set : parseMrSets(e->data, e->dataOffset, diag_)) {
      if (subtype == 7 && set.kind == 'E') {
        diag_.warn(set.offset, "multiple response set of type E in a subtype 7 record");
      }
      std::string name = text(set.name), label = text(set.label);
      std::vector<std::string> members;
      for (auto const& shortName : set.variables) {
        int var = table_.byShortName(shortName);
        if (var < 0) {
          diag_.warn(set.offset, "multiple response set " + excerpt(name) + " names unknown variable '" +
                                     excerpt(text(shortName)) + "': left out");
          continue;
        }
        members.push_back(table_.variables()[static_cast<std::size_t>(var)].name);
      }
      if (set.kind == 'C') {
        builder_.categorySet(name, label, members);
      } else {
        builder_.dichotomySet(name, label, text(set.countedValue), set.kind == 'E', members, set.labelSource == 11);
      }
    }
  }
}

// Every extension record is kept raw, one per subtype (the host has one per type). Repeated
// subtype 18 records are concatenated, as readers do; other repeats keep the first. Elements of
// 2, 4 or 8 bytes are stored in the host's byte order, so that a big-endian file's record reads
// the same as a little-endian file's; text (element size 1) is kept byte for byte.
void DictionaryDecoder::addExtensions() {
  struct Record {
    std::int32_t elementSize;
    std::int64_t count;  // the sum of several int32 counts (element size 0 holds any count in no bytes)
    std::string data;
  };
  std::map<int, Record> bySubtype;
  for (auto const& e : raw_.extensions) {
    auto it = bySubtype.find(e.subtype);
    if (it == bySubtype.end()) {
      bySubtype.emplace(e.subtype, Record{e.elementSize, e.count, e.data});
    } else if (e.subtype == 18 && e.elementSize == it->second.elementSize) {
      it->second.data += e.data;
      it->second.count += e.count;
    }
  }
  std::uint16_t probe = 1;
  unsigned char firstByte;
  std::memcpy(&firstByte, &probe, 1);
  bool swap = raw_.order.bigEndian() == (firstByte == 1);
  for (auto& [subtype, e] : bySubtype) {
    std::string bytes = std::move(e.data);
    std::size_t size = static_cast<std::size_t>(e.elementSize);
    if (swap && (size == 2 || size == 4 || size == 8)) {
      for (std::size_t i = 0; i + size <= bytes.size(); i += size) std::reverse(bytes.begin() + static_cast<std::ptrdiff_t>(i), bytes.begin() + static_cast<std::ptrdiff_t>(i + size));
    }
    builder_.extension(subtype, e.elementSize, e.count, std::move(bytes));
  }
}

void DictionaryDecoder::fillInfo(FileInfo& info) const {
  info.productName = blankTrimmed(text(raw_.header.productName));
  info.fileLabel = blankTrimmed(text(raw_.header.fileLabel));
  info.encoding = converter_->from();
  info.bigEndian = raw_.header.bigEndian;
  info.zsav = raw_.header.magic == "$FL3";
  info.compression = raw_.header.compression;
  for (auto const& line : raw_.documents) info.documents.push_back(blankTrimmed(text(line)));
  info.dataOffset = raw_.dataOffset;
}

}  // namespace savfile

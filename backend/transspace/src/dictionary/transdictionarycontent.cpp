#include "core/transconfig.h"

#include "dictionary/transdictionarycontent.h"

#include "dictionary/transdictionarysink.h"
#include "core/transutil.h"
#include "dictionary/transxmlcharray.h"

#include <transspace/zorb/platform.h>

#include <clocale>
#include <cstdint>
#include <cstring>

#include <unicode/unistr.h>

using X = TransXMLChArray;

int const TransDictionaryContent::extensionTypes[10] = {1, 2, 3, 4, 6, 8, 9, 10, 12, 15};

namespace {

// Names of the host's codes. The assertions are written `! "..."` with a space so that their
// stringified text is exactly the one the project's death tests expect.
XMLCh const* formatTypeName(int type) {
  // Negative codes are compared as unsigned, so they fall into the default like every other gap.
  switch (static_cast<unsigned int>(type)) {
    case 1: return X::A_s;
    case 2: return X::AHEX_s;
    case 3: return X::COMMA_s;
    case 4: return X::DOLLAR_s;
    case 5: return X::F_s;
    case 6: return X::IB_s;
    case 7: return X::IBHEX_s;
    case 8: return X::P_s;
    case 9: return X::PIB_s;
    case 10: return X::PK_s;
    case 11: return X::RB_s;
    case 12: return X::RBHEX_s;
    case 15: return X::Z_s;
    case 16: return X::N_s;
    case 17: return X::E_s;
    case 20: return X::DATE_s;
    case 21: return X::TIME_s;
    case 22: return X::DATETIME_s;
    case 23: return X::ADATE_s;
    case 24: return X::JDATE_s;
    case 25: return X::DTIME_s;
    case 26: return X::WKDAY_s;
    case 27: return X::MONTH_s;
    case 28: return X::MOYR_s;
    case 29: return X::QYR_s;
    case 30: return X::WKYR_s;
    case 31: return X::PERCENT_s;
    case 32: return X::DOT_s;
    case 33: return X::CCA_s;
    case 34: return X::CCB_s;
    case 35: return X::CCC_s;
    case 36: return X::CCD_s;
    case 37: return X::CCE_s;
    case 38: return X::EDATE_s;
    case 39: return X::SDATE_s;
    case 40: return X::G_s;
    case 41: return X::LNUMBER_s;
    case 42: return X::LDATE_s;
    case 43: return X::LTIME_s;
    case 44: return X::LCA_s;
    case 45: return X::LCB_s;
    case 46: return X::LCC_s;
    case 47: return X::LCD_s;
    case 48: return X::LCE_s;
    case 49: return X::LCF_s;
    case 50: return X::LCG_s;
    case 51: return X::LCH_s;
    case 52: return X::LCI_s;
    case 53: return X::LCJ_s;
    case 85: return X::MTIME_s;
    case 86: return X::YMDHMS_s;
    default: break;
  }
  // The assertion's text is fixed, spaces included.
  // clang-format off
  assert(! "unknown format type.");
  // clang-format on
  return nullptr;
}

XMLCh const* alignmentName(int code) {
  switch (code) {
    case 0: return X::left_s;
    case 1: return X::right_s;
    case 2: return X::center_s;
    default: break;
  }
  // The assertion's text is fixed, spaces included.
  // clang-format off
  assert(! "unknown alignment.");
  // clang-format on
  return nullptr;
}

XMLCh const* measurementLevelName(int code) {
  switch (code) {
    case 0: return X::unknown_s;
    case 1: return X::nominal_s;
    case 2: return X::ordinal_s;
    case 3: return X::scale_s;
    default: break;
  }
  // The assertion's text is fixed, spaces included.
  // clang-format off
  assert(! "unknown measurement level.");
  // clang-format on
  return nullptr;
}

// The ends of an open range are recognised bit for bit, so that the most negative finite double
// (which is not "lowest") and values that merely compare equal are formatted as numbers.
constexpr std::uint64_t kLowestBits = 0xFFEFFFFFFFFFFFFEull;
constexpr std::uint64_t kHighestBits = 0x7FEFFFFFFFFFFFFFull;

std::uint64_t bitsOf(double value) {
  std::uint64_t bits;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

// A string value as the dictionary writes it: everything from its first blank on is dropped.
std::string cutAtFirstBlank(std::string text) {
  std::string::size_type blank = text.find(' ');
  if (blank != std::string::npos) text.erase(blank);
  return text;
}

// The extension record's bytes as two upper-case hexadecimal digits each, high digit first.
std::string hexText(unsigned char const* bytes, std::size_t count) {
  static char const digits[] = "0123456789ABCDEF";
  std::string text;
  text.reserve(count * 2);
  for (std::size_t i = 0; i < count; ++i) {
    text.push_back(digits[bytes[i] >> 4]);
    text.push_back(digits[bytes[i] & 0x0F]);
  }
  return text;
}

XMLCh const* xmlChars(UChar const* text) { return reinterpret_cast<XMLCh const*>(text); }

}  // namespace

TransDictionaryContent::TransDictionaryContent(TransDictionarySink& sink) : sink_(sink) {}

// ---- attribute values ----

void TransDictionaryContent::fixed(XMLCh const* name, XMLCh const* value) { sink_.attribute(name, value); }

// A zero-terminated host text in the host's code page; a null pointer means "absent" and writes
// nothing (a variable without label), while an empty text writes an empty attribute. Through the
// zero-terminated text, a text is cut at an embedded zero byte.
void TransDictionaryContent::text(XMLCh const* name, char const* mbcs) {
  if (mbcs == nullptr) return;
  sink_.attribute(name, xmlChars(hostText_.toTerminatedUTF16(mbcs)));
}

// Integer text in the numeric locale; left out when the conversion fails.
void TransDictionaryContent::integer(XMLCh const* name, long value) {
  if (XMLCh const* digits = numbers_.integer(value)) sink_.attribute(name, digits);
}

// A value's number in English notation; left out when the conversion fails.
void TransDictionaryContent::number(XMLCh const* name, double value) {
  if (XMLCh const* digits = numbers_.number(value)) sink_.attribute(name, digits);
}

// An element whose only attribute is one host text.
void TransDictionaryContent::element(XMLCh const* tag, XMLCh const* name, char const* mbcs) {
  sink_.startElement(tag);
  text(name, mbcs);
  sink_.endElement();
}

// ---- the document and its root ----

void TransDictionaryContent::document(ZORB_DataSource const& ds) {
  sink_.startElement(X::dictionary_s);
  namespaceAttributes();
  rootAttributes(ds);
  // The column count is asked before every variable and compared as unsigned.
  for (unsigned int i = 0; i < static_cast<unsigned int>(ds.ColumnCount()); ++i)
    variable(ds.GetVariable(static_cast<int>(i)));
  weightVariable(ds);
  for (unsigned int i = 0; i < static_cast<unsigned int>(ds.ColumnCount()); ++i) {
    valueLabelSet(ds.GetVariable(static_cast<int>(i)));
  }
  for (VariableSet const& set : VariableSets(ds, PlainVariableSets)) variableSet(set, ds);
  for (VariableSet const& set : VariableSets(ds, MultipleResponseSets)) multipleResponseSet(set, ds);
  attributeSet(DatasourceAttributes(ds.GetAttributes()));
  for (int type : extensionTypes) extension(ds, type);
  sink_.endElement();
}

void TransDictionaryContent::namespaceAttributes() {
  fixed(X::xmlns_s, X::schemaDefaultNSValue_s);
  fixed(X::xmlnsXsi_s, X::schemaInstanceValue_s);
  fixed(X::xsiSchemaLocation_s, X::schemaLocationValue_s);
}

void TransDictionaryContent::rootAttributes(ZORB_DataSource const& ds) {
  // locale: the server's name for the process's character-type locale, or that name itself (as the
  // host may have rewritten it) when the server knows none.
  char const* ctype = std::setlocale(LC_CTYPE, nullptr);
  std::string locale = ctype != nullptr ? ctype : "";
  std::vector<std::string> serverLocales;
  int found = GetServerLocaleList(locale, serverLocales);
  // A host that reports entries but fills none is treated as having none rather than read past
  // the list's end.
  std::string const& localeName = found > 0 && !serverLocales.empty() ? serverLocales.front() : locale;
  icu::UnicodeString localeText = TransUtil::MBCStoUTF16(localeName);
  fixed(X::locale_s, xmlChars(localeText.getTerminatedBuffer()));

  std::string dateTime;
  ToISODateTime(dateTime, ds.GetTimestamp(), 2, true, true);
  icu::UnicodeString dateTimeText = TransUtil::MBCStoUTF16(dateTime);
  fixed(X::creationDateTime_s, xmlChars(dateTimeText.getTerminatedBuffer()));

  std::int64_t rows = ds.RowCount();
  if (rows >= 0) integer(X::rowCount_s, static_cast<long>(rows));
}

// ---- variables and formats ----

void TransDictionaryContent::variable(ZORB_Variable const& var) {
  sink_.startElement(X::variable_s);
  text(X::name_s, var.GetName());
  text(X::label_s, var.GetLabel());  // null: no label attribute
  integer(X::type_s, var.GetType());
  fixed(X::alignment_s, alignmentName(var.GetAlignment()));
  fixed(X::measurementLevel_s, measurementLevelName(var.GetMeasurementLevel()));
  integer(X::displayWidth_s, static_cast<long>(var.GetDisplayWidth()));
  variableFormat(var);
  variableWriteFormat(var);
  missingValues(var);
  attributeSet(DatasourceAttributes(var.GetAttributes()));
  sink_.endElement();
}

void TransDictionaryContent::variableFormat(ZORB_Variable const& var) {
  ZORB_Variable::FormatType type = 0;
  int width = 0;
  int decimals = 0;
  var.GetFormatEx(type, width, decimals);
  format(X::variableFormat_s, type, width, decimals);
}

void TransDictionaryContent::variableWriteFormat(ZORB_Variable const& var) {
  ZORB_Variable::FormatType type = 0;
  int width = 0;
  int decimals = 0;
  var.GetWriteFormatEx(type, width, decimals);
  format(X::variableWriteFormat_s, type, width, decimals);
}

void TransDictionaryContent::format(XMLCh const* tag, int type, int width, int decimals) {
  sink_.startElement(tag);
  formatAttributes(type, width, decimals);
  sink_.endElement();
}

void TransDictionaryContent::formatAttributes(int type, int width, int decimals) {
  fixed(X::type_s, formatTypeName(type));
  integer(X::width_s, width);
  integer(X::decimals_s, decimals);
}

// ---- missing values and value labels ----

int TransDictionaryContent::missingValues(ZORB_Variable const& var) {
  int type = var.GetType();
  OBS const* values[3] = {nullptr, nullptr, nullptr};
  int n = var.GetMissingValues(values[0], values[1], values[2]);
  int count = n < 0 ? -n : n;
  for (int i = 0; i < count && i < 3; ++i) {
    OBS const* value = values[i];
    sink_.startElement(X::missingValue_s);
    if (type != 0) {
      // A string value spans the consecutive OBS of the variable's width; at most 8 bytes are kept.
      std::string stored(reinterpret_cast<char const*>(value), static_cast<std::size_t>(type));
      std::string cut = cutAtFirstBlank(stored);
      if (cut.size() > 8) cut.erase(8);
      text(X::data_s, cut.c_str());
    } else if (bitsOf(value->f) == kLowestBits) {
      fixed(X::data_s, X::lowest_s);
    } else if (bitsOf(value->f) == kHighestBits) {
      fixed(X::data_s, X::highest_s);
    } else {
      number(X::data_s, value->f);
    }
    if (n < 0 && i == 0) fixed(X::type_s, X::lowerBound_s);
    if (n < 0 && i == 1) fixed(X::type_s, X::upperBound_s);
    sink_.endElement();
  }
  return n;
}

bool TransDictionaryContent::valueLabelSet(ZORB_Variable const& var) {
  ZORB_ValueLabelMap labels(var.GetValueLabels());
  if (labels.Size() == 0) return false;
  sink_.startElement(X::valueLabelSet_s);
  int type = var.GetType();
  labels.Reset();
  char const* labelText = nullptr;
  if (type != 0) {
    std::string value;
    while (labels.GetNextPair(value, labelText)) {
      std::string cut = cutAtFirstBlank(value);
      sink_.startElement(X::valueLabel_s);
      text(X::value_s, cut.c_str());
      text(X::label_s, labelText);
      sink_.endElement();
    }
  } else {
    double value = 0.0;
    while (labels.GetNextPair(value, labelText)) {
      // Lowest and highest get no special words here: they are numbers like any other.
      sink_.startElement(X::valueLabel_s);
      number(X::value_s, value);
      text(X::label_s, labelText);
      sink_.endElement();
    }
  }
  element(X::valueLabelVariable_s, X::name_s, var.GetName());
  sink_.endElement();
  return true;
}

// ---- weight variable, sets ----

bool TransDictionaryContent::weightVariable(ZORB_DataSource const& ds) {
  int index = ds.GetWeightVarIndex();
  if (index < 0) return false;
  element(X::weightVariable_s, X::name_s, ds.GetVariable(index).GetName());
  return true;
}

// One member element per name that the data source knows, spelled as the data source spells it;
// names it does not know are skipped silently. Returns the number written.
unsigned int TransDictionaryContent::members(VariableSet const& set, ZORB_DataSource const& ds,
                                             XMLCh const* memberTag) {
  unsigned int count = 0;
  for (std::string const& name : set.GetVariableNames(VariableSet::AsStored)) {
    int index = ds.FindVarIndex(name.c_str(), 0);
    if (index == -1) continue;
    element(memberTag, X::name_s, ds.GetVariable(index).GetName());
    ++count;
  }
  return count;
}

unsigned int TransDictionaryContent::variableSet(VariableSet const& set, ZORB_DataSource const& ds) {
  std::string name = set.GetName(VariableSet::AsStored);
  sink_.startElement(X::variableSet_s);
  text(X::name_s, name.c_str());
  unsigned int count = members(set, ds, X::variableSetVariable_s);
  sink_.endElement();
  return count;
}

unsigned int TransDictionaryContent::multipleResponseSet(VariableSet const& set, ZORB_DataSource const& ds) {
  std::string name = set.GetName(VariableSet::AsStored);
  sink_.startElement(X::multipleResponseSet_s);
  text(X::name_s, name.c_str());
  if (set.GetType() == VariableSet::Dichotomies) {
    sink_.startElement(X::multipleResponseSetCategoryLabels_s);
    fixed(X::value_s, set.qUseVariableCategoryLabels() ? X::countedValues_s : X::variableLabels_s);
    sink_.endElement();
    std::string counted = set.GetValue();
    if (!counted.empty()) element(X::multipleResponseSetDichotomy_s, X::value_s, counted.c_str());
  }
  if (set.qLabelSetByVariable()) {
    sink_.startElement(X::multipleResponseSetLabelSource_s);
    fixed(X::value_s, X::variableLabel_s);
    sink_.endElement();
  } else {
    std::string label = set.GetLabel();
    if (!label.empty()) element(X::multipleResponseSetLabel_s, X::value_s, label.c_str());
  }
  unsigned int count = members(set, ds, X::multipleResponseSetVariable_s);
  sink_.endElement();
  return count;
}

// ---- attributes and extension records ----

bool TransDictionaryContent::attributeSet(DatasourceAttributes const& attributes) {
  unsigned long size = attributes.Size();
  if (size == 0) return false;
  sink_.startElement(X::attributeSet_s);
  integer(X::version_s, attributes.version);
  for (unsigned long i = 0; i < size; ++i) attribute(attributes.Name(i), attributes.Values(i));
  sink_.endElement();
  return true;
}

void TransDictionaryContent::attribute(std::string const& name, std::vector<std::string> const& values) {
  sink_.startElement(X::attribute_s);
  // Through the zero-terminated text: a name is cut at an embedded zero byte.
  text(X::name_s, name.c_str());
  fixed(X::type_s, name.c_str()[0] == '$' ? X::system_s : X::user_s);
  for (std::string const& value : values) element(X::attributeValue_s, X::value_s, value.c_str());
  sink_.endElement();
}

bool TransDictionaryContent::extension(ZORB_DataSource const& ds, int type) {
  if (!ds.HasExtension(type)) return false;
  ZORB_DataSource::Extension ext(ds, type);
  sink_.startElement(X::extension_s);
  integer(X::type_s, ext.Type());
  integer(X::elementSize_s, ext.ElementSize());
  integer(X::length_s, static_cast<long>(ext.Length()));
  std::vector<unsigned char> buffer(static_cast<std::size_t>(ext.ElementSize()) *
                                    static_cast<std::size_t>(ext.Length()));
  long nelems = ext.GetNext(buffer.data(), static_cast<long>(ext.Length()));
  assert(nelems == ext.Length());
  std::string hex = hexText(buffer.data(), buffer.size());
  std::vector<unsigned char>().swap(buffer);
  text(X::data_s, hex.c_str());
  sink_.endElement();
  return true;
}

#include "transconfig.h"

#include "transdictionaryimpl.h"

#include "transdoubleimpl.h"
#include "transintegerimpl.h"
#include "transstatus.h"
#include "transstring.h"
#include "transutil.h"
#include "transvalue.h"
#include "transxmlcharray.h"

#include "zorb/platform.h"

#include <clocale>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include <unicode/unistr.h>
#include <xercesc/dom/impl/DOMDocumentImpl.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>

using XERCES_CPP_NAMESPACE::DOMImplementation;
using XERCES_CPP_NAMESPACE::DOMNodeList;
using XERCES_CPP_NAMESPACE::XMLPlatformUtils;
using XERCES_CPP_NAMESPACE::XMLString;
using X = TransXMLChArray;

// ---------------------------------------------------------------------------------------------
// Attribute values
// ---------------------------------------------------------------------------------------------

struct TransDictionaryImpl::Attribute {
  enum class Kind { Fixed, Text, Integer, Number };
  XMLCh const* name;
  Kind kind;
  XMLCh const* fixedValue = nullptr;
  char const* textValue = nullptr;
  long integerValue = 0;
  double numberValue = 0.0;

  // A value of the vocabulary table, written as it is.
  static Attribute fixed(XMLCh const* name, XMLCh const* value) {
    Attribute a{name, Kind::Fixed};
    a.fixedValue = value;
    return a;
  }
  // A zero-terminated host text; a null pointer means "absent" and writes nothing (a variable
  // without label), while an empty text writes an empty attribute.
  static Attribute text(XMLCh const* name, char const* value) {
    Attribute a{name, Kind::Text};
    a.textValue = value;
    return a;
  }
  // Integer text through TransIntegerImpl; left out when the conversion fails.
  static Attribute integer(XMLCh const* name, long value) {
    Attribute a{name, Kind::Integer};
    a.integerValue = value;
    return a;
  }
  // XML number text through TransDoubleImpl::asXMLString; left out when the conversion fails.
  static Attribute number(XMLCh const* name, double value) {
    Attribute a{name, Kind::Number};
    a.numberValue = value;
    return a;
  }
};

namespace {

// Names of the host's codes. The assertions are written `! "..."` with a space so that
// their stringified text is exactly the library's fixed text.
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
  assert(! "unknown format type.");
  return nullptr;
}

XMLCh const* alignmentName(int code) {
  switch (code) {
    case 0: return X::left_s;
    case 1: return X::right_s;
    case 2: return X::center_s;
    default: break;
  }
  assert(! "unknown alignment.");
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
  assert(! "unknown measurement level.");
  return nullptr;
}

// The range ends "lowest" and "highest" are recognised bit for bit, so that the most negative finite double (which
// is not "lowest") and values that merely compare equal are formatted as numbers.
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

// The root's section that a tag names, or -1: only these are remembered for placement.
int sectionIndex(XMLCh const* tag) {
  static XMLCh const* const sections[] = {X::variable_s, X::weightVariable_s, X::valueLabelSet_s,
                                          X::variableSet_s, X::multipleResponseSet_s};
  for (int i = 0; i < 5; ++i) {
    if (XMLString::equals(tag, sections[i])) return i;
  }
  return -1;
}

// The last element named `tag` among the descendants of `parent` in document order, which is the
// last item getElementsByTagName would list. Walks in reverse document order (last child first,
// a node's descendants before the node itself) and stops at the first match.
TransDictionaryImpl::DOMNode* lastDescendantNamed(TransDictionaryImpl::DOMNode* parent, XMLCh const* tag) {
  for (TransDictionaryImpl::DOMNode* node = parent->getLastChild(); node != nullptr; node = node->getPreviousSibling()) {
    if (node->getNodeType() != TransDictionaryImpl::DOMNode::ELEMENT_NODE) continue;
    if (TransDictionaryImpl::DOMNode* inner = lastDescendantNamed(node, tag)) return inner;
    if (XMLString::equals(node->getNodeName(), tag)) return node;
  }
  return nullptr;
}

}  // namespace

namespace {

// Xerces counts every change of a document's tree (its node lists use the count to know when their
// cache is stale); the count is kept by the document's implementation class.
int changesOf(XERCES_CPP_NAMESPACE::DOMDocument* document) {
  return static_cast<XERCES_CPP_NAMESPACE::DOMDocumentImpl*>(document)->changes();
}

}  // namespace

// Between two builder calls the caller may have changed the document in any way (put section
// elements anywhere, removed and released remembered ones): then nothing remembered is trusted.
void TransDictionaryImpl::forgetAnchorsAfterForeignChanges() {
  if (trackedRoot_ == nullptr || document_ == nullptr || changesOf(document_) == knownChanges_) return;
  for (DOMNode*& last : lastOfSection_) last = nullptr;
}

void TransDictionaryImpl::recordOwnChanges() {
  if (document_ != nullptr) knownChanges_ = changesOf(document_);
}

// The span of one builder call. The builders call one another (addVariables runs the per-variable
// builders), so only the outermost call checks for foreign changes when it starts and records the
// count it leaves when it ends; in between, only the builders change the document. The caller
// cannot act while a builder runs: one thread, and the host's data source does not touch the DOM.
class TransDictionaryImpl::BuilderCall {
public:
  // A call that starts a new document looks at nothing of the previous one, which the caller may
  // have released already.
  enum Start { OnCurrentDocument, OnNewDocument };

  explicit BuilderCall(TransDictionaryImpl& builder, Start start = OnCurrentDocument) : builder_(builder) {
    if (builder_.callDepth_++ == 0 && start == OnCurrentDocument) builder_.forgetAnchorsAfterForeignChanges();
  }
  ~BuilderCall() {
    if (--builder_.callDepth_ == 0) builder_.recordOwnChanges();
  }
  BuilderCall(BuilderCall const&) = delete;
  BuilderCall& operator=(BuilderCall const&) = delete;

private:
  TransDictionaryImpl& builder_;
};

// ---------------------------------------------------------------------------------------------
// Construction and the document skeleton
// ---------------------------------------------------------------------------------------------

TransDictionaryImpl::TransDictionaryImpl() : document_(nullptr) {}

// The document belongs to whoever called addDictionary: nothing of it is released here.
TransDictionaryImpl::~TransDictionaryImpl() = default;

bool TransDictionaryImpl::createDocument() {
  BuilderCall call(*this, BuilderCall::OnNewDocument);
  forgetSections();
  try {
    document_ = DOMImplementation::getImplementation()->createDocument(XMLPlatformUtils::fgMemoryManager);
    document_->setStrictErrorChecking(true);
    document_->setXmlStandalone(false);
    document_->setXmlVersion(X::schemaVersion_s);
    DOMElement* root = document_->createElement(X::dictionary_s);
    document_->appendChild(root);
    root->setAttribute(X::xmlns_s, X::schemaDefaultNSValue_s);
    root->setAttribute(X::xmlnsXsi_s, X::schemaInstanceValue_s);
    root->setAttribute(X::xsiSchemaLocation_s, X::schemaLocationValue_s);
    trackedRoot_ = root;
    return true;
  } catch (...) {
    // Whatever went wrong, a document already created is abandoned, not released.
    document_ = nullptr;
    forgetSections();
    return false;
  }
}

TransDictionaryImpl::DOMNode* TransDictionaryImpl::insertAfterTag(DOMElement* parent, DOMNode* child, XMLCh const* tag) {
  assert(parent);
  assert(child);
  assert(tag);
  DOMNodeList* found = parent->getElementsByTagName(tag);
  XMLSize_t count = found->getLength();
  if (count == 0) return nullptr;
  DOMNode* last = found->item(count - 1);
  return parent->insertBefore(child, last->getNextSibling());
}

TransDictionaryImpl::DOMDocument* TransDictionaryImpl::addDictionary(ZORB_DataSource const& ds) {
  BuilderCall call(*this, BuilderCall::OnNewDocument);
  if (!createDocument()) return document_;
  DOMElement* root = document_->getDocumentElement();

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
  root->setAttribute(X::locale_s, localeText.getTerminatedBuffer());

  std::string dateTime;
  ToISODateTime(dateTime, ds.GetTimestamp(), 2, true, true);
  icu::UnicodeString dateTimeText = TransUtil::MBCStoUTF16(dateTime);
  root->setAttribute(X::creationDateTime_s, dateTimeText.getTerminatedBuffer());

  std::int64_t rows = ds.RowCount();
  if (rows >= 0) writeAttribute(root, Attribute::integer(X::rowCount_s, static_cast<long>(rows)));

  addVariables(ds, root);
  addWeightVariable(ds, root);
  addVariableSets(ds, root);
  addMultipleResponseSets(ds, root);
  addDatasourceAttributes(ds, root);
  addExtensions(ds, root);
  return document_;
}

// ---------------------------------------------------------------------------------------------
// Element creation, attribute text and placement
// ---------------------------------------------------------------------------------------------

TransDictionaryImpl::DOMElement* TransDictionaryImpl::createElementWith(XMLCh const* tag,
                                                                        std::initializer_list<Attribute> attributes) {
  DOMElement* element = document_->createElement(tag);
  for (Attribute const& attribute : attributes) writeAttribute(element, attribute);
  return element;
}

void TransDictionaryImpl::writeAttribute(DOMElement* element, Attribute const& attribute) {
  switch (attribute.kind) {
    case Attribute::Kind::Fixed:
      element->setAttribute(attribute.name, attribute.fixedValue);
      return;
    case Attribute::Kind::Text:
      if (attribute.textValue != nullptr) setText(element, attribute.name, attribute.textValue);
      return;
    case Attribute::Kind::Integer:
    case Attribute::Kind::Number: {
      // Each number gets a fresh status: the conversions reset it before they start, so
      // one status per element leaves out exactly the same attributes.
      TransStatus status;
      TransString* text = attribute.kind == Attribute::Kind::Integer
                              ? TransIntegerImpl(attribute.integerValue).asString(status)
                              : TransDoubleImpl(attribute.numberValue).asXMLString(status);
      if (!status.failure()) {
        TransStatus textStatus;
        setUTF16(element, attribute.name, text->asUTF16(textStatus));
      }
      // Given back whether or not it was written: the caller owns every returned string.
      TransValue::releaseString(text);
      return;
    }
  }
}

// Host text -> TransString -> UTF-16 -> ICU string, whose zero-terminated buffer setAttribute
// copies. The ICU string is local to the one attribute: the builder keeps no text of its own.
void TransDictionaryImpl::setText(DOMElement* element, XMLCh const* name, char const* mbcs) {
  TransString text(mbcs);
  TransStatus status;
  setUTF16(element, name, text.asUTF16(status));
}

void TransDictionaryImpl::setUTF16(DOMElement* element, XMLCh const* name, UChar const* utf16) {
  icu::UnicodeString unicode(utf16);
  element->setAttribute(name, unicode.getTerminatedBuffer());
}

// Places `child` after the last element of the first tag of `chain` that `parent` holds, else
// before the parent's first child (which appends to an empty parent): the placement convention.
TransDictionaryImpl::DOMNode* TransDictionaryImpl::placeAfterFirstOf(DOMElement* parent, DOMNode* child,
                                                                     std::initializer_list<XMLCh const*> chain) {
  DOMNode* placed = nullptr;
  for (XMLCh const* tag : chain) {
    if (literalPlacement_) {
      placed = insertAfterTag(parent, child, tag);
    } else if (DOMNode* anchor = lastElementNamed(parent, tag)) {
      placed = insertAfter(parent, child, anchor);
    }
    if (placed != nullptr) break;
  }
  if (placed == nullptr) placed = parent->insertBefore(child, parent->getFirstChild());
  rememberSection(parent, child, *chain.begin());
  return placed;
}

// insertAfterTag's insertion, with the anchor already known.
TransDictionaryImpl::DOMNode* TransDictionaryImpl::insertAfter(DOMElement* parent, DOMNode* child, DOMNode* anchor) {
  return parent->insertBefore(child, anchor->getNextSibling());
}

// The node insertAfterTag's search would find, without walking the whole document on every
// placement: under the tracked root, a section's last element is remembered; anywhere else (a
// variable, a value label set: small elements) the subtree is walked from its end. What is
// remembered is used only while the document has changed through the builders alone (see
// BuilderCall), and only when it is still an element of that name in the root; otherwise the root
// is searched (once per section after such a change) and the answer remembered.
TransDictionaryImpl::DOMNode* TransDictionaryImpl::lastElementNamed(DOMElement* parent, XMLCh const* tag) {
  int section = sectionIndex(tag);
  if (parent != trackedRoot_ || section < 0) return lastDescendantNamed(parent, tag);
  DOMNode* last = lastOfSection_[section];
  bool const trusted = last != nullptr && last->getParentNode() == parent &&
                       last->getNodeType() == DOMNode::ELEMENT_NODE && XMLString::equals(last->getNodeName(), tag);
  if (!trusted) last = lastDescendantNamed(parent, tag);
  lastOfSection_[section] = last;
  return last;
}

// Keeps lastOfSection_ equal to the last element of each section under the tracked root. A section
// whose chain starts with its own tag puts every new element directly after its last one (or, when
// it has none, where the section begins), so the new element is the last. The others
// (weightVariable; the root's attributeSet is never searched for) start their chain with the
// preceding section: usually that puts a second element in front of the first, but after the
// caller's edits it may put it anywhere, so the section is forgotten and searched for when needed.
void TransDictionaryImpl::rememberSection(DOMElement* parent, DOMNode* child, XMLCh const* chainHead) {
  if (parent != trackedRoot_) return;
  int section = sectionIndex(child->getNodeName());
  if (section < 0) return;
  lastOfSection_[section] = XMLString::equals(chainHead, child->getNodeName()) ? child : nullptr;
}

void TransDictionaryImpl::forgetSections() {
  trackedRoot_ = nullptr;
  for (DOMNode*& last : lastOfSection_) last = nullptr;
}

// ---------------------------------------------------------------------------------------------
// Variables and formats
// ---------------------------------------------------------------------------------------------

unsigned int TransDictionaryImpl::addVariables(ZORB_DataSource const& ds, DOMElement* domdict) {
  assert(domdict);
  assert(document_);
  BuilderCall call(*this);
  unsigned int i = 0;
  // The column count is asked before every variable and compared as unsigned.
  for (; i < static_cast<unsigned int>(ds.ColumnCount()); ++i) {
    ZORB_Variable const& var = ds.GetVariable(static_cast<int>(i));
    DOMElement* element = createElementWith(
        X::variable_s, {Attribute::text(X::name_s, var.GetName()),
                        Attribute::text(X::label_s, var.GetLabel()),  // null: no label attribute
                        Attribute::integer(X::type_s, var.GetType()),
                        Attribute::fixed(X::alignment_s, alignmentName(var.GetAlignment())),
                        Attribute::fixed(X::measurementLevel_s, measurementLevelName(var.GetMeasurementLevel())),
                        Attribute::integer(X::displayWidth_s, static_cast<long>(var.GetDisplayWidth()))});
    addVariableFormat(var, element);
    addVariableWriteFormat(var, element);
    addMissingValues(var, element);
    addVariableAttributes(var, element);
    placeAfterFirstOf(domdict, element, {X::variable_s});
    addValueLabelSet(var, domdict);
  }
  return i;
}

bool TransDictionaryImpl::addVariableFormat(ZORB_Variable const& var, DOMElement* domvar) {
  assert(domvar);
  assert(document_);
  BuilderCall call(*this);
  DOMElement* element = document_->createElement(X::variableFormat_s);
  ZORB_Variable::FormatType type = 0;
  int width = 0;
  int decimals = 0;
  var.GetFormatEx(type, width, decimals);
  bool result = setFormatAttributes(element, type, width, decimals);
  domvar->insertBefore(element, domvar->getFirstChild());
  return result;
}

bool TransDictionaryImpl::addVariableWriteFormat(ZORB_Variable const& var, DOMElement* domvar) {
  assert(domvar);
  assert(document_);
  BuilderCall call(*this);
  DOMElement* element = document_->createElement(X::variableWriteFormat_s);
  ZORB_Variable::FormatType type = 0;
  int width = 0;
  int decimals = 0;
  var.GetWriteFormatEx(type, width, decimals);
  bool result = setFormatAttributes(element, type, width, decimals);
  placeAfterFirstOf(domvar, element, {X::variableFormat_s});
  return result;
}

bool TransDictionaryImpl::setFormatAttributes(DOMElement* element, int type, int width, int decimals) {
  BuilderCall call(*this);
  writeAttribute(element, Attribute::fixed(X::type_s, formatTypeName(type)));
  writeAttribute(element, Attribute::integer(X::width_s, width));
  writeAttribute(element, Attribute::integer(X::decimals_s, decimals));
  return true;
}

// ---------------------------------------------------------------------------------------------
// Missing values and value labels
// ---------------------------------------------------------------------------------------------

int TransDictionaryImpl::addMissingValues(ZORB_Variable const& var, DOMElement* domvar) {
  assert(domvar);
  assert(document_);
  BuilderCall call(*this);
  int type = var.GetType();
  OBS const* values[3] = {nullptr, nullptr, nullptr};
  int n = var.GetMissingValues(values[0], values[1], values[2]);
  if (n == 0) return 0;
  int count = n < 0 ? -n : n;
  for (int i = 0; i < count && i < 3; ++i) {
    OBS const* value = values[i];
    DOMElement* element = document_->createElement(X::missingValue_s);
    if (type != 0) {
      // A string value spans the consecutive OBS of the variable's width; at most 8 bytes are kept.
      std::string text(reinterpret_cast<char const*>(value), static_cast<std::size_t>(type));
      text = cutAtFirstBlank(text);
      if (text.size() > 8) text.erase(8);
      writeAttribute(element, Attribute::text(X::data_s, text.c_str()));
    } else if (bitsOf(value->f) == kLowestBits) {
      writeAttribute(element, Attribute::fixed(X::data_s, X::lowest_s));
    } else if (bitsOf(value->f) == kHighestBits) {
      writeAttribute(element, Attribute::fixed(X::data_s, X::highest_s));
    } else {
      writeAttribute(element, Attribute::number(X::data_s, value->f));
    }
    if (n < 0 && i == 0) writeAttribute(element, Attribute::fixed(X::type_s, X::lowerBound_s));
    if (n < 0 && i == 1) writeAttribute(element, Attribute::fixed(X::type_s, X::upperBound_s));
    placeAfterFirstOf(domvar, element, {X::missingValue_s, X::variableWriteFormat_s, X::variableFormat_s});
  }
  return n;
}

unsigned int TransDictionaryImpl::addValueLabelSet(ZORB_Variable const& var, DOMElement* domdict) {
  assert(domdict);
  assert(document_);
  BuilderCall call(*this);
  ZORB_ValueLabelMap labels(var.GetValueLabels());
  if (labels.Size() == 0) return 0;
  DOMElement* set = document_->createElement(X::valueLabelSet_s);
  int type = var.GetType();
  labels.Reset();

  // The set is new and ours alone, so its last valueLabel is the one placed before: the fast
  // placement remembers it instead of searching the set for every label (quadratic in the labels).
  DOMNode* lastLabel = nullptr;
  auto placeLabel = [&](DOMElement* label) {
    if (literalPlacement_) {
      placeAfterFirstOf(set, label, {X::valueLabel_s});
    } else if (lastLabel != nullptr) {
      insertAfter(set, label, lastLabel);
    } else {
      set->insertBefore(label, set->getFirstChild());
    }
    lastLabel = label;
  };

  char const* labelText = nullptr;
  if (type != 0) {
    std::string value;
    while (labels.GetNextPair(value, labelText)) {
      std::string cut = cutAtFirstBlank(value);
      placeLabel(createElementWith(X::valueLabel_s, {Attribute::text(X::value_s, cut.c_str()),
                                                     Attribute::text(X::label_s, labelText)}));
    }
  } else {
    double value = 0.0;
    while (labels.GetNextPair(value, labelText)) {
      // Lowest and highest get no special words here.
      placeLabel(createElementWith(X::valueLabel_s, {Attribute::number(X::value_s, value),
                                                     Attribute::text(X::label_s, labelText)}));
    }
  }

  DOMElement* owner = createElementWith(X::valueLabelVariable_s, {Attribute::text(X::name_s, var.GetName())});
  if (literalPlacement_) {
    if (insertAfterTag(set, owner, X::valueLabel_s) == nullptr) set->appendChild(owner);
  } else if (lastLabel != nullptr) {
    insertAfter(set, owner, lastLabel);
  } else {
    set->appendChild(owner);
  }

  placeAfterFirstOf(domdict, set, {X::valueLabelSet_s, X::weightVariable_s, X::variable_s});
  return 1;
}

// ---------------------------------------------------------------------------------------------
// Variable sets and multiple response sets
// ---------------------------------------------------------------------------------------------

unsigned int TransDictionaryImpl::addVariableSets(ZORB_DataSource const& ds, DOMElement* domdict) {
  assert(domdict);
  assert(document_);
  BuilderCall call(*this);
  unsigned int count = 0;
  for (VariableSet const& set : VariableSets(ds, PlainVariableSets)) {
    addVariableSet(set, ds, domdict);
    ++count;
  }
  return count;
}

unsigned int TransDictionaryImpl::addMultipleResponseSets(ZORB_DataSource const& ds, DOMElement* domdict) {
  assert(domdict);
  assert(document_);
  BuilderCall call(*this);
  unsigned int count = 0;
  for (VariableSet const& set : VariableSets(ds, MultipleResponseSets)) {
    addMultipleResponseSet(set, ds, domdict);
    ++count;
  }
  return count;
}

// Appends one member element per name that the data source knows, spelled as the data source
// spells it; names it does not know are skipped silently. Returns the number written.
unsigned int TransDictionaryImpl::appendMembers(VariableSet const& set, ZORB_DataSource const& ds, DOMElement* element,
                                                XMLCh const* memberTag) {
  unsigned int count = 0;
  for (std::string const& name : set.GetVariableNames(VariableSet::AsStored)) {
    int index = ds.FindVarIndex(name.c_str(), 0);
    if (index == -1) continue;
    element->appendChild(createElementWith(memberTag, {Attribute::text(X::name_s, ds.GetVariable(index).GetName())}));
    ++count;
  }
  return count;
}

unsigned int TransDictionaryImpl::addVariableSet(VariableSet const& set, ZORB_DataSource const& ds,
                                                 DOMElement* domdict) {
  assert(domdict);
  assert(document_);
  BuilderCall call(*this);
  std::string name = set.GetName(VariableSet::AsStored);
  DOMElement* element = createElementWith(X::variableSet_s, {Attribute::text(X::name_s, name.c_str())});
  // Placed before its members exist.
  placeAfterFirstOf(domdict, element, {X::variableSet_s, X::valueLabelSet_s, X::weightVariable_s, X::variable_s});
  return appendMembers(set, ds, element, X::variableSetVariable_s);
}

unsigned int TransDictionaryImpl::addMultipleResponseSet(VariableSet const& set, ZORB_DataSource const& ds,
                                                         DOMElement* domdict) {
  assert(domdict);
  assert(document_);
  BuilderCall call(*this);
  std::string name = set.GetName(VariableSet::AsStored);
  DOMElement* element = createElementWith(X::multipleResponseSet_s, {Attribute::text(X::name_s, name.c_str())});
  placeAfterFirstOf(domdict, element,
                    {X::multipleResponseSet_s, X::variableSet_s, X::valueLabelSet_s, X::weightVariable_s, X::variable_s});

  if (set.GetType() == VariableSet::Dichotomies) {
    XMLCh const* source = set.qUseVariableCategoryLabels() ? X::countedValues_s : X::variableLabels_s;
    element->appendChild(createElementWith(X::multipleResponseSetCategoryLabels_s, {Attribute::fixed(X::value_s, source)}));
    std::string counted = set.GetValue();
    if (!counted.empty()) {
      element->appendChild(
          createElementWith(X::multipleResponseSetDichotomy_s, {Attribute::text(X::value_s, counted.c_str())}));
    }
  }
  if (set.qLabelSetByVariable()) {
    element->appendChild(
        createElementWith(X::multipleResponseSetLabelSource_s, {Attribute::fixed(X::value_s, X::variableLabel_s)}));
  } else {
    std::string label = set.GetLabel();
    if (!label.empty()) {
      element->appendChild(createElementWith(X::multipleResponseSetLabel_s, {Attribute::text(X::value_s, label.c_str())}));
    }
  }
  return appendMembers(set, ds, element, X::multipleResponseSetVariable_s);
}

// ---------------------------------------------------------------------------------------------
// Attributes, extensions and weight variable
// ---------------------------------------------------------------------------------------------

bool TransDictionaryImpl::addWeightVariable(ZORB_DataSource const& ds, DOMElement* domdict) {
  assert(domdict);
  assert(document_);
  BuilderCall call(*this);
  int index = ds.GetWeightVarIndex();
  if (index < 0) return true;
  ZORB_Variable const& var = ds.GetVariable(index);
  DOMElement* element = createElementWith(X::weightVariable_s, {Attribute::text(X::name_s, var.GetName())});
  placeAfterFirstOf(domdict, element, {X::variable_s});
  return true;
}

bool TransDictionaryImpl::addAttribute(std::string const& name, std::vector<std::string> const& values,
                                       DOMElement* domset) {
  assert(domset);
  assert(document_);
  BuilderCall call(*this);
  // Through the zero-terminated text: a name is cut at an embedded zero byte.
  XMLCh const* kind = name.c_str()[0] == '$' ? X::system_s : X::user_s;
  DOMElement* element =
      createElementWith(X::attribute_s, {Attribute::text(X::name_s, name.c_str()), Attribute::fixed(X::type_s, kind)});
  for (std::string const& value : values) {
    element->appendChild(createElementWith(X::attributeValue_s, {Attribute::text(X::value_s, value.c_str())}));
  }
  domset->appendChild(element);
  return true;
}

TransDictionaryImpl::DOMElement* TransDictionaryImpl::addAttributes(DatasourceAttributes const& attributes) {
  assert(document_);
  BuilderCall call(*this);
  unsigned long size = attributes.Size();
  if (size == 0) return nullptr;
  DOMElement* set = createElementWith(X::attributeSet_s, {Attribute::integer(X::version_s, attributes.version)});
  for (unsigned long i = 0; i < size; ++i) addAttribute(attributes.Name(i), attributes.Values(i), set);
  return set;
}

bool TransDictionaryImpl::addVariableAttributes(ZORB_Variable const& var, DOMElement* domvar) {
  assert(domvar);
  assert(document_);
  BuilderCall call(*this);
  DatasourceAttributes attributes(var.GetAttributes());
  DOMElement* set = addAttributes(attributes);
  if (set == nullptr) return false;
  domvar->appendChild(set);
  return true;
}

bool TransDictionaryImpl::addDatasourceAttributes(ZORB_DataSource const& ds, DOMElement* domdict) {
  assert(domdict);
  assert(document_);
  BuilderCall call(*this);
  DatasourceAttributes attributes(ds.GetAttributes());
  DOMElement* set = addAttributes(attributes);
  if (set == nullptr) return false;
  // The chain starts with the preceding section: a deep search for attributeSet would find the
  // attribute sets inside the variables.
  placeAfterFirstOf(domdict, set,
                    {X::multipleResponseSet_s, X::variableSet_s, X::valueLabelSet_s, X::weightVariable_s, X::variable_s});
  return true;
}

unsigned int TransDictionaryImpl::addExtensions(ZORB_DataSource const& ds, DOMElement* domdict) {
  assert(domdict);
  assert(document_);
  BuilderCall call(*this);
  // The gaps (5, 7, 11, 13, 14, above 15) are deliberate: those records are never written.
  static int const types[] = {1, 2, 3, 4, 6, 8, 9, 10, 12, 15};
  unsigned int count = 0;
  for (int type : types) {
    if (!ds.HasExtension(type)) continue;
    ++count;
    ZORB_DataSource::Extension ext(ds, type);
    DOMElement* element = createElementWith(
        X::extension_s, {Attribute::integer(X::type_s, ext.Type()), Attribute::integer(X::elementSize_s, ext.ElementSize()),
                         Attribute::integer(X::length_s, static_cast<long>(ext.Length()))});
    std::vector<unsigned char> buffer(static_cast<std::size_t>(ext.ElementSize()) *
                                      static_cast<std::size_t>(ext.Length()));
    long nelems = ext.GetNext(buffer.data(), static_cast<long>(ext.Length()));
    assert(nelems == ext.Length());
    std::string text = hexText(buffer.data(), buffer.size());
    std::vector<unsigned char>().swap(buffer);
    writeAttribute(element, Attribute::text(X::data_s, text.c_str()));
    domdict->appendChild(element);
  }
  return count;
}

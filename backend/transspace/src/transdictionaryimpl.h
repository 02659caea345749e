// TransDictionaryImpl: builds the dictionary document of a host data source.
// The builder never owns the document: whoever calls addDictionary owns (and releases) it.
#pragma once

#include <transspace/transexport.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include <unicode/umachine.h>
#include <xalanc/Include/PlatformDefinitions.hpp>
#include <xercesc/dom/DOM.hpp>

#include <transspace/zorb/datasource.h>

namespace XALAN_CPP_NAMESPACE {
class XalanDOMString;
}

class TRANS_EXPORT TransDictionaryImpl {
public:
  using DOMDocument = XERCES_CPP_NAMESPACE::DOMDocument;
  using DOMElement = XERCES_CPP_NAMESPACE::DOMElement;
  using DOMNode = XERCES_CPP_NAMESPACE::DOMNode;

  TransDictionaryImpl();
  ~TransDictionaryImpl();
  TransDictionaryImpl(TransDictionaryImpl const&) = delete;
  TransDictionaryImpl& operator=(TransDictionaryImpl const&) = delete;

  // The document and its skeleton
  bool createDocument();
  DOMNode* insertAfterTag(DOMElement* parent, DOMNode* child, XMLCh const* tag);
  DOMDocument* addDictionary(ZORB_DataSource const& ds);

  // Variables and formats
  unsigned int addVariables(ZORB_DataSource const& ds, DOMElement* domdict);
  bool addVariableFormat(ZORB_Variable const& var, DOMElement* domvar);
  bool addVariableWriteFormat(ZORB_Variable const& var, DOMElement* domvar);
  bool setFormatAttributes(DOMElement* element, int type, int width, int decimals);

  // Missing values and value labels
  int addMissingValues(ZORB_Variable const& var, DOMElement* domvar);
  unsigned int addValueLabelSet(ZORB_Variable const& var, DOMElement* domdict);

  // Variable sets and multiple response sets
  unsigned int addVariableSets(ZORB_DataSource const& ds, DOMElement* domdict);
  unsigned int addVariableSet(VariableSet const& set, ZORB_DataSource const& ds, DOMElement* domdict);
  unsigned int addMultipleResponseSets(ZORB_DataSource const& ds, DOMElement* domdict);
  unsigned int addMultipleResponseSet(VariableSet const& set, ZORB_DataSource const& ds, DOMElement* domdict);

  // Weight variable, attributes and extension records
  bool addWeightVariable(ZORB_DataSource const& ds, DOMElement* domdict);
  bool addAttribute(std::string const& name, std::vector<std::string> const& values, DOMElement* domset);
  DOMElement* addAttributes(DatasourceAttributes const& attributes);
  bool addVariableAttributes(ZORB_Variable const& var, DOMElement* domvar);
  bool addDatasourceAttributes(ZORB_DataSource const& ds, DOMElement* domdict);
  unsigned int addExtensions(ZORB_DataSource const& ds, DOMElement* domdict);

  // Placement of the root's sections (for tests and diagnosis). The literal rule places
  // each section element after the last element found by getElementsByTagName on the root, which
  // walks the whole document for every element placed: quadratic in the number of variables. By
  // default the builders instead remember, for the root that createDocument made, the last element
  // of each section they placed there and take it as the anchor (checked before use, see
  // lastElementNamed in the .cpp): the same node that the search would find, also when section
  // elements were added with insertAfterTag or appended at a section's end by the caller; only an
  // element that the caller puts into the root away from its section's end can be missed (the
  // equivalence tests in tests/dictionary prove identical documents). true selects the literal
  // search for every placement. insertAfterTag itself always searches literally.
  void setLiteralPlacement(bool literal) { literalPlacement_ = literal; }
  bool literalPlacement() const { return literalPlacement_; }

private:
  // One attribute to write (defined in the .cpp): a fixed vocabulary value, a host text, an
  // integer or a double, each converted by the document's text conventions.
  struct Attribute;
  // The root's sections that placement chains name, in document order.
  enum Section { kVariable, kWeightVariable, kValueLabelSet, kVariableSet, kMultipleResponseSet, kSectionCount };

  DOMElement* createElementWith(XMLCh const* tag, std::initializer_list<Attribute> attributes);
  void writeAttribute(DOMElement* element, Attribute const& attribute);
  XMLCh const* convertText(char const* mbcs);
  XMLCh const* convertUTF16(unsigned short const* utf16);
  DOMNode* placeAfterFirstOf(DOMElement* parent, DOMNode* child, std::initializer_list<XMLCh const*> chain);
  DOMNode* insertAfter(DOMElement* parent, DOMNode* child, DOMNode* anchor);
  DOMNode* lastElementNamed(DOMElement* parent, XMLCh const* tag);
  void rememberSection(DOMElement* parent, DOMNode* child, XMLCh const* chainHead);
  void forgetSections();
  unsigned int appendMembers(VariableSet const& set, ZORB_DataSource const& ds, DOMElement* element,
                             XMLCh const* memberTag);

  DOMDocument* document_;
  // The one conversion buffer of the text convention, made by createDocument (Xalan's
  // strings need the Xerces platform, which may not be up when the builder is constructed).
  std::unique_ptr<XALAN_CPP_NAMESPACE::XalanDOMString> buffer_;
  bool literalPlacement_ = false;
  // The root that createDocument made, and the last element of each section placed under it.
  DOMElement* trackedRoot_ = nullptr;
  DOMNode* lastOfSection_[kSectionCount] = {};
};

// TransDictionaryImpl: builds the dictionary document of a host data source. Not an implementation
// object of a handle, whatever its name says: the name is fixed by the library's binary contract.
// The builder never owns the document: whoever calls addDictionary owns (and releases) it.
#pragma once

#include <transspace/transexport.h>

#include <initializer_list>
#include <string>
#include <vector>

#include <xercesc/dom/DOM.hpp>

#include <transspace/zorb/datasource.h>

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
  // of each section they placed there and take it as the anchor. That memory is trusted only while
  // the document changed through the builders alone: each outermost builder call compares the
  // document's change counter with the one it left behind, and any other change (an element put
  // into the root by hand or with insertAfterTag, a removal, a released node) makes the builders
  // forget what they remembered and search the root again, exactly as the literal search would. The
  // equivalence tests in tests/dictionary prove identical documents. true selects the literal search
  // for every placement. insertAfterTag itself always searches literally.
  void setLiteralPlacement(bool literal) { literalPlacement_ = literal; }
  bool literalPlacement() const { return literalPlacement_; }

private:
  // Marks the span of one builder call; the outermost one checks for and records changes.
  class BuilderCall;
  // The root's sections that placement chains name, in document order.
  enum Section { kVariable, kWeightVariable, kValueLabelSet, kVariableSet, kMultipleResponseSet, kSectionCount };

  DOMNode* placeAfterFirstOf(DOMElement* parent, DOMNode* child, std::initializer_list<XMLCh const*> chain);
  DOMNode* insertAfter(DOMElement* parent, DOMNode* child, DOMNode* anchor);
  DOMNode* lastElementNamed(DOMElement* parent, XMLCh const* tag);
  void rememberSection(DOMElement* parent, DOMNode* child, XMLCh const* chainHead);
  void forgetSections();
  void forget(int section);
  void forgetAnchorsAfterForeignChanges();
  void recordOwnChanges();

  DOMDocument* document_;
  // The placement memory below holds plain pointers only: nothing of the XML platform is owned, so
  // a builder may outlive the platform that its documents were made with.
  bool literalPlacement_ = false;
  // The root that createDocument made, and the last element of each section placed under it.
  DOMElement* trackedRoot_ = nullptr;
  DOMNode* lastOfSection_[kSectionCount] = {};
  bool sectionKnown_[kSectionCount] = {};  // lastOfSection_ holds the answer, null for "none"
  // The document's change counter as the last outermost builder call left it, and how deeply the
  // builder calls are nested now (see BuilderCall in the .cpp).
  int knownChanges_ = 0;
  int callDepth_ = 0;
};

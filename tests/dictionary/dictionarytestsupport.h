// Shared helpers of the dictionary export tests: Xerces start-up, serialisation with
// the LS serializer, DOM navigation in UTF-8, a document owner, and the regular expression of an
// assertion message for death tests.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include <unicode/unistr.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufFormatTarget.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "dictionary/transdictionaryimpl.h"
#include "dictionary/transxmlcharray.h"
#include <transspace/zorb/datasource.h>
#include <transspace/zorb/datasourcebuilder.h>
#include <transspace/zorb/platform.h>

namespace dicttest {

namespace xc = XERCES_CPP_NAMESPACE;

// The builders need the Xerces platform (the value space brings it up in the library; the tests do
// it themselves). Registered once per test program by including this header.
class XercesEnvironment : public ::testing::Environment {
public:
  void SetUp() override { xc::XMLPlatformUtils::Initialize(); }
  void TearDown() override { xc::XMLPlatformUtils::Terminate(); }
};
inline ::testing::Environment* const xercesEnvironment = ::testing::AddGlobalTestEnvironment(new XercesEnvironment);

inline std::string utf8(XMLCh const* text) {
  std::string out;
  if (text != nullptr) icu::UnicodeString(text).toUTF8String(out);
  return out;
}

inline icu::UnicodeString utf16(std::string const& text) { return icu::UnicodeString::fromUTF8(text); }

// The serialised node as the LS serializer writes it (pretty print off), UTF-8.
inline std::string serialize(xc::DOMNode const* node) {
  static XMLCh const ls[] = u"LS";
  xc::DOMImplementation* impl = xc::DOMImplementationRegistry::getDOMImplementation(ls);
  xc::DOMLSSerializer* serializer = static_cast<xc::DOMImplementationLS*>(impl)->createLSSerializer();
  serializer->getDomConfig()->setParameter(xc::XMLUni::fgDOMWRTFormatPrettyPrint, false);
  xc::DOMLSOutput* output = static_cast<xc::DOMImplementationLS*>(impl)->createLSOutput();
  xc::MemBufFormatTarget target;
  output->setByteStream(&target);
  serializer->write(node, output);
  std::string text(reinterpret_cast<char const*>(target.getRawBuffer()), target.getLen());
  output->release();
  serializer->release();
  return text;
}

// Owns a document returned by addDictionary (the builder never releases it).
struct DocumentDeleter {
  void operator()(xc::DOMDocument* document) const {
    if (document != nullptr) document->release();
  }
};
using DocumentPtr = std::unique_ptr<xc::DOMDocument, DocumentDeleter>;

inline DocumentPtr buildDictionary(ZORB_DataSource const& ds, bool literal = false) {
  TransDictionaryImpl builder;
  builder.setLiteralPlacement(literal);
  return DocumentPtr(builder.addDictionary(ds));
}

inline std::vector<xc::DOMElement*> childElements(xc::DOMNode const* parent) {
  std::vector<xc::DOMElement*> out;
  for (xc::DOMNode* node = parent->getFirstChild(); node != nullptr; node = node->getNextSibling()) {
    if (node->getNodeType() == xc::DOMNode::ELEMENT_NODE) out.push_back(static_cast<xc::DOMElement*>(node));
  }
  return out;
}

inline std::vector<std::string> childNames(xc::DOMNode const* parent) {
  std::vector<std::string> out;
  for (xc::DOMElement* element : childElements(parent)) out.push_back(utf8(element->getTagName()));
  return out;
}

// The children of `parent` named `tag`, in order.
inline std::vector<xc::DOMElement*> children(xc::DOMNode const* parent, std::string const& tag) {
  std::vector<xc::DOMElement*> out;
  for (xc::DOMElement* element : childElements(parent)) {
    if (utf8(element->getTagName()) == tag) out.push_back(element);
  }
  return out;
}

inline xc::DOMElement* child(xc::DOMNode const* parent, std::string const& tag, std::size_t index = 0) {
  std::vector<xc::DOMElement*> found = children(parent, tag);
  return index < found.size() ? found[index] : nullptr;
}

inline bool hasAttr(xc::DOMElement const* element, std::string const& name) {
  return element->getAttributeNode(utf16(name).getTerminatedBuffer()) != nullptr;
}

inline std::string attr(xc::DOMElement const* element, std::string const& name) {
  return utf8(element->getAttribute(utf16(name).getTerminatedBuffer()));
}

// Names of the element's attributes as the DOM keeps them.
inline std::vector<std::string> attrNames(xc::DOMElement const* element) {
  std::vector<std::string> out;
  xc::DOMNamedNodeMap* map = element->getAttributes();
  for (XMLSize_t i = 0; i < map->getLength(); ++i) out.push_back(utf8(map->item(i)->getNodeName()));
  return out;
}

// The regular expression (POSIX extended) that matches glibc's message for a failed assert(text).
inline std::string assertionRegex(std::string const& text) {
  std::string escaped;
  for (char c : text) {
    if (std::string("\\.^$|()[]{}*+?").find(c) != std::string::npos) escaped.push_back('\\');
    escaped.push_back(c);
  }
  return "Assertion `" + escaped + "' failed";
}

// Death tests fork; under the sanitizers a forked child reports its abort as an error of its own.
#ifdef TRANSSPACE_SANITIZED
#define DICT_SKIP_DEATH_UNDER_SANITIZERS() GTEST_SKIP() << "death tests are not run in sanitizer builds"
#else
#define DICT_SKIP_DEATH_UNDER_SANITIZERS() (void)0
#endif

// A fresh document of `builder` whose root has no children yet, for calling the section builders
// directly: addDictionary of an empty data source runs createDocument, and every section builder
// finds nothing to add. The test owns the document.
inline DocumentPtr freshDocument(TransDictionaryImpl& builder) {
  ZORB_DataSource empty;
  return DocumentPtr(builder.addDictionary(empty));
}
inline xc::DOMElement* rootOf(DocumentPtr const& document) { return document->getDocumentElement(); }

// Deterministic platform settings for a test: a fixed server locale list and the default host
// settings restored afterwards.
class DictionaryTest : public ::testing::Test {
protected:
  void SetUp() override {
    zorb::ResetPlatformSettings();
    zorb::SetServerLocaleResolver([](std::string&, std::vector<std::string>& list) {
      list.assign({"en_US"});
      return 1;
    });
  }
  void TearDown() override { zorb::ResetPlatformSettings(); }
};

}  // namespace dicttest

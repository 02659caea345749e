// Shared helpers of the document-value tests: the platform, hand-built documents,
// dictionary data sources from the host model, and readers of the library's texts.
#pragma once

#include <transspace/transspace.h>
#include <transspace/transstatus.h>
#include <transspace/transstring.h>
#include <transspace/transstringlist.h>
#include <transspace/transvalue.h>

#include <transspace/zorb/datasource.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include <xercesc/dom/DOM.hpp>

namespace domtest {

// The LS serializer's XML declaration (with a space before '?>'): what an empty document serialises to.
constexpr char const* xmlDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\" ?>";

// Every test runs with the library's defaults (locale "C", UTF-8 mode on) and inside a TransSpace,
// which keeps Xerces, Xalan's XPath and its source tree initialised.
class DomTest : public ::testing::Test {
protected:
  void SetUp() override;
  void TearDown() override;

private:
  std::unique_ptr<TransSpace> space_;
};

struct DocumentRelease {
  void operator()(xercesc::DOMDocument* document) const { document->release(); }
};
using Document = std::unique_ptr<xercesc::DOMDocument, DocumentRelease>;

// <catalogue name="Cat" count="3" xmlns:x="urn:x" (declared through the xmlns namespace)>
//   a comment, a processing instruction, three <item> elements with attributes and text (one with
//   two adjacent text nodes), an <x:extra> element and attribute in namespace urn:x, an empty element, an
//   element whose DOM level 1 name has a colon, and whitespace text.
Document catalogueDocument();
// The same shape as the dictionary's root, built by hand: namespace declarations set as ordinary
// (DOM level 1) attributes, as the dictionary builder does.
Document plainDeclarationsDocument();
// A root element preceded by a comment and a processing instruction, with a comment inside.
Document documentWithOutsideNodes();
// A document without a root element.
Document emptyDocument();
// A document parsed from XML text by Xerces' DOM parser with its defaults: the internal DTD is
// read (so attributes it declares as ID are IDs), CDATA sections stay CDATA nodes and references
// to declared entities stay entity reference nodes holding the replacement text. Fails the
// test (null result) when the text does not parse.
Document parsedDocument(std::string const& xml);
// The parsed document of the tests: a DTD declaring an ID attribute and an entity, a CDATA
// section, entity references in text and in an attribute, and a comment.
extern char const* const parsedCatalogueXML;

// A data source of `variables` numeric variables v0, v1, ... with labels "Label K", two value
// labels each, missing values on every third, a weight variable, a variable set, a multiple
// response set, attributes and a row count of 42.
ZORB_DataSource dictionarySource(int variables);

// Texts in and out: TransString from UTF-8 (the tests run in UTF-8 mode), and back.
TransString ts(std::string const& utf8);
std::string utf8(TransString const& text);
std::vector<std::string> utf8(TransStringList const& list);
// Takes ownership of what a view returned.
std::string take(TransString* text);
std::vector<std::string> take(TransStringList* list);
// The bytes that asUTF16XML reinterpreted as 16-bit units (host byte order), in their order.
std::string unitsAsBytes(TransString const& text);

}  // namespace domtest

#include "domtest.h"

#include "core/transutf16.h"

#include <transspace/zorb/datasourcebuilder.h>
#include <transspace/zorb/platform.h>

#include <clocale>
#include <cstring>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include <unicode/unistr.h>

using namespace xercesc;

namespace domtest {

namespace {

XMLCh const* x(char16_t const* text) { return reinterpret_cast<XMLCh const*>(text); }

Document newDocument() {
  return Document(DOMImplementation::getImplementation()->createDocument(XMLPlatformUtils::fgMemoryManager));
}

DOMElement* addElement(DOMDocument& document, DOMNode& parent, char16_t const* name) {
  DOMElement* element = document.createElement(x(name));
  parent.appendChild(element);
  return element;
}

void addText(DOMDocument& document, DOMNode& parent, char16_t const* text) {
  parent.appendChild(document.createTextNode(x(text)));
}

DOMElement* addItem(DOMDocument& document, DOMElement& root, char16_t const* id, char16_t const* label,
                    char16_t const* price) {
  DOMElement* item = addElement(document, root, u"item");
  item->setAttribute(x(u"id"), x(id));
  item->setAttribute(x(u"label"), x(label));
  item->setAttribute(x(u"price"), x(price));
  return item;
}

}  // namespace

void DomTest::SetUp() {
  std::setlocale(LC_ALL, "C");
  zorb::ResetPlatformSettings();
  space_.reset(new TransSpace());
}

void DomTest::TearDown() {
  space_.reset();
  std::setlocale(LC_ALL, "C");
  zorb::ResetPlatformSettings();
}

Document catalogueDocument() {
  Document document = newDocument();
  DOMElement* root = addElement(*document, *document, u"catalogue");
  root->setAttribute(x(u"name"), x(u"Cat"));
  root->setAttribute(x(u"count"), x(u"3"));
  root->setAttributeNS(x(u"http://www.w3.org/2000/xmlns/"), x(u"xmlns:x"), x(u"urn:x"));
  addText(*document, *root, u"\n  ");
  root->appendChild(document->createComment(x(u"first comment")));
  root->appendChild(document->createProcessingInstruction(x(u"render"), x(u"fast")));
  DOMElement* apple = addItem(*document, *root, u"a", u"Apple", u"1.5");
  addText(*document, *apple, u"apple text");
  DOMElement* banana = addItem(*document, *root, u"b", u"Banana", u"abc");
  addText(*document, *banana, u"banana");
  addText(*document, *banana, u" more");  // two adjacent text nodes, as a DOM may hold them
  addItem(*document, *root, u"c", u"", u"-2");
  DOMElement* extra = document->createElementNS(x(u"urn:x"), x(u"x:extra"));
  root->appendChild(extra);
  extra->setAttributeNS(x(u"urn:x"), x(u"x:flag"), x(u"yes"));
  extra->setAttribute(x(u"plain"), x(u"p"));
  addText(*document, *extra, u"ns text");
  addElement(*document, *root, u"empty");
  addElement(*document, *root, u"prefixed:name");
  addText(*document, *root, u"\n");
  return document;
}

Document plainDeclarationsDocument() {
  Document document = newDocument();
  DOMElement* root = addElement(*document, *document, u"dictionary");
  root->setAttribute(x(u"xmlns"), x(u"http://example.org/zorb/data"));
  root->setAttribute(x(u"xmlns:xsi"), x(u"http://www.w3.org/2001/XMLSchema-instance"));
  root->setAttribute(x(u"xsi:schemaLocation"),
                     x(u"http://example.org/zorb/data http://example.org/zorb/data/dictionary-1.0.xsd"));
  root->setAttribute(x(u"rowCount"), x(u"7"));
  for (char16_t const* name : {u"a", u"b"}) {
    DOMElement* variable = addElement(*document, *root, u"variable");
    variable->setAttribute(x(u"name"), x(name));
    variable->setAttribute(x(u"label"), x(u"some label"));
    DOMElement* format = addElement(*document, *variable, u"variableFormat");
    format->setAttribute(x(u"type"), x(u"F"));
  }
  return document;
}

Document documentWithOutsideNodes() {
  Document document = newDocument();
  document->appendChild(document->createComment(x(u"outside")));
  document->appendChild(document->createProcessingInstruction(x(u"outside"), x(u"data")));
  DOMElement* root = addElement(*document, *document, u"root");
  root->setAttribute(x(u"a"), x(u"1"));
  root->appendChild(document->createComment(x(u"inside")));
  DOMElement* child = addElement(*document, *root, u"child");
  addText(*document, *child, u"text");
  return document;
}

Document emptyDocument() { return newDocument(); }

Document parsedDocument(std::string const& xml) {
  XercesDOMParser parser;
  MemBufInputSource input(reinterpret_cast<XMLByte const*>(xml.data()), xml.size(), "parsed-document");
  parser.parse(input);
  EXPECT_EQ(parser.getErrorCount(), 0u) << xml;
  if (parser.getErrorCount() != 0) return Document();
  return Document(parser.adoptDocument());
}

char const* const parsedCatalogueXML =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE catalogue [\n"
    "  <!ATTLIST item id ID #IMPLIED>\n"
    "  <!ENTITY maker \"Acme &#38;#38; Sons\">\n"
    "]>\n"
    "<catalogue count=\"2\">\n"
    "  <item id=\"a\" label=\"Apple\" price=\"1.5\">apple <![CDATA[<raw> & text]]> end</item>\n"
    "  <item id=\"b\" label=\"by &maker;\" price=\"2\">made by &maker;</item>\n"
    "  <!-- a comment -->\n"
    "</catalogue>\n";

ZORB_DataSource dictionarySource(int variables) {
  zorb::DataSourceBuilder builder;
  for (int k = 0; k < variables; ++k) {
    std::string const name = "v" + std::to_string(k);
    zorb::VariableBuilder& variable = builder.addVariable(name);
    variable.label("Label " + std::to_string(k)).valueLabel(1, "one").valueLabel(2, "two");
    if (k % 3 == 0) variable.missingRange(-9, -1);
  }
  if (variables > 1) {
    builder.weightVariable(1);
    builder.variableSet("set", {"v0", "v1"});
    builder.categorySet("mr", "Multiple", {"v0", "v1"});
  }
  builder.attribute("origin", {"test", "suite"});
  builder.rowCount(42);
  return builder.build();
}

TransString ts(std::string const& utf8) { return TransString(utf8.c_str()); }

std::string utf8(TransString const& text) {
  TransStatus status;
  std::string out;
  icu::UnicodeString(TransUTF16::internal(text.asUTF16(status))).toUTF8String(out);
  return out;
}

std::vector<std::string> utf8(TransStringList const& list) {
  std::vector<std::string> out;
  for (unsigned long i = 0; i < list.size(); ++i) {
    std::string entry;
    icu::UnicodeString(TransUTF16::internal(list.asUTF16(i))).toUTF8String(entry);
    out.push_back(entry);
  }
  return out;
}

std::string take(TransString* text) {
  std::string out = utf8(*text);
  TransValue::releaseString(text);
  return out;
}

std::vector<std::string> take(TransStringList* list) {
  std::vector<std::string> out = utf8(*list);
  TransValue::releaseStringList(list);
  return out;
}

std::string unitsAsBytes(TransString const& text) {
  TransStatus status;
  icu::UnicodeString units(TransUTF16::internal(text.asUTF16(status)));
  std::string bytes(static_cast<std::size_t>(units.length()) * 2, '\0');
  std::memcpy(&bytes[0], units.getBuffer(), bytes.size());
  return bytes;
}

}  // namespace domtest

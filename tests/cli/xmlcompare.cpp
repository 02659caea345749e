#include "xmlcompare.h"

#include <algorithm>
#include <memory>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/TransService.hpp>

namespace clitest {

namespace {

using namespace XERCES_CPP_NAMESPACE;

std::string utf8(XMLCh const* text) {
  if (text == nullptr) return std::string();
  TranscodeToStr converted(text, "UTF-8");
  return std::string(reinterpret_cast<char const*>(converted.str()), converted.length());
}

bool blank(std::string const& text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
}

XmlElement convert(DOMElement const* element) {
  XmlElement result;
  result.name = utf8(element->getTagName());
  DOMNamedNodeMap const* attributes = element->getAttributes();
  for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
    DOMNode const* attribute = attributes->item(i);
    result.attributes.emplace_back(utf8(attribute->getNodeName()), utf8(attribute->getNodeValue()));
  }
  for (DOMNode const* child = element->getFirstChild(); child != nullptr; child = child->getNextSibling()) {
    if (child->getNodeType() == DOMNode::ELEMENT_NODE) {
      result.children.push_back(convert(static_cast<DOMElement const*>(child)));
    } else if (child->getNodeType() == DOMNode::TEXT_NODE || child->getNodeType() == DOMNode::CDATA_SECTION_NODE) {
      std::string text = utf8(child->getNodeValue());
      if (!blank(text)) result.text += text;
    }
  }
  return result;
}

class ThrowingHandler : public HandlerBase {
public:
  void error(SAXParseException const& e) override { throw e; }
  void fatalError(SAXParseException const& e) override { throw e; }
};

}  // namespace

std::string XmlElement::attribute(std::string const& attributeName) const {
  for (auto const& a : attributes)
    if (a.first == attributeName) return a.second;
  return "<absent>";
}

std::vector<XmlElement const*> XmlElement::childrenNamed(std::string const& childName) const {
  std::vector<XmlElement const*> found;
  for (XmlElement const& child : children)
    if (child.name == childName) found.push_back(&child);
  return found;
}

bool parseXml(std::string const& xml, XmlElement& root, std::string& error) {
  XMLPlatformUtils::Initialize();  // counted: balanced by the Terminate below
  bool ok = false;
  {
    XercesDOMParser parser;
    parser.setDoNamespaces(false);
    parser.setLoadExternalDTD(false);
    parser.setValidationScheme(XercesDOMParser::Val_Never);
    ThrowingHandler handler;
    parser.setErrorHandler(&handler);
    MemBufInputSource input(reinterpret_cast<XMLByte const*>(xml.data()), xml.size(), "test input");
    try {
      parser.parse(input);
      DOMDocument const* document = parser.getDocument();
      if (document == nullptr || document->getDocumentElement() == nullptr) {
        error = "no document element";
      } else {
        root = convert(document->getDocumentElement());
        ok = true;
      }
    } catch (SAXParseException const& e) {
      error = "line " + std::to_string(e.getLineNumber()) + ", column " + std::to_string(e.getColumnNumber()) + ": " +
              utf8(e.getMessage());
    } catch (XMLException const& e) {
      error = utf8(e.getMessage());
    } catch (DOMException const& e) {
      error = utf8(e.getMessage());
    }
  }
  XMLPlatformUtils::Terminate();
  return ok;
}

std::string canonicalText(XmlElement const& element) {
  std::string text = "<" + element.name;
  auto attributes = element.attributes;
  std::sort(attributes.begin(), attributes.end());
  for (auto const& a : attributes) text += " " + a.first + "=\"" + a.second + "\"";
  text += ">" + element.text;
  for (XmlElement const& child : element.children) text += canonicalText(child);
  return text + "</" + element.name + ">";
}

}  // namespace clitest

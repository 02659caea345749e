#include "core/transconfig.h"

#include <transspace/transxmlinput.h>

#include "document/transdocumentdepth.h"
#include "xmlinternals/transxmlinternals.h"

#include <new>
#include <string>

#include <xercesc/dom/DOMException.hpp>
#include <xercesc/dom/DOMNode.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/TransService.hpp>
#include <xercesc/util/XMLException.hpp>

using XERCES_CPP_NAMESPACE::DOMDocument;
using XERCES_CPP_NAMESPACE::DOMException;
using XERCES_CPP_NAMESPACE::DOMNode;
using XERCES_CPP_NAMESPACE::DTDElementDecl;
using XERCES_CPP_NAMESPACE::HandlerBase;
using XERCES_CPP_NAMESPACE::MemBufInputSource;
using XERCES_CPP_NAMESPACE::OutOfMemoryException;
using XERCES_CPP_NAMESPACE::RefVectorOf;
using XERCES_CPP_NAMESPACE::SAXParseException;
using XERCES_CPP_NAMESPACE::TranscodeToStr;
using XERCES_CPP_NAMESPACE::XercesDOMParser;
using XERCES_CPP_NAMESPACE::XMLAttr;
using XERCES_CPP_NAMESPACE::XMLElementDecl;
using XERCES_CPP_NAMESPACE::XMLException;

std::size_t const TransXMLInput::maxDepth = TransDocumentDepth::limit;
std::size_t const TransXMLInput::maxSize = std::size_t(64) << 20;

TransXMLInputError::TransXMLInputError(std::string const& message) : std::runtime_error(message) {}

namespace {

std::string utf8(XMLCh const* text) {
  if (text == nullptr) return std::string();
  TranscodeToStr bytes(text, "UTF-8");
  return std::string(reinterpret_cast<char const*>(bytes.str()), bytes.length());
}

std::string place(XMLFileLoc line, XMLFileLoc column) {
  return "line " + std::to_string(line) + ", column " + std::to_string(column) + ": ";
}

// A parse stopped on purpose by the parser below; the message is complete.
struct Refusal {
  std::string message;
};

// Keeps the first error of the parse, with its line and column, for one clear message.
class FirstErrorHandler : public HandlerBase {
public:
  void warning(SAXParseException const&) override {}
  void error(SAXParseException const& e) override { remember(e); }
  void fatalError(SAXParseException const& e) override {
    remember(e);
    throw e;  // stop at the first fatal error
  }
  std::string const& message() const { return message_; }

private:
  void remember(SAXParseException const& e) {
    if (message_.empty()) message_ = place(e.getLineNumber(), e.getColumnNumber()) + utf8(e.getMessage());
  }
  std::string message_;
};

// The parser with the limits: no validation and no namespace processing (elements keep bare names,
// as in the dictionary the library builds), nothing fetched from outside, a document type refused
// where it starts and the nesting counted as elements open.
class BoundedParser : public XercesDOMParser {
public:
  BoundedParser() {
    setValidationScheme(Val_Never);
    setDoNamespaces(false);
    setLoadExternalDTD(false);
    setDisableDefaultEntityResolution(true);
    setErrorHandler(&errors_);
  }
  std::string const& firstError() const { return errors_.message(); }

  void doctypeDecl(DTDElementDecl const&, XMLCh const*, XMLCh const*, bool, bool) override {
    throw Refusal{here() + "a document type declaration (DOCTYPE) is not accepted"};
  }

  void startElement(XMLElementDecl const& declaration, unsigned int urlId, XMLCh const* prefix,
                    RefVectorOf<XMLAttr> const& attributes, XMLSize_t count, bool isEmpty, bool isRoot) override {
    if (open_ + 1 > TransXMLInput::maxDepth) {
      throw Refusal{here() + "elements are nested deeper than the limit of " + std::to_string(TransXMLInput::maxDepth) +
                    " levels"};
    }
    // Every element is closed through endElement, an empty one from within the base's startElement.
    ++open_;
    XercesDOMParser::startElement(declaration, urlId, prefix, attributes, count, isEmpty, isRoot);
  }

  void endElement(XMLElementDecl const& declaration, unsigned int urlId, bool isRoot, XMLCh const* prefix) override {
    XercesDOMParser::endElement(declaration, urlId, isRoot, prefix);
    --open_;
  }

private:
  std::string here() const {
    XERCES_CPP_NAMESPACE::Locator const* locator = TransXMLInternals::scannerLocator(getScanner());
    return place(locator->getLineNumber(), locator->getColumnNumber());
  }

  FirstErrorHandler errors_;
  std::size_t open_ = 0;
};

std::string const outOfMemory = "not enough memory to parse the XML text";

}  // namespace

std::unique_ptr<DOMDocument> TransXMLInput::parseDOM(char const* bytes, std::size_t size) {
  checkSize(size);
  if (bytes == nullptr) size = 0;
  MemBufInputSource input(reinterpret_cast<XMLByte const*>(bytes == nullptr ? "" : bytes), size, "XML text");
  BoundedParser parser;
  try {
    parser.parse(input);
  } catch (Refusal const& refusal) {
    throw TransXMLInputError(refusal.message);
  } catch (SAXParseException const&) {
    // reported through the handler below
  } catch (OutOfMemoryException const&) {
    throw TransXMLInputError(outOfMemory);
  } catch (std::bad_alloc const&) {
    throw TransXMLInputError(outOfMemory);
  } catch (XMLException const& e) {
    throw TransXMLInputError(utf8(e.getMessage()));
  } catch (DOMException const& e) {
    throw TransXMLInputError(utf8(e.getMessage()));
  }
  if (!parser.firstError().empty()) throw TransXMLInputError("not well-formed XML: " + parser.firstError());
  std::unique_ptr<DOMDocument> document(parser.adoptDocument());
  if (document == nullptr || document->getDocumentElement() == nullptr) {
    throw TransXMLInputError("no XML document element");
  }
  return document;
}

void TransXMLInput::checkSize(std::uintmax_t size) {
  if (size > maxSize) {
    throw TransXMLInputError("the XML text has " + std::to_string(size) + " bytes, more than the limit of " +
                             std::to_string(maxSize));
  }
}

TransValue TransXMLInput::parseDocument(char const* bytes, std::size_t size) {
  std::unique_ptr<DOMDocument> document = parseDOM(bytes, size);
  try {
    return TransValue(document.get());  // the value copies the document element's subtree
  } catch (OutOfMemoryException const&) {
    throw TransXMLInputError(outOfMemory);
  } catch (std::bad_alloc const&) {
    throw TransXMLInputError(outOfMemory);
  }
}

bool TransXMLInput::tooDeep(DOMNode const* node) { return TransDocumentDepth::exceeded(node); }

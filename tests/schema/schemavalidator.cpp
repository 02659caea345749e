#include "schemavalidator.h"

#include <stdexcept>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>

#include "dictionarytestsupport.h"

namespace schematest {

namespace xc = XERCES_CPP_NAMESPACE;

std::string schemaPath() { return std::string(TRANSSPACE_SOURCE_DIR) + "/schema/dictionary-1.0.xsd"; }

namespace {

// Keeps every warning, error and fatal error instead of printing or throwing.
class Collector : public xc::ErrorHandler {
public:
  void warning(xc::SAXParseException const& e) override { add(e); }
  void error(xc::SAXParseException const& e) override { add(e); }
  void fatalError(xc::SAXParseException const& e) override { add(e); }
  void resetErrors() override { messages.clear(); }

  std::vector<std::string> messages;

private:
  void add(xc::SAXParseException const& e) {
    messages.push_back(std::to_string(e.getLineNumber()) + ":" + std::to_string(e.getColumnNumber()) + ": " +
                       dicttest::utf8(e.getMessage()));
  }
};

}  // namespace

struct SchemaValidator::Parts {
  xc::XercesDOMParser parser;
  Collector collector;
  std::vector<std::string> schemaErrors;
};

SchemaValidator::SchemaValidator(std::string const& schemaPath) : parts_(std::make_unique<Parts>()) {
  xc::XercesDOMParser& parser = parts_->parser;
  parser.setErrorHandler(&parts_->collector);
  parser.setDoNamespaces(true);
  parser.setDoSchema(true);
  parser.setValidationScheme(xc::XercesDOMParser::Val_Always);
  parser.setValidationSchemaFullChecking(true);
  parser.setIdentityConstraintChecking(true);
  // Only the grammar loaded here counts: the document's schema location is a name, not a place.
  parser.setLoadSchema(false);
  parser.setLoadExternalDTD(false);
  if (parser.loadGrammar(schemaPath.c_str(), xc::Grammar::SchemaGrammarType, true) == nullptr) {
    parts_->collector.messages.push_back("the schema " + schemaPath + " could not be loaded");
  }
  parts_->schemaErrors = parts_->collector.messages;
  parser.useCachedGrammarInParse(true);
}

SchemaValidator::~SchemaValidator() = default;

std::vector<std::string> const& SchemaValidator::schemaErrors() const { return parts_->schemaErrors; }

std::vector<std::string> SchemaValidator::errors(std::string const& xml) {
  parts_->collector.messages.clear();
  xc::MemBufInputSource input(reinterpret_cast<XMLByte const*>(xml.data()), xml.size(), "dictionary");
  parts_->parser.parse(input);
  parts_->parser.resetDocumentPool();
  return parts_->collector.messages;
}

std::string dictionaryText(ZORB_DataSource const& ds) {
  dicttest::DocumentPtr document = dicttest::buildDictionary(ds);
  if (!document) throw std::runtime_error("the dictionary document could not be created");
  return dicttest::serialize(document.get());
}

std::string joined(std::vector<std::string> const& errors) {
  std::string text;
  for (std::string const& error : errors) text += error + "\n";
  return text;
}

}  // namespace schematest

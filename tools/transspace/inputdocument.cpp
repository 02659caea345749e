#include "inputdocument.h"

#include <cctype>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <ostream>

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/TransService.hpp>
#include <xercesc/util/XMLString.hpp>

#include "savfile/reader.h"
#include "savfile/readerror.h"
#include "zorb/datasource.h"

namespace cli {

namespace {

using namespace XERCES_CPP_NAMESPACE;

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
    if (!message_.empty()) return;
    message_ = "line " + std::to_string(e.getLineNumber()) + ", column " + std::to_string(e.getColumnNumber()) +
               ": " + toUtf8(e.getMessage());
  }
  std::string message_;
};

TransValue loadXmlDocument(std::string const& path) {
  XercesDOMParser parser;
  configureParser(parser);
  FirstErrorHandler handler;
  parser.setErrorHandler(&handler);
  try {
    parser.parse(path.c_str());
  } catch (SAXParseException const&) {
    // reported through the handler below
  } catch (XMLException const& e) {
    throw InputError{path + ": " + toUtf8(e.getMessage())};
  } catch (DOMException const& e) {
    throw InputError{path + ": " + toUtf8(e.getMessage())};
  }
  if (!handler.message().empty()) throw InputError{path + ": not well-formed XML: " + handler.message()};
  DOMDocument const* document = parser.getDocument();
  if (document == nullptr || document->getDocumentElement() == nullptr) {
    throw InputError{path + ": no XML document element"};
  }
  return TransValue(document);  // the value deep-copies the document; the parser keeps its own
}

// A name ending in .sav or .zsav (any case) also means a system file, so that a damaged one (too
// short for its magic, or with a broken header) gets the reader's error rather than an XML one.
bool hasSystemFileName(std::string const& path) {
  std::string extension = std::filesystem::path(path).extension().string();
  for (char& c : extension) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return extension == ".sav" || extension == ".zsav";
}

}  // namespace

// Messages of the reader may quote the file's own bytes: control characters are shown as \xNN so
// that a hostile file cannot drive the terminal.
std::string printable(std::string const& text) {
  std::string shown;
  for (unsigned char c : text) {
    if (c < 0x20 || c == 0x7F) {
      char escape[5];
      std::snprintf(escape, sizeof escape, "\\x%02X", c);
      shown += escape;
    } else {
      shown += static_cast<char>(c);
    }
  }
  return shown;
}

void configureParser(XercesDOMParser& parser) {
  parser.setValidationScheme(XercesDOMParser::Val_Never);
  parser.setDoNamespaces(false);
  parser.setLoadExternalDTD(false);
  parser.setDisableDefaultEntityResolution(true);
}

std::string toUtf8(XMLCh const* text) {
  if (text == nullptr) return std::string();
  TranscodeToStr utf8(text, "UTF-8");
  return std::string(reinterpret_cast<char const*>(utf8.str()), utf8.length());
}

InputKind sniffInputKind(std::string const& path) {
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) throw InputError{path + ": is a directory"};
  std::ifstream in(path, std::ios::binary);
  if (!in) throw InputError{path + ": cannot open: " + std::strerror(errno)};
  char magic[4] = {0, 0, 0, 0};
  in.read(magic, sizeof magic);
  bool const ascii = std::memcmp(magic, "$FL2", 4) == 0 || std::memcmp(magic, "$FL3", 4) == 0;
  bool const ebcdic = std::memcmp(magic, "\x5b\xc6\xd3\xf2", 4) == 0 || std::memcmp(magic, "\x5b\xc6\xd3\xf3", 4) == 0;
  return ascii || ebcdic || hasSystemFileName(path) ? InputKind::SystemFile : InputKind::XmlDocument;
}

std::shared_ptr<ZORB_DataSource> readSystemFile(std::string const& path, std::ostream& warnings) {
  try {
    savfile::ReadResult result = savfile::readFile(path);
    for (savfile::Warning const& warning : result.warnings) warnings << "transspace: warning: " << printable(warning.text) << '\n';
    return result.dataSource;
  } catch (savfile::ReadError const& e) {
    throw InputError{printable(e.what())};
  }
}

TransValue loadDocument(std::string const& path, std::ostream& warnings) {
  if (sniffInputKind(path) == InputKind::SystemFile) return TransValue(*readSystemFile(path, warnings));
  return loadXmlDocument(path);
}

}  // namespace cli

#include "inputdocument.h"

#include <cctype>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <new>
#include <ostream>

#include <xercesc/util/TransService.hpp>

#include <transspace/transxmlinput.h>
#include <transspace/savfile/reader.h>
#include <transspace/savfile/readerror.h>
#include <transspace/zorb/datasource.h>

namespace cli {

namespace {

// The file is read whole (after its size is checked against the limit, so that a huge file is
// refused before anything is read) and parsed by the library's one XML set-up.
TransValue loadXmlDocument(std::string const& path) {
  try {
    std::error_code error;
    std::uintmax_t const size = std::filesystem::file_size(path, error);
    if (!error) TransXMLInput::checkSize(size);
    std::ifstream in(path, std::ios::binary);
    if (!in) throw InputError{path + ": cannot open: " + std::strerror(errno)};
    std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (in.bad()) throw InputError{path + ": cannot read: " + std::strerror(errno)};
    return TransXMLInput::parseDocument(text.data(), text.size());
  } catch (TransXMLInputError const& e) {
    throw InputError{path + ": " + e.what()};
  }
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

std::string toUtf8(XMLCh const* text) {
  if (text == nullptr) return std::string();
  XERCES_CPP_NAMESPACE::TranscodeToStr utf8(text, "UTF-8");
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
    for (savfile::Warning const& warning : result.warnings)
      warnings << "transspace: warning: " << printable(warning.text) << '\n';
    return result.dataSource;
  } catch (savfile::ReadError const& e) {
    throw InputError{printable(e.what())};
  }
}

TransValue loadDocument(std::string const& path, std::ostream& warnings) {
  if (sniffInputKind(path) == InputKind::SystemFile) return TransValue(*readSystemFile(path, warnings));
  return loadXmlDocument(path);
}

int reportingInputErrors(std::string const& file, std::ostream& err, std::function<int()> const& work) {
  try {
    return work();
  } catch (InputError const& e) {
    err << "transspace: " << e.message << '\n';
  } catch (TransXMLInputError const& e) {
    err << "transspace: " << file << ": " << e.what() << '\n';
  } catch (std::bad_alloc const&) {
    // The reader's allocations are bounded by the file's size, but a large file may still need
    // more memory than there is: a message and exit status 2, not an abort.
    err << "transspace: " << file << ": not enough memory to read it\n";
  }
  return 2;
}

}  // namespace cli

// The module's exceptions and warning category, and the C++ exceptions that become them.
//
//   transspace.Error(Exception)             base of the module's own errors
//   transspace.NoResult(Error, LookupError) the library reported failure: no valid result
//   transspace.XPathError(Error, ValueError) a malformed context or path expression
//   transspace.XMLError(Error, ValueError)  a text that is not a well-formed XML document
//   transspace.ReadError(Error, ValueError) a file that is not a readable system file
//   transspace.ReadWarning(UserWarning)     something odd that the reader tolerated
#pragma once

#include <pybind11/pybind11.h>

#include <cstdint>
#include <stdexcept>
#include <string>

namespace pytrans {

namespace py = pybind11;

struct LibraryError : std::runtime_error {
  using std::runtime_error::runtime_error;
};
struct NoResultError : std::runtime_error {
  using std::runtime_error::runtime_error;
};
struct XPathSyntaxError : std::runtime_error {
  using std::runtime_error::runtime_error;
};
struct XMLInputError : std::runtime_error {
  using std::runtime_error::runtime_error;
};
struct FileReadError : std::runtime_error {
  FileReadError(std::string const& message, std::string fileName, std::uint64_t offset, std::string reason)
      : std::runtime_error(message), fileName(std::move(fileName)), offset(offset), reason(std::move(reason)) {}
  std::string fileName;
  std::uint64_t offset;
  std::string reason;
};

// Creates the classes in `module` and installs the translation of the C++ exceptions above.
void registerErrors(py::module_& module);

// The category of reader warnings (valid once registerErrors has run).
py::handle readWarningCategory();

// A text of the library or of a file (UTF-8 as a rule) as a str; bytes that are not UTF-8 are
// shown as backslash escapes rather than refused.
py::str lenientStr(std::string const& text);

}  // namespace pytrans

#include "documents.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "errors.h"
#include <transspace/savfile/reader.h>
#include <transspace/savfile/readerror.h>
#include <transspace/transxmlinput.h>
#include "xmlplatform.h"
#include <transspace/zorb/datasource.h>

namespace pytrans {

namespace {

std::shared_ptr<ValueCell> documentCell(TransValue& value) {
  return std::make_shared<ValueCell>(std::move(value), ValueKind::document);
}

std::string xmlBytes(py::handle xml) {
  if (PyBytes_Check(xml.ptr())) return xml.cast<std::string>();
  if (PyByteArray_Check(xml.ptr()) || PyMemoryView_Check(xml.ptr())) {
    py::object copied = py::reinterpret_steal<py::object>(PyBytes_FromObject(xml.ptr()));
    if (!copied) throw py::error_already_set();
    return copied.cast<std::string>();
  }
  if (PyUnicode_Check(xml.ptr())) {
    py::object encoded = py::reinterpret_steal<py::object>(PyUnicode_AsUTF8String(xml.ptr()));
    if (!encoded) throw py::error_already_set();
    return encoded.cast<std::string>();
  }
  throw py::type_error(std::string("xml must be a str or bytes, not ") + Py_TYPE(xml.ptr())->tp_name);
}

// The file must exist and open before the reader runs, so that a missing file gives Python's own
// OSError (FileNotFoundError, PermissionError, IsADirectoryError) rather than a ReadError.
std::string openablePath(py::handle path) {
  py::object encoded = py::module_::import("os").attr("fsencode")(path);
  std::string file = encoded.cast<std::string>();
  if (file.find('\0') != std::string::npos) throw py::value_error("path must not contain a NUL character");
  std::error_code ignored;
  if (std::filesystem::is_directory(file, ignored)) {
    errno = EISDIR;
    PyErr_SetFromErrnoWithFilenameObject(PyExc_OSError, path.ptr());
    throw py::error_already_set();
  }
  std::FILE* opened = std::fopen(file.c_str(), "rb");
  if (opened == nullptr) {
    PyErr_SetFromErrnoWithFilenameObject(PyExc_OSError, path.ptr());
    throw py::error_already_set();
  }
  std::fclose(opened);
  return file;
}

void warn(std::vector<savfile::Warning> const& warnings) {
  py::object warn = py::module_::import("warnings").attr("warn");
  for (savfile::Warning const& warning : warnings) {
    warn(lenientStr(warning.text), readWarningCategory(), py::arg("stacklevel") = 2);
  }
}

}  // namespace

PyValue documentFromXml(py::handle xml) {
  std::string const bytes = xmlBytes(xml);
  XmlPlatform const platform = xmlPlatform();
  std::unique_ptr<TransValue> value;
  std::string error;
  {
    py::gil_scoped_release release;
    try {
      value.reset(new TransValue(TransXMLInput::parseDocument(bytes.data(), bytes.size())));
    } catch (TransXMLInputError const& e) {
      error = e.what();
    }
  }
  if (!value) throw XMLInputError(error);
  return PyValue{documentCell(*value)};
}

PyValue readDictionary(py::handle path) {
  std::string const file = openablePath(path);
  XmlPlatform const platform = xmlPlatform();
  std::unique_ptr<TransValue> value;
  std::vector<savfile::Warning> warnings;
  std::unique_ptr<FileReadError> error;
  {
    py::gil_scoped_release release;
    try {
      savfile::ReadResult result = savfile::readFile(file);
      warnings = std::move(result.warnings);
      value.reset(new TransValue(*result.dataSource));
    } catch (savfile::ReadError const& e) {
      error.reset(new FileReadError(e.what(), e.fileName(), e.offset(), e.reason()));
    }
  }
  if (error) throw *error;
  warn(warnings);
  return PyValue{documentCell(*value)};
}

}  // namespace pytrans

#include "text.h"

#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

#include "errors.h"

namespace pytrans {

namespace {

// Latin-1 strings (ASCII above all: names and XPath expressions) widen unit by unit; the rest go
// through Python's UTF-16 encoder, which refuses lone surrogates.
std::vector<unsigned short> utf16Units(py::handle text) {
  PyObject* object = text.ptr();
  Py_ssize_t const length = PyUnicode_GET_LENGTH(object);
  std::vector<unsigned short> units;
  if (PyUnicode_KIND(object) == PyUnicode_1BYTE_KIND) {
    Py_UCS1 const* data = PyUnicode_1BYTE_DATA(object);
    units.assign(data, data + length);
  } else {
    py::object encoded = py::reinterpret_steal<py::object>(PyUnicode_AsUTF16String(object));
    if (!encoded) throw py::error_already_set();
    char const* bytes = PyBytes_AS_STRING(encoded.ptr());
    Py_ssize_t const size = PyBytes_GET_SIZE(encoded.ptr());
    // The encoder writes a byte-order mark first and the host's byte order after it.
    units.resize(static_cast<std::size_t>(size / 2 - 1));
    std::memcpy(units.data(), bytes + 2, units.size() * 2);
  }
  units.push_back(0);
  return units;
}

}  // namespace

TransString toTransString(py::handle text, char const* what) {
  if (!PyUnicode_Check(text.ptr())) {
    throw py::type_error(std::string(what) + " must be a str, not " + Py_TYPE(text.ptr())->tp_name);
  }
  std::vector<unsigned short> units = utf16Units(text);
  for (std::size_t i = 0; i + 1 < units.size(); ++i) {
    if (units[i] == 0) throw py::value_error(std::string(what) + " must not contain a NUL character");
  }
  return TransString(units.data());
}

template <class Unit>
py::str utf16ToStr(Unit const* text) {
  static_assert(sizeof(Unit) == 2, "UTF-16 code units");
  std::size_t length = 0;
  while (text[length] != 0) ++length;
  int byteOrder = 0;  // the host's
#if PY_BIG_ENDIAN
  byteOrder = 1;
#else
  byteOrder = -1;
#endif
  PyObject* decoded = PyUnicode_DecodeUTF16(reinterpret_cast<char const*>(text), static_cast<Py_ssize_t>(length * 2),
                                            "strict", &byteOrder);
  if (decoded == nullptr) throw py::error_already_set();
  return py::reinterpret_steal<py::str>(decoded);
}

template py::str utf16ToStr(char16_t const*);
template py::str utf16ToStr(unsigned short const*);

py::str toStr(TransString const& text) {
  TransStatus status;
  auto const* units = text.asUTF16(status);
  if (status.failure()) throw LibraryError("a text of the library could not be converted to UTF-16");
  return utf16ToStr(units);
}

py::list toList(TransStringList const& texts) {
  py::list result;
  for (unsigned long i = 0; i < texts.size(); ++i) {
    TransStatus status;
    auto const* units = texts.asUTF16(i, status);
    if (status.failure()) throw LibraryError("a text of the library could not be converted to UTF-16");
    result.append(utf16ToStr(units));
  }
  return result;
}

}  // namespace pytrans

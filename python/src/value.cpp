#include "value.h"

#include <string>

#include <xalanc/PlatformSupport/XSLException.hpp>

#include "documents.h"
#include "errors.h"
#include "text.h"
#include "xpathcheck.h"

namespace pytrans {

namespace {

// Stands for "no default given" in the query functions (None is a valid default).
py::object& missing() {
  static py::object* sentinel = new py::object(py::module_::import("builtins").attr("object")());
  return *sentinel;
}

// A query on the cell's value; a malformed context (which the library lets through as Xalan's
// exception) becomes transspace.XPathError.
template <class Work>
auto query(ValueCell& cell, Work work) {
  try {
    return withValue(cell, work);
  } catch (XALAN_CPP_NAMESPACE::XSLException const& e) {
    throw XPathSyntaxError("invalid XPath expression: " + xalanMessage(e));
  }
}

bool blank(TransString const& text) {
  TransString trimmed(text);
  TransStatus status;
  return trimmed.trim(status).empty();
}

std::string quoted(py::handle text) { return py::repr(text).cast<std::string>(); }

// The library reported failure for a query: transspace.XPathError for a malformed path, else the
// caller's default, else transspace.NoResult.
py::object noResult(PyValue const& self, py::handle context, py::handle path, TransString const& pathText,
                    py::handle fallback) {
  ValueKind const kind = self.cell->kind();
  if (kind == ValueKind::document && !blank(pathText)) {
    std::optional<std::string> malformed = xpathSyntaxError(pathText);
    if (malformed) throw XPathSyntaxError("invalid XPath expression " + quoted(path) + ": " + *malformed);
  }
  if (!fallback.is(missing())) return py::reinterpret_borrow<py::object>(fallback);
  if (kind != ValueKind::document) {
    throw NoResultError(std::string("a ") + kindName(kind) + " value answers no XPath query (only documents do)");
  }
  throw NoResultError("no result for context " + quoted(context) + " and path " + quoted(path) +
                      ": an expression is empty, the context selected no node, or the path's result cannot be "
                      "answered");
}

std::string notApplicable(ValueKind kind, char const* view) {
  return std::string("a ") + kindName(kind) + " value has no " + view;
}

PyValue fromContent(py::handle content) {
  if (py::isinstance<PyValue>(content)) {
    PyValue const& other = content.cast<PyValue const&>();
    ValueKind const kind = other.cell->kind();
    TransValue copy = withValue(*other.cell, [](TransValue const& value) { return TransValue(value); });
    return PyValue{std::make_shared<ValueCell>(std::move(copy), kind)};
  }
  std::pair<TransValue, ValueKind> made = plainValue(content);
  return PyValue{std::make_shared<ValueCell>(std::move(made.first), made.second)};
}

py::str xml(PyValue const& self);

// A document's text view is its XML text, read the way xml() reads it: the library's own text view
// of a document puts the serializer's UTF-8 bytes pairwise into UTF-16 units.
py::str text(PyValue const& self) {
  if (self.cell->kind() == ValueKind::document) return xml(self);
  TransStatus status;
  TransStringOwner answer =
      withValue(*self.cell, [&](TransValue const& value) { return TransStringOwner(value.asString(status)); });
  if (status.failure()) throw NoResultError(notApplicable(self.cell->kind(), "text (a null value)"));
  return toStr(*answer);
}

double number(PyValue const& self) {
  TransStatus status;
  double const answer = withValue(*self.cell, [&](TransValue const& value) { return value.asDouble(status); });
  if (status.failure()) throw NoResultError(notApplicable(self.cell->kind(), "number"));
  return answer;
}

// The document's text as the serializer wrote it (UTF-8, the multibyte form of the host's UTF-8
// mode), read back through its UTF-16 form.
py::str xml(PyValue const& self) {
  TransStatus status;
  TransStringOwner answer =
      withValue(*self.cell, [&](TransValue const& value) { return TransStringOwner(value.asMBCSXML(status)); });
  if (status.failure()) {
    if (self.cell->kind() == ValueKind::document) throw NoResultError("the document could not be serialised");
    throw NoResultError(notApplicable(self.cell->kind(), "XML form (only documents have one)"));
  }
  return toStr(*answer);
}

py::object queryList(PyValue const& self, py::handle context, py::handle path, py::handle fallback) {
  TransString const c = toTransString(context, "context");
  TransString const p = toTransString(path, "path");
  TransStatus status;
  TransStringListOwner answer = query(
      *self.cell, [&](TransValue const& value) { return TransStringListOwner(value.asStringList(c, p, status)); });
  if (status.failure()) return noResult(self, context, path, p, fallback);
  return toList(*answer);
}

py::object queryString(PyValue const& self, py::handle context, py::handle path, py::handle fallback) {
  TransString const c = toTransString(context, "context");
  TransString const p = toTransString(path, "path");
  TransStatus status;
  TransStringOwner answer =
      query(*self.cell, [&](TransValue const& value) { return TransStringOwner(value.asString(c, p, status)); });
  if (status.failure()) return noResult(self, context, path, p, fallback);
  return toStr(*answer);
}

py::object queryNumber(PyValue const& self, py::handle context, py::handle path, py::handle fallback) {
  TransString const c = toTransString(context, "context");
  TransString const p = toTransString(path, "path");
  TransStatus status;
  double const answer = query(*self.cell, [&](TransValue const& value) { return value.asDouble(c, p, status); });
  if (status.failure()) return noResult(self, context, path, p, fallback);
  return py::float_(answer);
}

std::string repr(PyValue const& self) { return std::string("<transspace.Value: ") + kindName(self.cell->kind()) + ">"; }

}  // namespace

std::pair<TransValue, ValueKind> plainValue(py::handle content) {
  if (content.is_none()) return {TransValue(), ValueKind::null};
  if (PyFloat_Check(content.ptr())) return {TransValue(PyFloat_AS_DOUBLE(content.ptr())), ValueKind::number};
  if (PyLong_Check(content.ptr())) {
    double const number = PyLong_AsDouble(content.ptr());
    if (number == -1.0 && PyErr_Occurred()) throw py::error_already_set();
    return {TransValue(number), ValueKind::number};
  }
  if (PyUnicode_Check(content.ptr())) return {TransValue(toTransString(content, "a text value")), ValueKind::text};
  throw py::type_error(std::string("a value is made from None, a float, an int, a str or a Value, not ") +
                       Py_TYPE(content.ptr())->tp_name + " (XML documents: Value.from_xml)");
}

void registerValue(py::module_& module) {
  module.attr("NO_NUMBER") = TransValue::noNumber;
  py::arg_v const fallback("default", missing(), "<no default>");
  py::class_<PyValue>(module, "Value", R"doc(
One value of the library: null, a number (a double), a text or an XML document.

Value() and Value(None) make the null value, Value(2.5) and Value(7) a number (ints become
floats), Value("text") a text, Value(other) a copy of another value; Value.from_xml(...) parses an
XML document and read_dictionary(path) makes the dictionary document of a system file. A value is
immutable. Views that a kind of value does not have raise NoResult.
)doc")
      .def(py::init(&fromContent), py::arg("content") = py::none(),
           "Makes a value from None, a float, an int, a str or another Value (copied).")
      .def_property_readonly(
          "kind", [](PyValue const& self) { return kindName(self.cell->kind()); },
          "'null', 'number', 'text' or 'document'.")
      .def_property_readonly("text", &text, R"doc(
The value as text: a text as it is, a number formatted in the C library's numeric locale (at most
three decimals, no grouping), a document as its XML text. NoResult for the null value.)doc")
      .def_property_readonly("number", &number, R"doc(
The value as a float: a number as it is, a text parsed in the C library's numeric locale (NoResult
when it does not start with a number). NoResult for the null value and documents.)doc")
      .def_property_readonly("xml", &xml, R"doc(
The XML text of a document (with the XML declaration, no indentation). NoResult for other kinds.)doc")
      .def("query", &queryList, py::arg("context"), py::arg("path"), py::kw_only(), fallback, R"doc(
Evaluates `context` from the document node, takes the first node it selects and evaluates `path`
from there. Returns one str per selected node (the node's value: an attribute's value, a text
node's text, "" for an element), or a one-item list for a string, number or boolean result; an
empty node set gives []. When the library finds no result (the context selects nothing, an
expression is empty, the result cannot be answered, the value is no document) it raises NoResult,
or returns `default` when one is given. A malformed expression raises XPathError.)doc")
      .def("query_string", &queryString, py::arg("context"), py::arg("path"), py::kw_only(), fallback, R"doc(
As query(), answering one str: the first node's value when several nodes are selected, "" for an
empty node set.)doc")
      .def("query_number", &queryNumber, py::arg("context"), py::arg("path"), py::kw_only(), fallback, R"doc(
As query(), answering one float: a number result as it is, a boolean as 1.0 or 0.0, a string or a
node's value parsed in the C library's numeric locale. An empty node set, or a text that is no
number, gives NO_NUMBER (-1.7976931348623157e308), the library's no-number value.)doc")
      .def_static("from_xml", &documentFromXml, py::arg("xml"), R"doc(
Parses an XML document given as str or as bytes (whose encoding the parser detects from a byte
order mark or the XML declaration; UTF-8 by default). A str is handed to the parser as UTF-8, so
its XML declaration, if any, must not name another encoding. No validation, no namespace
processing, nothing fetched from outside. Raises XMLError when the text is not a well-formed
document.)doc")
      .def("__repr__", &repr);
}

}  // namespace pytrans

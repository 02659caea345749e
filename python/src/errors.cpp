#include "errors.h"

namespace pytrans {

namespace {

// The classes live as long as the process: the module holds them too, and translators may run
// late in the interpreter's shutdown.
struct Classes {
  PyObject* error = nullptr;
  PyObject* noResult = nullptr;
  PyObject* xpathError = nullptr;
  PyObject* xmlError = nullptr;
  PyObject* readError = nullptr;
  PyObject* readWarning = nullptr;
};
Classes classes;

PyObject* newClass(py::module_& module, char const* name, char const* doc, py::tuple bases) {
  std::string const qualified = std::string("transspace.") + name;
  PyObject* made = PyErr_NewExceptionWithDoc(qualified.c_str(), doc, bases.ptr(), nullptr);
  if (made == nullptr) throw py::error_already_set();
  module.add_object(name, py::reinterpret_borrow<py::object>(made));
  return made;
}

void raise(PyObject* type, char const* message) { PyErr_SetObject(type, lenientStr(message).ptr()); }

void raiseReadError(FileReadError const& e) {
  py::object error = py::reinterpret_borrow<py::object>(classes.readError)(lenientStr(e.what()));
  error.attr("filename") = lenientStr(e.fileName);
  error.attr("offset") = py::int_(e.offset);
  error.attr("reason") = lenientStr(e.reason);
  PyErr_SetObject(classes.readError, error.ptr());
}

}  // namespace

py::str lenientStr(std::string const& text) {
  PyObject* decoded = PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "backslashreplace");
  if (decoded == nullptr) throw py::error_already_set();
  return py::reinterpret_steal<py::str>(decoded);
}

py::handle readWarningCategory() { return classes.readWarning; }

void registerErrors(py::module_& module) {
  auto const bases = [](std::initializer_list<PyObject*> types) {
    py::tuple tuple(types.size());
    std::size_t i = 0;
    for (PyObject* type : types) tuple[i++] = py::reinterpret_borrow<py::object>(type);
    return tuple;
  };
  classes.error = newClass(module, "Error", "Base class of the errors of transspace.", bases({PyExc_Exception}));
  classes.noResult = newClass(module, "NoResult",
                              "The library reported failure: the view does not exist for this kind of value, the "
                              "context selected no node, or the path's result cannot be answered.",
                              bases({classes.error, PyExc_LookupError}));
  classes.xpathError = newClass(module, "XPathError",
                                "A context or path expression that is not valid XPath; the message is the evaluator's.",
                                bases({classes.error, PyExc_ValueError}));
  classes.xmlError = newClass(module, "XMLError", "A text or byte string that is not a well-formed XML document.",
                              bases({classes.error, PyExc_ValueError}));
  classes.readError = newClass(module, "ReadError",
                               "A file that cannot be read as a system file. Attributes: filename, offset (the byte "
                               "offset in the file where the problem was found), reason (the message without the "
                               "file name and offset).",
                               bases({classes.error, PyExc_ValueError}));
  classes.readWarning =
      newClass(module, "ReadWarning", "Something odd in a system file that the reader tolerated, using a sane default.",
               bases({PyExc_UserWarning}));

  py::register_exception_translator([](std::exception_ptr thrown) {
    try {
      if (thrown) std::rethrow_exception(thrown);
    } catch (NoResultError const& e) {
      raise(classes.noResult, e.what());
    } catch (XPathSyntaxError const& e) {
      raise(classes.xpathError, e.what());
    } catch (XMLInputError const& e) {
      raise(classes.xmlError, e.what());
    } catch (FileReadError const& e) {
      raiseReadError(e);
    } catch (LibraryError const& e) {
      raise(classes.error, e.what());
    }
  });
}

}  // namespace pytrans

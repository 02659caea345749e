// The extension transspace._transspace; the package transspace re-exports it.
#include <pybind11/pybind11.h>

#include "documents.h"
#include "errors.h"
#include "space.h"
#include "value.h"
#include "xmlplatform.h"

namespace py = pybind11;

PYBIND11_MODULE(_transspace, module) {
  module.doc() = "The value space and system-file dictionaries of libtransspace.";
  module.attr("__version__") = TRANSSPACE_VERSION;
  pytrans::registerErrors(module);
  pytrans::registerValue(module);
  pytrans::registerSpace(module);
  module.def("read_dictionary", &pytrans::readDictionary, py::arg("path"), R"doc(
Reads the dictionary of a system file (.sav, or .zsav) and returns its dictionary document as a
Value. `path` is a str, bytes or os.PathLike. Whatever the reader tolerated is reported through
Python's warnings module (category ReadWarning); a file that is not a readable system file raises
ReadError (with the byte offset of the problem), one that cannot be opened OSError. The GIL is
released while the file is read and the document built.)doc");
  // The module's own share of the XML platform: parsing and reading never wait for it to come up,
  // and it goes down after the module and the last value are gone.
  auto* platform = new pytrans::XmlPlatform(pytrans::xmlPlatform());
  module.add_object("_platform",
                    py::capsule(platform, [](void* share) { delete static_cast<pytrans::XmlPlatform*>(share); }));
}

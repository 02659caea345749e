// Document values made from outside data: an XML text (Value.from_xml) and the dictionary of a
// system file (transspace.read_dictionary). Both do their long work with the GIL released.
#pragma once

#include <pybind11/pybind11.h>

#include "value.h"

namespace pytrans {

namespace py = pybind11;

PyValue documentFromXml(py::handle xml);

// Reader warnings go to Python's warnings module (category ReadWarning); a file that is not a
// readable system file raises ReadError, one that cannot be opened OSError.
PyValue readDictionary(py::handle path);

}  // namespace pytrans

// Text across the boundary: a Python str becomes a TransString through its UTF-16 form, and what
// the library hands back is read through its UTF-16 form into a Python str, so no text depends on
// the host's multibyte code page. The strings and lists the library hands out are owned here and
// given back to it.
#pragma once

#include <pybind11/pybind11.h>

#include <memory>

#include <transspace/transowner.h>
#include <transspace/transspace.h>
#include <transspace/transstring.h>
#include <transspace/transstringlist.h>

namespace pytrans {

namespace py = pybind11;

// `text` must be a str without NUL characters (the library's texts end at the first NUL) and
// without lone surrogates; raises TypeError or ValueError naming `what` otherwise.
TransString toTransString(py::handle text, char const* what);

// A NUL-terminated UTF-16 text of the library as a str.
template <class Unit>
py::str utf16ToStr(Unit const* text);

// The UTF-16 form of a library string as a str; raises transspace.Error when the library cannot
// convert it (a text in the host's code page that does not convert).
py::str toStr(TransString const& text);
py::list toList(TransStringList const& texts);

}  // namespace pytrans

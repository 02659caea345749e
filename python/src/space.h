// transspace.Space and transspace.Image: the value space as a Python mapping of names to values,
// with its image store.
#pragma once

#include <pybind11/pybind11.h>

namespace pytrans {

void registerSpace(pybind11::module_& module);

}  // namespace pytrans

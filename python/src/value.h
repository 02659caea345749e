// transspace.Value: one value of the library (null, number, text or XML document) with its views
// and its XPath queries.
#pragma once

#include <pybind11/pybind11.h>

#include <memory>
#include <mutex>
#include <utility>

#include "valuecell.h"

namespace pytrans {

namespace py = pybind11;

struct PyValue {
  std::shared_ptr<ValueCell> cell;
};

// A value of the library made from None, a float, an int or a str; raises TypeError otherwise.
std::pair<TransValue, ValueKind> plainValue(py::handle content);

// Runs `work` on the cell's value with the GIL released and the cell's lock held.
template <class Work>
auto withValue(ValueCell& cell, Work work) {
  py::gil_scoped_release release;
  std::lock_guard<std::mutex> guard(cell.lock());
  return work(cell.value());
}

void registerValue(py::module_& module);

}  // namespace pytrans

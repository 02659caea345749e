#include "space.h"

#include <climits>
#include <memory>
#include <string>

#include "spacecore.h"
#include "text.h"
#include "value.h"

namespace pytrans {

namespace {

struct PySpace {
  std::unique_ptr<SpaceCore> core{new SpaceCore};
};

// What the space stores under a group and an image name, copied out.
struct PyImage {
  py::str name;
  py::bytes data;
  py::str text;
  std::int32_t number;
};

// Runs `work` on the core with the GIL released.
template <class Work>
auto unlocked(PySpace& self, Work work) {
  py::gil_scoped_release release;
  return work(*self.core);
}

std::string shown(py::handle name) { return py::repr(name).cast<std::string>(); }

[[noreturn]] void keyError(py::handle name) {
  PyErr_SetObject(PyExc_KeyError, name.ptr());
  throw py::error_already_set();
}

void setItem(PySpace& self, py::handle name, py::handle content) {
  TransString const key = toTransString(name, "a name");
  AddOutcome outcome;
  if (py::isinstance<PyValue>(content)) {
    std::shared_ptr<ValueCell> cell = content.cast<PyValue const&>().cell;
    outcome = unlocked(self, [&](SpaceCore& core) { return core.add(key, cell); });
  } else {
    std::pair<TransValue, ValueKind> made = plainValue(content);
    outcome = unlocked(self, [&](SpaceCore& core) { return core.add(key, made.first, made.second); });
  }
  if (outcome == AddOutcome::emptyName) throw py::value_error("the name " + shown(name) + " is empty or blank");
  if (outcome == AddOutcome::duplicate) {
    throw py::value_error("a value named " + shown(name) +
                          " is already in the space (names ignore letter case and blanks at either end); "
                          "delete it first to store another");
  }
}

PyValue getItem(PySpace& self, py::handle name) {
  TransString const key = toTransString(name, "a name");
  std::shared_ptr<ValueCell> cell = unlocked(self, [&](SpaceCore& core) { return core.find(key); });
  if (!cell) keyError(name);
  return PyValue{cell};
}

py::object get(PySpace& self, py::handle name, py::object fallback) {
  if (!PyUnicode_Check(name.ptr())) return fallback;
  TransString const key = toTransString(name, "a name");
  std::shared_ptr<ValueCell> cell = unlocked(self, [&](SpaceCore& core) { return core.find(key); });
  return cell ? py::cast(PyValue{cell}) : fallback;
}

void delItem(PySpace& self, py::handle name) {
  TransString const key = toTransString(name, "a name");
  if (!unlocked(self, [&](SpaceCore& core) { return core.remove(key); })) keyError(name);
}

bool contains(PySpace& self, py::handle name) {
  if (!PyUnicode_Check(name.ptr())) return false;
  TransString const key = toTransString(name, "a name");
  return unlocked(self, [&](SpaceCore& core) { return core.exists(key); });
}

py::list names(PySpace& self) {
  auto list = unlocked(self, [](SpaceCore& core) { return core.names(); });
  return toList(*list);
}

std::size_t size(PySpace& self) {
  return unlocked(self, [](SpaceCore& core) { return core.names()->size(); });
}

bool removeAll(PySpace& self, py::handle name) {
  TransString const key = toTransString(name, "a name");
  return unlocked(self, [&](SpaceCore& core) { return core.removeAll(key); });
}

void addImage(PySpace& self, py::handle group, py::handle name, py::bytes data, py::handle text, long long number) {
  if (number < INT32_MIN || number > INT32_MAX) throw py::value_error("an image's number must fit in 32 bits");
  TransString const groupName = toTransString(group, "a group name");
  TransImage image{};
  image.name = toTransString(name, "an image name");
  image.data = data.cast<std::string>();
  image.text = toTransString(text, "an image's text");
  image.number = static_cast<std::int32_t>(number);
  if (!unlocked(self, [&](SpaceCore& core) { return core.addImage(groupName, image); })) {
    throw py::value_error("the group name " + shown(group) + " is empty or blank");
  }
}

PyImage image(PySpace& self, py::handle group, py::handle name) {
  TransString const groupName = toTransString(group, "a group name");
  TransString const imageName = toTransString(name, "an image name");
  std::optional<TransImage> found = unlocked(self, [&](SpaceCore& core) { return core.image(groupName, imageName); });
  if (!found) keyError(py::make_tuple(group, name));
  return PyImage{toStr(found->name), py::bytes(found->data), toStr(found->text), found->number};
}

bool hasImage(PySpace& self, py::handle group, py::handle name) {
  TransString const groupName = toTransString(group, "a group name");
  TransString const imageName = toTransString(name, "an image name");
  return unlocked(self, [&](SpaceCore& core) { return core.existsImage(groupName, imageName); });
}

void removeImage(PySpace& self, py::handle group, py::handle name) {
  TransString const groupName = toTransString(group, "a group name");
  TransString const imageName = toTransString(name, "an image name");
  if (!unlocked(self, [&](SpaceCore& core) { return core.removeImage(groupName, imageName); })) {
    keyError(py::make_tuple(group, name));
  }
}

void registerImage(py::module_& module) {
  py::class_<PyImage>(module, "Image", "An image record as the space stores it, copied out by Space.image().")
      .def_readonly("name", &PyImage::name, "The image's name within its group.")
      .def_readonly("data", &PyImage::data, "The image's bytes, carried as they are.")
      .def_readonly("text", &PyImage::text, "A text carried with the image.")
      .def_readonly("number", &PyImage::number, "A 32-bit number carried with the image.")
      .def("__repr__", [](PyImage const& self) {
        return "<transspace.Image " + py::repr(self.name).cast<std::string>() + ", " +
               std::to_string(py::len(self.data)) + " bytes>";
      });
}

}  // namespace

void registerSpace(py::module_& module) {
  registerImage(module);
  py::class_<PySpace>(module, "Space", R"doc(
A value space: a mapping of names to values, and a store of images filed under a group name and
an image name.

Names are trimmed of blanks at either end and ignore letter case ("Age", " AGE " and "age" are one
name); iteration gives them in ascending order, ignoring letter case, each as it was first stored.
A name is stored once: assigning to a name in use raises ValueError (delete it first), as does an
empty or blank name. space[name] gives a Value that reads the stored value in place; it stays valid
after the name is deleted or the space is gone.

A space may be used from several threads: every operation takes the space's lock, and each value
has a lock of its own, so no call sees a half-done change. The GIL is released while the library
works.
)doc")
      .def(py::init<>())
      .def("__setitem__", &setItem, py::arg("name"), py::arg("value"), R"doc(
Stores `value` (a Value, None, a float, an int or a str) under `name`. A Value that belongs to no
space is moved in (the Value then reads the stored one); otherwise a copy is stored.)doc")
      .def("__getitem__", &getItem, py::arg("name"), "The value stored under `name`; KeyError if none.")
      .def("__delitem__", &delItem, py::arg("name"), "Removes the value stored under `name`; KeyError if none.")
      .def("__contains__", &contains, py::arg("name"))
      .def("__len__", &size)
      .def("__iter__", [](PySpace& self) { return py::iter(names(self)); })
      .def("names", &names, "The names of the stored values, in the space's order.")
      .def("keys", &names, "The same as names().")
      .def("get", &get, py::arg("name"), py::arg("default") = py::none(),
           "The value stored under `name`, or `default` when there is none.")
      .def("remove_all", &removeAll, py::arg("name"), R"doc(
Removes the value and the image group of that name. Returns True when a value was removed (the
image group goes in any case).)doc")
      .def("add_image", &addImage, py::arg("group"), py::arg("name"), py::arg("data"), py::arg("text") = "",
           py::arg("number") = 0, R"doc(
Files an image under `group` (which ignores letter case) and `name` (which does not). Images of
the same name may be added more than once; image() and remove_image() find the first. ValueError
for an empty or blank group name.)doc")
      .def("image", &image, py::arg("group"), py::arg("name"),
           "The first image of that name in the group (an Image); KeyError if there is none.")
      .def("has_image", &hasImage, py::arg("group"), py::arg("name"), "Whether the group holds an image of that name.")
      .def("remove_image", &removeImage, py::arg("group"), py::arg("name"),
           "Removes the first image of that name from the group; KeyError if there is none.")
      .def("__repr__", [](PySpace& self) { return "<transspace.Space of " + std::to_string(size(self)) + " values>"; });
}

}  // namespace pytrans

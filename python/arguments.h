// Arguments from Python checked on their way into the library.
#pragma once

#include <pybind11/pybind11.h>

#include <cstdint>
#include <string>
#include <utility>

namespace zvpy {

namespace py = pybind11;

// The name of the object's type, for messages.
std::string type_name(py::handle object);

// A 32-bit integer, signed or as unsigned bits (0xFF00FF00), else a
// TypeError or ValueError naming `name`.
int32_t int32_argument(py::handle value, const std::string& name);

// A pair of 32-bit signed integers (a tuple or list of two), else a TypeError
// or ValueError naming `name`.
std::pair<int32_t, int32_t> int32_pair(py::handle value, const std::string& name);

// An integer from 0 to `last`, else a TypeError or ValueError naming `name`.
int choice_argument(py::handle value, const std::string& name, int last);

}  // namespace zvpy

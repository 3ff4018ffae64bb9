// The GLSL collection from Python: its entries in the catalogue, and one call
// of a transition named gl:NAME with its parameters by name.
#pragma once

#include <pybind11/pybind11.h>

#include <string>

namespace zvpy {

namespace py = pybind11;

// Whether `transition` names a transition of the collection (gl:NAME).
bool is_gl_transition(py::handle transition);

// Appends each transition of the collection: id (gl:NAME), name, author,
// license and params (name, type and default of each).
void append_gl_catalogue(py::list& list);

// One call of gl:NAME at `progress` on frames from Python, the GIL released,
// with the parameters in `params` (a dict, or None for the defaults): `out`
// is written in place, or, when None, a new frame started as a copy of `a`.
py::object call_gl_transition(const std::string& transition, py::handle a, py::handle b, py::handle out,
                              double progress, py::handle params);

}  // namespace zvpy

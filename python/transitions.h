// The transitions from Python: the catalogue, and one call made as a host makes it.
#pragma once

#include <pybind11/pybind11.h>

#include "host/transition_abi.h"

namespace zvpy {

namespace py = pybind11;

// Every registered transition: id, name, styles (as many as a host shows) and
// parameter labels (None where the library gives a null one); then the GLSL
// collection's.
py::list catalogue();

// The id of a transition given by id or by display name (any letter case).
int transition_id(py::handle transition);

// An enabled block with these values, the host's own bytes zero.
TransitionParams make_params(double position, double duration, int32_t style, int32_t param1, double param2,
                             int32_t param3);

// One call of `op` (registered as `id`) on frames from Python, the GIL
// released: `out` is written in place, or, when None, a new frame started as
// a copy of `a`. Returns the output frame.
py::object call_transition(TransitionOp op, int id, py::handle a, py::handle b, py::handle out,
                           TransitionParams params);

}  // namespace zvpy

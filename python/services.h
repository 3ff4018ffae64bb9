// The picture services from Python: RGB conversion, resize, letterbox fit and
// keyed overlap, on the frames of python/frames.h.
#pragma once

#include <pybind11/pybind11.h>

namespace zvpy {

namespace py = pybind11;

// An H x W x 3 RGB array into a W x H frame (`out`, or a new one of zeros).
py::object rgb_to_yuv420(py::handle rgb, py::handle out);
// A frame into an H x W x 3 RGB array (`out`, or a new one of zeros).
py::object yuv420_to_rgb(py::handle frame, py::handle out);
// zvImageResize of `frame` into `out`, or into a new frame of zeros of `size`
// (width, height); the display aspects (x, y) are both None or both given.
py::object resize(py::handle frame, py::handle size, py::handle out, py::handle interpolation, py::handle method,
                  py::handle dst_aspect, py::handle src_aspect);
// zvTranRound of `frame` into `out`, or into a new frame of zeros of `size`.
py::object letterbox(py::handle frame, py::handle size, py::handle out);

}  // namespace zvpy

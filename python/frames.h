// Frames from Python as the library's images. A frame is one uint8 array of
// shape (H * 3 / 2, W) holding Y, then U, then V, packed (PyAV's
// to_ndarray(format="yuv420p"); H and W even), or three arrays Y, U, V of
// H x W and (H / 2) x (W / 2) (any sizes).
#pragma once

#include <pybind11/numpy.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/image.h"

namespace zvpy {

namespace py = pybind11;

// The largest side a frame may have, as zvtran takes them.
constexpr int kMaxSide = 8192;

enum class FrameForm { kArray, kPlanes };

// The form of a new frame of that size: one array when both sides are even.
FrameForm natural_form(int width, int height);

// A uint8 array of `ndim` dimensions, else a TypeError or ValueError naming `name`.
py::array uint8_array(py::handle object, const std::string& name, int ndim);
// The array itself when it is C-contiguous, else a packed copy.
py::array packed(const py::array& array);
// The array itself when the library can write it in place (writable, C-contiguous), else a ValueError.
py::array writable(const py::array& array, const std::string& name);

// A frame handed over from Python, as an Image over its planes. A frame that
// is read and whose planes are not contiguous is read from a packed copy; one
// that is written must be writable and contiguous, as its planes are written
// in place.
class Frame {
 public:
  enum Access { kRead, kWrite };
  Frame(py::handle object, const std::string& name, Access access);
  Frame(const Frame&) = delete;
  Frame& operator=(const Frame&) = delete;

  Image* image() { return &*image_; }
  int width() const { return image_->width; }
  int height() const { return image_->height; }
  FrameForm form() const { return form_; }
  const py::object& object() const { return object_; }

 private:
  py::object object_;
  FrameForm form_;
  std::vector<py::array> planes_;  // what the image points into
  std::optional<Image> image_;
};

// A new uint8 array of `shape`, every sample 0.
py::array zeros(const py::tuple& shape);
// A new frame of width x height in `form`: every sample 0, or, for a frame
// its maker fills whole, left as the allocator gives it.
py::object new_frame(int width, int height, FrameForm form, bool zeroed = true);
// `out` when it is not None, else new_frame(width, height, form, zeroed).
py::object given_or_new(py::handle out, int width, int height, FrameForm form, bool zeroed = true);
// Runs draw(out, a, b) on the frames without the GIL and returns its result:
// `out` is written in place, or, when None, a new frame started as a copy of
// `a`, as hosts start one. `output` receives the output frame.
template <typename Draw>
int draw_frames(py::handle a_object, py::handle b_object, py::handle out_object, py::object& output, Draw&& draw) {
  Frame a(a_object, "a", Frame::kRead), b(b_object, "b", Frame::kRead);
  const bool fresh = out_object.is_none();
  // A new output is a copy of `a` throughout: nothing to clear first.
  Frame out(given_or_new(out_object, a.width(), a.height(), a.form(), false), "out", Frame::kWrite);
  output = out.object();
  py::gil_scoped_release released;
  if (fresh) out.image()->copy(a.image(), 1, 0);
  return draw(out.image(), a.image(), b.image());
}

// `size` as (width, height) within 0 to kMaxSide, else a TypeError or ValueError.
std::pair<int, int> frame_size(py::handle size);

}  // namespace zvpy

#include "python/frames.h"

#include "python/arguments.h"

namespace zvpy {
namespace {

constexpr const char* kFrameForms =
    "a frame is a uint8 array of shape (H * 3 / 2, W) with H and W even, or three uint8 planes (Y, U, V) of "
    "shapes (H, W), (H / 2, W / 2), (H / 2, W / 2)";

std::string text(py::handle object) { return py::str(object); }

std::string shape_of(const py::array& array) { return text(array.attr("shape")); }

int checked_side(py::ssize_t side, const std::string& name) {
  if (side > kMaxSide) {
    throw py::value_error(name + ": frame sides are at most " + std::to_string(kMaxSide) + ", not " +
                          std::to_string(side));
  }
  return static_cast<int>(side);
}

py::array plane(py::handle object, const std::string& name, Frame::Access access) {
  py::array array = uint8_array(object, name, 2);
  return access == Frame::kRead ? packed(array) : writable(array, name);
}

uint8_t* data_of(const py::array& array) { return static_cast<uint8_t*>(const_cast<void*>(array.data())); }

}  // namespace

FrameForm natural_form(int width, int height) {
  return width % 2 == 0 && height % 2 == 0 ? FrameForm::kArray : FrameForm::kPlanes;
}

py::array uint8_array(py::handle object, const std::string& name, int ndim) {
  if (!py::isinstance<py::array>(object)) {
    throw py::type_error(name + " must be a numpy array, not " + type_name(object));
  }
  auto array = py::reinterpret_borrow<py::array>(object);
  if (array.dtype().kind() != 'u' || array.itemsize() != 1) {
    throw py::value_error(name + " must have dtype uint8, not " + text(array.dtype()));
  }
  if (array.ndim() != ndim) {
    throw py::value_error(name + " must have " + std::to_string(ndim) + " dimensions, not shape " + shape_of(array));
  }
  return array;
}

py::array packed(const py::array& array) {
  if (array.flags() & py::array::c_style) return array;
  return py::array_t<uint8_t, py::array::c_style>::ensure(array);
}

py::array writable(const py::array& array, const std::string& name) {
  if (!array.writeable()) throw py::value_error(name + " is read-only, but it is written");
  if (!(array.flags() & py::array::c_style)) {
    throw py::value_error(name + " must be C-contiguous to be written in place (packed rows); its strides are " +
                          text(array.attr("strides")));
  }
  return array;
}

Frame::Frame(py::handle object, const std::string& name, Access access)
    : object_(py::reinterpret_borrow<py::object>(object)) {
  uint8_t* data[3];
  int width, height;
  if (py::isinstance<py::array>(object)) {
    form_ = FrameForm::kArray;
    planes_.push_back(plane(object, name, access));
    const py::array& all = planes_[0];
    if (all.shape(0) % 3 || all.shape(1) % 2)
      throw py::value_error(name + ": " + kFrameForms + "; got shape " + shape_of(all));
    width = checked_side(all.shape(1), name);
    height = checked_side(all.shape(0) / 3 * 2, name);
    data[0] = data_of(all);
    data[1] = data[0] + static_cast<size_t>(width) * height;
    data[2] = data[1] + static_cast<size_t>(width / 2) * (height / 2);
  } else if ((py::isinstance<py::tuple>(object) || py::isinstance<py::list>(object)) && py::len(object) == 3) {
    form_ = FrameForm::kPlanes;
    const auto planes = py::reinterpret_borrow<py::sequence>(object);
    for (int p = 0; p < 3; ++p) planes_.push_back(plane(planes[p], name + "[" + std::to_string(p) + "]", access));
    width = checked_side(planes_[0].shape(1), name);
    height = checked_side(planes_[0].shape(0), name);
    for (int p = 1; p < 3; ++p) {
      if (planes_[p].shape(0) != height / 2 || planes_[p].shape(1) != width / 2) {
        throw py::value_error(name + ": " + kFrameForms + "; got shapes " + shape_of(planes_[0]) + ", " +
                              shape_of(planes_[1]) + ", " + shape_of(planes_[2]));
      }
    }
    for (int p = 0; p < 3; ++p) data[p] = data_of(planes_[p]);
  } else {
    throw py::type_error(name + ": " + kFrameForms + "; got " + type_name(object));
  }
  image_.emplace(width, height, data[0], data[1], data[2]);
}

py::array zeros(const py::tuple& shape) { return py::module_::import("numpy").attr("zeros")(shape, "uint8"); }

py::object new_frame(int width, int height, FrameForm form, bool zeroed) {
  const py::object make = py::module_::import("numpy").attr(zeroed ? "zeros" : "empty");
  const auto plane = [&](int rows, int columns) { return make(py::make_tuple(rows, columns), "uint8"); };
  if (form == FrameForm::kArray) return plane(height / 2 * 3, width);
  return py::make_tuple(plane(height, width), plane(height / 2, width / 2), plane(height / 2, width / 2));
}

py::object given_or_new(py::handle out, int width, int height, FrameForm form, bool zeroed) {
  return out.is_none() ? new_frame(width, height, form, zeroed) : py::reinterpret_borrow<py::object>(out);
}

std::pair<int, int> frame_size(py::handle size) {
  const auto [width, height] = int32_pair(size, "size");
  if (width < 0 || height < 0 || width > kMaxSide || height > kMaxSide) {
    throw py::value_error("size " + text(size) + ": sides must be 0 to " + std::to_string(kMaxSide));
  }
  return {width, height};
}

}  // namespace zvpy

#include "python/services.h"

#include <cstring>
#include <vector>

#include "imaging/fit_overlap.h"
#include "imaging/image_resize.h"
#include "imaging/yuv_rgb.h"
#include "python/arguments.h"
#include "python/frames.h"

namespace zvpy {
namespace {

// Copies `height` rows of `width` 3-byte pixels, the last row first and each
// pixel's first and third bytes exchanged: top-down RGB rows into a bottom-up
// 24-bit bitmap (blue, green, red), and such a bitmap back into RGB rows.
void flip_rows(const uint8_t* from, size_t from_stride, uint8_t* to, size_t to_stride, int width, int height) {
  for (int row = 0; row < height; ++row) {
    const uint8_t* source = from + row * from_stride;
    uint8_t* target = to + (height - 1 - row) * to_stride;
    for (int x = 0; x < width; ++x, source += 3, target += 3) {
      target[0] = source[2];
      target[1] = source[1];
      target[2] = source[0];
    }
  }
}

// The library's side of the RGB conversions: a 24-bit bottom-up bitmap.
struct Bitmap {
  Bitmap(int width, int height)
      : header(zv::rgb24_header(width, height)), stride(zv::dib_row_bytes(width)), pixels(stride * height) {}
  BITMAPINFOHEADER header;
  size_t stride;
  std::vector<uint8_t> pixels;
};

// An H x W x 3 uint8 array with sides up to kMaxSide.
py::array rgb_array(py::handle object, const std::string& name) {
  py::array rgb = uint8_array(object, name, 3);
  if (rgb.shape(2) != 3 || rgb.shape(0) > kMaxSide || rgb.shape(1) > kMaxSide) {
    throw py::value_error(name + " must have shape (H, W, 3) with sides up to " + std::to_string(kMaxSide) + ", not " +
                          std::string(py::str(rgb.attr("shape"))));
  }
  return rgb;
}

void require_size(int width, int height, int want_width, int want_height, const std::string& name) {
  if (width != want_width || height != want_height) {
    throw py::value_error(name + " is " + std::to_string(width) + "x" + std::to_string(height) + ", not " +
                          std::to_string(want_width) + "x" + std::to_string(want_height));
  }
}

// The frame a service writes: `out`, or a new one of zeros of `size`; exactly one of them is given.
py::object destination(py::handle size, py::handle out) {
  if (size.is_none() == out.is_none()) throw py::type_error("give either size=(width, height) or out=frame");
  if (!out.is_none()) return py::reinterpret_borrow<py::object>(out);
  const auto [width, height] = frame_size(size);
  return new_frame(width, height, natural_form(width, height));
}

}  // namespace

py::object rgb_to_yuv420(py::handle rgb_object, py::handle out_object) {
  const py::array rgb = packed(rgb_array(rgb_object, "rgb"));
  const int width = static_cast<int>(rgb.shape(1)), height = static_cast<int>(rgb.shape(0));
  Frame out(given_or_new(out_object, width, height, natural_form(width, height)), "out", Frame::kWrite);
  require_size(out.width(), out.height(), width, height, "out");
  const auto* pixels = static_cast<const uint8_t*>(rgb.data());
  {
    py::gil_scoped_release released;
    Bitmap bitmap(width, height);
    flip_rows(pixels, 3 * static_cast<size_t>(width), bitmap.pixels.data(), bitmap.stride, width, height);
    Image* image = out.image();
    Rgb24_2_yuv420(image->get_Y(), image->get_U(), image->get_V(), width, width / 2, width / 2, &bitmap.header,
                   bitmap.pixels.data());
  }
  return out.object();
}

py::object yuv420_to_rgb(py::handle frame_object, py::handle out_object) {
  Frame frame(frame_object, "frame", Frame::kRead);
  const int width = frame.width(), height = frame.height();
  const py::array out =
      out_object.is_none() ? zeros(py::make_tuple(height, width, 3)) : writable(rgb_array(out_object, "out"), "out");
  require_size(static_cast<int>(out.shape(1)), static_cast<int>(out.shape(0)), width, height, "out");
  auto* pixels = static_cast<uint8_t*>(const_cast<void*>(out.data()));
  {
    py::gil_scoped_release released;
    Bitmap bitmap(width, height);
    const size_t rgb_stride = 3 * static_cast<size_t>(width);
    // What the conversion leaves alone (an odd last row or column) keeps what `out` held.
    flip_rows(pixels, rgb_stride, bitmap.pixels.data(), bitmap.stride, width, height);
    const Image* image = frame.image();
    Yuv420_2_rgb24(&bitmap.header, bitmap.pixels.data(), image->get_Y(), image->get_U(), image->get_V(), width,
                   width / 2, width / 2);
    flip_rows(bitmap.pixels.data(), bitmap.stride, pixels, rgb_stride, width, height);
  }
  return out;
}

py::object resize(py::handle frame_object, py::handle size, py::handle out_object, py::handle interpolation,
                  py::handle method, py::handle dst_aspect, py::handle src_aspect) {
  Frame source(frame_object, "frame", Frame::kRead);
  Frame out(destination(size, out_object), "out", Frame::kWrite);
  const auto how =
      static_cast<IMAGE_INTERPOLATION>(choice_argument(interpolation, "interpolation", IMAGE_INTERPOLATION_CUBIC));
  const auto where = static_cast<IMAGE_RESIZE_METHOD>(choice_argument(method, "method", IMAGE_RESIZE_TILE));
  if (dst_aspect.is_none() != src_aspect.is_none()) throw py::type_error("dst_aspect and src_aspect go together");
  if (dst_aspect.is_none()) {
    py::gil_scoped_release released;
    zvImageResize(out.image(), source.image(), how, where);
    return out.object();
  }
  const auto [dst_x, dst_y] = int32_pair(dst_aspect, "dst_aspect");
  const auto [src_x, src_y] = int32_pair(src_aspect, "src_aspect");
  {
    py::gil_scoped_release released;
    zvImageResize(out.image(), dst_x, dst_y, source.image(), src_x, src_y, how, where);
  }
  return out.object();
}

py::object letterbox(py::handle frame_object, py::handle size, py::handle out_object) {
  Frame source(frame_object, "frame", Frame::kRead);
  Frame out(destination(size, out_object), "out", Frame::kWrite);
  // The fit only tests its fourth argument for null.
  TransitionParams unused{};
  {
    py::gil_scoped_release released;
    zvTranRound(out.image(), source.image(), nullptr, &unused);
  }
  return out.object();
}

}  // namespace zvpy

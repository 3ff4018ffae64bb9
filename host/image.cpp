#include "host/image.h"

#include <algorithm>
#include <cstring>

#include "host/bt601.h"

static_assert(offsetof(Image, width) == 4, "width is the second 32-bit word");
static_assert(offsetof(Image, height) == 8, "height is the third 32-bit word");
static_assert(offsetof(Image, chroma_format) == 12, "chroma format is the fourth word");
static_assert(offsetof(Image, picture_width) == 48, "picture width is the thirteenth word");
static_assert(offsetof(Image, picture_height) == 52, "picture height is the fourteenth word");

Image::Image(int w, int h, int format)
    : host_word0(0), width(w), height(h), chroma_format(format), host_words{},
      picture_width(w), picture_height(h), flags_(0), planes_{}, owns_planes_(true) {
  for (int p = 0; p < 3; ++p) {
    // Never a null plane, even for an empty frame, so callers may form pointers freely.
    size_t n = std::max<size_t>(plane_size(p), 1);
    planes_[p] = new uint8_t[n]();
  }
}

Image::Image(int w, int h, uint8_t* y, uint8_t* u, uint8_t* v)
    : host_word0(0), width(w), height(h), chroma_format(kChroma420), host_words{},
      picture_width(w), picture_height(h), flags_(0), planes_{y, u, v}, owns_planes_(false) {}

Image::~Image() {
  if (!owns_planes_) return;
  for (uint8_t* plane : planes_) delete[] plane;
}

size_t Image::plane_size(int plane) const {
  const int w = plane == 0 ? width : chroma_width();
  const int h = plane == 0 ? height : chroma_height();
  return (w > 0 && h > 0) ? static_cast<size_t>(w) * static_cast<size_t>(h) : 0;
}

void Image::copy_flags(const Image& other) { flags_ = other.flags_; }

void Image::copy(Image* source, int copy_pixels, int copy_frame_flags) {
  if (!source) return;
  if (copy_frame_flags) flags_ = source->flags_;
  if (!copy_pixels) return;
  for (int p = 0; p < 3; ++p) {
    int dw = p == 0 ? width : chroma_width(), dh = p == 0 ? height : chroma_height();
    int sw = p == 0 ? source->width : source->chroma_width();
    int sh = p == 0 ? source->height : source->chroma_height();
    int w = std::min(dw, sw), h = std::min(dh, sh);
    if (w <= 0 || h <= 0) continue;
    uint8_t* dst = planes_[p] + static_cast<ptrdiff_t>((dh - h) >> 1) * dw + ((dw - w) >> 1);
    const uint8_t* src = source->planes_[p] + static_cast<ptrdiff_t>((sh - h) >> 1) * sw + ((sw - w) >> 1);
    for (int row = 0; row < h; ++row) {
      std::memcpy(dst + static_cast<ptrdiff_t>(row) * dw, src + static_cast<ptrdiff_t>(row) * sw, w);
    }
  }
}

void Image::set_background_color(int r, int g, int b) {
  const int values[3] = {zv::rgb_to_y(r, g, b), zv::rgb_to_u(r, g, b), zv::rgb_to_v(r, g, b)};
  for (int p = 0; p < 3; ++p) std::memset(planes_[p], values[p] & 0xFF, plane_size(p));
}

#include "blends/picture_in_picture.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "frame/rows.h"

namespace zv {
namespace {

enum InsetStyle { kPixel = 0, kPercent = 1 };

// The single-precision constants of the inset and zoom arithmetic: hosts
// place their insets with exactly these roundings, so they are kept.
constexpr float kOnePercent = 0.01f;      // 0.0099999998
constexpr float kOneNinetySixth = 1.0f / 96.0f;  // 0.010416667
constexpr int kDefaultInsetSize = 40;

// Truncation of an extended-precision value; a double would round first.
int truncate_extended(long double value) { return truncate_to_int(static_cast<double>(std::trunc(value))); }

// t(f(value x f(size) x factor) + 0.5): one product, rounded once to single precision.
int single_precision_fraction(int value, int size, float factor) {
  const float product = static_cast<float>(static_cast<long double>(value) * static_cast<float>(size) * factor);
  return truncate_to_int(static_cast<double>(product) + 0.5);
}

int clamp_to_int(int64_t v) { return static_cast<int>(std::clamp<int64_t>(v, INT32_MIN, INT32_MAX)); }

struct Inset {
  int x, y, width, height;
};

// Position from `param1` (x low, y high 16 bits) and size from `param2`
// truncated to 32 bits (width low, height high), converted to luma pixels.
Inset inset_from_params(const TransitionParams& params, int frame_width, int frame_height) {
  const uint32_t position = static_cast<uint32_t>(params.param1);
  const uint32_t size = static_cast<uint32_t>(truncate_to_int(params.param2));
  int x = static_cast<int>(position & 0xFFFF), y = static_cast<int>(position >> 16);
  int width = static_cast<int>(size & 0xFFFF), height = static_cast<int>(size >> 16);
  if (x == 0 && y == 0 && width == 0 && height == 0) width = height = kDefaultInsetSize;

  const int W = frame_width, H = frame_height;
  Inset inset{x, y, width, height};
  if (params.style == kPercent) {
    inset.x = percent_of_width(std::min(x, 100), W);
    inset.y = percent_of_height(std::min(y, 100), H);
    inset.width = percent_of_width(std::min(width, 100), W);
    inset.height = percent_of_height(std::min(height, 100), H);
  } else if (params.style == kPixel) {
    // A 128 x 96 grid over the frame, yet limited by the frame's own size:
    // kept as hosts expect.
    x = std::min(x, W);
    y = std::min(y, H);
    width = std::min(width, W);
    height = std::min(height, H);
    inset.x = truncate_extended(static_cast<long double>(x) * W / 128 + 0.5L);
    inset.y = single_precision_fraction(y, H, kOneNinetySixth);
    inset.width = truncate_extended(static_cast<long double>(width) * W / 128 + 0.5L);
    inset.height = single_precision_fraction(height, H, kOneNinetySixth);
  } else {
    // Other styles take the values as pixels, without limits.
    return inset;
  }
  inset.width = clamp_to_int(std::min<int64_t>(inset.width, static_cast<int64_t>(W) - inset.x));
  inset.height = clamp_to_int(std::min<int64_t>(inset.height, static_cast<int64_t>(H) - inset.y));
  return inset;
}

}  // namespace

int percent_of_width(int percent, int width) {
  return truncate_extended(static_cast<long double>(percent) * width * kOnePercent + 0.5L);
}

int percent_of_height(int percent, int height) { return single_precision_fraction(percent, height, kOnePercent); }

void copy_centred_plane(const PlaneView& out, const PlaneView& source) {
  const CommonRegion r = common_region(out, source, source);
  if (!r.empty()) copy_block(0, r.width, r.height, r.out_stride, r.a_stride, r.out, r.a);
}

void paste_plane(const PlaneView& out, const PlaneView& source, int64_t left, int64_t top, int c0, int c1, int r0,
                 int r1) {
  c0 = std::max(c0, 0);
  r0 = std::max(r0, 0);
  c1 = std::min(c1, source.width);
  r1 = std::min(r1, source.height);
  // Only the samples that land inside `out` are copied.
  const int64_t col_begin = std::max<int64_t>(c0, -left), col_end = std::min<int64_t>(c1, out.width - left);
  const int64_t row_begin = std::max<int64_t>(r0, -top), row_end = std::min<int64_t>(r1, out.height - top);
  if (col_begin >= col_end || row_begin >= row_end) return;
  copy_block(static_cast<int>(col_begin), static_cast<int>(col_end - col_begin), static_cast<int>(row_end - row_begin),
             out.width, source.width, out.data + (top + row_begin) * out.width + left + col_begin,
             source.data + row_begin * source.width);
}

void compose_inset(int x, int y, Image* out, const Image* a, const ScaledImage* scaled_b) {
  for (int index = kPlaneY; index <= kPlaneV; ++index) {
    const PlaneView po = image_plane(out, index);
    if (a) copy_centred_plane(po, image_plane(a, index));
    if (!scaled_b) continue;
    const PlaneView scaled = scaled_plane(*scaled_b, index);
    // Placed from the plane's first sample, not from a centred region.
    const int px = index == kPlaneY ? x : x / 2, py = index == kPlaneY ? y : y / 2;
    paste_plane(po, scaled, px, py, 0, scaled.width, 0, scaled.height);
  }
}

int ZV_STDCALL picture_in_picture(Image* out, Image* a, Image* b, TransitionParams* params) {
  // Its own argument check, kept as hosts expect: only a call with all four
  // null returns at once, the block's `enabled` is never tested, and the result
  // is always 0. A call missing only some of them goes on without what it lacks.
  if (!out && !a && !b && !params) return kTransitionDone;
  if (!out || !params) return kTransitionDone;
  if (a) out->copy_flags(*a);
  // The inset is static: progress plays no part in the picture.
  const Inset inset = inset_from_params(*params, out->width, out->height);
  std::unique_ptr<ScaledImage> scaled_b;
  if (b) {
    // Only the part of the inset that can land inside `out` is resampled.
    const int keep_width = clamp_to_int(std::max<int64_t>(0, static_cast<int64_t>(out->width) - inset.x));
    const int keep_height = clamp_to_int(std::max<int64_t>(0, static_cast<int64_t>(out->height) - inset.y));
    scaled_b = std::make_unique<ScaledImage>(inset.width, inset.height, b, keep_width, keep_height);
  }
  compose_inset(inset.x, inset.y, out, a, scaled_b.get());
  return kTransitionDone;
}

}  // namespace zv

#include "wipes/line_wipe.h"

#include <cstddef>

#include "wipes/wipe_entry.h"
#include "wipes/wipe_rows.h"

namespace zv {
namespace {

constexpr uint32_t kLastStyle = 7;

// The part of the area that shows `b`: [x0, x1) x [y0, y1).
struct Rect {
  int x0, x1, y0, y1;
};

Rect b_rect(int style, double progress, int w, int h) {
  // Rounded half up on this plane's own size, so chroma edges may differ from luma by one sample.
  const int rw = travel(round_to_int(w * progress), w), rh = travel(round_to_int(h * progress), h);
  Rect r{0, w, 0, h};
  const bool from_left = style == 0 || style == 4 || style == 5;
  const bool from_right = style == 1 || style == 6 || style == 7;
  const bool from_top = style == 2 || style == 4 || style == 6;
  const bool from_bottom = style == 3 || style == 5 || style == 7;
  if (from_left) r.x1 = rw;
  if (from_right) r.x0 = w - rw;
  if (from_top) r.y1 = rh;
  if (from_bottom) r.y0 = h - rh;
  return r;
}

void line_reference(const CommonRegion& c, const Rect& r) {
  for (int y = 0; y < c.height; ++y) {
    uint8_t* o = c.out + static_cast<ptrdiff_t>(y) * c.out_stride;
    const uint8_t* pa = c.a + static_cast<ptrdiff_t>(y) * c.a_stride;
    const uint8_t* pb = c.b + static_cast<ptrdiff_t>(y) * c.b_stride;
    for (int x = 0; x < c.width; ++x) {
      const bool inside = x >= r.x0 && x < r.x1 && y >= r.y0 && y < r.y1;
      o[x] = inside ? pb[x] : pa[x];
    }
  }
}

void line_fast(const CommonRegion& c, const Rect& r) {
  copy_block(0, c.width, r.y0, c.out_stride, c.a_stride, c.out, c.a);
  for (int y = r.y0; y < r.y1; ++y) {
    copy_three_spans(r.x0, r.x1, c.width, c.out + static_cast<ptrdiff_t>(y) * c.out_stride,
                     c.a + static_cast<ptrdiff_t>(y) * c.a_stride, c.b + static_cast<ptrdiff_t>(y) * c.b_stride);
  }
  copy_block(0, c.width, c.height - r.y1, c.out_stride, c.a_stride, c.out + static_cast<ptrdiff_t>(r.y1) * c.out_stride,
             c.a + static_cast<ptrdiff_t>(r.y1) * c.a_stride);
}

}  // namespace

void line_wipe_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height, int a_width,
                     int a_height, int b_width, int b_height, uint8_t* out_plane, const uint8_t* a_plane,
                     const uint8_t* b_plane) {
  if (static_cast<uint32_t>(style) > kLastStyle) return;
  const CommonRegion c =
      wipe_region(out_width, out_height, a_width, a_height, b_width, b_height, out_plane, a_plane, b_plane);
  if (c.empty()) return;
  const Rect r = b_rect(style, progress, c.width, c.height);
  if (kernels.reference) {
    line_reference(c, r);
  } else {
    line_fast(c, r);
  }
}

int ZV_STDCALL line_based_wipe(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_wipe(out, a, b, params, [&](const RowKernels& kernels, int, double progress, auto... plane) {
    line_wipe_plane(kernels, params->style, progress, plane...);
  });
}

}  // namespace zv

#include "wipes/region_wipe.h"

#include <algorithm>
#include <cstddef>

#include "wipes/shape_rows.h"
#include "wipes/wipe_entry.h"
#include "wipes/wipe_rows.h"

namespace zv {
namespace {

constexpr uint32_t kLastStyle = 7;

// Rows [top, top + rows) show `inner` between columns left and left + cols and
// `outer` around it; every other row is `outer`.
void centred_rectangle(const RowKernels& kernels, const CommonRegion& r, int top, int rows, int left, int cols,
                       const uint8_t* outer, int outer_stride, const uint8_t* inner, int inner_stride) {
  const int bottom = top + rows;
  if (kernels.reference) {
    for (int y = 0; y < r.height; ++y) {
      uint8_t* o = r.out + static_cast<std::ptrdiff_t>(y) * r.out_stride;
      const uint8_t* po = outer + static_cast<std::ptrdiff_t>(y) * outer_stride;
      const uint8_t* pi = inner + static_cast<std::ptrdiff_t>(y) * inner_stride;
      for (int x = 0; x < r.width; ++x) {
        const bool inside = y >= top && y < bottom && x >= left && x < left + cols;
        o[x] = inside ? pi[x] : po[x];
      }
    }
    return;
  }
  copy_block(0, r.width, top, r.out_stride, outer_stride, r.out, outer);
  for (int y = top; y < bottom; ++y) {
    copy_three_spans(left, left + cols, r.width, r.out + static_cast<std::ptrdiff_t>(y) * r.out_stride,
                     outer + static_cast<std::ptrdiff_t>(y) * outer_stride,
                     inner + static_cast<std::ptrdiff_t>(y) * inner_stride);
  }
  if (bottom < r.height) {
    copy_block(0, r.width, r.height - bottom, r.out_stride, outer_stride,
               r.out + static_cast<std::ptrdiff_t>(bottom) * r.out_stride,
               outer + static_cast<std::ptrdiff_t>(bottom) * outer_stride);
  }
}

}  // namespace

void region_wipe_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height,
                       int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane, const uint8_t* a_plane,
                       const uint8_t* b_plane) {
  if (static_cast<uint32_t>(style) > kLastStyle) return;
  const CommonRegion r =
      wipe_region(out_width, out_height, a_width, a_height, b_width, b_height, out_plane, a_plane, b_plane);
  if (r.empty()) return;
  const int w = r.width, h = r.height;
  // A NaN progress counts as 0.
  const int rw = std::clamp(round_to_int(w * progress), 0, w);
  const int rh = std::clamp(round_to_int(h * progress), 0, h);
  switch (style) {
    case 0:  // Rectangle Open
      centred_rectangle(kernels, r, (h - rh) / 2, rh, (w - rw) / 2, rw, r.a, r.a_stride, r.b, r.b_stride);
      break;
    case 1:  // Rectangle Close: an odd margin puts the extra column and row on the right and bottom
      centred_rectangle(kernels, r, rh / 2, h - rh, rw / 2, w - rw, r.b, r.b_stride, r.a, r.a_stride);
      break;
    case 2:
      round_region(rw, rh, w, h, r.out_stride, out_height, r.a_stride, a_height, r.b_stride, b_height, r.out, r.a, r.b);
      break;
    case 3:
      // The closing circle runs through the corners of a rectangle one sample
      // smaller than the area, so at the start the extreme corners already
      // show `b` (kept as hosts expect).
      round_region(w - rw - 1, h - rh - 1, w, h, r.out_stride, out_height, r.b_stride, b_height, r.a_stride,
                   a_height, r.out, r.b, r.a);
      break;
    case 4:
      four_parts_region(0.5 - 0.5 * progress, w, h, r.out_stride, r.b_stride, r.a_stride, r.out, r.b, r.a);
      break;
    case 5:
      four_parts_region(0.5 * progress, w, h, r.out_stride, r.a_stride, r.b_stride, r.out, r.a, r.b);
      break;
    case 6:
      diamond_region(progress, w, h, r.out_stride, r.a_stride, r.b_stride, r.out, r.a, r.b);
      break;
    default:
      diamond_region(1.0 - progress, w, h, r.out_stride, r.b_stride, r.a_stride, r.out, r.b, r.a);
      break;
  }
}

int ZV_STDCALL region_based_wipe(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_wipe(out, a, b, params, [&](const RowKernels& kernels, int, double progress, auto... plane) {
    region_wipe_plane(kernels, params->style, progress, plane...);
  });
}

}  // namespace zv

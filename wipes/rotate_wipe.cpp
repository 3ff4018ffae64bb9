#include "wipes/rotate_wipe.h"

#include <cmath>

#include "wipes/shape_rows.h"
#include "wipes/wipe_entry.h"
#include "wipes/wipe_rows.h"

namespace zv {
namespace {

constexpr uint32_t kLastStyle = 7;

// Where row 0's boundary starts, how it moves per row, and which side shows `b`.
struct Wedge {
  double start;
  double step;
  bool b_on_left;
};

Wedge style_wedge(int style, int w, int h, double tan_phi, double cot_phi) {
  switch (style) {
    case 0: return {0.0, tan_phi, true};
    // Styles 1 and 6 start row 0 at its own edge, so the whole top row shows
    // `b` as soon as the wipe starts (kept as hosts expect).
    case 1: return {0.0, cot_phi, false};
    case 2: return {h * cot_phi, -cot_phi, false};
    case 3: return {h * tan_phi, -tan_phi, true};
    case 4: return {w - h * tan_phi, tan_phi, false};
    case 5: return {w - h * cot_phi, cot_phi, true};
    case 6: return {static_cast<double>(w), -cot_phi, true};
    default: return {static_cast<double>(w), -tan_phi, false};
  }
}

}  // namespace

void rotate_wipe_plane(int style, double progress, int out_width, int out_height, int a_width, int a_height,
                       int b_width, int b_height, uint8_t* out_plane, const uint8_t* a_plane, const uint8_t* b_plane) {
  if (static_cast<uint32_t>(style) > kLastStyle) return;
  const CommonRegion r =
      wipe_region(out_width, out_height, a_width, a_height, b_width, b_height, out_plane, a_plane, b_plane);
  if (r.empty()) return;
  const double phi = times_pi(progress) * 0.5;
  const double sin_phi = std::sin(phi), cos_phi = std::cos(phi);
  if (sin_phi < 1e-8) {
    copy_block(0, r.width, r.height, r.out_stride, r.a_stride, r.out, r.a);
    return;
  }
  if (cos_phi < 1e-8) {
    copy_block(0, r.width, r.height, r.out_stride, r.b_stride, r.out, r.b);
    return;
  }
  const Wedge wedge = style_wedge(style, r.width, r.height, sin_phi / cos_phi, cos_phi / sin_phi);
  // The start column is truncated before the per-row accumulation begins.
  const int x0 = truncate_to_int(wedge.start);
  if (wedge.b_on_left) {
    wedge_rows(x0, wedge.step, r.width, r.height, r.out_stride, r.b_stride, r.a_stride, r.out, r.b, r.a);
  } else {
    wedge_rows(x0, wedge.step, r.width, r.height, r.out_stride, r.a_stride, r.b_stride, r.out, r.a, r.b);
  }
}

int ZV_STDCALL rotate_based_wipe(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_wipe(out, a, b, params, [&](const RowKernels&, int, double progress, auto... plane) {
    rotate_wipe_plane(params->style, progress, plane...);
  });
}

}  // namespace zv

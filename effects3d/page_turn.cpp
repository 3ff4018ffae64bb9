#include <cmath>

#include "blends/region_views.h"
#include "effects3d/column_surface.h"
#include "effects3d/software3d.h"
#include "frame/entry.h"
#include "frame/rows.h"
#include "wipes/shape_rows.h"

namespace zv {
namespace {

enum PageTurnStyle { kLeftToRight = 0, kRightToLeft = 1 };

// Column i of a page n columns wide (counted from the spine) stands s rows
// shorter at top and bottom: its far edge shrinks by up to f at each end.
inline int page_inset(int i, double f, int n) { return truncate_to_int(i * f / n); }

}  // namespace

void page_turn_plane(const CommonRegion& r, int style, double p) {
  if (static_cast<unsigned>(style) > kRightToLeft || r.empty()) return;
  if (p <= 0.0 || p >= 1.0) {
    copy_region_picture(r, p >= 1.0);
    return;
  }
  const int w = r.width, h = r.height;
  const int c = w / 2, left_width = c, right_width = w - c;
  const double theta = times_pi(p);
  const double f = h * std::sin(theta) * 0.25;
  const bool front = std::cos(theta) > 0;
  const bool turns_right = style == kLeftToRight;
  // The spread behind the page: the turning side's far half is `b` already.
  const uint8_t* left_picture = turns_right ? r.b : r.a;
  const uint8_t* right_picture = turns_right ? r.a : r.b;
  copy_block(0, c, h, r.out_stride, turns_right ? r.b_stride : r.a_stride, r.out, left_picture);
  copy_block(c, right_width, h, r.out_stride, turns_right ? r.a_stride : r.b_stride, r.out + c, right_picture);

  // The page: its front (`a`) on its own side of the spine while it rises,
  // its back (`b`) on the other side once past the vertical.
  const bool on_right = turns_right != front;
  const int half = on_right ? right_width : left_width;
  const int n = truncate_to_int(half * std::fabs(std::cos(theta)) + 0.5);
  if (n < 1) return;
  const uint8_t* page = front ? r.a : r.b;
  const int page_stride = front ? r.a_stride : r.b_stride;
  SurfaceColumns columns;
  columns.first = on_right ? c : c - n;
  for (int j = 0; j < n; ++j) {
    // Output columns left to right; i counts from the spine.
    const int i = on_right ? j : n - 1 - j;
    const int offset = static_cast<int>(static_cast<int64_t>(i) * half / n);
    const int s = page_inset(i, f, n);
    columns.add(on_right ? c + offset : c - 1 - offset, s, h - 2 * s, 256);
  }
  draw_surface(columns, false, h, r.out_stride, page_stride, r.out, page);
}

int ZV_STDCALL page_turn_3d(Image* out, Image* a, Image* b, TransitionParams* params) {
  // Only the first two names of the list are styles of 3D Page Turn.
  return run_transition(out, a, b, params, EntryRules{ProgressClamp::kNaNShowsA, kRightToLeft},
                        [params](const PlaneJob& j) { page_turn_plane(j.region(), params->style, j.progress); });
}

}  // namespace zv

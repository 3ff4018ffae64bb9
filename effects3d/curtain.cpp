#include <algorithm>
#include <cmath>

#include "blends/region_views.h"
#include "effects3d/column_surface.h"
#include "effects3d/software3d.h"
#include "frame/entry.h"
#include "frame/rows.h"

namespace zv {
namespace {

constexpr double kTwoPi = 6.283185307179586;

// Column i of a curtain half of n visible columns, drawn from a half c
// columns wide: its source column, how far its lower end has lifted (the
// swag, rising toward the inner edge) and its pleat shade on luma.
struct CurtainColumn {
  int source, lift, shade;
};

CurtainColumn curtain_column(int i, int n, int c, int pleat, double p, int h) {
  const int source = static_cast<int>(static_cast<int64_t>(i) * c / n);
  const int lift = truncate_to_int(0.3 * p * h * (static_cast<double>(i) * i) / (static_cast<double>(n) * n));
  const int shade = 256 - truncate_to_int(80 * p * (1 - std::cos(kTwoPi * source / pleat)) / 2);
  return {source, lift, shade};
}

}  // namespace

void curtain_plane(const CommonRegion& r, double p, bool chroma) {
  if (r.empty()) return;
  const int w = r.width, h = r.height;
  const int left_half = w / 2, right_half = w - left_half;
  const int n_left = truncate_to_int((1 - p) * left_half + 0.5), n_right = truncate_to_int((1 - p) * right_half + 0.5);
  const int pleat = std::max(4, left_half / 8);  // source columns per pleat
  copy_region_picture(r, true);                 // the stage

  // Left half: column i from the left edge. Right half: the mirror image,
  // output column w - 1 - i from `a`'s column w - 1 - source.
  SurfaceColumns left, right;
  for (int i = 0; i < n_left; ++i) {
    const CurtainColumn c = curtain_column(i, n_left, left_half, pleat, p, h);
    left.add(c.source, 0, h - c.lift, c.shade);
  }
  right.first = w - n_right;
  for (int j = 0; j < n_right; ++j) {
    const CurtainColumn c = curtain_column(n_right - 1 - j, n_right, right_half, pleat, p, h);
    right.add(w - 1 - c.source, 0, h - c.lift, c.shade);
  }
  draw_surface(left, chroma, h, r.out_stride, r.a_stride, r.out, r.a);
  draw_surface(right, chroma, h, r.out_stride, r.a_stride, r.out, r.a);
}

int ZV_STDCALL curtain_3d(Image* out, Image* a, Image* b, TransitionParams* params) {
  // 3D Curtain has no styles: `style` is not read.
  return run_transition(out, a, b, params, EntryRules{},
                        [](const PlaneJob& j) { curtain_plane(j.region(), j.progress, j.chroma); });
}

}  // namespace zv

#include <algorithm>
#include <cmath>
#include <cstring>

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
  // The stage: `b` between the halves and under their lifted ends (the
  // curtains cover the rest).
  copy_block(n_left, w - n_left - n_right, h, r.out_stride, r.b_stride, r.out + n_left, r.b);
  const int lowest = std::min(left.size() ? left.height.back() : h, right.size() ? right.height.front() : h);
  for (int y = lowest; y < h; ++y) {
    // Heights fall toward each curtain's inner edge.
    const int l0 = static_cast<int>(
        std::partition_point(left.height.begin(), left.height.end(), [y](int rows) { return rows > y; }) -
        left.height.begin());
    const int r1 = static_cast<int>(
        std::partition_point(right.height.begin(), right.height.end(), [y](int rows) { return rows <= y; }) -
        right.height.begin());
    uint8_t* o = row_at(r.out, r.out_stride, y);
    const uint8_t* pb = row_at(r.b, r.b_stride, y);
    std::memcpy(o + l0, pb + l0, n_left - l0);
    std::memcpy(o + right.first, pb + right.first, r1);
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

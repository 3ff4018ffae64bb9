#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <vector>

#include "blends/image_space.h"
#include "blends/region_views.h"
#include "frame/entry.h"
#include "frame/kernel_path.h"
#include "frame/parallel_rows.h"
#include "frame/rows.h"

namespace zv {
namespace {

struct LensShape {
  double cx, cy, radius, strength;
};

LensShape lens_shape(int w, int h, double p) {
  const double cx = w / 2.0, cy = h / 2.0;
  return {cx, cy, p * std::sqrt(cx * cx + cy * cy), 1 - p};
}

// The sample of `b` seen through the lens at offset (dx, dy) from the centre,
// r away from it: magnified by 1 - s at the centre, not at all at the rim.
inline uint8_t through_lens(const CommonRegion& r, const LensShape& l, double dx, double dy, double dist) {
  const double m = (1 - l.strength) + l.strength * dist / l.radius;
  const int sx = std::clamp(floor_to_int(l.cx + dx * m), 0, r.width - 1);
  const int sy = std::clamp(floor_to_int(l.cy + dy * m), 0, r.height - 1);
  return row_at(r.b, r.b_stride, sy)[sx];
}

void lens_reference(const CommonRegion& r, const LensShape& l) {
  for (int y = 0; y < r.height; ++y) {
    uint8_t* o = row_at(r.out, r.out_stride, y);
    const uint8_t* pa = row_at(r.a, r.a_stride, y);
    for (int x = 0; x < r.width; ++x) {
      const double dx = x + 0.5 - l.cx, dy = y + 0.5 - l.cy;
      const double dist = std::sqrt(dx * dx + dy * dy);
      o[x] = dist >= l.radius ? pa[x] : through_lens(r, l, dx, dy, dist);
    }
  }
}

// Rows and columns clearly outside the lens (squared distances with a margin
// that keeps the root's decisions) are copied from `a` whole; the rows are
// split over the cores.
void lens_fast(const CommonRegion& r, const LensShape& l) {
  constexpr int kMinRowsPerPart = 64;
  const int w = r.width;
  std::vector<double> dxs(static_cast<size_t>(w)), dx2(static_cast<size_t>(w));
  for (int x = 0; x < w; ++x) {
    dxs[x] = x + 0.5 - l.cx;
    dx2[x] = dxs[x] * dxs[x];
  }
  const double outside_r = l.radius + 1e-9, outside2 = outside_r * outside_r;
  const int mid = w / 2;  // dx2 falls over [0, mid) and rises over [mid, w)
  parallel_rows(r.height, kMinRowsPerPart, [&](int, int begin, int end_row) {
    std::vector<double> dist(static_cast<size_t>(w));
    std::vector<ptrdiff_t> at(static_cast<size_t>(w));
    for (int y = begin; y < end_row; ++y) {
      uint8_t* o = row_at(r.out, r.out_stride, y);
      const uint8_t* pa = row_at(r.a, r.a_stride, y);
      const double dy = y + 0.5 - l.cy, dy2 = dy * dy;
      int x0 = 0, x1 = mid;
      while (x0 < x1) {  // first column of the left half not clearly outside
        const int m = x0 + (x1 - x0) / 2;
        if (dx2[m] + dy2 > outside2) {
          x0 = m + 1;
        } else {
          x1 = m;
        }
      }
      int lo = mid, hi = w;
      while (lo < hi) {  // first column of the right half clearly outside
        const int m = lo + (hi - lo) / 2;
        if (dx2[m] + dy2 > outside2) {
          hi = m;
        } else {
          lo = m + 1;
        }
      }
      const int end = lo;
      std::memcpy(o, pa, x0);
      // Three passes without branches: distances, then where each sample reads
      // (-1: outside the lens), then the copy.
      for (int x = x0; x < end; ++x) dist[x] = std::sqrt(dx2[x] + dy2);
      for (int x = x0; x < end; ++x) {
        const double m = (1 - l.strength) + l.strength * dist[x] / l.radius;
        const int sx = std::clamp(floor_to_int(l.cx + dxs[x] * m), 0, r.width - 1);
        const int sy = std::clamp(floor_to_int(l.cy + dy * m), 0, r.height - 1);
        at[x] = dist[x] >= l.radius ? -1 : sy * static_cast<ptrdiff_t>(r.b_stride) + sx;
      }
      for (int x = x0; x < end; ++x) o[x] = at[x] < 0 ? pa[x] : r.b[at[x]];
      std::memcpy(o + end, pa + end, w - end);
    }
  });
}

}  // namespace

void lens_plane(const CommonRegion& r, double p) {
  if (r.empty()) return;
  if (p <= 0.0 || p >= 1.0) {
    copy_region_picture(r, p >= 1.0);
    return;
  }
  const LensShape shape = lens_shape(r.width, r.height, p);
  if (use_reference_path()) {
    lens_reference(r, shape);
  } else {
    lens_fast(r, shape);
  }
}

int ZV_STDCALL lens(Image* out, Image* a, Image* b, TransitionParams* params) {
  // Lens has no styles: `style` is not read.
  return run_transition(out, a, b, params, EntryRules{}, [](const PlaneJob& j) { lens_plane(j.region(), j.progress); });
}

}  // namespace zv

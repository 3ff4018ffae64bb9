#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <vector>

#include "blends/region_views.h"
#include "effects3d/column_surface.h"
#include "effects3d/software3d.h"
#include "frame/entry.h"
#include "frame/kernel_path.h"
#include "frame/rows.h"

namespace zv {
namespace {

enum PeelStyle { kOpen = 0, kClose = 1 };

// The fold of one quarter at progress q, in the quarter's own coordinates u
// and v (distances from the lifted corner along the region): the fold line
// u / w + v / h = f moves from the corner (f = 0) to the opposite one (f = 2).
struct Fold {
  double f, qw, qh, diagonal;
};

Fold fold_of(const PeelQuadrant& g, double q) {
  return {2 * q, static_cast<double>(g.w), static_cast<double>(g.h),
          std::sqrt(static_cast<double>(g.w) * g.w + static_cast<double>(g.h) * g.h)};
}

// Where the flap over (u, v) reads the page: the sample mirrored in the fold
// line, or false where no flap lies there (the page is flat). `lift_term` is
// f w h - h u, the part of the fold distance that depends on the column.
inline bool flap_source(const Fold& fold, double u, double v, double lift_term, double* mu, double* mv) {
  const double delta = (lift_term - fold.qw * v) / fold.diagonal;
  *mu = u + 2 * delta * fold.qh / fold.diagonal;
  *mv = v + 2 * delta * fold.qw / fold.diagonal;
  return *mu > 0 && *mv > 0;
}

// The page sample a flap shows, by its mirror point, kept inside the quarter.
inline uint8_t flap_sample(const CommonRegion& r, const PeelQuadrant& g, double mu, double mv, bool chroma) {
  const int x = std::clamp(floor_to_int(g.cx + g.ex * mu), g.x0, g.x0 + g.w - 1);
  const int y = std::clamp(floor_to_int(g.cy + g.ey * mv), g.y0, g.y0 + g.h - 1);
  return paper_back(row_at(r.a, r.a_stride, y)[x], chroma);
}

void peel_quadrant_reference(const CommonRegion& r, const PeelQuadrant& g, double q, bool chroma) {
  const Fold fold = fold_of(g, q);
  for (int y = g.y0; y < g.y0 + g.h; ++y) {
    uint8_t* o = row_at(r.out, r.out_stride, y);
    const double v = g.ey * (y + 0.5 - g.cy);
    for (int x = g.x0; x < g.x0 + g.w; ++x) {
      const double u = g.ex * (x + 0.5 - g.cx);
      double mu, mv;
      if (u / fold.qw + v / fold.qh < fold.f) {
        o[x] = row_at(r.b, r.b_stride, y)[x];
      } else if (flap_source(fold, u, v, fold.f * fold.qw * fold.qh - fold.qh * u, &mu, &mv)) {
        o[x] = flap_sample(r, g, mu, mv, chroma);
      } else {
        o[x] = row_at(r.a, r.a_stride, y)[x];
      }
    }
  }
}

// Per row, in order of growing u: a run of lifted samples (span copy of
// `b`), then the samples the flap may cover (mv only falls with u), then flat
// page (span copy of `a`). The column terms are computed once per quarter and
// the flap samples in passes without branches.
void peel_quadrant_fast(const CommonRegion& r, const PeelQuadrant& g, double q, bool chroma) {
  const Fold fold = fold_of(g, q);
  const size_t w = static_cast<size_t>(g.w);
  std::vector<double> us(w), u_share(w), lift(w);
  std::vector<ptrdiff_t> at(w);
  for (int i = 0; i < g.w; ++i) {
    us[i] = g.ex * (g.x0 + i + 0.5 - g.cx);
    u_share[i] = us[i] / fold.qw;
    lift[i] = fold.f * fold.qw * fold.qh - fold.qh * us[i];
  }
  const bool from_left = g.ex > 0;  // u grows with the column
  auto column = [&](int k) { return from_left ? k : g.w - 1 - k; };
  // First k in [lo, w) of u order where keep(column) stops holding.
  auto first_not = [&](int lo, auto keep) {
    int hi = g.w;
    while (lo < hi) {
      const int m = lo + (hi - lo) / 2;
      if (keep(column(m))) {
        lo = m + 1;
      } else {
        hi = m;
      }
    }
    return lo;
  };
  for (int y = g.y0; y < g.y0 + g.h; ++y) {
    uint8_t* o = row_at(r.out, r.out_stride, y) + g.x0;
    const uint8_t* pa = row_at(r.a, r.a_stride, y) + g.x0;
    const uint8_t* pb = row_at(r.b, r.b_stride, y) + g.x0;
    const double v = g.ey * (y + 0.5 - g.cy), v_share = v / fold.qh;
    const int lifted = first_not(0, [&](int i) { return u_share[i] + v_share < fold.f; });
    const int flap_end = first_not(lifted, [&](int i) {
      double mu, mv;
      flap_source(fold, us[i], v, lift[i], &mu, &mv);
      return mv > 0;
    });
    // The three runs as column ranges.
    const int c0 = from_left ? lifted : g.w - flap_end, c1 = from_left ? flap_end : g.w - lifted;
    if (from_left) {
      std::memcpy(o, pb, lifted);
      std::memcpy(o + c1, pa + c1, g.w - c1);
    } else {
      std::memcpy(o + c1, pb + c1, lifted);
      std::memcpy(o, pa, c0);
    }
    for (int i = c0; i < c1; ++i) {
      double mu, mv;
      const bool flap = flap_source(fold, us[i], v, lift[i], &mu, &mv);
      const int sx = std::clamp(floor_to_int(g.cx + g.ex * mu), g.x0, g.x0 + g.w - 1);
      const int sy = std::clamp(floor_to_int(g.cy + g.ey * mv), g.y0, g.y0 + g.h - 1);
      at[i] = flap ? sy * static_cast<ptrdiff_t>(r.a_stride) + sx : -1;
    }
    for (int i = c0; i < c1; ++i) o[i] = at[i] < 0 ? pa[i] : paper_back(r.a[at[i]], chroma);
  }
}

// The four quarters of the area, each lifted from the centre point.
void quarters(int w, int h, PeelQuadrant out[4]) {
  const int cx = w / 2, cy = h / 2;
  out[0] = {0, 0, cx, cy, cx, cy, -1, -1};          // top-left
  out[1] = {cx, 0, w - cx, cy, cx, cy, 1, -1};      // top-right
  out[2] = {cx, cy, w - cx, h - cy, cx, cy, 1, 1};  // bottom-right
  out[3] = {0, cy, cx, h - cy, cx, cy, -1, 1};      // bottom-left
}

// Open peels `a` off `b`; Close is Open run backwards with the pictures
// exchanged, laying `b` down over `a`.
template <typename ForQuarter>
void peel_styles(const CommonRegion& region, int style, double p, ForQuarter&& for_quarter) {
  if (static_cast<unsigned>(style) > kClose || region.empty()) return;
  const CommonRegion r = style == kClose ? exchange_pictures(region) : region;
  const double q = style == kClose ? 1 - p : p;
  PeelQuadrant parts[4];
  quarters(r.width, r.height, parts);
  for (int k = 0; k < 4; ++k) for_quarter(r, parts[k], k, q);
}

}  // namespace

void peel_quadrant(const CommonRegion& r, const PeelQuadrant& g, double q, bool chroma) {
  if (g.w < 1 || g.h < 1) return;  // an empty quarter: nothing to draw, nothing to divide by
  if (use_reference_path()) {
    peel_quadrant_reference(r, g, q, chroma);
  } else {
    peel_quadrant_fast(r, g, q, chroma);
  }
}

void peel_plane(const CommonRegion& region, int style, double p, bool chroma) {
  peel_styles(region, style, p, [chroma](const CommonRegion& r, const PeelQuadrant& g, int, double q) {
    peel_quadrant(r, g, q, chroma);
  });
}

void peel_back_plane(const CommonRegion& region, int style, double p, bool chroma) {
  // Top-left, top-right, bottom-right, bottom-left, a quarter of the time each.
  peel_styles(region, style, p, [chroma](const CommonRegion& r, const PeelQuadrant& g, int k, double q) {
    peel_quadrant(r, g, std::clamp(4 * q - k, 0.0, 1.0), chroma);
  });
}

int ZV_STDCALL center_peel_3d(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_transition(out, a, b, params, EntryRules{ProgressClamp::kNaNShowsA, kClose},
                        [params](const PlaneJob& j) { peel_plane(j.region(), params->style, j.progress, j.chroma); });
}

int ZV_STDCALL peel_back_3d(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_transition(out, a, b, params, EntryRules{ProgressClamp::kNaNShowsA, kClose}, [params](const PlaneJob& j) {
    peel_back_plane(j.region(), params->style, j.progress, j.chroma);
  });
}

}  // namespace zv

#include "blends/gradient_wipe.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "blends/dissolve_rows.h"
#include "blends/random.h"
#include "frame/entry.h"
#include "frame/rows.h"

namespace zv {
namespace {

constexpr int kLastFoldedStyle = 3;

inline int draw_257() { return zv::rand() % 257; }

// Dither threshold of band index `i` over a region `size` samples long; a draw
// at or below it keeps the band's first choice.
inline int threshold(int i, int size) { return static_cast<int>(i * 256.0 / size); }

// Threshold of band column x (0..k-1 counted from the band's start). The far
// side counts down from size where the near side counts up to it; kept as is.
inline int column_threshold(int x, int k, int w, bool far_side) {
  return far_side ? threshold(w - x, w) : threshold(w - k + x, w);
}

void horizontal_band(const RowKernels& rows, const CommonRegion& r, int k, bool far_side) {
  const int w = r.width, band_start = far_side ? w - k : 0;
  const int plain_start = far_side ? 0 : k;
  std::vector<uint16_t> thresholds;
  if (!rows.reference) {
    thresholds.resize(static_cast<size_t>(k));
    for (int x = 0; x < k; ++x) thresholds[x] = static_cast<uint16_t>(column_threshold(x, k, w, far_side));
  }
  for (int row = 0; row < r.height; ++row) {
    uint8_t* o = row_at(r.out, r.out_stride, row);
    const uint8_t* s1 = row_at(r.a, r.a_stride, row);
    const uint8_t* s2 = row_at(r.b, r.b_stride, row);
    rows.copy(o + plain_start, s1 + plain_start, w - k);
    o += band_start;
    s1 += band_start;
    s2 += band_start;
    if (rows.reference) {
      for (int x = 0; x < k; ++x) o[x] = draw_257() <= column_threshold(x, k, w, far_side) ? s1[x] : s2[x];
      continue;
    }
    select_row_by_draws(rows, o, s1, s2, k, [&thresholds](int draw, int x) { return draw % 257 > thresholds[x]; });
  }
}

void vertical_band(const RowKernels& rows, const CommonRegion& r, int kr, bool far_side) {
  const int h = r.height, w = r.width, band_start = far_side ? h - kr : 0;
  for (int row = 0; row < h; ++row) {
    uint8_t* o = row_at(r.out, r.out_stride, row);
    const uint8_t* s1 = row_at(r.a, r.a_stride, row);
    const uint8_t* s2 = row_at(r.b, r.b_stride, row);
    const int y = row - band_start;
    if (y < 0 || y >= kr) {
      rows.copy(o, s1, w);
      continue;
    }
    // The near side keeps s1 at or below its threshold; the far side takes s2
    // there, counting up from the band's top: not a mirror image, kept as is.
    const int limit = far_side ? threshold(y, h) : threshold(h - kr + y, h);
    if (rows.reference) {
      for (int x = 0; x < w; ++x) o[x] = (draw_257() <= limit) != far_side ? s1[x] : s2[x];
      continue;
    }
    select_row_by_draws(rows, o, s1, s2, w, [limit, far_side](int draw, int) { return (draw % 257 <= limit) == far_side; });
  }
}

// The band of one call: how far it has grown, along which size, from which
// side, and which picture it dithers in (swapped in the second half).
struct GradientSetup {
  double t;
  bool vertical, far_side, swapped;
};

GradientSetup gradient_setup(int style, double p) {
  if (static_cast<uint32_t>(style) <= kLastFoldedStyle) {
    // The band grows from the starting edge, then b's band retreats to the far one.
    const bool first_half = p < 0.5;
    return {first_half ? 2.0 * p : 2.0 * (1.0 - p), style >= 2, (style % 2 == 1) == first_half, !first_half};
  }
  // Kept as hosts expect: the diagonal styles (and any other value) take
  // their variant from the low 32 bits of the progress value's encoding.
  uint64_t bits;
  std::memcpy(&bits, &p, sizeof bits);
  const bool variant = static_cast<uint32_t>(bits) != 0;
  return {p, variant, variant, false};
}

void gradient_wipe_plane(const PlaneJob& job, const GradientSetup& g) {
  const PlaneView& s1 = g.swapped ? job.b : job.a;
  const PlaneView& s2 = g.swapped ? job.a : job.b;
  const CommonRegion r = common_region(job.out, s1, s2);  // r.a is s1's origin, r.b is s2's
  if (r.empty()) return;
  if (g.vertical) {
    vertical_band(job.rows, r, std::clamp(truncate_to_int(r.height * g.t), 0, r.height), g.far_side);
  } else {
    horizontal_band(job.rows, r, std::clamp(truncate_to_int(r.width * g.t), 0, r.width), g.far_side);
  }
}

}  // namespace

int ZV_STDCALL gradient_wipe(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_transition(
      out, a, b, params, EntryRules{ProgressClamp::kPassNaN},
      [params](double p) { return gradient_setup(params->style, p); }, gradient_wipe_plane);
}

}  // namespace zv

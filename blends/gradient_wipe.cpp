#include "blends/gradient_wipe.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "blends/dissolve_rows.h"
#include "blends/random.h"
#include "frame/kernel_path.h"

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

void copy_row(uint8_t* out, const uint8_t* src, int n) {
  if (use_reference_path()) {
    for (int x = 0; x < n; ++x) out[x] = src[x];
  } else {
    std::memcpy(out, src, n);
  }
}

void horizontal_band(const CommonRegion& r, int k, bool far_side) {
  const int w = r.width, band_start = far_side ? w - k : 0;
  const int plain_start = far_side ? 0 : k;
  std::vector<uint16_t> thresholds;
  if (!use_reference_path()) {
    thresholds.resize(static_cast<size_t>(k));
    for (int x = 0; x < k; ++x) thresholds[x] = static_cast<uint16_t>(column_threshold(x, k, w, far_side));
  }
  for (int row = 0; row < r.height; ++row) {
    uint8_t* o = r.out + static_cast<long>(row) * r.out_stride;
    const uint8_t* s1 = r.a + static_cast<long>(row) * r.a_stride;
    const uint8_t* s2 = r.b + static_cast<long>(row) * r.b_stride;
    copy_row(o + plain_start, s1 + plain_start, w - k);
    o += band_start;
    s1 += band_start;
    s2 += band_start;
    if (use_reference_path()) {
      for (int x = 0; x < k; ++x) o[x] = draw_257() <= column_threshold(x, k, w, far_side) ? s1[x] : s2[x];
      continue;
    }
    select_row_by_draws(o, s1, s2, k, [&thresholds](int draw, int x) { return draw % 257 > thresholds[x]; });
  }
}

void vertical_band(const CommonRegion& r, int kr, bool far_side) {
  const int h = r.height, w = r.width, band_start = far_side ? h - kr : 0;
  for (int row = 0; row < h; ++row) {
    uint8_t* o = r.out + static_cast<long>(row) * r.out_stride;
    const uint8_t* s1 = r.a + static_cast<long>(row) * r.a_stride;
    const uint8_t* s2 = r.b + static_cast<long>(row) * r.b_stride;
    const int y = row - band_start;
    if (y < 0 || y >= kr) {
      copy_row(o, s1, w);
      continue;
    }
    // The near side keeps s1 at or below its threshold; the far side takes s2
    // there, counting up from the band's top: not a mirror image, kept as is.
    const int limit = far_side ? threshold(y, h) : threshold(h - kr + y, h);
    if (use_reference_path()) {
      for (int x = 0; x < w; ++x) o[x] = (draw_257() <= limit) != far_side ? s1[x] : s2[x];
      continue;
    }
    select_row_by_draws(o, s1, s2, w, [limit, far_side](int draw, int) { return (draw % 257 <= limit) == far_side; });
  }
}

}  // namespace

void gradient_wipe_plane(const PlaneView& out, const PlaneView& s1, const PlaneView& s2, double t, bool vertical,
                         bool far_side) {
  const CommonRegion r = common_region(out, s1, s2);  // r.a is s1's origin, r.b is s2's
  if (r.empty()) return;
  if (vertical) {
    vertical_band(r, std::clamp(truncate_to_int(r.height * t), 0, r.height), far_side);
  } else {
    horizontal_band(r, std::clamp(truncate_to_int(r.width * t), 0, r.width), far_side);
  }
}

int ZV_STDCALL gradient_wipe(Image* out, Image* a, Image* b, TransitionParams* params) {
  const int result = transition_prologue(out, a, b, params);
  if (result != kProceed) return result;
  const double p = clamp_progress(transition_progress(params));
  const int style = params->style;
  double t = p;
  Image* s1 = a;
  Image* s2 = b;
  bool vertical, far_side;
  if (static_cast<uint32_t>(style) <= kLastFoldedStyle) {
    // The band grows from the starting edge, then b's band retreats to the far one.
    const bool first_half = p < 0.5;
    t = first_half ? 2.0 * p : 2.0 * (1.0 - p);
    if (!first_half) std::swap(s1, s2);
    vertical = style >= 2;
    far_side = (style % 2 == 1) == first_half;
  } else {
    // Kept as hosts expect: the diagonal styles (and any other value) take
    // their variant from the low 32 bits of the progress value's encoding.
    uint64_t bits;
    std::memcpy(&bits, &p, sizeof bits);
    vertical = far_side = static_cast<uint32_t>(bits) != 0;
  }
  for (int index = kPlaneY; index <= kPlaneV; ++index) {
    gradient_wipe_plane(image_plane(out, index), image_plane(s1, index), image_plane(s2, index), t, vertical,
                        far_side);
  }
  return kTransitionDone;
}

}  // namespace zv

#include <algorithm>
#include <cstring>

#include "blends/image_space.h"
#include "frame/det_rand.h"
#include "frame/entry.h"
#include "frame/kernel_path.h"
#include "frame/rows.h"

namespace zv {
namespace {

enum WindStyle { kFromTheLeft = 0, kFromTheRight = 1 };

// How far a row has blown: each pair of luma lines (one chroma line) waits
// its own delay, below half the transition, then accelerates.
int travel_of(int value, double p, int w) {
  const double delay = 0.5 * value / 32768.0;
  const double l = std::clamp((p - delay) / 0.5, 0.0, 1.0);
  return truncate_to_int(w * l * l + 0.5);
}

void wind_row_reference(int style, int k, int w, uint8_t* o, const uint8_t* pa, const uint8_t* pb) {
  for (int x = 0; x < w; ++x) {
    if (style == kFromTheLeft) {
      o[x] = x < k ? pb[x] : pa[x - k];
    } else {
      o[x] = x >= w - k ? pb[x] : pa[x + k];
    }
  }
}

void wind_row_fast(int style, int k, int w, uint8_t* o, const uint8_t* pa, const uint8_t* pb) {
  if (style == kFromTheLeft) {
    std::memcpy(o, pb, k);
    std::memcpy(o + k, pa, w - k);
  } else {
    std::memcpy(o, pa + k, w - k);
    std::memcpy(o + w - k, pb + w - k, k);
  }
}

}  // namespace

void wind_plane(const CommonRegion& r, int style, double p, bool chroma) {
  if (static_cast<unsigned>(style) > kFromTheRight || r.empty()) return;
  // Seeded afresh for every plane: every call, on any thread, blows the same
  // rows the same way, and the chroma rows follow their luma pairs.
  DetRand rand;
  det_rand_seed(rand, kWindSeed);
  const int lines_per_value = chroma ? 1 : 2;
  const bool reference = use_reference_path();
  int k = 0;
  for (int y = 0; y < r.height; ++y) {
    if (y % lines_per_value == 0) k = travel_of(det_rand_next(rand), p, r.width);
    uint8_t* o = row_at(r.out, r.out_stride, y);
    const uint8_t* pa = row_at(r.a, r.a_stride, y);
    const uint8_t* pb = row_at(r.b, r.b_stride, y);
    if (reference) {
      wind_row_reference(style, k, r.width, o, pa, pb);
    } else {
      wind_row_fast(style, k, r.width, o, pa, pb);
    }
  }
}

int ZV_STDCALL wind(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_transition(out, a, b, params, EntryRules{ProgressClamp::kNaNShowsA, kFromTheRight},
                        [params](const PlaneJob& j) { wind_plane(j.region(), params->style, j.progress, j.chroma); });
}

}  // namespace zv

#include "blends/blend.h"

#include <algorithm>

#include "blends/blend_rows.h"
#include "frame/kernel_path.h"

namespace zv {

int square_weight(double p) { return std::clamp(truncate_to_int(p * p * 256.0), 0, 256); }

void blend_plane(const CommonRegion& r, int alpha) {
  for (int row = 0; row < r.height; ++row) {
    uint8_t* o = r.out + static_cast<long>(row) * r.out_stride;
    const uint8_t* pa = r.a + static_cast<long>(row) * r.a_stride;
    const uint8_t* pb = r.b + static_cast<long>(row) * r.b_stride;
    if (use_reference_path()) {
      for (int x = 0; x < r.width; ++x) o[x] = static_cast<uint8_t>((pa[x] * (256 - alpha) + pb[x] * alpha) >> 8);
    } else {
      blend_row(o, pa, pb, r.width, alpha);
    }
  }
}

int ZV_STDCALL blend_transition(Image* out, Image* a, Image* b, TransitionParams* params) {
  const int result = transition_prologue(out, a, b, params);
  if (result != kProceed) return result;
  const int alpha = square_weight(clamp_progress(transition_progress(params)));
  for_each_plane(out, a, b, [alpha](const CommonRegion& region, int) {
    if (!region.empty()) blend_plane(region, alpha);
  });
  return kTransitionDone;
}

}  // namespace zv

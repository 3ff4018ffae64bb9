#include "blends/mesh.h"

#include <algorithm>
#include <cstring>

#include "frame/kernel_path.h"

namespace zv {

void mesh_plane(const CommonRegion& r, double p) {
  const int W = r.width;
  // How far the rows of `a` have moved; a NaN progress moves nothing.
  const int k = std::clamp(round_to_int(W * p), 0, W);
  for (int row = 0; row < r.height; ++row) {
    uint8_t* o = r.out + static_cast<long>(row) * r.out_stride;
    const uint8_t* pa = r.a + static_cast<long>(row) * r.a_stride;
    const uint8_t* pb = r.b + static_cast<long>(row) * r.b_stride;
    // Parity counts from the region's first row in each plane, so a chroma
    // row pairs with one luma row moving left and one moving right.
    const bool even = row % 2 == 0;
    if (use_reference_path()) {
      for (int x = 0; x < k; ++x) o[x] = pb[x];
      for (int x = W - k; x < W; ++x) o[x] = pb[x];
      if (even) {
        for (int x = 0; x < W - k; ++x) o[x] = pa[x + k];
      } else {
        for (int x = k; x < W; ++x) o[x] = pa[x - k];
      }
    } else if (even) {
      std::memcpy(o, pa + k, W - k);
      std::memcpy(o + W - k, pb + W - k, k);
    } else {
      std::memcpy(o, pb, k);
      std::memcpy(o + k, pa, W - k);
    }
  }
}

int ZV_STDCALL mesh_transition(Image* out, Image* a, Image* b, TransitionParams* params) {
  const int result = transition_prologue(out, a, b, params);
  if (result != kProceed) return result;
  const double p = clamp_progress(transition_progress(params));
  // Mesh has no styles.
  for_each_plane(out, a, b, [p](const CommonRegion& region, int) {
    if (!region.empty()) mesh_plane(region, p);
  });
  return kTransitionDone;
}

}  // namespace zv

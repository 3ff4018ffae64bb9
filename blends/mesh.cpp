#include "blends/mesh.h"

#include <algorithm>

#include "frame/entry.h"
#include "frame/rows.h"

namespace zv {
namespace {

// Rows of `a` slide out sideways, even rows to the left and odd rows to the
// right, uncovering `b` behind them. Every part is a copy, so the reference
// and the fast path are one.
void mesh_plane(const RowKernels& rows, const CommonRegion& r, double p) {
  const int W = r.width;
  // How far the rows of `a` have moved; a NaN progress moves nothing.
  const int k = std::clamp(round_to_int(W * p), 0, W);
  for (int row = 0; row < r.height; ++row) {
    uint8_t* o = row_at(r.out, r.out_stride, row);
    const uint8_t* pa = row_at(r.a, r.a_stride, row);
    const uint8_t* pb = row_at(r.b, r.b_stride, row);
    // Parity counts from the region's first row in each plane, so a chroma
    // row pairs with one luma row moving left and one moving right.
    if (row % 2 == 0) {
      rows.copy(o, pa + k, W - k);
      rows.copy(o + W - k, pb + W - k, k);
    } else {
      rows.copy(o, pb, k);
      rows.copy(o + k, pa, W - k);
    }
  }
}

}  // namespace

int ZV_STDCALL mesh_transition(Image* out, Image* a, Image* b, TransitionParams* params) {
  // Mesh has no styles.
  return run_transition(out, a, b, params, EntryRules{ProgressClamp::kPassNaN}, [](const PlaneJob& job) {
    const CommonRegion region = job.region();
    if (!region.empty()) mesh_plane(job.rows, region, job.progress);
  });
}

}  // namespace zv

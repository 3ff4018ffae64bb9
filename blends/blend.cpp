#include "blends/blend.h"

#include <algorithm>

#include "frame/entry.h"
#include "frame/rows.h"

namespace zv {

int square_weight(double p) { return std::clamp(truncate_to_int(p * p * 256.0), 0, 256); }

void blend_plane(const RowKernels& rows, const CommonRegion& r, int alpha) {
  for (int row = 0; row < r.height; ++row) {
    rows.blend(row_at(r.out, r.out_stride, row), row_at(r.a, r.a_stride, row), row_at(r.b, r.b_stride, row), r.width,
               alpha);
  }
}

int ZV_STDCALL blend_transition(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_transition(out, a, b, params, EntryRules{ProgressClamp::kPassNaN}, [](const PlaneJob& job) {
    const CommonRegion region = job.region();
    if (!region.empty()) blend_plane(job.rows, region, square_weight(job.progress));
  });
}

}  // namespace zv

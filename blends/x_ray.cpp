#include "blends/x_ray.h"

#include <algorithm>

#include "frame/entry.h"
#include "frame/rows.h"

namespace zv {
namespace {

inline uint8_t clamp_sample(int v) { return static_cast<uint8_t>(std::clamp(v, 0, 255)); }

// The luma phases. Every output sample depends on one input sample: that of
// `a` before p = 0.6 and that of `b` from then on.
bool reads_b(double p) { return !(p < 0.6); }

uint8_t x_ray_sample(int a, int b, double p) {
  if (p < 0.2) {
    // Dark samples rise, bright ones fall, towards a flat grey.
    return clamp_sample(a < 128 ? a + truncate_to_int(640.0 * p) : a + truncate_to_int(-640.0 * p));
  }
  if (p < 0.5) {
    // The negative, pushed away from the middle; a negative c counts as below 128.
    const int c = truncate_to_int(255.0 * p) - a;
    return clamp_sample(c < 128 ? c + truncate_to_int(512.0 * p) : c + truncate_to_int(-512.0 * p));
  }
  if (p < 0.6) return clamp_sample(truncate_to_int(816.0 * p) - a);
  const double d = (p - 0.6) * 765.0;
  // `b` develops from white and dips up to 4 levels below itself just before
  // it snaps to itself at d = 255: part of the look, kept deliberately.
  if (d < 255.0) return clamp_sample(b - truncate_to_int(d - 250.0));
  return static_cast<uint8_t>(b);
}

void x_ray_plane(const RowKernels& rows, bool luma, double p, const CommonRegion& r) {
  if (r.empty()) return;
  if (!luma) {
    const bool from_a = p < 0.5;
    const uint8_t* source = from_a ? r.a : r.b;
    const int stride = from_a ? r.a_stride : r.b_stride;
    copy_block(0, r.width, r.height, r.out_stride, stride, r.out, source);
    return;
  }
  const bool use_b = reads_b(p);
  const uint8_t* source = use_b ? r.b : r.a;
  const int stride = use_b ? r.b_stride : r.a_stride;
  if (rows.reference) {
    for (int row = 0; row < r.height; ++row) {
      uint8_t* o = row_at(r.out, r.out_stride, row);
      const uint8_t* pa = row_at(r.a, r.a_stride, row);
      const uint8_t* pb = row_at(r.b, r.b_stride, row);
      for (int x = 0; x < r.width; ++x) o[x] = x_ray_sample(pa[x], pb[x], p);
    }
    return;
  }
  // One phase per plane: a table of the 256 possible outputs.
  uint8_t table[256];
  for (int v = 0; v < 256; ++v) table[v] = x_ray_sample(v, v, p);
  for (int row = 0; row < r.height; ++row) {
    uint8_t* o = row_at(r.out, r.out_stride, row);
    const uint8_t* s = row_at(source, stride, row);
    for (int x = 0; x < r.width; ++x) o[x] = table[s[x]];
  }
}

}  // namespace

int ZV_STDCALL x_ray(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_transition(out, a, b, params, EntryRules{ProgressClamp::kPassNaN}, [](const PlaneJob& job) {
    x_ray_plane(job.rows, !job.chroma, job.progress, job.region());
  });
}

}  // namespace zv

// What every geometric wipe's entry and plane worker share: the call sequence
// (prologue, progress clamp, one worker call per plane) and the centred area.
#pragma once

#include "frame/entry.h"

namespace zv {

// The entry sequence of the wipes (run_transition) with the wipes' worker
// shape: worker(row kernels, plane index, progress, outWidth, outHeight,
// aWidth, aHeight, bWidth, bHeight, outPlane, aPlane, bPlane), the row
// kernels being those run_transition chose for the call (their `reference`
// picks the worker's path). Returns the prologue's code or 0.
// A NaN progress (zero duration, NaN position) is not greater than 0, so it
// becomes 0 and every wipe shows `a`.
template <typename Worker>
int run_wipe(Image* out, Image* a, Image* b, TransitionParams* params, Worker&& worker,
             const EntryRules& rules = EntryRules{}) {
  return run_transition(out, a, b, params, rules, [&](const PlaneJob& j) {
    worker(j.rows, j.index, j.progress, j.out.width, j.out.height, j.a.width, j.a.height, j.b.width, j.b.height,
           j.out.data, static_cast<const uint8_t*>(j.a.data), static_cast<const uint8_t*>(j.b.data));
  });
}

// The common area of a plane worker's three planes, centred in each.
inline CommonRegion wipe_region(int out_width, int out_height, int a_width, int a_height, int b_width, int b_height,
                                uint8_t* out_plane, const uint8_t* a_plane, const uint8_t* b_plane) {
  // The views are only read through r.a and r.b, which are const.
  return common_region({out_plane, out_width, out_height}, {const_cast<uint8_t*>(a_plane), a_width, a_height},
                       {const_cast<uint8_t*>(b_plane), b_width, b_height});
}

// A travel or boundary in samples, kept inside [0, n].
inline int travel(int32_t samples, int n) { return samples < 0 ? 0 : samples > n ? n : samples; }

}  // namespace zv

// What every geometric wipe's entry and plane worker share: the call sequence
// (prologue, progress clamp, one worker call per plane) and the centred area.
#pragma once

#include "frame/plane.h"
#include "frame/transition_op.h"

namespace zv {

// The prologue, then progress clamped into [0, 1], then for the Y, U and V
// planes in that order, each with the plane's own sizes:
// worker(plane index, progress, outWidth, outHeight, aWidth, aHeight, bWidth,
// bHeight, outPlane, aPlane, bPlane). Returns the prologue's code or 0.
template <typename Worker>
int run_wipe(Image* out, Image* a, Image* b, TransitionParams* params, Worker&& worker) {
  const int result = transition_prologue(out, a, b, params);
  if (result != kProceed) return result;
  const double progress = clamp_progress(transition_progress(params));
  for (int index = kPlaneY; index <= kPlaneV; ++index) {
    const PlaneView po = image_plane(out, index), pa = image_plane(a, index), pb = image_plane(b, index);
    worker(index, progress, po.width, po.height, pa.width, pa.height, pb.width, pb.height, po.data,
           static_cast<const uint8_t*>(pa.data), static_cast<const uint8_t*>(pb.data));
  }
  return kTransitionDone;
}

// The common area of a plane worker's three planes, centred in each.
inline CommonRegion wipe_region(int out_width, int out_height, int a_width, int a_height, int b_width, int b_height,
                                uint8_t* out_plane, const uint8_t* a_plane, const uint8_t* b_plane) {
  // The views are only read through r.a and r.b, which are const.
  return common_region({out_plane, out_width, out_height}, {const_cast<uint8_t*>(a_plane), a_width, a_height},
                       {const_cast<uint8_t*>(b_plane), b_width, b_height});
}

// A travel or boundary in samples, kept inside [0, n] (a NaN progress gives 0).
inline int travel(int32_t samples, int n) { return samples < 0 ? 0 : samples > n ? n : samples; }

}  // namespace zv

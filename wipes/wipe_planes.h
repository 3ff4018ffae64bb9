// How a geometric wipe meets its planes: the entry hands each plane worker one
// plane of each image with that plane's own sizes, and the worker cuts out the
// centred common area.
#pragma once

#include <cstdint>

#include "frame/plane.h"
#include "frame/transition_op.h"

namespace zv {

// The common area of one plane of out, a and b, centred in each of them.
inline CommonRegion wipe_area(int out_width, int out_height, int a_width, int a_height, int b_width, int b_height,
                              uint8_t* out_plane, const uint8_t* a_plane, const uint8_t* b_plane) {
  // The pictures are only read; PlaneView just has no const flavour.
  return common_region(PlaneView{out_plane, out_width, out_height},
                       PlaneView{const_cast<uint8_t*>(a_plane), a_width, a_height},
                       PlaneView{const_cast<uint8_t*>(b_plane), b_width, b_height});
}

// The entry of a wipe: the common prologue, the progress clamp, then
// worker(progress, outWidth, outHeight, aWidth, aHeight, bWidth, bHeight,
// outPlane, aPlane, bPlane) for the Y, U and V planes in that order.
template <typename Worker>
int run_wipe(Image* out, Image* a, Image* b, TransitionParams* params, Worker&& worker) {
  const int result = transition_prologue(out, a, b, params);
  if (result != kProceed) return result;
  const double progress = clamp_progress(transition_progress(params));
  for (int index = kPlaneY; index <= kPlaneV; ++index) {
    const PlaneView po = image_plane(out, index), pa = image_plane(a, index), pb = image_plane(b, index);
    worker(progress, po.width, po.height, pa.width, pa.height, pb.width, pb.height, po.data, pa.data, pb.data);
  }
  return kTransitionDone;
}

}  // namespace zv

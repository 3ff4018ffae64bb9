// Gradient Wipe: a wipe whose soft edge is a band of randomly dithered samples.
#pragma once

#include "frame/plane.h"
#include "frame/transition_op.h"

namespace zv {

int ZV_STDCALL gradient_wipe(Image* out, Image* a, Image* b, TransitionParams* params);

// One plane: a band of trunc(size * t) columns (rows when `vertical`) at the
// left or top (at the right or bottom when `far_side`) dithers between `s1` and
// `s2`; the rest of the region is `s1`.
void gradient_wipe_plane(const PlaneView& out, const PlaneView& s1, const PlaneView& s2, double t, bool vertical,
                         bool far_side);

}  // namespace zv

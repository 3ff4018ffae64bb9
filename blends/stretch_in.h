// Stretch In: `b`, stretched out of one edge, fades in over `a` with Blend's
// quadratic weight.
#pragma once

#include "frame/plane.h"
#include "frame/transition_op.h"

namespace zv {

int ZV_STDCALL stretch_in(Image* out, Image* a, Image* b, TransitionParams* params);

// Style 1 anchors the stretch at the left edge, style 0 at the right; any
// other style writes nothing.
void stretch_in_plane(const PlaneView& out, const PlaneView& a, const PlaneView& b, int style, double p);

}  // namespace zv

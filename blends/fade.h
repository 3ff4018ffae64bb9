// Fade: cross-fades, fades through black and soft-edged sweeps.
#pragma once

#include "frame/plane.h"
#include "frame/transition_op.h"

namespace zv {

int ZV_STDCALL fade_transition(Image* out, Image* a, Image* b, TransitionParams* params);

// Level blend of one plane with weight k (0..256): both pictures mix; `a`
// alone fades to black; `b` alone fades up from black.
void fade_level_plane(const PlaneView& out, const PlaneView* a, const PlaneView* b, int k, bool chroma);

// Gradient sweep of one plane: `y` comes in over `x` behind a linear gradient
// that is trunc(size * t) samples wide.
void fade_gradient_plane(const PlaneView& out, const PlaneView& x, const PlaneView& y, double t, bool vertical,
                         bool reverse);

}  // namespace zv

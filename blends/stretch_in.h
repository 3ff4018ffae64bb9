// Stretch In: `b`, stretched out of one edge, fades in over `a` with Blend's
// quadratic weight.
#pragma once

#include "frame/transition_op.h"

namespace zv {

int ZV_STDCALL stretch_in(Image* out, Image* a, Image* b, TransitionParams* params);

}  // namespace zv

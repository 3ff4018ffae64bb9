// Fade: cross-fades, fades through black and soft-edged sweeps.
#pragma once

#include "frame/transition_op.h"

namespace zv {

int ZV_STDCALL fade_transition(Image* out, Image* a, Image* b, TransitionParams* params);

}  // namespace zv

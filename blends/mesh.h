// Mesh: the rows of `a` part like the teeth of two combs, even rows sliding
// out to the left and odd rows to the right, uncovering `b`.
#pragma once

#include "frame/transition_op.h"

namespace zv {

int ZV_STDCALL mesh_transition(Image* out, Image* a, Image* b, TransitionParams* params);

}  // namespace zv

// X Ray: `a` flattens to grey, turns negative and burns out to white; `b`
// develops out of the white. Chroma cuts from `a` to `b` half-way.
#pragma once

#include "frame/transition_op.h"

namespace zv {

int ZV_STDCALL x_ray(Image* out, Image* a, Image* b, TransitionParams* params);

}  // namespace zv

// Gradient Wipe: a wipe whose soft edge is a band of randomly dithered samples.
#pragma once

#include "frame/transition_op.h"

namespace zv {

int ZV_STDCALL gradient_wipe(Image* out, Image* a, Image* b, TransitionParams* params);

}  // namespace zv

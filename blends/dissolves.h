// Dissolves: Add Dissolve (a bright or dark flash), Non Add Dissolve (a
// wrapping, solarised flash) and Random Dissolve (per-sample random choice).
#pragma once

#include "frame/transition_op.h"

namespace zv {

int ZV_STDCALL add_dissolve(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL non_add_dissolve(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL random_dissolve(Image* out, Image* a, Image* b, TransitionParams* params);

}  // namespace zv

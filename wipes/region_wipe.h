// Region Based Wipe: a centred rectangle, circle, four-corner cross or diamond
// whose size follows progress shows one picture inside and the other outside.
#pragma once

#include <cstdint>

#include "frame/row_kernels.h"
#include "frame/transition_op.h"

namespace zv {

int ZV_STDCALL region_based_wipe(Image* out, Image* a, Image* b, TransitionParams* params);

void region_wipe_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height,
                       int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane, const uint8_t* a_plane,
                       const uint8_t* b_plane);

}  // namespace zv

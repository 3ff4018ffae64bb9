// Line Based Wipe: `b` appears behind a straight hard edge moving in from a
// side, or as a rectangle growing out of a corner.
#pragma once

#include <cstdint>

#include "frame/row_kernels.h"
#include "frame/transition_op.h"

namespace zv {

int ZV_STDCALL line_based_wipe(Image* out, Image* a, Image* b, TransitionParams* params);

// One plane: `b` in the style's rectangle of the centred common area, `a`
// elsewhere; a style outside 0..7 writes nothing.
void line_wipe_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height, int a_width,
                     int a_height, int b_width, int b_height, uint8_t* out_plane, const uint8_t* a_plane,
                     const uint8_t* b_plane);

}  // namespace zv

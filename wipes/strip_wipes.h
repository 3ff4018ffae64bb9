// Strip wipes: Cross Based Wipe interleaves half-bands served from opposite
// sides; Blind Based Wipe opens `b` inside every strip at once.
#pragma once

#include <cstdint>

#include "frame/row_kernels.h"
#include "frame/transition_op.h"

namespace zv {

int ZV_STDCALL cross_based_wipe(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL blind_based_wipe(Image* out, Image* a, Image* b, TransitionParams* params);

void cross_wipe_plane(int style, int n, double progress, int out_width, int out_height, int a_width, int a_height,
                      int b_width, int b_height, uint8_t* out_plane, const uint8_t* a_plane, const uint8_t* b_plane);
void blind_wipe_plane(const RowKernels& kernels, int style, int n, double progress, int out_width, int out_height,
                      int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane, const uint8_t* a_plane,
                      const uint8_t* b_plane);

}  // namespace zv

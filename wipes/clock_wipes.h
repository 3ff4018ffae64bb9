// Hands turning about a point: Clock Based Wipe turns one, two or four hands
// (or opens fans) about the centre of the picture; Center Rotate Wipe swings
// one hand through half a turn about the middle of an edge. `b` fills what
// the hands have swept.
#pragma once

#include <cstdint>

#include "frame/row_kernels.h"
#include "frame/transition_op.h"

namespace zv {

int ZV_STDCALL clock_based_wipe(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL center_rotate_wipe(Image* out, Image* a, Image* b, TransitionParams* params);

// Plane workers; a style outside 0..7 writes nothing.
void clock_wipe_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height, int a_width,
                      int a_height, int b_width, int b_height, uint8_t* out_plane, const uint8_t* a_plane,
                      const uint8_t* b_plane);
void center_rotate_wipe_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height,
                              int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane,
                              const uint8_t* a_plane, const uint8_t* b_plane);

}  // namespace zv

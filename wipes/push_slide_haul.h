// Push, Slide and Haul: whole pictures move rigidly across the frame in the
// eight directions of the line wipe. Push moves both (video black where
// neither covers), Slide moves `b` in over a still `a`, Haul pulls `a` away
// from a still `b`.
#pragma once

#include <cstdint>

#include "frame/row_kernels.h"
#include "frame/transition_op.h"

namespace zv {

int ZV_STDCALL push_based_wipe(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL slide_based_wipe(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL haul_based_wipe(Image* out, Image* a, Image* b, TransitionParams* params);

// Plane workers; a style outside 0..7 writes nothing. `fill` is what Push
// writes where neither picture covers: 16 on Y, 128 on U and V.
void push_wipe_plane(const RowKernels& kernels, uint8_t fill, int style, double progress, int out_width, int out_height,
                     int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane, const uint8_t* a_plane,
                     const uint8_t* b_plane);
void slide_wipe_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height, int a_width,
                      int a_height, int b_width, int b_height, uint8_t* out_plane, const uint8_t* a_plane,
                      const uint8_t* b_plane);
void haul_wipe_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height, int a_width,
                     int a_height, int b_width, int b_height, uint8_t* out_plane, const uint8_t* a_plane,
                     const uint8_t* b_plane);

}  // namespace zv

// The split wipes: Split and Center Split cut the picture along its centre
// lines and move the pieces, Double Slide brings `b` in as two half-height
// bands one after the other, Split Back shrinks the two halves of `a` away
// toward the middles of the side edges.
#pragma once

#include <cstdint>

#include "frame/row_kernels.h"
#include "frame/transition_op.h"

namespace zv {

int ZV_STDCALL split_wipe(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL center_split_wipe(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL double_slide_wipe(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL split_back_wipe(Image* out, Image* a, Image* b, TransitionParams* params);

// Plane workers; a style past the last one writes nothing.
void split_wipe_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height, int a_width,
                      int a_height, int b_width, int b_height, uint8_t* out_plane, const uint8_t* a_plane,
                      const uint8_t* b_plane);
void center_split_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height,
                        int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane,
                        const uint8_t* a_plane, const uint8_t* b_plane);
void double_slide_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height,
                        int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane,
                        const uint8_t* a_plane, const uint8_t* b_plane);
void split_back_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height, int a_width,
                      int a_height, int b_width, int b_height, uint8_t* out_plane, const uint8_t* a_plane,
                      const uint8_t* b_plane);

}  // namespace zv

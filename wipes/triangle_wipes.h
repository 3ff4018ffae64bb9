// The triangle wipes. Triangle Rotate swings `b` down into place about a
// bottom corner like a lid. Triangle Push and Triangle Slide cut the picture
// along a diagonal into two triangular windows; in each, `b` enters from a
// frame edge, pushing `a` along (Push) or sliding over a still `a` (Slide),
// the two windows moving in opposite directions.
#pragma once

#include <cstdint>

#include "frame/row_kernels.h"
#include "frame/transition_op.h"

namespace zv {

int ZV_STDCALL triangle_rotate_wipe(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL triangle_push_wipe(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL triangle_slide_wipe(Image* out, Image* a, Image* b, TransitionParams* params);

// Plane workers; a style past the last one writes nothing.
void triangle_rotate_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height,
                           int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane,
                           const uint8_t* a_plane, const uint8_t* b_plane);
void triangle_push_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height,
                         int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane,
                         const uint8_t* a_plane, const uint8_t* b_plane);
void triangle_slide_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height,
                          int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane,
                          const uint8_t* a_plane, const uint8_t* b_plane);

}  // namespace zv

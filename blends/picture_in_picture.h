// Picture in picture: a reduced copy of `b` pasted over `a` at a chosen place
// and size, the same for every frame of the transition. Its plane workers
// (centred copy, clipped paste) and its percentage arithmetic serve the zooms
// too.
#pragma once

#include <cstdint>

#include "imaging/scaled_image.h"
#include "frame/plane.h"
#include "frame/transition_op.h"

namespace zv {

int ZV_STDCALL picture_in_picture(Image* out, Image* a, Image* b, TransitionParams* params);

// Copies `a` (when given) into `out` over their centred common area, then
// pastes the planes of `scaled_b` (when given) with their top-left sample at
// (x, y) of `out`'s luma plane and (x / 2, y / 2) of its chroma planes.
void compose_inset(int x, int y, Image* out, const Image* a, const ScaledImage* scaled_b);

// Copies the centred common region of two planes from `source` into `out`.
void copy_centred_plane(const PlaneView& out, const PlaneView& source);

// Copies columns [c0, c1) of rows [r0, r1) of `source` so that its sample
// (r, c) lands on row top + r, column left + c of `out`; whatever falls outside
// `out`'s plane (or `source`'s) is left out.
void paste_plane(const PlaneView& out, const PlaneView& source, int64_t left, int64_t top, int c0, int c1, int r0,
                 int r1);

// A whole percentage of a frame's width, t(percent x width x 0.01 + 0.5), in
// extended precision with the single-precision constant 0.01.
int percent_of_width(int percent, int width);
// A whole percentage of a frame's height, t(f(percent x f(height) x 0.01) + 0.5)
// with f() rounding to single precision.
int percent_of_height(int percent, int height);

}  // namespace zv

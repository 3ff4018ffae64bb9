// Blend: a cross-fade whose weight follows the square of progress.
#pragma once

#include "frame/plane.h"
#include "frame/row_kernels.h"
#include "frame/transition_op.h"

namespace zv {

int ZV_STDCALL blend_transition(Image* out, Image* a, Image* b, TransitionParams* params);

// out = (a x (256 - alpha) + b x alpha) >> 8 over the common region.
void blend_plane(const RowKernels& rows, const CommonRegion& region, int alpha);

// The weight of Blend and Stretch In: t(p x p x 256), kept in 0..256 (a NaN
// progress gives 0).
int square_weight(double p);

}  // namespace zv

// 3D Door: the picture splits into two leaves hinged at the left and right
// edges; each leaf is squeezed and its inner edge drawn shorter than its hinge,
// like a door turning away. Drawn in software on the planes.
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/transition_op.h"

namespace zv {

// Style 0 "Open": `a` forms the leaves over `b`; style 1 "Close": `b` forms
// them over `a`. Writes the style into the caller's `param1`.
int ZV_STDCALL DoorTransition(Image* out, Image* a, Image* b, TransitionParams* params);

// `x` forms the leaves, `y` is revealed behind them. Returns 1 when drawn.
int DoorWorker(Image* out, Image* x, Image* y, TransitionParams* params);

// One plane: sizes of the output (w0 x h0, also its stride), of the leaves'
// plane (w1 x h1) and of the revealed plane (w2 x h2), which `out` already shows.
void DoorPlane(double p, int w0, int h0, int w1, int h1, int w2, int h2, uint8_t* out, const uint8_t* leaves,
               ptrdiff_t leaves_size);

// n columns of one leaf from a w x h source (side 1: the left half, 0: the
// right half), nearest sampling. `source_size` bytes are readable from
// `source`; samples past them read as 0.
void SqueezeLeaf(int side, int n, int w, int h, const uint8_t* source, ptrdiff_t source_size, uint8_t* target);

}  // namespace zv

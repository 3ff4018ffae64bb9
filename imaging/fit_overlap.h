// Two picture services with the transition signature: a letterbox fit of one
// frame into another, and a luma-keyed overlay of `b` over `a` (also
// registered as the transition "Overlap Alpha Blend").
#pragma once

#include <cstdint>

#include "frame/abi.h"
#include "frame/plane.h"
#include "frame/transition_op.h"

// Fits `source` into `destination` keeping its aspect ratio, black (luma 16,
// chroma 128) around it. `unused` is never read; `params` is only tested for
// null. Returns 1, always.
ZV_API int ZV_STDCALL zvTranRound(Image* destination, Image* source, Image* unused, void* params);

// Lays `b` over `a` at the opacity position / duration (a whole percentage),
// `b`'s samples near the key luma transparent. 0 only when every argument is
// null, 1 otherwise.
ZV_API int ZV_STDCALL zvTransparentOverlap(Image* out, Image* a, Image* b, TransitionParams* params);

namespace zv {

// The three ways the fit places its picture.
enum RoundMode { kRoundPillarbox = 0, kRoundLetterbox = 1, kRoundCentred = 2 };

// One plane of the fit: the fitted picture (fitted_width x fitted_height,
// packed rows) placed in `plane` by `mode`, `fill` around it, and the last
// `trim` picture rows dropped by the letterbox and centred modes.
void round_plane(const PlaneView& plane, const uint8_t* fitted, int fitted_width, int fitted_height, int mode,
                 uint8_t fill, int trim);

// The key luma of a block: the direct key (bits 16-23 of param3) when set,
// else the luma of param1's colour when its top byte is non-zero, else 0.
int overlap_key_luma(const TransitionParams* params);

// The keyed overlay on a width x height area anchored at the top-left corner
// of the three frames, in 2 x 2 luma blocks. Planes are Y, U, V.
void overlap_plane_blocks(const PlaneView out[3], const PlaneView a[3], const PlaneView b[3], int width, int height,
                          int percent, int key);

}  // namespace zv

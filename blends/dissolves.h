// Dissolves: Add Dissolve (a bright or dark flash), Non Add Dissolve (a
// wrapping, solarised flash) and Random Dissolve (per-sample random choice).
#pragma once

#include "frame/plane.h"
#include "frame/transition_op.h"

namespace zv {

int ZV_STDCALL add_dissolve(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL non_add_dissolve(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL random_dissolve(Image* out, Image* a, Image* b, TransitionParams* params);

// One plane of each, at clamped progress p, on the centred common region.
void add_dissolve_plane(const PlaneView& out, const PlaneView& a, const PlaneView& b, bool luma, int style, double p);
void non_add_dissolve_plane(const PlaneView& out, const PlaneView& a, const PlaneView& b, bool luma, double p);
void random_dissolve_plane(const PlaneView& out, const PlaneView& a, const PlaneView& b, double p);

}  // namespace zv

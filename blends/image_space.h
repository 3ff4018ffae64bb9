// The image-space effects: Obscure, Swap, Swing, Gauze, Edge Feather, Wind
// and Lens. Each entry runs its plane worker on the centred common region of
// Y, then U, then V; a style past the last one writes nothing.
#pragma once

#include "frame/plane.h"
#include "frame/transition_op.h"

namespace zv {

// Black bars drop over `a` in n staggered strips, then slide on and off,
// uncovering `b` ("Top to Bottom", "Bottom to Top").
int ZV_STDCALL obscure(Image* out, Image* a, Image* b, TransitionParams* params);
void obscure_plane(const CommonRegion& region, int style, int n, double p, bool chroma);

// The pictures shrink, pass each other sideways or vertically and grow back
// with `b` in front (four styles).
int ZV_STDCALL swap(Image* out, Image* a, Image* b, TransitionParams* params);
void swap_plane(const CommonRegion& region, int style, double p, bool chroma);

// A picture hinged at one edge swings in (`b`) or out (`a`), squeezed toward
// its hinge (four styles).
int ZV_STDCALL swing(Image* out, Image* a, Image* b, TransitionParams* params);
void swing_plane(const CommonRegion& region, int style, double p);

// `b` shows through an ordered pattern that grows denser (three styles).
int ZV_STDCALL gauze(Image* out, Image* a, Image* b, TransitionParams* params);
void gauze_plane(const CommonRegion& region, int style, double p, bool chroma);

// A soft-edged elliptic iris ("Close & Open", "Close all").
int ZV_STDCALL edge_feather(Image* out, Image* a, Image* b, TransitionParams* params);
void edge_feather_plane(const CommonRegion& region, int style, double p, bool chroma);

// Rows of `a` blow off sideways, each pair of lines at its own moment
// ("From the Left", "From the Right").
int ZV_STDCALL wind(Image* out, Image* a, Image* b, TransitionParams* params);
void wind_plane(const CommonRegion& region, int style, double p, bool chroma);

// A growing magnifying lens through which `b` is seen bulged (no styles).
int ZV_STDCALL lens(Image* out, Image* a, Image* b, TransitionParams* params);
void lens_plane(const CommonRegion& region, double p);

}  // namespace zv

// The software 3D effects beside 3D Door: 3D Roll, 3D Page Turn, 3D Center
// Peel, 3D Peel Back and 3D Curtain. Drawn on the planes column by column (or
// row by row), without OpenGL; each entry runs its plane worker on the
// centred common region of Y, then U, then V.
#pragma once

#include "frame/plane.h"
#include "frame/transition_op.h"

namespace zv {

// A picture rolled up like a carpet travels across and off the frame (Roll
// Out), or a roll of `b` unrolls over `a` (Roll In); eight directions. `pct`
// is the roll's diameter in percent of the width (or height).
int ZV_STDCALL roll_3d(Image* out, Image* a, Image* b, TransitionParams* params);
void roll_plane(const CommonRegion& region, int style, int pct, double p, bool chroma);

// One roll-out: `a` of the region is rolled up from its left edge (from the
// top when `vertical`; from the other edge when `mirrored`) at progress q,
// uncovering `b`.
void roll_out(const CommonRegion& region, bool vertical, bool mirrored, double q, int pct, bool chroma);

// A page of a two-page spread of `a` turns over about the spine, showing `b`
// on its back ("Left to Right", "Right to Left").
int ZV_STDCALL page_turn_3d(Image* out, Image* a, Image* b, TransitionParams* params);
void page_turn_plane(const CommonRegion& region, int style, double p);

// The four quarters of `a` peel back from the centre toward their corners,
// all at once (Center Peel) or one after another (Peel Back); "Open", "Close".
int ZV_STDCALL center_peel_3d(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL peel_back_3d(Image* out, Image* a, Image* b, TransitionParams* params);
void peel_plane(const CommonRegion& region, int style, double p, bool chroma);
void peel_back_plane(const CommonRegion& region, int style, double p, bool chroma);

// One quarter [x0, x0 + w) x [y0, y0 + h) of the region, its page `a` lifted
// from the corner point (cx, cy) toward the direction (ex, ey) at progress q:
// `b` where it has been lifted, the page's back where the flap lies, `a` flat
// elsewhere.
struct PeelQuadrant {
  int x0, y0, w, h;
  int cx, cy, ex, ey;
};
void peel_quadrant(const CommonRegion& region, const PeelQuadrant& quadrant, double q, bool chroma);

// `a` parts in the middle like a theatre curtain, its halves drawn aside in
// deepening pleats, revealing `b` (no styles).
int ZV_STDCALL curtain_3d(Image* out, Image* a, Image* b, TransitionParams* params);
void curtain_plane(const CommonRegion& region, double p, bool chroma);

}  // namespace zv

// The zooms: one picture, resized, grows out of or shrinks into the other.
// Zoom centres it; User-Defined Zoom moves it from a chosen point; Zoom Box
// cuts it into tiles that each grow from the centre of their own cell.
#pragma once

#include "blends/scaled_image.h"
#include "frame/plane.h"
#include "frame/transition_op.h"

namespace zv {

int ZV_STDCALL zoom_transition(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL user_defined_zoom(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL zoom_box(Image* out, Image* a, Image* b, TransitionParams* params);

// Copies `background` (when given) over the centred common region, then
// pastes `scaled` centred in `out`.
void zoom_plane(const PlaneView& out, const PlaneView* background, const PlaneView& scaled);

// Pastes `scaled` cut into nx x ny tiles, each placed as if the whole
// picture grew from (or shrank into) the centre of its own cell of `out`.
void zoom_box_plane(const PlaneView& out, const PlaneView& scaled, int nx, int ny, bool zoom_in, double p);

}  // namespace zv

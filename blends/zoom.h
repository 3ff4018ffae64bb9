// The zooms: one picture, resized, grows out of or shrinks into the other.
// Zoom centres it; User-Defined Zoom moves it from a chosen point; Zoom Box
// cuts it into tiles that each grow from the centre of their own cell.
#pragma once

#include "frame/transition_op.h"

namespace zv {

int ZV_STDCALL zoom_transition(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL user_defined_zoom(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL zoom_box(Image* out, Image* a, Image* b, TransitionParams* params);

}  // namespace zv

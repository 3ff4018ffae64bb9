// 3D Drive Off: `a` tips backwards until it lies flat like a road, then
// slides away over `b`, which stands unchanged behind it.
#pragma once

#include "frame/transition_op.h"
#include "gl/gl_renderer.h"

namespace zv {

class CDriveOffRenderer : public CGlRenderer {
 public:
  ~CDriveOffRenderer() override;
  // `style` is passed along and has no meaning for this effect; `dibB` is not drawn.
  void DrawDriveOff(int style, CNewDib& dibA, CNewDib& dibB, double p);
  void DrawDriveOffQuad(float hh, float zf, float dyb, float dyt);

  unsigned int displayList = 0;  // deleted at destruction when set; this effect makes none
};

int ZV_STDCALL DriveOffTransition(Image* out, Image* a, Image* b, TransitionParams* params);

}  // namespace zv

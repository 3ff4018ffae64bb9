// OpenGL effects that move the whole picture along the view: Cross Zoom (a
// zoom blur into `a` and out of `b`), 3D Z-Stretch (strips receding at
// different speeds) and Image Spiral (spinning away along a spiral).
#pragma once

#include "frame/transition_op.h"
#include "gl/gl_renderer.h"

namespace zv {

class CCrossZoomRenderer : public CGlRenderer {
 public:
  ~CCrossZoomRenderer() override;
  void DrawCrossZoom(CNewDib& dibA, CNewDib& dibB, double p);
};

class CZStretchRenderer : public CGlRenderer {
 public:
  ~CZStretchRenderer() override;
  void DrawZStretch(CNewDib& dibA, CNewDib& dibB, double p);
};

class CImageSpiralRenderer : public CGlRenderer {
 public:
  ~CImageSpiralRenderer() override;
  void DrawImageSpiral(CNewDib& dibA, CNewDib& dibB, double p);
};

int ZV_STDCALL CrossZoomTransition(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL ZStretchTransition(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL ImageSpiralTransition(Image* out, Image* a, Image* b, TransitionParams* params);

}  // namespace zv

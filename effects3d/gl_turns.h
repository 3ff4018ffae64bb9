// OpenGL effects that turn rigid cards and boxes: 3D Rotary Cube (a spinning
// box), 3D Flip (one two-sided card), 3D Window Grid (a grid of revolving
// panes) and 3D Projection (two halves thrown out at the viewer).
#pragma once

#include "frame/transition_op.h"
#include "gl/gl_renderer.h"

namespace zv {

class CRotaryCubeRenderer : public CGlRenderer {
 public:
  ~CRotaryCubeRenderer() override;
  void DrawRotaryCube(CNewDib& dibA, CNewDib& dibB, double p);
};

class CFlipRenderer : public CGlRenderer {
 public:
  ~CFlipRenderer() override;
  void DrawFlip(int style, CNewDib& dibA, CNewDib& dibB, double p);
};

class CWindowGridRenderer : public CGlRenderer {
 public:
  ~CWindowGridRenderer() override;
  void DrawWindowGrid(CNewDib& dibA, CNewDib& dibB, double p);
};

class CProjectionRenderer : public CGlRenderer {
 public:
  ~CProjectionRenderer() override;
  void DrawProjection(int style, CNewDib& dibA, CNewDib& dibB, double p);
};

int ZV_STDCALL RotaryCubeTransition(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL FlipTransition(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL WindowGridTransition(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL ProjectionTransition(Image* out, Image* a, Image* b, TransitionParams* params);

}  // namespace zv

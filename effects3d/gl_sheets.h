// OpenGL effects that bend or fold the picture like a sheet: 3D Flag (waves
// from a pole and flies off), 3D Fold (a paper fan), 3D Folding Box (folded
// in halves into a packet) and 3D Distort (ripples on water).
#pragma once

#include "frame/transition_op.h"
#include "gl/gl_renderer.h"

namespace zv {

class CFlagRenderer : public CGlRenderer {
 public:
  ~CFlagRenderer() override;
  void DrawFlag(CNewDib& dibA, CNewDib& dibB, double p);
};

class CFoldRenderer : public CGlRenderer {
 public:
  ~CFoldRenderer() override;
  void DrawFold(int style, CNewDib& dibA, CNewDib& dibB, double p);
};

class CFoldingBoxRenderer : public CGlRenderer {
 public:
  ~CFoldingBoxRenderer() override;
  void DrawFoldingBox(CNewDib& dibA, CNewDib& dibB, double p);
};

class CDistortRenderer : public CGlRenderer {
 public:
  ~CDistortRenderer() override;
  void DrawDistort(CNewDib& dibA, CNewDib& dibB, double p);
};

int ZV_STDCALL FlagTransition(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL FoldTransition(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL FoldingBoxTransition(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL DistortTransition(Image* out, Image* a, Image* b, TransitionParams* params);

}  // namespace zv

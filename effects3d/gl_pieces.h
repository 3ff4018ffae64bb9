// OpenGL effects that break the change into many scattered pieces, each laid
// out the same on every call by the deterministic generator: 3D Bubbles
// (bubbles showing `b`), Patch (tiles of `b` dropping into place) and 3D
// Shatter (`a` breaking like glass).
#pragma once

#include "frame/abi.h"
#include "frame/transition_op.h"
#include "gl/gl_renderer.h"

namespace zv {

class CBubblesRenderer : public CGlRenderer {
 public:
  ~CBubblesRenderer() override;
  void DrawBubbles(int style, CNewDib& dibA, CNewDib& dibB, double p);
};

class CPatchRenderer : public CGlRenderer {
 public:
  ~CPatchRenderer() override;
  void DrawPatch(CNewDib& dibA, CNewDib& dibB, double p);
};

class CShatterRenderer : public CGlRenderer {
 public:
  ~CShatterRenderer() override;
  void DrawShatter(CNewDib& dibA, CNewDib& dibB, double p);
};

int ZV_STDCALL BubblesTransition(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL PatchTransition(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL ShatterTransition(Image* out, Image* a, Image* b, TransitionParams* params);

// The order in which Patch lands its 48 tiles: entry r is the tile (8 j + i)
// of rank r.
ZV_API void patch_landing_order(int (&perm)[48]);

}  // namespace zv

// 3D Cube: `a` on the front face of a cube, `b` on its right face; the cube
// turns a quarter turn while its distance to the camera changes in three phases.
#pragma once

#include "frame/transition_op.h"
#include "gl/gl_renderer.h"

namespace zv {

class CCubeRenderer : public CGlRenderer {
 public:
  ~CCubeRenderer() override;
  void DrawCube(CNewDib& dibA, CNewDib& dibB, double p);
  // One textured quad: side 0 the front, 1 the right face.
  void DrawCubeFace(int side, float xs, float zs, float hh, float q, float zf, float bx);
};

int ZV_STDCALL CubeTransition(Image* out, Image* a, Image* b, TransitionParams* params);

}  // namespace zv

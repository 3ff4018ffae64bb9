#include "gl/gl_scene.h"

#include <algorithm>

#include "gl/gl_api.h"

namespace zv {

TexCoord FrameTexCoord(const SceneGeometry& g, double x, double y) {
  return {g.u0 + (x + g.x0) / (2 * g.x0) * (g.u1 - g.u0), g.v0 + (y + g.y0) / (2 * g.y0) * (g.v1 - g.v0)};
}

TexCoord FrameTexCoordClamped(const SceneGeometry& g, double x, double y) {
  // To the centres of the border texels: the window's own edges would sample
  // the texels just outside the frame.
  const TexCoord t = FrameTexCoord(g, x, y);
  const double half_u = g.large() ? 0.5 / g.w : 0.5 / g.s, half_v = g.large() ? 0.5 / g.h : 0.5 / g.s;
  return {std::clamp(t.u, g.u0 + half_u, g.u1 - half_u), std::clamp(t.v, g.v0 + half_v, g.v1 - half_v)};
}

void FrameVertex(const SceneGeometry& g, double tx, double ty, double x, double y, double z) {
  const TexCoord t = FrameTexCoord(g, tx, ty);
  glTexCoord2d(t.u, t.v);
  glVertex3d(x, y, z);
}

void SetColour(double r, double g, double b, double a) {
  glColor4d(r, g, b, a);
  if (a >= 1) {
    glDisable(GL_BLEND);
  } else {
    glEnable(GL_BLEND);
  }
}

void BeginFrameSpace(const SceneGeometry& g) {
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  glTranslated(0, 0, g.d + g.zq);
  SetColour(1, 1, 1, 1);
  glEnable(GL_TEXTURE_2D);
}

void DrawFrameRect(const SceneGeometry& g, double x0, double y0, double x1, double y1) {
  glBegin(GL_QUADS);
  FrameVertex(g, x0, y0, x0, y0, 0);
  FrameVertex(g, x1, y0, x1, y0, 0);
  FrameVertex(g, x1, y1, x1, y1, 0);
  FrameVertex(g, x0, y1, x0, y1, 0);
  glEnd();
}

void SetupPlain(CGlRenderer& renderer) { renderer.BeginFrameRender(); }

void SetupCulled(CGlRenderer& renderer) {
  renderer.BeginFrameRender();
  // Back faces culled, counter-clockwise front faces (OpenGL's defaults).
  glEnable(GL_CULL_FACE);
}

void BackgroundBlack(CGlRenderer& renderer, FrameDibSet&, int) { renderer.FillTargetBlack(); }
void BackgroundA(CGlRenderer& renderer, FrameDibSet& dibs, int) { renderer.ImageToTarget(dibs.dibA); }
void BackgroundB(CGlRenderer& renderer, FrameDibSet& dibs, int) { renderer.ImageToTarget(dibs.dibB); }

}  // namespace zv

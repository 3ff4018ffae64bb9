#include "effects3d/gl_recede.h"

#include <cmath>

#include "gl/gl_api.h"
#include "gl/gl_cache.h"
#include "gl/gl_scene.h"
#include "wipes/shape_rows.h"

namespace zv {
namespace {

void draw_cross_zoom(CGlRenderer& r, FrameDibSet& dibs, double p, int) {
  static_cast<CCrossZoomRenderer&>(r).DrawCrossZoom(dibs.dibA, dibs.dibB, p);
}
void draw_z_stretch(CGlRenderer& r, FrameDibSet& dibs, double p, int) {
  static_cast<CZStretchRenderer&>(r).DrawZStretch(dibs.dibA, dibs.dibB, p);
}
void draw_image_spiral(CGlRenderer& r, FrameDibSet& dibs, double p, int) {
  static_cast<CImageSpiralRenderer&>(r).DrawImageSpiral(dibs.dibA, dibs.dibB, p);
}

template <typename R>
CGlRenderer* create() {
  return new R();
}

// Black shows only at the rim of large frames.
const GlEffect kCrossZoom = {45,         kAnyStyle, create<CCrossZoomRenderer>, SetupPlain, BackgroundBlack,
                             draw_cross_zoom, nullptr};
const GlEffect kZStretch = {50,         kAnyStyle, create<CZStretchRenderer>, SetupPlain, BackgroundB,
                            draw_z_stretch, nullptr};
const GlEffect kImageSpiral = {55,         kAnyStyle, create<CImageSpiralRenderer>, SetupPlain, BackgroundB,
                               draw_image_spiral, nullptr};

}  // namespace

CCrossZoomRenderer::~CCrossZoomRenderer() { MakeCurrent(); }
CZStretchRenderer::~CZStretchRenderer() { MakeCurrent(); }
CImageSpiralRenderer::~CImageSpiralRenderer() { MakeCurrent(); }

void CCrossZoomRenderer::DrawCrossZoom(CNewDib& dibA, CNewDib& dibB, double p) {
  BeginDraw();
  const SceneGeometry g = SceneGeometryFor(dibA);
  BeginFrameSpace(g);
  // The cut to `b` happens at the strongest magnification, hidden in the blur.
  const bool first_half = p < 0.5;
  const double t = first_half ? 2 * p : 2 - 2 * p;
  const double m = 1 + 3 * t * t;
  const double spread = 0.12 * std::sin(times_pi(p));
  texture.UploadDibToTexture(first_half ? dibA : dibB);
  // Layer j takes 1 / (j + 1) of the result: the plain average of the four.
  for (int j = 0; j < 4; ++j) {
    const double mj = m * (1 + spread * j / 3);
    glPushMatrix();
    glScaled(mj, mj, 1);
    SetColour(1, 1, 1, 1.0 / (j + 1));
    DrawFrameRect(g, -g.x0, -g.y0, g.x0, g.y0);
    glPopMatrix();
  }
  SetColour(1, 1, 1, 1);
  glFlush();
}

void CZStretchRenderer::DrawZStretch(CNewDib& dibA, CNewDib&, double p) {
  BeginDraw();
  const SceneGeometry g = SceneGeometryFor(dibA);
  BeginFrameSpace(g);
  constexpr int kStrips = 16;
  const double w = 2 * g.x0 / kStrips, p4 = p * p * p * p;
  texture.UploadDibToTexture(dibA);
  // The strips are parallel, so farthest first (the right-hand ones) is exact.
  for (int i = kStrips - 1; i >= 0; --i) {
    glPushMatrix();
    glTranslated(0, 0, -105 * p4 * (1 + i / 15.0));
    DrawFrameRect(g, -g.x0 + i * w, -g.y0, -g.x0 + (i + 1) * w, g.y0);
    glPopMatrix();
  }
  glFlush();
}

void CImageSpiralRenderer::DrawImageSpiral(CNewDib& dibA, CNewDib&, double p) {
  BeginDraw();
  const SceneGeometry g = SceneGeometryFor(dibA);
  BeginFrameSpace(g);
  const double radius = 0.5 * g.x0 * std::sin(times_pi(p));
  const double orbit = times_pi(4 * p);  // two orbits
  const double p4 = p * p * p * p;
  texture.UploadDibToTexture(dibA);
  glTranslated(radius * std::cos(orbit), radius * std::sin(orbit), -110 * p4);
  glRotated(720 * p, 0, 0, 1);  // two spins, anticlockwise as seen
  DrawFrameRect(g, -g.x0, -g.y0, g.x0, g.y0);
  glFlush();
}

int ZV_STDCALL CrossZoomTransition(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_gl_transition(kCrossZoom, out, a, b, params);
}
int ZV_STDCALL ZStretchTransition(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_gl_transition(kZStretch, out, a, b, params);
}
int ZV_STDCALL ImageSpiralTransition(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_gl_transition(kImageSpiral, out, a, b, params);
}

}  // namespace zv

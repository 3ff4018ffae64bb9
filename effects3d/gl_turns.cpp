#include "effects3d/gl_turns.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "gl/gl_api.h"
#include "gl/gl_cache.h"
#include "gl/gl_scene.h"
#include "wipes/shape_rows.h"

namespace zv {
namespace {

struct Point3 {
  double x, y, z;
};

// One quad with the given corners, each showing the picture at (tx, ty).
void draw_face(const SceneGeometry& g, const Point3 (&corners)[4], const double (&tex)[4][2]) {
  glBegin(GL_QUADS);
  for (int i = 0; i < 4; ++i) FrameVertex(g, tex[i][0], tex[i][1], corners[i].x, corners[i].y, corners[i].z);
  glEnd();
}

void draw_rotary_cube(CGlRenderer& r, FrameDibSet& dibs, double p, int) {
  static_cast<CRotaryCubeRenderer&>(r).DrawRotaryCube(dibs.dibA, dibs.dibB, p);
}
void draw_flip(CGlRenderer& r, FrameDibSet& dibs, double p, int style) {
  static_cast<CFlipRenderer&>(r).DrawFlip(style, dibs.dibA, dibs.dibB, p);
}
void draw_window_grid(CGlRenderer& r, FrameDibSet& dibs, double p, int) {
  static_cast<CWindowGridRenderer&>(r).DrawWindowGrid(dibs.dibA, dibs.dibB, p);
}
void draw_projection(CGlRenderer& r, FrameDibSet& dibs, double p, int style) {
  static_cast<CProjectionRenderer&>(r).DrawProjection(style, dibs.dibA, dibs.dibB, p);
}

template <typename R>
CGlRenderer* create() {
  return new R();
}

const GlEffect kRotaryCube = {42,        kAnyStyle, create<CRotaryCubeRenderer>, SetupCulled, BackgroundBlack,
                              draw_rotary_cube, nullptr};
const GlEffect kProjection = {47, 2, create<CProjectionRenderer>, SetupPlain, BackgroundB, draw_projection, nullptr};
const GlEffect kWindowGrid = {51,        kAnyStyle, create<CWindowGridRenderer>, SetupCulled, BackgroundBlack,
                              draw_window_grid, nullptr};
const GlEffect kFlip = {58, 3, create<CFlipRenderer>, SetupCulled, BackgroundBlack, draw_flip, nullptr};

}  // namespace

CRotaryCubeRenderer::~CRotaryCubeRenderer() { MakeCurrent(); }
CFlipRenderer::~CFlipRenderer() { MakeCurrent(); }
CWindowGridRenderer::~CWindowGridRenderer() { MakeCurrent(); }
CProjectionRenderer::~CProjectionRenderer() { MakeCurrent(); }

void CRotaryCubeRenderer::DrawRotaryCube(CNewDib& dibA, CNewDib& dibB, double p) {
  BeginDraw();
  const SceneGeometry g = SceneGeometryFor(dibA);
  BeginFrameSpace(g);
  const double x0 = g.x0, y0 = g.y0, z0 = g.x0;  // every side face has the frame's shape
  const double swing = std::sin(times_pi(p));
  // Backing away while it spins keeps the box's edges from looming nearer than the screen.
  glTranslated(0, 0, -z0 - 1.5 * x0 * swing);
  glRotated(20 * swing, 1, 0, 0);  // the top edge tips toward the camera
  glRotated(-450 * p, 0, 1, 0);    // the right face comes round to the front first
  const double tex[4][2] = {{-x0, -y0}, {x0, -y0}, {x0, y0}, {-x0, y0}};
  texture.UploadDibToTexture(dibA);
  draw_face(g, {{-x0, -y0, z0}, {x0, -y0, z0}, {x0, y0, z0}, {-x0, y0, z0}}, tex);      // front
  draw_face(g, {{x0, -y0, -z0}, {-x0, -y0, -z0}, {-x0, y0, -z0}, {x0, y0, -z0}}, tex);  // back
  texture.UploadDibToTexture(dibB);
  draw_face(g, {{x0, -y0, z0}, {x0, -y0, -z0}, {x0, y0, -z0}, {x0, y0, z0}}, tex);      // right
  draw_face(g, {{-x0, -y0, -z0}, {-x0, -y0, z0}, {-x0, y0, z0}, {-x0, y0, -z0}}, tex);  // left
  // The top, untextured grey; the bottom never turns toward the camera.
  glDisable(GL_TEXTURE_2D);
  SetColour(0.35, 0.35, 0.35, 1);
  glBegin(GL_QUADS);
  glVertex3d(-x0, y0, z0);
  glVertex3d(x0, y0, z0);
  glVertex3d(x0, y0, -z0);
  glVertex3d(-x0, y0, -z0);
  glEnd();
  glEnable(GL_TEXTURE_2D);
  SetColour(1, 1, 1, 1);
  glFlush();
}

void CFlipRenderer::DrawFlip(int style, CNewDib& dibA, CNewDib& dibB, double p) {
  BeginDraw();
  const SceneGeometry g = SceneGeometryFor(dibA);
  BeginFrameSpace(g);
  const bool vertical_axis = style < 2;
  const double sign = (style == 0 || style == 2) ? 1.0 : -1.0;
  const double e = vertical_axis ? g.x0 : g.y0;
  // The leading edge stays exactly at the screen's depth.
  glTranslated(0, 0, -e * std::sin(times_pi(p)));
  glRotated(sign * 180 * p, vertical_axis ? 0 : 1, vertical_axis ? 1 : 0, 0);
  const double x0 = g.x0, y0 = g.y0;
  if (std::cos(times_pi(p)) >= 0) {
    texture.UploadDibToTexture(dibA);
    DrawFrameRect(g, -x0, -y0, x0, y0);
  } else {
    // The back: the corners in reverse order, `b` mirrored across the axis so
    // that it reads upright once turned.
    texture.UploadDibToTexture(dibB);
    const double mx = vertical_axis ? -1 : 1, my = vertical_axis ? 1 : -1;
    const double corners[4][2] = {{-x0, y0}, {x0, y0}, {x0, -y0}, {-x0, -y0}};
    glBegin(GL_QUADS);
    for (const auto& c : corners) FrameVertex(g, mx * c[0], my * c[1], c[0], c[1], 0);
    glEnd();
  }
  glFlush();
}

void CWindowGridRenderer::DrawWindowGrid(CNewDib& dibA, CNewDib& dibB, double p) {
  BeginDraw();
  const SceneGeometry g = SceneGeometryFor(dibA);
  BeginFrameSpace(g);
  const double x0 = g.x0, y0 = g.y0, hw = x0 / 8, d0 = g.d0();
  struct Pane {
    double xa, xb, ya, yb, xc, l, depth;
    int index;
  };
  std::vector<Pane> fronts, backs;
  for (int j = 0; j < 6; ++j) {
    for (int i = 0; i < 8; ++i) {
      Pane pane;
      pane.xa = -x0 + i * x0 / 4;
      pane.xb = -x0 + (i + 1) * x0 / 4;
      pane.ya = y0 - j * y0 / 3;
      pane.yb = pane.ya - y0 / 3;
      pane.xc = (pane.xa + pane.xb) / 2;
      const double delay = 0.5 * (i + j) / 12;
      pane.l = std::clamp((p - delay) / 0.5, 0.0, 1.0);
      pane.depth = -hw * std::fabs(std::sin(times_pi(pane.l)));
      pane.index = 8 * j + i;
      // The side turned toward the camera, seen from the pane's centre: off
      // the view's axis a pane shows its front past a quarter turn (or its
      // back before one) in perspective, and culling removes the other side.
      const double phi = times_pi(pane.l);
      const bool front = std::sin(phi) * -pane.xc + std::cos(phi) * (d0 - pane.depth) >= 0;
      (front ? fronts : backs).push_back(pane);
    }
  }
  // Farthest first: a turning pane overhangs its cell, so a nearer edge must
  // be drawn over a deeper one.
  auto farthest_first = [](const Pane& u, const Pane& v) {
    return u.depth != v.depth ? u.depth < v.depth : u.index < v.index;
  };
  std::sort(fronts.begin(), fronts.end(), farthest_first);
  std::sort(backs.begin(), backs.end(), farthest_first);
  auto draw = [&](const Pane& pane, bool back) {
    glPushMatrix();
    glTranslated(pane.xc, 0, -hw * std::fabs(std::sin(times_pi(pane.l))));
    glRotated(180 * pane.l, 0, 1, 0);  // the pane's left edge comes toward the camera
    glTranslated(-pane.xc, 0, 0);
    glBegin(GL_QUADS);
    if (!back) {
      FrameVertex(g, pane.xa, pane.yb, pane.xa, pane.yb, 0);
      FrameVertex(g, pane.xb, pane.yb, pane.xb, pane.yb, 0);
      FrameVertex(g, pane.xb, pane.ya, pane.xb, pane.ya, 0);
      FrameVertex(g, pane.xa, pane.ya, pane.xa, pane.ya, 0);
    } else {
      // `b` mirrored about the pane's middle, so that it reads correctly once turned.
      const double m = 2 * pane.xc;
      FrameVertex(g, m - pane.xa, pane.ya, pane.xa, pane.ya, 0);
      FrameVertex(g, m - pane.xb, pane.ya, pane.xb, pane.ya, 0);
      FrameVertex(g, m - pane.xb, pane.yb, pane.xb, pane.yb, 0);
      FrameVertex(g, m - pane.xa, pane.yb, pane.xa, pane.yb, 0);
    }
    glEnd();
    glPopMatrix();
  };
  texture.UploadDibToTexture(dibA);
  for (const Pane& pane : fronts) draw(pane, false);
  if (!backs.empty()) {
    texture.UploadDibToTexture(dibB);
    for (const Pane& pane : backs) draw(pane, true);
  }
  glFlush();
}

void CProjectionRenderer::DrawProjection(int style, CNewDib& dibA, CNewDib&, double p) {
  BeginDraw();
  const SceneGeometry g = SceneGeometryFor(dibA);
  BeginFrameSpace(g);
  const double x0 = g.x0, y0 = g.y0, alpha = 90 * p;
  struct Piece {
    int corners;
    double pts[4][2];
    double hinge[3], axis[3], angle, travel[3];
  };
  // In every piece the sign turns the inner edge (centre line or diagonal) toward the camera.
  const Piece pieces[3][2] = {
      {{4, {{-x0, -y0}, {0, -y0}, {0, y0}, {-x0, y0}}, {-x0, 0, 0}, {0, 1, 0}, -alpha, {-x0 * p, 0, 0}},
       {4, {{0, -y0}, {x0, -y0}, {x0, y0}, {0, y0}}, {x0, 0, 0}, {0, 1, 0}, alpha, {x0 * p, 0, 0}}},
      {{4, {{-x0, 0}, {x0, 0}, {x0, y0}, {-x0, y0}}, {0, y0, 0}, {1, 0, 0}, -alpha, {0, y0 * p, 0}},
       {4, {{-x0, -y0}, {x0, -y0}, {x0, 0}, {-x0, 0}}, {0, -y0, 0}, {1, 0, 0}, alpha, {0, -y0 * p, 0}}},
      {{3, {{-x0, y0}, {x0, -y0}, {x0, y0}}, {x0, y0, 0}, {x0, -y0, 0}, -alpha, {x0 * p, y0 * p, 0}},
       {3, {{-x0, y0}, {-x0, -y0}, {x0, -y0}}, {-x0, -y0, 0}, {x0, -y0, 0}, alpha, {-x0 * p, -y0 * p, 0}}},
  };
  texture.UploadDibToTexture(dibA);
  // The pieces stay on their own sides of the moving split: their order does not matter.
  for (const Piece& piece : pieces[style]) {
    glPushMatrix();
    glTranslated(piece.travel[0], piece.travel[1], piece.travel[2]);
    glTranslated(piece.hinge[0], piece.hinge[1], piece.hinge[2]);
    glRotated(piece.angle, piece.axis[0], piece.axis[1], piece.axis[2]);
    glTranslated(-piece.hinge[0], -piece.hinge[1], -piece.hinge[2]);
    glBegin(GL_POLYGON);
    for (int c = 0; c < piece.corners; ++c) {
      FrameVertex(g, piece.pts[c][0], piece.pts[c][1], piece.pts[c][0], piece.pts[c][1], 0);
    }
    glEnd();
    glPopMatrix();
  }
  glFlush();
}

int ZV_STDCALL RotaryCubeTransition(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_gl_transition(kRotaryCube, out, a, b, params);
}
int ZV_STDCALL FlipTransition(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_gl_transition(kFlip, out, a, b, params);
}
int ZV_STDCALL WindowGridTransition(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_gl_transition(kWindowGrid, out, a, b, params);
}
int ZV_STDCALL ProjectionTransition(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_gl_transition(kProjection, out, a, b, params);
}

}  // namespace zv

#include "effects3d/cube.h"

#include <algorithm>

#include "gl/gl_api.h"
#include "gl/gl_cache.h"
#include "gl/gl_scene.h"

namespace zv {
namespace {

constexpr int kCubeId = 57;
constexpr float kThird = 0.33333334f;

// One face: translated to z, then turned about the vertical axis.
struct FaceValues {
  float xs, zs, hh, q, zf, bx;
};

void draw_cube(CGlRenderer& renderer, FrameDibSet& dibs, double p, int) {
  static_cast<CCubeRenderer&>(renderer).DrawCube(dibs.dibA, dibs.dibB, p);
}

// The next frame starts on black.
void blacken_target(CGlRenderer& renderer) { renderer.FillTargetBlack(); }

CGlRenderer* create_cube() { return new CCubeRenderer(); }

const GlEffect kCubeEffect = {kCubeId, kAnyStyle, create_cube, SetupCulled, nullptr, draw_cube, blacken_target};

}  // namespace

CCubeRenderer::~CCubeRenderer() { MakeCurrent(); }

void CCubeRenderer::DrawCubeFace(int side, float xs, float zs, float hh, float q, float zf, float bx) {
  glBegin(GL_QUADS);
  if (side == 0) {
    const float z = 1 - zf;
    glTexCoord2f(0, 0);
    glVertex3f(-1 - xs, -hh, z);
    glTexCoord2f(1, 0);
    glVertex3f(1 - xs, -hh, z);
    glTexCoord2f(1, 1);
    glVertex3f(1 - xs, hh, z);
    glTexCoord2f(0, 1);
    glVertex3f(-1 - xs, hh, z);
  } else {
    const float x = 1 - bx - xs;
    const float z0 = bx * kThird - (q + 1) + zs;
    const float z1 = 1 - q + bx * kThird + zs;
    glTexCoord2f(1, 0);
    glVertex3f(x, -hh, z0);
    glTexCoord2f(1, 1);
    glVertex3f(x, hh, z0);
    glTexCoord2f(0, 1);
    glVertex3f(x, hh, z1);
    glTexCoord2f(0, 0);
    glVertex3f(x, -hh, z1);
  }
  glEnd();
}

void CCubeRenderer::DrawCube(CNewDib& dibA, CNewDib& dibB, double p) {
  BeginDraw();
  const SceneGeometry g = SceneGeometryFor(dibA);
  const int w = g.w, h = g.h;
  const double d = g.d;
  const float r = g.r, by = g.by, bx = g.bx;
  const float q = static_cast<float>(1.0 - static_cast<double>(std::min(w, h)) / std::max(w, h));
  const float theta = static_cast<float>(-(p * 90));
  const bool large = g.large();

  auto face = [&](CNewDib& dib, int side, double z, const FaceValues& v) {
    texture.UploadDibToTexture(dib);
    glPushMatrix();
    glTranslated(0, 0, z);
    glRotatef(theta, 0, 1, 0);
    DrawCubeFace(side, v.xs, v.zs, v.hh, v.q, v.zf, v.bx);
    glPopMatrix();
  };
  const FaceValues large_face = {0, 0, r, 0, 0, 0};

  if (p < 0.5) {
    const double z = d - p;
    const float xs1 = static_cast<float>(w > h ? p * 0.8 : bx * p);
    // The large front face keeps a half height of 1.0 here where every other
    // large face uses r: an asymmetry of the design, kept deliberately.
    face(dibA, 0, z, large ? FaceValues{0, 0, 1.0f, 0, 0, 0} : FaceValues{xs1, 0, 1.0f, 0, by, 0});
    face(dibB, 1, z, large ? large_face : FaceValues{xs1, 0, 1.0f, q, 0, bx});
  } else if (p < 0.77) {
    const double z = w > h ? (d - 0.5) + (p - 0.5) * 3.4 : w == h ? (d - 0.5) + (p - 0.5) : (d - 0.5) + (p - 0.5) / by;
    const float xs2 = static_cast<float>(w > h ? 2 * (p - 0.5) + 0.4 : bx * p);
    face(dibA, 0, z, large ? large_face : FaceValues{xs2, 0, 1.0f, 0, by, 0});
    face(dibB, 1, z, large ? large_face : FaceValues{xs2, 0, 1.0f, q, 0, bx});
  } else {
    const double front_z = (p - 0.5) / by + (d - 0.5);
    const float xs3 = static_cast<float>(w > h ? 2 * (p - 0.77) + 0.94 : bx * p);
    face(dibA, 0, front_z, large ? large_face : FaceValues{xs3, 0, 1.0f, 0, by, 0});
    const float zs3 = static_cast<float>(w > h ? (p - 0.77) * 0.92 : w == h ? (p - 0.77) * bx : 0.0);
    const double right_z = w > h   ? (p - 0.5) * 3.4 + (d - 0.5)
                           : w < h ? front_z
                                   : (p - 0.77) * 1.4 + (d - 0.5) + 0.27;
    face(dibB, 1, right_z, large ? FaceValues{0, zs3, r, 0, 0, 0} : FaceValues{xs3, zs3, 1.0f, q, 0, bx});
  }
  glFlush();
}

int ZV_STDCALL CubeTransition(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_gl_transition(kCubeEffect, out, a, b, params);
}

}  // namespace zv

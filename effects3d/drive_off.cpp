#include "effects3d/drive_off.h"

#include "gl/gl_api.h"
#include "gl/gl_cache.h"
#include "gl/gl_scene.h"

namespace zv {
namespace {

constexpr int kDriveOffId = 49;

void setup_drive_off(CGlRenderer& renderer) {
  renderer.BeginFrameRender();
  glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST);
}

void draw_drive_off(CGlRenderer& renderer, FrameDibSet& dibs, double p, int style) {
  static_cast<CDriveOffRenderer&>(renderer).DrawDriveOff(style, dibs.dibA, dibs.dibB, p);
}

CGlRenderer* create_drive_off() { return new CDriveOffRenderer(); }

// Everything the picture does not cover shows `b`.
const GlEffect kDriveOffEffect = {kDriveOffId, kAnyStyle,    create_drive_off, setup_drive_off,
                                  BackgroundB, draw_drive_off, nullptr};

}  // namespace

CDriveOffRenderer::~CDriveOffRenderer() {
  MakeCurrent();
  if (displayList) {
    glDeleteLists(displayList, 1);
    displayList = 0;
  }
}

void CDriveOffRenderer::DrawDriveOffQuad(float hh, float zf, float dyb, float dyt) {
  const float z = 1 - zf, bottom = -hh - dyb, top = hh - dyt;
  glBegin(GL_QUADS);
  glTexCoord2f(0, 0);
  glVertex3f(-1, bottom, z);
  glTexCoord2f(1, 0);
  glVertex3f(1, bottom, z);
  glTexCoord2f(1, 1);
  glVertex3f(1, top, z);
  glTexCoord2f(0, 1);
  glVertex3f(-1, top, z);
  glEnd();
}

void CDriveOffRenderer::DrawDriveOff(int, CNewDib& dibA, CNewDib&, double p) {
  BeginDraw();
  const SceneGeometry g = SceneGeometryFor(dibA);
  const float r = g.r, by = g.by;
  const bool large = g.large();
  // The motion in steps of one degree, 0 to 320.
  const int32_t angle = round_to_int(p * 320);

  texture.UploadDibToTexture(dibA);
  glEnable(GL_TEXTURE_2D);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  glTranslated(0, 0, g.d);
  if (angle < 270) {
    // Tipping backwards (formed in float: no overflow for any angle).
    glRotatef(360.0f - static_cast<float>(angle), 1, 0, 0);
    if (large) {
      DrawDriveOffQuad(r, 0, 0, 0);
    } else {
      DrawDriveOffQuad(1.0f, by, 0, 0);
    }
  } else if (p <= 0.95) {
    // Lying down and sliding.
    const float t = static_cast<float>(angle - 270) * 0.75f;
    glRotatef(90.0f, 1, 0, 0);
    if (large) {
      DrawDriveOffQuad(r, 1.0f, t, 0);
    } else {
      DrawDriveOffQuad(1.0f, by, t, 0);
    }
  } else {
    // Driving off. The large set is ordered differently from the small one:
    // the design, kept deliberately.
    const float u = static_cast<float>(angle - 270) * 0.65f;
    glRotatef(90.0f, 1, 0, 0);
    if (large) {
      DrawDriveOffQuad(r, u, u - 17.0f, 1.0f);
    } else {
      DrawDriveOffQuad(1.0f, by, u, u - 17.0f);
    }
  }
  glFlush();
}

int ZV_STDCALL DriveOffTransition(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_gl_transition(kDriveOffEffect, out, a, b, params);
}

}  // namespace zv

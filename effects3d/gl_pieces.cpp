#include "effects3d/gl_pieces.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "frame/det_rand.h"
#include "gl/gl_api.h"
#include "gl/gl_cache.h"
#include "gl/gl_scene.h"
#include "wipes/shape_rows.h"

namespace zv {
namespace {

constexpr double kTwoPi = 6.283185307179586;

void draw_bubbles(CGlRenderer& r, FrameDibSet& dibs, double p, int style) {
  static_cast<CBubblesRenderer&>(r).DrawBubbles(style, dibs.dibA, dibs.dibB, p);
}
void draw_patch(CGlRenderer& r, FrameDibSet& dibs, double p, int) {
  static_cast<CPatchRenderer&>(r).DrawPatch(dibs.dibA, dibs.dibB, p);
}
void draw_shatter(CGlRenderer& r, FrameDibSet& dibs, double p, int) {
  static_cast<CShatterRenderer&>(r).DrawShatter(dibs.dibA, dibs.dibB, p);
}

template <typename R>
CGlRenderer* create() {
  return new R();
}

const GlEffect kBubbles = {60, 5, create<CBubblesRenderer>, SetupPlain, BackgroundA, draw_bubbles, nullptr};
const GlEffect kPatch = {62, kAnyStyle, create<CPatchRenderer>, SetupPlain, BackgroundA, draw_patch, nullptr};
const GlEffect kShatter = {64, kAnyStyle, create<CShatterRenderer>, SetupPlain, BackgroundB, draw_shatter, nullptr};

// Rim and tint colours of the bubble styles; "Black and White" alternates its rims.
constexpr double kBubbleColours[6][3] = {
    {1, 1, 1}, {0.3, 0.5, 1.0}, {1.0, 0.3, 0.3}, {0.3, 1.0, 0.4}, {1.0, 0.95, 0.3}, {0.3, 1.0, 1.0}};

struct Vec2 {
  double x, y;
};

// Cuts a convex polygon to the picture [-x0, x0] x [-y0, y0], one edge at a time.
void clip_to_frame(std::vector<Vec2>& polygon, double x0, double y0) {
  const double limits[4][3] = {{1, 0, x0}, {-1, 0, x0}, {0, 1, y0}, {0, -1, y0}};  // n . q <= limit
  for (const auto& l : limits) {
    std::vector<Vec2> kept;
    for (size_t i = 0; i < polygon.size(); ++i) {
      const Vec2 u = polygon[i], v = polygon[(i + 1) % polygon.size()];
      const double du = l[0] * u.x + l[1] * u.y - l[2], dv = l[0] * v.x + l[1] * v.y - l[2];
      if (du <= 0) kept.push_back(u);
      if ((du < 0 && dv > 0) || (du > 0 && dv < 0)) {
        const double t = du / (du - dv);
        kept.push_back({u.x + t * (v.x - u.x), u.y + t * (v.y - u.y)});
      }
    }
    polygon.swap(kept);
    if (polygon.empty()) return;
  }
}

}  // namespace

CBubblesRenderer::~CBubblesRenderer() { MakeCurrent(); }
CPatchRenderer::~CPatchRenderer() { MakeCurrent(); }
CShatterRenderer::~CShatterRenderer() { MakeCurrent(); }

void CBubblesRenderer::DrawBubbles(int style, CNewDib& dibA, CNewDib& dibB, double p) {
  BeginDraw();
  const SceneGeometry g = SceneGeometryFor(dibA);
  BeginFrameSpace(g);
  const double x0 = g.x0, y0 = g.y0;
  texture.UploadDibToTexture(dibB);
  if (p > 0.7) {
    // `b` fades in over everything, so the end frame is `b` whatever the bubbles cover.
    SetColour(1, 1, 1, (p - 0.7) / 0.3);
    DrawFrameRect(g, -x0, -y0, x0, y0);
  }
  DetRand rng;
  det_rand_seed(rng, kBubblesSeed);
  const double magnify = 0.85 + 0.15 * p;
  for (int i = 0; i < 40; ++i) {
    const double cx = -x0 + 2 * x0 * det_rand_unit(rng);
    const double rest_y = -y0 + 2 * y0 * det_rand_unit(rng);
    const double birth = 0.6 * det_rand_unit(rng);
    const double size = 0.5 + 0.5 * det_rand_unit(rng);
    const double age = p - birth;
    if (age <= 0) continue;
    const double radius = size * 0.45 * y0 * std::min(1.0, age / 0.4);
    const double cy = rest_y + 0.5 * y0 * age;  // it rises
    double colour[3];
    for (int ch = 0; ch < 3; ++ch) {
      colour[ch] = style == 0 ? (i % 2 ? 0.0 : 1.0) : kBubbleColours[style][ch];
    }
    // The disc: `b` seen through the bubble, magnified and tinted at first.
    if (style == 0) {
      SetColour(1, 1, 1, 1);
    } else {
      SetColour(1 - 0.3 * (1 - p) * (1 - colour[0]), 1 - 0.3 * (1 - p) * (1 - colour[1]),
                1 - 0.3 * (1 - p) * (1 - colour[2]), 1);
    }
    // Each wedge of the fan is cut to the picture, so that every point of the
    // disc samples `b` by the same affine rule (no wedge is bent by a clamped
    // corner); a disc that has risen past the frame still clamps.
    for (int k = 0; k < 32; ++k) {
      std::vector<Vec2> wedge = {{cx, cy},
                                 {cx + radius * std::cos(kTwoPi * k / 32), cy + radius * std::sin(kTwoPi * k / 32)},
                                 {cx + radius * std::cos(kTwoPi * (k + 1) / 32),
                                  cy + radius * std::sin(kTwoPi * (k + 1) / 32)}};
      clip_to_frame(wedge, x0, y0);
      if (wedge.size() < 3) continue;
      glBegin(GL_POLYGON);
      for (const Vec2& q : wedge) {
        const TexCoord t = FrameTexCoordClamped(g, cx + (q.x - cx) * magnify, cy + (q.y - cy) * magnify);
        glTexCoord2d(t.u, t.v);
        glVertex3d(q.x, q.y, 0);
      }
      glEnd();
    }
    glDisable(GL_TEXTURE_2D);
    // The rim, fading out toward the end.
    SetColour(colour[0], colour[1], colour[2], 0.6 * (1 - p));
    glBegin(GL_TRIANGLE_STRIP);
    for (int k = 0; k <= 32; ++k) {
      const double c = std::cos(kTwoPi * k / 32), s = std::sin(kTwoPi * k / 32);
      glVertex3d(cx + 0.9 * radius * c, cy + 0.9 * radius * s, 0);
      glVertex3d(cx + radius * c, cy + radius * s, 0);
    }
    glEnd();
    // A small highlight up and to the left.
    const double hx = cx - 0.4 * radius, hy = cy + 0.4 * radius, hr = 0.15 * radius;
    SetColour(1, 1, 1, 0.5 * (1 - p));
    glBegin(GL_TRIANGLE_FAN);
    glVertex3d(hx, hy, 0);
    for (int k = 0; k <= 16; ++k) glVertex3d(hx + hr * std::cos(kTwoPi * k / 16), hy + hr * std::sin(kTwoPi * k / 16), 0);
    glEnd();
    glEnable(GL_TEXTURE_2D);
  }
  SetColour(1, 1, 1, 1);
  glFlush();
}

void patch_landing_order(int (&perm)[48]) {
  for (int k = 0; k < 48; ++k) perm[k] = k;
  DetRand rng;
  det_rand_seed(rng, kPatchSeed);
  for (int k = 47; k >= 1; --k) std::swap(perm[k], perm[det_rand_next(rng) % (k + 1)]);
}

void CPatchRenderer::DrawPatch(CNewDib& dibA, CNewDib& dibB, double p) {
  BeginDraw();
  const SceneGeometry g = SceneGeometryFor(dibA);
  BeginFrameSpace(g);
  const double x0 = g.x0, y0 = g.y0;
  int perm[48];
  patch_landing_order(perm);
  texture.UploadDibToTexture(dibB);
  auto tile_rect = [&](int tile, double& xa, double& ya, double& xb, double& yb) {
    const int i = tile % 8, j = tile / 8;
    xa = -x0 + i * x0 / 4;
    xb = -x0 + (i + 1) * x0 / 4;
    yb = y0 - j * y0 / 3;
    ya = yb - y0 / 3;
  };
  // The landed tiles first, then those in flight by rank (the lower ones first).
  for (int pass = 0; pass < 2; ++pass) {
    for (int rank = 0; rank < 48; ++rank) {
      const double start = 0.8 * rank / 47;
      if (p <= start) continue;
      const bool landed = p >= start + 0.2;
      if (landed != (pass == 0)) continue;
      double xa, ya, xb, yb;
      tile_rect(perm[rank], xa, ya, xb, yb);
      if (landed) {
        SetColour(1, 1, 1, 1);
        DrawFrameRect(g, xa, ya, xb, yb);
        continue;
      }
      // Dropping from near the camera, turning and fading in.
      const double l = (p - start) / 0.2, e = 1 - (1 - l) * (1 - l);
      const double xc = (xa + xb) / 2, yc = (ya + yb) / 2;
      glPushMatrix();
      glTranslated(xc, yc, 0.4 * g.d0() * (1 - e));
      glRotated(90 * (1 - e), 0, 0, 1);
      glTranslated(-xc, -yc, 0);
      SetColour(1, 1, 1, e);
      DrawFrameRect(g, xa, ya, xb, yb);
      glPopMatrix();
    }
  }
  SetColour(1, 1, 1, 1);
  glFlush();
}

void CShatterRenderer::DrawShatter(CNewDib& dibA, CNewDib&, double p) {
  BeginDraw();
  const SceneGeometry g = SceneGeometryFor(dibA);
  BeginFrameSpace(g);
  const double x0 = g.x0, y0 = g.y0, d0 = g.d0();
  DetRand rng;
  det_rand_seed(rng, kShatterSeed);
  // The crack pattern: a 12 x 9 grid whose inner vertices are jittered; the
  // border stays, so the shards tile the frame exactly.
  double vx[10][13], vy[10][13];
  for (int j = 0; j <= 9; ++j) {
    for (int i = 0; i <= 12; ++i) {
      vx[j][i] = -x0 + i * 2 * x0 / 12;
      vy[j][i] = y0 - j * 2 * y0 / 9;
      if (i > 0 && i < 12 && j > 0 && j < 9) {
        const double u = det_rand_unit(rng), u2 = det_rand_unit(rng);
        vx[j][i] += (u - 0.5) * 0.6 * 2 * x0 / 12;
        vy[j][i] += (u2 - 0.5) * 0.6 * 2 * y0 / 9;
      }
    }
  }
  struct Shard {
    double x[3], y[3];
    double cx, cy, dx, dy, dz, angle, axis[3], alpha;
    int index;
  };
  std::vector<Shard> shards;
  shards.reserve(216);
  const double diagonal = std::sqrt(x0 * x0 + y0 * y0);
  for (int j = 0; j < 9; ++j) {
    for (int i = 0; i < 12; ++i) {
      const int tl[2] = {j, i}, tr[2] = {j, i + 1}, bl[2] = {j + 1, i}, br[2] = {j + 1, i + 1};
      const bool even = (i + j) % 2 == 0;
      const int* corners[2][3] = {{tl, bl, even ? br : tr}, {even ? tl : tr, even ? br : bl, even ? tr : br}};
      for (int t = 0; t < 2; ++t) {
        Shard s;
        s.index = static_cast<int>(shards.size());
        for (int c = 0; c < 3; ++c) {
          s.x[c] = vx[corners[t][c][0]][corners[t][c][1]];
          s.y[c] = vy[corners[t][c][0]][corners[t][c][1]];
        }
        const double speed = 0.8 + 0.4 * det_rand_unit(rng);
        const double lift = 0.5 + 0.5 * det_rand_unit(rng);
        const double turn = kTwoPi * det_rand_unit(rng);
        const double rate = 180 + 360 * det_rand_unit(rng);
        const double ax = std::cos(turn), ay = std::sin(turn), az = 0.5;
        const double norm = std::sqrt(ax * ax + ay * ay + az * az);
        s.axis[0] = ax / norm;
        s.axis[1] = ay / norm;
        s.axis[2] = az / norm;
        s.cx = (s.x[0] + s.x[1] + s.x[2]) / 3;
        s.cy = (s.y[0] + s.y[1] + s.y[2]) / 3;
        const double rc = std::sqrt(s.cx * s.cx + s.cy * s.cy);
        const double nx = rc < 1e-6 ? 0.0 : s.cx / rc, ny = rc < 1e-6 ? 1.0 : s.cy / rc;
        // The cracks run outward from the centre.
        const double tau = std::max(0.0, p - 0.3 * rc / diagonal);
        s.dx = 1.5 * speed * x0 * tau * nx;
        s.dy = 1.5 * speed * x0 * tau * ny;
        s.dz = 0.8 * lift * d0 * tau;
        s.angle = rate * tau;
        s.alpha = std::clamp(1 - (tau / 0.7) * (tau / 0.7), 0.0, 1.0);
        shards.push_back(s);
      }
    }
  }
  // Farthest first, ties by creation.
  std::stable_sort(shards.begin(), shards.end(), [](const Shard& u, const Shard& v) { return u.dz < v.dz; });
  texture.UploadDibToTexture(dibA);
  for (const Shard& s : shards) {
    if (s.alpha <= 0) continue;  // a clear shard leaves the picture as it is
    glPushMatrix();
    glTranslated(s.cx + s.dx, s.cy + s.dy, s.dz);
    glRotated(s.angle, s.axis[0], s.axis[1], s.axis[2]);
    glTranslated(-s.cx, -s.cy, 0);
    SetColour(1, 1, 1, s.alpha);
    glBegin(GL_TRIANGLES);
    for (int c = 0; c < 3; ++c) FrameVertex(g, s.x[c], s.y[c], s.x[c], s.y[c], 0);
    glEnd();
    glPopMatrix();
  }
  SetColour(1, 1, 1, 1);
  glFlush();
}

int ZV_STDCALL BubblesTransition(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_gl_transition(kBubbles, out, a, b, params);
}
int ZV_STDCALL PatchTransition(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_gl_transition(kPatch, out, a, b, params);
}
int ZV_STDCALL ShatterTransition(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_gl_transition(kShatter, out, a, b, params);
}

}  // namespace zv

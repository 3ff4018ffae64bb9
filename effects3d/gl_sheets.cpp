#include "effects3d/gl_sheets.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

#include "gl/gl_api.h"
#include "gl/gl_cache.h"
#include "gl/gl_scene.h"
#include "wipes/shape_rows.h"

namespace zv {
namespace {

void draw_flag(CGlRenderer& r, FrameDibSet& dibs, double p, int) {
  static_cast<CFlagRenderer&>(r).DrawFlag(dibs.dibA, dibs.dibB, p);
}
void draw_fold(CGlRenderer& r, FrameDibSet& dibs, double p, int style) {
  static_cast<CFoldRenderer&>(r).DrawFold(style, dibs.dibA, dibs.dibB, p);
}
void draw_folding_box(CGlRenderer& r, FrameDibSet& dibs, double p, int) {
  static_cast<CFoldingBoxRenderer&>(r).DrawFoldingBox(dibs.dibA, dibs.dibB, p);
}
void draw_distort(CGlRenderer& r, FrameDibSet& dibs, double p, int) {
  static_cast<CDistortRenderer&>(r).DrawDistort(dibs.dibA, dibs.dibB, p);
}

// "Fold" uncovers `b`; "Unfold" runs it backwards over `a`.
void fold_background(CGlRenderer& r, FrameDibSet& dibs, int style) {
  r.ImageToTarget(style == 0 ? dibs.dibB : dibs.dibA);
}

template <typename R>
CGlRenderer* create() {
  return new R();
}

const GlEffect kFlag = {43, kAnyStyle, create<CFlagRenderer>, SetupPlain, BackgroundB, draw_flag, nullptr};
const GlEffect kFold = {48, 1, create<CFoldRenderer>, SetupCulled, fold_background, draw_fold, nullptr};
const GlEffect kFoldingBox = {52,         kAnyStyle, create<CFoldingBoxRenderer>, SetupPlain, BackgroundB,
                              draw_folding_box, nullptr};
const GlEffect kDistort = {61, kAnyStyle, create<CDistortRenderer>, SetupPlain, BackgroundBlack, draw_distort, nullptr};

// Strip indices by decreasing |x| of their centres (ties by index): the camera
// looks from x = 0, so a strip nearer the axis can hide one further out and
// never the reverse.
std::vector<int> outermost_first(const std::vector<double>& centres) {
  std::vector<int> order(centres.size());
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(),
                   [&](int u, int v) { return std::fabs(centres[u]) > std::fabs(centres[v]); });
  return order;
}

// A rectangle whose corner (x, y) shows the picture at (mx * x, my * y).
void draw_mapped_rect(const SceneGeometry& g, double x0, double y0, double x1, double y1, double mx, double my) {
  const double corners[4][2] = {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
  glBegin(GL_QUADS);
  for (const auto& c : corners) FrameVertex(g, mx * c[0], my * c[1], c[0], c[1], 0);
  glEnd();
}

}  // namespace

CFlagRenderer::~CFlagRenderer() { MakeCurrent(); }
CFoldRenderer::~CFoldRenderer() { MakeCurrent(); }
CFoldingBoxRenderer::~CFoldingBoxRenderer() { MakeCurrent(); }
CDistortRenderer::~CDistortRenderer() { MakeCurrent(); }

void CFlagRenderer::DrawFlag(CNewDib& dibA, CNewDib&, double p) {
  BeginDraw();
  const SceneGeometry g = SceneGeometryFor(dibA);
  BeginFrameSpace(g);
  constexpr int kStrips = 32;
  const double x0 = g.x0, y0 = g.y0;
  const double wave = std::sin(times_pi(p));
  const double amplitude = 0.12 * x0 * wave;
  const double base = 1.0 - 0.15 * wave;
  const double drift = 2.2 * x0 * p * p;
  double xr[kStrips + 1], z[kStrips + 1];
  for (int k = 0; k <= kStrips; ++k) {
    const double n = static_cast<double>(k) / kStrips;
    xr[k] = -x0 + k * 2 * x0 / kStrips;
    // One and a half waves across, travelling outward, still at the pole.
    z[k] = amplitude * n * std::sin(times_pi(2 * (1.5 * n - 2 * p)));
  }
  std::vector<double> centres(kStrips);
  for (int k = 0; k < kStrips; ++k) centres[k] = (xr[k] + xr[k + 1]) / 2 + drift;
  texture.UploadDibToTexture(dibA);
  for (int k : outermost_first(centres)) {
    // Lit where the cloth faces left, shaded where it faces right; the base
    // shade follows the wave's strength, so the flag at rest is `a` unshaded.
    const double c = std::clamp(base - 0.6 * (z[k + 1] - z[k]) / (xr[k + 1] - xr[k]), 0.5, 1.0);
    SetColour(c, c, c, 1);
    glBegin(GL_QUADS);
    FrameVertex(g, xr[k], -y0, xr[k] + drift, -y0, z[k]);
    FrameVertex(g, xr[k + 1], -y0, xr[k + 1] + drift, -y0, z[k + 1]);
    FrameVertex(g, xr[k + 1], y0, xr[k + 1] + drift, y0, z[k + 1]);
    FrameVertex(g, xr[k], y0, xr[k] + drift, y0, z[k]);
    glEnd();
  }
  SetColour(1, 1, 1, 1);
  glFlush();
}

void CFoldRenderer::DrawFold(int style, CNewDib& dibA, CNewDib& dibB, double p) {
  BeginDraw();
  const SceneGeometry g = SceneGeometryFor(dibA);
  BeginFrameSpace(g);
  constexpr int kPanels = 8;
  // "Unfold" is the fold run backwards with the pictures exchanged.
  const double q = style == 0 ? p : 1 - p;
  const double x0 = g.x0, y0 = g.y0, w = 2 * x0 / kPanels;
  const double angle = times_pi(q) * 0.5;
  // The folded stack slips off the left edge at the end, or a sliver would
  // still show on wide frames.
  const double drift = 0.25 * x0 * q * q;
  double x[kPanels + 1], z[kPanels + 1];
  for (int k = 0; k <= kPanels; ++k) {
    x[k] = -x0 - drift + k * w * std::cos(angle);
    z[k] = (k % 2) ? w * std::sin(angle) : 0.0;
  }
  std::vector<double> centres(kPanels);
  for (int k = 0; k < kPanels; ++k) centres[k] = (x[k] + x[k + 1]) / 2;
  texture.UploadDibToTexture(style == 0 ? dibA : dibB);
  for (int k : outermost_first(centres)) {
    // Panels turned away from the light darken as they fold (0.7 when
    // closed), so the flat picture at rest is unshaded.
    const double c = (k % 2) ? 1.0 - 0.3 * std::sin(angle) : 1.0;
    SetColour(c, c, c, 1);
    glBegin(GL_QUADS);
    FrameVertex(g, -x0 + k * w, -y0, x[k], -y0, z[k]);
    FrameVertex(g, -x0 + (k + 1) * w, -y0, x[k + 1], -y0, z[k + 1]);
    FrameVertex(g, -x0 + (k + 1) * w, y0, x[k + 1], y0, z[k + 1]);
    FrameVertex(g, -x0 + k * w, y0, x[k], y0, z[k]);
    glEnd();
  }
  SetColour(1, 1, 1, 1);
  glFlush();
}

void CFoldingBoxRenderer::DrawFoldingBox(CNewDib& dibA, CNewDib&, double p) {
  BeginDraw();
  const SceneGeometry g = SceneGeometryFor(dibA);
  BeginFrameSpace(g);
  constexpr double kBackGrey = 0.6;  // a side seen from behind
  const double x0 = g.x0, y0 = g.y0;
  texture.UploadDibToTexture(dibA);
  if (p < 0.3) {
    // The right half folds over onto the left half.
    const double q = p / 0.3;
    DrawFrameRect(g, -x0, -y0, 0, y0);
    const double c = std::cos(times_pi(q)) >= 0 ? 1.0 : kBackGrey;
    SetColour(c, c, c, 1);
    glRotated(-180 * q, 0, 1, 0);  // its free edge comes toward the camera and over to the left
    DrawFrameRect(g, 0, -y0, x0, y0);
  } else if (p < 0.6) {
    // The bottom of the folded sheet folds up onto its top; the visible layer
    // is the back of the right half, `a` mirrored.
    const double q = (p - 0.3) / 0.3;
    SetColour(kBackGrey, kBackGrey, kBackGrey, 1);
    draw_mapped_rect(g, -x0, 0, 0, y0, -1, 1);
    glRotated(-180 * q, 1, 0, 0);  // its lower edge comes toward the camera and up
    if (std::cos(times_pi(q)) >= 0) {
      draw_mapped_rect(g, -x0, -y0, 0, 0, -1, 1);
    } else {
      // The underside: `a`'s own bottom-left quarter seen from behind.
      draw_mapped_rect(g, -x0, -y0, 0, 0, 1, 1);
    }
  } else {
    // The quarter-size packet turns once about its centre while flying into the distance.
    const double q = (p - 0.6) / 0.4;
    SetColour(kBackGrey, kBackGrey, kBackGrey, 1);
    glTranslated(-x0 / 2 * (1 - q), y0 / 2 * (1 - q), -110 * q * q);
    glRotated(360 * q, 0, 0, 1);
    glTranslated(x0 / 2, -y0 / 2, 0);
    draw_mapped_rect(g, -x0, 0, 0, y0, 1, -1);
  }
  SetColour(1, 1, 1, 1);
  glFlush();
}

void CDistortRenderer::DrawDistort(CNewDib& dibA, CNewDib& dibB, double p) {
  BeginDraw();
  const SceneGeometry g = SceneGeometryFor(dibA);
  BeginFrameSpace(g);
  constexpr int kCols = 32, kRows = 24;
  const double x0 = g.x0, y0 = g.y0;
  const double strength = std::sin(times_pi(p));
  const double phase = times_pi(8 * p);  // four periods over the transition
  struct MeshVertex {
    double x, y, z, u, v;
  };
  std::vector<MeshVertex> mesh((kCols + 1) * (kRows + 1));
  for (int j = 0; j <= kRows; ++j) {
    for (int i = 0; i <= kCols; ++i) {
      const double x = -x0 + i * 2 * x0 / kCols, y = -y0 + j * 2 * y0 / kRows;
      const double rho = std::sqrt((x / x0) * (x / x0) + (y / y0) * (y / y0));
      const double wave = std::sin(16 * rho - phase);  // rings travelling outward
      const double gain = 1 + 0.06 * strength * wave;
      const TexCoord t = FrameTexCoordClamped(g, gain * x, gain * y);
      mesh[j * (kCols + 1) + i] = {x, y, 0.03 * strength * wave, t.u, t.v};
    }
  }
  auto draw_mesh = [&] {
    glBegin(GL_QUADS);
    for (int j = 0; j < kRows; ++j) {
      for (int i = 0; i < kCols; ++i) {
        const int corners[4] = {j * (kCols + 1) + i, j * (kCols + 1) + i + 1, (j + 1) * (kCols + 1) + i + 1,
                                (j + 1) * (kCols + 1) + i};
        for (int c : corners) {
          glTexCoord2d(mesh[c].u, mesh[c].v);
          glVertex3d(mesh[c].x, mesh[c].y, mesh[c].z);
        }
      }
    }
    glEnd();
  };
  texture.UploadDibToTexture(dibA);
  draw_mesh();
  const double beta = std::clamp((p - 0.25) / 0.5, 0.0, 1.0);
  if (beta > 0) {
    texture.UploadDibToTexture(dibB);
    SetColour(1, 1, 1, beta);
    draw_mesh();
    SetColour(1, 1, 1, 1);
  }
  glFlush();
}

int ZV_STDCALL FlagTransition(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_gl_transition(kFlag, out, a, b, params);
}
int ZV_STDCALL FoldTransition(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_gl_transition(kFold, out, a, b, params);
}
int ZV_STDCALL FoldingBoxTransition(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_gl_transition(kFoldingBox, out, a, b, params);
}
int ZV_STDCALL DistortTransition(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_gl_transition(kDistort, out, a, b, params);
}

}  // namespace zv

// The frame space the 3D effects draw in, and the pieces they share: the
// picture's texture coordinates, a flat frame rectangle, the one-time set-ups
// and the three backgrounds (black, `a`, `b`).
#pragma once

#include "gl/gl_cache.h"
#include "gl/gl_renderer.h"

namespace zv {

struct TexCoord {
  double u, v;
};

// The texture coordinate of the point (x, y) of the flat picture (v grows
// upward: the bitmaps are bottom-up).
TexCoord FrameTexCoord(const SceneGeometry& g, double x, double y);
// The same, kept inside the frame's texels (for points pushed past its edges).
TexCoord FrameTexCoordClamped(const SceneGeometry& g, double x, double y);

// One vertex at (x, y, z) showing the flat picture's point (tx, ty).
void FrameVertex(const SceneGeometry& g, double tx, double ty, double x, double y, double z);

// Starts a drawing in frame space: the model view moved by d + zq, colour
// opaque white, texturing on.
void BeginFrameSpace(const SceneGeometry& g);

// One quad at z = 0 over [x0, x1] x [y0, y1], counter-clockwise as seen from
// the camera, each corner showing its own place in the picture.
void DrawFrameRect(const SceneGeometry& g, double x0, double y0, double x1, double y1);

// The current colour. Blending (source alpha over the drawing) is on only
// while the alpha is below 1: at exactly 1 every texel of the frames' opaque
// textures comes through the blend unchanged, and the rasteriser draws much
// faster without it. Drawings start (BeginDraw) with blending set this way for
// the colour left current.
void SetColour(double r, double g, double b, double a);

// One-time set-ups: the renderer's start state, and that with back faces culled.
void SetupPlain(CGlRenderer& renderer);
void SetupCulled(CGlRenderer& renderer);

// Backgrounds: what the scene is drawn over.
void BackgroundBlack(CGlRenderer& renderer, FrameDibSet& dibs, int style);
void BackgroundA(CGlRenderer& renderer, FrameDibSet& dibs, int style);
void BackgroundB(CGlRenderer& renderer, FrameDibSet& dibs, int style);

}  // namespace zv

// The offscreen OpenGL renderer every 3D transition draws with: a context on a
// 24-bit target bitmap, one square texture through which both input frames
// reach OpenGL, and the transfers between frames and bitmaps.
#pragma once

#include <cstdint>
#include <vector>

#include "gl/level_zero.h"
#include "host/image.h"
#include "host/new_dib.h"

namespace zv {

// The frame bitmaps of one call and the frames they were made from. Where a
// frame covers its bitmap, the bitmap's pixels are made straight from the
// frame's planes by whatever reads them (a texture, the drawing surface), and
// converted into the bitmap itself only when its bytes are read there.
struct CallFrames {
  CNewDib* dibs[2] = {nullptr, nullptr};
  const Image* images[2] = {nullptr, nullptr};  // null: the bitmap holds the frame already
  // The frame a bitmap stands for this call, or null.
  const Image* ImageOf(const CNewDib& dib) const;
  // The bitmap, holding its frame's pixels (converted on first use).
  CNewDib& Pixels(CNewDib& dib);
};

// The texture of a renderer through which the frames reach OpenGL. Frames are
// uploaded centred into a square texture, or when it is 2048 on a side scaled
// to fill a level 0 of power-of-two sides exactly as the mipmap builder would
// (gl/level_zero.h). It keeps two texture objects of that size, so that within
// one call each frame is uploaded once and later only bound again.
class CGlTexture {
 public:
  CGlTexture();
  virtual ~CGlTexture();
  CGlTexture(const CGlTexture&) = delete;
  CGlTexture& operator=(const CGlTexture&) = delete;

  // `unused` is handed on by the renderer's set-up and never read.
  void CreateFrameTexture(int width, int height, int unused);
  // Binds a texture holding `frame`, copying the frame into it unless it was
  // uploaded since the last ForgetUploads.
  void UploadDibToTexture(CNewDib& frame);
  // The frames' pixels change: the next upload of each copies it again.
  void ForgetUploads();
  void DeleteFrameTexture();

  unsigned int name;  // the texture bound last; 0 when none
  int size;           // side of the square texture
  CallFrames frames;  // the frames of the call under way

 private:
  unsigned int names_[2] = {0, 0};
  const CNewDib* holds_[2] = {nullptr, nullptr};  // the frame each texture holds
  int next_ = 0;                                  // the texture the next new frame goes to
  int width_ = 0, height_ = 0;                    // the frame size the texture was made for
  LevelZeroSize level_{0, 0};                     // level 0 of the largest texture
  LevelZeroScaler scaler_;
  std::vector<uint32_t> texels_;                  // what an upload copies in, R, G, B, A
  void CopyIntoBound(CNewDib& frame);
};

// Base of every 3D effect's renderer; one per frame size, effect and thread.
class CGlRenderer {
 public:
  CGlRenderer();
  virtual ~CGlRenderer();
  CGlRenderer(const CGlRenderer&) = delete;
  CGlRenderer& operator=(const CGlRenderer&) = delete;

  // `unused` is handed on to the texture and never read (the entries pass 16).
  void SetupOffscreenGL(int width, int height, int unused);
  void ReleaseOffscreenGL();
  // Makes the context current, enables texturing and resets the model view.
  void BeginFrameRender();
  // Makes the context current on the calling thread.
  void MakeCurrent();
  // Makes the context current for drawing a frame: the drawing starts on
  // whatever colour the target holds.
  void BeginDraw();
  // Brings the drawn frame into `target` (where it is not drawn there directly).
  void ResolveTarget();
  // The frames of this call into the texture's CallFrames, and out again.
  void BindFrames(CNewDib& dibA, const Image* a, CNewDib& dibB, const Image* b);
  void ReleaseFrames();
  // The drawn frame into `out`: read back from a drawing surface apart from the
  // target straight into the planes, else through the target (ResolveTarget,
  // DibToImage). The target then holds the drawn frame, as far as the next
  // drawing can tell.
  void ResolveInto(Image* out);
  // Sets every byte of the target's rows to 0 (RGB black, video black once
  // converted); the next drawing starts on black.
  void FillTargetBlack();
  // A converted frame bitmap of the target's size copied into the target: the
  // next drawing starts on that picture. (Where the drawing surface is apart
  // from the target, the surface is loaded with the frame when drawing starts.)
  void ImageToTarget(CNewDib& frame);

  int initialised;
  void* hdc;
  void* oldBitmap;
  CNewDib target;
  void* hglrc;
  CGlTexture texture;
  int effectId;
  uint32_t threadId;
  // The target is known to hold only black, so a drawing surface apart from
  // it is cleared rather than loaded from it. A new target holds only zeros.
  bool targetBlack = true;

 private:
  // Whether frames reach the drawing surface as R, G, B, A rows rather than
  // through the target bitmap (a context was made, on a surface of its own).
  bool DrawsApart() const;
  // Where the surface is apart: what the target holds, to be loaded when the
  // drawing starts, unless the surface holds it already.
  CNewDib* targetFrame_ = nullptr;
  bool surfaceHoldsTarget_ = false;
  std::vector<uint8_t> transfer_;  // R, G, B, A pixels on their way to or from the surface
};

// Side of the square texture for a frame whose larger side is n: never past 2048.
int TextureSizeFor(int n);
// The z translation at which a full-frame quad fills the view, for texture
// side `s` and frame size `w` x `h`.
double CameraDistanceFor(int s, int w, int h);

// What the effects derive from a frame bitmap of w x h: the texture side s,
// the camera distance d, r = h / w, and the fractions of the texture the
// centred frame leaves uncovered vertically (by) and horizontally (bx).
// The frame space of the newer effects: the picture at rest covers
// [-x0, x0] x [-y0, y0] of the plane z = 0 once the model view is moved by
// d + zq, and its texels lie in the window [u0, u1] x [v0, v1] of the texture.
struct SceneGeometry {
  int w, h, s;
  double d;
  float r, by, bx;
  double x0, y0, zq;
  double u0, u1, v0, v1;
  bool large() const { return s > 1024; }  // the frame fills the texture, rescaled
  // The camera's distance in front of the frame plane.
  double d0() const { return -(d + zq); }
};
SceneGeometry SceneGeometryFor(const CNewDib& frame);

// A frame into a 24-bit bitmap (created `width` x `height` on first use), and back.
void ImageToDib(const Image* image, CNewDib& dib, int width, int height);
void DibToImage(CNewDib& dib, Image* image);
// A call's frame and its bitmap: the bitmap created `width` x `height` on
// first use; the frame returned when it covers the bitmap (its pixels then made
// from it when read), else converted into the bitmap now and null returned.
const Image* PrepareFrameDib(const Image* image, CNewDib& dib, int width, int height);

}  // namespace zv

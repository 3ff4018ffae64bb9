#include "gl/gl_renderer.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <vector>

#include "gl/frame_transfer.h"
#include "gl/gl_api.h"
#include "gl/offscreen_context.h"
#include "imaging/yuv_rgb.h"

namespace zv {
namespace {

// Single-precision constants of the camera distance (bit patterns noted),
// widened to double as the arithmetic uses them.
constexpr double kK1 = 0x1.b1b1b0p-9f;       // 0x3B58D8D8
constexpr double kK2 = 0x1.b1b1b0p-8f;       // 0x3BD8D8D8
constexpr double kK3 = 0x1.333334p-10f;      // 0x3A99999A
constexpr double kK3Low = 0x1.333332p-10f;   // 0x3A999999: one unit lower, deliberately distinct
constexpr double kK4 = 0x1.e66666p-10f;      // 0x3AF33333
constexpr double kSingle17 = 0x1.b33334p+0f;  // 1.7f
constexpr double kSingle34 = 0x1.b33334p+1f;  // 3.4f
constexpr double kNearPlane = static_cast<double>(0.1f);  // the single-precision 0.1, widened: kept

int dib_width(const CNewDib& dib) { return dib.m_pInfo ? dib.m_pInfo->biWidth : 0; }
int dib_height(const CNewDib& dib) { return dib.m_pInfo ? dib.m_pInfo->biHeight : 0; }

void convert_image(const Image* image, const BITMAPINFOHEADER* header, uint8_t* pixels) {
  Yuv420_2_rgb24(header, pixels, image->get_Y(), image->get_U(), image->get_V(), image->width, image->width / 2,
                 image->width / 2);
}

}  // namespace

const Image* CallFrames::ImageOf(const CNewDib& dib) const {
  for (int i = 0; i < 2; ++i) {
    if (dibs[i] == &dib) return images[i];
  }
  return nullptr;
}

CNewDib& CallFrames::Pixels(CNewDib& dib) {
  for (int i = 0; i < 2; ++i) {
    if (dibs[i] != &dib || !images[i]) continue;
    ImageToDib(images[i], dib, dib_width(dib), dib_height(dib));
    images[i] = nullptr;  // the bitmap holds it now
  }
  return dib;
}

CGlTexture::CGlTexture() : name(0), size(0) {}

CGlTexture::~CGlTexture() { DeleteFrameTexture(); }

void CGlTexture::CreateFrameTexture(int width, int height, int) {
  width_ = width;
  height_ = height;
  size = TextureSizeFor(std::max(width, height));
  GLsizei texture_width = size, texture_height = size;
  std::vector<uint8_t> black;
  if (size > 1024) {
    // Every upload fills the whole of level 0: it starts undefined.
    level_ = mipmap_level_zero_size(width, height);
    scaler_.Prepare(width, height, level_);
    texture_width = level_.width;
    texture_height = level_.height;
  } else {
    // The texels around the centred frame are never meant to be seen; black
    // keeps them the same from run to run. Opaque, as an RGB texture samples.
    black.assign(static_cast<size_t>(size) * size * 4, 0);
    for (size_t i = 3; i < black.size(); i += 4) black[i] = 255;
  }
  GLuint texture_names[2] = {0, 0};
  glGenTextures(2, texture_names);
  for (int i = 0; i < 2; ++i) {
    names_[i] = texture_names[i];
    glBindTexture(GL_TEXTURE_2D, names_[i]);
    // Nearest sampling both ways: level 0 is the only level ever sampled, kept as designed.
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    // Four bytes a texel: frames reach it without a conversion inside OpenGL.
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, texture_width, texture_height, 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 black.empty() ? nullptr : black.data());
  }
  name = names_[0];
  ForgetUploads();
}

void CGlTexture::ForgetUploads() {
  holds_[0] = holds_[1] = nullptr;
  next_ = 0;
}

void CGlTexture::UploadDibToTexture(CNewDib& frame) {
  const int held = holds_[0] == &frame ? 0 : holds_[1] == &frame ? 1 : -1;
  const int slot = held >= 0 ? held : next_;
  name = names_[slot];
  glBindTexture(GL_TEXTURE_2D, name);
  if (held >= 0) return;
  holds_[slot] = &frame;
  next_ = 1 - slot;
  CopyIntoBound(frame);
}

void CGlTexture::CopyIntoBound(CNewDib& frame) {
  const Image* image = frames.ImageOf(frame);
  if (!image && !frame.m_hBits) return;
  const FrameRows rows = image ? FrameRows(*image, dib_width(frame), dib_height(frame)) : FrameRows(frame);
  if (size > 1024) {
    // The largest texture takes the frame scaled to fill its level 0.
    texels_.resize(static_cast<size_t>(level_.width) * level_.height);
    if (rows.width() != width_ || rows.height() != height_) return;
    scaler_.Fill(rows, texels_.data());
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, level_.width, level_.height, GL_RGBA, GL_UNSIGNED_BYTE, texels_.data());
    return;
  }
  // Centred, bitmap row 0 lowest; only as much as the texture was made for.
  const int rows_in = std::min(rows.height(), height_), cols = std::min(rows.width(), width_);
  if (rows_in <= 0 || cols <= 0) return;
  texels_.resize(static_cast<size_t>(rows.width()) * rows.height());
  frame_rows_to_rgba(rows, reinterpret_cast<uint8_t*>(texels_.data()), static_cast<ptrdiff_t>(rows.width()) * 4);
  glPixelStorei(GL_UNPACK_ROW_LENGTH, rows.width());
  glTexSubImage2D(GL_TEXTURE_2D, 0, (size - cols) / 2, (size - rows_in) / 2, cols, rows_in, GL_RGBA, GL_UNSIGNED_BYTE,
                  texels_.data());
  glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
}

void CGlTexture::DeleteFrameTexture() {
  if (names_[0] == 0 && names_[1] == 0) return;
  GLuint texture_names[2] = {names_[0], names_[1]};
  glDeleteTextures(2, texture_names);
  names_[0] = names_[1] = name = 0;
  ForgetUploads();
}

CGlRenderer::CGlRenderer()
    : initialised(0), hdc(nullptr), oldBitmap(nullptr), target(NMEMOD_SECTION), hglrc(nullptr), effectId(0),
      threadId(0) {}

// Then the texture (a no-op delete) and the target go with the members.
CGlRenderer::~CGlRenderer() { ReleaseOffscreenGL(); }

void CGlRenderer::SetupOffscreenGL(int width, int height, int unused) {
  target.Create(width, height, 24, false);
  hdc = create_offscreen_dc(target, &oldBitmap);
  hglrc = create_gl_context(hdc);
  make_gl_current(hdc, hglrc);
  glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST);
  glHint(GL_POINT_SMOOTH_HINT, GL_NICEST);
  glHint(GL_LINE_SMOOTH_HINT, GL_NICEST);
  glHint(GL_POLYGON_SMOOTH_HINT, GL_NICEST);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glViewport(0, 0, width, height);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  gluPerspective(45.0, static_cast<double>(width) / static_cast<double>(height), kNearPlane, 100.0);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  texture.CreateFrameTexture(width, height, unused);
  initialised = 1;
}

void CGlRenderer::ReleaseOffscreenGL() {
  glDisable(GL_BLEND);
  make_gl_current(nullptr, nullptr);
  // After the context is unbound, as designed: deleting the context frees the texture anyway.
  texture.DeleteFrameTexture();
  if (hglrc) {
    delete_gl_context(hglrc);
    hglrc = nullptr;
  }
  if (hdc) {
    delete_offscreen_dc(hdc, oldBitmap);
    oldBitmap = nullptr;
    hdc = nullptr;
  }
  // A released renderer no longer matches any cache key, deliberately.
  effectId = 0;
  threadId = 0;
  initialised = 0;
}

void CGlRenderer::MakeCurrent() { make_gl_current(hdc, hglrc); }

bool CGlRenderer::DrawsApart() const { return hglrc && surface_apart_from_target(); }

void CGlRenderer::BeginDraw() {
  MakeCurrent();
  if (targetBlack) {
    clear_surface_black();
  } else if (!DrawsApart()) {
    load_target_into_surface(target);
  } else if (targetFrame_ && !surfaceHoldsTarget_) {
    // The frame straight from its planes (or its bitmap) into the surface.
    const Image* image = texture.frames.ImageOf(*targetFrame_);
    const FrameRows rows =
        image ? FrameRows(*image, dib_width(target), dib_height(target)) : FrameRows(*targetFrame_);
    load_frame_into_surface(hdc, rows, transfer_);
  } else if (!surfaceHoldsTarget_) {
    load_target_into_surface(target);
  }
  // From here on the surface holds the drawing, not yet the target.
  surfaceHoldsTarget_ = false;
  // Blending only while the current colour is translucent (SetColour keeps it so while drawing).
  GLfloat colour[4] = {1, 1, 1, 1};
  glGetFloatv(GL_CURRENT_COLOR, colour);
  if (colour[3] >= 1) {
    glDisable(GL_BLEND);
  } else {
    glEnable(GL_BLEND);
  }
}

void CGlRenderer::BeginFrameRender() {
  MakeCurrent();
  glEnable(GL_TEXTURE_2D);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
}

void CGlRenderer::ResolveTarget() {
  read_surface_into_target(target);
  targetBlack = false;
  targetFrame_ = nullptr;
  surfaceHoldsTarget_ = true;
}

void CGlRenderer::ResolveInto(Image* out) {
  if (!DrawsApart()) {
    ResolveTarget();
    DibToImage(target, out);
    return;
  }
  const int w = dib_width(target), h = dib_height(target);
  if (image_covers(out, w, h)) read_framebuffer_into_image(w, h, out, transfer_);
  targetBlack = false;
  targetFrame_ = nullptr;
  surfaceHoldsTarget_ = true;
}

void CGlRenderer::BindFrames(CNewDib& dibA, const Image* a, CNewDib& dibB, const Image* b) {
  texture.frames = CallFrames{{&dibA, &dibB}, {a, b}};
  texture.ForgetUploads();
}

void CGlRenderer::ReleaseFrames() {
  // A target still to be loaded from a frame keeps it in the frame's bitmap.
  if (targetFrame_) texture.frames.Pixels(*targetFrame_);
  texture.frames = CallFrames{};
}

void CGlRenderer::FillTargetBlack() {
  if (!target.m_pInfo) return;
  targetBlack = true;
  targetFrame_ = nullptr;
  surfaceHoldsTarget_ = false;
  // A surface apart from the target is cleared instead: the bitmap is not read there.
  if (DrawsApart()) return;
  uint8_t* pixels = static_cast<uint8_t*>(target.LockBits());
  if (pixels) std::memset(pixels, 0, static_cast<size_t>(target.GetPitch()) * dib_height(target));
  target.UnlockBits();
}

void CGlRenderer::ImageToTarget(CNewDib& frame) {
  if (!target.m_pInfo || dib_width(frame) != dib_width(target) || dib_height(frame) != dib_height(target)) return;
  targetBlack = false;
  surfaceHoldsTarget_ = false;
  if (DrawsApart()) {
    targetFrame_ = &frame;
    return;
  }
  uint8_t* pixels = static_cast<uint8_t*>(target.LockBits());
  const void* source = texture.frames.Pixels(frame).LockBits();
  if (pixels && source) std::memcpy(pixels, source, static_cast<size_t>(target.GetPitch()) * dib_height(target));
  frame.UnlockBits();
  target.UnlockBits();
}

int TextureSizeFor(int n) {
  if (n <= 64) return 64;
  if (n <= 128) return 128;
  if (n <= 256) return 256;
  if (n <= 512) return 512;
  if (n <= 1024) return 1024;
  return 2048;  // never larger, deliberately
}

double CameraDistanceFor(int s, int w, int h) {
  // The differences are formed in double: exact for every int32 size, and no overflow.
  double d;
  if (s <= 64) {
    d = -2.5;
  } else if (s <= 1024) {
    if (w > 512 && h <= 512) {
      d = (512.0 - h) * kK1 - kSingle17;
    } else if (w <= 512 && h > 512) {
      d = static_cast<double>(-1.95f);
    } else if (h < 240 && w < 300) {
      d = ((256.0 - h) * 2) * kK2 - kSingle34;
    } else if (h <= 512) {
      d = (512.0 - h) * kK2 - kSingle34;
    } else {
      d = (512.0 - h / 2) * kK2 - kSingle34;
    }
  } else {
    // Sizes outside every case (both sides at least 1024, not both within
    // 1025..2048) continue the first case's formula.
    double k = kK3;
    const bool both_large = w > 1024 && w <= 2048 && h > 1024 && h <= 2048;
    if (!both_large && (h < 512 || w < 512)) {
      k = kK3Low;
    } else if (!both_large && (h < 1024 || w < 1024)) {
      k = kK4;
    }
    d = (2048.0 - h) * k - kSingle34 - (2048.0 - w) * k;
  }
  // One frame size is a deliberate special case.
  if (w == 128 && h == 96) d = static_cast<double>(-2.4f);
  return d;
}

SceneGeometry SceneGeometryFor(const CNewDib& frame) {
  SceneGeometry g;
  g.w = dib_width(frame);
  g.h = dib_height(frame);
  g.s = TextureSizeFor(std::max(g.w, g.h));
  g.d = CameraDistanceFor(g.s, g.w, g.h);
  g.r = static_cast<float>(static_cast<double>(g.h) / g.w);
  // Formed as two halves summed, in double, then used in single precision.
  g.by = static_cast<float>(((g.s - g.h) * 0.5 + (g.s - g.h) * 0.5) / g.s);
  g.bx = static_cast<float>(((g.s - g.w) * 0.5 + (g.s - g.w) * 0.5) / g.s);
  if (g.large()) {
    g.x0 = 1.0;
    g.y0 = g.r;
    g.zq = 1.0;
    g.u0 = g.v0 = 0.0;
    g.u1 = g.v1 = 1.0;
  } else {
    g.x0 = 1.0 - g.bx;
    g.y0 = 1.0 - g.by;
    g.zq = 1.0 - g.by;
    // The window is the texels the upload wrote, at its integer offset, so an
    // odd size never samples past the frame.
    const double size = g.s, ox = (g.s - g.w) / 2, oy = (g.s - g.h) / 2;
    g.u0 = ox / size;
    g.u1 = (ox + g.w) / size;
    g.v0 = oy / size;
    g.v1 = (oy + g.h) / size;
  }
  return g;
}

void ImageToDib(const Image* image, CNewDib& dib, int width, int height) {
  if (!dib.m_hBits) dib.Create(width, height, 24, false);
  uint8_t* pixels = static_cast<uint8_t*>(dib.LockBits());
  const int w = dib_width(dib), h = dib_height(dib);
  if (image_covers(image, w, h)) {
    convert_image(image, dib.m_pInfo, pixels);
  } else {
    Image padded(w, h);
    copy_top_left(image, &padded);
    convert_image(&padded, dib.m_pInfo, pixels);
  }
  dib.UnlockBits();
}

const Image* PrepareFrameDib(const Image* image, CNewDib& dib, int width, int height) {
  if (!dib.m_hBits) dib.Create(width, height, 24, false);
  if (image_covers(image, dib_width(dib), dib_height(dib))) return image;
  ImageToDib(image, dib, width, height);
  return nullptr;
}

void DibToImage(CNewDib& dib, Image* image) {
  if (!image_covers(image, dib_width(dib), dib_height(dib))) return;
  Rgb24_2_yuv420(image->get_Y(), image->get_U(), image->get_V(), image->width, image->width / 2, image->width / 2,
                 dib.m_pInfo, static_cast<const uint8_t*>(dib.m_hBits));
}

}  // namespace zv

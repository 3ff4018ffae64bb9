#include "gl/frame_texture.h"

#include <cstddef>

#include "frame/row_kernels.h"
#include "gl/gl_api.h"
#include "imaging/yuv_rgb.h"

namespace zv {

YuvRegion image_region(const Image* image) {
  const int chroma = image->width / 2;
  return {{image->get_Y(), image->get_U(), image->get_V()}, {image->width, chroma, chroma}, image->width,
          image->height};
}

CGlFrameTexture::~CGlFrameTexture() {
  if (name_) glDeleteTextures(1, &name_);
}

void CGlFrameTexture::Allocate(int width, int height) {
  if (name_ && width == width_ && height == height_) return;
  if (!name_) glGenTextures(1, &name_);
  glBindTexture(GL_TEXTURE_2D, name_);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
  glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, width, height, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
  width_ = width;
  height_ = height;
}

void CGlFrameTexture::Upload(const YuvRegion& from) {
  const int w = from.width & ~1, h = from.height & ~1;
  if (w <= 0 || h <= 0) return;
  const RowKernels& rows = row_kernels();
  rgba_.resize(static_cast<size_t>(w) * h * 4);
  bgr_row_.resize(static_cast<size_t>(w) * 3);
  for (int row = 0; row < h; ++row) {
    const ptrdiff_t chroma = row / 2;
    rows.yuv_to_bgr(bgr_row_.data(), from.planes[0] + static_cast<ptrdiff_t>(row) * from.strides[0],
                    from.planes[1] + chroma * from.strides[1], from.planes[2] + chroma * from.strides[2], w);
    rows.bgr_to_rgba(rgba_.data() + static_cast<ptrdiff_t>(h - 1 - row) * w * 4, bgr_row_.data(), w);
  }
  Upload(rgba_.data(), w, h);
}

void CGlFrameTexture::Upload(const uint8_t* rgba, int width, int height) {
  if (width <= 0 || height <= 0) return;
  Allocate(width, height);
  glBindTexture(GL_TEXTURE_2D, name_);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
  glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, rgba);
}

void CGlFrameTexture::Bind(int unit) const {
  glActiveTexture(GL_TEXTURE0 + unit);
  glBindTexture(GL_TEXTURE_2D, name_);
}

void ReadFramebufferInto(CNewDib& bitmap, const YuvRegion& to) {
  const int w = to.width & ~1, h = to.height & ~1;
  if (w <= 0 || h <= 0) return;
  if (!bitmap.m_pInfo || bitmap.m_pInfo->biWidth != w || bitmap.m_pInfo->biHeight != h) {
    bitmap.clear();
    bitmap.Create(w, h, 24, false);
  }
  uint8_t* pixels = static_cast<uint8_t*>(bitmap.LockBits());
  if (pixels) {
    // Rows padded to 4 bytes, bottom row first: the bitmap's own layout.
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glReadPixels(0, 0, w, h, GL_BGR, GL_UNSIGNED_BYTE, pixels);
    Rgb24_2_yuv420(to.planes[0], to.planes[1], to.planes[2], to.strides[0], to.strides[1], to.strides[2],
                   bitmap.m_pInfo, pixels);
  }
  bitmap.UnlockBits();
}

}  // namespace zv

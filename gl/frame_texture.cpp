#include "gl/frame_texture.h"

#include <cstddef>

#include "gl/gl_api.h"

namespace zv {

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
  YuvRegion even = from;
  even.width &= ~1;
  even.height &= ~1;
  if (even.width <= 0 || even.height <= 0) return;
  rgba_.resize(static_cast<size_t>(even.width) * even.height * 4);
  frame_rows_to_rgba(FrameRows(even), rgba_.data(), static_cast<ptrdiff_t>(even.width) * 4);
  Upload(rgba_.data(), even.width, even.height);
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

}  // namespace zv

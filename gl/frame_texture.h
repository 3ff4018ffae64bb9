// An RGBA texture of a picture's own size, for renderers that sample whole
// frames in shaders: a 4:2:0 region converted through the frame transfer's
// rows (gl/frame_transfer.h), bottom row first, so texture coordinate (0, 0) is
// the picture's lower-left corner. Sampled linearly, edges clamped. Needs a
// current context of OpenGL 2.0 or later (sizes that are not powers of two).
#pragma once

#include <cstdint>
#include <vector>

#include "gl/frame_transfer.h"

namespace zv {

class CGlFrameTexture {
 public:
  CGlFrameTexture() = default;
  // Deletes the texture; its context must be current.
  ~CGlFrameTexture();
  CGlFrameTexture(const CGlFrameTexture&) = delete;
  CGlFrameTexture& operator=(const CGlFrameTexture&) = delete;

  // The even part of `from`; the texture is made (again) at that size when its
  // size differs. Filling it binds it to the active texture unit.
  void Upload(const YuvRegion& from);
  // `width` x `height` RGBA pixels, bottom row first.
  void Upload(const uint8_t* rgba, int width, int height);
  // Binds it to texture unit `unit`.
  void Bind(int unit) const;

 private:
  void Allocate(int width, int height);

  unsigned int name_ = 0;
  int width_ = 0;
  int height_ = 0;
  std::vector<uint8_t> rgba_;
};

}  // namespace zv

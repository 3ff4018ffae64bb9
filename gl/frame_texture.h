// Pictures in and out of OpenGL for the GLSL transitions: a 4:2:0 region
// converted into an RGBA texture of its own size, and the framebuffer read
// back into a region. Both convert only the even part of a region (as the
// library's RGB conversions do) and keep OpenGL's bottom-up row order, so
// texture coordinate (0, 0) is the picture's lower-left corner.
#pragma once

#include <cstdint>
#include <vector>

#include "host/image.h"
#include "host/new_dib.h"

namespace zv {

// The planes of a 4:2:0 picture region: each plane's first sample and
// stride, and the region's luma size.
struct YuvRegion {
  uint8_t* planes[3];
  int strides[3];
  int width;
  int height;
};

// A whole image as a region.
YuvRegion image_region(const Image* image);

// An RGBA texture sampled linearly, with its edges clamped. Needs a current
// context of OpenGL 2.0 or later (sizes that are not powers of two).
class CGlFrameTexture {
 public:
  CGlFrameTexture() = default;
  // Deletes the texture; its context must be current.
  ~CGlFrameTexture();
  CGlFrameTexture(const CGlFrameTexture&) = delete;
  CGlFrameTexture& operator=(const CGlFrameTexture&) = delete;

  // The even part of `from`, converted with the library's SIMD rows; the
  // texture is made (again) at that size when its size differs. Filling it
  // binds it to the active texture unit.
  void Upload(const YuvRegion& from);
  // `width` x `height` RGBA pixels, bottom row first.
  void Upload(const uint8_t* rgba, int width, int height);
  // Binds it to texture unit `unit`.
  void Bind(int unit) const;
  bool empty() const { return name_ == 0; }

 private:
  void Allocate(int width, int height);

  unsigned int name_ = 0;
  int width_ = 0;
  int height_ = 0;
  std::vector<uint8_t> rgba_;
  std::vector<uint8_t> bgr_row_;
};

// Reads the lower-left (to.width & ~1) x (to.height & ~1) pixels of the
// current framebuffer into the even part of `to`, through `bitmap`: a 24-bit
// bitmap of that size, made (again) when its size differs.
void ReadFramebufferInto(CNewDib& bitmap, const YuvRegion& to);

}  // namespace zv

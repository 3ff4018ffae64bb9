// Frames between the host's 4:2:0 images and OpenGL, in R, G, B, A pixels that
// carry the bytes of the frames' 24-bit bitmaps: bottom row first, and only the
// even part of the picture converted (an odd last column or row stays black, as
// in a bitmap the conversion never writes there). Large frames are split over
// the cores. Any renderer drawing frames through OpenGL can use these.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "frame/row_kernels.h"
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

// The top-left width x height of `image` as a region.
YuvRegion image_region(const Image* image, int width, int height);

// Whether `image` holds the whole even part of a width x height bitmap; if not,
// it is converted through a black frame of that size (pad_image).
bool image_covers(const Image* image, int width, int height);
// `from` copied top-left into `to` (plane by plane, as far as both reach).
void copy_top_left(const Image* from, Image* to);

// The rows of a width x height frame bitmap, made on demand as R, G, B, A: from
// a frame's planes (which must cover it) or a region of them, or from a 24-bit
// bitmap.
class FrameRows {
 public:
  FrameRows(const Image& image, int width, int height);
  explicit FrameRows(const YuvRegion& region);
  explicit FrameRows(CNewDib& bitmap);
  ~FrameRows();
  FrameRows(const FrameRows&) = delete;
  FrameRows& operator=(const FrameRows&) = delete;

  int width() const { return width_; }
  int height() const { return height_; }
  // Bitmap row `row` (0 the bottom one) into `rgba`, width() pixels.
  void Row(int row, uint8_t* rgba, const RowKernels& kernels) const;

 private:
  YuvRegion region_{};
  CNewDib* bitmap_ = nullptr;
  const uint8_t* bits_ = nullptr;
  int width_ = 0, height_ = 0;
};

// Every row, bottom first, `stride` bytes apart.
void frame_rows_to_rgba(const FrameRows& rows, uint8_t* rgba, ptrdiff_t stride);

// The current framebuffer's lower-left width x height pixels into `out`'s planes
// (or a region's): the even part of the picture, as the conversion of a 24-bit
// bitmap of the same pixels gives it. `scratch` keeps the read-back pixels'
// memory between calls.
void read_framebuffer_into_image(int width, int height, Image* out, std::vector<uint8_t>& scratch);
void read_framebuffer_into_region(const YuvRegion& out, std::vector<uint8_t>& scratch);

}  // namespace zv

// MLT's yuv420p frames as the library's images.
#pragma once

#include <cstddef>
#include <cstdint>

#include "host/image.h"

namespace zv_mlt {

// MLT's yuv420p layout, as its FFmpeg-backed services lay frames out: packed
// rows, chroma planes of (width + 1) / 2 by (height + 1) / 2, U then V.
struct Layout {
  Layout(int w, int h) : width(w), height(h), chroma_width((w + 1) / 2), chroma_height((h + 1) / 2) {}
  size_t offset(int plane) const {
    const size_t luma = static_cast<size_t>(width) * height;
    return plane == 0 ? 0 : luma + (plane - 1) * static_cast<size_t>(chroma_width) * chroma_height;
  }
  int stride(int plane) const { return plane ? chroma_width : width; }
  size_t size() const { return offset(3); }
  int width, height, chroma_width, chroma_height;
};

// A yuv420p frame of MLT as an Image: MLT's own planes when the layouts agree
// (even sizes), else a copy, since the library's chroma planes are width / 2 by
// height / 2. A copy never reaches past the `size` bytes MLT handed over.
class FrameImage {
 public:
  FrameImage(uint8_t* data, size_t size, int width, int height);
  ~FrameImage() { delete image_; }
  FrameImage(const FrameImage&) = delete;
  FrameImage& operator=(const FrameImage&) = delete;

  Image* image() { return image_; }
  // Puts what was written into a copy back into MLT's planes.
  void write_back() {
    if (copied_) transfer(false);
  }

 private:
  void transfer(bool into_image);

  uint8_t* data_;
  size_t size_;
  Layout layout_;
  Image* image_ = nullptr;
  bool copied_ = false;
};

}  // namespace zv_mlt

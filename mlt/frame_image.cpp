#include "mlt/frame_image.h"

#include <cstring>

namespace zv_mlt {

FrameImage::FrameImage(uint8_t* data, size_t size, int width, int height)
    : data_(data), size_(size), layout_(width, height) {
  if (width % 2 == 0 && height % 2 == 0 && layout_.size() <= size) {
    image_ = new Image(width, height, data, data + layout_.offset(1), data + layout_.offset(2));
  } else {
    image_ = new Image(width, height);
    copied_ = true;
    transfer(true);
  }
}

void FrameImage::transfer(bool into_image) {
  uint8_t* own[3] = {image_->get_Y(), image_->get_U(), image_->get_V()};
  for (int p = 0; p < 3; ++p) {
    const int w = p ? layout_.width / 2 : layout_.width, h = p ? layout_.height / 2 : layout_.height;
    for (int row = 0; row < h; ++row) {
      const size_t at = layout_.offset(p) + static_cast<size_t>(row) * layout_.stride(p);
      if (at + w > size_) return;
      uint8_t* mine = own[p] + static_cast<size_t>(row) * w;
      std::memcpy(into_image ? mine : data_ + at, into_image ? data_ + at : mine, w);
    }
  }
}

}  // namespace zv_mlt

#include "gl/frame_transfer.h"

#include <algorithm>
#include <cstring>

#include "frame/parallel_rows.h"
#include "gl/gl_api.h"
#include "imaging/yuv_rgb.h"

namespace zv {
namespace {

// Rows a thread takes at least: below this much a picture is not worth splitting.
constexpr int kMinRowsPerPart = 96;

int dib_width(const CNewDib& dib) { return dib.m_pInfo ? dib.m_pInfo->biWidth : 0; }
int dib_height(const CNewDib& dib) { return dib.m_pInfo ? dib.m_pInfo->biHeight : 0; }

// Opaque black: a bitmap's bytes the conversion never wrote.
void black_rgba(uint8_t* rgba, int pixels) {
  for (int x = 0; x < pixels; ++x, rgba += 4) {
    rgba[0] = rgba[1] = rgba[2] = 0;
    rgba[3] = 255;
  }
}

}  // namespace

YuvRegion image_region(const Image* image, int width, int height) {
  const int chroma = image->width / 2;
  return {{image->get_Y(), image->get_U(), image->get_V()}, {image->width, chroma, chroma}, width, height};
}

bool image_covers(const Image* image, int width, int height) {
  return (width & ~1) <= image->width && (height & ~1) <= image->height;
}

void copy_top_left(const Image* from, Image* to) {
  for (int p = 0; p < 3; ++p) {
    const int fw = p ? from->width / 2 : from->width, fh = p ? from->height / 2 : from->height;
    const int tw = p ? to->width / 2 : to->width, th = p ? to->height / 2 : to->height;
    const int w = std::min(fw, tw), h = std::min(fh, th);
    const uint8_t* src = from->plane(p);
    uint8_t* dst = to->plane(p);
    for (int row = 0; row < h && w > 0; ++row) {
      std::memcpy(dst + static_cast<ptrdiff_t>(row) * tw, src + static_cast<ptrdiff_t>(row) * fw, w);
    }
  }
}

FrameRows::FrameRows(const Image& image, int width, int height) : FrameRows(image_region(&image, width, height)) {}

FrameRows::FrameRows(const YuvRegion& region) : region_(region), width_(region.width), height_(region.height) {}

FrameRows::FrameRows(CNewDib& bitmap)
    : bitmap_(&bitmap),
      bits_(static_cast<const uint8_t*>(bitmap.LockBits())),
      width_(dib_width(bitmap)),
      height_(dib_height(bitmap)) {
  if (!bits_) width_ = height_ = 0;
}

FrameRows::~FrameRows() {
  if (bitmap_) bitmap_->UnlockBits();
}

void FrameRows::Row(int row, uint8_t* rgba, const RowKernels& kernels) const {
  if (bitmap_) {
    kernels.bgr_to_rgba(rgba, bits_ + static_cast<ptrdiff_t>(row) * dib_row_bytes(width_), width_);
    return;
  }
  // Bitmap row `row` is the picture's row height - 1 - row; the conversion covers the even part only.
  const int even_width = width_ & ~1, picture_row = height_ - 1 - row;
  if (picture_row >= (height_ & ~1)) {
    black_rgba(rgba, width_);
    return;
  }
  const ptrdiff_t chroma = picture_row / 2;
  kernels.yuv_to_rgba(rgba, region_.planes[0] + static_cast<ptrdiff_t>(picture_row) * region_.strides[0],
                      region_.planes[1] + chroma * region_.strides[1], region_.planes[2] + chroma * region_.strides[2],
                      even_width);
  if (even_width < width_) black_rgba(rgba + 4 * even_width, width_ - even_width);
}

void frame_rows_to_rgba(const FrameRows& rows, uint8_t* rgba, ptrdiff_t stride) {
  const RowKernels& kernels = row_kernels();
  parallel_rows(rows.height(), kMinRowsPerPart, [&](int, int begin, int end) {
    for (int row = begin; row < end; ++row) rows.Row(row, rgba + row * stride, kernels);
  });
}

void read_framebuffer_into_image(int width, int height, Image* out, std::vector<uint8_t>& scratch) {
  read_framebuffer_into_region(image_region(out, width, height), scratch);
}

void read_framebuffer_into_region(const YuvRegion& out, std::vector<uint8_t>& scratch) {
  const int width = out.width, height = out.height;
  if (width <= 0 || height <= 0) return;
  const ptrdiff_t pitch = static_cast<ptrdiff_t>(width) * 4;
  scratch.resize(static_cast<size_t>(pitch) * height);
  // Four bytes a pixel keep the rows 4-byte aligned, as the default packing expects.
  glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, scratch.data());
  const RowKernels& kernels = row_kernels();
  const uint8_t* pixels = scratch.data();
  const int even_width = width & ~1;
  uint8_t* const* planes = out.planes;
  const int* strides = out.strides;
  parallel_rows((height & ~1) / 2, kMinRowsPerPart / 2, [&](int, int begin, int end) {
    for (int i = begin; i < end; ++i) {
      // Picture rows 2i and 2i + 1 are read-back rows height - 1 - 2i and the one below it.
      const uint8_t* row0 = pixels + (height - 1 - 2 * i) * pitch;
      kernels.rgba_to_yuv(planes[0] + static_cast<ptrdiff_t>(2 * i) * strides[0],
                          planes[0] + static_cast<ptrdiff_t>(2 * i + 1) * strides[0],
                          planes[1] + static_cast<ptrdiff_t>(i) * strides[1],
                          planes[2] + static_cast<ptrdiff_t>(i) * strides[2], row0, row0 - pitch, even_width);
    }
  });
}

}  // namespace zv

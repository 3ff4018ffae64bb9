#include "imaging/yuv_rgb.h"

#include <cstddef>

#include "frame/row_kernels.h"

void ZV_STDCALL Rgb24_2_yuv420(uint8_t* y, uint8_t* u, uint8_t* v, int y_stride, int u_stride, int v_stride,
                               const BITMAPINFOHEADER* header, const uint8_t* pixels) {
  const int w = header->biWidth & ~1, h = header->biHeight & ~1;
  if (h < 1 || w < 1) return;
  const zv::RowKernels& rows = zv::row_kernels();
  const ptrdiff_t pitch = zv::dib_row_bytes(header->biWidth);
  for (int i = 0; i < h / 2; ++i) {
    // Image row 2i is bitmap row biHeight - 1 - 2i; row 2i + 1 lies just below it in memory.
    const uint8_t* row0 = pixels + (header->biHeight - 1 - 2 * i) * pitch;
    rows.bgr_to_yuv(y + static_cast<ptrdiff_t>(2 * i) * y_stride, y + static_cast<ptrdiff_t>(2 * i + 1) * y_stride,
                    u + static_cast<ptrdiff_t>(i) * u_stride, v + static_cast<ptrdiff_t>(i) * v_stride, row0,
                    row0 - pitch, w);
  }
}

void ZV_STDCALL Yuv420_2_rgb24(const BITMAPINFOHEADER* header, uint8_t* pixels, const uint8_t* y, const uint8_t* u,
                               const uint8_t* v, int y_stride, int u_stride, int v_stride) {
  const int w = header->biWidth & ~1, h = header->biHeight & ~1;
  if (h < 1 || w < 1) return;
  const zv::RowKernels& rows = zv::row_kernels();
  const ptrdiff_t pitch = zv::dib_row_bytes(header->biWidth);
  for (int row = 0; row < h; ++row) {
    const ptrdiff_t chroma = row / 2;
    rows.yuv_to_bgr(pixels + (header->biHeight - 1 - row) * pitch, y + static_cast<ptrdiff_t>(row) * y_stride,
                    u + chroma * u_stride, v + chroma * v_stride, w);
  }
}

#include "imaging/yuv_rgb.h"

#include <cstddef>

namespace {

inline uint8_t clamp_byte(int value) { return static_cast<uint8_t>(value < 0 ? 0 : value > 255 ? 255 : value); }

}  // namespace

void ZV_STDCALL Rgb24_2_yuv420(uint8_t* y, uint8_t* u, uint8_t* v, int y_stride, int u_stride, int v_stride,
                               const BITMAPINFOHEADER* header, const uint8_t* pixels) {
  const int w = header->biWidth & ~1, h = header->biHeight & ~1;
  if (h < 1 || w < 1) return;
  const ptrdiff_t pitch = zv::dib_row_bytes(header->biWidth);
  for (int i = 0; i < h / 2; ++i) {
    // Image row 2i is bitmap row biHeight - 1 - 2i; row 2i + 1 lies just below it in memory.
    const uint8_t* rows[2] = {pixels + (header->biHeight - 1 - 2 * i) * pitch,
                              pixels + (header->biHeight - 2 - 2 * i) * pitch};
    uint8_t* y_rows[2] = {y + static_cast<ptrdiff_t>(2 * i) * y_stride, y + static_cast<ptrdiff_t>(2 * i + 1) * y_stride};
    for (int j = 0; j < w / 2; ++j) {
      int u_sum = 0, v_sum = 0;
      for (int dy = 0; dy < 2; ++dy) {
        for (int dx = 0; dx < 2; ++dx) {
          const uint8_t* px = rows[dy] + 3 * (2 * j + dx);
          const int b = px[0], g = px[1], r = px[2];
          y_rows[dy][2 * j + dx] = static_cast<uint8_t>(zv::rgb_to_y(r, g, b));
          u_sum += zv::rgb_to_u(r, g, b);
          v_sum += zv::rgb_to_v(r, g, b);
        }
      }
      // The mean of the already offset values, truncated.
      u[static_cast<ptrdiff_t>(i) * u_stride + j] = static_cast<uint8_t>(u_sum >> 2);
      v[static_cast<ptrdiff_t>(i) * v_stride + j] = static_cast<uint8_t>(v_sum >> 2);
    }
  }
}

void ZV_STDCALL Yuv420_2_rgb24(const BITMAPINFOHEADER* header, uint8_t* pixels, const uint8_t* y, const uint8_t* u,
                               const uint8_t* v, int y_stride, int u_stride, int v_stride) {
  const int w = header->biWidth & ~1, h = header->biHeight & ~1;
  if (h < 1 || w < 1) return;
  const ptrdiff_t pitch = zv::dib_row_bytes(header->biWidth);
  for (int i = 0; i < h / 2; ++i) {
    uint8_t* rows[2] = {pixels + (header->biHeight - 1 - 2 * i) * pitch, pixels + (header->biHeight - 2 - 2 * i) * pitch};
    const uint8_t* y_rows[2] = {y + static_cast<ptrdiff_t>(2 * i) * y_stride, y + static_cast<ptrdiff_t>(2 * i + 1) * y_stride};
    for (int j = 0; j < w / 2; ++j) {
      const int cu = u[static_cast<ptrdiff_t>(i) * u_stride + j], cv = v[static_cast<ptrdiff_t>(i) * v_stride + j];
      // The offsets carry deliberate rounding biases; they are not exactly 16 and 128 times the coefficients.
      const int r0 = 13074 * cv - 1826095;
      const int g0 = -3203 * cu - 6660 * cv + 1109918;
      const int b0 = 16532 * cu - 2268594;
      for (int dy = 0; dy < 2; ++dy) {
        for (int dx = 0; dx < 2; ++dx) {
          const int luma = 9536 * y_rows[dy][2 * j + dx];
          uint8_t* px = rows[dy] + 3 * (2 * j + dx);
          px[0] = clamp_byte((luma + b0) >> 13);
          px[1] = clamp_byte((luma + g0) >> 13);
          px[2] = clamp_byte((luma + r0) >> 13);
        }
      }
    }
  }
}

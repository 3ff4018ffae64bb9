// Conversion between 24-bit bottom-up bitmaps (BGR, rows padded to 4 bytes)
// and 4:2:0 planes, in BT.601 studio range with fixed-point integer arithmetic.
#pragma once

#include <cstdint>

#include "frame/abi.h"
#include "host/bitmap_header.h"
#include "host/bt601.h"

// Only the even part of the picture is converted; nothing for a height below 2
// or a negative (top-down) height.
ZV_API void ZV_STDCALL Rgb24_2_yuv420(uint8_t* y, uint8_t* u, uint8_t* v, int y_stride, int u_stride, int v_stride,
                                      const BITMAPINFOHEADER* header, const uint8_t* pixels);
ZV_API void ZV_STDCALL Yuv420_2_rgb24(const BITMAPINFOHEADER* header, uint8_t* pixels, const uint8_t* y,
                                      const uint8_t* u, const uint8_t* v, int y_stride, int u_stride, int v_stride);

namespace zv {

// Bytes in one row of a 24-bit bitmap of `width` pixels.
inline int dib_row_bytes(int width) { return ((width * 24 + 31) >> 5) * 4; }

// The header of a 24-bit bitmap (bottom-up for a positive height).
inline BITMAPINFOHEADER rgb24_header(int width, int height) {
  BITMAPINFOHEADER header{};
  header.biSize = sizeof header;
  header.biWidth = width;
  header.biHeight = height;
  header.biPlanes = 1;
  header.biBitCount = 24;
  return header;
}

}  // namespace zv

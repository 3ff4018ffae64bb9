// The Windows bitmap header; a substitute with the same field layout elsewhere.
#pragma once

#if defined(_WIN32)
#include <windows.h>
#else
#include <cstdint>

struct BITMAPINFOHEADER {
  uint32_t biSize;
  int32_t biWidth;
  int32_t biHeight;  // positive: bottom-up rows
  uint16_t biPlanes;
  uint16_t biBitCount;
  uint32_t biCompression;
  uint32_t biSizeImage;
  int32_t biXPelsPerMeter;
  int32_t biYPelsPerMeter;
  uint32_t biClrUsed;
  uint32_t biClrImportant;
};
static_assert(sizeof(BITMAPINFOHEADER) == 40, "the Windows header is 40 bytes");
#endif

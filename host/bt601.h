// Studio-range BT.601 YUV of one RGB colour, in 14-bit fixed point: the one
// place these constants live (the frame fill and the RGB conversions).
#pragma once

namespace zv {

inline int rgb_to_y(int r, int g, int b) { return ((4211 * r + 8258 * g + 1606 * b) >> 14) + 16; }
inline int rgb_to_u(int r, int g, int b) { return ((7193 * b - 4768 * g - 2425 * r) >> 14) + 128; }
inline int rgb_to_v(int r, int g, int b) { return ((7193 * r - 6029 * g - 1163 * b) >> 14) + 128; }

}  // namespace zv

// Studio-range BT.601 between RGB and YUV in fixed point: the one place these
// constants live (the frame fill and the RGB conversions).
#pragma once

namespace zv {

// RGB to YUV in 14-bit fixed point.
inline int rgb_to_y(int r, int g, int b) { return ((4211 * r + 8258 * g + 1606 * b) >> 14) + 16; }
inline int rgb_to_u(int r, int g, int b) { return ((7193 * b - 4768 * g - 2425 * r) >> 14) + 128; }
inline int rgb_to_v(int r, int g, int b) { return ((7193 * r - 6029 * g - 1163 * b) >> 14) + 128; }

// YUV to RGB in 13-bit fixed point: a channel is (kYuvLuma * Y + its chroma
// term) >> 13, clamped to 0..255. The terms' offsets carry deliberate rounding
// biases; they are not exactly 16 and 128 times the coefficients.
constexpr int kYuvLuma = 9536;
constexpr int kRedV = 13074, kRedBias = -1826095;
constexpr int kGreenU = -3203, kGreenV = -6660, kGreenBias = 1109918;
constexpr int kBlueU = 16532, kBlueBias = -2268594;
inline int red_term(int v) { return kRedV * v + kRedBias; }
inline int green_term(int u, int v) { return kGreenU * u + kGreenV * v + kGreenBias; }
inline int blue_term(int u) { return kBlueU * u + kBlueBias; }

}  // namespace zv

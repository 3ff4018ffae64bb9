// Row helpers shared by the blends: fast (SIMD where available) versions of
// the integer mixes. All weights are 0..256 and results shift right by 8
// without a rounding term.
#pragma once

#include <cstdint>

namespace zv {

// out = (a * (256 - k) + b * k) >> 8
void blend_row(uint8_t* out, const uint8_t* a, const uint8_t* b, int n, int k);

// out = (x * g[i] + y * (256 - g[i])) >> 8, one weight per sample.
void blend_row_weights(uint8_t* out, const uint8_t* x, const uint8_t* y, const uint16_t* g, int n);

// Scales one picture towards black: luma (s * w) >> 8; chroma
// (((s - 128) * w) >> 8) + 128 with a flooring shift, kept to 8 bits.
void scale_row(uint8_t* out, const uint8_t* s, int n, int w, bool chroma);

}  // namespace zv

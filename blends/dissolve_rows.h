// Row helpers of the dissolves and the dithered wipe: fast (SIMD where
// available) versions of per-sample offsets and selections.
#pragma once

#include <algorithm>
#include <cstdint>

#include "blends/random.h"

namespace zv {

// out = s + offset saturated to 0..255; offset in -255..255.
void offset_row_saturate(uint8_t* out, const uint8_t* s, int n, int offset);

// out = (s + offset) mod 256.
void offset_row_wrap(uint8_t* out, const uint8_t* s, int n, uint8_t offset);

// out = pick_second[i] ? second[i] : first[i]; pick_second holds 0 or 0xFF.
void select_row(uint8_t* out, const uint8_t* first, const uint8_t* second, const uint8_t* pick_second, int n);

// One row chosen sample by sample by fresh draws of the generator, one draw per
// sample from left to right (as n calls of rand() would make them):
// out[i] = pick_second(draw, i) ? second[i] : first[i].
template <typename PickSecond>
void select_row_by_draws(uint8_t* out, const uint8_t* first, const uint8_t* second, int n, PickSecond pick_second) {
  constexpr int kChunk = 1024;
  uint16_t draws[kChunk];
  uint8_t mask[kChunk];
  for (int x = 0; x < n; x += kChunk) {
    const int len = std::min(kChunk, n - x);
    rand_fill(draws, len);
    for (int i = 0; i < len; ++i) mask[i] = pick_second(draws[i], x + i) ? 0xFF : 0;
    select_row(out + x, first + x, second + x, mask, len);
  }
}

}  // namespace zv

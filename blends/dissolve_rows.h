// Rows chosen sample by sample by the library's random generator: the
// dissolves and the dithered wipe.
#pragma once

#include <algorithm>
#include <cstdint>

#include "blends/random.h"
#include "frame/row_kernels.h"

namespace zv {

// One row chosen sample by sample by fresh draws of the generator, one draw per
// sample from left to right (as n calls of rand() would make them):
// out[i] = pick_second(draw, i) ? second[i] : first[i].
template <typename PickSecond>
void select_row_by_draws(const RowKernels& rows, uint8_t* out, const uint8_t* first, const uint8_t* second, int n,
                         PickSecond pick_second) {
  constexpr int kChunk = 1024;
  uint16_t draws[kChunk];
  uint8_t mask[kChunk];
  for (int x = 0; x < n; x += kChunk) {
    const int len = std::min(kChunk, n - x);
    rand_fill(rows, draws, len);
    for (int i = 0; i < len; ++i) mask[i] = pick_second(draws[i], x + i) ? 0xFF : 0;
    rows.select(out + x, first + x, second + x, mask, len);
  }
}

// As above with second[i] where draw % divisor < below, every step a row.
inline void select_row_below_mod(const RowKernels& rows, uint8_t* out, const uint8_t* first, const uint8_t* second,
                                 int n, uint32_t divisor, uint32_t below) {
  constexpr int kChunk = 1024;
  uint16_t draws[kChunk];
  uint8_t mask[kChunk];
  for (int x = 0; x < n; x += kChunk) {
    const int len = std::min(kChunk, n - x);
    rand_fill(rows, draws, len);
    rows.picks_below_mod(mask, draws, len, divisor, below);
    rows.select(out + x, first + x, second + x, mask, len);
  }
}

}  // namespace zv

// Rows chosen sample by sample by the library's random generator: the
// dissolves and the dithered wipe.
#pragma once

#include <algorithm>
#include <cstdint>

#include "blends/random.h"
#include "frame/row_kernels.h"

namespace zv {

// One row chosen sample by sample by fresh draws of the generator, one draw
// per sample from left to right (as n calls of rand() would make them), a
// chunk at a time: make_picks(pick, draws, x, len) sets pick[i] to 0xFF where
// sample x + i takes second, else 0.
template <typename MakePicks>
void select_row_in_chunks(const RowKernels& rows, uint8_t* out, const uint8_t* first, const uint8_t* second, int n,
                          MakePicks make_picks) {
  constexpr int kChunk = 1024;
  uint16_t draws[kChunk];
  uint8_t pick[kChunk];
  for (int x = 0; x < n; x += kChunk) {
    const int len = std::min(kChunk, n - x);
    rand_fill(rows, draws, len);
    make_picks(pick, draws, x, len);
    rows.select(out + x, first + x, second + x, pick, len);
  }
}

// out[i] = pick_second(draw, i) ? second[i] : first[i]. The picks are the
// chunk's own buffer: saying so lets the compiler vectorise the loop, which
// is almost three times faster for Gradient Wipe's columns.
template <typename PickSecond>
void select_row_by_draws(const RowKernels& rows, uint8_t* out, const uint8_t* first, const uint8_t* second, int n,
                         PickSecond pick_second) {
  const auto make_picks = [&](uint8_t* __restrict pick, const uint16_t* draws, int x, int len) {
    for (int i = 0; i < len; ++i) pick[i] = pick_second(draws[i], x + i) ? 0xFF : 0;
  };
  select_row_in_chunks(rows, out, first, second, n, make_picks);
}

// out[i] = draw % divisor < below ? second[i] : first[i], the test a row too.
inline void select_row_below_mod(const RowKernels& rows, uint8_t* out, const uint8_t* first, const uint8_t* second,
                                 int n, uint32_t divisor, uint32_t below) {
  select_row_in_chunks(rows, out, first, second, n, [&](uint8_t* pick, const uint16_t* draws, int, int len) {
    rows.picks_below_mod(pick, draws, len, divisor, below);
  });
}

}  // namespace zv

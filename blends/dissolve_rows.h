// Row helpers of the dissolves and the dithered wipe: fast (SIMD where
// available) versions of per-sample offsets and selections.
#pragma once

#include <cstdint>

namespace zv {

// out = s + offset saturated to 0..255; offset in -255..255.
void offset_row_saturate(uint8_t* out, const uint8_t* s, int n, int offset);

// out = (s + offset) mod 256.
void offset_row_wrap(uint8_t* out, const uint8_t* s, int n, uint8_t offset);

// out = pick_second[i] ? second[i] : first[i]; pick_second holds 0 or 0xFF.
void select_row(uint8_t* out, const uint8_t* first, const uint8_t* second, const uint8_t* pick_second, int n);

}  // namespace zv

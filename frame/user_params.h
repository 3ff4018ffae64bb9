// The user's numbers as the transitions read them, and the fill byte of the
// areas that no picture covers.
#pragma once

#include <cstdint>

#include "frame/transition_op.h"

namespace zv {

// A count from a user parameter: below 1 gives `fallback`, `limit` or more
// gives `limit`. The same number serves all three planes.
inline int limit_param(int32_t value, int fallback, int limit) {
  if (value < 1) return fallback;
  return value >= limit ? limit : value;
}

// param2 read as an integer: truncated toward zero, and a NaN or a value no
// int32 holds taken as 0, so that it falls to the default.
inline int32_t param2_as_int(double param2) {
  const int32_t v = truncate_to_int(param2);
  return v == INT32_MIN ? 0 : v;
}

// Video black: 16 on the luma plane, 128 on the chroma planes.
constexpr uint8_t kLumaBlack = 16;
constexpr uint8_t kChromaBlack = 128;
inline uint8_t video_black(bool chroma) { return chroma ? kChromaBlack : kLumaBlack; }

}  // namespace zv

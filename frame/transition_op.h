// What every transition builds on: the host's parameter block, signature and
// result codes, and the library's progress value, clamps, rounding and common
// prologue.
#pragma once

#include <cstdint>

#include "host/transition_abi.h"

namespace zv {

// Progress of the transition from the block. Deliberately unguarded: a zero
// duration gives NaN, a position past the end gives exactly 1.0 and a negative
// position gives 0.0 / duration (negative zero for a negative duration).
// Inline, so that hosts of the shared library have it too.
inline double transition_progress(const TransitionParams* params) {
  if (params->position < 0.0) return 0.0 / params->duration;
  const double q = params->position > params->duration ? params->duration : params->position;
  return q / params->duration;
}

inline int min3(int a, int b, int c) {
  int m = a < b ? a : b;
  return m < c ? m : c;
}

// Progress clamped into [0, 1]; NaN passes through both tests unchanged.
inline double clamp_progress(double p) {
  if (p <= 0.0) return 0.0;
  if (p >= 1.0) return 1.0;
  return p;
}

// A double truncated toward zero. Values a 32-bit integer cannot hold (NaN,
// infinities, huge parameters) give INT32_MIN, as the x86 conversion does,
// instead of undefined behaviour.
inline int32_t truncate_to_int(double d) {
  if (!(d > -2147483649.0 && d < 2147483648.0)) return INT32_MIN;
  return static_cast<int32_t>(d);
}

// Rounded: add 0.5, then truncate.
inline int32_t round_to_int(double d) { return truncate_to_int(d + 0.5); }

// floor(d) as an integer, for positions a 32-bit integer holds (the library
// floor is a call on plain x86-64; this is two instructions).
inline int32_t floor_to_int(double d) {
  const int32_t t = static_cast<int32_t>(d);
  return t - (t > d);
}

// The common prologue: null arguments give 1; `out` takes `a`'s frame flags
// (even when the block is disabled); a disabled block gives 2. Returns
// kProceed when the transition should go on.
constexpr int kProceed = -1;
int transition_prologue(Image* out, const Image* a, const Image* b, const TransitionParams* params);

}  // namespace zv

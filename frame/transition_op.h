// What every transition may assume about the host: its image, the parameter
// block, the calling signature, the result codes, the progress value and the
// common prologue.
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/abi.h"
#include "host/image.h"

// The parameter block the host passes with every call. It crosses the module
// boundary, so every byte has a fixed place; the host's own bytes are opaque.
struct TransitionParams {
  uint8_t host_head[8];  // the host's; never read
  int32_t style;
  int32_t param1;
  double param2;
  uint8_t host_mid[8];   // the host's; never read
  double duration;
  double position;
  int32_t param3;
  int32_t enabled;
};
static_assert(offsetof(TransitionParams, style) == 8, "style at byte 8");
static_assert(offsetof(TransitionParams, param1) == 12, "param1 at byte 12");
static_assert(offsetof(TransitionParams, param2) == 16, "param2 at byte 16");
static_assert(offsetof(TransitionParams, duration) == 32, "duration at byte 32");
static_assert(offsetof(TransitionParams, position) == 40, "position at byte 40");
static_assert(offsetof(TransitionParams, param3) == 48, "param3 at byte 48");
static_assert(offsetof(TransitionParams, enabled) == 52, "enabled at byte 52");
static_assert(sizeof(TransitionParams) == 56, "the block is 56 bytes");

// One transition: writes `out` from `a` (shown at progress 0) and `b` (shown at 1).
typedef int(ZV_STDCALL* TransitionOp)(Image* out, Image* a, Image* b, TransitionParams* params);

enum TransitionResult {
  kTransitionDone = 0,
  kTransitionNullArgument = 1,
  kTransitionDisabled = 2,
  kTransitionBadStyle = 3,
  // Returned by the entries of transitions this build does not draw yet.
  kTransitionNotImplemented = 4,
};

namespace zv {

// Progress of the transition from the block. Deliberately unguarded: a zero
// duration gives NaN, a position past the end gives exactly 1.0 and a negative
// position gives 0.0 / duration (negative zero for a negative duration).
double transition_progress(const TransitionParams* params);

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

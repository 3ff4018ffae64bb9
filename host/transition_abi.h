// What the host defines for every transition plug-in: the parameter block it
// passes with every call, the calling signature and the result codes.
#pragma once

#include <cstddef>
#include <cstdint>

#include "host/host_api.h"
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

// A small deterministic generator for the transitions that scatter or break
// the picture. Each user seeds it with its own constant at a fixed point, so
// every call draws the same picture on every thread and platform (the
// dissolves' per-thread `rand` is a different thing and stays theirs).
#pragma once

#include <cstdint>

namespace zv {

struct DetRand {
  uint32_t state;
};

inline void det_rand_seed(DetRand& r, uint32_t seed) { r.state = seed; }

// state = state * 1664525 + 1013904223 (mod 2^32); returns 0..32767.
inline int det_rand_next(DetRand& r) {
  r.state = r.state * 1664525u + 1013904223u;
  return static_cast<int>((r.state >> 16) & 0x7FFF);
}

// A uniform value in [0, 1).
inline double det_rand_unit(DetRand& r) { return det_rand_next(r) / 32768.0; }

// The seeds of the transitions that use it.
constexpr uint32_t kWindSeed = 0x57494E44;
constexpr uint32_t kBubblesSeed = 0x42554242;
constexpr uint32_t kPatchSeed = 0x50415443;
constexpr uint32_t kShatterSeed = 0x53484154;

}  // namespace zv

#include "blends/random.h"

namespace zv {
namespace {

// A thread that never called set_random_state starts from the same state as
// every other thread, as an unseeded runtime generator does.
thread_local uint32_t t_state = 1;

inline int next_value(uint32_t& state) {
  state = state * 214013u + 2531011u;
  return static_cast<int>((state >> 16) & kRandMax);
}

}  // namespace

int rand() { return next_value(t_state); }

void rand_fill(uint16_t* values, int n) {
  uint32_t state = t_state;
  for (int i = 0; i < n; ++i) values[i] = static_cast<uint16_t>(next_value(state));
  t_state = state;
}

void set_random_state(uint32_t state) { t_state = state; }

}  // namespace zv

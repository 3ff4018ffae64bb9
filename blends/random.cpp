#include "blends/random.h"

namespace zv {
namespace {

// A thread that never called set_random_state starts from the same state as
// every other thread, as an unseeded runtime generator does.
thread_local uint32_t t_state = 1;

constexpr uint32_t kMul = 214013u, kAdd = 2531011u;

inline int next_value(uint32_t& state) {
  state = state * kMul + kAdd;
  return static_cast<int>((state >> 16) & kRandMax);
}

// The generator is one chain of multiplications; run as kLanes chains, each
// kLanes steps at a time, it fills a row of draws many times faster with the
// very same values.
constexpr int kLanes = 16;
struct Leap {
  uint32_t mul = 1, add = 0;  // state -> state * mul + add is kLanes steps
  constexpr Leap() {
    for (int i = 0; i < kLanes; ++i) mul *= kMul, add = add * kMul + kAdd;
  }
};
constexpr Leap kLeap;

}  // namespace

int rand() { return next_value(t_state); }

void rand_fill(uint16_t* values, int n) {
  uint32_t state = t_state;
  int i = 0;
  if (n >= 2 * kLanes) {
    uint32_t lane[kLanes];  // the states after steps i + 1 .. i + kLanes
    for (int j = 0; j < kLanes; ++j) lane[j] = state = state * kMul + kAdd;
    for (; i + kLanes <= n; i += kLanes) {
      for (int j = 0; j < kLanes; ++j) values[i + j] = static_cast<uint16_t>((lane[j] >> 16) & kRandMax);
      state = lane[kLanes - 1];
      for (int j = 0; j < kLanes; ++j) lane[j] = lane[j] * kLeap.mul + kLeap.add;
    }
  }
  for (; i < n; ++i) values[i] = static_cast<uint16_t>(next_value(state));
  t_state = state;
}

void set_random_state(uint32_t state) { t_state = state; }

}  // namespace zv

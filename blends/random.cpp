#include "blends/random.h"

namespace zv {
namespace {

// A thread that never called set_random_state starts from the same state as
// every other thread, as an unseeded runtime generator does.
thread_local uint32_t t_state = 1;

constexpr uint32_t kMul = 214013u, kAdd = 2531011u;

}  // namespace

int rand() {
  uint16_t value;
  t_state = lcg_draws_row_c(&value, 1, t_state, kMul, kAdd);
  return value;
}

void rand_fill(const RowKernels& rows, uint16_t* values, int n) {
  t_state = rows.lcg_draws(values, n, t_state, kMul, kAdd);
}

void set_random_state(uint32_t state) { t_state = state; }

}  // namespace zv

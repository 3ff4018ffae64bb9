// The library's pseudo-random generator: values 0..32767, one sequence per
// thread. The library never seeds it, so every call continues the calling
// thread's sequence and randomised transitions change from frame to frame.
#pragma once

#include <cstdint>

#include "frame/row_kernels.h"

namespace zv {

constexpr int kRandMax = 32767;

// The next value of the calling thread's sequence.
int rand();

// n values, exactly as n calls of rand() would give them, by the row table's
// generator row.
void rand_fill(const RowKernels& rows, uint16_t* values, int n);

// Sets the calling thread's state; only tests use it, to replay a sequence.
void set_random_state(uint32_t state);

}  // namespace zv

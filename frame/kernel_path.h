// Every plane worker has a plain reference implementation and a fast one
// (SIMD, precomputed weights). The fast one runs unless the calling thread asks
// for the reference, which the tests do to compare the two.
#pragma once

#include "frame/abi.h"

namespace zv {

enum class KernelPath { kFast, kReference };

ZV_API KernelPath kernel_path();
ZV_API void set_kernel_path(KernelPath path);

inline bool use_reference_path() { return kernel_path() == KernelPath::kReference; }

}  // namespace zv

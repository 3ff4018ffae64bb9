// Every plane worker has a plain reference implementation and a fast one
// (SIMD, precomputed weights). The fast one runs unless the calling thread asks
// for the reference, which the tests do to compare the two.
#pragma once

namespace zv {

enum class KernelPath { kFast, kReference };

KernelPath kernel_path();
void set_kernel_path(KernelPath path);

inline bool use_reference_path() { return kernel_path() == KernelPath::kReference; }

}  // namespace zv

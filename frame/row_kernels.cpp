#include "frame/row_kernels.h"

#include <algorithm>
#include <cstring>

#include "frame/kernel_path.h"

namespace zv {

void copy_row_c(uint8_t* out, const uint8_t* s, int n) {
  if (n > 0) std::memcpy(out, s, static_cast<size_t>(n));
}

void blend_row_c(uint8_t* out, const uint8_t* a, const uint8_t* b, int n, int k) {
  for (int i = 0; i < n; ++i) out[i] = static_cast<uint8_t>((a[i] * (256 - k) + b[i] * k) >> 8);
}

void blend_weights_row_c(uint8_t* out, const uint8_t* x, const uint8_t* y, const uint16_t* g, int n) {
  for (int i = 0; i < n; ++i) out[i] = static_cast<uint8_t>((x[i] * g[i] + y[i] * (256 - g[i])) >> 8);
}

void scale_luma_row_c(uint8_t* out, const uint8_t* s, int n, int w) {
  for (int i = 0; i < n; ++i) out[i] = static_cast<uint8_t>((s[i] * w) >> 8);
}

void scale_chroma_row_c(uint8_t* out, const uint8_t* s, int n, int w) {
  for (int i = 0; i < n; ++i) out[i] = static_cast<uint8_t>((((s[i] - 128) * w) >> 8) + 128);
}

void offset_saturate_row_c(uint8_t* out, const uint8_t* s, int n, int offset) {
  for (int i = 0; i < n; ++i) out[i] = static_cast<uint8_t>(std::clamp(s[i] + offset, 0, 255));
}

void offset_wrap_row_c(uint8_t* out, const uint8_t* s, int n, uint8_t offset) {
  for (int i = 0; i < n; ++i) out[i] = static_cast<uint8_t>(s[i] + offset);
}

void select_row_c(uint8_t* out, const uint8_t* first, const uint8_t* second, const uint8_t* pick_second, int n) {
  for (int i = 0; i < n; ++i) out[i] = pick_second[i] ? second[i] : first[i];
}

const RowKernels& c_rows() {
  static const RowKernels rows = {true,
                                  copy_row_c,
                                  blend_row_c,
                                  blend_weights_row_c,
                                  scale_luma_row_c,
                                  scale_chroma_row_c,
                                  offset_saturate_row_c,
                                  offset_wrap_row_c,
                                  select_row_c};
  return rows;
}

#ifdef ZV_C_ROWS_ONLY
// No SIMD rows in this build: the fast table holds the C rows.
const RowKernels& simd_rows() {
  static const RowKernels rows = [] {
    RowKernels r = c_rows();
    r.reference = false;
    return r;
  }();
  return rows;
}
#endif

const RowKernels& row_kernels() { return kernel_path() == KernelPath::kReference ? c_rows() : simd_rows(); }

}  // namespace zv

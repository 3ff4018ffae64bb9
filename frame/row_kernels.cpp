#include "frame/row_kernels.h"

#include <algorithm>
#include <cstring>

#include "frame/kernel_path.h"
#include "host/bt601.h"

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

namespace {

// n pixels (n even) of `Bytes` bytes, red, green and blue at their offsets (and
// 255 at the fourth byte of four), from a luma row and its chroma rows.
template <int Bytes, int R, int G, int B>
void yuv_to_pixels(uint8_t* out, const uint8_t* y, const uint8_t* u, const uint8_t* v, int n) {
  for (int j = 0; j < n / 2; ++j) {
    const int r0 = red_term(v[j]), g0 = green_term(u[j], v[j]), b0 = blue_term(u[j]);
    for (int dx = 0; dx < 2; ++dx) {
      const int luma = kYuvLuma * y[2 * j + dx];
      uint8_t* px = out + Bytes * (2 * j + dx);
      px[B] = static_cast<uint8_t>(std::clamp((luma + b0) >> 13, 0, 255));
      px[G] = static_cast<uint8_t>(std::clamp((luma + g0) >> 13, 0, 255));
      px[R] = static_cast<uint8_t>(std::clamp((luma + r0) >> 13, 0, 255));
      if (Bytes == 4) px[3] = 255;
    }
  }
}

// Two rows of n pixels (n even) of `Bytes` bytes to two luma rows and a row of
// each chroma, the truncated mean of the four pixels' chroma values.
template <int Bytes, int R, int G, int B>
void pixels_to_yuv(uint8_t* y0, uint8_t* y1, uint8_t* u, uint8_t* v, const uint8_t* row0, const uint8_t* row1, int n) {
  const uint8_t* rows[2] = {row0, row1};
  uint8_t* y_rows[2] = {y0, y1};
  for (int j = 0; j < n / 2; ++j) {
    int u_sum = 0, v_sum = 0;
    for (int dy = 0; dy < 2; ++dy) {
      for (int dx = 0; dx < 2; ++dx) {
        const uint8_t* px = rows[dy] + Bytes * (2 * j + dx);
        const int b = px[B], g = px[G], r = px[R];
        y_rows[dy][2 * j + dx] = static_cast<uint8_t>(rgb_to_y(r, g, b));
        u_sum += rgb_to_u(r, g, b);
        v_sum += rgb_to_v(r, g, b);
      }
    }
    // The mean of the already offset values, truncated.
    u[j] = static_cast<uint8_t>(u_sum >> 2);
    v[j] = static_cast<uint8_t>(v_sum >> 2);
  }
}

}  // namespace

void yuv_to_bgr_row_c(uint8_t* bgr, const uint8_t* y, const uint8_t* u, const uint8_t* v, int n) {
  yuv_to_pixels<3, 2, 1, 0>(bgr, y, u, v, n);
}

void yuv_to_rgba_row_c(uint8_t* rgba, const uint8_t* y, const uint8_t* u, const uint8_t* v, int n) {
  yuv_to_pixels<4, 0, 1, 2>(rgba, y, u, v, n);
}

void bgr_to_yuv_row_c(uint8_t* y0, uint8_t* y1, uint8_t* u, uint8_t* v, const uint8_t* bgr0, const uint8_t* bgr1,
                      int n) {
  pixels_to_yuv<3, 2, 1, 0>(y0, y1, u, v, bgr0, bgr1, n);
}

void rgba_to_yuv_row_c(uint8_t* y0, uint8_t* y1, uint8_t* u, uint8_t* v, const uint8_t* rgba0, const uint8_t* rgba1,
                       int n) {
  pixels_to_yuv<4, 0, 1, 2>(y0, y1, u, v, rgba0, rgba1, n);
}

void bgr_to_rgba_row_c(uint8_t* rgba, const uint8_t* bgr, int n) {
  for (int i = 0; i < n; ++i, bgr += 3, rgba += 4) {
    rgba[0] = bgr[2];
    rgba[1] = bgr[1];
    rgba[2] = bgr[0];
    rgba[3] = 255;
  }
}

uint32_t lcg_draws_row_c(uint16_t* values, int n, uint32_t state, uint32_t mul, uint32_t add) {
  for (int i = 0; i < n; ++i) {
    state = state * mul + add;
    values[i] = static_cast<uint16_t>((state >> 16) & 0x7FFF);
  }
  return state;
}

void picks_below_mod_row_c(uint8_t* pick, const uint16_t* values, int n, uint32_t divisor, uint32_t below) {
  for (int i = 0; i < n; ++i) pick[i] = values[i] % divisor < below ? 0xFF : 0;
}

namespace {

int no_box_filter_lanes() { return 0; }

}  // namespace

const RowKernels& c_rows() {
  static const RowKernels rows = {true,
                                  copy_row_c,
                                  blend_row_c,
                                  blend_weights_row_c,
                                  scale_luma_row_c,
                                  scale_chroma_row_c,
                                  offset_saturate_row_c,
                                  offset_wrap_row_c,
                                  select_row_c,
                                  yuv_to_bgr_row_c,
                                  bgr_to_yuv_row_c,
                                  bgr_to_rgba_row_c,
                                  yuv_to_rgba_row_c,
                                  rgba_to_yuv_row_c,
                                  box_filter_row_c,
                                  no_box_filter_lanes,
                                  lcg_draws_row_c,
                                  picks_below_mod_row_c};
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

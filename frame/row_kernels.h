// The row kernels of the software transitions, as one table chosen once per
// call: the plain C rows (the formulas as written) or the SIMD rows, which
// pick the widest instruction set the CPU has at run time. Both give the same
// bytes for every input; widths may be 0, and nothing past a row's n samples
// is read or written.
#pragma once

#include <cstdint>

#include "frame/box_filter.h"

namespace zv {

struct RowKernels {
  // The table of the plain formulas: plane workers take their reference path.
  bool reference;
  // out = s
  void (*copy)(uint8_t* out, const uint8_t* s, int n);
  // out = (a * (256 - k) + b * k) >> 8, k in 0..256.
  void (*blend)(uint8_t* out, const uint8_t* a, const uint8_t* b, int n, int k);
  // out = (x * g[i] + y * (256 - g[i])) >> 8, one weight in 0..256 per sample.
  void (*blend_weights)(uint8_t* out, const uint8_t* x, const uint8_t* y, const uint16_t* g, int n);
  // Towards black, w in 0..256: luma (s * w) >> 8, chroma
  // (((s - 128) * w) >> 8) + 128 with a flooring shift.
  void (*scale_luma)(uint8_t* out, const uint8_t* s, int n, int w);
  void (*scale_chroma)(uint8_t* out, const uint8_t* s, int n, int w);
  // out = s + offset saturated to 0..255, offset in -255..255.
  void (*offset_saturate)(uint8_t* out, const uint8_t* s, int n, int offset);
  // out = (s + offset) mod 256.
  void (*offset_wrap)(uint8_t* out, const uint8_t* s, int n, uint8_t offset);
  // out = pick_second[i] ? second[i] : first[i]
  void (*select)(uint8_t* out, const uint8_t* first, const uint8_t* second, const uint8_t* pick_second, int n);
  // n pixels (n even) of a 24-bit B, G, R row from a luma row and the chroma
  // rows beside it (one chroma sample for two pixels).
  void (*yuv_to_bgr)(uint8_t* bgr, const uint8_t* y, const uint8_t* u, const uint8_t* v, int n);
  // Two 24-bit rows of n pixels (n even) to their two luma rows and one row of
  // each chroma: the truncated mean of the four pixels' chroma values.
  void (*bgr_to_yuv)(uint8_t* y0, uint8_t* y1, uint8_t* u, uint8_t* v, const uint8_t* bgr0, const uint8_t* bgr1,
                     int n);
  // n B, G, R pixels to R, G, B, 255.
  void (*bgr_to_rgba)(uint8_t* rgba, const uint8_t* bgr, int n);
  // yuv_to_bgr's pixels as R, G, B, 255: the bytes an OpenGL texture takes.
  void (*yuv_to_rgba)(uint8_t* rgba, const uint8_t* y, const uint8_t* u, const uint8_t* v, int n);
  // bgr_to_yuv over R, G, B, A pixels (A not read): what an OpenGL colour
  // buffer reads back as.
  void (*rgba_to_yuv)(uint8_t* y0, uint8_t* y1, uint8_t* u, uint8_t* v, const uint8_t* rgba0, const uint8_t* rgba1,
                      int n);
  // One row of the mipmap builder's box filter (frame/box_filter.h), with
  // columns laid out for box_filter_lanes() lanes (the SIMD row takes the C
  // row's way for any other layout).
  void (*box_filter)(uint32_t* out, const uint32_t* const* rows, const BoxSpan& y, const BoxColumns& columns,
                     float area);
  int (*box_filter_lanes)();
  // n draws of a linear congruential generator, in order: state = state * mul
  // + add, then value = (state >> 16) & 0x7FFF. Returns the last state.
  uint32_t (*lcg_draws)(uint16_t* values, int n, uint32_t state, uint32_t mul, uint32_t add);
  // pick = 0xFF where value % divisor < below, else 0; values 0..32767,
  // divisor 1..32768.
  void (*picks_below_mod)(uint8_t* pick, const uint16_t* values, int n, uint32_t divisor, uint32_t below);
};

// The plain C rows and the SIMD rows.
const RowKernels& c_rows();
const RowKernels& simd_rows();

// The table the calling thread asked for (kernel_path), read once per call.
const RowKernels& row_kernels();

// The C rows one by one; the SIMD rows finish their tails with them.
void copy_row_c(uint8_t* out, const uint8_t* s, int n);
void blend_row_c(uint8_t* out, const uint8_t* a, const uint8_t* b, int n, int k);
void blend_weights_row_c(uint8_t* out, const uint8_t* x, const uint8_t* y, const uint16_t* g, int n);
void scale_luma_row_c(uint8_t* out, const uint8_t* s, int n, int w);
void scale_chroma_row_c(uint8_t* out, const uint8_t* s, int n, int w);
void offset_saturate_row_c(uint8_t* out, const uint8_t* s, int n, int offset);
void offset_wrap_row_c(uint8_t* out, const uint8_t* s, int n, uint8_t offset);
void select_row_c(uint8_t* out, const uint8_t* first, const uint8_t* second, const uint8_t* pick_second, int n);
void yuv_to_bgr_row_c(uint8_t* bgr, const uint8_t* y, const uint8_t* u, const uint8_t* v, int n);
void bgr_to_yuv_row_c(uint8_t* y0, uint8_t* y1, uint8_t* u, uint8_t* v, const uint8_t* bgr0, const uint8_t* bgr1, int n);
void bgr_to_rgba_row_c(uint8_t* rgba, const uint8_t* bgr, int n);
void yuv_to_rgba_row_c(uint8_t* rgba, const uint8_t* y, const uint8_t* u, const uint8_t* v, int n);
void rgba_to_yuv_row_c(uint8_t* y0, uint8_t* y1, uint8_t* u, uint8_t* v, const uint8_t* rgba0, const uint8_t* rgba1,
                       int n);
uint32_t lcg_draws_row_c(uint16_t* values, int n, uint32_t state, uint32_t mul, uint32_t add);
void picks_below_mod_row_c(uint8_t* pick, const uint16_t* values, int n, uint32_t divisor, uint32_t below);

}  // namespace zv

#include "wipes/wipe_rows.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace zv {

void push_rows_horizontal(int k, int width, int rows, int out_stride, int first_stride, int second_stride,
                          uint8_t* out_start, const uint8_t* first, const uint8_t* second) {
  copy_block(width - k, k, rows, out_stride, first_stride, out_start, first);
  copy_block(0, width - k, rows, out_stride, second_stride, out_start + k, second);
}

void push_rows_vertical(int k, int width, int rows, int out_stride, int first_stride, int second_stride,
                        uint8_t* out_start, const uint8_t* first, const uint8_t* second, const uint8_t* out_end) {
  if (width < 1) return;
  const ptrdiff_t limit = out_end - out_start;
  ptrdiff_t offset = 0;  // of the current output row from out_start
  auto write_row = [&](const uint8_t* source) {
    const ptrdiff_t n = std::min<ptrdiff_t>(width, limit - offset);
    if (n > 0) std::memcpy(out_start + offset, source, static_cast<size_t>(n));
  };
  const uint8_t* source = first + static_cast<ptrdiff_t>(rows - k) * first_stride;
  for (int row = 0; row < k; ++row, source += first_stride) {
    write_row(source);
    offset += first_stride;  // the first source's stride, kept deliberately
  }
  source = second;
  for (int row = k; row < rows; ++row, source += second_stride) {
    write_row(source);
    offset += out_stride;
  }
}

void fill_left_copy_right(uint8_t fill, int k, int rows, int width, int /*height*/, int out_stride,
                          int source_stride, uint8_t* out_start, const uint8_t* source) {
  for (int row = 0; row < rows; ++row, out_start += out_stride, source += source_stride) {
    if (width > k) std::memset(out_start, fill, width - k);
    if (k > 0) std::memcpy(out_start + (width - k), source, k);
  }
}

void copy_left_fill_right(uint8_t fill, int k, int rows, int width, int /*height*/, int out_stride,
                          int source_stride, uint8_t* out_start, const uint8_t* source) {
  for (int row = 0; row < rows; ++row, out_start += out_stride, source += source_stride) {
    if (k > 0) std::memcpy(out_start, source, k);
    if (k < width) std::memset(out_start + k, fill, width - k);
  }
}

}  // namespace zv

#include "wipes/wipe_rows.h"

#include <cstring>

namespace zv {

void copy_three_spans(int x0, int x1, int width, uint8_t* out_row, const uint8_t* a_row, const uint8_t* b_row) {
  if (x0 > 0) std::memcpy(out_row, a_row, x0);
  if (x1 > x0) std::memcpy(out_row + x0, b_row + x0, x1 - x0);
  if (width > x1) std::memcpy(out_row + x1, a_row + x1, width - x1);
}

void copy_block(int source_column_offset, int width, int rows, int out_stride, int source_stride, uint8_t* out_start,
                const uint8_t* source_start) {
  if (rows < 1 || width < 1) return;
  const uint8_t* source = source_start + source_column_offset;
  for (int row = 0; row < rows; ++row) {
    std::memcpy(out_start, source, width);
    out_start += out_stride;
    source += source_stride;
  }
}

}  // namespace zv

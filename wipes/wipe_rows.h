// Row helpers of the geometric wipes. Transitions that move or split the
// picture build every area from these.
#pragma once

#include <cstdint>

namespace zv {

// One output row: [0, x0) from a_row, [x0, x1) from b_row, [x1, width) from
// a_row, each span from the same columns of its source.
void copy_three_spans(int x0, int x1, int width, uint8_t* out_row, const uint8_t* a_row, const uint8_t* b_row);

// Copies `rows` rows of `width` bytes from source_start + source_column_offset
// to out_start, advancing each side by its own stride; nothing when rows < 1.
void copy_block(int source_column_offset, int width, int rows, int out_stride, int source_stride,
                uint8_t* out_start, const uint8_t* source_start);

}  // namespace zv

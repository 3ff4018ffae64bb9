// Row helpers every software family builds its areas from: copies, fills and
// nearest-sample scaling of spans and blocks. Rows are addressed with
// ptrdiff_t offsets from a block's first sample.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zv {

// The row at `row` of a plane block that starts at `start` with `stride`.
inline uint8_t* row_at(uint8_t* start, int stride, int row) {
  return start + static_cast<ptrdiff_t>(row) * stride;
}
inline const uint8_t* row_at(const uint8_t* start, int stride, int row) {
  return start + static_cast<ptrdiff_t>(row) * stride;
}

// One output row: [0, x0) from a_row, [x0, x1) from b_row, [x1, width) from
// a_row, each span from the same columns of its source.
void copy_three_spans(int x0, int x1, int width, uint8_t* out_row, const uint8_t* a_row, const uint8_t* b_row);

// Copies `rows` rows of `width` bytes from source_start + source_column_offset
// to out_start, advancing each side by its own stride; nothing when rows < 1.
void copy_block(int source_column_offset, int width, int rows, int out_stride, int source_stride,
                uint8_t* out_start, const uint8_t* source_start);

// Writes `fill` into `rows` rows of `width` bytes; nothing when either < 1.
void fill_block(uint8_t fill, int width, int rows, int out_stride, uint8_t* out_start);

// Target sample i (0 <= i < target_width) takes source sample
// (i * source_width) / target_width; an exact copy when the widths agree.
void scale_row_nearest(int target_width, int source_width, uint8_t* out_row, const uint8_t* source_row);

// A rectangle of a block, in samples from the block's first sample.
struct BlockRect {
  int x, y, width, height;
};

// Scales the `source` rectangle of the source block onto the `target`
// rectangle of the output block, nearest sample (target row j takes source row
// (j * source.height) / target.height), writing only the target samples that
// lie inside `clip`. The target may reach past the clip on any side.
void scale_block_nearest(const BlockRect& target, const BlockRect& source, const BlockRect& clip, int out_stride,
                         int source_stride, uint8_t* out_start, const uint8_t* source_start);

// The column where the diagonal from the top-left corner of a w x h area to
// its bottom-right corner crosses the centre of row y, rounded:
// ((2y + 1) * w + h) / (2h), 0..w. The other diagonal crosses at w minus it.
inline int diagonal_column(int y, int w, int h) {
  return static_cast<int>(((2 * static_cast<int64_t>(y) + 1) * w + h) / (2 * static_cast<int64_t>(h)));
}

}  // namespace zv

#include "frame/rows.h"

#include <algorithm>
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
    std::memcpy(row_at(out_start, out_stride, row), row_at(source, source_stride, row), width);
  }
}

void fill_block(uint8_t fill, int width, int rows, int out_stride, uint8_t* out_start) {
  if (rows < 1 || width < 1) return;
  for (int row = 0; row < rows; ++row) std::memset(row_at(out_start, out_stride, row), fill, width);
}

namespace {

// Target samples [i0, i1) of a row scaled from source_width onto
// target_width: sample i takes source sample (i * source_width) /
// target_width, found without a division per sample (the quotient and the
// remainder step by source_width / target_width and its remainder). The
// transitions' reference paths write the division out sample by sample.
void scale_span(int64_t i0, int64_t i1, int64_t target_width, int64_t source_width, uint8_t* out,
                     const uint8_t* source) {
  if (target_width == source_width) {
    if (i1 > i0) std::memcpy(out + i0, source + i0, static_cast<size_t>(i1 - i0));
    return;
  }
  const int64_t step = source_width / target_width, step_rest = source_width % target_width;
  int64_t index = i0 * source_width / target_width, rest = i0 * source_width % target_width;
  for (int64_t i = i0; i < i1; ++i) {
    out[i] = source[index];
    index += step;
    rest += step_rest;
    if (rest >= target_width) {
      ++index;
      rest -= target_width;
    }
  }
}

}  // namespace

void scale_row_nearest(int target_width, int source_width, uint8_t* out_row, const uint8_t* source_row) {
  if (target_width < 1) return;
  scale_span(0, target_width, target_width, source_width, out_row, source_row);
}

void scale_block_nearest(const BlockRect& target, const BlockRect& source, const BlockRect& clip, int out_stride,
                         int source_stride, uint8_t* out_start, const uint8_t* source_start) {
  if (target.width < 1 || target.height < 1 || source.width < 1 || source.height < 1) return;
  // The part of the target inside the clip, in target-relative samples.
  const int64_t i0 = std::max<int64_t>(0, static_cast<int64_t>(clip.x) - target.x);
  const int64_t i1 = std::min<int64_t>(target.width, static_cast<int64_t>(clip.x) + clip.width - target.x);
  const int64_t j0 = std::max<int64_t>(0, static_cast<int64_t>(clip.y) - target.y);
  const int64_t j1 = std::min<int64_t>(target.height, static_cast<int64_t>(clip.y) + clip.height - target.y);
  if (i0 >= i1 || j0 >= j1) return;
  for (int64_t j = j0; j < j1; ++j) {
    const int64_t source_row = source.y + j * source.height / target.height;
    const uint8_t* from = row_at(source_start, source_stride, static_cast<int>(source_row)) + source.x;
    uint8_t* to = row_at(out_start, out_stride, static_cast<int>(target.y + j)) + target.x;
    scale_span(i0, i1, target.width, source.width, to, from);
  }
}

}  // namespace zv

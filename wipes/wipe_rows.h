// Row helpers of the geometric wipes that push pictures in and out, on top
// of the shared row helpers.
#pragma once

#include <cstdint>

#include "frame/rows.h"

namespace zv {

// Each row: the last k bytes of the first source's row (columns width - k to
// width), then the first width - k bytes of the second source's row.
void push_rows_horizontal(int k, int width, int rows, int out_stride, int first_stride, int second_stride,
                          uint8_t* out_start, const uint8_t* first, const uint8_t* second);

// Output rows 0 to k - 1 take the first source's rows rows - k to rows - 1,
// output rows k to rows - 1 the second source's rows 0 to rows - k - 1. While
// the first k rows are written the output advances by first_stride, not by
// out_stride: kept as hosts expect, it shows only when the widths differ. No
// byte at or past out_end (the end of the output plane) is written.
void push_rows_vertical(int k, int width, int rows, int out_stride, int first_stride, int second_stride,
                        uint8_t* out_start, const uint8_t* first, const uint8_t* second, const uint8_t* out_end);

// Each row: width - k fill bytes, then the first k bytes of the source row.
// `height` is part of the routine's call shape and not used.
void fill_left_copy_right(uint8_t fill, int k, int rows, int width, int height, int out_stride, int source_stride,
                          uint8_t* out_start, const uint8_t* source);

// Each row: the first k bytes of the source row, then width - k fill bytes.
// `height` is part of the routine's call shape and not used.
void copy_left_fill_right(uint8_t fill, int k, int rows, int width, int height, int out_stride, int source_stride,
                          uint8_t* out_start, const uint8_t* source);

}  // namespace zv

// Shape and strip routines of the geometric wipes: each fills a W x H area of
// the output, row by row, from two pictures with hard edges. Every pointer is
// the top-left byte of the area in its plane and every stride that plane's
// width. Rotate, Region, Cross and Blind are built from them, and so are the
// clock and triangle wipes.
#pragma once

#include <cstdint>

#include "frame/row_kernels.h"

namespace zv {

// x * 3.1415926535: angles of the rotating wipes use this ten-decimal pi.
double times_pi(double x);

// For each of `rows` rows: x = trunc(xf) clamped to [0, width], where xf starts
// at x0 and grows by `step` after every row; bytes [0, x) come from `left`,
// [x, width) from `right`, each at its own column.
void wedge_rows(int x0, double step, int width, int rows, int out_stride, int left_stride, int right_stride,
                uint8_t* out_start, const uint8_t* left, const uint8_t* right);

// A circle of `inside` over `outside`, through the corners of a centred
// size_x x size_y rectangle. Covers 2 * (W / 2) columns and 2 * (H / 2) rows
// of the shaped rows (the heights are part of the call and not needed).
void round_region(int size_x, int size_y, int width, int height, int out_stride, int out_height, int outside_stride,
                  int outside_height, int inside_stride, int inside_height, uint8_t* out_start, const uint8_t* outside,
                  const uint8_t* inside);

// Four corner blocks of round(W * fraction) x round(H * fraction) from
// `corner`, everything else from `inner`, each in place.
void four_parts_region(double fraction, int width, int height, int out_stride, int inner_stride, int corner_stride,
                       uint8_t* out_start, const uint8_t* inner, const uint8_t* corner);

// A diamond of `inside` over `outside` whose half-height is round(fraction * H).
void diamond_region(double fraction, int width, int height, int out_stride, int outside_stride, int inside_stride,
                    uint8_t* out_start, const uint8_t* outside, const uint8_t* inside);

// Blinds: n strips; in each, `second` grows over a share `fraction` of the
// strip from its leading edge and `first` fills the rest.
void vertical_blinds(const RowKernels& kernels, double fraction, int n, int width, int height, int out_stride,
                     int first_stride, int second_stride, uint8_t* out_start, const uint8_t* first,
                     const uint8_t* second);
void horizontal_blinds(double fraction, int n, int width, int height, int out_stride, int first_stride,
                       int second_stride, uint8_t* out_start, const uint8_t* first, const uint8_t* second);
// Strips 2W / n wide whose edges rise (x + y * W / H constant) or fall
// (x - y * W / H constant) to the right.
void slanted_blinds_rising(double fraction, int n, int width, int height, int out_stride, int first_stride,
                           int second_stride, uint8_t* out_start, const uint8_t* first, const uint8_t* second);
void slanted_blinds_falling(double fraction, int n, int width, int height, int out_stride, int first_stride,
                            int second_stride, uint8_t* out_start, const uint8_t* first, const uint8_t* second);

// Cross: n bands, each split into two half-bands served from opposite sides.
// Close wipes `b` in over `a`; open slides `a` out over `b` standing still.
void cross_close_horizontal(double progress, int n, int width, int height, int out_stride, int a_stride, int b_stride,
                            uint8_t* out_start, const uint8_t* a, const uint8_t* b);
void cross_open_horizontal(double progress, int n, int width, int height, int out_stride, int a_stride, int b_stride,
                           uint8_t* out_start, const uint8_t* a, const uint8_t* b);
void cross_close_vertical(double progress, int n, int width, int height, int out_stride, int a_stride, int b_stride,
                          uint8_t* out_start, const uint8_t* a, const uint8_t* b);
void cross_open_vertical(double progress, int n, int width, int height, int out_stride, int a_stride, int b_stride,
                         uint8_t* out_start, const uint8_t* a, const uint8_t* b);

}  // namespace zv

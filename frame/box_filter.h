// The float box filter that scales a frame to the power-of-two level 0 of the
// largest OpenGL textures, texel for texel as the mipmap builder (GLU) fills
// that level: single-precision box edges that advance by adding the fraction
// (carrying past 1 with a strictly-greater test), each output sample the sum of
// its input samples weighted by the share of the box they cover, added in the
// builder's order, divided by the box's area and truncated.
//
// Pixels are 32-bit R, G, B, A (R the lowest byte); A is not read and the
// output's A is 255.
#pragma once

#include <cstdint>
#include <vector>

namespace zv {

// One output sample's box along one axis: from input sample `lo` at fraction
// `lo_frac` to `hi` at `hi_frac`.
struct BoxSpan {
  int lo;
  float lo_frac;
  int hi;
  float hi_frac;
};

// The boxes of `out` samples over `in`. `clamp_end`: the vertical axis, whose
// box end the builder keeps inside the input (carried on to the next box).
std::vector<BoxSpan> box_spans(int in, int out, bool clamp_end);
// The box's area: the two axes' input-to-output ratios multiplied.
float box_area(int in_width, int in_height, int out_width, int out_height);

// Input rows hold this many pixels past their width (zero): a box's end may
// sit on the pixel just past the row (with no weight), and the SIMD rows read
// whole windows of pixels.
constexpr int kBoxRowPad = 64;

// The columns of one output width over one input width, with the layout the
// SIMD row reads: blocks of `lanes` columns, each with a window of input pixels
// starting at `base`, and per column its offsets into the window and weights.
struct BoxColumns {
  std::vector<BoxSpan> spans;
  int lanes = 0;              // 0: no SIMD layout, the C row serves
  int slots = 0;              // input pixels a column reaches at most
  int padded = 0;             // columns rounded up to whole blocks
  std::vector<int32_t> base;  // per block
  // Per slot s (0 .. slots - 1): the column's pixel lo + s (lo where s lies past
  // its box); then, as slot `slots`, its pixel hi.
  std::vector<int32_t> offsets;
  // Per slot s: the weight of pixel lo + s along the row (0 past the box); per
  // slot: 1 for the pixels strictly inside the box (0 elsewhere); then the
  // weight of pixel hi in the rows between the first and the last.
  std::vector<float> weights;
  std::vector<int32_t> single;  // -1 where the box lies within one input pixel (hi == lo)
};
BoxColumns box_columns(int in_width, int out_width, int lanes);

// One output row over `columns.spans.size()` columns: rows[k] is input row
// y.lo + k, k = 0 .. y.hi - y.lo. The builder's arithmetic as it is written.
void box_filter_row_c(uint32_t* out, const uint32_t* const* rows, const BoxSpan& y, const BoxColumns& columns,
                      float area);

// The builder's fill of a level exactly half the frame's size both ways: the
// rounded mean of each 2 x 2 block.
void box_halve_row_c(uint32_t* out, const uint32_t* row0, const uint32_t* row1, int out_width);

}  // namespace zv

#include "frame/box_filter.h"

#include <algorithm>
#include <cmath>

namespace zv {
namespace {

// Channel c (0 red, 1 green, 2 blue) of a pixel, as the float the sums take.
inline float channel(uint32_t pixel, int c) { return static_cast<float>((pixel >> (8 * c)) & 0xFF); }

inline uint32_t opaque_pixel(const float (&totals)[3], float area) {
  uint32_t pixel = 0xFF000000u;
  // Truncated, as the builder stores the quotient into a byte.
  for (int c = 0; c < 3; ++c) pixel |= static_cast<uint32_t>(static_cast<int>(totals[c] / area)) << (8 * c);
  return pixel;
}

}  // namespace

std::vector<BoxSpan> box_spans(int in, int out, bool clamp_end) {
  std::vector<BoxSpan> spans(static_cast<size_t>(std::max(out, 0)));
  if (in <= 0 || out <= 0) return spans;
  const float ratio = static_cast<float>(in) / out;
  const int whole = static_cast<int>(std::floor(ratio));
  const float fraction = ratio - whole;
  int lo = 0, hi = whole;
  float lo_frac = 0, hi_frac = fraction;
  for (BoxSpan& span : spans) {
    if (clamp_end && hi >= in) hi = in - 1;
    span = {lo, lo_frac, hi, hi_frac};
    lo = hi;
    lo_frac = hi_frac;
    hi += whole;
    hi_frac += fraction;
    // Strictly greater: a box may end exactly on a pixel's far edge.
    if (hi_frac > 1) {
      hi_frac -= 1.0f;
      ++hi;
    }
  }
  return spans;
}

float box_area(int in_width, int in_height, int out_width, int out_height) {
  const float x = static_cast<float>(in_width) / out_width, y = static_cast<float>(in_height) / out_height;
  return x * y;
}

BoxColumns box_columns(int in_width, int out_width, int lanes) {
  BoxColumns columns;
  columns.spans = box_spans(in_width, out_width, false);
  const int n = static_cast<int>(columns.spans.size());
  for (const BoxSpan& x : columns.spans) columns.slots = std::max(columns.slots, x.hi - x.lo + 1);
  if (lanes <= 0 || n == 0 || 2 * lanes > kBoxRowPad) return columns;
  const int slots = columns.slots, padded = (n + lanes - 1) / lanes * lanes;
  columns.lanes = lanes;
  columns.padded = padded;
  columns.base.assign(static_cast<size_t>(padded / lanes), 0);
  columns.offsets.assign(static_cast<size_t>(slots + 1) * padded, 0);
  columns.weights.assign(static_cast<size_t>(2 * slots + 1) * padded, 0.0f);
  columns.single.assign(static_cast<size_t>(padded), 0);
  for (int j = 0; j < n; ++j) {
    const BoxSpan& x = columns.spans[static_cast<size_t>(j)];
    const int base = columns.spans[static_cast<size_t>(j / lanes * lanes)].lo, reach = x.hi - x.lo;
    columns.base[static_cast<size_t>(j / lanes)] = base;
    // Every pixel a column reads lies in its block's window of 2 * lanes pixels, or there is no SIMD layout.
    if (x.hi - base >= 2 * lanes) return box_columns(in_width, out_width, 0);
    auto at = [&](std::vector<float>& table, int row) -> float& {
      return table[static_cast<size_t>(row) * padded + static_cast<size_t>(j)];
    };
    for (int s = 0; s < slots; ++s) {
      columns.offsets[static_cast<size_t>(s) * padded + static_cast<size_t>(j)] = x.lo + (s <= reach ? s : 0) - base;
      float weight = 0;
      if (reach == 0) {
        weight = s == 0 ? x.hi_frac - x.lo_frac : 0.0f;
      } else if (s == 0) {
        weight = 1 - x.lo_frac;
      } else if (s < reach) {
        weight = 1;
      } else if (s == reach) {
        weight = x.hi_frac;
      }
      at(columns.weights, s) = weight;
      at(columns.weights, slots + s) = s > 0 && s < reach ? 1.0f : 0.0f;
    }
    columns.offsets[static_cast<size_t>(slots) * padded + static_cast<size_t>(j)] = x.hi - base;
    at(columns.weights, 2 * slots) = reach == 0 ? 0.0f : x.hi_frac;
    columns.single[static_cast<size_t>(j)] = reach == 0 ? -1 : 0;
  }
  return columns;
}

void box_filter_row_c(uint32_t* out, const uint32_t* const* rows, const BoxSpan& y, const BoxColumns& columns,
                      float area) {
  const int ny = y.hi - y.lo;
  for (size_t j = 0; j < columns.spans.size(); ++j) {
    const BoxSpan& x = columns.spans[j];
    const int nx = x.hi - x.lo;
    float totals[3] = {0, 0, 0};
    auto add = [&totals](const uint32_t* row, int col, float percent) {
      for (int c = 0; c < 3; ++c) totals[c] += channel(row[col], c) * percent;
    };
    if (ny > 0 && nx > 0) {
      // The first row, the last row, then the first and last columns of the rows between.
      float y_percent = 1 - y.lo_frac;
      add(rows[0], x.lo, y_percent * (1 - x.lo_frac));
      for (int l = x.lo + 1; l < x.hi; ++l) add(rows[0], l, y_percent);
      add(rows[0], x.hi, y_percent * x.hi_frac);
      y_percent = y.hi_frac;
      add(rows[ny], x.lo, y_percent * (1 - x.lo_frac));
      for (int l = x.lo + 1; l < x.hi; ++l) add(rows[ny], l, y_percent);
      add(rows[ny], x.hi, y_percent * x.hi_frac);
      for (int m = 1; m < ny; ++m) {
        for (int c = 0; c < 3; ++c) {
          totals[c] += channel(rows[m][x.lo], c) * (1 - x.lo_frac) + channel(rows[m][x.hi], c) * x.hi_frac;
        }
      }
    } else if (ny > 0) {
      const float x_percent = x.hi_frac - x.lo_frac;
      add(rows[0], x.lo, (1 - y.lo_frac) * x_percent);
      for (int m = 1; m < ny; ++m) add(rows[m], x.lo, x_percent);
      add(rows[ny], x.lo, x_percent * y.hi_frac);
    } else if (nx > 0) {
      const float y_percent = y.hi_frac - y.lo_frac;
      add(rows[0], x.lo, (1 - x.lo_frac) * y_percent);
      for (int l = x.lo + 1; l < x.hi; ++l) add(rows[0], l, y_percent);
      add(rows[0], x.hi, y_percent * x.hi_frac);
    } else {
      add(rows[0], x.lo, (y.hi_frac - y.lo_frac) * (x.hi_frac - x.lo_frac));
    }
    // The pixels wholly inside the box.
    for (int m = 1; m < ny; ++m) {
      for (int l = x.lo + 1; l < x.hi; ++l) {
        for (int c = 0; c < 3; ++c) totals[c] += channel(rows[m][l], c);
      }
    }
    out[j] = opaque_pixel(totals, area);
  }
}

void box_halve_row_c(uint32_t* out, const uint32_t* row0, const uint32_t* row1, int out_width) {
  for (int j = 0; j < out_width; ++j) {
    uint32_t pixel = 0xFF000000u;
    for (int c = 0; c < 3; ++c) {
      const int shift = 8 * c;
      const uint32_t sum = ((row0[2 * j] >> shift) & 0xFF) + ((row0[2 * j + 1] >> shift) & 0xFF) +
                           ((row1[2 * j] >> shift) & 0xFF) + ((row1[2 * j + 1] >> shift) & 0xFF);
      pixel |= ((sum + 2) / 4) << shift;
    }
    out[j] = pixel;
  }
}

}  // namespace zv

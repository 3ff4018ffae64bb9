#include "wipes/shape_rows.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <vector>

#include "frame/transition_op.h"
#include "wipes/wipe_rows.h"

namespace zv {
namespace {

// Bytes [begin, end) of a row from the same columns of `source`; nothing when
// end <= begin.
void copy_span(int begin, int end, uint8_t* out, const uint8_t* source) {
  if (end > begin) std::memcpy(out + begin, source + begin, static_cast<size_t>(end - begin));
}

// Rows [first_row, end_row) of the area, `width` bytes each, from `source` in place.
void whole_rows(int first_row, int end_row, int width, uint8_t* out, int out_stride, const uint8_t* source,
                int source_stride) {
  if (end_row <= first_row) return;
  copy_block(0, width, end_row - first_row, out_stride, source_stride, row_at(out, out_stride, first_row),
             row_at(source, source_stride, first_row));
}

// One strip of a blind along a size: [begin, split) shows the growing picture,
// [split, end) the other one.
struct StripSpan {
  int begin, split, end;
};

// The n strips of a vertical or horizontal blind over `size` samples: strip i
// ends at round((i + 1) * size / n), its growing part at round(start + f * s).
std::vector<StripSpan> blind_strips(double fraction, int n, int size) {
  std::vector<StripSpan> strips;
  strips.reserve(static_cast<size_t>(std::max(n, 0)));
  const double s = static_cast<double>(size) / n;
  double start = 0.0;
  int begin = 0;
  for (int i = 0; i < n; ++i) {
    const int grown = round_to_int(start + fraction * s);
    start += s;
    const int end = std::clamp(round_to_int(start), begin, size);
    strips.push_back({begin, std::clamp(grown, begin, end), end});
    begin = end;
  }
  return strips;
}

// One cross band: [begin, middle) the first half-band, [middle, end) the second.
struct Band {
  int begin, middle, end;
};

// n bands of half-band size t = (size / 2) / n over 2 * (size / 2) samples;
// an odd size's last sample is in no band (kept as hosts expect).
std::vector<Band> cross_bands(int n, int size) {
  std::vector<Band> bands;
  bands.reserve(static_cast<size_t>(std::max(n, 0)));
  const int covered = 2 * (size / 2);
  const double t = (size / 2) / static_cast<double>(n);
  double position = t;
  int begin = 0;
  for (int i = 0; i < n; ++i) {
    const int middle = std::clamp(round_to_int(position), begin, covered);
    const int end = std::clamp(round_to_int(position + t), middle, covered);
    bands.push_back({begin, middle, end});
    begin = end;
    position += 2 * t;
  }
  return bands;
}

// Horizontal bands: in each upper half-band `b` comes in from the left, in
// each lower one from the right. Closing keeps `a` in place; opening moves it
// out by the travel k (right in the upper half-band, left in the lower).
void cross_horizontal(bool open, double progress, int n, int width, int height, int out_stride, int a_stride,
                      int b_stride, uint8_t* out_start, const uint8_t* a, const uint8_t* b) {
  if (n < 1 || width < 1 || height < 1) return;
  // The travel is truncated, not rounded.
  const int k = std::clamp(truncate_to_int(width * progress), 0, width);
  const int shift = open ? k : 0;
  for (const Band& band : cross_bands(n, height)) {
    for (int row = band.begin; row < band.end; ++row) {
      uint8_t* o = row_at(out_start, out_stride, row);
      const uint8_t* pa = row_at(a, a_stride, row);
      const uint8_t* pb = row_at(b, b_stride, row);
      if (row < band.middle) {
        copy_span(0, k, o, pb);
        copy_span(k - shift, width - shift, o + shift, pa);
      } else {
        copy_span(0, width - k, o, pa + shift);
        copy_span(width - k, width, o, pb);
      }
    }
  }
}

// Vertical bands: `b` comes in from the top in each left half-band and from
// the bottom in each right one; opening moves `a` down or up by the travel.
void cross_vertical(bool open, double progress, int n, int width, int height, int out_stride, int a_stride,
                    int b_stride, uint8_t* out_start, const uint8_t* a, const uint8_t* b) {
  if (n < 1 || width < 1 || height < 1) return;
  const int k = std::clamp(truncate_to_int(height * progress), 0, height);
  const int shift = open ? k : 0;
  const std::vector<Band> bands = cross_bands(n, width);
  for (int row = 0; row < height; ++row) {
    uint8_t* o = row_at(out_start, out_stride, row);
    const uint8_t* left = row < k ? row_at(b, b_stride, row) : row_at(a, a_stride, row - shift);
    const uint8_t* right = row < height - k ? row_at(a, a_stride, row + shift) : row_at(b, b_stride, row);
    for (const Band& band : bands) {
      copy_span(band.begin, band.middle, o, left);
      copy_span(band.middle, band.end, o, right);
    }
  }
}

// One row of slanted strips 2W / n wide starting at `shift`.
void slanted_row(double shift, double s, int grown, int n, int width, uint8_t* out, const uint8_t* first,
                 const uint8_t* second) {
  for (int i = 0; i < n; ++i) {
    const double x = shift + i * s;
    const int left = std::clamp(truncate_to_int(x), 0, width);
    const int mid = std::clamp(truncate_to_int(grown + x), 0, width);
    const int right = std::clamp(truncate_to_int(x + s), 0, width);
    copy_span(left, mid, out, second);
    copy_span(mid, right, out, first);
  }
}

void slanted_blinds(bool rising, double fraction, int n, int width, int height, int out_stride, int first_stride,
                    int second_stride, uint8_t* out_start, const uint8_t* first, const uint8_t* second) {
  if (n < 1 || width < 1 || height < 1) return;
  const double s = 2.0 * width / n;
  // The growing part is truncated, not rounded: at the end of the transition a
  // strip whose width is not whole keeps a sliver of `first` (kept as hosts expect).
  const int grown = truncate_to_int(s * fraction);
  for (int y = 0; y < height; ++y) {
    const double shift = rising ? -static_cast<double>(y) * width / height
                                : static_cast<double>(y) * width / height - width;
    slanted_row(shift, s, grown, n, width, row_at(out_start, out_stride, y), row_at(first, first_stride, y),
                row_at(second, second_stride, y));
  }
}

}  // namespace

double times_pi(double x) { return x * 3.1415926535; }

void wedge_rows(int x0, double step, int width, int rows, int out_stride, int left_stride, int right_stride,
                uint8_t* out_start, const uint8_t* left, const uint8_t* right) {
  double xf = x0;
  for (int row = 0; row < rows; ++row, xf += step) {
    const int x = std::clamp(truncate_to_int(xf), 0, width);
    copy_three_spans(x, width, width, row_at(out_start, out_stride, row), row_at(left, left_stride, row),
             row_at(right, right_stride, row));
  }
}

void round_region(int size_x, int size_y, int width, int height, int out_stride, int /*out_height*/,
                  int outside_stride, int /*outside_height*/, int inside_stride, int /*inside_height*/,
                  uint8_t* out_start, const uint8_t* outside, const uint8_t* inside) {
  if (width < 1 || height < 1) return;
  const int half_w = width / 2, half_h = height / 2;
  const double hx = std::max(size_x, 0) / 2, hy = std::max(size_y, 0) / 2;
  const int radius = round_to_int(std::sqrt(hx * hx + hy * hy));
  const int margin = half_h - radius;
  int row = 0;
  if (margin > 0) {
    whole_rows(0, margin, width, out_start, out_stride, outside, outside_stride);
    row = margin;
  }
  const int reach = std::min(radius, half_h);
  // The chord rows cover 2 * (W / 2) columns: an odd W keeps its last column
  // as `out` held it (kept as hosts expect).
  for (int y = -reach; y < reach; ++y, ++row) {
    const double r2 = static_cast<double>(radius) * radius - static_cast<double>(y) * y;
    const int k = std::min(round_to_int(std::sqrt(r2)), half_w);
    copy_three_spans(half_w - k, half_w + k, 2 * half_w, row_at(out_start, out_stride, row),
             row_at(outside, outside_stride, row), row_at(inside, inside_stride, row));
  }
  if (margin >= 1) whole_rows(row, row + margin, width, out_start, out_stride, outside, outside_stride);
}

void four_parts_region(double fraction, int width, int height, int out_stride, int inner_stride, int corner_stride,
                       uint8_t* out_start, const uint8_t* inner, const uint8_t* corner) {
  if (width < 1 || height < 1) return;
  const int k = std::clamp(round_to_int(width * fraction), 0, width);
  const int m = std::clamp(round_to_int(height * fraction), 0, height);
  // An odd size near the end of the transition gives 2k > W (or 2m > H): the
  // middle then has no room and the corner blocks meet, so the whole row (or
  // area) shows `corner`.
  const int middle_begin = k > width - k ? width : k;
  const int middle_end = std::max(width - k, middle_begin);
  const int inner_begin = m, inner_end = std::max(height - m, m);
  for (int row = 0; row < height; ++row) {
    uint8_t* o = row_at(out_start, out_stride, row);
    const uint8_t* in = row_at(inner, inner_stride, row);
    if (row >= inner_begin && row < inner_end) {
      copy_span(0, width, o, in);
    } else {
      copy_three_spans(middle_begin, middle_end, width, o, row_at(corner, corner_stride, row), in);
    }
  }
}

void diamond_region(double fraction, int width, int height, int out_stride, int outside_stride, int inside_stride,
                    uint8_t* out_start, const uint8_t* outside, const uint8_t* inside) {
  if (width < 1 || height < 1) return;
  const int half_w = width / 2, half_h = height / 2;
  const double s = static_cast<double>(width) / height;
  int d = std::max(round_to_int(fraction * height), 0);
  double half_width = s;
  if (d > half_h) {
    half_width = (d - half_h) * s;
    d = half_h;
  }
  whole_rows(0, half_h - d, width, out_start, out_stride, outside, outside_stride);
  auto diamond_row = [&](int row) {
    const int w = std::clamp(truncate_to_int(0.5 + half_width), 0, half_w);
    // 2 * (W / 2) columns: an odd W keeps its last column (kept as hosts expect).
    copy_three_spans(half_w - w, half_w + w, 2 * half_w, row_at(out_start, out_stride, row),
             row_at(outside, outside_stride, row), row_at(inside, inside_stride, row));
  };
  for (int row = half_h - d; row < half_h; ++row) {
    diamond_row(row);
    half_width += s;
  }
  // The lower half starts from the value the upper half reached, so it is one
  // step wider than the upper half's mirror image (kept as hosts expect).
  for (int row = half_h; row < half_h + d; ++row) {
    diamond_row(row);
    half_width -= s;
  }
  whole_rows(half_h + d, height, width, out_start, out_stride, outside, outside_stride);
}

void vertical_blinds(const RowKernels& kernels, double fraction, int n, int width, int height, int out_stride,
                     int first_stride, int second_stride, uint8_t* out_start, const uint8_t* first,
                     const uint8_t* second) {
  if (n < 1 || width < 1 || height < 1) return;
  // Every row has the same strips: the fast path works them out once.
  const bool reference = kernels.reference;
  std::vector<StripSpan> strips;
  if (!reference) strips = blind_strips(fraction, n, width);
  for (int row = 0; row < height; ++row) {
    if (reference) strips = blind_strips(fraction, n, width);
    uint8_t* o = row_at(out_start, out_stride, row);
    const uint8_t* f = row_at(first, first_stride, row);
    const uint8_t* g = row_at(second, second_stride, row);
    for (const StripSpan& strip : strips) {
      copy_span(strip.begin, strip.split, o, g);
      copy_span(strip.split, strip.end, o, f);
    }
  }
}

void horizontal_blinds(double fraction, int n, int width, int height, int out_stride, int first_stride,
                       int second_stride, uint8_t* out_start, const uint8_t* first, const uint8_t* second) {
  if (n < 1 || width < 1 || height < 1) return;
  for (const StripSpan& strip : blind_strips(fraction, n, height)) {
    whole_rows(strip.begin, strip.split, width, out_start, out_stride, second, second_stride);
    whole_rows(strip.split, strip.end, width, out_start, out_stride, first, first_stride);
  }
}

void slanted_blinds_rising(double fraction, int n, int width, int height, int out_stride, int first_stride,
                           int second_stride, uint8_t* out_start, const uint8_t* first, const uint8_t* second) {
  slanted_blinds(true, fraction, n, width, height, out_stride, first_stride, second_stride, out_start, first, second);
}

void slanted_blinds_falling(double fraction, int n, int width, int height, int out_stride, int first_stride,
                            int second_stride, uint8_t* out_start, const uint8_t* first, const uint8_t* second) {
  slanted_blinds(false, fraction, n, width, height, out_stride, first_stride, second_stride, out_start, first,
                 second);
}

void cross_close_horizontal(double progress, int n, int width, int height, int out_stride, int a_stride, int b_stride,
                            uint8_t* out_start, const uint8_t* a, const uint8_t* b) {
  cross_horizontal(false, progress, n, width, height, out_stride, a_stride, b_stride, out_start, a, b);
}

void cross_open_horizontal(double progress, int n, int width, int height, int out_stride, int a_stride, int b_stride,
                           uint8_t* out_start, const uint8_t* a, const uint8_t* b) {
  cross_horizontal(true, progress, n, width, height, out_stride, a_stride, b_stride, out_start, a, b);
}

void cross_close_vertical(double progress, int n, int width, int height, int out_stride, int a_stride, int b_stride,
                          uint8_t* out_start, const uint8_t* a, const uint8_t* b) {
  cross_vertical(false, progress, n, width, height, out_stride, a_stride, b_stride, out_start, a, b);
}

void cross_open_vertical(double progress, int n, int width, int height, int out_stride, int a_stride, int b_stride,
                         uint8_t* out_start, const uint8_t* a, const uint8_t* b) {
  cross_vertical(true, progress, n, width, height, out_stride, a_stride, b_stride, out_start, a, b);
}

}  // namespace zv

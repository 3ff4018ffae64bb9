#include "wipes/split_wipes.h"

#include "wipes/wipe_entry.h"
#include "wipes/wipe_pieces.h"

namespace zv {
namespace {

constexpr uint32_t kLastSplitStyle = 5;
constexpr uint32_t kLastCenterSplitStyle = 1;  // the list's later names are beyond the style count
constexpr uint32_t kLastDoubleSlideStyle = 1;
constexpr uint32_t kLastSplitBackStyle = 1;

// Slide's rounded travel over n samples.
int rounded_travel(double progress, int n) { return travel(round_to_int(n * progress), n); }

// Along one axis, up to two stretches of output [begin, begin + length)
// taking source samples from `from` on.
struct Stretch {
  int begin, length, from;
};
struct Axis {
  Stretch part[2];
  int count;
};

Axis whole_axis(int n) { return {{{0, n, 0}, {0, 0, 0}}, 1}; }

// Split: the halves [0, n / 2) and [n / 2, n) move out by their travels.
Axis split_axis(double progress, int n) {
  const int half = n / 2, d0 = rounded_travel(progress, half), d1 = rounded_travel(progress, n - half);
  return {{{0, half - d0, d0}, {half + d1, n - half - d1, half}}, 2};
}

// Center Split: out of the centre come the first d0 and the last d1 samples.
Axis center_axis(double progress, int n) {
  const int half = n / 2, d0 = rounded_travel(progress, half), d1 = rounded_travel(progress, n - half);
  return {{{half - d0, d0, 0}, {half, d1, n - d1}}, 2};
}

// Every pairing of a horizontal and a vertical stretch as one piece of `pic`.
void add_grid(PieceList& list, Pic pic, const Axis& h, const Axis& v) {
  for (int j = 0; j < v.count; ++j) {
    for (int i = 0; i < h.count; ++i) {
      list.add(pic, h.part[i].begin, v.part[j].begin, h.part[i].length, v.part[j].length, h.part[i].from,
               v.part[j].from);
    }
  }
}

// Runs `draw(area, progress)` for the first style of a pair, and for the
// second style the first one at 1 - progress with the pictures exchanged,
// rounding included (as the odd Blind styles).
template <typename Draw>
void even_or_reversed(int style, double progress, const CommonRegion& c, Draw&& draw) {
  if (style % 2 == 0) {
    draw(c, progress);
  } else {
    draw(exchange_pictures(c), 1.0 - progress);
  }
}

// A target rectangle of the area scaled from a source rectangle, sample by sample.
uint8_t scaled_sample(const CommonRegion& c, const BlockRect& target, const BlockRect& source, int x, int y) {
  const int64_t j = y - target.y, i = x - target.x;
  const int64_t sy = source.y + j * source.height / target.height, sx = source.x + i * source.width / target.width;
  return picture_row(c, Pic::kA, static_cast<int>(sy))[sx];
}

bool inside(const BlockRect& r, int x, int y) {
  return x >= r.x && x < r.x + r.width && y >= r.y && y < r.y + r.height;
}

// Split Back's first style: the halves of `a` at scale 1 - progress, each
// against the middle of its own side edge, over `b` in place.
void split_back_open(const RowKernels& kernels, const CommonRegion& c, double progress) {
  const int w = c.width, h = c.height, half = w / 2;
  const double scale = 1.0 - progress;
  const int left_w = rounded_travel(scale, half), right_w = rounded_travel(scale, w - half);
  const int rows = rounded_travel(scale, h), top = (h - rows) / 2;
  const BlockRect left_target{0, top, left_w, rows}, left_source{0, 0, half, h};
  const BlockRect right_target{w - right_w, top, right_w, rows}, right_source{half, 0, w - half, h};
  if (kernels.reference) {
    for (int y = 0; y < h; ++y) {
      uint8_t* out = row_at(c.out, c.out_stride, y);
      const uint8_t* b = picture_row(c, Pic::kB, y);
      for (int x = 0; x < w; ++x) {
        if (inside(left_target, x, y)) {
          out[x] = scaled_sample(c, left_target, left_source, x, y);
        } else if (inside(right_target, x, y)) {
          out[x] = scaled_sample(c, right_target, right_source, x, y);
        } else {
          out[x] = b[x];
        }
      }
    }
    return;
  }
  copy_block(0, w, h, c.out_stride, c.b_stride, c.out, c.b);
  const BlockRect clip{0, 0, w, h};
  scale_block_nearest(left_target, left_source, clip, c.out_stride, c.a_stride, c.out, c.a);
  scale_block_nearest(right_target, right_source, clip, c.out_stride, c.a_stride, c.out, c.a);
}

}  // namespace

void split_wipe_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height, int a_width,
                      int a_height, int b_width, int b_height, uint8_t* out_plane, const uint8_t* a_plane,
                      const uint8_t* b_plane) {
  if (static_cast<uint32_t>(style) > kLastSplitStyle) return;
  const CommonRegion c =
      wipe_region(out_width, out_height, a_width, a_height, b_width, b_height, out_plane, a_plane, b_plane);
  if (c.empty()) return;
  const int pair = style / 2;  // 0 both centre lines, 1 the vertical one, 2 the horizontal one
  even_or_reversed(style, progress, c, [&](const CommonRegion& r, double p) {
    PieceList list;
    list.add_in_place(Pic::kB, 0, 0, r.width, r.height);
    add_grid(list, Pic::kA, pair == 2 ? whole_axis(r.width) : split_axis(p, r.width),
             pair == 1 ? whole_axis(r.height) : split_axis(p, r.height));
    draw_pieces(kernels, r, list);
  });
}

void center_split_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height,
                        int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane,
                        const uint8_t* a_plane, const uint8_t* b_plane) {
  if (static_cast<uint32_t>(style) > kLastCenterSplitStyle) return;
  const CommonRegion c =
      wipe_region(out_width, out_height, a_width, a_height, b_width, b_height, out_plane, a_plane, b_plane);
  if (c.empty()) return;
  even_or_reversed(style, progress, c, [&](const CommonRegion& r, double p) {
    PieceList list;
    list.add_in_place(Pic::kA, 0, 0, r.width, r.height);
    add_grid(list, Pic::kB, center_axis(p, r.width), center_axis(p, r.height));
    draw_pieces(kernels, r, list);
  });
}

void double_slide_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height,
                        int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane,
                        const uint8_t* a_plane, const uint8_t* b_plane) {
  if (static_cast<uint32_t>(style) > kLastDoubleSlideStyle) return;
  const CommonRegion c =
      wipe_region(out_width, out_height, a_width, a_height, b_width, b_height, out_plane, a_plane, b_plane);
  if (c.empty()) return;
  const int w = c.width, h = c.height, half = h / 2;
  // The upper band moves in during the first half, the lower one during the second.
  const bool lower = progress >= 0.5;
  const int band_top = lower ? half : 0, band_rows = lower ? h - half : half;
  const int dx = rounded_travel(lower ? 2.0 * progress - 1.0 : 2.0 * progress, w);
  PieceList list;
  list.add_in_place(Pic::kA, 0, 0, w, h);
  if (lower) list.add_in_place(Pic::kB, 0, 0, w, half);
  if (style == 0) {
    list.add(Pic::kB, 0, band_top, dx, band_rows, w - dx, band_top);
  } else {
    list.add(Pic::kB, w - dx, band_top, dx, band_rows, 0, band_top);
  }
  draw_pieces(kernels, c, list);
}

void split_back_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height, int a_width,
                      int a_height, int b_width, int b_height, uint8_t* out_plane, const uint8_t* a_plane,
                      const uint8_t* b_plane) {
  if (static_cast<uint32_t>(style) > kLastSplitBackStyle) return;
  const CommonRegion c =
      wipe_region(out_width, out_height, a_width, a_height, b_width, b_height, out_plane, a_plane, b_plane);
  if (c.empty()) return;
  even_or_reversed(style, progress, c, [&](const CommonRegion& r, double p) { split_back_open(kernels, r, p); });
}

int ZV_STDCALL split_wipe(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_wipe(out, a, b, params, [&](const RowKernels& kernels, int, double progress, auto... plane) {
    split_wipe_plane(kernels, params->style, progress, plane...);
  });
}

int ZV_STDCALL center_split_wipe(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_wipe(out, a, b, params, [&](const RowKernels& kernels, int, double progress, auto... plane) {
    center_split_plane(kernels, params->style, progress, plane...);
  });
}

int ZV_STDCALL double_slide_wipe(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_wipe(out, a, b, params, [&](const RowKernels& kernels, int, double progress, auto... plane) {
    double_slide_plane(kernels, params->style, progress, plane...);
  });
}

int ZV_STDCALL split_back_wipe(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_wipe(out, a, b, params, [&](const RowKernels& kernels, int, double progress, auto... plane) {
    split_back_plane(kernels, params->style, progress, plane...);
  });
}

}  // namespace zv

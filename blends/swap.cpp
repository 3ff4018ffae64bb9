#include <cmath>

#include "blends/image_space.h"
#include "blends/region_views.h"
#include "frame/entry.h"
#include "frame/kernel_path.h"
#include "frame/rows.h"
#include "frame/user_params.h"
#include "wipes/shape_rows.h"

namespace zv {
namespace {

enum SwapStyle { kLeftToRight = 0, kRightToLeft = 1, kTopToBottom = 2, kBottomToTop = 3 };

// Where each picture stands, shrunk to w x h.
struct SwapLayout {
  BlockRect a, b;
  bool b_in_front;
};

SwapLayout swap_layout(int style, double p, int width, int height) {
  const double sigma = std::sin(times_pi(p));
  const double s = 1 - 0.4 * sigma;
  const int ew = truncate_to_int(s * width + 0.5), eh = truncate_to_int(s * height + 0.5);
  const bool sideways = style == kLeftToRight || style == kRightToLeft;
  const int e = truncate_to_int(0.3 * (sideways ? width : height) * sigma + 0.5);
  const int l0 = (width - ew) / 2, t0 = (height - eh) / 2;
  // `b` passes on the left, the right, above or below.
  const int sign = style == kLeftToRight || style == kTopToBottom ? -1 : 1;
  const int dx = sideways ? sign * e : 0, dy = sideways ? 0 : sign * e;
  return SwapLayout{{l0 - dx, t0 - dy, ew, eh}, {l0 + dx, t0 + dy, ew, eh}, !(p < 0.5)};
}

// Target sample (x, y) of `at` takes source ((x - left) W / ew, (y - top) H / eh).
void draw_picture_reference(const CommonRegion& r, const BlockRect& at, const uint8_t* source, int stride) {
  if (at.width < 1 || at.height < 1) return;
  for (int y = 0; y < r.height; ++y) {
    if (y < at.y || y >= at.y + at.height) continue;
    const int64_t sy = static_cast<int64_t>(y - at.y) * r.height / at.height;
    const uint8_t* src = row_at(source, stride, static_cast<int>(sy));
    uint8_t* o = row_at(r.out, r.out_stride, y);
    for (int x = 0; x < r.width; ++x) {
      if (x < at.x || x >= at.x + at.width) continue;
      o[x] = src[static_cast<int64_t>(x - at.x) * r.width / at.width];
    }
  }
}

void swap_reference(const CommonRegion& r, const SwapLayout& l, uint8_t fill) {
  for (int y = 0; y < r.height; ++y) {
    uint8_t* o = row_at(r.out, r.out_stride, y);
    for (int x = 0; x < r.width; ++x) o[x] = fill;
  }
  if (l.b_in_front) {
    draw_picture_reference(r, l.a, r.a, r.a_stride);
    draw_picture_reference(r, l.b, r.b, r.b_stride);
  } else {
    draw_picture_reference(r, l.b, r.b, r.b_stride);
    draw_picture_reference(r, l.a, r.a, r.a_stride);
  }
}

void swap_fast(const CommonRegion& r, const SwapLayout& l, uint8_t fill) {
  const BlockRect whole{0, 0, r.width, r.height};
  fill_block(fill, r.width, r.height, r.out_stride, r.out);
  auto draw = [&](const BlockRect& at, const uint8_t* source, int stride) {
    scale_block_nearest(at, whole, whole, r.out_stride, stride, r.out, source);
  };
  if (l.b_in_front) {
    draw(l.a, r.a, r.a_stride);
    draw(l.b, r.b, r.b_stride);
  } else {
    draw(l.b, r.b, r.b_stride);
    draw(l.a, r.a, r.a_stride);
  }
}

}  // namespace

void swap_plane(const CommonRegion& r, int style, double p, bool chroma) {
  if (static_cast<unsigned>(style) > kBottomToTop || r.empty()) return;
  // The ends are the pictures themselves.
  if (p <= 0.0 || p >= 1.0) {
    copy_region_picture(r, p >= 1.0);
    return;
  }
  const SwapLayout layout = swap_layout(style, p, r.width, r.height);
  if (use_reference_path()) {
    swap_reference(r, layout, video_black(chroma));
  } else {
    swap_fast(r, layout, video_black(chroma));
  }
}

int ZV_STDCALL swap(Image* out, Image* a, Image* b, TransitionParams* params) {
  // Only the first four names of the list are styles of Swap.
  return run_transition(out, a, b, params, EntryRules{ProgressClamp::kNaNShowsA, kBottomToTop},
                        [params](const PlaneJob& j) { swap_plane(j.region(), params->style, j.progress, j.chroma); });
}

}  // namespace zv

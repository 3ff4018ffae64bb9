#include "blends/fade.h"

#include <algorithm>
#include <vector>

#include "blends/blend.h"
#include "frame/entry.h"
#include "frame/rows.h"

namespace zv {
namespace {

constexpr uint32_t kLastStyle = 7;

// A NaN progress turns into an out-of-range weight; keep weights in 0..256.
int clamp_weight(int k) { return std::clamp(k, 0, 256); }

// One picture scaled towards black by w: luma towards 0, chroma towards 128.
void level_blend_one(const RowKernels& rows, const PlaneView& out, const PlaneView& src, int w, bool chroma) {
  const int rw = std::min(out.width, src.width), rh = std::min(out.height, src.height);
  if (rw <= 0 || rh <= 0) return;
  uint8_t* o = centred_origin(out, rw, rh);
  const uint8_t* s = centred_origin(src, rw, rh);
  const auto scale = chroma ? rows.scale_chroma : rows.scale_luma;
  for (int row = 0; row < rh; ++row) scale(row_at(o, out.width, row), row_at(s, src.width, row), rw, w);
}

void fade_level_plane(const RowKernels& rows, const PlaneView& out, const PlaneView* a, const PlaneView* b, int k,
                      bool chroma) {
  if (a && b) {
    const CommonRegion r = common_region(out, *a, *b);
    if (!r.empty()) blend_plane(rows, r, k);
  } else if (a) {
    level_blend_one(rows, out, *a, 256 - k, chroma);
  } else if (b) {
    level_blend_one(rows, out, *b, k, chroma);
  }
}

// Column weights of a horizontal sweep; the division is done in double,
// multiplication first, and truncated.
inline int column_weight(int index, int w) { return static_cast<int>(index * 256.0 / w); }

// r.a is the picture swept away (x), r.b the one swept in (y).
void sweep_horizontal(const RowKernels& rows, const CommonRegion& r, int n, bool reverse) {
  const int w = r.width;
  // Forward: gradient over columns 0..n-1, x beyond. Reverse: x over 0..m-1, gradient beyond.
  const int m = w - n;
  const int grad_begin = reverse ? m : 0, grad_end = reverse ? w : n;
  std::vector<uint16_t> g(static_cast<size_t>(grad_end - grad_begin));
  for (int col = grad_begin; col < grad_end; ++col) {
    g[col - grad_begin] =
        static_cast<uint16_t>(reverse ? column_weight(w - (col - m), w) : column_weight(w - n + col, w));
  }
  const int copy_begin = reverse ? 0 : n, copy_len = w - (grad_end - grad_begin);
  for (int row = 0; row < r.height; ++row) {
    uint8_t* o = row_at(r.out, r.out_stride, row);
    const uint8_t* px = row_at(r.a, r.a_stride, row);
    const uint8_t* py = row_at(r.b, r.b_stride, row);
    rows.blend_weights(o + grad_begin, px + grad_begin, py + grad_begin, g.data(), grad_end - grad_begin);
    rows.copy(o + copy_begin, px + copy_begin, copy_len);
  }
}

void sweep_vertical(const RowKernels& rows, const CommonRegion& r, int n, bool reverse) {
  const int w = r.width, h = r.height;
  for (int row = 0; row < h; ++row) {
    uint8_t* o = row_at(r.out, r.out_stride, row);
    const uint8_t* px = row_at(r.a, r.a_stride, row);
    // Forward: rows 0..n-1 weigh x by g. Reverse: the last n rows weigh y by d.
    // The reverse weight truncates on y's side where the forward one truncates
    // on x's: a one-step asymmetry that is kept deliberately.
    const bool in_gradient = reverse ? row >= h - n : row < n;
    if (!in_gradient) {
      rows.copy(o, px, w);
      continue;
    }
    const int wy = reverse ? column_weight(row - (h - n), h) : 256 - column_weight(h - n + row, h);
    rows.blend(o, px, row_at(r.b, r.b_stride, row), w, wy);
  }
}

void fade_gradient_plane(const RowKernels& rows, const PlaneView& out, const PlaneView& x, const PlaneView& y,
                         double t, bool vertical, bool reverse) {
  const CommonRegion r = common_region(out, x, y);  // r.a is x's origin, r.b is y's
  if (r.empty()) return;
  const int size = vertical ? r.height : r.width;
  const int n = std::clamp(truncate_to_int(size * t), 0, size);
  if (vertical) {
    sweep_vertical(rows, r, n, reverse);
  } else {
    sweep_horizontal(rows, r, n, reverse);
  }
}

}  // namespace

int ZV_STDCALL fade_transition(Image* out, Image* a, Image* b, TransitionParams* params) {
  // Fade alone reports a style past its last one, after the clamp.
  const EntryRules rules{ProgressClamp::kPassNaN, kLastStyle, kTransitionBadStyle};
  return run_transition(out, a, b, params, rules, [params](const PlaneJob& job) {
    const int style = params->style;
    const double p = job.progress;
    if (style <= 3) {
      const PlaneView* use_a = &job.a;
      const PlaneView* use_b = &job.b;
      int k = clamp_weight(truncate_to_int(p * p * 256.0));
      if (style == 1) use_b = nullptr;
      if (style == 2) use_a = nullptr;
      if (style == 3) {
        // Out through black, then in from it: exactly at 0.5 the frame is black.
        if (p < 0.5) {
          use_b = nullptr;
          k = clamp_weight(truncate_to_int(p * p * 1024.0));
        } else {
          use_a = nullptr;
          k = clamp_weight(truncate_to_int((p - 0.5) * (p - 0.5) * 1024.0));
        }
      }
      fade_level_plane(job.rows, job.out, use_a, use_b, k, job.chroma);
      return;
    }
    const bool first_half = p < 0.5;
    const double t = first_half ? 2.0 * p : 2.0 * (1.0 - p);
    // Styles 4 and 6 sweep forward in the first half; 5 and 7 in the second.
    const bool reverse = first_half == (style == 5 || style == 7);
    fade_gradient_plane(job.rows, job.out, first_half ? job.a : job.b, first_half ? job.b : job.a, t, style >= 6,
                        reverse);
  });
}

}  // namespace zv

#include "blends/fade.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "blends/blend.h"
#include "blends/blend_rows.h"
#include "frame/kernel_path.h"

namespace zv {
namespace {

constexpr int kLastStyle = 7;

// A NaN progress turns into an out-of-range weight; keep weights in 0..256.
int clamp_weight(int k) { return std::clamp(k, 0, 256); }

// Luma fades towards 0; chroma towards 128 with a flooring shift, kept to 8 bits.
inline uint8_t scale_sample(int s, int w, bool chroma) {
  return chroma ? static_cast<uint8_t>((((s - 128) * w) >> 8) + 128) : static_cast<uint8_t>((s * w) >> 8);
}

void level_blend_one(const PlaneView& out, const PlaneView& src, int w, bool chroma) {
  const int rw = std::min(out.width, src.width), rh = std::min(out.height, src.height);
  if (rw <= 0 || rh <= 0) return;
  uint8_t* o = centred_origin(out, rw, rh);
  const uint8_t* s = centred_origin(src, rw, rh);
  for (int row = 0; row < rh; ++row, o += out.width, s += src.width) {
    if (use_reference_path()) {
      for (int x = 0; x < rw; ++x) o[x] = scale_sample(s[x], w, chroma);
    } else {
      scale_row(o, s, rw, w, chroma);
    }
  }
}

// Column weights of a horizontal sweep; the division is done in double,
// multiplication first, and truncated.
inline int column_weight(int index, int w) { return static_cast<int>(index * 256.0 / w); }

void sweep_horizontal(const CommonRegion& r, const uint8_t* x, int xs, const uint8_t* y, int ys, int n,
                      bool reverse) {
  const int w = r.width;
  // Forward: gradient over columns 0..n-1, x beyond. Reverse: x over 0..m-1, gradient beyond.
  const int m = w - n;
  const int grad_begin = reverse ? m : 0, grad_end = reverse ? w : n;
  auto weight = [&](int col) { return reverse ? column_weight(w - (col - m), w) : column_weight(w - n + col, w); };
  if (use_reference_path()) {
    for (int row = 0; row < r.height; ++row) {
      uint8_t* o = r.out + static_cast<long>(row) * r.out_stride;
      const uint8_t* px = x + static_cast<long>(row) * xs;
      const uint8_t* py = y + static_cast<long>(row) * ys;
      for (int col = 0; col < w; ++col) {
        if (col >= grad_begin && col < grad_end) {
          int g = weight(col);
          o[col] = static_cast<uint8_t>((px[col] * g + py[col] * (256 - g)) >> 8);
        } else {
          o[col] = px[col];
        }
      }
    }
    return;
  }
  std::vector<uint16_t> g(static_cast<size_t>(grad_end - grad_begin));
  for (int col = grad_begin; col < grad_end; ++col) g[col - grad_begin] = static_cast<uint16_t>(weight(col));
  const int copy_begin = reverse ? 0 : n, copy_len = w - (grad_end - grad_begin);
  for (int row = 0; row < r.height; ++row) {
    uint8_t* o = r.out + static_cast<long>(row) * r.out_stride;
    const uint8_t* px = x + static_cast<long>(row) * xs;
    const uint8_t* py = y + static_cast<long>(row) * ys;
    blend_row_weights(o + grad_begin, px + grad_begin, py + grad_begin, g.data(), grad_end - grad_begin);
    std::memcpy(o + copy_begin, px + copy_begin, copy_len);
  }
}

void sweep_vertical(const CommonRegion& r, const uint8_t* x, int xs, const uint8_t* y, int ys, int n,
                    bool reverse) {
  const int w = r.width, h = r.height;
  for (int row = 0; row < h; ++row) {
    uint8_t* o = r.out + static_cast<long>(row) * r.out_stride;
    const uint8_t* px = x + static_cast<long>(row) * xs;
    const uint8_t* py = y + static_cast<long>(row) * ys;
    // Forward: rows 0..n-1 weigh x by g. Reverse: the last n rows weigh y by d.
    // The reverse weight truncates on y's side where the forward one truncates
    // on x's: a one-step asymmetry that is kept deliberately.
    const bool in_gradient = reverse ? row >= h - n : row < n;
    if (!in_gradient) {
      std::memcpy(o, px, w);
      continue;
    }
    const int wy = reverse ? column_weight(row - (h - n), h) : 256 - column_weight(h - n + row, h);
    if (use_reference_path()) {
      for (int col = 0; col < w; ++col) o[col] = static_cast<uint8_t>((px[col] * (256 - wy) + py[col] * wy) >> 8);
    } else {
      blend_row(o, px, py, w, wy);
    }
  }
}

}  // namespace

void fade_level_plane(const PlaneView& out, const PlaneView* a, const PlaneView* b, int k, bool chroma) {
  if (a && b) {
    CommonRegion r = common_region(out, *a, *b);
    if (!r.empty()) blend_plane(r, k);
  } else if (a) {
    level_blend_one(out, *a, 256 - k, chroma);
  } else if (b) {
    level_blend_one(out, *b, k, chroma);
  }
}

void fade_gradient_plane(const PlaneView& out, const PlaneView& x, const PlaneView& y, double t, bool vertical,
                         bool reverse) {
  CommonRegion r = common_region(out, x, y);  // r.a is x's origin, r.b is y's
  if (r.empty()) return;
  const int size = vertical ? r.height : r.width;
  const int n = std::clamp(truncate_to_int(size * t), 0, size);
  if (vertical) {
    sweep_vertical(r, r.a, r.a_stride, r.b, r.b_stride, n, reverse);
  } else {
    sweep_horizontal(r, r.a, r.a_stride, r.b, r.b_stride, n, reverse);
  }
}

int ZV_STDCALL fade_transition(Image* out, Image* a, Image* b, TransitionParams* params) {
  int result = transition_prologue(out, a, b, params);
  if (result != kProceed) return result;
  const double p = clamp_progress(transition_progress(params));
  // Fade alone reports a style past its last one.
  if (static_cast<uint32_t>(params->style) > kLastStyle) return kTransitionBadStyle;
  const int style = params->style;

  for (int index = kPlaneY; index <= kPlaneV; ++index) {
    const PlaneView po = image_plane(out, index), pa = image_plane(a, index), pb = image_plane(b, index);
    const bool chroma = index != kPlaneY;
    if (style <= 3) {
      const PlaneView* use_a = &pa;
      const PlaneView* use_b = &pb;
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
      fade_level_plane(po, use_a, use_b, k, chroma);
    } else {
      const bool first_half = p < 0.5;
      const double t = first_half ? 2.0 * p : 2.0 * (1.0 - p);
      // Styles 4 and 6 sweep forward in the first half; 5 and 7 in the second.
      const bool reverse = first_half == (style == 5 || style == 7);
      fade_gradient_plane(po, first_half ? pa : pb, first_half ? pb : pa, t, style >= 6, reverse);
    }
  }
  return kTransitionDone;
}

}  // namespace zv

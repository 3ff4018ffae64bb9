#include "imaging/image_resize.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <optional>
#include <vector>

#include "frame/transition_op.h"

namespace zv {
namespace {

inline uint8_t* sample_at(const SampleGrid& g, int x, int y) {
  return g.data + y * g.stride + static_cast<ptrdiff_t>(x) * g.step;
}

bool rect_is_empty(ResizeRect r) { return r.width < 1 || r.height < 1; }

// Source sample of each target index for the nearest and bilinear kernels: a
// 12-bit fixed-point step, and the last target index on the last source sample
// so the edges are exact.
std::vector<int> nearest_indices(int start, int source_length, int target_length) {
  std::vector<int> index(static_cast<size_t>(target_length));
  const int64_t step = static_cast<int64_t>(source_length) * 4096 / target_length;
  for (int i = 0; i + 1 < target_length; ++i) index[i] = start + static_cast<int>((i * step) >> 12);
  index[target_length - 1] = start + source_length - 1;
  return index;
}

struct CubicTap {
  int index[4];
  double weight[4];
};

// The cubic kernel's taps along one axis. Its step aligns the end points: the
// first and last target samples land on the first and last source samples.
std::vector<CubicTap> cubic_axis(int start, int source_length, int target_length) {
  const int64_t step =
      target_length > 1 ? (static_cast<int64_t>(source_length) * 4096 - 4096) / (target_length - 1) : 0;
  const bool simple = step >= 8192 || step < 2049;
  std::vector<CubicTap> taps(static_cast<size_t>(target_length));
  for (int i = 0; i < target_length; ++i) {
    int base = source_length - 1;
    double t = 0.0;
    // The truncated step can leave the last position a hair short of the last
    // sample; it is put on it so the end point is exact.
    if (i == 0 || i + 1 < target_length) {
      const double position = static_cast<double>(i * step) / 4096.0;
      base = truncate_to_int(position);
      t = position - base;
    }
    for (int k = 0; k < 4; ++k) taps[i].index[k] = start + std::clamp(base - 1 + k, 0, source_length - 1);
    cubic_weights(t, simple, taps[i].weight);
  }
  return taps;
}

// A product of factors in 64 bits, or nothing when it would not fit.
std::optional<int64_t> checked_product(std::initializer_list<int64_t> factors) {
  int64_t product = 1;
  for (int64_t f : factors) {
    if (f != 0 && std::llabs(product) > INT64_MAX / std::llabs(f)) return std::nullopt;
    product *= f;
  }
  return product;
}

// One frame as the resize sees it: the picture proper in the luma plane, the
// whole chroma planes (reads are clamped and writes kept inside them) and the
// chroma picture that the border fill covers.
struct FrameView {
  SampleGrid luma;
  SampleGrid chroma[2];
  int chroma_shift;  // chroma rows: luma row >> chroma_shift
  int chroma_picture_width;
  int chroma_picture_height;
};

FrameView frame_view(const Image* image) {
  const int shift = image->chroma_format == kChroma422 ? 0 : 1;
  // A picture larger than its frame would read past the planes; it is cut to the frame.
  const int pw = std::clamp(image->picture_width, 0, image->width);
  const int ph = std::clamp(image->picture_height, 0, image->height);
  const int cw = image->width >> 1, ch = image->height >> shift;
  FrameView view{{image->get_Y(), image->width, 1, pw, ph},
                 {{image->get_U(), cw, 1, cw, ch}, {image->get_V(), cw, 1, cw, ch}},
                 shift,
                 pw / 2,
                 ph >> shift};
  return view;
}

// Reads every second row only: half the rows, strides doubled.
FrameView skip_lines(FrameView view) {
  view.luma.height /= 2;
  view.luma.stride *= 2;
  for (SampleGrid& c : view.chroma) {
    c.height = (c.height + 1) / 2;
    c.stride *= 2;
  }
  return view;
}

void fill_outside(const SampleGrid& g, int x0, int y0, int x1, int y1, uint8_t value) {
  if (g.width < 1) return;
  const int left = std::clamp(x0, 0, g.width), right = std::clamp(x1, left, g.width);
  for (int y = 0; y < g.height; ++y) {
    uint8_t* row = sample_at(g, 0, y);
    if (y < y0 || y >= y1) {
      std::memset(row, value, static_cast<size_t>(g.width));
    } else {
      std::memset(row, value, static_cast<size_t>(left));
      std::memset(row + right, value, static_cast<size_t>(g.width - right));
    }
  }
}

// Luma 0 and chroma 128 around the target; the chroma sizes follow the format.
void fill_border(const FrameView& dst, ResizeRect to) {
  fill_outside(dst.luma, to.x, to.y, to.x + to.width, to.y + to.height, 0);
  for (const SampleGrid& c : dst.chroma) {
    SampleGrid picture = c;
    picture.width = dst.chroma_picture_width;
    picture.height = dst.chroma_picture_height;
    fill_outside(picture, to.x >> 1, to.y >> dst.chroma_shift, (to.x + to.width) >> 1,
                 (to.y + to.height) >> dst.chroma_shift, 128);
  }
}

// Chroma is always nearest-sampled: every second target column (and every
// second row for 4:2:0) takes the chroma sample at half the source position.
void scale_chroma_nearest(const FrameView& src, ResizeRect from, const FrameView& dst, ResizeRect to) {
  if (rect_is_empty(from) || rect_is_empty(to)) return;
  const std::vector<int> cols = nearest_indices(from.x, from.width, to.width);
  const std::vector<int> rows = nearest_indices(from.y, from.height, to.height);
  const SampleGrid& sc = src.chroma[0];
  const SampleGrid& dc = dst.chroma[0];
  if (sc.width < 1 || sc.height < 1) return;
  for (int j = 0; j < to.height; j += 1 + dst.chroma_shift) {
    const int dy = (to.y + j) >> dst.chroma_shift;
    if (dy >= dc.height) break;
    const int sy = std::min(rows[j] >> src.chroma_shift, sc.height - 1);
    for (int i = 0; i < to.width; i += 2) {
      const int dx = (to.x + i) >> 1;
      if (dx >= dc.width) break;
      const int sx = std::min(cols[i] >> 1, sc.width - 1);
      for (int p = 0; p < 2; ++p) *sample_at(dst.chroma[p], dx, dy) = *sample_at(src.chroma[p], sx, sy);
    }
  }
}

typedef void (*Kernel)(const SampleGrid&, ResizeRect, const SampleGrid&, ResizeRect);
const Kernel kKernels[3] = {scale_nearest, scale_bilinear, scale_cubic};

Kernel kernel_for(int interpolation) {
  return interpolation >= 0 && interpolation <= 2 ? kKernels[interpolation] : nullptr;
}

// A 1:1 copy of `from` to `to` (equal sizes): the nearest kernel at step 1.
void copy_unscaled(const FrameView& src, ResizeRect from, const FrameView& dst, ResizeRect to) {
  scale_nearest(src.luma, from, dst.luma, to);
  scale_chroma_nearest(src, from, dst, to);
}

// The target of methods 0 to 3 inside a DW x DH destination picture.
ResizeRect fit_target(int method, int dw_picture, int dh_picture, int sw_picture, int sh_picture, int dst_x, int dst_y,
                      int src_x, int src_y) {
  const ResizeRect whole{0, 0, dw_picture, dh_picture};
  const int64_t w = sw_picture, h = sh_picture;
  int64_t dw = 0, dh = 0;
  if (method == IMAGE_RESIZE_KEEP_ASPECT) {
    if (dst_x < 0) {
      dw = w;
      dh = h;
    } else {
      int64_t x = dst_x, y = dst_y, sx = src_x, sy = src_y;
      if (x == 0 || y == 0) x = dw_picture, y = dh_picture;
      if (sx == 0 || sy == 0) sx = sw_picture, sy = sh_picture;
      // The source's display shape in destination pixels at the small scale of y:
      // the coarse truncation is intended.
      dh = y;
      const auto num = checked_product({sx, dw_picture, y, y});
      const auto den = checked_product({sy, dh_picture, x});
      dw = (num && den && *den != 0) ? *num / *den : 0;
    }
  } else if (method == IMAGE_RESIZE_FIT_16_9 || method == IMAGE_RESIZE_FIT_4_3) {
    // The source shown as an ax:ay picture: full width when wider, else full height.
    const int64_t ax = method == IMAGE_RESIZE_FIT_16_9 ? 16 : 4, ay = method == IMAGE_RESIZE_FIT_16_9 ? 9 : 3;
    dw = ay * w > ax * h ? w : ax * h / ay;
    dh = ay * w > ax * h ? ay * w / ax : h;
  } else {
    return whole;  // stretch, and any method this service does not know
  }
  if (dw <= 0 || dh <= 0) return whole;
  dw = std::min<int64_t>(dw, INT32_MAX);  // keeps the products below in 64 bits
  if (dh * dw_picture > dw * dh_picture) {
    // Pillarbox: the right edge lies as far from DW as the left edge from 0.
    const int left = static_cast<int>((dw_picture - dw * dh_picture / dh) >> 1);
    return {left, 0, dw_picture - 2 * left, dh_picture};
  }
  if (dh * dw_picture < dw * dh_picture) {
    const int top = static_cast<int>((dh_picture - dh * dw_picture / dw) >> 1);
    return {0, top, dw_picture, dh_picture - 2 * top};
  }
  return whole;
}

int resize_frame(Image* destination, int dst_x, int dst_y, Image* source, int src_x, int src_y, int interpolation,
                 int method) {
  if (!destination || !source) return 0;
  const FrameView dst = frame_view(destination);
  FrameView src = frame_view(source);
  const int dpw = dst.luma.width, dph = dst.luma.height, spw = src.luma.width, sph = src.luma.height;
  if (dpw < 1 || dph < 1 || spw < 1 || sph < 1) return 0;

  if (method == IMAGE_RESIZE_CENTRE) {
    const int w = std::min(spw, dpw), h = std::min(sph, dph);
    const ResizeRect to{(dpw - w) / 2, (dph - h) / 2, w, h};
    fill_border(dst, to);
    copy_unscaled(src, {(spw - w) / 2, (sph - h) / 2, w, h}, dst, to);
    return 0;
  }
  if (method == IMAGE_RESIZE_TILE) {
    // Tiles cut at the right and bottom edges show the source's top-left part.
    for (int y = 0, h = 0; y < dph; y += h) {
      h = std::min(sph, dph - y);
      for (int x = 0, w = 0; x < dpw; x += w) {
        w = std::min(spw, dpw - x);
        copy_unscaled(src, {0, 0, w, h}, dst, {x, y, w, h});
      }
    }
    return 0;
  }

  const ResizeRect to = fit_target(method, dpw, dph, spw, sph, dst_x, dst_y, src_x, src_y);
  fill_border(dst, to);
  if (sph >= 2 * static_cast<int64_t>(to.height)) src = skip_lines(src);
  const ResizeRect from{0, 0, src.luma.width, src.luma.height};
  // Any other interpolation places the target and fills the borders, but scales nothing.
  if (Kernel kernel = kernel_for(interpolation)) {
    kernel(src.luma, from, dst.luma, to);
    scale_chroma_nearest(src, from, dst, to);
  }
  return 0;
}

bool valid_bitmap(const tagImgParam* p) {
  return p && p->pixels && p->width > 0 && p->height > 0 && p->pitch >= 3 * static_cast<int64_t>(p->width) &&
         p->rect_x >= 0 && p->rect_y >= 0 && p->rect_width > 0 && p->rect_height > 0 &&
         static_cast<int64_t>(p->rect_x) + p->rect_width <= p->width &&
         static_cast<int64_t>(p->rect_y) + p->rect_height <= p->height;
}

}  // namespace

void cubic_weights(double t, bool simple, double w[4]) {
  const double t2 = t * t, t3 = t2 * t, u = 1.0 - t;
  if (simple) {
    // A Bezier segment from the sample at the position to the next one, its
    // inner control points a third of the neighbouring differences away.
    w[0] = -u * u * t;
    w[1] = u * u * (1.0 + 3.0 * t);
    w[2] = t2 * (4.0 - 3.0 * t);
    w[3] = -u * t2;
  } else {
    // Catmull-Rom: interpolating, and a constant stays constant.
    w[0] = 0.5 * (-t3 + 2.0 * t2 - t);
    w[1] = 0.5 * (3.0 * t3 - 5.0 * t2 + 2.0);
    w[2] = 0.5 * (-3.0 * t3 + 4.0 * t2 + t);
    w[3] = 0.5 * (t3 - t2);
  }
}

void scale_nearest(const SampleGrid& source, ResizeRect from, const SampleGrid& target, ResizeRect to) {
  if (rect_is_empty(from) || rect_is_empty(to)) return;
  const std::vector<int> cols = nearest_indices(from.x, from.width, to.width);
  const std::vector<int> rows = nearest_indices(from.y, from.height, to.height);
  for (int j = 0; j < to.height; ++j) {
    const uint8_t* s = sample_at(source, 0, rows[j]);
    uint8_t* o = sample_at(target, to.x, to.y + j);
    for (int i = 0; i < to.width; ++i) o[static_cast<ptrdiff_t>(i) * target.step] = s[static_cast<ptrdiff_t>(cols[i]) * source.step];
  }
}

void scale_bilinear(const SampleGrid& source, ResizeRect from, const SampleGrid& target, ResizeRect to) {
  if (rect_is_empty(from) || rect_is_empty(to)) return;
  const int64_t sx = static_cast<int64_t>(from.width) * 4096 / to.width;
  const int64_t sy = static_cast<int64_t>(from.height) * 4096 / to.height;
  const int last_col = from.x + from.width - 1, last_row = from.y + from.height - 1;
  std::vector<int> cx(static_cast<size_t>(to.width)), fx(static_cast<size_t>(to.width));
  for (int i = 0; i + 1 < to.width; ++i) {
    cx[i] = from.x + static_cast<int>((i * sx) >> 12);
    fx[i] = static_cast<int>((i * sx) & 4095);
  }
  cx[to.width - 1] = last_col;
  const ptrdiff_t ss = source.step;
  for (int j = 0; j < to.height; ++j) {
    uint8_t* o = sample_at(target, to.x, to.y + j);
    const bool last = j + 1 == to.height;
    const int64_t ay = j * sy;
    const int cy = last ? last_row : from.y + static_cast<int>(ay >> 12);
    const int fy = last ? 0 : static_cast<int>(ay & 4095);
    const uint8_t* r0 = sample_at(source, 0, cy);
    // Enlarging by two or more puts the last neighbours past the picture; they
    // are read from its edge instead.
    const uint8_t* r1 = sample_at(source, 0, std::min(cy + 1, last_row));
    for (int i = 0; i + 1 < to.width; ++i) {
      const ptrdiff_t c0 = cx[i] * ss, c1 = std::min(cx[i] + 1, last_col) * ss;
      if (last) {
        o[i * target.step] = r0[c0];
        continue;
      }
      const int top = (r0[c0] * (4096 - fx[i]) + r0[c1] * fx[i]) >> 12;
      const int bottom = (r1[c0] * (4096 - fx[i]) + r1[c1] * fx[i]) >> 12;
      o[i * target.step] = static_cast<uint8_t>(((4096 - fy) * top + fy * bottom) >> 12);
    }
    o[static_cast<ptrdiff_t>(to.width - 1) * target.step] = r0[last_col * ss];
  }
}

void scale_cubic(const SampleGrid& source, ResizeRect from, const SampleGrid& target, ResizeRect to) {
  if (rect_is_empty(from) || rect_is_empty(to)) return;
  const std::vector<CubicTap> cols = cubic_axis(from.x, from.width, to.width);
  const std::vector<CubicTap> rows = cubic_axis(from.y, from.height, to.height);
  for (int j = 0; j < to.height; ++j) {
    const CubicTap& ty = rows[j];
    const uint8_t* r[4];
    for (int k = 0; k < 4; ++k) r[k] = sample_at(source, 0, ty.index[k]);
    uint8_t* o = sample_at(target, to.x, to.y + j);
    for (int i = 0; i < to.width; ++i) {
      const CubicTap& tx = cols[i];
      double value = 0.0;
      for (int k = 0; k < 4; ++k) {
        const uint8_t* row = r[k];
        double across = 0.0;
        for (int m = 0; m < 4; ++m) across += tx.weight[m] * row[static_cast<ptrdiff_t>(tx.index[m]) * source.step];
        value += ty.weight[k] * across;
      }
      o[static_cast<ptrdiff_t>(i) * target.step] = static_cast<uint8_t>(round_to_int(std::clamp(value, 0.0, 255.0)));
    }
  }
}

}  // namespace zv

int ZV_STDCALL zvImageResize(Image* destination, Image* source, IMAGE_INTERPOLATION interpolation,
                             IMAGE_RESIZE_METHOD method) {
  return zvImageResize(destination, -1, -1, source, -1, -1, interpolation, method);
}

int ZV_STDCALL zvImageResize(Image* destination, int destination_aspect_x, int destination_aspect_y, Image* source,
                             int source_aspect_x, int source_aspect_y, IMAGE_INTERPOLATION interpolation,
                             IMAGE_RESIZE_METHOD method) {
  return zv::resize_frame(destination, destination_aspect_x, destination_aspect_y, source, source_aspect_x,
                          source_aspect_y, interpolation, method);
}

int ZV_STDCALL DIB_Resize(const tagImgParam* source, tagImgParam* target, IMAGE_INTERPOLATION interpolation) {
  const zv::Kernel kernel = zv::kernel_for(interpolation);
  if (!kernel || !zv::valid_bitmap(source) || !zv::valid_bitmap(target)) return 0;
  const zv::ResizeRect from{source->rect_x, source->rect_y, source->rect_width, source->rect_height};
  const zv::ResizeRect to{target->rect_x, target->rect_y, target->rect_width, target->rect_height};
  for (int channel = 0; channel < 3; ++channel) {
    const zv::SampleGrid s{source->pixels + channel, source->pitch, 3, source->width, source->height};
    const zv::SampleGrid t{target->pixels + channel, target->pitch, 3, target->width, target->height};
    kernel(s, from, t, to);
  }
  return 0;
}

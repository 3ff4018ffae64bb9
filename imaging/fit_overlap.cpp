#include "imaging/fit_overlap.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "imaging/scaled_image.h"
#include "frame/kernel_path.h"
#include "imaging/yuv_rgb.h"

namespace zv {
namespace {

inline uint8_t* row_of(const PlaneView& p, int row) { return p.data + static_cast<ptrdiff_t>(row) * p.width; }

inline bool inside(const PlaneView& p, int x, int y) { return x < p.width && y < p.height; }

// A sample of `b` this close to the key luma shows `a`.
inline bool is_keyed(int luma, int key) { return luma >= key - 5 && luma <= key + 5; }

// t((b * pct + a * (100 - pct)) / 100); at 100 % exactly b.
inline uint8_t mix_percent(int a, int b, int percent) {
  return static_cast<uint8_t>((b * percent + a * (100 - percent)) / 100);
}

// The same as a multiply and shift: exact for every sum up to 255 * 100.
inline uint8_t mix_percent_fast(int a, int b, int percent) {
  return static_cast<uint8_t>(((b * percent + a * (100 - percent)) * 5243) >> 19);
}

void overlap_reference(const PlaneView out[3], const PlaneView a[3], const PlaneView b[3], int width, int height,
                       int percent, int key) {
  const int row_pairs = (height - 1) / 2 + 1;
  for (int pair = 0; pair < row_pairs; ++pair) {
    for (int col = 0; col < width; col += 2) {
      // The blocks run to the even size above the common area; samples that
      // some frame does not have are left alone.
      const int cx = col / 2, cy = pair;
      const bool chroma = inside(out[1], cx, cy) && inside(a[1], cx, cy) && inside(b[1], cx, cy);
      if (chroma) {
        for (int p = 1; p <= 2; ++p) row_of(out[p], cy)[cx] = row_of(a[p], cy)[cx];
      }
      int keyed = 0;
      for (int dy = 0; dy < 2; ++dy) {
        for (int dx = 0; dx < 2; ++dx) {
          const int x = col + dx, y = 2 * pair + dy;
          if (!inside(out[0], x, y) || !inside(a[0], x, y) || !inside(b[0], x, y)) continue;
          const int sa = row_of(a[0], y)[x], sb = row_of(b[0], y)[x];
          uint8_t& o = row_of(out[0], y)[x];
          o = static_cast<uint8_t>(sa);
          if (is_keyed(sb, key)) {
            ++keyed;
          } else {
            o = percent == 100 ? static_cast<uint8_t>(sb) : mix_percent(sa, sb, percent);
          }
        }
      }
      if (chroma && keyed < 2) {
        for (int p = 1; p <= 2; ++p) {
          const int sa = row_of(a[p], cy)[cx], sb = row_of(b[p], cy)[cx];
          row_of(out[p], cy)[cx] = percent == 100 ? static_cast<uint8_t>(sb) : mix_percent(sa, sb, percent);
        }
      }
    }
  }
}

// Row by row: the blocks cover exactly width x height luma samples and
// (width / 2) x (height / 2) chroma samples, each with all four of its luma.
void overlap_fast(const PlaneView out[3], const PlaneView a[3], const PlaneView b[3], int width, int height,
                  int percent, int key) {
  uint8_t keyed[256];
  for (int v = 0; v < 256; ++v) keyed[v] = is_keyed(v, key) ? 1 : 0;
  for (int y = 0; y < height; ++y) {
    uint8_t* o = row_of(out[0], y);
    const uint8_t* pa = row_of(a[0], y);
    const uint8_t* pb = row_of(b[0], y);
    for (int x = 0; x < width; ++x) o[x] = keyed[pb[x]] ? pa[x] : mix_percent_fast(pa[x], pb[x], percent);
  }
  for (int cy = 0; cy < height / 2; ++cy) {
    const uint8_t* b0 = row_of(b[0], 2 * cy);
    const uint8_t* b1 = row_of(b[0], 2 * cy + 1);
    for (int p = 1; p <= 2; ++p) {
      uint8_t* o = row_of(out[p], cy);
      const uint8_t* pa = row_of(a[p], cy);
      const uint8_t* pb = row_of(b[p], cy);
      for (int cx = 0; cx < width / 2; ++cx) {
        const int count = keyed[b0[2 * cx]] + keyed[b0[2 * cx + 1]] + keyed[b1[2 * cx]] + keyed[b1[2 * cx + 1]];
        o[cx] = count < 2 ? mix_percent_fast(pa[cx], pb[cx], percent) : pa[cx];
      }
    }
  }
}

}  // namespace

void round_plane(const PlaneView& plane, const uint8_t* fitted, int fitted_width, int fitted_height, int mode,
                 uint8_t fill, int trim) {
  const int w = plane.width, h = plane.height;
  if (w < 1 || h < 1) return;
  const int top = (h - fitted_height) >> 1, left = (w - fitted_width) >> 1;
  const int drawn = std::max(fitted_height - trim, 0);
  if (mode == kRoundPillarbox) {
    for (int row = 0; row < std::min(fitted_height, h); ++row) {
      uint8_t* line = row_of(plane, row);
      std::memset(line, fill, left);
      // The right margin is walked down from one past the row's end, as hosts
      // expect: the column right of the picture keeps its content and the fill
      // lands on the next row's first sample (never past the plane).
      for (int k = 0; k < left; ++k) {
        if (k == 0 && row + 1 >= h) continue;
        line[w - k] = fill;
      }
      std::memcpy(line + left, fitted + static_cast<ptrdiff_t>(row) * fitted_width, fitted_width);
    }
  } else if (mode == kRoundLetterbox) {
    for (int row = 0; row < top; ++row) std::memset(row_of(plane, row), fill, fitted_width);
    for (int row = 0; row < drawn; ++row) {
      std::memcpy(row_of(plane, top + row), fitted + static_cast<ptrdiff_t>(row) * fitted_width, fitted_width);
    }
    // The bottom margin's pointer is never advanced, kept as hosts expect:
    // only the first row after the picture is filled.
    if (top + drawn < h) std::memset(row_of(plane, top + drawn), fill, fitted_width);
  } else {
    for (int row = 0; row < h; ++row) std::memset(row_of(plane, row), fill, w);
    for (int row = 0; row < drawn; ++row) {
      std::memcpy(row_of(plane, top + row) + left, fitted + static_cast<ptrdiff_t>(row) * fitted_width, fitted_width);
    }
  }
}

int overlap_key_luma(const TransitionParams* params) {
  if (params->param3 != 0) return (params->param3 >> 16) & 0xFF;
  const uint32_t colour = static_cast<uint32_t>(params->param1);
  if ((colour >> 24) == 0) return 0;
  return rgb_to_y(colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF);
}

void overlap_plane_blocks(const PlaneView out[3], const PlaneView a[3], const PlaneView b[3], int width, int height,
                          int percent, int key) {
  if (width < 1 || height < 1) return;
  if (use_reference_path()) {
    overlap_reference(out, a, b, width, height, percent, key);
  } else {
    overlap_fast(out, a, b, width, height, percent, key);
  }
}

}  // namespace zv

int ZV_STDCALL zvTranRound(Image* destination, Image* source, Image* /*unused*/, void* params) {
  if (!destination && !source && !params) return 1;
  // Nothing else is tested by hosts' contract; a missing frame has nothing to fit.
  if (!destination || !source) return 1;
  const int64_t dw = destination->width, dh = destination->height, sw = source->width, sh = source->height;
  if (dw < 1 || dh < 1 || sw < 1 || sh < 1) return 1;
  int mode = zv::kRoundCentred;
  int64_t fw = sw, fh = sh;  // no enlargement of a smaller source
  if (!(dw > sw && dh > sh)) {
    if (sw * dh <= sh * dw) {
      mode = zv::kRoundPillarbox;
      fh = dh;
      fw = sw * dh / sh;
    } else {
      mode = zv::kRoundLetterbox;
      fw = dw;
      fh = sh * dw / sw;
    }
  }
  const int fitted_w = static_cast<int>(fw), fitted_h = static_cast<int>(fh);
  zv::ScaledImage fitted(fitted_w, fitted_h, source);
  const uint8_t* planes[3] = {fitted.y, fitted.u, fitted.v};
  for (int index = zv::kPlaneY; index <= zv::kPlaneV; ++index) {
    const bool luma = index == zv::kPlaneY;
    zv::round_plane(zv::image_plane(destination, index), planes[index], luma ? fitted_w : fitted_w / 2,
                    luma ? fitted_h : fitted_h / 2, mode, luma ? 16 : 128, luma ? 2 : 1);
  }
  return 1;
}

int ZV_STDCALL zvTransparentOverlap(Image* out, Image* a, Image* b, TransitionParams* params) {
  if (!out && !a && !b && !params) return 0;
  // No other argument is tested by contract; a missing one simply ends the call.
  if (!params) return 1;
  int percent = zv::truncate_to_int(params->position / params->duration * 100.0);
  if (percent < 1) {
    if (out && a) out->copy(a, 1, 1);
    return 1;
  }
  percent = std::min(percent, 100);
  const int key = zv::overlap_key_luma(params);
  // Only mode 0 exists; the mode is made non-negative first, so any non-zero value ends the call.
  if (zv::truncate_to_int(params->param2) != 0) return 1;
  if (!out || !a || !b) return 1;
  const int height = zv::min3(out->height, a->height, b->height);
  if (height < 1) return 1;
  const int width = zv::min3(out->width, a->width, b->width);
  zv::PlaneView po[3], pa[3], pb[3];
  for (int index = zv::kPlaneY; index <= zv::kPlaneV; ++index) {
    po[index] = zv::image_plane(out, index);
    pa[index] = zv::image_plane(a, index);
    pb[index] = zv::image_plane(b, index);
  }
  zv::overlap_plane_blocks(po, pa, pb, width, height, percent, key);
  return 1;
}

#include "effects3d/column_surface.h"

#include <cstring>

#include "frame/kernel_path.h"
#include "frame/rows.h"

namespace zv {

void StretchColumn(int h, int src_h, int target_stride, int source_stride, uint8_t* target, const uint8_t* source) {
  for (int k = 0; k < h; ++k) {
    target[static_cast<long>(k) * target_stride] = source[stretch_row(k, src_h, h) * source_stride];
  }
}

void stretch_column_run(int h, int src_h, int run, int target_stride, int source_stride, uint8_t* target,
                        const uint8_t* source) {
  for (int k = 0; k < h; ++k) {
    std::memcpy(target + static_cast<long>(k) * target_stride, source + stretch_row(k, src_h, h) * source_stride, run);
  }
}

void draw_surface_reference(const SurfaceColumns& s, bool chroma, int src_h, int out_stride, int source_stride,
                            uint8_t* out, const uint8_t* source) {
  for (int j = 0; j < s.size(); ++j) {
    uint8_t* column = row_at(out, out_stride, s.top[j]) + s.first + j;
    StretchColumn(s.height[j], src_h, out_stride, source_stride, column, source + s.source[j]);
    if (chroma || s.shade[j] == 256) continue;
    for (int k = 0; k < s.height[j]; ++k) {
      uint8_t& v = column[static_cast<long>(k) * out_stride];
      v = shade_luma(v, s.shade[j]);
    }
  }
}

void draw_surface_fast(const SurfaceColumns& s, bool chroma, int src_h, int out_stride, int source_stride,
                       uint8_t* out, const uint8_t* source) {
  const int n = s.size();
  if (n < 1 || src_h < 1) return;
  // Shading a sample before it is stretched is the same as after: the stretch
  // only picks samples.
  const bool shaded = !chroma && [&] {
    for (int w : s.shade) {
      if (w != 256) return true;
    }
    return false;
  }();
  std::vector<uint8_t> block(static_cast<size_t>(n) * src_h);
  for (int row = 0; row < src_h; ++row) {
    const uint8_t* from = row_at(source, source_stride, row);
    uint8_t* to = block.data() + static_cast<size_t>(row) * n;
    for (int j = 0; j < n; ++j) to[j] = from[s.source[j]];
    if (shaded) {
      for (int j = 0; j < n; ++j) to[j] = shade_luma(to[j], s.shade[j]);
    }
  }
  for_each_column_run(
      n, [&](int j) { return static_cast<int64_t>(s.top[j]) << 32 | static_cast<uint32_t>(s.height[j]); },
      [&](int j0, int j1) {
        stretch_column_run(s.height[j0], src_h, j1 - j0, out_stride, n, row_at(out, out_stride, s.top[j0]) + s.first + j0,
                           block.data() + j0);
      });
}

void draw_surface(const SurfaceColumns& s, bool chroma, int src_h, int out_stride, int source_stride, uint8_t* out,
                  const uint8_t* source) {
  if (use_reference_path()) {
    draw_surface_reference(s, chroma, src_h, out_stride, source_stride, out, source);
  } else {
    draw_surface_fast(s, chroma, src_h, out_stride, source_stride, out, source);
  }
}

}  // namespace zv

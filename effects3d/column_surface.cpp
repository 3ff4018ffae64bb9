#include "effects3d/column_surface.h"

#include <algorithm>
#include <cstring>

#include "frame/kernel_path.h"
#include "frame/rows.h"

namespace zv {

void StretchColumn(int h, int src_h, int target_stride, int source_stride, uint8_t* target, const uint8_t* source) {
  for (int k = 0; k < h; ++k) {
    target[static_cast<ptrdiff_t>(k) * target_stride] = source[stretch_row(k, src_h, h) * source_stride];
  }
}

void stretch_column_run(int h, int src_h, int run, int target_stride, int source_stride, uint8_t* target,
                        const uint8_t* source) {
  for (int k = 0; k < h; ++k) {
    std::memcpy(target + static_cast<ptrdiff_t>(k) * target_stride, source + stretch_row(k, src_h, h) * source_stride, run);
  }
}

void draw_surface_reference(const SurfaceColumns& s, bool chroma, int src_h, int out_stride, int source_stride,
                            uint8_t* out, const uint8_t* source) {
  for (int j = 0; j < s.size(); ++j) {
    uint8_t* column = row_at(out, out_stride, s.top[j]) + s.first + j;
    StretchColumn(s.height[j], src_h, out_stride, source_stride, column, source + s.source[j]);
    if (chroma || s.shade[j] == 256) continue;
    for (int k = 0; k < s.height[j]; ++k) {
      uint8_t& v = column[static_cast<ptrdiff_t>(k) * out_stride];
      v = shade_luma(v, s.shade[j]);
    }
  }
}

void draw_surface_fast(const SurfaceColumns& s, bool chroma, int src_h, int out_stride, int source_stride, uint8_t* out,
                       const uint8_t* source) {
  const int n = s.size();
  if (n < 1 || src_h < 1) return;
  // Columns with the same top and height share one row map, worked out once
  // per run; each output row of the run then gathers from one source row.
  const bool shaded = !chroma && std::any_of(s.shade.begin(), s.shade.end(), [](int w) { return w != 256; });
  std::vector<int32_t> rows(static_cast<size_t>(src_h));
  for_each_column_run(
      n, [&](int j) { return static_cast<int64_t>(s.top[j]) << 32 | static_cast<uint32_t>(s.height[j]); },
      [&](int j0, int j1) {
        const int h = s.height[j0];
        for (int k = 0; k < h; ++k) rows[k] = static_cast<int32_t>(stretch_row(k, src_h, h));
        const int* columns = s.source.data() + j0;
        const int* shades = s.shade.data() + j0;
        const int run = j1 - j0;
        uint8_t* o = row_at(out, out_stride, s.top[j0]) + s.first + j0;
        for (int k = 0; k < h; ++k, o += out_stride) {
          const uint8_t* from = row_at(source, source_stride, rows[k]);
          if (shaded) {
            for (int j = 0; j < run; ++j) o[j] = shade_luma(from[columns[j]], shades[j]);
          } else {
            for (int j = 0; j < run; ++j) o[j] = from[columns[j]];
          }
        }
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

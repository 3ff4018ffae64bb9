#include "effects3d/column_surface.h"

#include <algorithm>
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
  // Columns with the same top and height share one row map; the output is
  // then written row by row, each run of columns gathering from its row.
  struct Run {
    int j0, j1, top, height;
    size_t map;
  };
  std::vector<Run> runs;
  std::vector<int32_t> maps;
  int bottom = 0;
  for_each_column_run(
      n, [&](int j) { return static_cast<int64_t>(s.top[j]) << 32 | static_cast<uint32_t>(s.height[j]); },
      [&](int j0, int j1) {
        const int h = s.height[j0];
        if (h < 1) return;
        runs.push_back({j0, j1, s.top[j0], h, maps.size()});
        for (int k = 0; k < h; ++k) maps.push_back(static_cast<int32_t>(stretch_row(k, src_h, h)));
        bottom = std::max(bottom, s.top[j0] + h);
      });
  const bool shaded = !chroma && std::any_of(s.shade.begin(), s.shade.end(), [](int w) { return w != 256; });
  for (int y = 0; y < bottom; ++y) {
    uint8_t* o = row_at(out, out_stride, y) + s.first;
    for (const Run& run : runs) {
      if (y < run.top || y >= run.top + run.height) continue;
      const uint8_t* from = row_at(source, source_stride, maps[run.map + (y - run.top)]);
      if (shaded) {
        for (int j = run.j0; j < run.j1; ++j) o[j] = shade_luma(from[s.source[j]], s.shade[j]);
      } else {
        for (int j = run.j0; j < run.j1; ++j) o[j] = from[s.source[j]];
      }
    }
  }
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

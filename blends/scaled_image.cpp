#include "blends/scaled_image.h"

#include <algorithm>

#include "frame/transition_op.h"

namespace zv {

ScaledImage::ScaledImage(int target_width, int target_height, const Image* source) : width(0), height(0), y(), u(), v() {
  width = target_width;
  height = target_height;
  // Each plane gets the full width x height bytes; the chroma planes use a quarter.
  const long w = target_width > 0 ? target_width : 0, h = target_height > 0 ? target_height : 0;
  const size_t bytes = static_cast<size_t>(w * h > 0 ? w * h : 1);
  y = new uint8_t[bytes];
  u = new uint8_t[bytes];
  v = new uint8_t[bytes];
  if (!source) return;
  resample_plane(source->width, source->height, target_width, target_height, source->get_Y(), y);
  resample_plane(source->width / 2, source->height / 2, target_width / 2, target_height / 2, source->get_U(), u);
  resample_plane(source->width / 2, source->height / 2, target_width / 2, target_height / 2, source->get_V(), v);
}

ScaledImage::~ScaledImage() {
  delete[] y;
  delete[] u;
  delete[] v;
}

void resample_plane(int source_width, int source_height, int target_width, int target_height,
                    const uint8_t* source, uint8_t* target) {
  if (target_height < 1 || target_width < 1) return;
  // A source without samples has nothing to read; the target keeps what it held.
  if (source_width < 1 || source_height < 1) return;
  const double sx = static_cast<double>(source_width) / target_width;
  const double sy = static_cast<double>(source_height) / target_height;
  for (int j = 0; j < target_height; ++j) {
    const double y0 = j * sy;
    // row0 and col0 are inside the source by construction; the clamps only
    // guard against floating-point edge cases.
    const int row0 = std::min(truncate_to_int(y0), source_height - 1);
    int row1 = truncate_to_int(y0 + sy);
    if (row1 >= source_height) row1 = source_height - 1;
    const uint8_t* r0 = source + static_cast<long>(row0) * source_width;
    const uint8_t* r1 = source + static_cast<long>(row1) * source_width;
    for (int i = 0; i < target_width; ++i) {
      const double x0 = i * sx;
      const int col0 = std::min(truncate_to_int(x0), source_width - 1);
      int col1 = truncate_to_int(x0 + sx);
      if (col1 >= source_width) col1 = source_width - 1;
      *target++ = static_cast<uint8_t>((r0[col0] + r0[col1] + r1[col0] + r1[col1]) >> 2);
    }
  }
}

}  // namespace zv

#include "imaging/scaled_image.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "frame/kernel_path.h"
#include "frame/transition_op.h"

namespace zv {
namespace {

int clamp_size(int keep, int full) { return std::max(0, std::min(keep, full)); }

// Index of the first corner (col0 or row0) and of the second (col1 or row1) of
// target sample i. The first is inside the source by construction; its clamp
// only guards against floating-point edge cases.
inline void corner_indices(int i, double scale, int source_size, int* first, int* second) {
  const double x0 = i * scale;
  *first = std::min(truncate_to_int(x0), source_size - 1);
  *second = truncate_to_int(x0 + scale);
  if (*second >= source_size) *second = source_size - 1;
}

}  // namespace

ScaledImage::ScaledImage(int target_width, int target_height, const Image* source)
    : ScaledImage(target_width, target_height, source, target_width, target_height) {}

ScaledImage::ScaledImage(int target_width, int target_height, const Image* source, int keep_width, int keep_height)
    : width(target_width), height(target_height), y(), u(), v(), kept_width(), kept_height() {
  const int chroma_width = target_width / 2, chroma_height = target_height / 2;
  kept_width[0] = clamp_size(keep_width, target_width);
  kept_height[0] = clamp_size(keep_height, target_height);
  for (int p = 1; p <= 2; ++p) {
    kept_width[p] = clamp_size(kept_width[0] / 2 + kept_width[0] % 2, chroma_width);
    kept_height[p] = clamp_size(kept_height[0] / 2 + kept_height[0] % 2, chroma_height);
  }
  // Every plane gets the luma window's bytes; the chroma planes use a quarter.
  const size_t bytes = std::max<size_t>(static_cast<size_t>(kept_width[0]) * static_cast<size_t>(kept_height[0]), 1);
  // Zeroed, so that a source without samples still gives a defined picture.
  y = new uint8_t[bytes]();
  u = new uint8_t[bytes]();
  v = new uint8_t[bytes]();
  if (!source) return;
  uint8_t* const targets[3] = {y, u, v};
  for (int p = kPlaneY; p <= kPlaneV; ++p) {
    const PlaneView s = image_plane(source, p);
    resample_window(s.width, s.height, p == kPlaneY ? target_width : chroma_width,
                    p == kPlaneY ? target_height : chroma_height, kept_width[p], kept_height[p], s.data, targets[p]);
  }
}

ScaledImage::~ScaledImage() {
  delete[] y;
  delete[] u;
  delete[] v;
}

PlaneView scaled_plane(const ScaledImage& image, int index) {
  uint8_t* data = index == kPlaneY ? image.y : index == kPlaneU ? image.u : image.v;
  return {data, image.kept_width[index], image.kept_height[index]};
}

void resample_plane(int source_width, int source_height, int target_width, int target_height,
                    const uint8_t* source, uint8_t* target) {
  resample_window(source_width, source_height, target_width, target_height, target_width, target_height, source,
                  target);
}

void resample_window(int source_width, int source_height, int target_width, int target_height, int window_width,
                     int window_height, const uint8_t* source, uint8_t* target) {
  if (target_height < 1 || target_width < 1) return;
  // A source without samples has nothing to read; the target keeps what it held.
  if (source_width < 1 || source_height < 1) return;
  window_width = clamp_size(window_width, target_width);
  window_height = clamp_size(window_height, target_height);
  if (window_width < 1 || window_height < 1) return;
  const double sx = static_cast<double>(source_width) / target_width;
  const double sy = static_cast<double>(source_height) / target_height;
  const bool reference = use_reference_path();
  // The fast path works the column corners out once for all rows.
  std::vector<int> col0, col1;
  if (!reference) {
    col0.resize(window_width);
    col1.resize(window_width);
    for (int i = 0; i < window_width; ++i) corner_indices(i, sx, source_width, &col0[i], &col1[i]);
  }
  for (int j = 0; j < window_height; ++j) {
    int row0, row1;
    corner_indices(j, sy, source_height, &row0, &row1);
    const uint8_t* r0 = source + static_cast<ptrdiff_t>(row0) * source_width;
    const uint8_t* r1 = source + static_cast<ptrdiff_t>(row1) * source_width;
    if (reference) {
      for (int i = 0; i < window_width; ++i) {
        int c0, c1;
        corner_indices(i, sx, source_width, &c0, &c1);
        *target++ = static_cast<uint8_t>((r0[c0] + r0[c1] + r1[c0] + r1[c1]) >> 2);
      }
    } else {
      const int* c0 = col0.data();
      const int* c1 = col1.data();
      for (int i = 0; i < window_width; ++i) {
        target[i] = static_cast<uint8_t>((r0[c0[i]] + r0[c1[i]] + r1[c0[i]] + r1[c1[i]]) >> 2);
      }
      target += window_width;
    }
  }
}

}  // namespace zv

#include "imaging/scaled_image.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
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
  uint8_t** const targets[3] = {&y, &u, &v};
  for (int p = kPlaneY; p <= kPlaneV; ++p) {
    // Each plane holds its window, packed; zeroed only where the resize writes
    // nothing, so that a source without samples still gives a defined picture.
    const size_t bytes = std::max<size_t>(static_cast<size_t>(kept_width[p]) * static_cast<size_t>(kept_height[p]), 1);
    *targets[p] = new uint8_t[bytes];
    const PlaneView s = source ? image_plane(source, p) : PlaneView{};
    if (s.width < 1 || s.height < 1 || kept_width[p] < 1 || kept_height[p] < 1) {
      std::memset(*targets[p], 0, bytes);
      continue;
    }
    resample_window(s.width, s.height, p == kPlaneY ? target_width : chroma_width,
                    p == kPlaneY ? target_height : chroma_height, kept_width[p], kept_height[p], s.data, *targets[p]);
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
  if (use_reference_path()) {
    for (int j = 0; j < window_height; ++j) {
      int row0, row1;
      corner_indices(j, sy, source_height, &row0, &row1);
      const uint8_t* r0 = source + static_cast<ptrdiff_t>(row0) * source_width;
      const uint8_t* r1 = source + static_cast<ptrdiff_t>(row1) * source_width;
      for (int i = 0; i < window_width; ++i) {
        int c0, c1;
        corner_indices(i, sx, source_width, &c0, &c1);
        *target++ = static_cast<uint8_t>((r0[c0] + r0[c1] + r1[c0] + r1[c1]) >> 2);
      }
    }
    return;
  }
  // The fast path works the column corners out once for all rows, and the
  // sums of a source row's two corners once for every target row that uses
  // that row (neighbouring target rows mostly share theirs).
  std::vector<int> col0(window_width), col1(window_width);
  for (int i = 0; i < window_width; ++i) corner_indices(i, sx, source_width, &col0[i], &col1[i]);
  std::vector<uint16_t> sums[2] = {std::vector<uint16_t>(window_width), std::vector<uint16_t>(window_width)};
  int sums_row[2] = {-1, -1};
  auto slot_for = [&](int row, int avoid) {
    if (sums_row[0] == row) return 0;
    if (sums_row[1] == row) return 1;
    const int slot = avoid == 0 ? 1 : 0;
    const uint8_t* r = source + static_cast<ptrdiff_t>(row) * source_width;
    uint16_t* out = sums[slot].data();
    for (int i = 0; i < window_width; ++i) out[i] = static_cast<uint16_t>(r[col0[i]] + r[col1[i]]);
    sums_row[slot] = row;
    return slot;
  };
  for (int j = 0; j < window_height; ++j, target += window_width) {
    int row0, row1;
    corner_indices(j, sy, source_height, &row0, &row1);
    const int keep = sums_row[0] == row1 ? 0 : sums_row[1] == row1 ? 1 : -1;
    const uint16_t* top = sums[slot_for(row0, keep)].data();
    const uint16_t* bottom = sums[slot_for(row1, top == sums[0].data() ? 0 : 1)].data();
    for (int i = 0; i < window_width; ++i) target[i] = static_cast<uint8_t>((top[i] + bottom[i]) >> 2);
  }
}

}  // namespace zv

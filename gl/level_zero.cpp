#include "gl/level_zero.h"

#include <algorithm>

#include "frame/parallel_rows.h"
#include "gl/gl_api.h"

namespace zv {
namespace {

// Output rows a thread takes at least.
constexpr int kMinRowsPerPart = 64;

}  // namespace

int mipmap_nearest_power(int side) {
  if (side <= 0) return 1;
  unsigned value = static_cast<unsigned>(side);
  int power = 1;
  for (;;) {
    if (value == 1) return power;
    if (value == 3) return power * 4;
    value >>= 1;
    power *= 2;
  }
}

LevelZeroSize mipmap_level_zero_size(int width, int height) {
  LevelZeroSize size{mipmap_nearest_power(width), mipmap_nearest_power(height)};
  for (;;) {
    const int half_width = size.width > 1 ? size.width >> 1 : size.width;
    const int half_height = size.height > 1 ? size.height >> 1 : size.height;
    glTexImage2D(GL_PROXY_TEXTURE_2D, 1, 3, half_width, half_height, 0, GL_RGB, GL_UNSIGNED_BYTE, nullptr);
    GLint fits = 0;
    glGetTexLevelParameteriv(GL_PROXY_TEXTURE_2D, 1, GL_TEXTURE_WIDTH, &fits);
    if (fits != 0) return size;
    if (size.width == 1 && size.height == 1) break;
    size = {half_width, half_height};
  }
  // Not even 1 x 1 fits (no context): the powers, kept within the driver's largest side when it tells one.
  GLint largest = 0;
  glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
  size = {mipmap_nearest_power(width), mipmap_nearest_power(height)};
  if (largest > 0) size = {std::min(size.width, largest), std::min(size.height, largest)};
  return size;
}

void LevelZeroScaler::Prepare(int in_width, int in_height, LevelZeroSize out) {
  in_width_ = in_width;
  in_height_ = in_height;
  out_ = out;
  if (in_width == out.width && in_height == out.height) {
    mode_ = Mode::kCopy;
    slots_ = 0;
  } else if (in_width == 2 * out.width && in_height == 2 * out.height) {
    mode_ = Mode::kHalve;
    slots_ = 2;
  } else {
    mode_ = Mode::kBox;
    spans_ = box_spans(in_height, out.height, true);
    columns_ = box_columns(in_width, out.width, row_kernels().box_filter_lanes());
    area_ = box_area(in_width, in_height, out.width, out.height);
    slots_ = 0;
    for (const BoxSpan& y : spans_) slots_ = std::max(slots_, y.hi - y.lo + 1);
  }
  row_stride_ = in_width + kBoxRowPad;
  caches_.assign(static_cast<size_t>(parallel_row_parts()), RowCache{});
  for (RowCache& cache : caches_) {
    cache.pixels.assign(static_cast<size_t>(slots_) * row_stride_, 0);
    cache.held.assign(static_cast<size_t>(slots_), -1);
    cache.inputs.assign(static_cast<size_t>(slots_), nullptr);
  }
}

const uint32_t* LevelZeroScaler::CachedRow(RowCache& cache, const FrameRows& rows, int row,
                                           const RowKernels& kernels) const {
  const size_t slot = static_cast<size_t>(row % slots_);
  uint32_t* pixels = cache.pixels.data() + slot * row_stride_;
  if (cache.held[slot] != row) {
    rows.Row(row, reinterpret_cast<uint8_t*>(pixels), kernels);
    cache.held[slot] = row;
  }
  return pixels;
}

void LevelZeroScaler::Fill(const FrameRows& rows, uint32_t* texels) {
  if (rows.width() != in_width_ || rows.height() != in_height_ || out_.width <= 0 || out_.height <= 0) return;
  const RowKernels& kernels = row_kernels();
  const ptrdiff_t out_width = out_.width;
  parallel_rows(out_.height, kMinRowsPerPart, [&](int part, int begin, int end) {
    RowCache& cache = caches_[static_cast<size_t>(part)];
    std::fill(cache.held.begin(), cache.held.end(), -1);
    for (int i = begin; i < end; ++i) {
      uint32_t* out = texels + i * out_width;
      if (mode_ == Mode::kCopy) {
        rows.Row(i, reinterpret_cast<uint8_t*>(out), kernels);
      } else if (mode_ == Mode::kHalve) {
        box_halve_row_c(out, CachedRow(cache, rows, 2 * i, kernels), CachedRow(cache, rows, 2 * i + 1, kernels),
                        out_.width);
      } else {
        const BoxSpan& y = spans_[static_cast<size_t>(i)];
        for (int k = 0; k <= y.hi - y.lo; ++k)
          cache.inputs[static_cast<size_t>(k)] = CachedRow(cache, rows, y.lo + k, kernels);
        kernels.box_filter(out, cache.inputs.data(), y, columns_, area_);
      }
    }
  });
}

}  // namespace zv

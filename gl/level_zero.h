// Level 0 of the largest frame textures (frames larger than 1024 on a side):
// the frame scaled to power-of-two sides exactly as OpenGL's mipmap builder
// (GLU) fills that level, so that the 3D effects sample the same texels they
// did when the builder made the texture, without its mipmap levels (the
// textures sample level 0 only) and many times faster.
#pragma once

#include <cstdint>
#include <vector>

#include "frame/box_filter.h"
#include "gl/frame_transfer.h"

namespace zv {

struct LevelZeroSize {
  int width, height;
};

// The builder's size rule: each side to its "nearest" power of two (down,
// unless the side's two highest bits are both set), then both halved until the
// driver takes a texture of that size (a proxy texture one level down, as the
// builder tests it). Needs a current context.
LevelZeroSize mipmap_level_zero_size(int width, int height);
// The first step alone: 1920 -> 2048, 1080 -> 1024.
int mipmap_nearest_power(int side);

// Fills level 0 from a frame's rows as the builder does: a frame already of the
// level's size as it is, one of exactly twice its size by the rounded means of
// 2 x 2 blocks, any other by the box filter; the rows split over the cores.
// (A level 1 or 2 texels wide, from a frame 1 or 2 pixels wide, the builder
// uploads as if its rows were padded to 4 bytes, reading past its buffer: that
// level has no defined texels to match, and here holds the scaled frame.)
class LevelZeroScaler {
 public:
  void Prepare(int in_width, int in_height, LevelZeroSize out);
  // `texels`: out.width x out.height R, G, B, A pixels, bottom row first.
  // Frames of another size than prepared for leave them as they were.
  void Fill(const FrameRows& rows, uint32_t* texels);

 private:
  enum class Mode { kCopy, kHalve, kBox };
  // One thread's recently made input rows, each kept in slot row % slots.
  struct RowCache {
    std::vector<uint32_t> pixels;
    std::vector<int> held;
    std::vector<const uint32_t*> inputs;  // an output row's input rows
  };
  const uint32_t* CachedRow(RowCache& cache, const FrameRows& rows, int row, const RowKernels& kernels) const;

  Mode mode_ = Mode::kCopy;
  int in_width_ = 0, in_height_ = 0;
  LevelZeroSize out_{0, 0};
  std::vector<BoxSpan> spans_;  // the rows
  BoxColumns columns_;
  float area_ = 0;
  int slots_ = 0;                 // input rows an output row reads at most
  int row_stride_ = 0;            // pixels a cached row takes, padding included
  std::vector<RowCache> caches_;  // one per part
};

}  // namespace zv

// A resized private copy of an image, made for one call.
#pragma once

#include <cstdint>

#include "host/image.h"

namespace zv {

struct ScaledImage {
  int32_t width;
  int32_t height;
  uint8_t* y;  // width x height
  uint8_t* u;  // (width / 2) x (height / 2), in a block of width x height bytes
  uint8_t* v;

  // Resamples `source` to target_width x target_height.
  ScaledImage(int target_width, int target_height, const Image* source);
  ~ScaledImage();
  ScaledImage(const ScaledImage&) = delete;
  ScaledImage& operator=(const ScaledImage&) = delete;
};

// Corner-average resampling with truncated coordinates: each target sample is
// the mean (truncated) of the four source samples at the corners of its cell.
void resample_plane(int source_width, int source_height, int target_width, int target_height,
                    const uint8_t* source, uint8_t* target);

}  // namespace zv

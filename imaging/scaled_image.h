// A resized private copy of an image, made for one call.
#pragma once

#include <cstdint>

#include "frame/plane.h"
#include "host/image.h"

namespace zv {

struct ScaledImage {
  int32_t width;   // luma size of the resized picture
  int32_t height;
  uint8_t* y;  // width x height
  uint8_t* u;  // the held window of the (width / 2) x (height / 2) plane
  uint8_t* v;
  // The samples actually held of each plane (Y, U, V): the whole plane unless
  // a window was asked for. A held plane's row stride is its held width.
  int32_t kept_width[3];
  int32_t kept_height[3];

  // Resamples `source` to target_width x target_height.
  ScaledImage(int target_width, int target_height, const Image* source);
  // Holds only the top-left keep_width x keep_height luma samples of that
  // resize, and of each chroma plane the (keep + 1) / 2 samples that cover the
  // same area wherever the window is pasted: an inset that mostly lies outside
  // the frame costs only what shows.
  ScaledImage(int target_width, int target_height, const Image* source, int keep_width, int keep_height);
  ~ScaledImage();
  ScaledImage(const ScaledImage&) = delete;
  ScaledImage& operator=(const ScaledImage&) = delete;
};

// The samples held of plane `index`, as a packed plane.
PlaneView scaled_plane(const ScaledImage& image, int index);

// Corner-average resampling with truncated coordinates: each target sample is
// the mean (truncated) of the four source samples at the corners of its cell.
void resample_plane(int source_width, int source_height, int target_width, int target_height,
                    const uint8_t* source, uint8_t* target);

// The same resize, writing only its top-left window_width x window_height
// samples, packed.
void resample_window(int source_width, int source_height, int target_width, int target_height, int window_width,
                     int window_height, const uint8_t* source, uint8_t* target);

}  // namespace zv

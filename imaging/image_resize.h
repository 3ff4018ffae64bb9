// Scaling one frame into another (placement, border fill, three sampling
// kernels) and the same kernels on 24-bit bitmaps.
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/abi.h"
#include "host/image.h"

// How the source is placed in the destination picture.
enum IMAGE_RESIZE_METHOD : int32_t {
  IMAGE_RESIZE_KEEP_ASPECT = 0,  // fit keeping the display aspect ratio
  IMAGE_RESIZE_FIT_16_9 = 1,     // fit as a 16:9 picture
  IMAGE_RESIZE_FIT_4_3 = 2,      // fit as a 4:3 picture
  IMAGE_RESIZE_STRETCH = 3,      // the whole destination
  IMAGE_RESIZE_CENTRE = 4,       // no scaling, centred
  IMAGE_RESIZE_TILE = 5,         // no scaling, tiled from the top-left corner
};

// How samples are taken.
enum IMAGE_INTERPOLATION : int32_t {
  IMAGE_INTERPOLATION_NEAREST = 0,
  IMAGE_INTERPOLATION_BILINEAR = 1,  // luma only; chroma is nearest-sampled
  IMAGE_INTERPOLATION_CUBIC = 2,     // 4 x 4 samples
};

// A 24-bit bitmap (3 bytes a pixel, blue, green, red) and a rectangle in it.
// Rows are counted in memory order: row r starts at pixels + r * pitch.
struct tagImgParam {
  uint8_t* pixels;
  int32_t width;
  int32_t height;
  int32_t pitch;  // bytes from one row to the next, at least 3 * width
  int32_t rect_x;
  int32_t rect_y;
  int32_t rect_width;
  int32_t rect_height;
};

// The whole source frame into the whole destination frame. Always 0.
ZV_API int ZV_STDCALL zvImageResize(Image* destination, Image* source, IMAGE_INTERPOLATION interpolation,
                                    IMAGE_RESIZE_METHOD method);
// With the display aspects of both frames (used by method 0; a negative first
// destination number means none). Always 0.
ZV_API int ZV_STDCALL zvImageResize(Image* destination, int destination_aspect_x, int destination_aspect_y,
                                    Image* source, int source_aspect_x, int source_aspect_y,
                                    IMAGE_INTERPOLATION interpolation, IMAGE_RESIZE_METHOD method);
// Scales the source rectangle into the target rectangle. Always 0; an unknown
// interpolation, a missing bitmap or a rectangle outside its bitmap writes nothing.
ZV_API int ZV_STDCALL DIB_Resize(const tagImgParam* source, tagImgParam* target, IMAGE_INTERPOLATION interpolation);

namespace zv {

// Samples (x, y) of one channel at data[y * stride + x * step], x < width, y < height.
struct SampleGrid {
  uint8_t* data;
  ptrdiff_t stride;
  int step;
  int width;
  int height;
};

struct ResizeRect {
  int x;
  int y;
  int width;
  int height;
};

// The three kernels: the source rectangle of `source` into the target rectangle
// of `target`. The rectangles must lie inside their grids.
void scale_nearest(const SampleGrid& source, ResizeRect from, const SampleGrid& target, ResizeRect to);
void scale_bilinear(const SampleGrid& source, ResizeRect from, const SampleGrid& target, ResizeRect to);
void scale_cubic(const SampleGrid& source, ResizeRect from, const SampleGrid& target, ResizeRect to);

// The cubic kernel's four weights (samples before, at, after and two after the
// position) at fraction t in [0, 1); `simple` selects the path for large and
// small steps.
void cubic_weights(double t, bool simple, double weights[4]);

}  // namespace zv

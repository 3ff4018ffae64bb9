// Plane geometry: packed 8-bit planes of a 4:2:0 picture and the centred
// region that the three images of a call have in common.
#pragma once

#include <cstddef>
#include <cstdint>

#include "host/image.h"

namespace zv {

// One plane of an image: rows are packed, so the stride is the width.
struct PlaneView {
  uint8_t* data;
  int width;
  int height;
};

enum PlaneIndex { kPlaneY = 0, kPlaneU = 1, kPlaneV = 2 };

// Plane `index` of a 4:2:0 image: Y is width x height, U and V are
// (width / 2) x (height / 2) with truncating division.
PlaneView image_plane(const Image* image, int index);

// Where a centred w x h region starts inside a W x H plane of stride W:
// (W - w) >> 1 columns and (H - h) >> 1 rows in (arithmetic shifts).
inline ptrdiff_t centred_offset(int plane_width, int plane_height, int w, int h) {
  return static_cast<ptrdiff_t>((plane_height - h) >> 1) * plane_width + ((plane_width - w) >> 1);
}

inline uint8_t* centred_origin(const PlaneView& plane, int w, int h) {
  return plane.data + centred_offset(plane.width, plane.height, w, h);
}

// The region of min3 width and height, centred in each of the three planes.
// Empty (width or height <= 0) when any size is zero or negative.
struct CommonRegion {
  int width;
  int height;
  uint8_t* out;
  const uint8_t* a;
  const uint8_t* b;
  int out_stride;
  int a_stride;
  int b_stride;

  bool empty() const { return width <= 0 || height <= 0; }
};

CommonRegion common_region(const PlaneView& out, const PlaneView& a, const PlaneView& b);

// The region with `a` and `b` exchanged (pictures and strides): for the
// styles that run another style's geometry with the pictures swapped.
inline CommonRegion exchange_pictures(const CommonRegion& r) {
  CommonRegion e = r;
  e.a = r.b;
  e.b = r.a;
  e.a_stride = r.b_stride;
  e.b_stride = r.a_stride;
  return e;
}

}  // namespace zv

// Other views of a common region: the same samples with the rows taken from
// the bottom up, or with `a` and `b` exchanged. Styles that run another
// style's geometry upside down or with the pictures swapped use them instead
// of a second copy of that geometry.
#pragma once

#include "frame/plane.h"
#include "frame/rows.h"

namespace zv {

// Row y of the view is row height - 1 - y of the region (negative strides).
inline CommonRegion rows_flipped(const CommonRegion& r) {
  if (r.empty()) return r;
  CommonRegion f = r;
  const long last = r.height - 1L;
  f.out = r.out + last * r.out_stride;
  f.a = r.a + last * r.a_stride;
  f.b = r.b + last * r.b_stride;
  f.out_stride = -r.out_stride;
  f.a_stride = -r.a_stride;
  f.b_stride = -r.b_stride;
  return f;
}

// The end frames: the region of `a` (or of `b`) copied whole.
inline void copy_region_picture(const CommonRegion& r, bool from_b) {
  copy_block(0, r.width, r.height, r.out_stride, from_b ? r.b_stride : r.a_stride, r.out, from_b ? r.b : r.a);
}

}  // namespace zv

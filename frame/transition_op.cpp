#include "frame/transition_op.h"

#include "frame/plane.h"

namespace zv {

int transition_prologue(Image* out, const Image* a, const Image* b, const TransitionParams* params) {
  if (!out || !a || !b || !params) return kTransitionNullArgument;
  out->copy_flags(*a);
  if (params->enabled < 1) return kTransitionDisabled;
  return kProceed;
}

PlaneView image_plane(const Image* image, int index) {
  if (index == kPlaneY) return {image->plane(index), image->width, image->height};
  return {image->plane(index), image->width / 2, image->height / 2};
}

CommonRegion common_region(const PlaneView& out, const PlaneView& a, const PlaneView& b) {
  CommonRegion r{};
  r.width = min3(out.width, a.width, b.width);
  r.height = min3(out.height, a.height, b.height);
  r.out_stride = out.width;
  r.a_stride = a.width;
  r.b_stride = b.width;
  if (r.empty()) return r;
  r.out = centred_origin(out, r.width, r.height);
  r.a = centred_origin(a, r.width, r.height);
  r.b = centred_origin(b, r.width, r.height);
  return r;
}

}  // namespace zv

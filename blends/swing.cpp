#include <cmath>

#include "blends/image_space.h"
#include "blends/region_views.h"
#include "frame/entry.h"
#include "frame/kernel_path.h"
#include "frame/rows.h"
#include "wipes/shape_rows.h"

namespace zv {
namespace {

enum SwingStyle { kSwingIn1 = 0, kSwingIn2 = 1, kSwingOut1 = 2, kSwingOut2 = 3 };

// The swinging picture's strip and which picture swings.
struct SwingStrip {
  BlockRect at;
  bool moving_b;
};

SwingStrip swing_strip(int style, double p, int w, int h) {
  const double phi = times_pi(p) * 0.5;
  switch (style) {
    case kSwingIn1:
      return {{0, 0, truncate_to_int(w * std::sin(phi) + 0.5), h}, true};
    case kSwingIn2:
      return {{0, 0, w, truncate_to_int(h * std::sin(phi) + 0.5)}, true};
    case kSwingOut1: {
      const int e = truncate_to_int(w * std::cos(phi) + 0.5);
      return {{w - e, 0, e, h}, false};
    }
    default: {
      const int e = truncate_to_int(h * std::cos(phi) + 0.5);
      return {{0, h - e, w, e}, false};
    }
  }
}

void swing_reference(const CommonRegion& r, const SwingStrip& s) {
  const uint8_t* moving = s.moving_b ? r.b : r.a;
  const int moving_stride = s.moving_b ? r.b_stride : r.a_stride;
  const uint8_t* rest = s.moving_b ? r.a : r.b;
  const int rest_stride = s.moving_b ? r.a_stride : r.b_stride;
  const BlockRect& at = s.at;
  for (int y = 0; y < r.height; ++y) {
    uint8_t* o = row_at(r.out, r.out_stride, y);
    for (int x = 0; x < r.width; ++x) {
      const bool inside = x >= at.x && x < at.x + at.width && y >= at.y && y < at.y + at.height;
      if (!inside) {
        o[x] = row_at(rest, rest_stride, y)[x];
        continue;
      }
      const int64_t sx = static_cast<int64_t>(x - at.x) * r.width / at.width;
      const int64_t sy = static_cast<int64_t>(y - at.y) * r.height / at.height;
      o[x] = row_at(moving, moving_stride, static_cast<int>(sy))[sx];
    }
  }
}

void swing_fast(const CommonRegion& r, const SwingStrip& s) {
  const BlockRect whole{0, 0, r.width, r.height};
  const BlockRect& at = s.at;
  const uint8_t* rest = s.moving_b ? r.a : r.b;
  const int rest_stride = s.moving_b ? r.a_stride : r.b_stride;
  // Only what the strip leaves uncovered takes the resting picture.
  if (at.height == r.height) {
    const int x0 = at.width > 0 ? at.x : r.width;
    copy_block(0, x0, r.height, r.out_stride, rest_stride, r.out, rest);
    const int x1 = at.width > 0 ? at.x + at.width : r.width;
    copy_block(x1, r.width - x1, r.height, r.out_stride, rest_stride, r.out + x1, rest);
  } else {
    const int y0 = at.height > 0 ? at.y : r.height;
    copy_block(0, r.width, y0, r.out_stride, rest_stride, r.out, rest);
    const int y1 = at.height > 0 ? at.y + at.height : r.height;
    copy_block(0, r.width, r.height - y1, r.out_stride, rest_stride, row_at(r.out, r.out_stride, y1),
               row_at(rest, rest_stride, y1));
  }
  scale_block_nearest(at, whole, whole, r.out_stride, s.moving_b ? r.b_stride : r.a_stride, r.out,
                      s.moving_b ? r.b : r.a);
}

}  // namespace

void swing_plane(const CommonRegion& r, int style, double p) {
  if (static_cast<unsigned>(style) > kSwingOut2 || r.empty()) return;
  if (p <= 0.0 || p >= 1.0) {
    copy_region_picture(r, p >= 1.0);
    return;
  }
  const SwingStrip strip = swing_strip(style, p, r.width, r.height);
  if (use_reference_path()) {
    swing_reference(r, strip);
  } else {
    swing_fast(r, strip);
  }
}

int ZV_STDCALL swing(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_transition(out, a, b, params, EntryRules{ProgressClamp::kNaNShowsA, kSwingOut2},
                        [params](const PlaneJob& j) { swing_plane(j.region(), params->style, j.progress); });
}

}  // namespace zv

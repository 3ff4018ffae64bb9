#include <algorithm>
#include <cstring>

#include "blends/image_space.h"
#include "blends/region_views.h"
#include "frame/entry.h"
#include "frame/kernel_path.h"
#include "frame/rows.h"
#include "frame/user_params.h"

namespace zv {
namespace {

enum ObscureStyle { kTopToBottom = 0, kBottomToTop = 1 };
constexpr int kDefaultStrips = 10, kMaxStrips = 100;

// Columns [(i W) / n, ((i + 1) W) / n) of strip i.
inline int strip_start(int i, int n, int w) { return static_cast<int>(static_cast<int64_t>(i) * w / n); }

// The bar height of strip i: the left strips lead, the right ones lag by up
// to half the phase.
int bar_height(int i, int n, double q, int h) {
  const double stagger = 0.5;
  const double lag = n == 1 ? 0.0 : stagger * i / (n - 1);
  const double l = std::clamp(q * (1 + stagger) - lag, 0.0, 1.0);
  return truncate_to_int(l * h + 0.5);
}

// Phase 1 (black falls over `a`) or phase 2 (`b` follows the black down).
struct ObscurePhase {
  bool second;
  double q;
};

ObscurePhase obscure_phase(double p) { return p < 0.5 ? ObscurePhase{false, 2 * p} : ObscurePhase{true, 2 * p - 1}; }

void obscure_reference(const CommonRegion& r, int n, double p, uint8_t fill) {
  const ObscurePhase phase = obscure_phase(p);
  for (int i = 0; i < n; ++i) {
    const int x0 = strip_start(i, n, r.width), x1 = strip_start(i + 1, n, r.width);
    const int h = bar_height(i, n, phase.q, r.height);
    for (int y = 0; y < r.height; ++y) {
      uint8_t* o = row_at(r.out, r.out_stride, y);
      const uint8_t* pa = row_at(r.a, r.a_stride, y);
      const uint8_t* pb = row_at(r.b, r.b_stride, y);
      for (int x = x0; x < x1; ++x) {
        if (!phase.second) {
          o[x] = y < h ? fill : pa[x];
        } else {
          o[x] = y < h ? pb[x] : fill;
        }
      }
    }
  }
}

void obscure_fast(const CommonRegion& r, int n, double p, uint8_t fill) {
  const ObscurePhase phase = obscure_phase(p);
  for (int i = 0; i < n; ++i) {
    const int x0 = strip_start(i, n, r.width), x1 = strip_start(i + 1, n, r.width);
    const int h = bar_height(i, n, phase.q, r.height);
    uint8_t* o = r.out + x0;
    if (!phase.second) {
      fill_block(fill, x1 - x0, h, r.out_stride, o);
      copy_block(x0, x1 - x0, r.height - h, r.out_stride, r.a_stride, row_at(o, r.out_stride, h),
                 row_at(r.a, r.a_stride, h));
    } else {
      copy_block(x0, x1 - x0, h, r.out_stride, r.b_stride, o, r.b);
      fill_block(fill, x1 - x0, r.height - h, r.out_stride, row_at(o, r.out_stride, h));
    }
  }
}

}  // namespace

void obscure_plane(const CommonRegion& region, int style, int n, double p, bool chroma) {
  if (static_cast<unsigned>(style) > kBottomToTop || region.empty() || n < 1) return;
  // "Bottom to Top" is "Top to Bottom" on rows counted from the bottom.
  const CommonRegion r = style == kBottomToTop ? rows_flipped(region) : region;
  if (use_reference_path()) {
    obscure_reference(r, n, p, video_black(chroma));
  } else {
    obscure_fast(r, n, p, video_black(chroma));
  }
}

int ZV_STDCALL obscure(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_transition(out, a, b, params, EntryRules{ProgressClamp::kNaNShowsA, kBottomToTop},
                        [params](const PlaneJob& j) {
                          const int n = limit_param(params->param1, kDefaultStrips, kMaxStrips);
                          obscure_plane(j.region(), params->style, n, j.progress, j.chroma);
                        });
}

}  // namespace zv

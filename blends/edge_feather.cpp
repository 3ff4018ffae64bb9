#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "blends/image_space.h"
#include "frame/entry.h"
#include "frame/kernel_path.h"
#include "frame/rows.h"
#include "frame/user_params.h"

namespace zv {
namespace {

enum FeatherStyle { kCloseAndOpen = 0, kCloseAll = 1 };
constexpr double kFeather = 0.25;

// The iris: `inner` inside radius R (normalised to the frame's half sizes),
// `outer` outside it, blended across a ring kFeather wide inside the edge.
// A null picture is the fill byte.
struct Iris {
  double radius;
  const uint8_t* inner;
  int inner_stride;
  const uint8_t* outer;
  int outer_stride;
  uint8_t fill;
};

Iris iris_for(const CommonRegion& r, int style, double p, bool chroma) {
  const double full = std::sqrt(2.0) + kFeather;  // past the corners with the whole ring
  const uint8_t fill = video_black(chroma);
  // The iris's area shrinks as 1 - sqrt(p): quickly at first, while only the corners change, and in step with time
  // at the end. Closing the radius evenly left the picture still for the first eighth and a speck for the last sixth.
  if (style == kCloseAll) return {std::sqrt(1 - std::sqrt(p)) * full, r.a, r.a_stride, r.b, r.b_stride, fill};
  // `a` closes on black, then `b` opens out of it.
  if (p < 0.5) return {(1 - 2 * p) * full, r.a, r.a_stride, nullptr, 0, fill};
  return {(2 * p - 1) * full, r.b, r.b_stride, nullptr, 0, fill};
}

inline double normalised(int i, int size) { return (i + 0.5 - size / 2.0) / (size / 2.0); }

inline int inner_weight(double radius, double r2) {
  return truncate_to_int(std::clamp((radius - std::sqrt(r2)) / kFeather, 0.0, 1.0) * 256);
}

inline uint8_t mix(int inner, int outer, int k) { return static_cast<uint8_t>((inner * k + outer * (256 - k)) >> 8); }

void feather_reference(const CommonRegion& r, const Iris& iris) {
  for (int y = 0; y < r.height; ++y) {
    const double ny = normalised(y, r.height);
    uint8_t* o = row_at(r.out, r.out_stride, y);
    const uint8_t* in = row_at(iris.inner, iris.inner_stride, y);
    const uint8_t* out = iris.outer ? row_at(iris.outer, iris.outer_stride, y) : nullptr;
    for (int x = 0; x < r.width; ++x) {
      const double nx = normalised(x, r.width);
      const int k = inner_weight(iris.radius, nx * nx + ny * ny);
      o[x] = mix(in[x], out ? out[x] : iris.fill, k);
    }
  }
}

// First index in [lo, hi) where `keep` stops holding (keep is monotone).
template <typename Keep>
int first_not(int lo, int hi, Keep keep) {
  while (lo < hi) {
    const int mid = lo + (hi - lo) / 2;
    if (keep(mid)) {
      lo = mid + 1;
    } else {
      hi = mid;
    }
  }
  return lo;
}

// Squared radii are compared first, with a margin that keeps every decision
// the square root would make; only the ring takes the root.
void feather_fast(const CommonRegion& r, const Iris& iris) {
  const int w = r.width;
  std::vector<double> nx2(static_cast<size_t>(w));
  for (int x = 0; x < w; ++x) {
    const double nx = normalised(x, w);
    nx2[x] = nx * nx;
  }
  const double inside_r = iris.radius - kFeather - 1e-9, outside_r = iris.radius + 1e-9;
  const double inside2 = inside_r > 0 ? inside_r * inside_r : -1.0, outside2 = outside_r * outside_r;
  const int mid = w / 2;  // nx2 falls over [0, mid) and rises over [mid, w)
  std::vector<int> weights(static_cast<size_t>(w));
  for (int y = 0; y < r.height; ++y) {
    const double ny = normalised(y, r.height), ny2 = ny * ny;
    uint8_t* o = row_at(r.out, r.out_stride, y);
    const uint8_t* in = row_at(iris.inner, iris.inner_stride, y);
    const uint8_t* out = iris.outer ? row_at(iris.outer, iris.outer_stride, y) : nullptr;
    auto outside = [&](int x) { return nx2[x] + ny2 > outside2; };
    auto inside = [&](int x) { return nx2[x] + ny2 < inside2; };
    const int a0 = first_not(0, mid, outside), a1 = first_not(a0, mid, [&](int x) { return !inside(x); });
    const int b1 = first_not(mid, w, inside), b0 = first_not(b1, w, [&](int x) { return !outside(x); });
    auto outer_span = [&](int x0, int x1) {
      if (x1 <= x0) return;
      if (out) {
        std::memcpy(o + x0, out + x0, x1 - x0);
      } else {
        std::memset(o + x0, iris.fill, x1 - x0);
      }
    };
    // The ring: weights first (no branches), then the blend.
    auto ring = [&](int x0, int x1) {
      for (int x = x0; x < x1; ++x) {
        const double v = (iris.radius - std::sqrt(nx2[x] + ny2)) / kFeather;
        weights[x - x0] = static_cast<int>(std::min(std::max(v, 0.0), 1.0) * 256);
      }
      for (int x = x0; x < x1; ++x) o[x] = mix(in[x], out ? out[x] : iris.fill, weights[x - x0]);
    };
    outer_span(0, a0);
    ring(a0, a1);
    if (b1 > a1) std::memcpy(o + a1, in + a1, b1 - a1);
    ring(b1, b0);
    outer_span(b0, w);
  }
}

}  // namespace

void edge_feather_plane(const CommonRegion& r, int style, double p, bool chroma) {
  if (static_cast<unsigned>(style) > kCloseAll || r.empty()) return;
  const Iris iris = iris_for(r, style, p, chroma);
  if (use_reference_path()) {
    feather_reference(r, iris);
  } else {
    feather_fast(r, iris);
  }
}

int ZV_STDCALL edge_feather(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_transition(
      out, a, b, params, EntryRules{ProgressClamp::kNaNShowsA, kCloseAll},
      [params](const PlaneJob& j) { edge_feather_plane(j.region(), params->style, j.progress, j.chroma); });
}

}  // namespace zv

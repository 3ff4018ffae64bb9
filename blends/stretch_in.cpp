#include "blends/stretch_in.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "blends/blend.h"
#include "frame/entry.h"
#include "frame/rows.h"

namespace zv {
namespace {

constexpr int kAnchorRight = 0, kAnchorLeft = 1;

// Sample `index` of `b`'s region row, counted from the row's start. The right
// anchor reads B(W), one past the row (the next row's first sample), and a
// wider `b` reads further; that is kept, but a read that would leave `b`'s
// plane takes the plane's nearest sample instead.
inline uint8_t b_sample(const uint8_t* plane, int64_t plane_size, int64_t row_start, int64_t index) {
  return plane[std::clamp<int64_t>(row_start + index, 0, plane_size - 1)];
}

// Column x of the region reads B(t(x f)) when anchored left and
// B(W - t((W - x) f)) when anchored right.
inline int64_t source_index(int style, int x, int width, double f) {
  if (style == kAnchorLeft) return truncate_to_int(x * f);
  return static_cast<int64_t>(width) - truncate_to_int((width - x) * f);
}

void stretch_in_plane(const PlaneJob& job, int style) {
  if (style != kAnchorLeft && style != kAnchorRight) return;
  const PlaneView& b = job.b;
  const double p = job.progress;
  const CommonRegion r = job.region();
  if (r.empty()) return;
  const int W = r.width;
  const int alpha = square_weight(p);
  const double f = p * (static_cast<double>(b.width) / W);
  const int64_t b_size = static_cast<int64_t>(b.width) * b.height;
  const int64_t b_origin = r.b - b.data;
  if (job.rows.reference) {
    for (int row = 0; row < r.height; ++row) {
      uint8_t* o = row_at(r.out, r.out_stride, row);
      const uint8_t* pa = row_at(r.a, r.a_stride, row);
      const int64_t row_start = b_origin + static_cast<int64_t>(row) * r.b_stride;
      for (int x = 0; x < W; ++x) {
        const int bs = b_sample(b.data, b_size, row_start, source_index(style, x, W, f));
        o[x] = static_cast<uint8_t>((bs * alpha + pa[x] * (256 - alpha)) >> 8);
      }
    }
    return;
  }
  // The columns read are the same in every row: work them out once, gather
  // each row of `b` and blend it in.
  std::vector<int64_t> index(W);
  for (int x = 0; x < W; ++x) index[x] = source_index(style, x, W, f);
  const auto [lowest, highest] = std::minmax_element(index.begin(), index.end());
  std::vector<uint8_t> gathered(W);
  for (int row = 0; row < r.height; ++row) {
    const int64_t row_start = b_origin + static_cast<int64_t>(row) * r.b_stride;
    if (row_start + *lowest >= 0 && row_start + *highest < b_size) {
      const uint8_t* base = b.data + row_start;
      for (int x = 0; x < W; ++x) gathered[x] = base[index[x]];
    } else {
      for (int x = 0; x < W; ++x) gathered[x] = b_sample(b.data, b_size, row_start, index[x]);
    }
    job.rows.blend(row_at(r.out, r.out_stride, row), row_at(r.a, r.a_stride, row), gathered.data(), W, alpha);
  }
}

}  // namespace

int ZV_STDCALL stretch_in(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_transition(out, a, b, params, EntryRules{ProgressClamp::kPassNaN},
                        [params](const PlaneJob& job) { stretch_in_plane(job, params->style); });
}

}  // namespace zv

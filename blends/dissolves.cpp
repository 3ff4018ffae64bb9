#include "blends/dissolves.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "blends/dissolve_rows.h"
#include "frame/entry.h"
#include "frame/rows.h"

namespace zv {
namespace {

// Copies the region's rows from `src` (a's or b's region start) into out.
void copy_region(const CommonRegion& r, const uint8_t* src, int src_stride) {
  copy_block(0, r.width, r.height, r.out_stride, src_stride, r.out, src);
}

// Whether the row just below a centred region of height h lies inside the plane.
bool row_below_region_exists(const PlaneView& plane, int h) { return ((plane.height - h) >> 1) + h < plane.height; }

// Add Dissolve's luma offset: up from 0 to 191 at the midpoint, back to 0.
int add_dissolve_offset(double p) {
  const int offset = p < 0.5 ? truncate_to_int(p * 382.5) : truncate_to_int(191.25 - (p - 0.5) * 382.5);
  return std::clamp(offset, 0, 191);  // a NaN progress would give INT32_MIN
}

// Non Add Dissolve's luma offset mod 256; it meets 150 at the midpoint.
uint8_t non_add_offset(int w, double p) {
  const int64_t k = round_to_int(w * p);
  if (p < 0.5) return static_cast<uint8_t>(300 * k / w);
  const int64_t d = 300 * (w / 2 - k) / w;
  return static_cast<uint8_t>(d + 150);
}

void add_dissolve_plane(const PlaneJob& job, int style) {
  if (style != 0 && style != 1) return;
  const CommonRegion r = job.region();
  if (r.empty()) return;
  const double p = job.progress;
  if (!job.chroma) {
    const bool first_half = p < 0.5;
    const uint8_t* src = first_half ? r.a : r.b;
    const int src_stride = first_half ? r.a_stride : r.b_stride;
    const int offset = style == 0 ? add_dissolve_offset(p) : -add_dissolve_offset(p);
    for (int row = 0; row < r.height; ++row) {
      job.rows.offset_saturate(row_at(r.out, r.out_stride, row), row_at(src, src_stride, row), r.width, offset);
    }
    return;
  }
  // Chroma switches around the middle at thresholds of its own.
  if (p < 0.4) {
    copy_region(r, r.a, r.a_stride);
  } else if (p < 0.6) {
    // Kept as hosts expect: the grey is one run of W x H bytes from the region's
    // start, so a wider output gets it spilled across its rows. It never runs
    // past the plane's end.
    const size_t plane_end = static_cast<size_t>(job.out.width) * static_cast<size_t>(job.out.height);
    const size_t start = static_cast<size_t>(r.out - job.out.data);
    std::memset(r.out, 128, std::min(static_cast<size_t>(r.width) * static_cast<size_t>(r.height), plane_end - start));
  } else {
    copy_region(r, r.b, r.b_stride);
  }
}

void non_add_dissolve_plane(const PlaneJob& job) {
  const CommonRegion r = job.region();
  if (r.empty()) return;
  const bool first_half = job.progress < 0.5;
  const PlaneView& src_plane = first_half ? job.a : job.b;
  const uint8_t* src = first_half ? r.a : r.b;
  const int src_stride = first_half ? r.a_stride : r.b_stride;
  if (job.chroma) {
    copy_region(r, src, src_stride);  // a hard cut at the midpoint
    return;
  }
  const uint8_t offset = non_add_offset(r.width, job.progress);
  // Kept as hosts expect: luma is written one row down, rows 1 to H of the
  // region, so row 0 keeps what out had. The row below the region is skipped
  // where it lies outside the output or the source plane.
  int rows = r.height;
  if (!row_below_region_exists(job.out, r.height) || !row_below_region_exists(src_plane, r.height)) --rows;
  for (int row = 1; row <= rows; ++row) {
    job.rows.offset_wrap(row_at(r.out, r.out_stride, row), row_at(src, src_stride, row), r.width, offset);
  }
}

// One draw per sample, row by row: b where the draw falls below the threshold.
void random_dissolve_reference(const CommonRegion& r, int n, double threshold) {
  for (int row = 0; row < r.height; ++row) {
    uint8_t* o = row_at(r.out, r.out_stride, row);
    const uint8_t* pa = row_at(r.a, r.a_stride, row);
    const uint8_t* pb = row_at(r.b, r.b_stride, row);
    for (int x = 0; x < r.width; ++x) {
      // Kept deliberately: a draw of exactly N picks a even at progress 1,
      // so about one sample in 501 still shows a in the last frame.
      const int draw = zv::rand() % (n + 1);
      o[x] = draw < threshold ? pb[x] : pa[x];
    }
  }
}

// Draws below ceil(threshold) are exactly those below threshold.
void random_dissolve_fast(const RowKernels& rows, const CommonRegion& r, int n, double threshold) {
  const uint32_t below = threshold > 0.0 ? static_cast<uint32_t>(std::ceil(threshold)) : 0;
  for (int row = 0; row < r.height; ++row) {
    select_row_below_mod(rows, row_at(r.out, r.out_stride, row), row_at(r.a, r.a_stride, row),
                         row_at(r.b, r.b_stride, row), r.width, static_cast<uint32_t>(n + 1), below);
  }
}

void random_dissolve_plane(const PlaneJob& job) {
  const CommonRegion r = job.region();
  if (r.empty()) return;
  const double p = job.progress;
  // N is 0..500 for a progress in [0, 1]; a NaN progress gives NaN odds (all a).
  const int n = std::clamp(round_to_int(p * 500.0), 0, 500);
  const double threshold = n * p;
  if (job.rows.reference) {
    random_dissolve_reference(r, n, threshold);
  } else {
    random_dissolve_fast(job.rows, r, n, threshold);
  }
}

constexpr EntryRules kDissolveRules{ProgressClamp::kPassNaN};

}  // namespace

int ZV_STDCALL add_dissolve(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_transition(out, a, b, params, kDissolveRules,
                        [params](const PlaneJob& job) { add_dissolve_plane(job, params->style); });
}

int ZV_STDCALL non_add_dissolve(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_transition(out, a, b, params, kDissolveRules, non_add_dissolve_plane);
}

int ZV_STDCALL random_dissolve(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_transition(out, a, b, params, kDissolveRules, random_dissolve_plane);
}

}  // namespace zv

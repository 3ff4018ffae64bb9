// The one entry sequence of the software transitions: the prologue, the
// progress and its clamp, the style test, then the Y, U and V planes in that
// order, each with its own sizes. Every software entry goes through
// run_transition; where a transition orders or answers these steps its own
// way, EntryRules says so.
#pragma once

#include <cstdint>

#include "frame/plane.h"
#include "frame/row_kernels.h"
#include "frame/transition_op.h"

namespace zv {

// A progress that is not greater than 0 (NaN included) becomes 0, one not
// less than 1 becomes 1: a zero duration or a NaN position shows `a`.
inline double clamp_progress_nan_safe(double p) {
  if (!(p > 0.0)) return 0.0;
  if (!(p < 1.0)) return 1.0;
  return p;
}

enum class ProgressClamp {
  kNaNShowsA,  // clamp_progress_nan_safe
  kPassNaN,    // clamp_progress: NaN reaches the workers unchanged
};

// No style test: the workers read the style themselves, or there is none.
constexpr uint32_t kAnyStyle = UINT32_MAX;

struct EntryRules {
  ProgressClamp clamp = ProgressClamp::kNaNShowsA;
  // The style is tested as an unsigned number after the clamp; past this one
  // no plane is written and the entry returns bad_style_result.
  uint32_t last_style = kAnyStyle;
  int bad_style_result = kTransitionDone;
};

// One plane's call: which plane, the clamped progress, the three views and
// the row kernels chosen for the call.
struct PlaneJob {
  int index;    // kPlaneY, kPlaneU or kPlaneV
  bool chroma;  // U or V
  double progress;
  PlaneView out, a, b;
  const RowKernels& rows;

  CommonRegion region() const { return common_region(out, a, b); }
};

// The steps before the planes: the prologue, the progress and its clamp, the
// style test. `result` is kProceed when the planes should be drawn.
struct EntryStart {
  int result;
  double progress;
};

inline EntryStart start_transition(Image* out, Image* a, Image* b, TransitionParams* params,
                                   const EntryRules& rules) {
  const int result = transition_prologue(out, a, b, params);
  if (result != kProceed) return {result, 0.0};
  const double raw = transition_progress(params);
  const double progress =
      rules.clamp == ProgressClamp::kNaNShowsA ? clamp_progress_nan_safe(raw) : clamp_progress(raw);
  if (static_cast<uint32_t>(params->style) > rules.last_style) return {rules.bad_style_result, progress};
  return {kProceed, progress};
}

// Runs `prepare(progress)` once, after the style test, then
// worker(const PlaneJob&, setup) for Y, U and V with what prepare returned:
// for transitions that make something for the whole call (a resized picture,
// a grid) before drawing the planes. Returns the prologue's code, the rules'
// bad-style result, or 0.
template <typename Prepare, typename Worker>
int run_transition(Image* out, Image* a, Image* b, TransitionParams* params, const EntryRules& rules,
                   Prepare&& prepare, Worker&& worker) {
  const EntryStart start = start_transition(out, a, b, params, rules);
  if (start.result != kProceed) return start.result;
  const RowKernels& rows = row_kernels();
  const auto& setup = prepare(start.progress);
  for (int index = kPlaneY; index <= kPlaneV; ++index) {
    worker(PlaneJob{index, index != kPlaneY, start.progress, image_plane(out, index), image_plane(a, index),
                    image_plane(b, index), rows},
           setup);
  }
  return kTransitionDone;
}

// Runs worker(const PlaneJob&) for Y, U and V. Returns the prologue's code,
// the rules' bad-style result, or 0.
template <typename Worker>
int run_transition(Image* out, Image* a, Image* b, TransitionParams* params, const EntryRules& rules,
                   Worker&& worker) {
  return run_transition(
      out, a, b, params, rules, [](double) { return 0; }, [&](const PlaneJob& job, int) { worker(job); });
}

}  // namespace zv

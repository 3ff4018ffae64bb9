#include "wipes/strip_wipes.h"

#include "frame/user_params.h"
#include "wipes/shape_rows.h"
#include "wipes/wipe_entry.h"

namespace zv {
namespace {

constexpr uint32_t kLastCrossStyle = 3;
constexpr uint32_t kLastBlindStyle = 7;

// (fraction, n, W, H, outStride, two picture strides, outStart, two pictures)
typedef void (*StripRoutine)(double, int, int, int, int, int, int, uint8_t*, const uint8_t*, const uint8_t*);

const StripRoutine kCrossRoutines[] = {cross_close_horizontal, cross_open_horizontal, cross_close_vertical,
                                       cross_open_vertical};
// The blinds after the vertical one, which also takes the row kernels.
const StripRoutine kBlindRoutines[] = {horizontal_blinds, slanted_blinds_rising, slanted_blinds_falling};

}  // namespace

void cross_wipe_plane(int style, int n, double progress, int out_width, int out_height, int a_width, int a_height,
                      int b_width, int b_height, uint8_t* out_plane, const uint8_t* a_plane, const uint8_t* b_plane) {
  if (static_cast<uint32_t>(style) > kLastCrossStyle) return;
  const CommonRegion r =
      wipe_region(out_width, out_height, a_width, a_height, b_width, b_height, out_plane, a_plane, b_plane);
  if (r.empty()) return;
  kCrossRoutines[style](progress, n, r.width, r.height, r.out_stride, r.a_stride, r.b_stride, r.out, r.a, r.b);
}

void blind_wipe_plane(const RowKernels& kernels, int style, int n, double progress, int out_width, int out_height,
                      int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane, const uint8_t* a_plane,
                      const uint8_t* b_plane) {
  if (static_cast<uint32_t>(style) > kLastBlindStyle) return;
  const CommonRegion r =
      wipe_region(out_width, out_height, a_width, a_height, b_width, b_height, out_plane, a_plane, b_plane);
  if (r.empty()) return;
  // The odd styles run the even style backwards with the pictures exchanged,
  // rounding included (kept as hosts expect).
  const bool even = style % 2 == 0;
  const CommonRegion s = even ? r : exchange_pictures(r);
  const double fraction = even ? progress : 1.0 - progress;
  if (style / 2 == 0) {
    vertical_blinds(kernels, fraction, n, s.width, s.height, s.out_stride, s.a_stride, s.b_stride, s.out, s.a, s.b);
    return;
  }
  const StripRoutine routine = kBlindRoutines[style / 2 - 1];
  routine(fraction, n, s.width, s.height, s.out_stride, s.a_stride, s.b_stride, s.out, s.a, s.b);
}

int ZV_STDCALL cross_based_wipe(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_wipe(out, a, b, params, [&](const RowKernels&, int, double progress, auto... plane) {
    cross_wipe_plane(params->style, limit_param(params->param1, 8, 70), progress, plane...);
  });
}

int ZV_STDCALL blind_based_wipe(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_wipe(out, a, b, params, [&](const RowKernels& kernels, int, double progress, auto... plane) {
    blind_wipe_plane(kernels, params->style, limit_param(params->param1, 10, 100), progress, plane...);
  });
}

}  // namespace zv

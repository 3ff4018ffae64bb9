// Wipes that lay `b` down piece by piece: Build fills strips one after
// another, Spiral runs a band in from the edge ring by ring, and Wipe opens a
// checkerboard of cells or a staircase of bands.
#pragma once

#include <cstdint>

#include "frame/row_kernels.h"
#include "frame/transition_op.h"

namespace zv {

int ZV_STDCALL build_based_wipe(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL spiral_based_wipe(Image* out, Image* a, Image* b, TransitionParams* params);
int ZV_STDCALL wipe_transition(Image* out, Image* a, Image* b, TransitionParams* params);

// Plane workers; a style past the last one writes nothing. n is the
// strip count (1..60), pct the band thickness in percent of the height
// (1..50), columns and rows Wipe's cell counts (1..64).
void build_wipe_plane(const RowKernels& kernels, int style, int n, double progress, int out_width, int out_height,
                      int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane, const uint8_t* a_plane,
                      const uint8_t* b_plane);
void spiral_wipe_plane(const RowKernels& kernels, int style, int pct, double progress, int out_width, int out_height,
                       int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane, const uint8_t* a_plane,
                       const uint8_t* b_plane);
void wipe_plane(const RowKernels& kernels, int style, int columns, int rows, double progress, int out_width,
                int out_height, int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane,
                const uint8_t* a_plane, const uint8_t* b_plane);

// One stretch of the spiral's path: the rectangle [x0, x1) x [y0, y1), run
// through in `direction` over `length` positions.
enum class Run : uint8_t { kRightward, kDownward, kLeftward, kUpward };
struct SpiralSegment {
  int x0, x1, y0, y1;
  Run direction;
  int length;
};

// Hands the spiral's segments over a w x h area with band thickness t to
// visit(segment), in path order, while visit returns true. The segments tile
// the area exactly.
template <typename Visit>
void spiral_segments(int w, int h, int t, Visit&& visit) {
  for (int x0 = 0, x1 = w, y0 = 0, y1 = h; x0 < x1 && y0 < y1; x0 += t, x1 -= t, y0 += t, y1 -= t) {
    const int top_end = y1 - y0 > t ? y0 + t : y1;
    if (!visit(SpiralSegment{x0, x1, y0, top_end, Run::kRightward, x1 - x0})) return;
    if (y0 + t >= y1) continue;
    const int right_begin = x1 - x0 > t ? x1 - t : x0;
    if (!visit(SpiralSegment{right_begin, x1, y0 + t, y1, Run::kDownward, y1 - y0 - t})) return;
    if (x1 - x0 <= t) continue;
    const int r1 = y1 - y0 - t > t ? y1 - t : y0 + t;  // max(y1 - t, y0 + t)
    if (!visit(SpiralSegment{x0, x1 - t, r1, y1, Run::kLeftward, x1 - t - x0})) return;
    const int left_end = x1 - x0 > 2 * t ? x0 + t : x1 - t;  // min(x0 + t, x1 - t)
    if (r1 > y0 + t && left_end > x0) {
      if (!visit(SpiralSegment{x0, left_end, y0 + t, r1, Run::kUpward, r1 - y0 - t})) return;
    }
  }
}

}  // namespace zv

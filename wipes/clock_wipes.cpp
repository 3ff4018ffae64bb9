#include "wipes/clock_wipes.h"

#include <algorithm>
#include <cmath>

#include "wipes/shape_rows.h"
#include "wipes/wipe_entry.h"
#include "wipes/wipe_pieces.h"

namespace zv {
namespace {

constexpr uint32_t kLastStyle = 7;
constexpr double kPi = 3.14159265358979323846;
constexpr double kHalfPi = kPi / 2.0;
constexpr double kTwoPi = 2.0 * kPi;

// Clock: does the sample at (dx, dy) from the centre show `b` when the hands
// have turned theta? Angles are clockwise from 12 o'clock, in [0, 2 pi).
bool clock_shows_b(int style, double theta, double dx, double dy) {
  double alpha = std::atan2(dx, -dy);
  if (alpha < 0.0) alpha += kTwoPi;
  const double anti = alpha == 0.0 ? 0.0 : kTwoPi - alpha;
  switch (style) {
    case 0:
      return anti < 2.0 * theta;
    case 1:
      return alpha < 2.0 * theta;
    case 2:
      return std::fmod(anti, kPi) < theta;
    case 3:
      return std::fmod(alpha, kPi) < theta;
    case 4:
      return std::fmod(anti, kHalfPi) < theta / 2.0;
    case 5:
      return std::fmod(alpha, kHalfPi) < theta / 2.0;
    case 6:
      return std::min(alpha, kTwoPi - alpha) < theta;
    default: {
      const double m = std::fmod(alpha, kPi);
      return std::min(m, kPi - m) < theta / 2.0;
    }
  }
}

// Center Rotate: pivot, the hand's direction at the start (screen angle,
// anticlockwise from pointing right) and its sense, by style.
struct Hinge {
  double px, py;  // in units of the area's width and height
  double start;
  bool clockwise;
};
constexpr Hinge kHinges[] = {
    {0.0, 0.5, -kHalfPi, false}, {0.0, 0.5, kHalfPi, true},   // from the left
    {0.5, 1.0, 0.0, false},      {0.5, 1.0, kPi, true},       // from the bottom
    {1.0, 0.5, kHalfPi, false},  {1.0, 0.5, -kHalfPi, true},  // from the right
    {0.5, 0.0, kPi, false},      {0.5, 0.0, 0.0, true},       // from the top
};

bool center_rotate_shows_b(const Hinge& hinge, double theta, double dx, double dy) {
  const double ang = std::atan2(-dy, dx);
  double swept = std::fmod(hinge.clockwise ? hinge.start - ang : ang - hinge.start, kTwoPi);
  if (swept < 0.0) swept += kTwoPi;
  return swept < theta;
}

// The angle wipes' one plane: `b` where shows_b(x, y) holds, `a` elsewhere.
// The reference tests every sample. The fast path cuts each row into the
// pieces that `pieces(y, cut)` names, over each of which the test changes at
// most once, and finds each change by bisection with the same test.
template <typename ShowsB, typename Pieces>
void draw_swept(const RowKernels& kernels, const CommonRegion& c, ShowsB&& shows_b, Pieces&& pieces) {
  int hints[3] = {-1, -1, -1};  // each piece's boundary on the row before
  for (int y = 0; y < c.height; ++y) {
    auto row_test = [&](int x) { return shows_b(x, y); };
    if (kernels.reference) {
      uint8_t* out = row_at(c.out, c.out_stride, y);
      for (int x = 0; x < c.width; ++x) out[x] = picture_row(c, row_test(x) ? Pic::kB : Pic::kA, y)[x];
      continue;
    }
    int cut[4];
    const int n = pieces(cut);
    RowSpans spans;
    for (int i = 0; i + 1 < n; ++i) hints[i] = add_monotone_spans(c, y, cut[i], cut[i + 1], row_test, spans, hints[i]);
    spans.copy_to(row_at(c.out, c.out_stride, y));
  }
}

// Copies all of `a` (progress 0) or all of `b` (progress 1); false between.
bool end_frame(const CommonRegion& c, double progress) {
  if (progress <= 0.0) {
    copy_block(0, c.width, c.height, c.out_stride, c.a_stride, c.out, c.a);
  } else if (progress >= 1.0) {
    copy_block(0, c.width, c.height, c.out_stride, c.b_stride, c.out, c.b);
  } else {
    return false;
  }
  return true;
}

}  // namespace

void clock_wipe_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height, int a_width,
                      int a_height, int b_width, int b_height, uint8_t* out_plane, const uint8_t* a_plane,
                      const uint8_t* b_plane) {
  if (static_cast<uint32_t>(style) > kLastStyle) return;
  const CommonRegion c =
      wipe_region(out_width, out_height, a_width, a_height, b_width, b_height, out_plane, a_plane, b_plane);
  if (c.empty() || end_frame(c, progress)) return;
  const double theta = times_pi(progress), cx = c.width / 2.0, cy = c.height / 2.0;
  const int w = c.width;
  draw_swept(
      kernels, c, [&](int x, int y) { return clock_shows_b(style, theta, x + 0.5 - cx, y + 0.5 - cy); },
      // Left of the centre, the centre column (odd widths), right of it: the
      // angle stays inside one quadrant on each.
      [&](int* cut) {
        cut[0] = 0;
        cut[1] = w / 2;
        cut[2] = (w + 1) / 2;
        cut[3] = w;
        return 4;
      });
}

void center_rotate_wipe_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height,
                              int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane,
                              const uint8_t* a_plane, const uint8_t* b_plane) {
  if (static_cast<uint32_t>(style) > kLastStyle) return;
  const CommonRegion c =
      wipe_region(out_width, out_height, a_width, a_height, b_width, b_height, out_plane, a_plane, b_plane);
  if (c.empty() || end_frame(c, progress)) return;
  const Hinge& hinge = kHinges[style];
  const double theta = times_pi(progress), px = c.width * hinge.px, py = c.height * hinge.py;
  const int w = c.width;
  draw_swept(
      kernels, c, [&](int x, int y) { return center_rotate_shows_b(hinge, theta, x + 0.5 - px, y + 0.5 - py); },
      // Every sample lies on the far side of the pivot's edge, so the swept
      // angle moves one way along a whole row.
      [&](int* cut) {
        cut[0] = 0;
        cut[1] = w;
        return 2;
      });
}

int ZV_STDCALL clock_based_wipe(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_wipe(out, a, b, params, [&](const RowKernels& kernels, int, double progress, auto... plane) {
    clock_wipe_plane(kernels, params->style, progress, plane...);
  });
}

int ZV_STDCALL center_rotate_wipe(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_wipe(out, a, b, params, [&](const RowKernels& kernels, int, double progress, auto... plane) {
    center_rotate_wipe_plane(kernels, params->style, progress, plane...);
  });
}

}  // namespace zv

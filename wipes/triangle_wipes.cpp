#include "wipes/triangle_wipes.h"

#include <algorithm>
#include <cmath>

#include "wipes/shape_rows.h"
#include "wipes/wipe_entry.h"
#include "wipes/wipe_pieces.h"

namespace zv {
namespace {

constexpr uint32_t kLastRotateStyle = 1;  // the list's later names are beyond the style count
constexpr uint32_t kLastWindowStyle = 3;

// ---- Triangle Rotate ----

// Where in `b` sample (x, y) comes from while `b` still has theta to turn
// about its hinge (bottom-left corner for style 0, bottom-right for style 1).
struct Lid {
  double hinge_x, h, cos_t, sin_t;
  bool right;

  void source(int x, int y, double* sx, double* sy) const {
    const double dx = x + 0.5 - hinge_x, dy = y + 0.5 - h;
    if (right) {
      *sx = hinge_x + dx * cos_t + dy * sin_t;
      *sy = h - dx * sin_t + dy * cos_t;
    } else {
      *sx = hinge_x + dx * cos_t - dy * sin_t;
      *sy = h + dx * sin_t + dy * cos_t;
    }
  }
};

// Sample (x, y) of the output from `b` (true) at its turned position, or `a`.
bool lid_sample(const CommonRegion& c, const Lid& lid, int x, int y, uint8_t* value) {
  double sx, sy;
  lid.source(x, y, &sx, &sy);
  if (!(sx >= 0.0 && sx < c.width && sy >= 0.0 && sy < c.height)) return false;
  *value = picture_row(c, Pic::kB, static_cast<int>(std::floor(sy)))[static_cast<int>(std::floor(sx))];
  return true;
}

void rotate_reference(const CommonRegion& c, const Lid& lid) {
  for (int y = 0; y < c.height; ++y) {
    uint8_t* out = row_at(c.out, c.out_stride, y);
    const uint8_t* a = picture_row(c, Pic::kA, y);
    for (int x = 0; x < c.width; ++x) {
      if (!lid_sample(c, lid, x, y, &out[x])) out[x] = a[x];
    }
  }
}

// Along a row each source coordinate moves one way only (the rounding of
// every step is monotone), so each of the four bounds holds on a prefix or a
// suffix of the row, and `b` covers one run of columns: found by bisection,
// then only that run is mapped sample by sample.
void rotate_fast(const CommonRegion& c, const Lid& lid) {
  const int w = c.width;
  for (int y = 0; y < c.height; ++y) {
    int begin = 0, end = w;
    for (int bound = 0; bound < 4; ++bound) {
      auto holds = [&](int x) {
        double sx, sy;
        lid.source(x, y, &sx, &sy);
        switch (bound) {
          case 0:
            return sx >= 0.0;
          case 1:
            return sx < w;
          case 2:
            return sy >= 0.0;
          default:
            return sy < c.height;
        }
      };
      const int change = first_change(0, w, holds);
      if (holds(0)) {
        end = std::min(end, change);
      } else {
        begin = std::max(begin, change);
      }
    }
    end = std::max(begin, end);
    uint8_t* out = row_at(c.out, c.out_stride, y);
    const uint8_t* a = picture_row(c, Pic::kA, y);
    copy_columns(0, begin, out, a);
    for (int x = begin; x < end; ++x) lid_sample(c, lid, x, y, &out[x]);
    copy_columns(end, w, out, a);
  }
}

// ---- Triangle Push and Triangle Slide ----

enum class Motion : uint8_t { kLeftward, kRightward, kDownward, kUpward };

// Which diagonal cuts the rows and how the window left and right of it move.
struct Windows {
  bool rising;  // bottom-left to top-right; otherwise top-left to bottom-right
  Motion left, right;
};
constexpr Windows kWindows[] = {
    {false, Motion::kRightward, Motion::kLeftward},
    {false, Motion::kUpward, Motion::kDownward},
    {true, Motion::kRightward, Motion::kLeftward},
    {true, Motion::kDownward, Motion::kUpward},
};

// Row y's window edge: the diagonal's column, rounded.
int window_edge(bool rising, int y, int w, int h) {
  const int s = diagonal_column(y, w, h);
  return rising ? w - s : s;
}

// Where one sample of a moving window comes from: a picture and a position.
struct Source {
  Pic pic;
  int x, y;
};

// Push: both pictures travel by (dx, dy), truncated. Slide: `b` travels by the
// rounded (dx, dy) over a still `a`.
Source push_source(Motion m, int x, int y, int w, int h, int dx, int dy) {
  switch (m) {
    case Motion::kLeftward:
      return x + dx < w ? Source{Pic::kA, x + dx, y} : Source{Pic::kB, x + dx - w, y};
    case Motion::kRightward:
      return x >= dx ? Source{Pic::kA, x - dx, y} : Source{Pic::kB, x - dx + w, y};
    case Motion::kDownward:
      return y >= dy ? Source{Pic::kA, x, y - dy} : Source{Pic::kB, x, y - dy + h};
    case Motion::kUpward:
      break;
  }
  return y + dy < h ? Source{Pic::kA, x, y + dy} : Source{Pic::kB, x, y + dy - h};
}

Source slide_source(Motion m, int x, int y, int w, int h, int dx, int dy) {
  switch (m) {
    case Motion::kLeftward:
      return x >= w - dx ? Source{Pic::kB, x - (w - dx), y} : Source{Pic::kA, x, y};
    case Motion::kRightward:
      return x < dx ? Source{Pic::kB, x + w - dx, y} : Source{Pic::kA, x, y};
    case Motion::kDownward:
      return y < dy ? Source{Pic::kB, x, y + h - dy} : Source{Pic::kA, x, y};
    case Motion::kUpward:
      break;
  }
  return y >= h - dy ? Source{Pic::kB, x, y - (h - dy)} : Source{Pic::kA, x, y};
}

typedef Source (*SourceRule)(Motion, int, int, int, int, int, int);

void windows_reference(const CommonRegion& c, const Windows& win, SourceRule rule, int dx, int dy) {
  for (int y = 0; y < c.height; ++y) {
    uint8_t* out = row_at(c.out, c.out_stride, y);
    const int edge = window_edge(win.rising, y, c.width, c.height);
    for (int x = 0; x < c.width; ++x) {
      const Source s = rule(x < edge ? win.left : win.right, x, y, c.width, c.height, dx, dy);
      out[x] = picture_row(c, s.pic, s.y)[s.x];
    }
  }
}

// A window's motion over one plane as two parts along its axis, split where
// the rule changes picture: samples before `split` come from `first` and the
// rest from `second`, each at a fixed shift of the column (sideways motions)
// or the row (up and down). The shifts are read off the rule itself.
struct WindowMotion {
  bool vertical;
  int split;
  Pic first, second;
  int first_shift, second_shift;
};

WindowMotion window_motion(SourceRule rule, Motion m, int w, int h, int dx, int dy) {
  switch (m) {
    case Motion::kLeftward:
    case Motion::kRightward: {
      const int split = m == Motion::kLeftward ? w - dx : dx;
      const Source s0 = rule(m, 0, 0, w, h, dx, dy), s1 = rule(m, split, 0, w, h, dx, dy);
      return {false, split, s0.pic, s1.pic, s0.x, s1.x - split};
    }
    case Motion::kDownward:
    case Motion::kUpward:
      break;
  }
  const int split = m == Motion::kDownward ? dy : h - dy;
  const Source s0 = rule(m, 0, 0, w, h, dx, dy), s1 = rule(m, 0, split, w, h, dx, dy);
  return {true, split, s0.pic, s1.pic, s0.y, s1.y - split};
}

// Window [x0, x1) of row y as spans: a sideways motion takes at most two
// spans of the same row, an up or down motion the window's columns from one
// other row.
void window_spans(const CommonRegion& c, const WindowMotion& m, int y, int x0, int x1, RowSpans& spans) {
  if (x1 <= x0) return;
  if (m.vertical) {
    const bool first = y < m.split;
    const int row = y + (first ? m.first_shift : m.second_shift);
    spans.add(x0, x1, picture_row(c, first ? m.first : m.second, row) + x0);
    return;
  }
  const int split = std::clamp(m.split, x0, x1);
  if (split > x0) spans.add(x0, split, picture_row(c, m.first, y) + x0 + m.first_shift);
  if (x1 > split) spans.add(split, x1, picture_row(c, m.second, y) + split + m.second_shift);
}

void windows_fast(const CommonRegion& c, const Windows& win, SourceRule rule, int dx, int dy) {
  const WindowMotion left = window_motion(rule, win.left, c.width, c.height, dx, dy);
  const WindowMotion right = window_motion(rule, win.right, c.width, c.height, dx, dy);
  DiagonalWalk diagonal(c.width, c.height);
  for (int y = 0; y < c.height; ++y, diagonal.next()) {
    const int edge = win.rising ? c.width - diagonal.column() : diagonal.column();
    RowSpans spans;
    window_spans(c, left, y, 0, edge, spans);
    window_spans(c, right, y, edge, c.width, spans);
    spans.copy_to(row_at(c.out, c.out_stride, y));
  }
}

void windows_plane(const RowKernels& kernels, bool push, int style, double progress, const CommonRegion& c) {
  const int w = c.width, h = c.height;
  // Push truncates its travel while Slide rounds it, as the whole-picture
  // Push and Slide do.
  const int dx = travel(push ? truncate_to_int(w * progress) : round_to_int(w * progress), w);
  const int dy = travel(push ? truncate_to_int(h * progress) : round_to_int(h * progress), h);
  const SourceRule rule = push ? push_source : slide_source;
  if (kernels.reference) {
    windows_reference(c, kWindows[style], rule, dx, dy);
  } else {
    windows_fast(c, kWindows[style], rule, dx, dy);
  }
}

}  // namespace

void triangle_rotate_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height,
                           int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane,
                           const uint8_t* a_plane, const uint8_t* b_plane) {
  if (static_cast<uint32_t>(style) > kLastRotateStyle) return;
  const CommonRegion c =
      wipe_region(out_width, out_height, a_width, a_height, b_width, b_height, out_plane, a_plane, b_plane);
  if (c.empty()) return;
  if (progress <= 0.0 || progress >= 1.0) {
    copy_block(0, c.width, c.height, c.out_stride, progress <= 0.0 ? c.a_stride : c.b_stride, c.out,
               progress <= 0.0 ? c.a : c.b);
    return;
  }
  const double theta = times_pi(1.0 - progress) * 0.5;  // the turn still to go
  const Lid lid{style == 1 ? static_cast<double>(c.width) : 0.0, static_cast<double>(c.height), std::cos(theta),
                std::sin(theta), style == 1};
  if (kernels.reference) {
    rotate_reference(c, lid);
  } else {
    rotate_fast(c, lid);
  }
}

void triangle_push_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height,
                         int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane,
                         const uint8_t* a_plane, const uint8_t* b_plane) {
  if (static_cast<uint32_t>(style) > kLastWindowStyle) return;
  const CommonRegion c =
      wipe_region(out_width, out_height, a_width, a_height, b_width, b_height, out_plane, a_plane, b_plane);
  if (!c.empty()) windows_plane(kernels, true, style, progress, c);
}

void triangle_slide_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height,
                          int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane,
                          const uint8_t* a_plane, const uint8_t* b_plane) {
  if (static_cast<uint32_t>(style) > kLastWindowStyle) return;
  const CommonRegion c =
      wipe_region(out_width, out_height, a_width, a_height, b_width, b_height, out_plane, a_plane, b_plane);
  if (!c.empty()) windows_plane(kernels, false, style, progress, c);
}

int ZV_STDCALL triangle_rotate_wipe(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_wipe(out, a, b, params, [&](const RowKernels& kernels, int, double progress, auto... plane) {
    triangle_rotate_plane(kernels, params->style, progress, plane...);
  });
}

int ZV_STDCALL triangle_push_wipe(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_wipe(out, a, b, params, [&](const RowKernels& kernels, int, double progress, auto... plane) {
    triangle_push_plane(kernels, params->style, progress, plane...);
  });
}

int ZV_STDCALL triangle_slide_wipe(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_wipe(out, a, b, params, [&](const RowKernels& kernels, int, double progress, auto... plane) {
    triangle_slide_plane(kernels, params->style, progress, plane...);
  });
}

}  // namespace zv

#include "wipes/build_wipes.h"

#include <algorithm>

#include "frame/user_params.h"
#include "wipes/wipe_entry.h"
#include "wipes/wipe_pieces.h"

namespace zv {
namespace {

constexpr uint32_t kLastBuildStyle = 7;
constexpr uint32_t kLastSpiralStyle = 1;
constexpr uint32_t kLastWipeStyle = 3;

// Edge i of n strips over `size` samples: strip i covers [edge(i), edge(i + 1)).
int strip_edge(int i, int n, int size) { return static_cast<int>(static_cast<int64_t>(i) * size / n); }

// Build: the strips of rank below `done` are `b`; the strip of rank `done`
// holds `b` in its first `filled` samples along its fill direction.
PieceList build_pieces(int style, int n, double progress, int w, int h) {
  const bool vertical = style % 4 < 2;   // 0, 1, 4, 5: vertical strips
  const bool backward = style % 2 == 1;  // right to left, bottom to top
  const bool from_start = style < 4;     // downward or rightward
  const int across = vertical ? w : h, along = vertical ? h : w;
  const double t = progress * n;
  const int done = std::min(truncate_to_int(t), n);
  const int filled = travel(round_to_int((t - done) * along), along);
  // Spans along the strip axis [b0, b1) and the fill axis [f0, f1), as pieces.
  PieceList list;
  auto add_b = [&](int b0, int b1, int f0, int f1) {
    if (vertical) {
      list.add_in_place(Pic::kB, b0, f0, b1 - b0, f1 - f0);
    } else {
      list.add_in_place(Pic::kB, f0, b0, f1 - f0, b1 - b0);
    }
  };
  list.add_in_place(Pic::kA, 0, 0, w, h);
  if (backward) {
    add_b(strip_edge(n - done, n, across), across, 0, along);
  } else {
    add_b(0, strip_edge(done, n, across), 0, along);
  }
  if (done < n) {
    const int strip = backward ? n - 1 - done : done;
    add_b(strip_edge(strip, n, across), strip_edge(strip + 1, n, across), from_start ? 0 : along - filled,
          from_start ? filled : along);
  }
  return list;
}

// The first `count` positions of a segment along its run, as a rectangle.
BlockRect segment_head(const SpiralSegment& s, int count) {
  switch (s.direction) {
    case Run::kRightward:
      return {s.x0, s.y0, count, s.y1 - s.y0};
    case Run::kDownward:
      return {s.x0, s.y0, s.x1 - s.x0, count};
    case Run::kLeftward:
      return {s.x1 - count, s.y0, count, s.y1 - s.y0};
    case Run::kUpward:
      break;
  }
  return {s.x0, s.y1 - count, s.x1 - s.x0, count};
}

// The head of the path after `progress`: trunc(progress * L + 0.5) positions.
int64_t spiral_head(int w, int h, int t, double progress) {
  int64_t total = 0;
  spiral_segments(w, h, t, [&](const SpiralSegment& s) {
    total += s.length;
    return true;
  });
  return static_cast<int64_t>(progress * static_cast<double>(total) + 0.5);
}

// Calls show(rectangle) for the part of each segment that the head has passed.
template <typename Show>
void spiral_heads(int w, int h, int t, int64_t head, Show&& show) {
  int64_t passed = 0;
  spiral_segments(w, h, t, [&](const SpiralSegment& s) {
    const int64_t count = std::min<int64_t>(s.length, std::max<int64_t>(0, head - passed));
    if (count > 0) show(segment_head(s, static_cast<int>(count)));
    passed += s.length;
    return count == s.length;
  });
}

// Every sample asks the passed parts of the path whether they hold it.
void spiral_reference(const CommonRegion& c, bool mirrored, int t, int64_t head) {
  for (int y = 0; y < c.height; ++y) {
    uint8_t* out = row_at(c.out, c.out_stride, y);
    for (int x = 0; x < c.width; ++x) {
      const int px = mirrored ? c.width - 1 - x : x;
      bool shows_b = false;
      spiral_heads(c.width, c.height, t, head, [&](const BlockRect& r) {
        shows_b = shows_b || (px >= r.x && px < r.x + r.width && y >= r.y && y < r.y + r.height);
      });
      out[x] = picture_row(c, shows_b ? Pic::kB : Pic::kA, y)[x];
    }
  }
}

void spiral_fast(const CommonRegion& c, bool mirrored, int t, int64_t head) {
  copy_block(0, c.width, c.height, c.out_stride, c.a_stride, c.out, c.a);
  spiral_heads(c.width, c.height, t, head, [&](const BlockRect& r) {
    const int x = mirrored ? c.width - r.x - r.width : r.x;
    copy_block(x, r.width, r.height, c.out_stride, c.b_stride, row_at(c.out, c.out_stride, r.y) + x,
               row_at(c.b, c.b_stride, r.y));
  });
}

// Wipe's checker: cell (i, j) shows `b` in [begin, end) of its columns.
struct CellSpan {
  int begin, end;
};
CellSpan checker_span(int style, int i, int j, int columns, int w, double progress) {
  const int x0 = strip_edge(i, columns, w), x1 = strip_edge(i + 1, columns, w);
  const double share = std::clamp(2.0 * progress - ((i + j) & 1), 0.0, 1.0);
  const int wiped = travel(round_to_int(share * (x1 - x0)), x1 - x0);
  return style == 0 ? CellSpan{x0, x0 + wiped} : CellSpan{x1 - wiped, x1};
}

// Wipe's bands: band j's edge, each band trailing the one above by W / X.
int band_edge(int j, int columns, int rows, int w, double progress) {
  const double lag = static_cast<double>(w) / columns;
  const double total = w + (rows - 1) * lag;
  return travel(round_to_int(progress * total) - round_to_int(j * lag), w);
}

// The strip of `count` strips over `size` that holds sample v.
int strip_of(int v, int count, int size) {
  int i = 0;
  while (strip_edge(i + 1, count, size) <= v) ++i;
  return i;
}

void wipe_reference(const CommonRegion& c, int style, int columns, int rows, double progress) {
  for (int y = 0; y < c.height; ++y) {
    uint8_t* out = row_at(c.out, c.out_stride, y);
    const int j = strip_of(y, rows, c.height);
    for (int x = 0; x < c.width; ++x) {
      bool shows_b;
      if (style < 2) {
        const CellSpan s = checker_span(style, strip_of(x, columns, c.width), j, columns, c.width, progress);
        shows_b = x >= s.begin && x < s.end;
      } else {
        const int e = band_edge(j, columns, rows, c.width, progress);
        shows_b = style == 2 ? x < e : x >= c.width - e;
      }
      out[x] = picture_row(c, shows_b ? Pic::kB : Pic::kA, y)[x];
    }
  }
}

void wipe_fast(const CommonRegion& c, int style, int columns, int rows, double progress) {
  copy_block(0, c.width, c.height, c.out_stride, c.a_stride, c.out, c.a);
  for (int j = 0; j < rows; ++j) {
    const int y0 = strip_edge(j, rows, c.height), band = strip_edge(j + 1, rows, c.height) - y0;
    uint8_t* out = row_at(c.out, c.out_stride, y0);
    const uint8_t* b = row_at(c.b, c.b_stride, y0);
    if (style >= 2) {
      const int e = band_edge(j, columns, rows, c.width, progress);
      copy_block(style == 2 ? 0 : c.width - e, e, band, c.out_stride, c.b_stride, out + (style == 2 ? 0 : c.width - e),
                 b);
      continue;
    }
    for (int i = 0; i < columns; ++i) {
      const CellSpan s = checker_span(style, i, j, columns, c.width, progress);
      copy_block(s.begin, s.end - s.begin, band, c.out_stride, c.b_stride, out + s.begin, b);
    }
  }
}

}  // namespace

void build_wipe_plane(const RowKernels& kernels, int style, int n, double progress, int out_width, int out_height,
                      int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane, const uint8_t* a_plane,
                      const uint8_t* b_plane) {
  if (static_cast<uint32_t>(style) > kLastBuildStyle || n < 1) return;
  const CommonRegion c =
      wipe_region(out_width, out_height, a_width, a_height, b_width, b_height, out_plane, a_plane, b_plane);
  if (c.empty()) return;
  draw_pieces(kernels, c, build_pieces(style, n, progress, c.width, c.height));
}

void spiral_wipe_plane(const RowKernels& kernels, int style, int pct, double progress, int out_width, int out_height,
                       int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane, const uint8_t* a_plane,
                       const uint8_t* b_plane) {
  if (static_cast<uint32_t>(style) > kLastSpiralStyle) return;
  const CommonRegion c =
      wipe_region(out_width, out_height, a_width, a_height, b_width, b_height, out_plane, a_plane, b_plane);
  if (c.empty()) return;
  const int t = std::max(1, round_to_int(c.height * pct / 100.0));
  // The anticlockwise style is the clockwise one on mirrored columns.
  const bool mirrored = style == 0;
  const int64_t head = spiral_head(c.width, c.height, t, progress);
  if (kernels.reference) {
    spiral_reference(c, mirrored, t, head);
  } else {
    spiral_fast(c, mirrored, t, head);
  }
}

void wipe_plane(const RowKernels& kernels, int style, int columns, int rows, double progress, int out_width,
                int out_height, int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane,
                const uint8_t* a_plane, const uint8_t* b_plane) {
  if (static_cast<uint32_t>(style) > kLastWipeStyle || columns < 1 || rows < 1) return;
  const CommonRegion c =
      wipe_region(out_width, out_height, a_width, a_height, b_width, b_height, out_plane, a_plane, b_plane);
  if (c.empty()) return;
  if (kernels.reference) {
    wipe_reference(c, style, columns, rows, progress);
  } else {
    wipe_fast(c, style, columns, rows, progress);
  }
}

int ZV_STDCALL build_based_wipe(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_wipe(out, a, b, params, [&](const RowKernels& kernels, int, double progress, auto... plane) {
    build_wipe_plane(kernels, params->style, limit_param(params->param1, 10, 60), progress, plane...);
  });
}

int ZV_STDCALL spiral_based_wipe(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_wipe(out, a, b, params, [&](const RowKernels& kernels, int, double progress, auto... plane) {
    spiral_wipe_plane(kernels, params->style, limit_param(params->param1, 10, 50), progress, plane...);
  });
}

int ZV_STDCALL wipe_transition(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_wipe(out, a, b, params, [&](const RowKernels& kernels, int, double progress, auto... plane) {
    wipe_plane(kernels, params->style, limit_param(params->param1, 8, 64),
               limit_param(param2_as_int(params->param2), 6, 64), progress, plane...);
  });
}

}  // namespace zv

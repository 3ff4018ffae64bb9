#include "wipes/push_slide_haul.h"

#include <algorithm>
#include <cstddef>

#include "frame/user_params.h"
#include "wipes/wipe_entry.h"
#include "wipes/wipe_rows.h"

namespace zv {
namespace {

constexpr uint32_t kLastStyle = 7;

enum class Kind { kPush, kSlide, kHaul };
enum class Motion { kStill, kFromStart, kFromEnd };
enum class Source { kEither, kA, kB, kFill };

Motion horizontal_motion(int style) {
  if (style == 0 || style == 4 || style == 5) return Motion::kFromStart;
  if (style == 1 || style == 6 || style == 7) return Motion::kFromEnd;
  return Motion::kStill;
}

Motion vertical_motion(int style) {
  if (style == 2 || style == 4 || style == 6) return Motion::kFromStart;
  if (style == 3 || style == 5 || style == 7) return Motion::kFromEnd;
  return Motion::kStill;
}

// Samples [begin, end) of one axis show `source` from its sample source_begin on.
struct Stretch {
  int begin, end;
  Source source;
  int source_begin;
};

// An axis of n samples in two stretches (one may be empty); `b` has travelled
// d samples in from the start or the end. Slide keeps `a` in place, Haul keeps
// `b` in place, Push moves both.
struct Axis {
  Stretch part[2];

  const Stretch& at(int i) const { return i < part[0].end ? part[0] : part[1]; }
};

Axis make_axis(Kind kind, Motion motion, int n, int d) {
  switch (motion) {
    case Motion::kFromStart:
      return {{{0, d, Source::kB, kind == Kind::kHaul ? 0 : n - d}, {d, n, Source::kA, kind == Kind::kSlide ? d : 0}}};
    case Motion::kFromEnd:
      return {{{0, n - d, Source::kA, kind == Kind::kSlide ? 0 : d},
               {n - d, n, Source::kB, kind == Kind::kHaul ? n - d : 0}}};
    case Motion::kStill:
      break;
  }
  return {{{0, n, Source::kEither, 0}, {n, n, Source::kEither, n}}};
}

// What shows in the block where a horizontal and a vertical stretch cross,
// and the source sample of its top-left corner.
struct Pick {
  Source source;
  int sx, sy;
};

Pick pick(Kind kind, const Stretch& h, const Stretch& v) {
  if (h.source == Source::kEither) return {v.source, h.begin, v.source_begin};
  if (v.source == Source::kEither) return {h.source, h.source_begin, v.begin};
  if (h.source == v.source) return {h.source, h.source_begin, v.source_begin};
  // A corner block that the moving picture does not cover.
  if (kind == Kind::kPush) return {Source::kFill, 0, 0};
  return {kind == Kind::kSlide ? Source::kA : Source::kB, h.begin, v.begin};
}

// A worker's common area and the bytes left in `out`'s and `a`'s planes from
// the area's origin on: the limits of Push's stride quirks.
struct Area {
  CommonRegion c;
  ptrdiff_t out_room;
  ptrdiff_t a_room;
};

Area make_area(int out_width, int out_height, int a_width, int a_height, int b_width, int b_height,
               uint8_t* out_plane, const uint8_t* a_plane, const uint8_t* b_plane) {
  Area area{wipe_region(out_width, out_height, a_width, a_height, b_width, b_height, out_plane, a_plane, b_plane), 0,
            0};
  if (area.c.empty()) return area;
  area.out_room = static_cast<ptrdiff_t>(out_width) * out_height - (area.c.out - out_plane);
  area.a_room = static_cast<ptrdiff_t>(a_width) * a_height - (area.c.a - a_plane);
  return area;
}

inline ptrdiff_t row_offset(int row, int stride) { return static_cast<ptrdiff_t>(row) * stride; }

// Sample by sample from the stretch tables, with Push's two stride quirks:
// styles 2 and 3 write their first k rows a first-source stride apart, and
// styles 6 and 7 step through `a` with `b`'s stride.
void move_reference(Kind kind, int style, uint8_t fill, const Axis& h, const Axis& v, const Area& area) {
  const CommonRegion& c = area.c;
  const bool rows_by_first_stride = kind == Kind::kPush && (style == 2 || style == 3);
  const int k = v.part[0].end;
  const int first_stride = style == 2 ? c.b_stride : c.a_stride;
  const int a_row_step = kind == Kind::kPush && style >= 6 ? c.b_stride : c.a_stride;
  for (int y = 0; y < c.height; ++y) {
    ptrdiff_t out_row = row_offset(y, c.out_stride);
    if (rows_by_first_stride) {
      out_row = y < k ? row_offset(y, first_stride) : row_offset(k, first_stride) + row_offset(y - k, c.out_stride);
    }
    const Stretch& vs = v.at(y);
    for (int x = 0; x < c.width; ++x) {
      if (out_row + x >= area.out_room) break;
      const Stretch& hs = h.at(x);
      const Pick p = pick(kind, hs, vs);
      const int sx = p.sx + (x - hs.begin), rows_in = y - vs.begin;
      uint8_t value = fill;
      if (p.source == Source::kB) {
        value = c.b[row_offset(p.sy + rows_in, c.b_stride) + sx];
      } else if (p.source == Source::kA) {
        const ptrdiff_t at = row_offset(p.sy, c.a_stride) + row_offset(rows_in, a_row_step) + sx;
        if (at < area.a_room) value = c.a[at];
      }
      c.out[out_row + x] = value;
    }
  }
}

// Slide and Haul: one block copy per crossing of a horizontal and a vertical stretch.
void move_blocks(Kind kind, const Axis& h, const Axis& v, const CommonRegion& c) {
  for (const Stretch& vs : v.part) {
    for (const Stretch& hs : h.part) {
      if (vs.begin >= vs.end || hs.begin >= hs.end) continue;
      const Pick p = pick(kind, hs, vs);
      const bool from_a = p.source == Source::kA;
      const int stride = from_a ? c.a_stride : c.b_stride;
      copy_block(p.sx, hs.end - hs.begin, vs.end - vs.begin, c.out_stride, stride,
                 c.out + row_offset(vs.begin, c.out_stride) + hs.begin,
                 (from_a ? c.a : c.b) + row_offset(p.sy, stride));
    }
  }
}

// Styles 6 and 7 step through `a` with `b`'s row stride although they start at
// `a`'s own position: kept as hosts expect when the widths differ. Where a row
// would run past the end of `a`'s plane, the rest of it is filled instead.
void push_a_rows_by_b_stride(uint8_t fill, int k, int rows, ptrdiff_t a_offset, uint8_t* out, const Area& area) {
  const CommonRegion& c = area.c;
  for (int row = 0; row < rows; ++row) {
    const ptrdiff_t start = a_offset + row_offset(row, c.b_stride);
    const int available = static_cast<int>(std::clamp<ptrdiff_t>(area.a_room - start, 0, k));
    copy_left_fill_right(fill, available, 1, c.width, c.height, c.out_stride, c.b_stride,
                         out + row_offset(row, c.out_stride), available > 0 ? c.a + start : c.a);
  }
}

void push_fast(int style, uint8_t fill, int dx, int dy, const Area& area) {
  const CommonRegion& c = area.c;
  const int w = c.width, h = c.height, os = c.out_stride, as = c.a_stride, bs = c.b_stride;
  uint8_t* const out_end = c.out + area.out_room;
  switch (style) {
    case 0:
      push_rows_horizontal(dx, w, h, os, bs, as, c.out, c.b, c.a);
      break;
    case 1:
      push_rows_horizontal(w - dx, w, h, os, as, bs, c.out, c.a, c.b);
      break;
    case 2:
      push_rows_vertical(dy, w, h, os, bs, as, c.out, c.b, c.a, out_end);
      break;
    case 3:
      push_rows_vertical(h - dy, w, h, os, as, bs, c.out, c.a, c.b, out_end);
      break;
    case 4:
      copy_left_fill_right(fill, dx, dy, w, h, os, bs, c.out, c.b + row_offset(h - dy, bs) + (w - dx));
      fill_left_copy_right(fill, w - dx, h - dy, w, h, os, as, c.out + row_offset(dy, os), c.a);
      break;
    case 5:
      fill_left_copy_right(fill, w - dx, h - dy, w, h, os, as, c.out, c.a + row_offset(dy, as));
      copy_left_fill_right(fill, dx, dy, w, h, os, bs, c.out + row_offset(h - dy, os), c.b + (w - dx));
      break;
    case 6:
      fill_left_copy_right(fill, dx, dy, w, h, os, bs, c.out, c.b + row_offset(h - dy, bs));
      push_a_rows_by_b_stride(fill, w - dx, h - dy, dx, c.out + row_offset(dy, os), area);
      break;
    case 7:
      push_a_rows_by_b_stride(fill, w - dx, h - dy, row_offset(dy, as) + dx, c.out, area);
      fill_left_copy_right(fill, dx, dy, w, h, os, bs, c.out + row_offset(h - dy, os), c.b);
      break;
  }
}

// Push truncates its travel while Slide and Haul round it half up: kept as
// hosts expect (all three still reach the full size at progress 1).
int travel_of(Kind kind, int n, double progress) {
  return travel(kind == Kind::kPush ? truncate_to_int(n * progress) : round_to_int(n * progress), n);
}

void move_plane(const RowKernels& kernels, Kind kind, uint8_t fill, int style, double progress, int out_width,
                int out_height, int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane,
                const uint8_t* a_plane, const uint8_t* b_plane) {
  if (static_cast<uint32_t>(style) > kLastStyle) return;
  const Area area = make_area(out_width, out_height, a_width, a_height, b_width, b_height, out_plane, a_plane, b_plane);
  const CommonRegion& c = area.c;
  if (c.empty()) return;
  const int dx = travel_of(kind, c.width, progress), dy = travel_of(kind, c.height, progress);
  const Axis h = make_axis(kind, horizontal_motion(style), c.width, dx);
  const Axis v = make_axis(kind, vertical_motion(style), c.height, dy);
  if (kernels.reference) {
    move_reference(kind, style, fill, h, v, area);
  } else if (kind == Kind::kPush) {
    push_fast(style, fill, dx, dy, area);
  } else {
    move_blocks(kind, h, v, c);
  }
}

}  // namespace

void push_wipe_plane(const RowKernels& kernels, uint8_t fill, int style, double progress, int out_width, int out_height,
                     int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane, const uint8_t* a_plane,
                     const uint8_t* b_plane) {
  move_plane(kernels, Kind::kPush, fill, style, progress, out_width, out_height, a_width, a_height, b_width, b_height,
             out_plane, a_plane, b_plane);
}

void slide_wipe_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height, int a_width,
                      int a_height, int b_width, int b_height, uint8_t* out_plane, const uint8_t* a_plane,
                      const uint8_t* b_plane) {
  move_plane(kernels, Kind::kSlide, 0, style, progress, out_width, out_height, a_width, a_height, b_width, b_height,
             out_plane, a_plane, b_plane);
}

void haul_wipe_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height, int a_width,
                     int a_height, int b_width, int b_height, uint8_t* out_plane, const uint8_t* a_plane,
                     const uint8_t* b_plane) {
  move_plane(kernels, Kind::kHaul, 0, style, progress, out_width, out_height, a_width, a_height, b_width, b_height,
             out_plane, a_plane, b_plane);
}

int ZV_STDCALL push_based_wipe(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_wipe(out, a, b, params, [&](const RowKernels& kernels, int index, double progress, auto... plane) {
    push_wipe_plane(kernels, video_black(index != kPlaneY), params->style, progress, plane...);
  });
}

int ZV_STDCALL slide_based_wipe(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_wipe(out, a, b, params, [&](const RowKernels& kernels, int, double progress, auto... plane) {
    slide_wipe_plane(kernels, params->style, progress, plane...);
  });
}

int ZV_STDCALL haul_based_wipe(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_wipe(out, a, b, params, [&](const RowKernels& kernels, int, double progress, auto... plane) {
    haul_wipe_plane(kernels, params->style, progress, plane...);
  });
}

}  // namespace zv

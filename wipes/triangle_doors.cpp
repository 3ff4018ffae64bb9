#include "wipes/triangle_doors.h"

#include <algorithm>

#include "frame/rows.h"
#include "wipes/wipe_entry.h"

namespace zv {
namespace {

constexpr uint32_t kLastSingleStyle = 7;
constexpr uint32_t kLastMultiStyle = 3;

// One row's leaves: [0, left_end) and [right_begin, w) show the leaf picture.
// A swinging leaf squeezes its `left_from` or `right_from`-based run of
// samples into its width; a sliding one is shifted by `shift`.
struct DoorRow {
  int split;                  // the diagonal's column: left leaf [0, split), right leaf [split, w)
  int left_end, right_begin;  // where the leaves lie now
  int shift;                  // slide only: how far each leaf has moved out
};

DoorRow door_row(DoorKind kind, double closed, int y, int w, int h, Diagonal diagonal) {
  const int s = diagonal == Diagonal::kFalling ? diagonal_column(y, w, h) : w - diagonal_column(y, w, h);
  if (kind == DoorKind::kSwing) {
    const int left = travel(round_to_int(closed * s), s), right = travel(round_to_int(closed * (w - s)), w - s);
    return {s, left, w - right, 0};
  }
  const int m = travel(round_to_int((1.0 - closed) * w), w);
  return {s, std::max(0, s - m), std::min(w, s + m), m};
}

// Edge i of n cells over `size` samples.
int cell_edge(int i, int n, int size) { return static_cast<int>(static_cast<int64_t>(i) * size / n); }

uint8_t leaf_sample(DoorKind kind, const DoorRow& r, int w, int x, const uint8_t* leaf) {
  if (kind == DoorKind::kSlide) return x < r.left_end ? leaf[x + r.shift] : leaf[x - r.shift];
  if (x < r.left_end) return leaf[static_cast<int64_t>(x) * r.split / r.left_end];
  const int width = w - r.right_begin;
  return leaf[r.split + static_cast<int64_t>(x - r.right_begin) * (w - r.split) / width];
}

}  // namespace

void triangle_door_cell(const RowKernels& kernels, DoorKind kind, DoorAction action, Diagonal diagonal, double progress,
                        int cell_width, int cell_height, int out_stride, int leaf_stride, int behind_stride,
                        uint8_t* out_start, const uint8_t* leaf_start, const uint8_t* behind_start) {
  if (cell_width < 1 || cell_height < 1) return;
  // How far the leaves are in place: all the way at the start of Open and at
  // the end of Close.
  const double closed = action == DoorAction::kOpen ? 1.0 - progress : progress;
  const int w = cell_width;
  for (int y = 0; y < cell_height; ++y) {
    const DoorRow r = door_row(kind, closed, y, w, cell_height, diagonal);
    uint8_t* out = row_at(out_start, out_stride, y);
    const uint8_t* leaf = row_at(leaf_start, leaf_stride, y);
    const uint8_t* behind = row_at(behind_start, behind_stride, y);
    if (kernels.reference) {
      for (int x = 0; x < w; ++x) {
        const bool on_leaf = x < r.left_end || x >= r.right_begin;
        out[x] = on_leaf ? leaf_sample(kind, r, w, x, leaf) : behind[x];
      }
      continue;
    }
    copy_block(r.left_end, r.right_begin - r.left_end, 1, 0, 0, out + r.left_end, behind);
    if (kind == DoorKind::kSwing) {
      scale_row_nearest(r.left_end, r.split, out, leaf);
      scale_row_nearest(w - r.right_begin, w - r.split, out + r.right_begin, leaf + r.split);
    } else {
      copy_block(r.shift, r.left_end, 1, 0, 0, out, leaf);
      copy_block(r.right_begin - r.shift, w - r.right_begin, 1, 0, 0, out + r.right_begin, leaf);
    }
  }
}

void triangle_door_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height,
                         int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane,
                         const uint8_t* a_plane, const uint8_t* b_plane) {
  if (static_cast<uint32_t>(style) > kLastSingleStyle) return;
  const CommonRegion c =
      wipe_region(out_width, out_height, a_width, a_height, b_width, b_height, out_plane, a_plane, b_plane);
  if (c.empty()) return;
  // Styles: pushing close, pushing open, sliding close, sliding open, each on
  // the falling then the rising diagonal.
  const DoorKind kind = style < 4 ? DoorKind::kSwing : DoorKind::kSlide;
  const DoorAction action = style % 4 < 2 ? DoorAction::kClose : DoorAction::kOpen;
  const Diagonal diagonal = style % 2 == 0 ? Diagonal::kFalling : Diagonal::kRising;
  const bool open = action == DoorAction::kOpen;
  triangle_door_cell(kernels, kind, action, diagonal, progress, c.width, c.height, c.out_stride,
                     open ? c.a_stride : c.b_stride, open ? c.b_stride : c.a_stride, c.out, open ? c.a : c.b,
                     open ? c.b : c.a);
}

void multi_triangle_door_plane(const RowKernels& kernels, int style, double progress, int out_width, int out_height,
                               int a_width, int a_height, int b_width, int b_height, uint8_t* out_plane,
                               const uint8_t* a_plane, const uint8_t* b_plane) {
  if (static_cast<uint32_t>(style) > kLastMultiStyle) return;
  const CommonRegion c =
      wipe_region(out_width, out_height, a_width, a_height, b_width, b_height, out_plane, a_plane, b_plane);
  if (c.empty()) return;
  // Double: two doors side by side; Multi: a 4 x 2 grid. The diagonals
  // alternate so that they meet in a peak (Double) or a row of diamonds.
  const int columns = style < 2 ? 2 : 4, rows = style < 2 ? 1 : 2;
  const bool open = style % 2 == 1;
  const DoorAction action = open ? DoorAction::kOpen : DoorAction::kClose;
  for (int j = 0; j < rows; ++j) {
    const int y0 = cell_edge(j, rows, c.height), y1 = cell_edge(j + 1, rows, c.height);
    for (int i = 0; i < columns; ++i) {
      const int x0 = cell_edge(i, columns, c.width), x1 = cell_edge(i + 1, columns, c.width);
      const Diagonal diagonal = (i + j) % 2 == 0 ? Diagonal::kRising : Diagonal::kFalling;
      const uint8_t* a = row_at(c.a, c.a_stride, y0) + x0;
      const uint8_t* b = row_at(c.b, c.b_stride, y0) + x0;
      triangle_door_cell(kernels, DoorKind::kSwing, action, diagonal, progress, x1 - x0, y1 - y0, c.out_stride,
                         open ? c.a_stride : c.b_stride, open ? c.b_stride : c.a_stride,
                         row_at(c.out, c.out_stride, y0) + x0, open ? a : b, open ? b : a);
    }
  }
}

int ZV_STDCALL single_triangle_door(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_wipe(out, a, b, params, [&](const RowKernels& kernels, int, double progress, auto... plane) {
    triangle_door_plane(kernels, params->style, progress, plane...);
  });
}

int ZV_STDCALL multi_triangle_door(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_wipe(out, a, b, params, [&](const RowKernels& kernels, int, double progress, auto... plane) {
    multi_triangle_door_plane(kernels, params->style, progress, plane...);
  });
}

}  // namespace zv

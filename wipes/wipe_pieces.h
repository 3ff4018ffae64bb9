// Building blocks of the wipes whose output is a few rectangles copied from
// `a` or `b` (pieces), or rows whose boundary a per-sample test decides.
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/plane.h"
#include "frame/rows.h"

namespace zv {

enum class Pic : uint8_t { kA, kB };

// Output columns [x, x + width) x rows [y, y + height) of the area take the
// picture's samples from (sx, sy) on.
struct Piece {
  int x, y, width, height;
  Pic pic;
  int sx, sy;
};

// Pieces drawn in order, a later one over an earlier one. Empty pieces are
// dropped when added.
struct PieceList {
  static constexpr int kMax = 8;
  Piece piece[kMax];
  int count = 0;

  void add(Pic pic, int x, int y, int width, int height, int sx, int sy) {
    if (width > 0 && height > 0 && count < kMax) piece[count++] = {x, y, width, height, pic, sx, sy};
  }
  void add_in_place(Pic pic, int x, int y, int width, int height) { add(pic, x, y, width, height, x, y); }
};

// Reference: every sample takes the last piece that covers it. Fast: one block
// copy per piece.
void draw_pieces_reference(const CommonRegion& c, const PieceList& pieces);
void draw_pieces_fast(const CommonRegion& c, const PieceList& pieces);
void draw_pieces(const CommonRegion& c, const PieceList& pieces);

// The area with `a` and `b` exchanged (pictures and strides): the wipes whose
// second style is the first one run backwards with the pictures swapped.
inline CommonRegion exchange_pictures(const CommonRegion& c) {
  CommonRegion e = c;
  e.a = c.b;
  e.b = c.a;
  e.a_stride = c.b_stride;
  e.b_stride = c.a_stride;
  return e;
}

inline const uint8_t* picture_row(const CommonRegion& c, Pic pic, int row) {
  return pic == Pic::kA ? row_at(c.a, c.a_stride, row) : row_at(c.b, c.b_stride, row);
}

// Copies out_row[x0, x1) from source_row's same columns.
inline void copy_columns(int x0, int x1, uint8_t* out_row, const uint8_t* source_row) {
  if (x1 > x0) copy_block(x0, x1 - x0, 1, 0, 0, out_row + x0, source_row);
}

// The first x in (x0, x1) whose test differs from test(x0), or x1. The test
// must change at most once over [x0, x1) (a monotone boundary), which makes
// the binary search give exactly what testing every sample gives.
template <typename Test>
int first_change(int x0, int x1, Test&& test) {
  if (x1 - x0 < 2) return x1;
  const bool first = test(x0);
  if (test(x1 - 1) == first) return x1;
  int lo = x0, hi = x1 - 1;  // test(lo) == first, test(hi) != first
  while (hi - lo > 1) {
    const int mid = lo + (hi - lo) / 2;
    (test(mid) == first ? lo : hi) = mid;
  }
  return hi;
}

// Row `y` over columns [x0, x1) where shows_b(x) changes at most once: `b`
// where it holds and `a` elsewhere, both in place, as two span copies.
template <typename ShowsB>
void copy_monotone_span(const CommonRegion& c, int y, int x0, int x1, ShowsB&& shows_b) {
  if (x1 <= x0) return;
  const int split = first_change(x0, x1, shows_b);
  const bool first_b = shows_b(x0);
  uint8_t* out = row_at(c.out, c.out_stride, y);
  copy_columns(x0, split, out, picture_row(c, first_b ? Pic::kB : Pic::kA, y));
  copy_columns(split, x1, out, picture_row(c, first_b ? Pic::kA : Pic::kB, y));
}

}  // namespace zv

// Building blocks of the wipes whose output is a few rectangles copied from
// `a` or `b` (pieces), or rows whose boundary a per-sample test decides.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "frame/plane.h"
#include "frame/row_kernels.h"
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
void draw_pieces(const RowKernels& kernels, const CommonRegion& c, const PieceList& pieces);

inline const uint8_t* picture_row(const CommonRegion& c, Pic pic, int row) {
  return pic == Pic::kA ? row_at(c.a, c.a_stride, row) : row_at(c.b, c.b_stride, row);
}

// Copies out_row[x0, x1) from source_row's same columns.
inline void copy_columns(int x0, int x1, uint8_t* out_row, const uint8_t* source_row) {
  if (x1 > x0) std::memcpy(out_row + x0, source_row + x0, static_cast<size_t>(x1 - x0));
}

// The first x in (x0, x1) whose test differs from test(x0), or x1. The test
// must change at most once over [x0, x1) (a monotone boundary), which makes
// the search give exactly what testing every sample gives. The search
// gallops out from `hint` (where the boundary was on the row before, say)
// and then bisects.
template <typename Test>
int first_change(int x0, int x1, Test&& test, int hint = -1) {
  if (x1 - x0 < 2) return x1;
  const bool first = test(x0);
  if (test(x1 - 1) == first) return x1;
  int lo = x0, hi = x1 - 1;  // test(lo) == first, test(hi) != first
  if (hint > lo && hint < hi) {
    if (test(hint) == first) {
      lo = hint;
      for (int step = 1; lo + step < hi; step *= 2) {
        if (test(lo + step) != first) {
          hi = lo + step;
          break;
        }
        lo += step;
      }
    } else {
      hi = hint;
      for (int step = 1; hi - step > lo; step *= 2) {
        if (test(hi - step) == first) {
          lo = hi - step;
          break;
        }
        hi -= step;
      }
    }
  }
  while (hi - lo > 1) {
    const int mid = lo + (hi - lo) / 2;
    (test(mid) == first ? lo : hi) = mid;
  }
  return hi;
}

// diagonal_column(y, w, h) for y = 0, 1, 2, ... in turn, with the quotient
// and remainder stepped instead of a division per row (h >= 1).
class DiagonalWalk {
 public:
  DiagonalWalk(int w, int h)
      : divisor_(2 * static_cast<int64_t>(h)),
        step_(2 * static_cast<int64_t>(w) / divisor_),
        step_rest_(2 * static_cast<int64_t>(w) % divisor_),
        column_((static_cast<int64_t>(w) + h) / divisor_),
        rest_((static_cast<int64_t>(w) + h) % divisor_) {}

  int column() const { return static_cast<int>(column_); }
  void next() {
    column_ += step_;
    rest_ += step_rest_;
    if (rest_ >= divisor_) {
      ++column_;
      rest_ -= divisor_;
    }
  }

 private:
  int64_t divisor_, step_, step_rest_, column_, rest_;
};

// One output row as a few spans, each copied from one source row at one
// shift. A span that continues the one before it in the same source is
// merged into it, so a row costs as few copies as its content allows.
struct RowSpans {
  static constexpr int kMax = 8;
  struct Span {
    int begin, end;
    const uint8_t* source;  // the byte that lands on column `begin`
  };
  Span span[kMax];
  int count = 0;

  void add(int begin, int end, const uint8_t* source) {
    if (end <= begin) return;
    if (count > 0 && span[count - 1].end == begin &&
        span[count - 1].source + (begin - span[count - 1].begin) == source) {
      span[count - 1].end = end;
      return;
    }
    if (count < kMax) span[count++] = {begin, end, source};
  }
  void copy_to(uint8_t* out_row) const {
    for (int i = 0; i < count; ++i) {
      std::memcpy(out_row + span[i].begin, span[i].source, static_cast<size_t>(span[i].end - span[i].begin));
    }
  }
};

// Row `y` over columns [x0, x1) where shows_b(x) changes at most once: `b`
// where it holds and `a` elsewhere, both in place, as up to two spans.
// Returns where it changes (x1 if nowhere), a hint for the next row.
template <typename ShowsB>
int add_monotone_spans(const CommonRegion& c, int y, int x0, int x1, ShowsB&& shows_b, RowSpans& spans, int hint = -1) {
  if (x1 <= x0) return hint;
  const int split = first_change(x0, x1, shows_b, hint);
  const bool first_b = shows_b(x0);
  const uint8_t* first = picture_row(c, first_b ? Pic::kB : Pic::kA, y);
  const uint8_t* second = picture_row(c, first_b ? Pic::kA : Pic::kB, y);
  spans.add(x0, split, first + x0);
  spans.add(split, x1, second + split);
  return split < x1 ? split : hint;
}

}  // namespace zv

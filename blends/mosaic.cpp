#include "blends/mosaic.h"

#include <algorithm>
#include <cstring>

#include "frame/entry.h"
#include "frame/rows.h"

namespace zv {
namespace {

constexpr int kLastStyle = 7;
constexpr int kDefaultCount = 10;
constexpr int kMaxCount = 90;

// The order in which a style reveals its blocks. Lines are bands of blocks
// (or block columns when `by_columns`), taken in pairs; the first half of the
// transition reveals checkerboard phase `first_phase` line pair by line pair,
// the second half the complementary phase, backwards when the style returns.
struct RevealOrder {
  bool by_columns;
  int first_phase;  // a block (column c, band r) is in phase (c + r) & 1
  bool second_half_backwards;
  bool first_line_from_right;  // "Down": the current band fills from its right end
};

// Indexed by style: "Top to Bottom", "Down and Up", "Left to Right", "Right
// and Left", "Down", "Down and Up", "Right", "Right and Left".
constexpr RevealOrder kOrders[kLastStyle + 1] = {
    {false, 0, false, false}, {false, 0, true, false}, {true, 0, false, false}, {true, 0, true, false},
    {false, 1, false, true},  {false, 1, true, false}, {true, 1, false, false}, {true, 1, true, false},
};

int make_even(int count) { return count % 2 != 0 ? count + 1 : count; }

int limited_count(int count) {
  if (count < 1) return kDefaultCount;
  return count >= kMaxCount ? kMaxCount : count;
}

// Copies `rows` rows of the columns [column, column + width) from b to out.
void copy_span(const CommonRegion& r, int top, int column, int width, int rows) {
  copy_block(column, width, rows, r.out_stride, r.b_stride, row_at(r.out, r.out_stride, top) + column,
             row_at(r.b, r.b_stride, top));
}

// Copies every second block of band `band` from b, starting at `start_column`
// (clamped to the region) for the rounded-up half of `count` blocks. Blocks are
// clipped at the region's right and bottom edges.
void copy_alternate_blocks(const CommonRegion& r, const MosaicGrid& g, int band, int64_t start_column, int count) {
  const int64_t top = std::min<int64_t>(r.height, static_cast<int64_t>(band) * g.block_height);
  const int64_t bottom = std::min<int64_t>(r.height, top + g.block_height);
  if (bottom <= top || g.block_width <= 0) return;
  int64_t column = std::clamp<int64_t>(start_column, 0, r.width);
  for (int i = ((count - 1) >> 1) + 1; i > 0; --i) {
    const int64_t end = std::min<int64_t>(column + g.block_width, r.width);
    if (end > column) {
      copy_span(r, static_cast<int>(top), static_cast<int>(column), static_cast<int>(end - column),
                static_cast<int>(bottom - top));
    }
    column = std::min<int64_t>(end + g.block_width, r.width);
  }
}

// Cells revealed on the line at position `i` of the order, when `pairs` line
// pairs are complete and `partial` cells of the current pair are: its first
// line fills first, then its second.
int cells_revealed(int i, int pairs, int partial, int half_cells) {
  if (i < 2 * pairs) return half_cells;
  if (i == 2 * pairs) return std::min(partial, half_cells);
  if (i == 2 * pairs + 1) return std::max(0, partial - half_cells);
  return 0;
}

void reveal_blocks(const CommonRegion& r, const MosaicGrid& g, const RevealOrder& order, double p) {
  const int lines = order.by_columns ? g.columns : g.rows;
  const int cells = order.by_columns ? g.rows : g.columns;
  const int half_lines = lines / 2, half_cells = cells / 2;
  const double s = lines * p;
  // Line pairs completed over the whole transition, then cells of the current pair.
  const int done = std::clamp(truncate_to_int(s), 0, lines);
  const int partial = std::clamp(truncate_to_int((s - done) * cells), 0, cells);
  const bool second_half = done >= half_lines;

  // Cells of each phase revealed on each line.
  int first[kMaxCount + 1] = {}, second[kMaxCount + 1] = {};
  for (int line = 0; line < lines; ++line) {
    if (second_half) {
      first[line] = half_cells;
      const int i = order.second_half_backwards ? lines - 1 - line : line;
      second[line] = cells_revealed(i, done - half_lines, partial, half_cells);
    } else {
      first[line] = cells_revealed(line, done, partial, half_cells);
    }
  }

  const int phase1 = order.first_phase, phase2 = 1 - phase1;
  if (!order.by_columns) {
    for (int band = 0; band < g.rows; ++band) {
      const int parity1 = (band + phase1) & 1, parity2 = (band + phase2) & 1;
      const bool from_right = order.first_line_from_right && !second_half && band == 2 * done;
      const int64_t start1 = from_right ? g.columns - 2 * first[band] + parity1 : parity1;
      if (first[band] > 0) copy_alternate_blocks(r, g, band, start1 * g.block_width, 2 * first[band]);
      if (second[band] > 0) copy_alternate_blocks(r, g, band, int64_t{parity2} * g.block_width, 2 * second[band]);
    }
    return;
  }
  // Block columns: each column's cells of a phase fill from the top, one block
  // of each band at a time.
  for (int band = 0; band < g.rows; ++band) {
    for (int column = 0; column < g.columns; ++column) {
      const bool in_first = ((column + band) & 1) == phase1;
      const int revealed = in_first ? first[column] : second[column];
      if ((band >> 1) < revealed) copy_alternate_blocks(r, g, band, int64_t{column} * g.block_width, 1);
    }
  }
}

// a over the region. With outputs as wide as a this is one run of H rows'
// worth of bytes from the region's start, kept as hosts expect: it also covers
// the samples beside a narrower region. It never runs past either plane.
void copy_a(const CommonRegion& r, const PlaneView& out, const PlaneView& a) {
  if (out.width == a.width) {
    const size_t out_left = static_cast<size_t>(out.width) * out.height - static_cast<size_t>(r.out - out.data);
    const size_t a_left = static_cast<size_t>(a.width) * a.height - static_cast<size_t>(r.a - a.data);
    std::memcpy(r.out, r.a, std::min({static_cast<size_t>(r.height) * out.width, out_left, a_left}));
    return;
  }
  copy_block(0, r.width, r.height, r.out_stride, r.a_stride, r.out, r.a);
}

// Every part of a mosaic is a copy, so the reference and the fast path are one.
void mosaic_plane(const PlaneJob& job, const MosaicGrid& grid, int style) {
  const CommonRegion r = job.region();
  if (r.empty()) return;
  copy_a(r, job.out, job.a);
  if (static_cast<uint32_t>(style) > kLastStyle) return;
  reveal_blocks(r, grid, kOrders[style], job.progress);
}

}  // namespace

int mosaic_columns(int32_t param1) {
  const int x = make_even(limited_count(param1));
  // Kept as hosts expect: these grids are replaced by a wider one.
  return x == 80 || x == 82 ? 84 : x;
}

int mosaic_rows(double param2) {
  const int y = make_even(limited_count(truncate_to_int(param2)));
  // Kept as hosts expect: these grids are replaced by a taller one.
  if (y == 38) return 40;
  return y == 54 || y == 56 || y == 58 ? 60 : y;
}

MosaicGrid mosaic_grid(int columns, int rows, int width, int height) {
  return {columns, rows, make_even(round_to_int(static_cast<double>(width) / columns)),
          make_even(round_to_int(static_cast<double>(height) / rows))};
}

int ZV_STDCALL mosaic_based_wipe(Image* out, Image* a, Image* b, TransitionParams* params) {
  return run_transition(
      out, a, b, params, EntryRules{ProgressClamp::kPassNaN},
      [&](double) {
        return mosaic_grid(mosaic_columns(params->param1), mosaic_rows(params->param2), out->width, out->height);
      },
      [params](const PlaneJob& job, const MosaicGrid& luma) {
        const MosaicGrid chroma = {luma.columns, luma.rows, luma.block_width / 2, luma.block_height / 2};
        mosaic_plane(job, job.chroma ? chroma : luma, params->style);
      });
}

}  // namespace zv

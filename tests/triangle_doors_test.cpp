// Single and Multi-Triangle Door: the leaves' squeezed and shifted rows and
// the cells' alternating diagonals on 720 x 576.
#include <vector>

#include "tests/wipe_sources.h"

namespace {

using zvtest::From;
using zvtest::from_a;
using zvtest::from_b;
using zvtest::kUnchecked;
using zvtest::SourceCase;

constexpr int kSingle = 31, kMulti = 32;

// A leaf of `a`'s columns [from, from + count) squeezed into output columns
// [at, at + width) of row y: column at + i takes from + (i * count) / width.
struct Leaf {
  int at, width, from, count;
};
std::function<From(int, int)> row_leaves(int row, std::vector<Leaf> leaves) {
  return [row, leaves](int x, int y) {
    if (y != row) return kUnchecked;
    for (const Leaf& l : leaves) {
      if (x >= l.at && x < l.at + l.width) return from_a(l.from + (x - l.at) * l.count / l.width, y);
    }
    return from_b(x, y);
  };
}

class TriangleDoorsTest : public ::testing::TestWithParam<SourceCase> {};

TEST_P(TriangleDoorsTest, SamplesComeFromTheLeavesOrBehind) { zvtest::expect_sources(GetParam()); }

const SourceCase kCases[] = {
    // Row 287 splits at 359: 359 samples into 180 columns, 361 into 181.
    {"PushingOpen1HalfRow287", kSingle, 2, 0.5, 720, 576, 0, row_leaves(287, {{0, 180, 0, 359}, {539, 181, 359, 361}})},
    {"PushingOpen1HalfLastSamples", kSingle, 2, 0.5, 720, 576, 0,
     [](int x, int y) {
       if (y != 287 || (x != 178 && x != 179)) return kUnchecked;
       return from_a(x == 178 ? 355 : 357, y);
     }},
    {"SlidingOpen1HalfRow287", kSingle, 6, 0.5, 720, 576, 0,
     [](int x, int y) {
       if (y != 287) return kUnchecked;
       return x == 719 ? from_a(359, y) : from_b(x, y);
     }},
    {"SlidingOpen1HalfRow575", kSingle, 6, 0.5, 720, 576, 0,
     [](int x, int y) {
       if (y != 575) return kUnchecked;
       return x < 359 ? from_a(x + 360, y) : from_b(x, y);
     }},
    // Close brings `b`'s leaves in over `a`: the second diagonal splits row 0 at 719.
    {"SlidingClose2QuarterRow0", kSingle, 5, 0.25, 720, 576, 0,
     [](int x, int y) {
       if (y != 0) return kUnchecked;
       return x < 179 ? from_b(x + 540, y) : from_a(x, y);
     }},
    // Two cells 360 wide whose diagonals form a peak.
    {"DoubleOpenHalfRow0", kMulti, 1, 0.5, 720, 576, 0, row_leaves(0, {{0, 180, 0, 360}, {540, 180, 360, 360}})},
    {"DoubleOpenHalfRow287", kMulti, 1, 0.5, 720, 576, 0,
     row_leaves(287, {{0, 90, 0, 180}, {270, 90, 180, 180}, {360, 90, 360, 180}, {630, 90, 540, 180}})},
    {"DoubleOpenHalfRow575", kMulti, 1, 0.5, 720, 576, 0, row_leaves(575, {{180, 180, 0, 360}, {360, 180, 360, 360}})},
    // A 4 x 2 grid of 180 x 288 cells: row 0 of the top cells, row 288 of the
    // bottom ones, where the diagonals alternate the other way.
    {"MultiOpenHalfRow0", kMulti, 3, 0.5, 720, 576, 0,
     row_leaves(0, {{0, 90, 0, 180}, {270, 90, 180, 180}, {360, 90, 360, 180}, {630, 90, 540, 180}})},
    {"MultiOpenHalfRow288", kMulti, 3, 0.5, 720, 576, 0,
     row_leaves(288, {{90, 90, 0, 180}, {180, 90, 180, 180}, {450, 90, 360, 180}, {540, 90, 540, 180}})},
};

INSTANTIATE_TEST_SUITE_P(Leaves, TriangleDoorsTest, ::testing::ValuesIn(kCases), zvtest::source_case_name);

}  // namespace

// Triangle Rotate, Triangle Push and Triangle Slide: single samples of the
// turning lid, and the two triangular windows' sources on 720 x 576.
#include <vector>

#include "frame/rows.h"
#include "tests/wipe_sources.h"
#include "wipes/wipe_pieces.h"

namespace {

using zvtest::From;
using zvtest::from_a;
using zvtest::from_b;
using zvtest::kUnchecked;
using zvtest::SourceCase;

constexpr int kRotate = 23, kPush = 24, kSlide = 25;

// Only the listed samples are checked.
struct Spot {
  int x, y;
  From from;
};
std::function<From(int, int)> spots(std::vector<Spot> list) {
  return [list](int x, int y) {
    for (const Spot& s : list) {
      if (s.x == x && s.y == y) return s.from;
    }
    return kUnchecked;
  };
}

// Push1 at 0.25 (travel 180) on rows 287 and 288, whose window edges lie at
// columns 359 and 361: left of it `a` moves right, right of it `a` moves left.
From push1_quarter_edge_rows(int x, int y) {
  if (y != 287 && y != 288) return kUnchecked;
  const int edge = y == 287 ? 359 : 361;
  if (x < edge) return x >= 180 ? from_a(x - 180, y) : from_b(x + 540, y);
  return x + 180 < 720 ? from_a(x + 180, y) : from_b(x - 540, y);
}

class TriangleWipesTest : public ::testing::TestWithParam<SourceCase> {};

TEST_P(TriangleWipesTest, SamplesComeFromTheirWindows) { zvtest::expect_sources(GetParam()); }

const SourceCase kCases[] = {
    {"RotateLeftHalf", kRotate, 0, 0.5, 720, 576, 0,
     spots({{10, 100, from_b(343, 247)}, {300, 300, from_a(300, 300)}})},
    {"RotateLeftQuarter", kRotate, 0, 0.25, 720, 576, 0,
     spots({{10, 100, from_b(443, 403)}, {0, 575, from_a(0, 575)}, {50, 560, from_a(50, 560)}})},
    {"RotateRightHalf", kRotate, 1, 0.5, 720, 576, 0, spots({{709, 100, from_b(376, 247)}})},
    {"Push1HalfRow0", kPush, 0, 0.5, 720, 576, 0,
     [](int x, int y) {
       if (y != 0) return kUnchecked;
       if (x == 0) return from_b(360, 0);
       return x < 360 ? from_a(x + 360, 0) : from_b(x - 360, 0);
     }},
    {"Push1QuarterEdgeRows", kPush, 0, 0.25, 720, 576, 0, push1_quarter_edge_rows},
    {"Push2Half", kPush, 1, 0.5, 720, 576, 0,
     spots({{700, 10, from_b(700, 298)}, {10, 500, from_b(10, 212)}, {700, 300, from_a(700, 12)}})},
    {"Slide1QuarterRow0", kSlide, 0, 0.25, 720, 576, 0,
     [](int x, int y) {
       if (y != 0) return kUnchecked;
       if (x == 0) return from_b(540, 0);
       return x < 540 ? from_a(x, 0) : from_b(x - 540, 0);
     }},
    {"Slide4Half", kSlide, 3, 0.5, 720, 576, 0,
     spots({{10, 10, from_b(10, 298)}, {710, 570, from_b(710, 282)}, {710, 100, from_a(710, 100)}})},
    // Five columns at 0.5: Push travels 2, Slide 3 (row 0's edge at column 1).
    {"PushTruncatesOnFiveColumns", kPush, 0, 0.5, 5, 4, 0,
     [](int x, int y) {
       if (y != 0) return kUnchecked;
       const From row[] = {from_b(3, 0), from_a(3, 0), from_a(4, 0), from_b(0, 0), from_b(1, 0)};
       return row[x];
     }},
    {"SlideRoundsOnFiveColumns", kSlide, 0, 0.5, 5, 4, 0,
     [](int x, int y) {
       if (y != 0) return kUnchecked;
       const From row[] = {from_b(2, 0), from_a(1, 0), from_b(0, 0), from_b(1, 0), from_b(2, 0)};
       return row[x];
     }},
};

INSTANTIATE_TEST_SUITE_P(Windows, TriangleWipesTest, ::testing::ValuesIn(kCases), zvtest::source_case_name);

// The diagonal's column on 720 x 576 and its chroma, and the walk that steps it row
// by row, against the formula on every row of a few odd sizes.
TEST(DiagonalColumn, CrossesRowCentresRounded) {
  const int rows[] = {0, 287, 288, 575}, luma[] = {1, 359, 361, 719}, chroma[] = {1, 179, 181, 359};
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(zv::diagonal_column(rows[i], 720, 576), luma[i]);
    EXPECT_EQ(zv::diagonal_column(rows[i] / 2, 360, 288), chroma[i]);
  }
  for (const auto& [w, h] :
       {std::make_pair(720, 576), std::make_pair(7, 5), std::make_pair(1, 9), std::make_pair(33, 1)}) {
    zv::DiagonalWalk walk(w, h);
    for (int y = 0; y < h; ++y, walk.next()) ASSERT_EQ(walk.column(), zv::diagonal_column(y, w, h)) << w << "x" << h;
  }
}

}  // namespace

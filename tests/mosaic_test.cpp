// Mosaic Based Wipe: grid parameters, block sizes and the reveal order of every style, checked sample by sample.
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "blends/mosaic.h"
#include "tests/test_support.h"

namespace {

using zvtest::ImagePtr;
using zvtest::solid_frame;
using Map = std::vector<std::string>;  // one string per band of blocks, 'b' for a block of b

TEST(Mosaic, GridCountsAreDefaultedLimitedAndAdjusted) {
  const std::pair<int, int> columns[] = {{0, 10}, {-5, 10}, {1, 2},   {79, 84}, {80, 84}, {81, 84},
                                         {82, 84}, {83, 84}, {77, 78}, {89, 90}, {95, 90}, {44, 44}};
  for (auto [in, want] : columns) EXPECT_EQ(zv::mosaic_columns(in), want) << in;
  const std::pair<double, int> rows[] = {{0.0, 10},  {37.9, 40}, {38.0, 40}, {36.0, 36}, {53.0, 60},
                                         {55.0, 60}, {58.0, 60}, {59.0, 60}, {62.0, 62}, {1e9, 90}};
  for (auto [in, want] : rows) EXPECT_EQ(zv::mosaic_rows(in), want) << in;
  // 72 x 58 blocks on 720 x 576 and 16 columns for 44 are drawn below.
  EXPECT_EQ(zv::mosaic_grid(10, 10, 730, 576).block_width, 74);  // 73 made even
}

// Runs Mosaic on solid frames (a: 10, b: 200 in every plane): every sample of every plane is b exactly where the map of
// bw x bh blocks says so.
void expect_blocks(int w, int h, int style, double p, int columns, double rows, int bw, int bh, const Map& map) {
  ImagePtr a = solid_frame(w, h, 10, 10, 10), b = solid_frame(w, h, 200, 200, 200), out = solid_frame(w, h, 0, 0, 0);
  ASSERT_EQ(zvtest::run_transition(15, out.get(), a.get(), b.get(), style, p, columns, rows), 0);
  for (int plane = 0; plane < 3; ++plane) {
    const int s = plane ? 2 : 1;
    EXPECT_TRUE(zvtest::samples_are(*out, plane, [&](int x, int y) {
      const size_t band = y / (bh / s), column = x / (bw / s);
      return band < map.size() && column < map[band].size() && map[band][column] == 'b' ? 200 : 10;
    })) << "style " << style << " p " << p;
  }
}

// A 6 x 4 grid of 16 x 16 blocks on 96 x 64.
TEST(Mosaic, RevealsBlocksInTheStyleOrder) {
  const Map kBoard = {"b.b.b.", ".b.b.b", "b.b.b.", ".b.b.b"}, kOther = {".b.b.b", "b.b.b.", ".b.b.b", "b.b.b."};
  const Map kNone = {}, kAll = {"bbbbbb", "bbbbbb", "bbbbbb", "bbbbbb"};
  const std::tuple<int, double, Map> cases[] = {
      // 0 "Top to Bottom": checkerboard band by band from the top, then its complement.
      {0, 0.1, {"b.b..."}}, {0, 0.25, {"b.b.b.", ".b.b.b"}}, {0, 0.5, kBoard},
      {0, 0.75, {"bbbbbb", "bbbbbb", "b.b.b.", ".b.b.b"}}, {0, 1.0, kAll},
      // 1 "Down and Up": the complement comes back from the bottom.
      {1, 0.1, {"b.b..."}}, {1, 0.5, kBoard}, {1, 0.75, {"b.b.b.", ".b.b.b", "bbbbbb", "bbbbbb"}}, {1, 1.0, kAll},
      // 2 "Left to Right": block column by block column.
      {2, 0.1, {"b.....", "......", "b....."}}, {2, 0.25, {"b.b...", ".b....", "b.b...", ".b...."}},
      {2, 0.5, kBoard}, {2, 0.75, {"bbb.b.", "bbbb.b", "bbb.b.", "bbbb.b"}}, {2, 1.0, kAll},
      // 3 "Right and Left": the complement comes back from the right.
      {3, 0.25, {"b.b...", ".b....", "b.b...", ".b...."}}, {3, 0.75, {"b.bbbb", ".b.bbb", "b.bbbb", ".b.bbb"}},
      {3, 1.0, kAll},
      // 4 "Down": the other checkerboard first; the current band grows from its right end.
      {4, 0.1, {"...b.b"}}, {4, 0.25, {".b.b.b", "b.b.b."}}, {4, 0.5, kOther},
      {4, 0.75, {"bbbbbb", "bbbbbb", ".b.b.b", "b.b.b."}}, {4, 1.0, kAll},
      // 5 "Down and Up"
      {5, 0.1, {".b.b.."}}, {5, 0.5, kOther}, {5, 0.75, {".b.b.b", "b.b.b.", "bbbbbb", "bbbbbb"}}, {5, 1.0, kAll},
      // 6 "Right"
      {6, 0.1, {"......", "b.....", "......", "b....."}}, {6, 0.25, {".b....", "b.b...", ".b....", "b.b..."}},
      {6, 0.5, kOther}, {6, 0.75, {"bbbb.b", "bbb.b.", "bbbb.b", "bbb.b."}}, {6, 1.0, kAll},
      // 7 "Right and Left"; out of range: a.
      {7, 0.75, {".b.bbb", "b.bbbb", ".b.bbb", "b.bbbb"}}, {7, 1.0, kAll}, {8, 0.75, kNone}, {-1, 1.0, kNone}};
  for (const auto& [style, p, map] : cases) expect_blocks(96, 64, style, p, 6, 4.0, 16, 16, map);
}

TEST(Mosaic, HalfwayCheckerboardOnPalFrame) {
  // 72 x 58 luma blocks (57.6 + 0.5 truncated), 36 x 29 chroma; the last band is clipped at the bottom.
  Map map(10);
  for (int band = 0; band < 10; ++band) map[band] = band % 2 ? ".b.b.b.b.b" : "b.b.b.b.b.";
  expect_blocks(720, 576, 0, 0.5, 0, 0.0, 72, 58, map);
}

TEST(Mosaic, StripBeyondTheGridStaysA) {
  // 44 columns of 16 cover 704 of 720: the right 16 luma columns (8 chroma) stay a.
  expect_blocks(720, 64, 0, 1.0, 44, 4.0, 16, 16, Map(4, std::string(44, 'b')));
}

TEST(Mosaic, CopyOfAIsOneRunWhenOutIsAsWideAsA) {
  // out and a 40 x 30, b 30 x 20: the region starts at column 5, row 5, and a is copied as 20 rows' worth of bytes from
  // there, beside the region too.
  ImagePtr a = zvtest::random_frame(40, 30, 1), b = zvtest::random_frame(30, 20, 2), out = solid_frame(40, 30, 0, 0, 0);
  zvtest::run_transition(15, out.get(), a.get(), b.get(), 9, 0.5);
  const auto y = zvtest::plane_bytes(*out, 0), ya = zvtest::plane_bytes(*a, 0);
  const int start = 5 * 40 + 5;
  for (int i = 0; i < 40 * 30; ++i) EXPECT_EQ(y[i], i >= start && i < start + 20 * 40 ? ya[i] : 0) << i;
}

}  // namespace

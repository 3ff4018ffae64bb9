// Mosaic Based Wipe: grid parameters, block sizes and the reveal order of
// every style, checked sample by sample.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "blends/mosaic.h"
#include "frame/registration.h"
#include "tests/test_support.h"

namespace {

using zvtest::ImagePtr;
using zvtest::sample;
using zvtest::solid_frame;

TEST(Mosaic, GridCountsAreDefaultedLimitedAndAdjusted) {
  const std::pair<int, int> columns[] = {{0, 10}, {-5, 10}, {1, 2},   {79, 84}, {80, 84}, {81, 84},
                                         {82, 84}, {83, 84}, {77, 78}, {89, 90}, {95, 90}, {44, 44}};
  for (auto [in, want] : columns) EXPECT_EQ(zv::mosaic_columns(in), want) << in;
  const std::pair<double, int> rows[] = {{0.0, 10},  {37.9, 40}, {38.0, 40}, {36.0, 36}, {53.0, 60},
                                         {55.0, 60}, {58.0, 60}, {59.0, 60}, {62.0, 62}, {1e9, 90}};
  for (auto [in, want] : rows) EXPECT_EQ(zv::mosaic_rows(in), want) << in;
}

TEST(Mosaic, BlockSizesRoundAndBecomeEven) {
  const zv::MosaicGrid g = zv::mosaic_grid(10, 10, 720, 576);
  EXPECT_EQ(g.block_width, 72);
  EXPECT_EQ(g.block_height, 58);  // 57.6 + 0.5 truncated
  EXPECT_EQ(zv::mosaic_grid(44, 10, 720, 576).block_width, 16);
  EXPECT_EQ(zv::mosaic_grid(10, 10, 730, 576).block_width, 74);  // 73 made even
}

// Runs Mosaic on solid frames (a: 10, b: 200 in every plane).
struct MosaicRun {
  ImagePtr a, b, out;
  MosaicRun(int w, int h, int style, double p, int columns, double rows) {
    a = solid_frame(w, h, 10, 10, 10);
    b = solid_frame(w, h, 200, 200, 200);
    out = solid_frame(w, h, 0, 0, 0);
    TransitionParams params = zvtest::make_params(style, p);
    params.param1 = columns;
    params.param2 = rows;
    EXPECT_EQ(zv::transition_entry(15)(out.get(), a.get(), b.get(), &params), 0);
  }
  bool is_b(int plane, int x, int y) const { return sample(*out, plane, x, y) == 200; }
};

// Every sample of every plane is b exactly where the block map says so.
void expect_blocks(const MosaicRun& run, int w, int h, int bw, int bh, const std::vector<std::string>& map) {
  for (int plane = 0; plane < 3; ++plane) {
    const int pw = plane ? w / 2 : w, ph = plane ? h / 2 : h, sbw = plane ? bw / 2 : bw, sbh = plane ? bh / 2 : bh;
    for (int y = 0; y < ph; ++y) {
      for (int x = 0; x < pw; ++x) {
        const size_t band = y / sbh, column = x / sbw;
        const bool want_b = band < map.size() && column < map[band].size() && map[band][column] == 'b';
        ASSERT_EQ(run.is_b(plane, x, y), want_b) << "plane " << plane << " at " << x << "," << y;
      }
    }
  }
}

struct OrderCase {
  int style;
  double p;
  std::vector<std::string> map;  // one string per band, 'b' for a block of b
};

class MosaicOrderTest : public ::testing::TestWithParam<OrderCase> {};

// A 6 x 4 grid of 16 x 16 blocks on 96 x 64.
TEST_P(MosaicOrderTest, RevealsBlocksInTheStyleOrder) {
  const OrderCase& c = GetParam();
  MosaicRun run(96, 64, c.style, c.p, 6, 4.0);
  expect_blocks(run, 96, 64, 16, 16, c.map);
}

const std::vector<std::string> kCheckerboard = {"b.b.b.", ".b.b.b", "b.b.b.", ".b.b.b"};
const std::vector<std::string> kComplement = {".b.b.b", "b.b.b.", ".b.b.b", "b.b.b."};
const std::vector<std::string> kNone = {};
const std::vector<std::string> kAll = {"bbbbbb", "bbbbbb", "bbbbbb", "bbbbbb"};

INSTANTIATE_TEST_SUITE_P(
    Styles, MosaicOrderTest,
    ::testing::Values(
        // 0 "Top to Bottom": checkerboard band by band from the top, then its complement.
        OrderCase{0, 0.0, kNone}, OrderCase{0, 0.1, {"b.b..."}}, OrderCase{0, 0.25, {"b.b.b.", ".b.b.b"}},
        OrderCase{0, 0.5, kCheckerboard}, OrderCase{0, 0.75, {"bbbbbb", "bbbbbb", "b.b.b.", ".b.b.b"}},
        OrderCase{0, 1.0, kAll},
        // 1 "Down and Up": the complement comes back from the bottom.
        OrderCase{1, 0.1, {"b.b..."}}, OrderCase{1, 0.5, kCheckerboard},
        OrderCase{1, 0.75, {"b.b.b.", ".b.b.b", "bbbbbb", "bbbbbb"}}, OrderCase{1, 1.0, kAll},
        // 2 "Left to Right": block column by block column.
        OrderCase{2, 0.1, {"b.....", "......", "b....."}},
        OrderCase{2, 0.25, {"b.b...", ".b....", "b.b...", ".b...."}}, OrderCase{2, 0.5, kCheckerboard},
        OrderCase{2, 0.75, {"bbb.b.", "bbbb.b", "bbb.b.", "bbbb.b"}}, OrderCase{2, 1.0, kAll},
        // 3 "Right and Left": the complement comes back from the right.
        OrderCase{3, 0.25, {"b.b...", ".b....", "b.b...", ".b...."}},
        OrderCase{3, 0.75, {"b.bbbb", ".b.bbb", "b.bbbb", ".b.bbb"}}, OrderCase{3, 1.0, kAll},
        // 4 "Down": the other checkerboard first; the current band grows from its right end.
        OrderCase{4, 0.1, {"...b.b"}}, OrderCase{4, 0.25, {".b.b.b", "b.b.b."}}, OrderCase{4, 0.5, kComplement},
        OrderCase{4, 0.75, {"bbbbbb", "bbbbbb", ".b.b.b", "b.b.b."}}, OrderCase{4, 1.0, kAll},
        // 5 "Down and Up"
        OrderCase{5, 0.1, {".b.b.."}}, OrderCase{5, 0.5, kComplement},
        OrderCase{5, 0.75, {".b.b.b", "b.b.b.", "bbbbbb", "bbbbbb"}}, OrderCase{5, 1.0, kAll},
        // 6 "Right"
        OrderCase{6, 0.1, {"......", "b.....", "......", "b....."}},
        OrderCase{6, 0.25, {".b....", "b.b...", ".b....", "b.b..."}}, OrderCase{6, 0.5, kComplement},
        OrderCase{6, 0.75, {"bbbb.b", "bbb.b.", "bbbb.b", "bbb.b."}}, OrderCase{6, 1.0, kAll},
        // 7 "Right and Left"
        OrderCase{7, 0.75, {".b.bbb", "b.bbbb", ".b.bbb", "b.bbbb"}}, OrderCase{7, 1.0, kAll},
        // Out of range: a.
        OrderCase{8, 0.75, kNone}, OrderCase{-1, 1.0, kNone}));

TEST(Mosaic, HalfwayCheckerboardOnPalFrame) {
  // 72 x 58 luma blocks, 36 x 29 chroma; the last band is clipped at the bottom.
  MosaicRun run(720, 576, 0, 0.5, 0, 0.0);
  std::vector<std::string> map(10);
  for (int band = 0; band < 10; ++band) map[band] = band % 2 ? ".b.b.b.b.b" : "b.b.b.b.b.";
  expect_blocks(run, 720, 576, 72, 58, map);
}

TEST(Mosaic, StripBeyondTheGridStaysA) {
  // 44 columns of 16 cover 704 of 720: the right 16 luma columns (8 chroma) stay a.
  MosaicRun run(720, 64, 0, 1.0, 44, 4.0);
  for (int x = 0; x < 720; ++x) ASSERT_EQ(run.is_b(0, x, 10), x < 704) << x;
  for (int x = 0; x < 360; ++x) ASSERT_EQ(run.is_b(1, x, 10), x < 352) << x;
}

TEST(Mosaic, CopyOfAIsOneRunWhenOutIsAsWideAsA) {
  // out and a 40 x 30, b 30 x 20: the region starts at column 5, row 5, and a
  // is copied as 20 rows' worth of bytes from there, beside the region too.
  ImagePtr a = zvtest::random_frame(40, 30, 1), b = zvtest::random_frame(30, 20, 2);
  ImagePtr out = solid_frame(40, 30, 0, 0, 0);
  TransitionParams params = zvtest::make_params(9, 0.5);
  zv::transition_entry(15)(out.get(), a.get(), b.get(), &params);
  const auto y = zvtest::plane_bytes(*out, 0), ya = zvtest::plane_bytes(*a, 0);
  const int start = 5 * 40 + 5;
  for (int i = 0; i < 40 * 30; ++i) EXPECT_EQ(y[i], i >= start && i < start + 20 * 40 ? ya[i] : 0) << i;
}

}  // namespace

// Zoom, User-Defined Zoom and Zoom Box: sizes, placement and result 3.
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "blends/zoom.h"
#include "frame/registration.h"
#include "tests/test_support.h"

namespace {

using zvtest::ImagePtr;

constexpr int kZoom = 13, kUserDefinedZoom = 44, kZoomBox = 46;
constexpr uint8_t kBlackY = 16;  // what the host fills for RGB 0, 0, 0

int run(int id, Image* out, Image* a, Image* b, int style, double position, int param1 = 0, double param2 = 0.0) {
  TransitionParams params = zvtest::make_params(style, position);
  params.param1 = param1;
  params.param2 = param2;
  return zv::transition_entry(id)(out, a, b, &params);
}

// Checks every luma sample of `out` against `expected(col, row)`.
void expect_luma(const Image& out, const std::function<uint8_t(int, int)>& expected) {
  for (int row = 0; row < out.height; ++row) {
    for (int col = 0; col < out.width; ++col) {
      ASSERT_EQ(zvtest::sample(out, 0, col, row), expected(col, row)) << "at " << col << "," << row;
    }
  }
}

struct StyleCase {
  int id, style;
};

class ZoomEndpoints : public ::testing::TestWithParam<StyleCase> {};

// Progress 0 shows `a` and progress 1 shows `b`, whichever picture is scaled.
TEST_P(ZoomEndpoints, StartAtAAndEndAtB) {
  const StyleCase c = GetParam();
  ImagePtr a = zvtest::solid_frame(24, 14, 40, 50, 60), b = zvtest::solid_frame(24, 14, 140, 150, 160);
  for (double position : {0.0, 1.0}) {
    ImagePtr out = zvtest::random_frame(24, 14, 5);
    ASSERT_EQ(run(c.id, out.get(), a.get(), b.get(), c.style, position, 3, 2.0), 0);
    EXPECT_EQ(zvtest::frame_bytes(*out), zvtest::frame_bytes(position == 0.0 ? *a : *b))
        << "id " << c.id << " style " << c.style << " position " << position;
  }
}

const StyleCase kStyles[] = {{kZoom, 0},      {kZoom, 1},      {kZoom, 2},      {kZoom, 3},
                             {kZoom, 4},      {kZoom, 5},      {kZoom, 6},      {kZoom, 7},
                             {kUserDefinedZoom, 0}, {kUserDefinedZoom, 1}, {kZoomBox, 0}, {kZoomBox, 1}};

INSTANTIATE_TEST_SUITE_P(AllStyles, ZoomEndpoints, ::testing::ValuesIn(kStyles),
                         [](const ::testing::TestParamInfo<StyleCase>& info) {
                           return "id" + std::to_string(info.param.id) + "_style" + std::to_string(info.param.style);
                         });

TEST(Zoom, InAndOutShrinksAToALineOnBlackThenGrowsB) {
  ImagePtr a = zvtest::solid_frame(16, 8, 40, 50, 60), b = zvtest::solid_frame(16, 8, 140, 150, 160);
  ImagePtr out = zvtest::random_frame(16, 8, 3);
  // p = 0.25: `a` at 16 - t(8.5) = 8 columns, centred.
  run(kZoom, out.get(), a.get(), b.get(), 6, 0.25);
  expect_luma(*out, [](int col, int) { return col >= 4 && col < 12 ? 40 : kBlackY; });
  // p = 0.5: `b` at width 0, so only the black frame shows.
  run(kZoom, out.get(), a.get(), b.get(), 6, 0.5);
  expect_luma(*out, [](int, int) { return kBlackY; });
  // Vertical, p = 0.75: `b` at t(0.5 x 8 + 0.5) = 4 rows, centred.
  run(kZoom, out.get(), a.get(), b.get(), 7, 0.75);
  expect_luma(*out, [](int, int row) { return row >= 2 && row < 6 ? 140 : kBlackY; });
}

TEST(Zoom, RectangleZoomOutIsCentredOverTheBackgroundRegion) {
  // out is larger than a: only a's centred area of `out` takes the background.
  ImagePtr a = zvtest::solid_frame(20, 12, 40, 50, 60), b = zvtest::solid_frame(16, 10, 140, 150, 160);
  ImagePtr out = zvtest::solid_frame(24, 16, 1, 2, 3);
  run(kZoom, out.get(), a.get(), b.get(), 4, 0.5);
  // b at 12 x 8, pasted at ((24 - 12) / 2, (16 - 8) / 2).
  expect_luma(*out, [](int col, int row) -> uint8_t {
    if (col >= 6 && col < 18 && row >= 4 && row < 12) return 140;
    return col >= 2 && col < 22 && row >= 2 && row < 14 ? 40 : 1;
  });
  EXPECT_EQ(zvtest::sample(*out, 1, 0, 0), 2);
  EXPECT_EQ(zvtest::sample(*out, 1, 1, 1), 50);
  EXPECT_EQ(zvtest::sample(*out, 1, 3, 2), 150);
}

struct PointCase {
  int param1;
  double param2;
  int left, top;  // where an 8 x 4 `b` lands at p = 0.5 on 16 x 8
};

class UserDefinedZoomPoint : public ::testing::TestWithParam<PointCase> {};

TEST_P(UserDefinedZoomPoint, BGrowsFromThePoint) {
  const PointCase c = GetParam();
  ImagePtr a = zvtest::solid_frame(16, 8, 40, 50, 60), b = zvtest::solid_frame(16, 8, 140, 150, 160);
  ImagePtr out = zvtest::random_frame(16, 8, 3);
  ASSERT_EQ(run(kUserDefinedZoom, out.get(), a.get(), b.get(), 0, 0.5, c.param1, c.param2), 0);
  expect_luma(*out, [&](int col, int row) {
    return col >= c.left && col < c.left + 8 && row >= c.top && row < c.top + 4 ? 140 : 40;
  });
}

INSTANTIATE_TEST_SUITE_P(Points, UserDefinedZoomPoint,
                         ::testing::Values(PointCase{0, 0.0, 0, 0},       // top-left corner
                                           PointCase{-5, -3.0, 0, 0},     // below 1 becomes 0
                                           PointCase{100, 100.0, 8, 4},   // bottom-right corner
                                           // X: 100 and above become 100; Y: 1e12 does not fit 32 bits, truncates
                                           // to INT32_MIN and so becomes 0.
                                           PointCase{250, 1e12, 8, 0},
                                           PointCase{50, 50.0, 4, 2}));   // the centre

TEST(UserDefinedZoom, ZoomInShrinksAIntoThePointAndTakesBsFlags) {
  ImagePtr a = zvtest::solid_frame(16, 8, 40, 50, 60), b = zvtest::solid_frame(16, 8, 140, 150, 160);
  ImagePtr out = zvtest::random_frame(16, 8, 3);
  a->set_frame_flags(1);
  b->set_frame_flags(2);
  // a at 8 x 4; left = 16 - t(16 x 0.5 + 0.5) - 8 = 0.
  run(kUserDefinedZoom, out.get(), a.get(), b.get(), 1, 0.5, 0, 0.0);
  expect_luma(*out, [](int col, int row) { return col < 8 && row < 4 ? 40 : 140; });
  // The host's copy of the background carries its flags too.
  EXPECT_EQ(out->frame_flags(), 2);
}

TEST(ZoomBox, TwoByTwoTilesDriftFromTheirCellCentres) {
  ImagePtr a = zvtest::solid_frame(16, 8, 40, 50, 60), b = zvtest::solid_frame(16, 8, 140, 150, 160);
  ImagePtr out = zvtest::random_frame(16, 8, 3);
  // 0 boxes become 2. Cells of 8 x 4 centred at x 4, 12 and y 2, 6; b at 8 x 4
  // cut into 4 x 2 tiles, each at its cell's origin: columns 2..5 and 10..13,
  // rows 1..2 and 5..6.
  run(kZoomBox, out.get(), a.get(), b.get(), 0, 0.5, 0, 0.0);
  expect_luma(*out, [](int col, int row) {
    const bool in_col = (col >= 2 && col < 6) || (col >= 10 && col < 14);
    const bool in_row = row == 1 || row == 2 || row == 5 || row == 6;
    return in_col && in_row ? 140 : 40;
  });
}

TEST(ZoomBox, BoxCountsAboveFiftyBecomeFifty) {
  ImagePtr a = zvtest::random_frame(120, 110, 1), b = zvtest::random_frame(120, 110, 2);
  auto draw = [&](int nx, double ny) {
    ImagePtr out = zvtest::random_frame(120, 110, 3);
    run(kZoomBox, out.get(), a.get(), b.get(), 0, 0.4, nx, ny);
    return zvtest::frame_bytes(*out);
  };
  EXPECT_EQ(draw(75, 80.0), draw(50, 50.0));
  EXPECT_NE(draw(49, 50.0), draw(50, 50.0));
}

}  // namespace

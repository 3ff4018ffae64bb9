// Zoom, User-Defined Zoom and Zoom Box: sizes and placement.
#include <gtest/gtest.h>

#include "tests/test_support.h"

namespace {

using zvtest::ImagePtr;
using zvtest::run_transition;
using zvtest::samples_are;

constexpr int kZoom = 13, kUserDefinedZoom = 44, kZoomBox = 46;
constexpr uint8_t kBlackY = 16;  // what the host fills for RGB 0, 0, 0

struct Frames {
  ImagePtr a = zvtest::solid_frame(16, 8, 40, 50, 60), b = zvtest::solid_frame(16, 8, 140, 150, 160);
  ImagePtr out = zvtest::random_frame(16, 8, 3);
  int run(int id, int style, double position, int param1 = 0, double param2 = 0.0) {
    return run_transition(id, out.get(), a.get(), b.get(), style, position, param1, param2);
  }
};

// On solid frames progress 0 shows `a` and progress 1 shows `b`, whichever picture is scaled.
TEST(Zoom, EveryStyleStartsAtAAndEndsAtB) {
  ImagePtr a = zvtest::solid_frame(24, 14, 40, 50, 60), b = zvtest::solid_frame(24, 14, 140, 150, 160);
  const std::pair<int, int> styles[] = {{kZoom, 0}, {kZoom, 1}, {kZoom, 2}, {kZoom, 3}, {kZoom, 4}, {kZoom, 5},
                                        {kZoom, 6}, {kZoom, 7}, {kUserDefinedZoom, 0}, {kUserDefinedZoom, 1},
                                        {kZoomBox, 0}, {kZoomBox, 1}};
  for (const auto& [id, style] : styles) {
    for (double position : {0.0, 1.0}) {
      ImagePtr out = zvtest::random_frame(24, 14, 5);
      ASSERT_EQ(run_transition(id, out.get(), a.get(), b.get(), style, position, 3, 2.0), 0);
      EXPECT_EQ(zvtest::frame_bytes(*out), zvtest::frame_bytes(position == 0.0 ? *a : *b))
          << "id " << id << " style " << style << " position " << position;
    }
  }
}

TEST(Zoom, InAndOutShrinksAToALineOnBlackThenGrowsB) {
  Frames f;
  // p = 0.25: `a` at 16 - t(8.5) = 8 columns, centred.
  f.run(kZoom, 6, 0.25);
  EXPECT_TRUE(samples_are(*f.out, 0, [](int col, int) { return col >= 4 && col < 12 ? 40 : kBlackY; }));
  // p = 0.5: `b` at width 0, so only the black frame shows.
  f.run(kZoom, 6, 0.5);
  EXPECT_TRUE(samples_are(*f.out, 0, [](int, int) { return kBlackY; }));
  // Vertical, p = 0.75: `b` at t(0.5 x 8 + 0.5) = 4 rows, centred.
  f.run(kZoom, 7, 0.75);
  EXPECT_TRUE(samples_are(*f.out, 0, [](int, int row) { return row >= 2 && row < 6 ? 140 : kBlackY; }));
}

TEST(Zoom, RectangleZoomOutIsCentredOverTheBackgroundRegion) {
  // out is larger than a: only a's centred area of `out` takes the background; b at 12 x 8, pasted at ((24 - 12) / 2,
  // (16 - 8) / 2).
  ImagePtr a = zvtest::solid_frame(20, 12, 40, 50, 60), b = zvtest::solid_frame(16, 10, 140, 150, 160);
  ImagePtr out = zvtest::solid_frame(24, 16, 1, 2, 3);
  run_transition(kZoom, out.get(), a.get(), b.get(), 4, 0.5);
  EXPECT_TRUE(samples_are(*out, 0, [](int col, int row) {
    if (col >= 6 && col < 18 && row >= 4 && row < 12) return 140;
    return col >= 2 && col < 22 && row >= 2 && row < 14 ? 40 : 1;
  }));
  EXPECT_EQ(zvtest::sample(*out, 1, 0, 0), 2);
  EXPECT_EQ(zvtest::sample(*out, 1, 1, 1), 50);
  EXPECT_EQ(zvtest::sample(*out, 1, 3, 2), 150);
}

TEST(UserDefinedZoom, BGrowsFromThePoint) {
  struct Case { int param1; double param2; int left, top; };  // where an 8 x 4 `b` lands at p = 0.5
  const Case cases[] = {{0, 0.0, 0, 0},      // top-left corner
                        {-5, -3.0, 0, 0},    // below 1 becomes 0
                        {100, 100.0, 8, 4},  // bottom-right corner
                        // X: 100 and above become 100; Y: 1e12 does not fit 32 bits, truncates to INT32_MIN and so
                        // becomes 0.
                        {250, 1e12, 8, 0},
                        {50, 50.0, 4, 2}};  // the centre
  for (const Case& c : cases) {
    Frames f;
    ASSERT_EQ(f.run(kUserDefinedZoom, 0, 0.5, c.param1, c.param2), 0);
    EXPECT_TRUE(samples_are(*f.out, 0, [&](int col, int row) {
      return col >= c.left && col < c.left + 8 && row >= c.top && row < c.top + 4 ? 140 : 40;
    })) << c.param1 << ", " << c.param2;
  }
}

TEST(UserDefinedZoom, ZoomInShrinksAIntoThePointAndTakesBsFlags) {
  Frames f;
  f.a->set_frame_flags(1);
  f.b->set_frame_flags(2);
  // a at 8 x 4; left = 16 - t(16 x 0.5 + 0.5) - 8 = 0.
  f.run(kUserDefinedZoom, 1, 0.5);
  EXPECT_TRUE(samples_are(*f.out, 0, [](int col, int row) { return col < 8 && row < 4 ? 40 : 140; }));
  EXPECT_EQ(f.out->frame_flags(), 2);  // the host's copy of the background carries its flags too
}

TEST(ZoomBox, TwoByTwoTilesDriftFromTheirCellCentres) {
  // 0 boxes become 2. Cells of 8 x 4 centred at x 4, 12 and y 2, 6; b at 8 x 4 cut into 4 x 2 tiles, each at its cell's
  // origin: columns 2..5 and 10..13, rows 1..2 and 5..6.
  Frames f;
  f.run(kZoomBox, 0, 0.5);
  EXPECT_TRUE(samples_are(*f.out, 0, [](int col, int row) {
    return col % 8 >= 2 && col % 8 < 6 && row % 4 >= 1 && row % 4 < 3 ? 140 : 40;
  }));
}

}  // namespace

// Fade: the level blend, fades through black and the gradient sweeps.
#include <gtest/gtest.h>

#include <cmath>

#include "blends/fade.h"
#include "tests/test_support.h"

namespace {

using zvtest::ImagePtr;
using zvtest::make_params;
using zvtest::sample;
using zvtest::solid_frame;

struct Frames {
  ImagePtr a = solid_frame(64, 48, 16, 100, 200);
  ImagePtr b = solid_frame(64, 48, 235, 60, 127);
  ImagePtr out = solid_frame(64, 48, 7, 7, 7);

  int run(int style, double position) {
    TransitionParams params = make_params(style, position);
    return zv::fade_transition(out.get(), a.get(), b.get(), &params);
  }
};

struct LevelCase {
  int style;
  double position;
  uint8_t y, u, v;
};

class FadeLevelTest : public ::testing::TestWithParam<LevelCase> {};

TEST_P(FadeLevelTest, EverySampleOfTheFrameTakesTheBlend) {
  const LevelCase c = GetParam();
  Frames f;
  ASSERT_EQ(f.run(c.style, c.position), 0);
  EXPECT_EQ(zvtest::frame_bytes(*f.out), zvtest::frame_bytes(*solid_frame(64, 48, c.y, c.u, c.v)));
}

INSTANTIATE_TEST_SUITE_P(
    Styles, FadeLevelTest,
    ::testing::Values(
        // k = 64: three quarters a, one quarter b.
        LevelCase{0, 0.5, (16 * 192 + 235 * 64) >> 8, (100 * 192 + 60 * 64) >> 8, (200 * 192 + 127 * 64) >> 8},
        LevelCase{0, 0.0, 16, 100, 200}, LevelCase{0, 1.0, 235, 60, 127},
        // Fading a out: luma to 0, chroma to 128 with a flooring shift.
        LevelCase{1, 1.0, 0, 128, 128}, LevelCase{1, 0.5, (16 * 192) >> 8, ((-28 * 192) >> 8) + 128, ((72 * 192) >> 8) + 128},
        // b's chroma of 127 stays 127 for any weight below 256.
        LevelCase{2, 0.5, (235 * 64) >> 8, ((-68 * 64) >> 8) + 128, 127}, LevelCase{2, 1.0, 235, 60, 127},
        LevelCase{2, 2.0, 235, 60, 127},
        // Out and in through black: black at exactly 0.5, almost black just before.
        LevelCase{3, 0.5, 0, 128, 128}, LevelCase{3, 0.499, (16 * 2) >> 8, ((-28 * 2) >> 8) + 128, ((72 * 2) >> 8) + 128},
        LevelCase{3, 0.75, (235 * 64) >> 8, ((-68 * 64) >> 8) + 128, 127}));

TEST(FadeTest, LeftToRightJustBeforeHalfwayIsAlmostAllB) {
  Frames f;
  f.run(4, std::nextafter(0.5, 0.0));
  // t just below 1: the gradient spans 63 of 64 columns, weight of a 4 at the left edge.
  EXPECT_EQ(sample(*f.out, 0, 0, 10), (16 * 4 + 235 * 252) >> 8);
  EXPECT_EQ(sample(*f.out, 0, 62, 10), (16 * 252 + 235 * 4) >> 8);
  EXPECT_EQ(sample(*f.out, 0, 63, 10), 16);
  // Chroma has its own edge: trunc(32 * t) = 31 columns.
  EXPECT_EQ(sample(*f.out, 1, 30, 3), (100 * 248 + 60 * 8) >> 8);
  EXPECT_EQ(sample(*f.out, 1, 31, 3), 100);
}

TEST(FadeTest, VerticalReverseTruncatesOnTheOtherSideOfTheWeight) {
  // 48 x 48 frames, t = 0.5: the gradient covers 24 columns (style 5) or rows (style 7).
  ImagePtr a = solid_frame(48, 48, 16, 128, 128), b = solid_frame(48, 48, 235, 128, 128);
  ImagePtr horizontal = solid_frame(48, 48, 0, 0, 0), vertical = solid_frame(48, 48, 0, 0, 0);
  TransitionParams p5 = make_params(5, 0.25), p7 = make_params(7, 0.25);
  zv::fade_transition(horizontal.get(), a.get(), b.get(), &p5);
  zv::fade_transition(vertical.get(), a.get(), b.get(), &p7);
  // One step into the gradient: a keeps trunc(47 * 256 / 48) = 250 across, 256 - trunc(256 / 48) = 251 down.
  EXPECT_EQ(sample(*horizontal, 0, 23, 0), 16);
  EXPECT_EQ(sample(*horizontal, 0, 25, 0), (16 * 250 + 235 * 6) >> 8);
  EXPECT_EQ(sample(*vertical, 0, 0, 23), 16);
  EXPECT_EQ(sample(*vertical, 0, 0, 25), (16 * 251 + 235 * 5) >> 8);
}

TEST(FadeTest, FramesOfDifferentSizesWriteOnlyTheCentredCommonRegion) {
  ImagePtr a = solid_frame(20, 12, 50, 50, 50), b = solid_frame(16, 14, 150, 150, 150);
  for (int style = 0; style <= 7; ++style) {
    ImagePtr out = solid_frame(24, 10, 9, 9, 9);
    TransitionParams params = make_params(style, 0.3);
    ASSERT_EQ(zv::fade_transition(out.get(), a.get(), b.get(), &params), 0);
    // The region is 16 x 10; a picture fading alone uses the out-and-picture minimum.
    const int w = (style == 1 || style == 3) ? 20 : 16;  // styles 1 and 3 (first half) fade a alone
    for (int y = 0; y < 10; ++y) {
      for (int x = 0; x < 24; ++x) {
        const bool inside = x >= (24 - w) / 2 && x < (24 - w) / 2 + w;
        EXPECT_EQ(sample(*out, 0, x, y) == 9, !inside) << style << " " << x << "," << y;
      }
    }
  }
}

}  // namespace

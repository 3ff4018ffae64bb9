// Fade's gradient sweeps, and where it writes on frames of different sizes (its levels are in blend_effects_test.cpp).
#include <gtest/gtest.h>

#include <cmath>

#include "tests/test_support.h"

namespace {

using zvtest::ImagePtr;
using zvtest::run_transition;
using zvtest::sample;
using zvtest::solid_frame;

constexpr int kFade = 14;

TEST(FadeTest, LeftToRightJustBeforeHalfwayIsAlmostAllB) {
  ImagePtr a = solid_frame(64, 48, 16, 100, 200), b = solid_frame(64, 48, 235, 60, 127);
  ImagePtr out = solid_frame(64, 48, 7, 7, 7);
  run_transition(kFade, out.get(), a.get(), b.get(), 4, std::nextafter(0.5, 0.0));
  // t just below 1: the gradient spans 63 of 64 columns, a's weight 4 at the left edge; chroma has its own edge,
  // trunc(32 * t) = 31 columns.
  EXPECT_EQ(sample(*out, 0, 0, 10), 231);
  EXPECT_EQ(sample(*out, 0, 62, 10), 19);
  EXPECT_EQ(sample(*out, 0, 63, 10), 16);
  EXPECT_EQ(sample(*out, 1, 30, 3), 98);
  EXPECT_EQ(sample(*out, 1, 31, 3), 100);
}

TEST(FadeTest, VerticalReverseTruncatesOnTheOtherSideOfTheWeight) {
  // 48 x 48, t = 0.5: the gradient covers 24 columns (style 5) or rows (style 7); one step into it a keeps trunc(47 *
  // 256 / 48) = 250 across, 256 - trunc(256 / 48) = 251 down.
  ImagePtr a = solid_frame(48, 48, 16, 128, 128), b = solid_frame(48, 48, 235, 128, 128);
  ImagePtr across = solid_frame(48, 48, 0, 0, 0), down = solid_frame(48, 48, 0, 0, 0);
  run_transition(kFade, across.get(), a.get(), b.get(), 5, 0.25);
  run_transition(kFade, down.get(), a.get(), b.get(), 7, 0.25);
  EXPECT_EQ(sample(*across, 0, 23, 0), 16);
  EXPECT_EQ(sample(*across, 0, 25, 0), 21);
  EXPECT_EQ(sample(*down, 0, 0, 23), 16);
  EXPECT_EQ(sample(*down, 0, 0, 25), 20);
}

// The region is 16 x 10; a picture fading alone (styles 1 and 3, first half) uses the out-and-picture minimum.
TEST(FadeTest, FramesOfDifferentSizesWriteOnlyTheCentredCommonRegion) {
  ImagePtr a = solid_frame(20, 12, 50, 50, 50), b = solid_frame(16, 14, 150, 150, 150);
  for (int style = 0; style <= 7; ++style) {
    ImagePtr out = solid_frame(24, 10, 9, 9, 9);
    ASSERT_EQ(run_transition(kFade, out.get(), a.get(), b.get(), style, 0.3), 0);
    const int w = (style == 1 || style == 3) ? 20 : 16;
    for (int x = 0; x < 24; ++x) {
      for (int y = 0; y < 10; ++y) {
        EXPECT_EQ(sample(*out, 0, x, y) == 9, x < (24 - w) / 2 || x >= (24 + w) / 2) << style << " " << x << "," << y;
      }
    }
  }
}

}  // namespace

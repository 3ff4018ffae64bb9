// Gradient Wipe: exact plain parts, dithered band statistics, the styles that take their variant from the progress
// value (that the dither differs from call to call is in dissolves_test.cpp).
#include <gtest/gtest.h>

#include "tests/test_support.h"

namespace {

using zvtest::solid_frame;

constexpr uint8_t kA = 10, kB = 240;

struct Frames {
  zvtest::ImagePtr a = solid_frame(256, 576, kA, kA, kA), b = solid_frame(256, 576, kB, kB, kB);
  zvtest::ImagePtr out = solid_frame(256, 576, 0, 0, 0);
  void run(int style, double p) { ASSERT_EQ(zvtest::run_transition(39, out.get(), a.get(), b.get(), style, p), 0); }
  // Share of samples equal to a in luma columns [x0, x1) of rows [y0, y1); every one is a or b.
  double share_of_a(int x0, int x1, int y0, int y1) const {
    int from_a = 0;
    for (int y = y0; y < y1; ++y) {
      for (int x = x0; x < x1; ++x) {
        const uint8_t s = zvtest::sample(*out, 0, x, y);
        EXPECT_TRUE(s == kA || s == kB);
        from_a += s == kA;
      }
    }
    return static_cast<double>(from_a) / ((x1 - x0) * (y1 - y0));
  }
};

TEST(GradientWipe, TopToBottomQuarterDithersTheTopHalf) {
  Frames f;
  f.run(2, 0.25);
  // kr = 288: rows 288..575 are a; row 0 keeps a at 129/257, row 287 at 256/257.
  EXPECT_EQ(f.share_of_a(0, 256, 288, 576), 1.0);
  EXPECT_NEAR(f.share_of_a(0, 256, 0, 8), 129.0 / 257, 0.04);
  EXPECT_GT(f.share_of_a(0, 256, 280, 288), 0.97);
  // Chroma: 144 of 288 rows dithered, the rest a.
  for (int y = 144; y < 288; ++y) ASSERT_EQ(zvtest::sample(*f.out, 1, 5, y), kA) << y;
}

TEST(GradientWipe, MidpointOfLeftToRightIsAFullBandOfB) {
  Frames f;
  f.run(0, 0.5);
  // s1 = b at the far side: column 0 is always b, the right edge almost always a.
  EXPECT_EQ(f.share_of_a(0, 1, 0, 576), 0.0);
  EXPECT_GT(f.share_of_a(250, 256, 0, 576), 0.97);
  EXPECT_NEAR(f.share_of_a(126, 130, 0, 576), 0.5, 0.05);
}

TEST(GradientWipe, DiagonalStylesTakeTheVariantFromProgressBits) {
  Frames f;
  f.run(5, 0.5);  // low bits zero: near-side columns, t = 0.5, s1 = a
  EXPECT_EQ(f.share_of_a(128, 256, 0, 576), 1.0);
  EXPECT_NEAR(f.share_of_a(0, 2, 0, 576), 129.0 / 257, 0.05);
  f.run(5, 0.3);  // low bits set: far-side rows, t = 0.3, b only near the band's bottom
  const int band_top = 576 - 172;
  EXPECT_EQ(f.share_of_a(0, 256, 0, band_top), 1.0);
  EXPECT_GT(f.share_of_a(0, 256, band_top, band_top + 8), 0.98);
  EXPECT_NEAR(f.share_of_a(0, 256, 560, 576), 1.0 - 74.0 / 257, 0.04);
}

}  // namespace

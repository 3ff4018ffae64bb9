// Add, Non Add and Random Dissolve (Add Dissolve's levels are in blend_effects_test.cpp); and, for this family, frames
// of three different sizes.
#include <gtest/gtest.h>

#include <tuple>

#include "tests/test_support.h"

namespace {

using zvtest::ImagePtr;
using zvtest::run_transition;
using zvtest::sample;
using zvtest::solid_frame;

TEST(AddDissolve, GreyIsOneRunFromTheRegionStart) {
  // Chroma: out 6x2, a and b 4x2, so the region starts at column 1 and the 8-byte grey run covers U[1..8] of out,
  // spilling into its second row.
  ImagePtr a = solid_frame(8, 4, 10, 60, 70), b = solid_frame(8, 4, 20, 160, 170), out = solid_frame(12, 4, 0, 9, 9);
  run_transition(36, out.get(), a.get(), b.get(), 0, 0.5);
  EXPECT_EQ(zvtest::plane_bytes(*out, 1), (std::vector<uint8_t>{9, 128, 128, 128, 128, 128, 128, 128, 128, 9, 9, 9}));
}

// Non Add Dissolve on a 720-wide frame: out and a are 6 rows, b 4, so the region is rows 1..4 of out, written one row
// down (rows 2..5); row 5 lies inside out and a, b's row below does not. Chroma: 3 rows of out, 2 of the region (row 0
// and 1), no offset.
TEST(NonAddDissolve, WrapsLumaOneRowDown) {
  struct Case { double p; uint8_t y, u; };
  const Case cases[] = {{0.0, 200, 60},
                        {0.25, 19, 60},   // K 180, d 75, wrapped
                        {0.49, 91, 60},   // K 353, d 147
                        {0.5, 94, 160},   // K 360, d 0, + 150
                        {0.75, 19, 160},  // d -75, + 150
                        {1.0, 200, 160}};
  ImagePtr a = solid_frame(720, 6, 200, 60, 70), b = solid_frame(720, 4, 200, 160, 170);
  for (const Case& c : cases) {
    ImagePtr out = solid_frame(720, 6, 7, 8, 9);
    ASSERT_EQ(run_transition(37, out.get(), a.get(), b.get(), 0, c.p), 0);
    const int last_written = c.p < 0.5 ? 5 : 4;
    for (int row = 0; row < 6; ++row) {
      const uint8_t want = row >= 2 && row <= last_written ? c.y : 7;
      EXPECT_EQ(sample(*out, 0, 0, row), want) << "p " << c.p << " row " << row;
      EXPECT_EQ(sample(*out, 0, 719, row), want) << "p " << c.p << " row " << row;
      if (row < 3) {
        EXPECT_EQ(sample(*out, 1, 5, row), row < 2 ? c.u : 8) << "p " << c.p << " row " << row;
      }
    }
  }
}

TEST(NonAddDissolve, EqualSizesLeaveRowZeroAndSkipTheRowBelow) {
  ImagePtr a = zvtest::random_frame(10, 6, 1), b = zvtest::random_frame(10, 6, 2), out = zvtest::random_frame(10, 6, 3);
  const ImagePtr before = zvtest::random_frame(10, 6, 3);
  run_transition(37, out.get(), a.get(), b.get(), 0, 1.0);
  EXPECT_TRUE(zvtest::samples_are(*out, 0, [&](int x, int y) { return sample(y ? *b : *before, 0, x, y); }));
  EXPECT_EQ(zvtest::plane_bytes(*out, 1), zvtest::plane_bytes(*b, 1));
}

// Random Dissolve on frames where a and b differ everywhere: every sample is one of them, b's share follows the
// progress (45 of 151 draws at 0.3, 245 of 351 at 0.7), and at the end about one sample in 501 keeps a.
TEST(RandomDissolve, ShareOfBFollowsProgress) {
  const double bounds[][3] = {{0.0, 0.0, 0.0}, {0.3, 0.288, 0.308}, {0.7, 0.688, 0.708},
                              {1.0, 1.0 - 330.0 / 115200, 1.0 - 140.0 / 115200}};
  ImagePtr a = solid_frame(320, 240, 10, 20, 30), b = solid_frame(320, 240, 200, 210, 220);
  for (const auto& [p, low, high] : bounds) {
    ImagePtr out = solid_frame(320, 240, 0, 0, 0);
    ASSERT_EQ(run_transition(38, out.get(), a.get(), b.get(), 0, p), 0);
    const auto o = zvtest::frame_bytes(*out), bb = zvtest::frame_bytes(*b), aa = zvtest::frame_bytes(*a);
    int from_b = 0;
    for (size_t i = 0; i < o.size(); ++i) {
      ASSERT_TRUE(o[i] == aa[i] || o[i] == bb[i]) << "p " << p << " at " << i;
      from_b += o[i] == bb[i];
    }
    EXPECT_GE(static_cast<double>(from_b) / o.size(), low) << "p " << p;
    EXPECT_LE(static_cast<double>(from_b) / o.size(), high) << "p " << p;
  }
}

// Random Dissolve (38) and Gradient Wipe's dither (39) draw afresh on every call.
TEST(RandomDissolve, TwoCallsDiffer) {
  for (const auto& [id, style, p, w, h] : {std::tuple{38, 0, 0.5, 64, 32}, {39, 1, 0.3, 256, 576}}) {
    ImagePtr a = solid_frame(w, h, 10, 10, 10), b = solid_frame(w, h, 240, 240, 240);
    ImagePtr out1 = solid_frame(w, h, 0, 0, 0), out2 = solid_frame(w, h, 0, 0, 0);
    run_transition(id, out1.get(), a.get(), b.get(), style, p);
    run_transition(id, out2.get(), a.get(), b.get(), style, p);
    EXPECT_NE(zvtest::frame_bytes(*out1), zvtest::frame_bytes(*out2)) << id;
  }
}

// Three different sizes: the centred common region of out changes, and only it.
TEST(Dissolves, FramesOfThreeSizesWriteTheCommonRegion) {
  const std::tuple<int, int, double> cases[] = {{36, 0, 0.3}, {36, 1, 0.7}, {38, 0, 0.5}, {39, 0, 0.3},
                                                {39, 3, 0.8}, {15, 0, 0.6}, {15, 9, 0.6}};
  ImagePtr a = solid_frame(34, 22, 10, 20, 30), b = solid_frame(30, 26, 200, 210, 220);
  for (const auto& [id, style, p] : cases) {
    ImagePtr out = solid_frame(40, 30, 99, 99, 99);
    ASSERT_EQ(run_transition(id, out.get(), a.get(), b.get(), style, p), 0);
    for (int plane = 0; plane < 3; ++plane) {
      const int ow = plane ? 20 : 40, oh = plane ? 15 : 30, w = plane ? 15 : 30, h = plane ? 11 : 22;
      const int x0 = (ow - w) >> 1, y0 = (oh - h) >> 1;
      for (int y = 0; y < oh; ++y) {
        for (int x = 0; x < ow; ++x) {
          ASSERT_EQ(sample(*out, plane, x, y) != 99, x >= x0 && x < x0 + w && y >= y0 && y < y0 + h)
              << "id " << id << " style " << style << " plane " << plane << " at " << x << "," << y;
        }
      }
    }
  }
}

}  // namespace

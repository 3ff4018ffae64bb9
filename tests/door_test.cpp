// 3D Door: exact bytes of the leaves, their squeeze and their shortened inner
// edges, the style written back into the caller's block, and frames of
// different sizes.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "frame/registration.h"
#include "tests/test_support.h"

namespace {

using zvtest::ImagePtr;

constexpr int kDoor = 59;

int door(Image* out, Image* a, Image* b, TransitionParams* params) {
  return zv::transition_entry(kDoor)(out, a, b, params);
}

// Planes whose samples tell their row and column apart.
ImagePtr numbered_frame(int width, int height) {
  ImagePtr image = zvtest::solid_frame(width, height, 0, 0, 0);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) image->get_Y()[y * width + x] = static_cast<uint8_t>(10 * y + x);
  }
  for (int y = 0; y < height / 2; ++y) {
    for (int x = 0; x < width / 2; ++x) {
      image->get_U()[y * (width / 2) + x] = static_cast<uint8_t>(100 + 10 * y + x);
      image->get_V()[y * (width / 2) + x] = static_cast<uint8_t>(50 + 10 * y + x);
    }
  }
  return image;
}

TEST(Door, OpenAndCloseAtTheirEnds) {
  ImagePtr a = zvtest::random_frame(16, 12, 1), b = zvtest::random_frame(16, 12, 2);
  struct Case {
    int style;
    double p;
    const Image* shown;
  };
  const Case cases[] = {{0, 0.0, a.get()}, {0, 1.0, b.get()}, {1, 0.0, a.get()}, {1, 1.0, b.get()}};
  for (const Case& c : cases) {
    ImagePtr out = zvtest::random_frame(16, 12, 3);
    TransitionParams params = zvtest::make_params(c.style, c.p);
    ASSERT_EQ(door(out.get(), a.get(), b.get(), &params), 0);
    EXPECT_EQ(zvtest::frame_bytes(*out), zvtest::frame_bytes(*c.shown)) << "style " << c.style << " p " << c.p;
  }
}

TEST(Door, HalfOpenSqueezesTheLeavesAndShortensTheirInnerEdges) {
  ImagePtr a = numbered_frame(8, 16), b = zvtest::solid_frame(8, 16, 200, 30, 40);
  ImagePtr out = zvtest::solid_frame(8, 16, 0, 0, 0);
  a->set_frame_flags(5);
  b->set_frame_flags(9);
  TransitionParams params = zvtest::make_params(0, 0.5);
  params.param1 = 7;
  ASSERT_EQ(door(out.get(), a.get(), b.get(), &params), 0);
  EXPECT_EQ(params.param1, 0);          // the style, written into the caller's block
  EXPECT_EQ(out->frame_flags(), 9);     // the revealed picture's copy brings its flags last

  // Luma: two columns a leaf, every other source column; the hinge columns
  // full height, the inner ones one row shorter at each end and stretched.
  const int inner_rows[14] = {0, 1, 2, 3, 5, 6, 7, 8, 9, 10, 11, 13, 14, 15};
  for (int y = 0; y < 16; ++y) {
    EXPECT_EQ(zvtest::sample(*out, 0, 0, y), 10 * y + 0) << y;
    EXPECT_EQ(zvtest::sample(*out, 0, 7, y), 10 * y + 6) << y;
    const bool inner = y >= 1 && y <= 14;
    EXPECT_EQ(zvtest::sample(*out, 0, 1, y), inner ? 10 * inner_rows[y - 1] + 2 : 200) << y;
    EXPECT_EQ(zvtest::sample(*out, 0, 6, y), inner ? 10 * inner_rows[y - 1] + 4 : 200) << y;
    for (int x = 2; x < 6; ++x) EXPECT_EQ(zvtest::sample(*out, 0, x, y), 200);
  }
  // Chroma (4 x 8): one column a leaf, at full height.
  for (int y = 0; y < 8; ++y) {
    const uint8_t expected_u[4] = {static_cast<uint8_t>(100 + 10 * y), 30, 30, static_cast<uint8_t>(102 + 10 * y)};
    for (int x = 0; x < 4; ++x) EXPECT_EQ(zvtest::sample(*out, 1, x, y), expected_u[x]) << x << "," << y;
    EXPECT_EQ(zvtest::sample(*out, 2, 0, y), 50 + 10 * y);
    EXPECT_EQ(zvtest::sample(*out, 2, 3, y), 52 + 10 * y);
  }

  // Closing half way is the same picture with the leaves made from the other frame.
  ImagePtr closing = zvtest::solid_frame(8, 16, 0, 0, 0);
  params.style = 1;
  ASSERT_EQ(door(closing.get(), b.get(), a.get(), &params), 0);
  EXPECT_EQ(params.param1, 1);
  EXPECT_EQ(zvtest::frame_bytes(*closing), zvtest::frame_bytes(*out));
}

TEST(Door, StyleOutOfRangeOnlyCopiesTheFlags) {
  ImagePtr a = zvtest::random_frame(16, 12, 1), b = zvtest::random_frame(16, 12, 2);
  ImagePtr out = zvtest::random_frame(16, 12, 3);
  a->set_frame_flags(4);
  const std::vector<uint8_t> before = zvtest::frame_bytes(*out);
  for (int style : {2, -1, 1000}) {
    TransitionParams params = zvtest::make_params(style, 0.5);
    params.param1 = 7;
    EXPECT_EQ(door(out.get(), a.get(), b.get(), &params), 0);
    EXPECT_EQ(params.param1, 7);
  }
  EXPECT_EQ(zvtest::frame_bytes(*out), before);
  EXPECT_EQ(out->frame_flags(), 4);
}

TEST(Door, DifferentSizesMeetOnTheCentredMinimumArea) {
  ImagePtr a = zvtest::random_frame(8, 4, 1), b = zvtest::random_frame(12, 8, 2);
  ImagePtr out = zvtest::random_frame(10, 6, 3);
  TransitionParams params = zvtest::make_params(0, 0.0);
  ASSERT_EQ(door(out.get(), a.get(), b.get(), &params), 0);
  // b fills the output from its centred 10 x 6 (5 x 3) area; the closed
  // leaves show a over the centred 8 x 4 (4 x 2) area.
  for (int y = 0; y < 6; ++y) {
    for (int x = 0; x < 10; ++x) {
      const bool leaf = x >= 1 && x < 9 && y >= 1 && y < 5;
      const int expected = leaf ? zvtest::sample(*a, 0, x - 1, y - 1) : zvtest::sample(*b, 0, x + 1, y + 1);
      EXPECT_EQ(zvtest::sample(*out, 0, x, y), expected) << x << "," << y;
    }
  }
  for (int plane = 1; plane <= 2; ++plane) {
    for (int y = 0; y < 3; ++y) {
      for (int x = 0; x < 5; ++x) {
        const bool leaf = x < 4 && y < 2;
        const int expected = leaf ? zvtest::sample(*a, plane, x, y) : zvtest::sample(*b, plane, x, y);
        EXPECT_EQ(zvtest::sample(*out, plane, x, y), expected) << plane << ":" << x << "," << y;
      }
    }
  }
}

TEST(Door, DegenerateSizesAndProgressDrawSafely) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const int sizes[][2] = {{0, 0}, {-4, 6}, {1, 1}, {3, 2}, {2, 9}};
  for (const auto& s : sizes) {
    for (double position : {nan, -1e300, 0.3, 1e300}) {
      for (int style : {0, 1}) {
        ImagePtr a = zvtest::random_frame(s[0], s[1], 1), b = zvtest::random_frame(6, 4, 2);
        ImagePtr out = zvtest::random_frame(5, s[1], 3);
        TransitionParams params = zvtest::make_params(style, position);
        EXPECT_EQ(door(out.get(), a.get(), b.get(), &params), 0);
        params.duration = 0.0;
        EXPECT_EQ(door(out.get(), a.get(), b.get(), &params), 0);
      }
    }
  }
}

}  // namespace

// 3D Door: exact bytes of the leaves, their squeeze and their shortened inner edges, the style written back into the
// caller's block, and frames of different sizes (degenerate inputs are in the contract tests).
#include <gtest/gtest.h>

#include <tuple>

#include "frame/registration.h"
#include "tests/test_support.h"

namespace {

using zvtest::ImagePtr;
using zvtest::sample;

int door(Image* out, Image* a, Image* b, TransitionParams* p) { return zv::transition_entry(59)(out, a, b, p); }

// Planes whose samples tell their row and column apart: base + 10 x row + column.
ImagePtr numbered_frame(int width, int height) {
  ImagePtr image = zvtest::solid_frame(width, height, 0, 0, 0);
  for (int p = 0; p < 3; ++p) {
    const int w = p ? width / 2 : width, n = w * (p ? height / 2 : height), base = p == 0 ? 0 : p == 1 ? 100 : 50;
    for (int i = 0; i < n; ++i) image->plane(p)[i] = static_cast<uint8_t>(base + 10 * (i / w) + i % w);
  }
  return image;
}

TEST(Door, HalfOpenSqueezesTheLeavesAndShortensTheirInnerEdges) {
  ImagePtr a = numbered_frame(8, 16), b = zvtest::solid_frame(8, 16, 200, 30, 40);
  ImagePtr out = zvtest::solid_frame(8, 16, 0, 0, 0);
  a->set_frame_flags(5);
  b->set_frame_flags(9);
  TransitionParams params = zvtest::make_params(0, 0.5);
  params.param1 = 7;
  ASSERT_EQ(door(out.get(), a.get(), b.get(), &params), 0);
  EXPECT_EQ(params.param1, 0);       // the style, written into the caller's block
  EXPECT_EQ(out->frame_flags(), 9);  // the revealed picture's copy brings its flags last
  // Luma: two columns a leaf, every other source column; the hinge columns full height, the inner ones one row shorter
  // at each end and stretched.
  const int inner_rows[16] = {-1, 0, 1, 2, 3, 5, 6, 7, 8, 9, 10, 11, 13, 14, 15, -1};
  EXPECT_TRUE(zvtest::samples_are(*out, 0, [&](int x, int y) {
    const int inner = inner_rows[y];
    if (x == 0 || x == 7) return 10 * y + (x == 0 ? 0 : 6);
    if (x == 1 || x == 6) return inner < 0 ? 200 : 10 * inner + (x == 1 ? 2 : 4);
    return 200;
  }));
  // Chroma (4 x 8): one column a leaf, at full height.
  for (auto [plane, base, middle] : {std::tuple{1, 100, 30}, {2, 50, 40}}) {
    EXPECT_TRUE(zvtest::samples_are(*out, plane, [&](int x, int y) {
      return x == 0 ? base + 10 * y : x == 3 ? base + 2 + 10 * y : middle;
    }));
  }

  // Closing half way is the same picture with the leaves made from the other frame.
  ImagePtr closing = zvtest::solid_frame(8, 16, 0, 0, 0);
  params.style = 1;
  ASSERT_EQ(door(closing.get(), b.get(), a.get(), &params), 0);
  EXPECT_EQ(params.param1, 1);
  EXPECT_EQ(zvtest::frame_bytes(*closing), zvtest::frame_bytes(*out));
}

TEST(Door, StyleOutOfRangeLeavesTheCallersBlockAlone) {
  ImagePtr a = zvtest::random_frame(16, 12, 1), b = zvtest::random_frame(16, 12, 2);
  ImagePtr out = zvtest::random_frame(16, 12, 3);
  for (int style : {2, -1, 1000}) {
    TransitionParams params = zvtest::make_params(style, 0.5);
    params.param1 = 7;
    EXPECT_EQ(door(out.get(), a.get(), b.get(), &params), 0);
    EXPECT_EQ(params.param1, 7);
  }
}

// b fills the output from its centred 10 x 6 (5 x 3) area; the closed leaves show a over the centred 8 x 4 (4 x 2)
// area.
TEST(Door, DifferentSizesMeetOnTheCentredMinimumArea) {
  ImagePtr a = zvtest::random_frame(8, 4, 1), b = zvtest::random_frame(12, 8, 2), out = zvtest::random_frame(10, 6, 3);
  TransitionParams params = zvtest::make_params(0, 0.0);
  ASSERT_EQ(door(out.get(), a.get(), b.get(), &params), 0);
  EXPECT_TRUE(zvtest::samples_are(*out, 0, [&](int x, int y) {
    return x >= 1 && x < 9 && y >= 1 && y < 5 ? sample(*a, 0, x - 1, y - 1) : sample(*b, 0, x + 1, y + 1);
  }));
  for (int plane = 1; plane <= 2; ++plane) {
    EXPECT_TRUE(zvtest::samples_are(
        *out, plane, [&](int x, int y) { return x < 4 && y < 2 ? sample(*a, plane, x, y) : sample(*b, plane, x, y); }));
  }
}

}  // namespace

// Picture in picture: where the inset lands for each style, the argument check and the static picture.
#include <gtest/gtest.h>

#include "blends/picture_in_picture.h"
#include "imaging/scaled_image.h"
#include "tests/test_support.h"

namespace {

using zvtest::ImagePtr;

constexpr int kPos = 65536;  // y is the high half of param1, height of param2
const uint8_t kA[3] = {10, 20, 30}, kB[3] = {200, 210, 220};

// Draws solid b over solid a with the two parameters; every sample shows b's colour inside the inset (x, y, w, h,
// halved for chroma) and a's elsewhere.
void expect_inset(int style, int param1, double param2, int width, int height, int x, int y, int w, int h,
                  TransitionParams* block = nullptr) {
  ImagePtr a = zvtest::solid_frame(width, height, kA[0], kA[1], kA[2]);
  ImagePtr b = zvtest::solid_frame(37, 23, kB[0], kB[1], kB[2]), out = zvtest::random_frame(width, height, 3);
  a->set_frame_flags(7);
  TransitionParams params = zvtest::make_params(style, 0.3);
  if (block) params = *block;
  params.param1 = param1;
  params.param2 = param2;
  ASSERT_EQ(zv::picture_in_picture(out.get(), a.get(), b.get(), &params), 0);
  EXPECT_EQ(out->frame_flags(), 7);
  for (int plane = 0; plane < 3; ++plane) {
    const int s = plane ? 2 : 1;
    EXPECT_TRUE(zvtest::samples_are(*out, plane, [&](int col, int row) {
      return col >= x / s && col < x / s + w / s && row >= y / s && row < y / s + h / s ? kB[plane] : kA[plane];
    })) << "style " << style << " param1 " << param1;
  }
}

TEST(PictureInPicture, PastesResampledBAtTheRectangle) {
  // style, param1, param2, frame size, expected luma rectangle
  const std::tuple<int, int, double, int, int, int, int, int, int> cases[] = {
      // All four zero: a 40 x 40 inset on the 128 x 96 grid.
      {0, 0, 0.0, 720, 576, 0, 0, 225, 240},
      {0, 32 + 24 * kPos, 64 + 48 * kPos, 128, 96, 32, 24, 64, 48},
      // Limited by the frame's own size, then by the room left right of x.
      {0, 100 + 90 * kPos, 100 + 90 * kPos, 128, 96, 100, 90, 28, 6},
      {1, 50 + 50 * kPos, 50 + 50 * kPos, 720, 576, 360, 288, 360, 288},
      {1, 80, 50 + 10 * kPos, 720, 576, 576, 0, 144, 58},
      // 50 % of 577: the horizontal value truncates 288.99999 in extended precision; the vertical one rounds 288.49999
      // to the float 288.5 first.
      {1, 50 + 50 * kPos, 10 + 10 * kPos, 577, 577, 288, 289, 58, 58},
      {1, 300 + 250 * kPos, 10 + 10 * kPos, 100, 60, 100, 60, 0, 0},
      // Other styles take pixels without limits; what passes the frame's edge is cut.
      {5, 10 + 6 * kPos, 20 + 8 * kPos, 64, 32, 10, 6, 20, 8},
      {2, 50 + 20 * kPos, 30 + 30 * kPos, 64, 32, 50, 20, 14, 12},
      {-1, 60 + 30 * kPos, -1.0, 64, 32, 60, 30, 4, 2},
  };
  for (const auto& [style, param1, param2, width, height, x, y, w, h] : cases) {
    expect_inset(style, param1, param2, width, height, x, y, w, h);
  }
  EXPECT_EQ(zv::percent_of_width(100, 720), 720);
  EXPECT_EQ(zv::percent_of_height(100, 576), 576);
}

TEST(PictureInPicture, ArgumentCheckIsItsOwn) {
  EXPECT_EQ(zv::picture_in_picture(nullptr, nullptr, nullptr, nullptr), 0);
  // A disabled block is drawn all the same, and the flags follow `a`.
  TransitionParams params = zvtest::make_params(5, 0.5);
  params.enabled = 0;
  expect_inset(5, 4 + 2 * kPos, 8 + 4 * kPos, 32, 16, 4, 2, 8, 4, &params);
  // Some arguments missing: still 0, and nothing is read from what is missing.
  ImagePtr a = zvtest::solid_frame(32, 16, kA[0], kA[1], kA[2]), b = zvtest::solid_frame(32, 16, kB[0], kB[1], kB[2]);
  ImagePtr other = zvtest::random_frame(32, 16, 3), lone = zvtest::solid_frame(32, 16, 1, 2, 3);
  EXPECT_EQ(zv::picture_in_picture(nullptr, a.get(), b.get(), &params), 0);
  EXPECT_EQ(zv::picture_in_picture(other.get(), a.get(), b.get(), nullptr), 0);
  EXPECT_EQ(zv::picture_in_picture(lone.get(), a.get(), nullptr, &params), 0);
  EXPECT_EQ(zvtest::frame_bytes(*lone), zvtest::frame_bytes(*a));
}

TEST(PictureInPicture, ProgressDoesNotChangeThePicture) {
  ImagePtr a = zvtest::random_frame(45, 31, 1), b = zvtest::random_frame(29, 40, 2);
  std::vector<uint8_t> first;
  for (double position : {0.0, 0.5, 1.0}) {
    ImagePtr out = zvtest::random_frame(45, 31, 3);
    TransitionParams params = zvtest::make_params(1, position);
    params.param1 = 20 + 30 * kPos;
    params.param2 = 40 + 40 * kPos;
    zv::picture_in_picture(out.get(), a.get(), b.get(), &params);
    if (first.empty()) first = zvtest::frame_bytes(*out);
    EXPECT_EQ(zvtest::frame_bytes(*out), first) << "position " << position;
  }
}

TEST(PictureInPicture, AAlignsOnCentresWhileTheInsetStartsAtTheCorner) {
  ImagePtr a = zvtest::solid_frame(20, 12, kA[0], kA[1], kA[2]), b = zvtest::solid_frame(9, 7, kB[0], kB[1], kB[2]);
  ImagePtr out = zvtest::solid_frame(24, 16, 1, 2, 3);
  TransitionParams params = zvtest::make_params(7, 0.0);
  params.param2 = 4 + 2 * kPos;
  zv::picture_in_picture(out.get(), a.get(), b.get(), &params);
  EXPECT_TRUE(zvtest::samples_are(*out, 0, [](int col, int row) {
    return col < 4 && row < 2 ? 200 : col >= 2 && col < 22 && row >= 2 && row < 14 ? 10 : 1;
  }));
}

TEST(ScaledImage, CornerAverageWithTruncatedCoordinates) {
  // 4 x 2 to 2 x 1: cells of 2 x 2; the second corner of the last column and row is clamped to the source.
  const uint8_t source[8] = {0, 10, 20, 31, 100, 110, 120, 130};
  uint8_t target[2] = {};
  zv::resample_plane(4, 2, 2, 1, source, target);
  EXPECT_EQ(target[0], 60);  // (0 + 20 + 100 + 120) / 4
  EXPECT_EQ(target[1], 75);  // (20 + 31 + 120 + 130) / 4, truncated
  // Enlarging 2 x 1 to 3 x 1: columns 0/0, 0/1 and 1/1 (clamped).
  const uint8_t small[2] = {0, 101};
  uint8_t wide[3] = {};
  zv::resample_plane(2, 1, 3, 1, small, wide);
  EXPECT_EQ(std::vector<uint8_t>(wide, wide + 3), (std::vector<uint8_t>{0, 50, 101}));
}

}  // namespace

// Image resize: placement, border fill, line skipping and the three kernels; every method and interpolation on exactly
// sized frames (the sanitizer build catches any access outside them).
#include <gtest/gtest.h>

#include <random>
#include <tuple>
#include <vector>

#include "imaging/image_resize.h"
#include "tests/test_support.h"

namespace {

using zvtest::ImagePtr;
using zvtest::sample;

std::vector<uint8_t> luma_row(const Image& image, int y, int x0, int n) {
  const uint8_t* row = image.get_Y() + y * image.width + x0;
  return std::vector<uint8_t>(row, row + n);
}

auto resize(Image* dst, Image* src, int interpolation, int method) {
  return zvImageResize(dst, src, static_cast<IMAGE_INTERPOLATION>(interpolation),
                       static_cast<IMAGE_RESIZE_METHOD>(method));
}

// (method, interpolation, source size, destination size, 4:2:2 destination)
using Combination = std::tuple<int, int, std::pair<int, int>, std::pair<int, int>, bool>;
class ResizeCombinationTest : public ::testing::TestWithParam<Combination> {};

TEST_P(ResizeCombinationTest, StaysInsideBothFramesAndThePicture) {
  const auto [method, interpolation, s, d, chroma422] = GetParam();
  ImagePtr src = zvtest::random_frame(s.first, s.second, 3);
  ImagePtr dst = zvtest::random_frame(d.first, d.second, 4, chroma422 ? kChroma422 : kChroma420);
  // The destination's picture is narrower than its frame: the luma columns beyond it are never written.
  dst->picture_width = d.first - 2;
  const std::vector<uint8_t> before = zvtest::plane_bytes(*dst, 0), source_before = zvtest::frame_bytes(*src);
  EXPECT_EQ(resize(dst.get(), src.get(), interpolation, method), 0);
  EXPECT_EQ(zvtest::frame_bytes(*src), source_before);
  for (int y = 0; y < d.second; ++y) {
    for (int x = d.first - 2; x < d.first; ++x) ASSERT_EQ(sample(*dst, 0, x, y), before[y * d.first + x]);
  }
  // The picture's corners are the source's whenever the whole source fills the picture (stretch, no skipping).
  if (method == IMAGE_RESIZE_STRETCH && interpolation <= 2 && s.second < 2 * d.second) {
    EXPECT_EQ(sample(*dst, 0, 0, 0), sample(*src, 0, 0, 0));
    EXPECT_EQ(sample(*dst, 0, d.first - 3, d.second - 1), sample(*src, 0, s.first - 1, s.second - 1));
  }
}

const std::pair<int, int> kSizes[] = {{7, 5}, {8, 6}, {33, 19}, {2, 2}};
const std::pair<int, int> kTargets[] = {{13, 11}, {16, 10}, {5, 3}, {64, 40}};

INSTANTIATE_TEST_SUITE_P(AllMethods, ResizeCombinationTest,
                         ::testing::Combine(::testing::Range(0, 7), ::testing::Values(0, 1, 2, 9),
                                            ::testing::ValuesIn(kSizes), ::testing::ValuesIn(kTargets),
                                            ::testing::Bool()));

// Each kernel on a few luma rows scaled by stretching: (interpolation, source rows, target size, target rows).
TEST(ImageResizeTest, KernelsOnKnownRows) {
  using Rows = std::vector<std::vector<uint8_t>>;
  const std::tuple<int, Rows, int, int, Rows> cases[] = {
      // Nearest keeps the edges.
      {IMAGE_INTERPOLATION_NEAREST, {{10, 20, 30, 40}, {50, 60, 70, 80}}, 8, 2,
       {{10, 10, 20, 20, 30, 30, 40, 40}, {50, 50, 60, 60, 70, 70, 80, 80}}},
      // Bilinear interpolates all but the last row and column.
      {IMAGE_INTERPOLATION_BILINEAR, {{10, 20, 30, 40}, {50, 60, 70, 81}}, 8, 2,
       {{10, 15, 20, 25, 30, 35, 40, 40}, {50, 50, 60, 60, 70, 70, 81, 81}}},
      // Vertically, fractions truncated: row 1 at fraction 2048 is 127, but its last column is not interpolated; row 2
      // reads past the last row, whose edge stands in.
      {IMAGE_INTERPOLATION_BILINEAR, {{0, 0}, {255, 255}}, 2, 4, {{0, 0}, {127, 0}, {255, 255}, {255, 255}}},
      // Tall sources are read every second row: without skipping the last row would be source row 3.
      {IMAGE_INTERPOLATION_NEAREST, {{0, 1}, {10, 1}, {20, 1}, {30, 1}}, 2, 2, {{0, 1}, {20, 1}}},
  };
  for (const auto& [interpolation, rows, dw, dh, expected] : cases) {
    ImagePtr src = zvtest::random_frame(static_cast<int>(rows[0].size()), static_cast<int>(rows.size()), 1);
    ImagePtr dst = zvtest::random_frame(dw, dh, 1);
    for (size_t y = 0; y < rows.size(); ++y) std::copy(rows[y].begin(), rows[y].end(), src->get_Y() + y * src->width);
    resize(dst.get(), src.get(), interpolation, IMAGE_RESIZE_STRETCH);
    for (int y = 0; y < dh; ++y) EXPECT_EQ(luma_row(*dst, y, 0, dw), expected[y]) << interpolation << " row " << y;
    // Nearest 4 to 8 on chroma: the target's sample i from the source's sample at half the position.
    if (dw == 8 && interpolation == IMAGE_INTERPOLATION_NEAREST) {
      for (int i = 0; i < 4; ++i) EXPECT_EQ(sample(*dst, 1, i, 0), sample(*src, 1, i < 3 ? i / 2 : 1, 0));
    }
  }
}

TEST(ImageResizeTest, CentredCopyFillsTheBorders) {
  ImagePtr src = zvtest::random_frame(352, 288, 7), dst = zvtest::random_frame(720, 576, 1);
  resize(dst.get(), src.get(), IMAGE_INTERPOLATION_CUBIC, IMAGE_RESIZE_CENTRE);
  for (int y = 0; y < 288; ++y) ASSERT_EQ(luma_row(*dst, 144 + y, 184, 352), luma_row(*src, y, 0, 352));
  EXPECT_EQ(sample(*dst, 1, 92, 72), sample(*src, 1, 0, 0));
  EXPECT_EQ(sample(*dst, 2, 267, 215), sample(*src, 2, 175, 143));
  // The border: luma 0, chroma 128.
  const int border[][3] = {{0, 183, 144}, {0, 536, 431}, {0, 184, 432}, {1, 91, 72}, {2, 268, 215}, {1, 0, 0}};
  for (const auto& [p, x, y] : border) EXPECT_EQ(sample(*dst, p, x, y), p ? 128 : 0) << p << " at " << x << "," << y;
}

TEST(ImageResizeTest, TilesStartAtTheTopLeftAndAreCut) {
  ImagePtr src = zvtest::random_frame(3, 2, 9), dst = zvtest::random_frame(8, 5, 1);
  resize(dst.get(), src.get(), IMAGE_INTERPOLATION_NEAREST, IMAGE_RESIZE_TILE);
  EXPECT_TRUE(zvtest::samples_are(*dst, 0, [&](int x, int y) { return sample(*src, 0, x % 3, y % 2); }));
}

// The target rectangle of each fitting method, seen through the border fill: (method, source and destination sizes,
// destination and source aspect numbers, the centred target's left and top offsets).
TEST(ImageResizeTest, FittingPlacesTheTargetCentred) {
  const int cases[][11] = {
      // 16:9 of 720 x 576 is 1024 x 576; in 512 x 576 that is 288 rows high.
      {1, 720, 576, 512, 576, -1, -1, -1, -1, 0, 144},
      // 4:3 of 720 x 400 is 720 x 540: 324 rows high in 480 x 360... exactly 480 x 360.
      {2, 720, 400, 480, 360, -1, -1, -1, -1, 0, 0},
      // 4:3 destination, 16:9 source: dw 5, dh 3, 432 rows of 576; the same with zero numbers: the pictures' own sizes,
      // so nothing to fit.
      {0, 720, 576, 720, 576, 4, 3, 16, 9, 0, 72}, {0, 720, 576, 720, 576, 0, 3, 16, 0, 0, 0},
      // A narrow source: pillarbox; odd difference keeps the edges symmetric.
      {0, 10, 20, 21, 20, -1, -1, -1, -1, 5, 0}, {3, 10, 20, 21, 20, -1, -1, -1, -1, 0, 0},
      // A huge aspect product does not fit 64 bits: the whole destination.
      {0, 8, 8, 16, 8, 2000000000, 2000000000, 2000000000, 1, 0, 0}};
  for (const auto& [method, sw, sh, dw, dh, dst_x, dst_y, src_x, src_y, left, top] : cases) {
    ImagePtr src = zvtest::solid_frame(sw, sh, 200, 60, 60), dst = zvtest::solid_frame(dw, dh, 9, 9, 9);
    zvImageResize(dst.get(), dst_x, dst_y, src.get(), src_x, src_y, IMAGE_INTERPOLATION_NEAREST,
                  static_cast<IMAGE_RESIZE_METHOD>(method));
    for (int y : {0, top - 1, top, dh - 1 - top, dh - top}) {
      for (int x : {0, left - 1, left, dw - 1 - left, dw - left}) {
        if (x < 0 || y < 0 || x >= dw || y >= dh) continue;
        const bool in = x >= left && x < dw - left && y >= top && y < dh - top;
        EXPECT_EQ(sample(*dst, 0, x, y), in ? 200 : 0) << "method " << method << " at " << x << "," << y;
      }
    }
  }
}

TEST(ImageResizeTest, UnknownInterpolationPlacesAndFillsButDoesNotScale) {
  ImagePtr src = zvtest::solid_frame(10, 20, 200, 60, 60), dst = zvtest::solid_frame(20, 20, 9, 9, 9);
  resize(dst.get(), src.get(), 3, IMAGE_RESIZE_KEEP_ASPECT);
  EXPECT_EQ(luma_row(*dst, 4, 0, 20),
            (std::vector<uint8_t>{0, 0, 0, 0, 0, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 0, 0, 0, 0, 0}));
  // Chroma column 2 holds luma columns 4 and 5, the target's first: not filled.
  EXPECT_EQ(sample(*dst, 1, 1, 3), 128);
  EXPECT_EQ(sample(*dst, 1, 2, 3), 9);
  EXPECT_EQ(sample(*dst, 1, 7, 3), 128);
}

TEST(CubicKernelTest, WeightsAreExactAtTheEndPointsAndSumToOne) {
  for (bool simple : {false, true}) {
    double w[4];
    zv::cubic_weights(0.0, simple, w);
    EXPECT_EQ(std::vector<double>(w, w + 4), (std::vector<double>{0.0, 1.0, 0.0, 0.0}));
    for (double t : {0.1, 0.25, 0.9, 0.5}) {
      zv::cubic_weights(t, simple, w);
      EXPECT_NEAR(w[0] + w[1] + w[2] + w[3], 1.0, 1e-12);
    }
    EXPECT_EQ(w[1], w[2]);  // symmetric at 0.5
    if (!simple) {
      EXPECT_EQ(w[0], -0.0625);  // Catmull-Rom
    }
  }
}

// Both paths of the cubic kernel (normal steps, and reduction or enlargement by two or more) on 24-bit bitmaps:
// constants stay constant and the corners land on the source's corners.
TEST(CubicResizeTest, ConstantStaysAndCornersAreExact) {
  for (auto [sw, tw] : {std::pair{5, 7}, {7, 5}, {4, 16}, {16, 4}, {9, 17}, {3, 1}, {1, 3}}) {
    const int sh = sw, th = tw;
    std::vector<uint8_t> source(static_cast<size_t>(sw * 3 * sh)), target(static_cast<size_t>(tw * 3 * th), 1);
    std::mt19937 gen(sw * 31 + tw);
    for (uint8_t& v : source) v = static_cast<uint8_t>(gen());
    tagImgParam from{source.data(), sw, sh, sw * 3, 0, 0, sw, sh}, to{target.data(), tw, th, tw * 3, 0, 0, tw, th};
    EXPECT_EQ(DIB_Resize(&from, &to, IMAGE_INTERPOLATION_CUBIC), 0);
    for (int c = 0; c < 3; ++c) {
      EXPECT_EQ(target[c], source[c]) << sw << " to " << tw;
      if (tw == 1) continue;  // one sample: the first
      EXPECT_EQ(target[(th * tw - 1) * 3 + c], source[(sh * sw - 1) * 3 + c]) << sw << " to " << tw;
      EXPECT_EQ(target[(tw - 1) * 3 + c], source[(sw - 1) * 3 + c]) << sw << " to " << tw;
    }
    std::fill(source.begin(), source.end(), 173);
    DIB_Resize(&from, &to, IMAGE_INTERPOLATION_CUBIC);
    EXPECT_EQ(target, std::vector<uint8_t>(target.size(), 173)) << sw << " to " << tw;
  }
}

TEST(DibResizeTest, NearestScalesTheRectangleOnly) {
  // A 2 x 1 rectangle at (1, 1) of a 3 x 2 bitmap into (0, 0) 4 x 1 of a 5 x 2 one with padded rows.
  std::vector<uint8_t> source(12 * 2);
  for (size_t i = 0; i < source.size(); ++i) source[i] = static_cast<uint8_t>(i);
  std::vector<uint8_t> target(16 * 2, 99);
  const tagImgParam from{source.data(), 3, 2, 12, 1, 1, 2, 1};
  tagImgParam to{target.data(), 5, 2, 16, 0, 0, 4, 1};
  EXPECT_EQ(DIB_Resize(&from, &to, IMAGE_INTERPOLATION_NEAREST), 0);
  std::vector<uint8_t> expected(16 * 2, 99);
  const uint8_t px[2][3] = {{15, 16, 17}, {18, 19, 20}};
  for (int i = 0; i < 4; ++i) std::copy(px[i < 3 ? i / 2 : 1], px[i < 3 ? i / 2 : 1] + 3, expected.begin() + 3 * i);
  EXPECT_EQ(target, expected);
}

TEST(DibResizeTest, UnknownInterpolationOrBadRectangleWritesNothing) {
  std::vector<uint8_t> source(12 * 2, 5), target(12 * 2, 99);
  const tagImgParam from{source.data(), 3, 2, 12, 0, 0, 3, 2};
  const tagImgParam good{target.data(), 3, 2, 12, 0, 0, 3, 2};
  for (int interpolation : {3, -1, 100}) {
    tagImgParam to = good;
    EXPECT_EQ(DIB_Resize(&from, &to, static_cast<IMAGE_INTERPOLATION>(interpolation)), 0);
  }
  for (tagImgParam to : {tagImgParam{target.data(), 3, 2, 12, 1, 0, 3, 2}, {target.data(), 3, 2, 8, 0, 0, 3, 2},
                         {nullptr, 3, 2, 12, 0, 0, 3, 2}, {target.data(), 3, 2, 12, 0, 0, 0, 2}}) {
    EXPECT_EQ(DIB_Resize(&from, &to, IMAGE_INTERPOLATION_BILINEAR), 0);
  }
  EXPECT_EQ(target, std::vector<uint8_t>(target.size(), 99));
}

}  // namespace

// RGB24 <-> 4:2:0: exact values at the range ends, the even-part rule, padded bottom-up rows, and the round trip error.
#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <vector>

#include "imaging/yuv_rgb.h"

namespace {

// A w x h 4:2:0 picture in three packed planes, every sample `fill`.
struct Planes {
  int w, h;
  std::vector<uint8_t> y, u, v;
  Planes(int width, int height, uint8_t fill)
      : w(width), h(height), y(width * height, fill), u((width / 2) * (height / 2), fill), v(u) {}
  void from_rgb(const BITMAPINFOHEADER& hd, const uint8_t* bmp, int cw, int ch) {
    Rgb24_2_yuv420(y.data(), u.data(), v.data(), w, cw, ch, &hd, bmp);
  }
  void to_rgb(const BITMAPINFOHEADER& hd, uint8_t* bmp, int cw, int ch) {
    Yuv420_2_rgb24(&hd, bmp, y.data(), u.data(), v.data(), w, cw, ch);
  }
};

// Pixel (x, y) of the image (row 0 on top) in a bottom-up bitmap.
uint8_t* pixel(std::vector<uint8_t>& bmp, int width, int height, int x, int y) {
  return bmp.data() + (height - 1 - y) * zv::dib_row_bytes(width) + 3 * x;
}

TEST(YuvRgbTest, BlackAndWhiteAtTheStudioRangeEnds) {
  const BITMAPINFOHEADER hd = zv::rgb24_header(2, 2);
  for (int value : {0, 255}) {
    std::vector<uint8_t> bmp(zv::dib_row_bytes(2) * 2, static_cast<uint8_t>(value));
    Planes p(2, 2, 7);
    p.from_rgb(hd, bmp.data(), 1, 1);
    EXPECT_EQ(p.y, std::vector<uint8_t>(4, value ? 235 : 16));
    EXPECT_EQ(p.u[0], 128);
    EXPECT_EQ(p.v[0], 128);
  }
  // Back: 16 gives black after clamping; 235 gives 254, not white.
  for (int luma : {16, 235}) {
    std::vector<uint8_t> bmp(zv::dib_row_bytes(2) * 2, 9);
    Planes p(2, 2, 128);
    std::fill(p.y.begin(), p.y.end(), luma);
    p.to_rgb(hd, bmp.data(), 1, 1);
    for (int i : {0, 1, 2, 3, 4, 5, 8, 9, 10, 11, 12, 13}) EXPECT_EQ(bmp[i], luma == 16 ? 0 : 254) << i;
  }
}

TEST(YuvRgbTest, ChromaIsTheTruncatedMeanOfTheShiftedValues) {
  const BITMAPINFOHEADER hd = zv::rgb24_header(2, 2);
  std::vector<uint8_t> bmp(zv::dib_row_bytes(2) * 2, 0);
  const uint8_t colours[4][3] = {{255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {10, 20, 30}};  // B, G, R
  for (int k = 0; k < 4; ++k) std::copy(colours[k], colours[k] + 3, pixel(bmp, 2, 2, k % 2, k / 2));
  Planes p(2, 2, 0);
  p.from_rgb(hd, bmp.data(), 1, 1);
  EXPECT_EQ(p.y, (std::vector<uint8_t>{40, 144, 81, 34}));
  // The negative terms shift towards minus infinity: 239 + 53 + 90 + 122 and 109 + 34 + 239 + 133.
  EXPECT_EQ(p.u[0], 126);
  EXPECT_EQ(p.v[0], 128);
}

// 5 x 3: only the top-left 4 x 2 is converted, both ways; width 6 pads rows to 20 bytes.
TEST(YuvRgbTest, OnlyTheEvenPartIsConverted) {
  EXPECT_EQ(zv::dib_row_bytes(6), 20);
  EXPECT_EQ(zv::dib_row_bytes(5), 16);
  const BITMAPINFOHEADER hd = zv::rgb24_header(5, 3);
  std::vector<uint8_t> bmp(zv::dib_row_bytes(5) * 3, 200), back(bmp.size(), 3);
  Planes p(5, 3, 7);
  p.from_rgb(hd, bmp.data(), 2, 2);
  EXPECT_EQ(p.u, (std::vector<uint8_t>{128, 128}));
  p.to_rgb(hd, back.data(), 2, 2);
  for (int y = 0; y < 3; ++y) {
    for (int x = 0; x < 5; ++x) {
      EXPECT_EQ(p.y[y * 5 + x], (x < 4 && y < 2) ? 187 : 7) << x << "," << y;
      EXPECT_EQ(pixel(back, 5, 3, x, y)[0], (x < 4 && y < 2) ? 199 : 3) << x << "," << y;
    }
  }
  EXPECT_EQ(back[15], 3);  // the row padding is never written
}

TEST(YuvRgbTest, TopDownAndTinyBitmapsAreLeftAlone) {
  for (auto [w, h] : {std::pair{4, -4}, {4, 1}, {4, 0}, {1, 4}}) {
    const BITMAPINFOHEADER hd = zv::rgb24_header(w, h);
    std::vector<uint8_t> bmp(zv::dib_row_bytes(w) * std::abs(h) + 1, 50);
    Planes p(4, 4, 7);
    p.from_rgb(hd, bmp.data(), 2, 2);
    EXPECT_EQ(p.y, std::vector<uint8_t>(16, 7)) << w << "x" << h;
    p.to_rgb(hd, bmp.data(), 2, 2);
    EXPECT_EQ(bmp, std::vector<uint8_t>(bmp.size(), 50)) << w << "x" << h;
  }
}

// A picture of one random colour per 2 x 2 block (so chroma is exact) comes back within a few levels: the studio range
// quantisation and the truncating shifts, no more.
TEST(YuvRgbTest, RoundTripOfASmoothPictureStaysClose) {
  const int w = 64, h = 48;
  const BITMAPINFOHEADER hd = zv::rgb24_header(w, h);
  std::vector<uint8_t> bmp(zv::dib_row_bytes(w) * h), back(bmp.size(), 0);
  std::mt19937 gen(5);
  for (int by = 0; by < h; by += 2) {
    for (int bx = 0; bx < w; bx += 2) {
      const uint8_t c[3] = {static_cast<uint8_t>(gen()), static_cast<uint8_t>(gen()), static_cast<uint8_t>(gen())};
      for (int k = 0; k < 4; ++k) std::copy(c, c + 3, pixel(bmp, w, h, bx + k % 2, by + k / 2));
    }
  }
  Planes p(w, h, 0);
  p.from_rgb(hd, bmp.data(), w / 2, w / 2);
  p.to_rgb(hd, back.data(), w / 2, w / 2);
  int worst = 0;
  for (size_t i = 0; i < bmp.size(); ++i) worst = std::max(worst, std::abs(bmp[i] - back[i]));
  EXPECT_LE(worst, 4);
}

}  // namespace

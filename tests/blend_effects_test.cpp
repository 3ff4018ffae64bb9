// The blends that turn solid frames into solid frames (Add Dissolve, Fade's levels, Blend, X Ray), and Stretch In and
// Mesh sample by sample.
#include <gtest/gtest.h>

#include "tests/test_support.h"

namespace {

using zvtest::ImagePtr;
using zvtest::run_transition;
using zvtest::sample;

constexpr int kFade = 14, kAddDissolve = 36, kStretchIn = 40, kMesh = 41, kXRay = 53, kBlend = 66;

struct Colour { uint8_t y, u, v; };
struct SolidCase { int id, style; double position; Colour a, b, want; int width, height; };

constexpr Colour kAddA{200, 60, 70}, kAddB{50, 160, 170}, kFadeA{16, 100, 200}, kFadeB{235, 60, 127};
SolidCase add(int style, double p, Colour want) { return {kAddDissolve, style, p, kAddA, kAddB, want, 16, 8}; }
SolidCase fade(int style, double p, Colour want) { return {kFade, style, p, kFadeA, kFadeB, want, 64, 48}; }

const SolidCase kSolidCases[] = {
    // Add Dissolve offsets the luma (saturating) and switches the chroma: a's, grey from 0.4, b's from 0.6.
    // Luma 200 + t(95.625), saturated; 200 - 95; 200 - t(149.175).
    add(0, 0.25, {255, 60, 70}), add(1, 0.25, {105, 60, 70}), add(1, 0.39, {51, 60, 70}),
    add(0, 0.4, {255, 128, 128}), add(1, 0.4, {47, 128, 128}),
    // b + 191; b - 191, saturated; b + t(156.825); b + 153.
    add(0, 0.5, {241, 128, 128}), add(1, 0.5, {0, 128, 128}), add(0, 0.59, {206, 128, 128}),
    add(0, 0.6, {203, 160, 170}), add(1, 0.75, {0, 160, 170}), add(0, 0.75, {145, 160, 170}),
    // Fade: k = 64 is three quarters a; fading one picture alone takes luma to 0 and chroma to 128 with a flooring
    // shift, and b's chroma of 127 stays 127 for any weight below 256.
    fade(0, 0.5, {70, 90, 181}), fade(1, 1.0, {0, 128, 128}), fade(1, 0.5, {12, 107, 182}),
    fade(2, 0.5, {58, 111, 127}),
    // Out and in through black: black at exactly 0.5, almost black just before.
    fade(3, 0.5, {0, 128, 128}), fade(3, 0.499, {0, 127, 128}), fade(3, 0.75, {58, 111, 127}),
    // Blend: the squared weight, without rounding: alpha 64, t(2.56) = 2, t(250.9) = 250.
    {kBlend, 0, 0.5, {200, 200, 200}, {40, 40, 40}, {160, 160, 160}, 18, 4},
    {kBlend, 0, 0.1, {255, 255, 255}, {0, 0, 0}, {253, 253, 253}, 18, 4},
    {kBlend, 0, 0.99, {0, 0, 0}, {255, 255, 255}, {249, 249, 249}, 18, 4},
    // X Ray: the luma follows the phase, the chroma cuts over half way.
    {kXRay, 0, 0.1, {0, 60, 70}, {99, 160, 170}, {64, 60, 70}, 6, 4},     // dark rises by t(64)
    {kXRay, 0, 0.1, {255, 60, 70}, {99, 160, 170}, {191, 60, 70}, 6, 4},  // bright falls by 64
    {kXRay, 0, 0.3, {10, 60, 70}, {99, 160, 170}, {219, 60, 70}, 6, 4},   // c = 76 - 10, plus t(153.6)
    {kXRay, 0, 0.3, {200, 60, 70}, {99, 160, 170}, {29, 60, 70}, 6, 4},   // c = -124 counts as below 128
    {kXRay, 0, 0.3, {0, 60, 70}, {99, 160, 170}, {229, 60, 70}, 6, 4},
    {kXRay, 0, 0.499, {0, 60, 70}, {99, 160, 170}, {255, 60, 70}, 6, 4},
    {kXRay, 0, 0.5, {153, 60, 70}, {99, 160, 170}, {255, 160, 170}, 6, 4},  // 408 - A
    {kXRay, 0, 0.5, {200, 60, 70}, {99, 160, 170}, {208, 160, 170}, 6, 4},
    {kXRay, 0, 0.6, {99, 60, 70}, {3, 160, 170}, {253, 160, 170}, 6, 4},  // B + 250
    {kXRay, 0, 0.6, {99, 60, 70}, {5, 160, 170}, {255, 160, 170}, 6, 4},
    {kXRay, 0, 0.933, {99, 60, 70}, {100, 160, 170}, {96, 160, 170}, 6, 4},  // d = 254.745: the dip of 4
    {kXRay, 0, 0.933, {99, 60, 70}, {2, 160, 170}, {0, 160, 170}, 6, 4},
    {kXRay, 0, 0.94, {99, 60, 70}, {100, 160, 170}, {100, 160, 170}, 6, 4},  // d >= 255: the snap to B
};

TEST(SolidFrames, EverySampleTakesTheBlend) {
  for (const SolidCase& c : kSolidCases) {
    SCOPED_TRACE(testing::Message() << "id " << c.id << " style " << c.style << " position " << c.position);
    ImagePtr a = zvtest::solid_frame(c.width, c.height, c.a.y, c.a.u, c.a.v);
    ImagePtr b = zvtest::solid_frame(c.width, c.height, c.b.y, c.b.u, c.b.v);
    ImagePtr out = zvtest::random_frame(c.width, c.height, 3);
    ASSERT_EQ(run_transition(c.id, out.get(), a.get(), b.get(), c.style, c.position), 0);
    EXPECT_EQ(zvtest::frame_bytes(*out),
              zvtest::frame_bytes(*zvtest::solid_frame(c.width, c.height, c.want.y, c.want.u, c.want.v)));
  }
}

// Luma sample i of the frame is step x i: every sample tells where it was read from.
ImagePtr ramp_frame(int w, int h, int step) {
  ImagePtr f = zvtest::solid_frame(w, h, 0, 128, 128);
  for (int i = 0; i < w * h; ++i) f->get_Y()[i] = static_cast<uint8_t>(step * i);
  return f;
}

TEST(StretchIn, LeftAnchorSpreadsTheFirstColumnsOfB) {
  // p = 0.5 on 16 columns: alpha 64 of 4 x b's index; column x reads b's column t(x / 2).
  ImagePtr a = zvtest::solid_frame(16, 2, 0, 128, 128), b = ramp_frame(16, 2, 4), out = zvtest::random_frame(16, 2, 3);
  run_transition(kStretchIn, out.get(), a.get(), b.get(), 1, 0.5);
  const std::vector<uint8_t> want = {0,  0,  1,  1,  2,  2,  3,  3,  4,  4,  5,  5,  6,  6,  7,  7,
                                     16, 16, 17, 17, 18, 18, 19, 19, 20, 20, 21, 21, 22, 22, 23, 23};
  EXPECT_EQ(zvtest::plane_bytes(*out, 0), want);
}

TEST(StretchIn, RightAnchorReadsOnePastTheRowButNeverPastThePlane) {
  // p = 0.9: alpha 207. The last column reads B(W): the next row's first sample, and on the last row the plane's last
  // sample. Column 8 - i reads B(8 - t(0.9 i)); for i = 2 that is B(7).
  ImagePtr a = zvtest::solid_frame(8, 4, 0, 128, 128), b = ramp_frame(8, 4, 7), out = zvtest::random_frame(8, 4, 3);
  run_transition(kStretchIn, out.get(), a.get(), b.get(), 0, 0.9);
  const int last[4] = {45, 90, 135, 175}, before_last[4] = {39, 84, 130, 175};
  for (int row = 0; row < 4; ++row) {
    EXPECT_EQ(sample(*out, 0, 7, row), last[row]) << "row " << row;
    EXPECT_EQ(sample(*out, 0, 6, row), before_last[row]) << "row " << row;
  }
}

TEST(Mesh, EvenRowsMoveLeftAndOddRowsRight) {
  ImagePtr a = zvtest::random_frame(16, 4, 1), b = zvtest::random_frame(16, 4, 2), out = zvtest::random_frame(16, 4, 3);
  run_transition(kMesh, out.get(), a.get(), b.get(), 0, 0.5);  // k = 8 in luma, 4 in chroma
  for (int plane = 0; plane < 3; ++plane) {
    const int w = plane == 0 ? 16 : 8, k = w / 2;
    EXPECT_TRUE(zvtest::samples_are(*out, plane, [&](int x, int y) {
      if (y % 2 == 0) return x < w - k ? sample(*a, plane, x + k, y) : sample(*b, plane, x, y);
      return x < k ? sample(*b, plane, x, y) : sample(*a, plane, x - k, y);
    }));
  }
}

}  // namespace
